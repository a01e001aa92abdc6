#pragma once
// A table as a CSV file that spreadsheet programs open with its Persian text intact: UTF-8 with
// a byte-order mark, fields separated by commas and quoted when they hold a comma, a quote or a
// line break, lines ended by CR LF.
#include <QByteArray>
#include <QList>
#include <QStringList>

namespace tr::text {

QByteArray csvFile(const QStringList& titles, const QList<QStringList>& rows);

}  // namespace tr::text
