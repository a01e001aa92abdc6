// The cheque-payment screen's prints: both document layouts and the voucher to PDF, our own
// leaves one to a leaf-sized page with the amount in words (all rendered to PNG for a look by
// eye), the printer's offsets and the form-code fallback seen in the ink, the PrintDesign
// hand-offs, and the menu items of the window reaching each print.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>

#include "cheques/tests/cheque_payment_print_fixture.h"
#include "cheques/ui/cheque_leaf_layouts.h"
#include "cheques/ui/cheque_leaf_printing.h"
#include "cheques/ui/cheque_payment_printing.h"
#include "cheques/ui/chq_get_menus.h"
#include "cheques/ui/chq_pay_form.h"
#include "common/persian/amount_words.h"
#include "tests/support/pdf_text.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cheques::testing {
namespace {

using tr::cheques::ui::PrintLayout;
using tr::cheques::ui::PrintTarget;

QString screen(const QString& name) {
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    return QStringLiteral(TR_SCREENS_DIR "/") + name;
}

QString run(const QString& program, const QStringList& arguments) {
    QProcess p;
    p.start(program, arguments);
    if (!p.waitForFinished(30000) || p.exitCode() != 0) return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

// Page `page` of `pdf` as `png` at 60 dots an inch.
QImage renderPng(const QString& pdf, const QString& png, int page = 1) {
    QFile::remove(png);
    QString root = png;
    root.chop(4);
    run(QStringLiteral("pdftoppm"),
        {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("60"), QStringLiteral("-f"),
         QString::number(page), QStringLiteral("-l"), QString::number(page),
         QStringLiteral("-singlefile"), pdf, root});
    return QImage(png);
}

// A copy in screens/ for a look by eye; the checks read the test's own files, which the other
// backend's run of the same test does not write.
void keep(const QString& file) {
    const QString copy = screen(QFileInfo(file).fileName());
    QFile::remove(copy);
    QFile::copy(file, copy);
}

QString pageText(const QString& pdf, int page) {
    return tr::test::pdfFolded(run(QStringLiteral("pdftotext"),
                                   {QStringLiteral("-enc"), QStringLiteral("UTF-8"),
                                    QStringLiteral("-f"), QString::number(page),
                                    QStringLiteral("-l"), QString::number(page), pdf,
                                    QStringLiteral("-")}));
}

bool shows(const QString& plainText, const char* utf8) {
    return plainText.contains(tr::test::pdfFolded(text(utf8)));
}

// The smallest rectangle holding every dark pixel.
QRect ink(const QImage& image) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 128) box |= QRect(x, y, 1, 1);
    return box;
}

class ChequePaymentPrintingTest : public ChequePaymentPrintTest {
  protected:
    // A host folder whose DLLs/GlobalForms holds the stand-in PrintDesign library.
    void installPrintDesign() {
        const QString folder = host.path() + QStringLiteral("/DLLs/GlobalForms");
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile::remove(folder + QStringLiteral("/PrintDesign.so"));
        ASSERT_TRUE(QFile::copy(QStringLiteral(TR_FAKE_PRINT_DESIGN),
                                folder + QStringLiteral("/PrintDesign.so")));
        session->global.hostFolder = host.path();
    }
    bool printLeaves(const QString& serial, const QString& pdf, ChequeLeafOffsets offsets = {}) {
        return ui::printChequeLeaves(services(), serial, PrintTarget::pdf(pdf), &parent, offsets);
    }

    // A file of the test's own, `name` with its extension.
    QString work(const QString& name) const { return out.filePath(name); }
    // Page `page` of `pdf` as <name>.png, kept in screens/ too.
    QImage render(const QString& pdf, const QString& name, int page = 1) {
        const QString png = work(name + QStringLiteral(".png"));
        QImage image = renderPng(pdf, png, page);
        keep(png);
        return image;
    }

    QTemporaryDir host;
    QTemporaryDir out;
    QWidget parent;
};

TEST_F(ChequePaymentPrintingTest, EachLayoutAndTheVoucherPrintToPdf) {
    const QString serial = savePayment();
    struct Case {
        const char* name;
        PrintLayout layout;
        bool voucher;
    };
    for (const Case& c : {Case{"cheque_payment_new", PrintLayout::New, false},
                          Case{"cheque_payment_old", PrintLayout::Old, false},
                          Case{"cheque_payment_voucher", PrintLayout::New, true}}) {
        const QString pdf = work(text(c.name) + QStringLiteral(".pdf"));
        const PrintTarget target = PrintTarget::pdf(pdf);
        ASSERT_TRUE(c.voucher ? ui::printChequePaymentVoucher(services(), serial, target, &parent)
                              : ui::printChequePaymentDocument(services(), serial, c.layout,
                                                               target, &parent))
            << c.name;
        EXPECT_FALSE(render(pdf, text(c.name)).isNull()) << c.name;
        keep(pdf);
        const QString plain = tr::test::pdfPlainText(pdf);
        for (const char* shown : {"مدير سيستم", "بازرگاني نگين"})
            EXPECT_TRUE(shows(plain, shown)) << c.name << ' ' << shown;
        if (c.voucher) continue;
        for (const char* shown : {"پرداخت چك", "200003", "5101", "صدور چك", "خرج چك", "شرکت فولاد مبارکه",
                                  "تعاوني حمل بار", "بانک صادرات", "دريافت کننده",
                                  "يك ميليارد و دويست و سي و هشت ميليون و شصت و هفت هزار ريال"})
            EXPECT_TRUE(shows(plain, shown)) << c.name << ' ' << shown;
    }
}

TEST_F(ChequePaymentPrintingTest, EachOwnLeafPrintsOnALeafSizedPageWithItsAmountInWords) {
    const QString serial = savePayment();
    const QString pdf = work(QStringLiteral("cheque_leaves.pdf"));
    ASSERT_TRUE(printLeaves(serial, pdf));
    keep(pdf);
    const QString info = run(QStringLiteral("pdfinfo"), {pdf});
    EXPECT_TRUE(info.contains(QStringLiteral("Pages:           2"))) << info.toStdString();
    // 180 x 80 mm lying on its long side, in the whole points a PDF page is given in.
    EXPECT_TRUE(info.contains(QStringLiteral("510 x 227 pts"))) << info.toStdString();
    for (int page = 1; page <= 2; ++page) {
        const QImage png = render(pdf, QStringLiteral("cheque_leaf_%1").arg(page), page);
        EXPECT_EQ(png.size(), QSize(425, 190)) << page;
    }

    const QString first = pageText(pdf, 1);
    for (const char* shown :
         {"1404/03/15", "#2,500,000#", "دو ميليون و پانصد هزار ريال", "شرکت فولاد مبارکه",
          "به حواله کرد"})
        EXPECT_TRUE(shows(first, shown)) << shown << '\n' << first.toStdString();
    const QString second = pageText(pdf, 2);
    for (const char* shown :
         {"#1,234,567,000#", "ميليارد", "پانصد و شصت و هفت هزار ريال", "حامل"})
        EXPECT_TRUE(shows(second, shown)) << shown << '\n' << second.toStdString();
    EXPECT_FALSE(shows(second, "به حواله کرد"));
    // The cheque passed on is its drawer's leaf, written already.
    EXPECT_FALSE(shows(tr::test::pdfPlainText(pdf), "تعاوني حمل بار"));
}

TEST_F(ChequePaymentPrintingTest, OffsetsMoveTheInkAndAnUnknownFormCodePrintsAsTheFirst) {
    const QString serial = savePayment(/*passOn=*/false);
    const QString pdf = work(QStringLiteral("cheque_leaves_moved.pdf"));
    ASSERT_TRUE(printLeaves(serial, pdf));
    const QRect still = ink(renderPng(pdf, work(QStringLiteral("moved.png")), 1));
    ASSERT_TRUE(printLeaves(serial, pdf, {10, 5}));
    const QRect moved = ink(render(pdf, QStringLiteral("cheque_leaf_moved"), 1));
    ASSERT_FALSE(still.isEmpty());
    // 10 mm and 5 mm at 60 dots an inch.
    EXPECT_NEAR(moved.left() - still.left(), 23.6, 1.5);
    EXPECT_NEAR(moved.top() - still.top(), 11.8, 1.5);
    EXPECT_NEAR(moved.width(), still.width(), 1);
    EXPECT_NEAR(moved.height(), still.height(), 1);

    // The second leaf's book in form "2", then in a code no layout has, then in form "1".
    const auto secondLeaf = [&](const char* code) {
        company().execute(QStringLiteral("Update N_Cheque Set FormCode = ") +
                          company().text(QString::fromLatin1(code)) +
                          QStringLiteral(" Where AcountID = 2"));
        EXPECT_TRUE(printLeaves(serial, pdf));
        return renderPng(pdf, work(QStringLiteral("second.png")), 2);
    };
    const QImage second = secondLeaf("2");
    const QImage unknown = secondLeaf("9");
    const QImage first = secondLeaf("1");
    EXPECT_TRUE(second != first);
    EXPECT_TRUE(unknown == first);
    EXPECT_EQ(ui::chequeLeafLayoutCode(QStringLiteral(" 2 ")), QStringLiteral("2"));
    EXPECT_EQ(ui::chequeLeafLayoutCode(QString()), QStringLiteral("1"));
}

// A long amount in words is set smaller (on two lines at the last) but stays in its box.
TEST(ChequeLeafLayoutTest, TheLongestAmountInWordsStaysInItsBox) {
    QImage leaf(QSize(709, 315), QImage::Format_RGB32);  // 180 x 80 mm at 100 dots an inch
    leaf.setDotsPerMeterX(3937);
    leaf.setDotsPerMeterY(3937);
    leaf.fill(Qt::white);
    ChequeLeaf cheque;
    cheque.amountInWords = tr::persian::amountInWords(787787787787.87);
    ASSERT_GT(cheque.amountInWords.size(), 125);
    {
        QPainter painter(&leaf);
        ui::paintChequeLeaf(painter, cheque, {});
    }
    // Layout "1" writes the words between 18 and 156 mm across, from 27 mm down; the figures
    // are far below.
    leaf.save(screen(QStringLiteral("cheque_leaf_longest_words.png")));
    const QRect words = ink(leaf.copy(0, 0, leaf.width(), 50 * 100 / 25.4));
    const double dots = 100 / 25.4;
    EXPECT_GE(words.left(), 18 * dots - 1);
    EXPECT_LE(words.right(), 156 * dots + 1);
    EXPECT_GE(words.top(), 27 * dots - 1);
    EXPECT_LE(words.bottom(), 38 * dots);
    EXPECT_GT(words.width(), 120 * dots);
}

TEST_F(ChequePaymentPrintingTest, APaymentWithoutLeavesOfOursHasNothingToPrint) {
    receive(QStringLiteral("5201"), 400000);
    doc->newDocument();
    doc->header().date = QStringLiteral("1404/02/20");
    doc->lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("30003"),
                           {}, {}};
    ASSERT_TRUE(doc->spendCheque(QStringLiteral("5201"), text("ج")));
    ASSERT_TRUE(post() && doc->save()) << lastMessage();
    tr::test::RecordingModalRunner runner;
    EXPECT_FALSE(ui::printChequeLeaves(services(), doc->header().serial, PrintTarget::preview(),
                                       &parent, {}));
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1WR"));
    EXPECT_FALSE(ui::printChequeLeaves(services(), QStringLiteral("77"), PrintTarget::preview(),
                                       &parent, {}));
    EXPECT_TRUE(runner.shown().isEmpty());
}

TEST_F(ChequePaymentPrintingTest, PrintDesignTakesTheNewLayoutAndBothDesigns) {
    const QString serial = savePayment();
    EXPECT_FALSE(ui::designChequeLeaves(services(), serial, &parent));
    EXPECT_FALSE(ui::designChequePaymentPrint(services(), serial, &parent));
    ASSERT_EQ(session->dialog.shown().size(), 2);
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1WR"));

    installPrintDesign();
    tr::test::RecordingModalRunner runner;
    EXPECT_TRUE(ui::printChequePaymentDocument(services(), serial, PrintLayout::New,
                                               PrintTarget::preview(), &parent));
    EXPECT_TRUE(runner.shown().isEmpty());
    EXPECT_EQ(parent.property("mode").toString(), QStringLiteral("PreviewPrn"));
    EXPECT_EQ(parent.property("layoutKey").toString(), text("پرداخت چک_"));
    EXPECT_EQ(parent.property("layoutSelection").toString(),
              QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = '81' "));
    EXPECT_EQ(parent.property("lineCount").toInt(), 3);

    EXPECT_TRUE(ui::designChequeLeaves(services(), serial, &parent));
    EXPECT_EQ(parent.property("mode").toString(), QStringLiteral("DesignPrn"));
    EXPECT_EQ(parent.property("layoutKey").toString(), text("چاپ چك_"));
    EXPECT_EQ(parent.property("linkFields").toString(), QStringLiteral("SerialNo"));
    EXPECT_EQ(parent.property("head.serialno").toString(), serial);
    EXPECT_EQ(parent.property("lineCount").toInt(), 2);
    // Before the first save the designer gets the company and no leaves.
    EXPECT_TRUE(ui::designChequeLeaves(services(), QString(), &parent));
    EXPECT_EQ(parent.property("lineCount").toInt(), 0);
    EXPECT_TRUE(ui::designChequePaymentPrint(services(), serial, &parent));
    EXPECT_EQ(parent.property("layoutKey").toString(), text("پرداخت چک_"));
}

// Ctrl+P stays the voucher; the payment's own items print the document and the leaves.
TEST_F(ChequePaymentPrintingTest, TheWindowsMenuItemsReachEachPrint) {
    const QString serial = savePayment();
    TChqPayForm form(services());
    ASSERT_TRUE(form.document().open(serial)) << lastMessage();
    tr::test::RecordingModalRunner runner;
    const ChqGetMenuHooks& hooks = form.menus()->hooks;
    hooks.printDocument();
    hooks.printPaper();
    hooks.printLeaves();
    ASSERT_EQ(runner.shown().size(), 3);
    EXPECT_EQ(runner.shown()[0].kind, QStringLiteral("N_ASNAD_CHQPAY_CHQPAY"));
    EXPECT_EQ(runner.shown()[1].kind, QStringLiteral("PrintPreview"));
    EXPECT_EQ(runner.shown()[2].kind, QStringLiteral("ChequeLeafPreview"));
    hooks.designLeaves();
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1WR"));
}

}  // namespace
}  // namespace tr::cheques::testing
