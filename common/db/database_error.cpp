#include "common/db/database_error.h"

namespace tr::db {

static std::string describe(const QString& message, int position) {
    QString text = message;
    if (position > 0) text += QStringLiteral(" (position %1)").arg(position);
    return text.toStdString();
}

DatabaseError::DatabaseError(const QString& message, const QString& sql, int position)
    : std::runtime_error(describe(message, position)),
      message_(message),
      sql_(sql),
      position_(position) {}

}  // namespace tr::db
