#include "common/text/csv.h"

namespace tr::text {

namespace {

QString field(const QString& value) {
    if (!value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) &&
        !value.contains(QLatin1Char('\n')) && !value.contains(QLatin1Char('\r')))
        return value;
    QString quoted = value;
    quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QString line(const QStringList& values) {
    QStringList fields;
    fields.reserve(values.size());
    for (const QString& v : values) fields << field(v);
    return fields.join(QLatin1Char(',')) + QStringLiteral("\r\n");
}

}  // namespace

QByteArray csvFile(const QStringList& titles, const QList<QStringList>& rows) {
    QString text = line(titles);
    for (const QStringList& row : rows) text += line(row);
    return QByteArray("\xEF\xBB\xBF") + text.toUtf8();
}

}  // namespace tr::text
