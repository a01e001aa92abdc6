#include "tools/table_printer.h"

#include "common/db/sql_literal.h"

namespace tr::tools {

int displayWidth(const QString& text) {
    int width = 0;
    for (QChar c : text) {
        const auto category = c.category();
        if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing ||
            category == QChar::Other_Format || c.isLowSurrogate()) {
            continue;
        }
        ++width;
    }
    return width;
}

namespace {

bool isNumber(const QVariant& v) {
    return v.typeId() == QMetaType::LongLong || v.typeId() == QMetaType::Int || v.typeId() == QMetaType::Double;
}

QString cellText(const QVariant& v) {
    if (v.isNull()) return QStringLiteral("NULL");
    if (v.typeId() == QMetaType::Double) return tr::db::sqlNumber(v.toDouble());
    QString text = v.toString();
    text.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    return text;
}

QString pad(const QString& text, int width, bool right) {
    const QString fill(qMax(0, width - displayWidth(text)), QLatin1Char(' '));
    return right ? fill + text : text + fill;
}

}  // namespace

QString formatTable(const tr::db::ResultSet& set) {
    const int columns = set.columns.size();
    std::vector<int> widths(columns, 0);
    std::vector<bool> numeric(columns, true);
    for (int c = 0; c < columns; ++c) widths[c] = displayWidth(set.columns[c]);
    for (const auto& row : set.rows) {
        for (int c = 0; c < columns; ++c) {
            widths[c] = qMax(widths[c], displayWidth(cellText(row[c])));
            if (!row[c].isNull() && !isNumber(row[c])) numeric[c] = false;
        }
    }
    QStringList lines;
    QStringList header, rule;
    for (int c = 0; c < columns; ++c) {
        header << pad(set.columns[c], widths[c], false);
        rule << QString(widths[c], QLatin1Char('-'));
    }
    lines << header.join(QStringLiteral(" | ")) << rule.join(QStringLiteral("-+-"));
    for (const auto& row : set.rows) {
        QStringList cells;
        for (int c = 0; c < columns; ++c) cells << pad(cellText(row[c]), widths[c], numeric[c]);
        lines << cells.join(QStringLiteral(" | "));
    }
    lines << QStringLiteral("(%1 row%2)").arg(set.rows.size()).arg(set.rows.size() == 1 ? "" : "s");
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

}  // namespace tr::tools
