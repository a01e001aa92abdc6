#pragma once
// A table as an Excel workbook (.xlsx) of one right-to-left sheet: a bold title row, numbers
// (doubles) as numbers with group separators, texts as they are, the marked rows (totals) bold.
// Written whole or not at all: a file that cannot be written leaves any old one untouched.
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace tr::text {

// Empty on success, otherwise the reason the file was not written.
QString writeXlsx(const QString& path, const QString& sheetName, const QStringList& titles,
                  const QList<QVariantList>& rows, const QList<bool>& boldRows = {});

}  // namespace tr::text
