#pragma once
// Pieces of the right-to-left HTML the built-in prints are written in. Qt lays table columns out
// left to right whatever the direction, so a row takes its cells in reading order and writes
// them mirrored.
#include <QString>
#include <QStringList>

namespace tr::cashbank::ui::html {

// A heading (or total) cell and an ordinary cell of the prints' grids.
inline const QString kHeadStyle = QStringLiteral(
    "style=\"background-color:#dfe7f1; font-weight:bold; border:1px solid #6b7f99;\"");
inline const QString kCellStyle = QStringLiteral("style=\"border:1px solid #9aa8ba;\"");

inline QString esc(const QString& text) {
    return text.toHtmlEscaped();
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

// The small line at the foot of a print naming who made it.
inline QString userLine(const QString& name) {
    return QStringLiteral("<p align=\"right\" style=\"margin-top:6px; font-size:8pt; "
                          "color:#555555;\">كاربر : ") +
           esc(name) + QStringLiteral("</p>");
}

}  // namespace tr::cashbank::ui::html
