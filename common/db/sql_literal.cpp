#include "common/db/sql_literal.h"

#include <QLocale>
#include <cmath>

#include "common/db/database_error.h"

namespace tr::db {

static void refuseControlCharacters(const QString& value) {
    for (qsizetype i = 0; i < value.size(); ++i) {
        const char16_t c = value.at(i).unicode();
        if ((c < 0x20 && c != u'\t' && c != u'\r' && c != u'\n') || c == 0x7f) {
            throw DatabaseError(
                QStringLiteral("Text value holds the control character U+%1 at character %2; "
                               "it cannot be written to the database")
                    .arg(static_cast<int>(c), 4, 16, QLatin1Char('0'))
                    .arg(i + 1));
        }
    }
}

QString sqlText(const QString& value, SqlDialect dialect) {
    refuseControlCharacters(value);
    if (dialect != SqlDialect::SqlServer) {
        // One pass and one allocation: statements carry many values and are built on every save.
        QString out;
        out.reserve(value.size() + 2 + value.count(QLatin1Char('\'')));
        out += QLatin1Char('\'');
        for (const QChar c : value) {
            if (c == QLatin1Char('\'')) out += c;
            out += c;
        }
        out += QLatin1Char('\'');
        return out;
    }
    QString body = value;
    body.replace(QLatin1Char('\''), QLatin1String("''"));
    // SQL Server drops a backslash that ends a line inside a literal; closing the literal after the
    // backslash and concatenating the rest keeps both characters.
    body.replace(QLatin1String("\\\r\n"), QLatin1String("\\' + N'\r\n"));
    body.replace(QLatin1String("\\\n"), QLatin1String("\\' + N'\n"));
    return QLatin1String("N'") + body + QLatin1Char('\'');
}

QString sqlNumber(double value) {
    if (!std::isfinite(value)) {
        throw DatabaseError(QStringLiteral("A number that is not finite cannot be written to SQL"));
    }
    if (value == std::trunc(value) && std::fabs(value) < 1e15) {
        return QString::number(static_cast<qint64>(value));
    }
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString sqlNumber(qint64 value) { return QString::number(value); }

}  // namespace tr::db
