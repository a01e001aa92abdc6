#include "cheques/ui/cheque_leaf_layouts.h"

#include <QFontMetricsF>
#include <QPageSize>
#include <QPaintDevice>
#include <QPainter>
#include <QTextOption>
#include <vector>

#include "common/persian/amount.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques::ui {

namespace {

enum class Field { DueDate, AmountFigures, AmountWords, Payee, OrderMark };

// Where a value goes on the leaf, in millimetres from its top left corner.
struct Placement {
    Field field;
    QRectF box;
    Qt::Alignment align;
    double points;
    bool bold = false;
};

struct LeafLayout {
    const char* code;
    std::vector<Placement> places;
};

constexpr double kLeafWidth = 180;
constexpr double kLeafHeight = 80;
// Absolute: in a right-to-left option a plain AlignRight would mean the trailing (left) side.
const Qt::Alignment kRight = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
const Qt::Alignment kCentre = Qt::AlignCenter;

// "1": the date at the top left, the amount in words across the middle, the payee under it with
// the mark at its end, the figures at the bottom left. "2": the date at the top right and the
// figures at the top left, the payee next, the words last with room for two lines.
const std::vector<LeafLayout>& layouts() {
    static const std::vector<LeafLayout> all = {
        {"1",
         {{Field::DueDate, {18, 11, 42, 7}, kCentre, 11, true},
          {Field::AmountWords, {18, 27, 138, 9}, kRight, 11},
          {Field::Payee, {52, 40, 104, 8}, kRight, 11},
          {Field::OrderMark, {18, 40, 32, 8}, kCentre, 9},
          {Field::AmountFigures, {18, 53, 52, 8}, kCentre, 12, true}}},
        {"2",
         {{Field::DueDate, {124, 9, 40, 7}, kCentre, 11, true},
          {Field::AmountFigures, {14, 9, 56, 8}, kCentre, 12, true},
          {Field::Payee, {44, 24, 120, 8}, kRight, 11},
          {Field::OrderMark, {14, 24, 28, 8}, kCentre, 9},
          {Field::AmountWords,
           {14, 36, 150, 14},
           Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop,
           11}}},
    };
    return all;
}

const LeafLayout& layoutFor(const QString& formCode) {
    const QString code = chequeLeafLayoutCode(formCode);
    for (const LeafLayout& layout : layouts())
        if (code == QLatin1String(layout.code)) return layout;
    return layouts().front();
}

QString fieldText(const ChequeLeaf& leaf, Field field) {
    switch (field) {
        case Field::DueDate:
            return tr::persian::persianDigits(leaf.dueDate);
        // Hashes close the figures in, so nothing can be written before or after them.
        case Field::AmountFigures:
            return QLatin1Char('#') + tr::persian::printAmount(leaf.amount) + QLatin1Char('#');
        case Field::AmountWords:
            return leaf.amountInWords;
        case Field::Payee:
            return tr::persian::persianDigits(leaf.payee);
        case Field::OrderMark:
            return leaf.payableToOrder ? QStringLiteral("به حواله کرد") : QString();
    }
    return {};
}

// A long text is set smaller, down to seven tenths of its size, before it wraps in its box.
void drawField(QPainter& painter, const QRectF& box, const QString& text, const Placement& place) {
    QFont font = tr::sdk::persianFont();
    font.setPointSizeF(place.points);
    font.setBold(place.bold);
    const double smallest = place.points * 0.7;
    while (QFontMetricsF(font, painter.device()).horizontalAdvance(text) > box.width() &&
           font.pointSizeF() - 0.25 >= smallest)
        font.setPointSizeF(font.pointSizeF() - 0.25);
    painter.setFont(font);
    QTextOption option(place.align);
    option.setTextDirection(Qt::RightToLeft);
    option.setWrapMode(QTextOption::WordWrap);
    painter.drawText(box, text, option);
}

}  // namespace

QPageLayout chequeLeafPage() {
    // Page sizes are defined upright; the leaf lies on its long side.
    return QPageLayout(QPageSize(QSizeF(kLeafHeight, kLeafWidth), QPageSize::Millimeter,
                                 QStringLiteral("Cheque leaf")),
                       QPageLayout::Landscape, QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
}

QString chequeLeafLayoutCode(const QString& formCode) {
    const QString code = formCode.trimmed();
    for (const LeafLayout& layout : layouts())
        if (code == QLatin1String(layout.code)) return code;
    return QLatin1String(layouts().front().code);
}

void paintChequeLeaf(QPainter& painter, const ChequeLeaf& leaf, const ChequeLeafOffsets& offsets) {
    const double dotsPerMm = painter.device()->logicalDpiX() / 25.4;
    painter.save();
    painter.setPen(Qt::black);
    for (const Placement& place : layoutFor(leaf.formCode).places) {
        const QString text = fieldText(leaf, place.field);
        if (text.isEmpty()) continue;
        const QRectF box = place.box.translated(offsets.horizontal, offsets.vertical);
        drawField(painter,
                  QRectF(box.left() * dotsPerMm, box.top() * dotsPerMm, box.width() * dotsPerMm,
                         box.height() * dotsPerMm),
                  text, place);
    }
    painter.restore();
}

}  // namespace tr::cheques::ui
