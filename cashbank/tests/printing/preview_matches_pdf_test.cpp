// The print preview shows a document as its PDF does. The preview records each page as a picture
// and replays it; text replayed that way ran left to right and moved colons, brackets and digit
// groups of right-to-left lines. Both are rendered to images at one resolution and their ink
// compared: a moved mark is ink in one image where the other has none.
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QTemporaryDir>

#include "cashbank/tests/printing/print_fixture.h"
#include "cashbank/ui/printing/document_printing.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cashbank::testing {
namespace {

using tr::cashbank::ui::printDocument;
using tr::cashbank::ui::PrintLayout;
using tr::cashbank::ui::PrintTarget;

// Pixels per point of the preview's page (printed at 96 dpi) in both images.
constexpr int kScale = 2;

QString u(const char* text) {
    return QString::fromUtf8(text);
}

// The first page of the preview dialog's scene, without its frame and shadow.
QImage previewPage(QDialog& dialog) {
    dialog.show();
    auto* view = dialog.findChild<QGraphicsView*>();
    if (!view || !view->scene()) return {};
    const QGraphicsItem* first = nullptr;
    for (const QGraphicsItem* item : view->scene()->items())
        if (!first || item->pos().y() < first->pos().y()) first = item;
    if (!first) return {};
    const QRectF bounds = first->boundingRect();
    const qreal border = -bounds.left();
    const QRectF paper(first->pos(), bounds.size() - QSizeF(2 * border, 2 * border));
    QImage image((paper.size() * kScale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    view->scene()->render(&painter, QRectF(image.rect()), paper);
    return image;
}

QImage pdfPage(const QString& pdf, const QString& base) {
    const int status = QProcess::execute(
        QStringLiteral("pdftoppm"), {QStringLiteral("-png"), QStringLiteral("-r"),
                                     QString::number(96 * kScale), QStringLiteral("-singlefile"),
                                     pdf, base});
    return status == 0 ? QImage(base + QStringLiteral(".png")) : QImage();
}

bool ink(const QImage& image, int x, int y) {
    return qGray(image.pixel(x, y)) < 128;
}

// Share of `a`'s ink with no ink of `b` in reach (a pixel either way allows for the two
// rasterisers' edges); the frame the preview draws round its page is left out.
double inkMissing(const QImage& a, const QImage& b) {
    const int width = std::min(a.width(), b.width());
    const int height = std::min(a.height(), b.height());
    const int edge = 4 * kScale;
    qint64 total = 0;
    qint64 missing = 0;
    for (int y = edge; y < height - edge; ++y) {
        for (int x = edge; x < width - edge; ++x) {
            if (!ink(a, x, y)) continue;
            ++total;
            bool near = false;
            for (int dy = -1; dy <= 1 && !near; ++dy)
                for (int dx = -1; dx <= 1 && !near; ++dx) near = ink(b, x + dx, y + dy);
            if (!near) ++missing;
        }
    }
    return total ? double(missing) / double(total) : 1.0;
}

class PreviewMatchesPdfTest : public PrintTest {};

TEST_F(PreviewMatchesPdfTest, ReceiptPreviewShowsWhatItsPdfShows) {
    Header header;
    header.reference = QStringLiteral("77");
    header.date = QStringLiteral("1404/07/30");
    header.description = u("دريافت (بابت فاکتور 1001-2) : تسويه، مرحله 3/4");
    saveDocument(QStringLiteral("10"), 5, QStringLiteral("1"),
                 {accountLine("104", "0001", "30001", "", "", u("پيش پرداخت (قرارداد 12/ب)"),
                              1250000),
                  accountLine("301", "0001", "", "", "", u("آورده - سهم 2 : نقد"), 3500)},
                 header);
    QTemporaryDir folder;
    for (const PrintLayout layout : {PrintLayout::New, PrintLayout::Old}) {
        const QString base = folder.filePath(layout == PrintLayout::New ? u("new") : u("old"));
        QWidget parent;
        ASSERT_TRUE(printDocument(services, QStringLiteral("10"), QStringLiteral("5"), layout,
                                  PrintTarget::pdf(base + QStringLiteral(".pdf")), &parent));
        const QImage pdf = pdfPage(base + QStringLiteral(".pdf"), base);
        ASSERT_FALSE(pdf.isNull());

        tr::test::RecordingModalRunner runner;
        QImage preview;
        runner.answerBy([&preview](QDialog& dialog) {
            preview = previewPage(dialog);
            dialog.reject();
        });
        ASSERT_TRUE(printDocument(services, QStringLiteral("10"), QStringLiteral("5"), layout,
                                  PrintTarget::preview(), &parent));
        ASSERT_FALSE(preview.isNull());
        EXPECT_NEAR(preview.width(), pdf.width(), 2);
        EXPECT_NEAR(preview.height(), pdf.height(), 2);
        EXPECT_LT(inkMissing(preview, pdf), 0.01) << base.toStdString();
        EXPECT_LT(inkMissing(pdf, preview), 0.01) << base.toStdString();
    }
}

}  // namespace
}  // namespace tr::cashbank::testing
