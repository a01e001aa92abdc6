#include "common/db/column_lengths.h"

#include <QRegularExpression>

namespace tr::db {

QHash<QString, int> textColumnLengths(const QString& columnsDefinition) {
    static const QRegularExpression column(QStringLiteral("(\\w+)\\s+N?(?:Var)?Char\\s*\\(\\s*(\\d+)\\s*\\)"),
                                           QRegularExpression::CaseInsensitiveOption);
    QHash<QString, int> lengths;
    for (auto m = column.globalMatch(columnsDefinition); m.hasNext();) {
        const QRegularExpressionMatch found = m.next();
        lengths.insert(found.captured(1), found.captured(2).toInt());
    }
    return lengths;
}

}  // namespace tr::db
