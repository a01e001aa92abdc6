#pragma once
// Pieces of the right-to-left HTML the built-in prints are written in. Qt lays table columns out
// left to right whatever the direction, so a row takes its cells in reading order and writes
// them mirrored. Numbers, dates and codes print with Persian digits.
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include "common/persian/amount.h"

namespace tr::printing::ui::html {

// A heading (or total) cell and an ordinary cell of the prints' grids.
inline const QString kHeadStyle = QStringLiteral(
    "style=\"background-color:#dfe7f1; font-weight:bold; border:1px solid #6b7f99;\"");
inline const QString kCellStyle = QStringLiteral("style=\"border:1px solid #9aa8ba;\"");
// The plainer black-ruled cells of the "قديم" layouts.
inline const QString kOldCellStyle = QStringLiteral("style=\"border:1px solid #000000;\"");
inline const QString kOldHeadStyle = QStringLiteral(
    "style=\"border:1px solid #000000; font-weight:bold; background-color:#eeeeee;\"");
// The attributes of a ruled grid table.
inline const QString kGrid = QStringLiteral(
    "cellspacing=\"0\" cellpadding=\"4\" style=\"border-collapse:collapse; margin-top:10px;\"");

inline QString esc(const QString& text) {
    return text.toHtmlEscaped();
}

// User texts, codes and dates, escaped and with Persian digits.
inline QString text(const QString& value) {
    return esc(tr::persian::persianDigits(value));
}

inline QString number(qint64 value) {
    return tr::persian::persianDigits(QString::number(value));
}

inline QString money(double value) {
    return esc(tr::persian::printAmount(value));
}

// An account's codes joined by "-", general first. Codes read left to right whatever the page
// direction: a left-to-right embedding keeps a project code's letters from splitting the numbers.
inline QString accountCode(const QStringList& levels) {
    QStringList parts;
    for (const QString& code : levels)
        if (!code.isEmpty()) parts << code;
    return QChar(0x202A) + text(parts.join(QLatin1Char('-'))) + QChar(0x202C);
}

inline QString row(const QStringList& cellsInReadingOrder) {
    QString out = QStringLiteral("<tr>");
    for (auto it = cellsInReadingOrder.crbegin(); it != cellsInReadingOrder.crend(); ++it)
        out += *it;
    return out + QStringLiteral("</tr>");
}

inline QString cell(const QString& html, const QString& attributes = {}) {
    return QStringLiteral("<td ") + attributes + QStringLiteral(">") + html +
           QStringLiteral("</td>");
}

inline QString table(const QString& attributes, const QString& rows) {
    return QStringLiteral("<table width=\"100%\" ") + attributes + QStringLiteral(">") + rows +
           QStringLiteral("</table>");
}

// A grid's heading row: titles with their width in percent, in reading order.
inline QString headerCells(const QList<QPair<QString, int>>& columns, const QString& style) {
    QStringList cells;
    for (const auto& [title, width] : columns) {
        cells << QStringLiteral("<th width=\"%1%\" align=\"center\" ").arg(width) + style +
                     QStringLiteral(">") + esc(title) + QStringLiteral("</th>");
    }
    return QStringLiteral("<thead>") + row(cells) + QStringLiteral("</thead>");
}

// The band atop a list print: the company at the right, the title in the middle, a labelled
// value (a date) at the left. `title` and `value` are HTML already.
inline QString titleBand(const QString& company, const QString& title, int titlePoints,
                         const QString& label, const QString& value) {
    return table(QStringLiteral("cellspacing=\"0\" cellpadding=\"4\""),
                 row({cell(QStringLiteral("<b>") + esc(company) + QStringLiteral("</b>"),
                           QStringLiteral("width=\"30%\"")),
                      cell(QStringLiteral("<p align=\"center\"><span style=\"font-size:%1pt; "
                                          "font-weight:bold;\">")
                                   .arg(titlePoints) +
                               title + QStringLiteral("</span></p>"),
                           QStringLiteral("width=\"40%\"")),
                      cell(QStringLiteral("<p align=\"left\"><b>") + esc(label) +
                               QStringLiteral(" :</b> ") + value + QStringLiteral("</p>"),
                           QStringLiteral("width=\"30%\""))}));
}

// The band atop a "جديد" document print: the company at the right, the document's name in the
// middle with `markHtml` under it, labelled values (serial, date, voucher; HTML already) at the
// left.
inline QString documentTitleBand(const QString& company, const QString& name,
                                 const QString& markHtml,
                                 const QList<QPair<QString, QString>>& values) {
    QString numbers;
    for (const auto& [label, value] : values) {
        numbers +=
            row({cell(QStringLiteral("<b>") + esc(label) + QStringLiteral(" :</b>")), cell(value)});
    }
    return table(
        QStringLiteral("cellspacing=\"0\" cellpadding=\"4\""),
        row({cell(QStringLiteral("<span style=\"font-size:12pt; font-weight:bold;\">") +
                      esc(company) + QStringLiteral("</span>"),
                  QStringLiteral("width=\"32%\" valign=\"middle\"")),
             cell(QStringLiteral("<p align=\"center\"><span style=\"font-size:17pt; "
                                 "font-weight:bold;\">") +
                      esc(name) + QStringLiteral("</span>") + markHtml + QStringLiteral("</p>"),
                  QStringLiteral("width=\"36%\" valign=\"middle\"")),
             cell(QStringLiteral("<table align=\"left\" cellspacing=\"0\" cellpadding=\"2\">") +
                      numbers + QStringLiteral("</table>"),
                  QStringLiteral("width=\"32%\" valign=\"middle\""))}));
}

// The heading of a "قديم" document print: the company, then the document's name and `markHtml`.
inline QString oldDocumentTitle(const QString& company, const QString& name,
                                const QString& markHtml) {
    return QStringLiteral(
               "<p align=\"center\" style=\"font-size:13pt; font-weight:bold; "
               "margin-bottom:0px;\">") +
           esc(company) +
           QStringLiteral(
               "</p><p align=\"center\" style=\"font-size:15pt; font-weight:bold; "
               "margin-top:4px;\">") +
           esc(name) + markHtml + QStringLiteral("</p>");
}

// Labelled values (HTML already) in one bordered grid, `perRow` pairs a row: the "قديم" header.
inline QString oldFieldGrid(const QList<QPair<QString, QString>>& pairs, int perRow) {
    QString fields;
    const QString width = QStringLiteral("width=\"%1%\" ").arg(100 / perRow);
    for (int i = 0; i < pairs.size(); i += perRow) {
        QStringList cells;
        for (int j = i; j < i + perRow; ++j) {
            cells << cell(j < pairs.size() ? QStringLiteral("<b>") + esc(pairs[j].first) +
                                                 QStringLiteral(" :</b> ") + pairs[j].second
                                           : QString(),
                          width + kOldCellStyle);
        }
        fields += row(cells);
    }
    return table(QStringLiteral("cellspacing=\"0\" cellpadding=\"4\" "
                                "style=\"border-collapse:collapse;\""),
                 fields);
}

// The signature boxes at the foot of a "جديد" print, one per signer, a third of the width each.
inline QString signatureBoxes(const QStringList& signers, const QString& hint) {
    QStringList cells;
    for (const QString& signer : signers) {
        cells << cell(QStringLiteral("<p align=\"center\"><b>") + esc(signer) +
                          QStringLiteral("</b></p><p align=\"center\" style=\"margin-top:40px; "
                                         "color:#777777;\">") +
                          esc(hint) + QStringLiteral("</p>"),
                      QStringLiteral("width=\"33%\" valign=\"top\" ") + kCellStyle);
    }
    return table(QStringLiteral("cellspacing=\"8\" cellpadding=\"6\" style=\"margin-top:14px;\""),
                 row(cells));
}

// The signature lines at the foot of a "قديم" print.
inline QString signatureLines(const QStringList& signers) {
    QStringList cells;
    for (const QString& signer : signers) {
        cells << cell(QStringLiteral("<p align=\"center\">") + esc(signer) +
                          QStringLiteral("</p><p align=\"center\" style=\"margin-top:30px;\">"
                                         "..............................</p>"),
                      QStringLiteral("width=\"33%\""));
    }
    return table(QStringLiteral("cellspacing=\"0\" cellpadding=\"4\" style=\"margin-top:24px;\""),
                 row(cells));
}

// The small line at the foot of a print naming who made it.
inline QString userLine(const QString& name) {
    return QStringLiteral(
               "<p align=\"right\" style=\"margin-top:6px; font-size:8pt; "
               "color:#555555;\">كاربر : ") +
           esc(name) + QStringLiteral("</p>");
}

}  // namespace tr::printing::ui::html
