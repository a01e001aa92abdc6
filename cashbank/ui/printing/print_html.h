#pragma once
// Pieces of the right-to-left HTML the built-in prints are written in. Qt lays table columns out
// left to right whatever the direction, so a row takes its cells in reading order and writes
// them mirrored.
#include <QString>
#include <QStringList>

namespace tr::cashbank::ui::html {

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

}  // namespace tr::cashbank::ui::html
