// The received-cheque screen's print actions: both built-in layouts and the voucher to PDF
// (rendered to PNG for a look by eye), an opening-cheque document, and the hand-off to the
// PrintDesign library when it is installed.
#include "cheques/ui/received_cheque_printing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>

#include "cheques/tests/received_cheque_print_fixture.h"
#include "cheques/ui/received_cheque_layouts.h"
#include "common/db/query_helpers.h"
#include "tests/support/pdf_text.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cheques::testing {
namespace {

using tr::cheques::ui::designReceivedChequePrint;
using tr::cheques::ui::PrintLayout;
using tr::cheques::ui::printReceivedChequeDocument;
using tr::cheques::ui::printReceivedChequeVoucher;
using tr::cheques::ui::PrintTarget;

QString screen(const QString& name) {
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    return QStringLiteral(TR_SCREENS_DIR "/") + name;
}

// First page of the PDF as <name>.png beside it.
bool renderPng(const QString& pdf, const QString& name) {
    QFile::remove(screen(name + QStringLiteral(".png")));
    const int status =
        QProcess::execute(QStringLiteral("pdftoppm"),
                          {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("60"),
                           QStringLiteral("-singlefile"), pdf, screen(name)});
    return status == 0 && QFileInfo(screen(name + QStringLiteral(".png"))).size() > 0;
}

bool pdfShows(const QString& pdf, const QString& text) {
    return tr::test::pdfPlainText(pdf).contains(tr::test::pdfFolded(text));
}

class ReceivedChequePrintingTest : public ReceivedChequePrintTest {
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

    QTemporaryDir host;
    QWidget parent;
};

TEST_F(ReceivedChequePrintingTest, EachLayoutAndTheVoucherPrintToPdf) {
    const QString serial = saveTwoCheques();
    struct Case {
        const char* name;
        PrintLayout layout;
        bool voucher;
    };
    for (const Case& c : {Case{"received_cheques_new", PrintLayout::New, false},
                          Case{"received_cheques_old", PrintLayout::Old, false},
                          Case{"received_cheques_voucher", PrintLayout::New, true}}) {
        const QString pdf = screen(u(c.name) + QStringLiteral(".pdf"));
        const PrintTarget target = PrintTarget::pdf(pdf);
        const bool printed =
            c.voucher ? printReceivedChequeVoucher(services(), serial, target, &parent)
                      : printReceivedChequeDocument(services(), serial, c.layout, target, &parent);
        ASSERT_TRUE(printed) << c.name;
        EXPECT_TRUE(renderPng(pdf, u(c.name))) << c.name;
        // Signed by the user's full name; the second cheque's bank and the split line's account.
        for (const char* shown : {"مدير سيستم", "7002", "فروشگاه زنجيره اي آفتاب"})
            EXPECT_TRUE(pdfShows(pdf, u(shown))) << c.name << ' ' << shown;
        if (!c.voucher) {
            for (const char* shown : {"شرکت پخش البرز", "بانک ملي", "پنج ميليون ريال"})
                EXPECT_TRUE(pdfShows(pdf, u(shown))) << c.name << ' ' << shown;
        }
    }
}

TEST_F(ReceivedChequePrintingTest, OpeningDocumentPrintsMarkedAndHasNoVoucherToPrint) {
    const QString serial = saveTwoCheques(/*opening=*/true);
    const auto document = loadReceivedChequePrint(services(), serial);
    ASSERT_TRUE(document);
    for (const PrintLayout layout : {PrintLayout::New, PrintLayout::Old})
        EXPECT_TRUE(
            tr::cheques::ui::receivedChequeHtml(*document, layout).contains(u("(چک اول دوره)")));
    const QString pdf = screen(QStringLiteral("received_cheques_opening.pdf"));
    ASSERT_TRUE(printReceivedChequeDocument(services(), serial, PrintLayout::New,
                                            PrintTarget::pdf(pdf), &parent));
    EXPECT_TRUE(renderPng(pdf, QStringLiteral("received_cheques_opening")));

    tr::test::RecordingModalRunner runner;
    EXPECT_FALSE(printReceivedChequeVoucher(services(), serial, PrintTarget::preview(), &parent));
    EXPECT_FALSE(printReceivedChequeDocument(services(), QString::number(serial.toInt() + 1),
                                             PrintLayout::Old, PrintTarget::preview(), &parent));
    EXPECT_TRUE(runner.shown().isEmpty());
}

TEST_F(ReceivedChequePrintingTest, NewLayoutGoesToPrintDesignWithTheTablesAlive) {
    const QString serial = saveTwoCheques();
    installPrintDesign();
    tr::test::RecordingModalRunner runner;
    EXPECT_TRUE(printReceivedChequeDocument(services(), serial, PrintLayout::New,
                                            PrintTarget::preview(), &parent));
    EXPECT_TRUE(runner.shown().isEmpty());
    EXPECT_EQ(parent.property("mode").toString(), QStringLiteral("PreviewPrn"));
    EXPECT_EQ(parent.property("layoutKey").toString(), u("دريافت چک_"));
    EXPECT_EQ(parent.property("layoutSelection").toString(),
              QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = '71' "));
    EXPECT_EQ(parent.property("linkFields").toString(), QStringLiteral("SerialNo"));
    EXPECT_EQ(parent.property("head.serialno").toString(), serial);
    EXPECT_EQ(parent.property("lineCount").toInt(), 3);
    for (const char* table : {"headerTable", "linesTable"}) {
        const QString name = parent.property(table).toString();
        ASSERT_TRUE(name.startsWith(QStringLiteral("##")));
        EXPECT_FALSE(tr::db::objectExistsInTempdb(company(), name.mid(2))) << table;
    }

    // "قديم" and a PDF file stay with the built-in layouts.
    parent.setProperty("mode", QVariant());
    EXPECT_TRUE(printReceivedChequeDocument(services(), serial, PrintLayout::Old,
                                            PrintTarget::preview(), &parent));
    EXPECT_EQ(runner.shown().size(), 1);
    const QString pdf = screen(QStringLiteral("received_cheques_with_library.pdf"));
    EXPECT_TRUE(printReceivedChequeDocument(services(), serial, PrintLayout::New,
                                            PrintTarget::pdf(pdf), &parent));
    EXPECT_GT(QFileInfo(pdf).size(), 1000);
    EXPECT_FALSE(parent.property("mode").isValid());
}

TEST_F(ReceivedChequePrintingTest,
       DesignOpensTheLibraryBeforeTheFirstSaveAndWithoutItTellsTheUser) {
    EXPECT_FALSE(designReceivedChequePrint(services(), QString(), &parent));
    ASSERT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1WR"));

    installPrintDesign();
    EXPECT_TRUE(designReceivedChequePrint(services(), QString(), &parent));
    EXPECT_EQ(parent.property("mode").toString(), QStringLiteral("DesignPrn"));
    EXPECT_EQ(parent.property("layoutKey").toString(), u("دريافت چک_"));
    EXPECT_EQ(parent.property("lineCount").toInt(), 0);
}

}  // namespace
}  // namespace tr::cheques::testing
