// The screens' print actions: built-in layouts to PDF (rendered to PNG for a look by eye) and to
// the print preview, and the hand-off to the PrintDesign library when it is installed.
#include "cashbank/ui/printing/document_printing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>

#include "cashbank/tests/printing/print_fixture.h"
#include "common/db/query_helpers.h"
#include "tests/support/pdf_text.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cashbank::testing {
namespace {

using tr::cashbank::ui::designDocumentPrint;
using tr::cashbank::ui::printDocument;
using tr::cashbank::ui::PrintLayout;
using tr::cashbank::ui::PrintTarget;
using tr::cashbank::ui::printVoucher;

QString u(const char* text) {
    return QString::fromUtf8(text);
}

QString screen(const QString& name) {
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    return QStringLiteral(TR_SCREENS_DIR "/") + name;
}

// First page of the PDF as <name>.png beside it.
bool renderPng(const QString& pdf, const QString& name) {
    QFile::remove(screen(name + QStringLiteral(".png")));
    const int status =
        QProcess::execute(QStringLiteral("pdftoppm"),
                          {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("90"),
                           QStringLiteral("-singlefile"), pdf, screen(name)});
    return status == 0 && QFileInfo(screen(name + QStringLiteral(".png"))).size() > 0;
}

class DocumentPrintingTest : public PrintTest {
  protected:
    void SetUp() override {
        PrintTest::SetUp();
        TransferLine project = accountLine("104", "0001", "30001", "51001", "P0001",
                                           u("وصول بخشي از صورتحساب فروش شماره 1001 بابت "
                                             "قرارداد پخش استان فارس"),
                                           12500000);
        project.namWhatDoc2 = u("شرکت پخش البرز");
        saveDocument(
            QStringLiteral("10"), 12, QStringLiteral("1"),
            {project, accountLine("104", "0001", "30002", "", "", u("تسويه فاکتور 1002"), 7250000),
             accountLine("301", "0001", "", "", "", u("آورده نقدي سهامدار"), 250000)},
            receiptHeader());
    }

    static Header receiptHeader() {
        Header h;
        h.reference = QStringLiteral("3418");
        h.date = QStringLiteral("1404/02/18");
        h.description = u("دريافت وجه نقد از مشتريان بابت فروش ارديبهشت ( 12 )");
        return h;
    }

    // A host folder whose DLLs/GlobalForms holds the stand-in PrintDesign library.
    void installPrintDesign() {
        const QString folder = host.path() + QStringLiteral("/DLLs/GlobalForms");
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile::remove(folder + QStringLiteral("/PrintDesign.so"));
        ASSERT_TRUE(QFile::copy(QStringLiteral(TR_FAKE_PRINT_DESIGN),
                                folder + QStringLiteral("/PrintDesign.so")));
        global.hostFolder = host.path();
    }

    QTemporaryDir host;
    QWidget parent;
};

TEST_F(DocumentPrintingTest, EachLayoutAndTheVoucherPrintToPdf) {
    struct Case {
        const char* name;
        PrintLayout layout;
        bool voucher;
    };
    for (const Case& c :
         {Case{"receipt_new", PrintLayout::New, false},
          Case{"receipt_old", PrintLayout::Old, false}, Case{"voucher", PrintLayout::New, true}}) {
        const QString pdf = screen(u(c.name) + QStringLiteral(".pdf"));
        const PrintTarget target = PrintTarget::pdf(pdf);
        const bool printed = c.voucher
                                 ? printVoucher(services, QStringLiteral("10"),
                                                QStringLiteral("12"), target, &parent)
                                 : printDocument(services, QStringLiteral("10"),
                                                 QStringLiteral("12"), c.layout, target, &parent);
        ASSERT_TRUE(printed) << c.name;
        EXPECT_GT(QFileInfo(pdf).size(), 1000) << c.name;
        EXPECT_TRUE(renderPng(pdf, u(c.name))) << c.name;
        // Signed by the user's full name, not the login.
        EXPECT_TRUE(tr::test::pdfPlainText(pdf).contains(tr::test::pdfFolded(u("مدير سيستم"))))
            << c.name;
    }
}

// The bank forms' own labels, the withdrawal's extra fields and the cancellation mark.
TEST_F(DocumentPrintingTest, CancelledWithdrawalShowsItsMarkAndNames) {
    TransferLine toHolder = accountLine("105", "0001", "40001", "", "", u("تامين تنخواه"), 4000000);
    toHolder.manabehCod = QStringLiteral("20101");
    toHolder.joz = QStringLiteral("3");
    saveDocument(QStringLiteral("90"), 4, QStringLiteral("2"), {toHolder}, receiptHeader());
    cancelDocument(QStringLiteral("90"), 4, QStringLiteral("2"), QStringLiteral("1404/02/25"));
    const auto document = loadDocumentPrint(services, QStringLiteral("90"), QStringLiteral("4"));
    ASSERT_TRUE(document);
    for (const PrintLayout layout : {PrintLayout::New, PrintLayout::Old}) {
        const QString html = tr::cashbank::ui::documentHtml(*document, layout);
        for (const char* expected :
             {"(ابطال شده است)", "حساب بانکي", "شماره برداشت", "مصارف", "علي رضايي",
              "حقوق و دستمزد", "دريافت کننده", "چهار ميليون ريال"})
            EXPECT_TRUE(html.contains(u(expected))) << expected;
    }
    const QString pdf = screen(QStringLiteral("withdrawal_new.pdf"));
    ASSERT_TRUE(printDocument(services, QStringLiteral("90"), QStringLiteral("4"), PrintLayout::New,
                              PrintTarget::pdf(pdf), &parent));
    EXPECT_TRUE(renderPng(pdf, QStringLiteral("withdrawal_new")));
}

TEST_F(DocumentPrintingTest, NothingIsPrintedForADocumentThatIsNotSaved) {
    tr::test::RecordingModalRunner runner;
    const QString pdf = screen(QStringLiteral("missing.pdf"));
    QFile::remove(pdf);
    EXPECT_FALSE(printDocument(services, QStringLiteral("10"), QStringLiteral("13"),
                               PrintLayout::New, PrintTarget::pdf(pdf), &parent));
    EXPECT_FALSE(printVoucher(services, QStringLiteral("20"), QStringLiteral("12"),
                              PrintTarget::preview(), &parent));
    EXPECT_FALSE(QFileInfo::exists(pdf));
    EXPECT_TRUE(runner.shown().isEmpty());
}

TEST_F(DocumentPrintingTest, PreviewIsModalThroughTheRunnerAndHoldsOnePage) {
    tr::test::RecordingModalRunner runner;
    int pages = -1;
    const auto countPages = [&pages](QDialog& dialog) {
        dialog.show();
        pages = dialog.findChild<QPrintPreviewWidget*>()->pageCount();
        dialog.reject();
    };
    runner.answerBy(countPages);
    EXPECT_TRUE(printDocument(services, QStringLiteral("10"), QStringLiteral("12"),
                              PrintLayout::Old, PrintTarget::preview(), &parent));
    ASSERT_EQ(runner.shown().size(), 1);
    EXPECT_EQ(runner.last().title, u("دريافت صندوق 12"));
    EXPECT_EQ(pages, 1);

    runner.answerBy(countPages);
    EXPECT_TRUE(printVoucher(services, QStringLiteral("10"), QStringLiteral("12"),
                             PrintTarget::preview(), &parent));
    EXPECT_EQ(runner.last().kind, QStringLiteral("N_ASNAD_CASHGET_CASHGET"));
    EXPECT_TRUE(runner.last().title.startsWith(u("سند دريافت صندوق شماره ")));
    EXPECT_EQ(pages, 1);
}

TEST_F(DocumentPrintingTest, NewLayoutGoesToPrintDesignWithTheTablesAlive) {
    installPrintDesign();
    tr::test::RecordingModalRunner runner;
    EXPECT_TRUE(printDocument(services, QStringLiteral("10"), QStringLiteral("12"),
                              PrintLayout::New, PrintTarget::preview(), &parent));
    EXPECT_TRUE(runner.shown().isEmpty());
    EXPECT_EQ(parent.property("mode").toString(), QStringLiteral("PreviewPrn"));
    EXPECT_EQ(parent.property("layoutKey").toString(), u("دريافت صندوق_"));
    EXPECT_EQ(parent.property("layoutSelection").toString(),
              QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = '10' "));
    EXPECT_EQ(parent.property("linkFields").toString(), QStringLiteral("CashCod;SerialNoCash"));
    EXPECT_EQ(parent.property("cashNam").toString(), u("صندوق مرکزي"));
    EXPECT_EQ(parent.property("lineCount").toInt(), 3);
    // Gone once the library has returned.
    for (const char* table : {"headerTable", "linesTable"}) {
        const QString name = parent.property(table).toString();
        ASSERT_TRUE(name.startsWith(QStringLiteral("##")));
        EXPECT_FALSE(tr::db::objectExistsInTempdb(db(), name.mid(2))) << table;
    }
}

TEST_F(DocumentPrintingTest, OldLayoutAndPdfStayBuiltInBesideTheLibrary) {
    installPrintDesign();
    tr::test::RecordingModalRunner runner;
    EXPECT_TRUE(printDocument(services, QStringLiteral("10"), QStringLiteral("12"),
                              PrintLayout::Old, PrintTarget::preview(), &parent));
    EXPECT_EQ(runner.shown().size(), 1);
    const QString pdf = screen(QStringLiteral("receipt_with_library.pdf"));
    EXPECT_TRUE(printDocument(services, QStringLiteral("10"), QStringLiteral("12"),
                              PrintLayout::New, PrintTarget::pdf(pdf), &parent));
    EXPECT_GT(QFileInfo(pdf).size(), 1000);
    EXPECT_FALSE(parent.property("mode").isValid());
}

TEST_F(DocumentPrintingTest, DesignOpensTheLibraryEvenBeforeTheFirstSave) {
    installPrintDesign();
    EXPECT_TRUE(designDocumentPrint(services, QStringLiteral("90"), QString(), &parent));
    EXPECT_EQ(parent.property("mode").toString(), QStringLiteral("DesignPrn"));
    EXPECT_EQ(parent.property("layoutKey").toString(), u("برداشت بانک_"));
    EXPECT_EQ(parent.property("lineCount").toInt(), 0);

    EXPECT_TRUE(designDocumentPrint(services, QStringLiteral("10"), QStringLiteral("12"), &parent));
    EXPECT_EQ(parent.property("lineCount").toInt(), 3);
}

TEST_F(DocumentPrintingTest, DesignWithoutTheLibraryTellsTheUser) {
    global.hostFolder = host.path();  // no DLLs folder at all
    EXPECT_FALSE(
        designDocumentPrint(services, QStringLiteral("10"), QStringLiteral("12"), &parent));
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().code, QStringLiteral("1WR"));
    EXPECT_TRUE(dialog.last().text.contains(QStringLiteral("PrintDesign")));
}

}  // namespace
}  // namespace tr::cashbank::testing
