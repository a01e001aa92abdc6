#pragma once
// A name (schema, table, column, index) written into SQLite text: always in double quotes, a
// quote inside doubled, so any name the catalogue holds reads back as itself.
#include <QByteArray>
#include <QString>

namespace tr::engine {

inline QString quoteIdent(const QString& name) {
    QString n = name;
    n.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + n + QLatin1Char('"');
}

inline QByteArray quoteIdent(const QByteArray& name) {
    QByteArray n = name;
    n.replace('"', "\"\"");
    return '"' + n + '"';
}

}  // namespace tr::engine
