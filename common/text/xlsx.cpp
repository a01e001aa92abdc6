#include "common/text/xlsx.h"

#include <xlsxwriter.h>

#include <QFile>
#include <QFileInfo>
#include <cmath>

namespace tr::text {

namespace {

// Excel refuses sheet names over 31 characters or holding []:*?/\ .
QString sheetTitle(const QString& name) {
    QString title;
    for (const QChar c : name)
        if (!QStringLiteral("[]:*?/\\").contains(c)) title += c;
    title = title.left(31).trimmed();
    return title.isEmpty() ? QStringLiteral("Sheet1") : title;
}

}  // namespace

QString writeXlsx(const QString& path, const QString& sheetName, const QStringList& titles,
                  const QList<QVariantList>& rows, const QList<bool>& boldRows) {
    // Written beside the target first, so a failure leaves no half file under its name.
    const QString part = path + QStringLiteral(".part");
    const QByteArray partName = QFile::encodeName(part);
    lxw_workbook* book = workbook_new(partName.constData());
    if (!book) return QStringLiteral("حافظه کافي نيست");
    const QByteArray sheetUtf8 = sheetTitle(sheetName).toUtf8();
    lxw_worksheet* sheet = workbook_add_worksheet(book, sheetUtf8.constData());
    worksheet_right_to_left(sheet);

    lxw_format* title = workbook_add_format(book);
    format_set_bold(title);
    format_set_bg_color(title, 0xDFE7F1);
    lxw_format* whole = workbook_add_format(book);
    format_set_num_format(whole, "#,##0");
    lxw_format* fraction = workbook_add_format(book);
    format_set_num_format(fraction, "#,##0.00");
    lxw_format* bold = workbook_add_format(book);
    format_set_bold(bold);
    lxw_format* boldWhole = workbook_add_format(book);
    format_set_bold(boldWhole);
    format_set_num_format(boldWhole, "#,##0");
    lxw_format* boldFraction = workbook_add_format(book);
    format_set_bold(boldFraction);
    format_set_num_format(boldFraction, "#,##0.00");

    for (int c = 0; c < titles.size(); ++c) {
        worksheet_write_string(sheet, 0, lxw_col_t(c), titles[c].toUtf8().constData(), title);
        worksheet_set_column(sheet, lxw_col_t(c), lxw_col_t(c), 16, nullptr);
    }
    for (int r = 0; r < rows.size(); ++r) {
        const bool strong = boldRows.value(r);
        const auto row = lxw_row_t(r + 1);
        for (int c = 0; c < rows[r].size(); ++c) {
            const QVariant& value = rows[r][c];
            if (value.isNull()) continue;
            if (value.typeId() == QMetaType::Double) {
                const double number = value.toDouble();
                const bool integral = std::floor(number) == number;
                worksheet_write_number(sheet, row, lxw_col_t(c), number,
                                       strong ? (integral ? boldWhole : boldFraction)
                                              : (integral ? whole : fraction));
            } else {
                worksheet_write_string(sheet, row, lxw_col_t(c),
                                       value.toString().trimmed().toUtf8().constData(),
                                       strong ? bold : nullptr);
            }
        }
    }
    const lxw_error closed = workbook_close(book);
    if (closed != LXW_NO_ERROR) {
        QFile::remove(part);
        return QString::fromUtf8(lxw_strerror(closed));
    }
    QFile::remove(path);
    if (!QFile::rename(part, path)) {
        QFile::remove(part);
        return QStringLiteral("فايل قبلي جايگزين نشد");
    }
    return {};
}

}  // namespace tr::text
