#include "printing/print_values.h"

#include <QRegularExpression>

namespace tr::printing {

QString textField(tr::db::Query& query, const char* name) {
    return query.FieldByName(QLatin1String(name)).AsString().trimmed();
}

std::optional<QString> documentSerial(const QString& serial) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    const QString trimmed = serial.trimmed();
    if (!digits.match(trimmed).hasMatch()) return std::nullopt;
    return trimmed;
}

}  // namespace tr::printing
