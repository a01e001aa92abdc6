// One kind of digit on screen and paper: text drawn in the suite's font looks the same whether
// it holds Latin or Persian digits, while letters still come from the text fonts.
#include <gtest/gtest.h>

#include <QFontInfo>
#include <QImage>
#include <QPainter>

#include "host/sdk/persian_font.h"

namespace tr::sdk {
namespace {

QImage drawn(const QString& text, const QFont& font) {
    QImage image(360, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.setLayoutDirection(Qt::RightToLeft);
    painter.drawText(image.rect(), Qt::AlignRight | Qt::AlignVCenter, text);
    return image;
}

// Share of `a`'s ink with no ink of `b` a pixel away at most (two font engines may place the
// same glyph's edges a pixel apart).
double inkMissing(const QImage& a, const QImage& b) {
    const auto ink = [](const QImage& image, int x, int y) {
        return qGray(image.pixel(x, y)) < 128;
    };
    int total = 0, missing = 0;
    for (int y = 1; y < a.height() - 1; ++y) {
        for (int x = 1; x < a.width() - 1; ++x) {
            if (!ink(a, x, y)) continue;
            ++total;
            bool near = false;
            for (int dy = -1; dy <= 1 && !near; ++dy)
                for (int dx = -1; dx <= 1 && !near; ++dx) near = ink(b, x + dx, y + dy);
            missing += near ? 0 : 1;
        }
    }
    return total ? double(missing) / total : 1.0;
}

bool sameInk(const QImage& a, const QImage& b) {
    return inkMissing(a, b) < 0.02 && inkMissing(b, a) < 0.02;
}

TEST(PersianFont, LatinDigitsAreDrawnAsPersianOnes) {
    for (const bool bold : {false, true}) {
        QFont font = persianFont(16);
        font.setBold(bold);
        EXPECT_TRUE(sameInk(drawn(QStringLiteral("سريال 1250 تاريخ 1404/07/30"), font),
                            drawn(QStringLiteral("سريال ۱۲۵۰ تاريخ ۱۴۰۴/۰۷/۳۰"), font)))
            << "bold " << bold;
    }
    // The comparison tells the two kinds apart where a font draws each its own way.
    QFont latin(QStringLiteral("DejaVu Sans"));
    latin.setPixelSize(16);
    EXPECT_FALSE(sameInk(drawn(QStringLiteral("سريال 1250"), latin),
                         drawn(QStringLiteral("سريال ۱۲۵۰"), latin)));
    EXPECT_EQ(persianFont().families().front(), kDigitsFamily);
}

}  // namespace
}  // namespace tr::sdk
