// The launcher and a search form on the offscreen platform: buttons by rights, F5, the totals
// drawn apart, title-click sorting; screenshots are left in the build tree for a look by eye.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QTemporaryDir>
#include <QFont>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cashbank/tests/search/search_fixture.h"
#include "cashbank/ui/documents/cash_bank_form.h"
#include "cashbank/ui/search/document_search_form.h"
#include "cashbank/ui/search/search_form.h"
#include "cheques/ui/search/cheque_search_form.h"
#include "cashbank/ui/search/search_result_print.h"
#include "common/ui/dataset_model.h"
#include "tests/support/pdf_text.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cashbank::testing {
namespace {

QString s(const char* text) {
    return QString::fromUtf8(text);
}

class SearchForms : public SearchTest {
  protected:
    // A shown cash search from the start of 1404, as the user fills its first date.
    static void showFromYearStart(TCashSearchForm& form) {
        form.resize(1100, 560);
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
        form.fromDate.day->setText(QStringLiteral("1"));
        form.fromDate.month->setText(QStringLiteral("1"));
        form.fromDate.year->setText(QStringLiteral("1404"));
    }
    // That search, run after saving a receipt of 1,250,000 with `description`.
    std::unique_ptr<TCashSearchForm> searchedAfterReceipt(const QString& description) {
        Doc a = receipt(1, 1250000);
        a.description = description;
        save(a);
        auto form = std::make_unique<TCashSearchForm>(session->services);
        showFromYearStart(*form);
        form->mnuSearchClick();
        return form;
    }
};

TEST_F(SearchForms, LauncherShowsTheSearchesTheUserMayRunAndOpensThem) {
    session->global.rights =
        s("N_A_SEARCH_CASH(Y)N_A_SEARCH_TANKHAH(Y)N_A_SEARCH_VARIZ(Y)"
          "N_A_SEARCH_CHQPAY(Y)N_A_SEARCH_HAVALEH(Y)N_A_SEARCH_BARDASHTBANK(Y)"
          "N_A_SEARCH_CHQGET(Y)");
    TSearchForm launcher(session->services);
    launcher.resize(760, 420);
    launcher.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&launcher));
    EXPECT_EQ(launcher.layoutDirection(), Qt::RightToLeft);
    EXPECT_TRUE(launcher.button(s("btnCash"))->isVisible());
    EXPECT_FALSE(launcher.button(s("btnSoftehGet"))->isEnabled());
    EXPECT_FALSE(launcher.button(s("btnSoftehGet"))->toolTip().isEmpty());
    // The cheque buttons open the cheque searches, once each.
    for (const char* name : {"btnChqGet", "btnChqPay", "btnChqGet"}) {
        ASSERT_TRUE(launcher.button(s(name))->isEnabled());
        QTest::mouseClick(launcher.button(s(name)), Qt::LeftButton);
    }
    const auto chequeForms = launcher.findChildren<tr::cheques::ChequeSearchForm*>();
    ASSERT_EQ(chequeForms.size(), 2);
    for (auto* form : chequeForms) form->close();
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(launcher.grab().save(QStringLiteral(TR_SCREENS_DIR "/search_launcher.png")));

    session->global.rights = s("N_A_SEARCH_TANKHAH(Y)");
    launcher.setServices(session->services);
    EXPECT_FALSE(launcher.button(s("btnCash"))->isVisible());
    EXPECT_TRUE(launcher.button(s("btnTankhah"))->isVisible());

    QTest::mouseClick(launcher.button(s("btnTankhah")), Qt::LeftButton);
    DocumentSearchForm* form = launcher.openSearch(SearchFamily::PettyCash);
    EXPECT_NE(dynamic_cast<TTankhahSearchForm*>(form), nullptr);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(launcher.openSearch(SearchFamily::PettyCash), form);  // created once
}

// Leaving a date filter the calendar does not have brings the message and the cursor back to
// the box at fault; moving within the date does not.
TEST_F(SearchForms, LeavingAnImpossibleDateFilterReturnsToItsBox) {
    TCashSearchForm form(session->services);
    form.show();
    QApplication::setActiveWindow(&form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    form.toDate.day->setText(s("30"));
    form.toDate.month->setText(s("12"));
    form.toDate.year->setText(s("1404"));
    form.toDate.day->setFocus();
    form.toDate.year->setFocus();
    EXPECT_TRUE(session->dialog.shown().isEmpty());
    form.words[0]->setFocus();
    ASSERT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(session->dialog.last().code, s("1ER"));
    EXPECT_EQ(QApplication::focusWidget(), form.toDate.day);

    form.toDate.year->setText(s("1403"));  // a leap year: the 30th is a date
    form.words[0]->setFocus();
    EXPECT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(QApplication::focusWidget(), form.words[0]);
}

TEST_F(SearchForms, CashSearchShowsSubtotalsApartAndSortsThemLast) {
    Doc a = receipt(1, 1250000);
    a.description = s("دريافت وجه نقد فروش روزانه فروشگاه مرکزي");
    Doc b = receipt(2, 380000, s("2"));
    Doc c = receipt(3, 74500000);
    c.kind = s("20");
    c.description = s("پرداخت حقوق کارکنان");
    for (const Doc& d : {a, b, c}) save(d);
    cancel(s("10"), 2, s("2"));

    TCashSearchForm form(session->services);
    showFromYearStart(form);
    form.fromCode->setText(s("1"));
    emit form.fromCode->editingFinished();
    EXPECT_EQ(form.fromName->text(), s("صندوق مرکزي"));
    form.words[0]->setFocus();
    QTest::keyClick(form.words[0], Qt::Key_F5);

    tr::ui::DatasetModel* model = form.model();
    ASSERT_EQ(model->rowCount(), 4 + 3 + 1);
    const int des = model->fieldColumn(s("Des"));
    const int last = model->rowCount() - 1;
    EXPECT_EQ(model->index(last, des).data().toString(), s("جمع کل "));
    EXPECT_TRUE(model->index(last, des).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_TRUE(model->index(last, des).data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(model->index(0, des).data(Qt::BackgroundRole).isValid());
    EXPECT_TRUE(form.grid()->isColumnHidden(model->fieldColumn(s("sOrder"))));
    EXPECT_EQ(model->headerData(model->fieldColumn(s("CashCod")), Qt::Horizontal).toString(),
              s("صندوق"));
    // The given column order, from the right: code, name, kind, date, description, amount...
    EXPECT_EQ(form.grid()->horizontalHeader()->visualIndex(model->fieldColumn(s("SValue"))), 5);

    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form.grab().save(QStringLiteral(TR_SCREENS_DIR "/cash_search_result.png")));

    const int amount = model->fieldColumn(s("SValue"));
    form.grid()->horizontalHeader()->sectionClicked(amount);
    form.grid()->horizontalHeader()->sectionClicked(amount);
    EXPECT_EQ(form.search().result().sort().trimmed(), s("sOrder, SValue DESC"));
    EXPECT_EQ(model->titleColour(s("SValue")), QColor(Qt::blue));
    const int order = model->fieldColumn(s("sOrder"));
    QString orders;
    for (int r = 0; r < model->rowCount(); ++r) {
        const QString o = model->index(r, order).data().toString();
        orders += o.isEmpty() ? QStringLiteral("-") : o;
    }
    EXPECT_EQ(orders, s("----XXXY"));
    EXPECT_EQ(model->index(0, amount).data().toString(), s("74,500,000"));
}

// A row of the result opens its document in its screen: double-click or Enter, as in the pickers;
// a total row opens nothing, and a row no screen here saves says so.
TEST_F(SearchForms, ARowOpensItsDocumentInItsScreen) {
    Doc payment = receipt(3, 74500000);
    payment.kind = s("20");
    for (const Doc& d : {receipt(1, 1250000), payment}) save(d);
    session->global.rights = tr::fullRights({s("N_A_CASHGET_"), s("N_A_CASHPAY_")});

    TCashSearchForm form(session->services);
    showFromYearStart(form);
    form.mnuSearchClick();
    tr::ui::DatasetModel* model = form.model();
    const int serial = model->fieldColumn(s("Serial")), kind = model->fieldColumn(s("WhatDoc"));
    const auto rowOf = [&](const QString& whatDoc) {
        for (int r = 0; r < model->rowCount(); ++r)
            if (model->index(r, kind).data().toString().trimmed() == whatDoc) return r;
        return -1;
    };
    const auto window = [&](const QString& whatDoc) -> TCashBankForm* {
        for (TCashBankForm* w : form.findChildren<TCashBankForm*>())
            if (w->logic().screen().kindCode == whatDoc) return w;
        return nullptr;
    };
    ASSERT_GE(rowOf(s("10")), 0);
    ASSERT_GE(rowOf(s("20")), 0);

    const QModelIndex receiptRow = model->index(rowOf(s("10")), serial);
    form.grid()->setCurrentIndex(receiptRow);
    emit form.grid()->doubleClicked(receiptRow);
    ASSERT_NE(window(s("10")), nullptr);
    EXPECT_TRUE(window(s("10"))->isVisible());
    EXPECT_EQ(window(s("10"))->logic().header().serial.trimmed(), s("1"));
    EXPECT_EQ(window(s("10"))->logic().grid().RecordCount(), 1);

    form.grid()->setFocus();
    form.grid()->setCurrentIndex(model->index(rowOf(s("20")), serial));
    QTest::keyClick(form.grid(), Qt::Key_Return);
    ASSERT_NE(window(s("20")), nullptr);
    EXPECT_EQ(window(s("20"))->logic().header().serial.trimmed(), s("3"));
    EXPECT_TRUE(session->dialog.shown().isEmpty());

    // The grand total is the last row.
    EXPECT_FALSE(form.search().openRow(model->rowCount() - 1));
    EXPECT_TRUE(session->dialog.shown().isEmpty());
    form.search().openDocument = [](const QString&, const QString&) { return std::optional<bool>(); };
    EXPECT_FALSE(form.search().openRow(rowOf(s("10"))));
    ASSERT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(session->dialog.last().text, DocumentSearch::kNoDocumentMessage);
}

// The result saved as a CSV file opens in a spreadsheet with its Persian text and plain amounts.
TEST_F(SearchForms, TheResultIsSavedAsACsvFileForSpreadsheets) {
    auto searched = searchedAfterReceipt(s("دريافت وجه, نقد"));
    TCashSearchForm& form = *searched;
    ASSERT_GT(form.model()->rowCount(), 0);

    QTemporaryDir dir;
    const QString path = dir.filePath(s("نتيجه.csv"));
    form.askSavePath = [&](const QString&) { return path; };
    form.csvAction()->trigger();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    ASSERT_TRUE(bytes.startsWith("\xEF\xBB\xBF"));
    const QStringList lines = QString::fromUtf8(bytes.mid(3)).split(s("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), form.model()->rowCount() + 1);
    EXPECT_TRUE(lines[0].contains(s("شرح")));
    EXPECT_TRUE(lines[0].contains(s("مبلغ")));
    EXPECT_TRUE(lines[1].contains(s("1250000")));
    EXPECT_TRUE(lines[1].contains(s("\"دريافت وجه, نقد")));  // quoted: it holds a comma
    EXPECT_TRUE(lines.last().contains(DocumentSearch::kGrandTotal.trimmed()));

    // A folder that is not there: refused with a message, nothing written.
    form.askSavePath = [&](const QString&) { return dir.filePath(s("no/such/folder/x.csv")); };
    form.csvAction()->trigger();
    ASSERT_FALSE(session->dialog.shown().isEmpty());
    EXPECT_EQ(session->dialog.last().code, s("1ER"));
}

// Reads one part of a zip file (an .xlsx is one) through the system's Python.
QString zipPart(const QString& zip, const QString& part) {
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import sys, zipfile; "
                                 "sys.stdout.buffer.write(zipfile.ZipFile(sys.argv[1]).read(sys.argv[2]))"),
                  zip, part});
    python.waitForFinished(30000);
    return QString::fromUtf8(python.readAllStandardOutput());
}

// The Excel workbook: one right-to-left sheet, Persian titles and texts, amounts as numbers.
TEST_F(SearchForms, TheResultIsSavedAsAnExcelWorkbook) {
    auto searched = searchedAfterReceipt(s("دريافت وجه نقد"));
    TCashSearchForm& form = *searched;
    ASSERT_GT(form.model()->rowCount(), 0);

    QTemporaryDir dir;
    const QString path = dir.filePath(s("نتيجه.xlsx"));
    form.askSavePath = [&](const QString& suffix) {
        EXPECT_EQ(suffix, QStringLiteral("xlsx"));
        return path;
    };
    form.xlsxAction()->trigger();
    EXPECT_TRUE(session->dialog.shown().isEmpty());
    const QString sheet = zipPart(path, QStringLiteral("xl/worksheets/sheet1.xml"));
    const QString strings = zipPart(path, QStringLiteral("xl/sharedStrings.xml"));
    EXPECT_TRUE(sheet.contains(s("rightToLeft=\"1\""))) << sheet.toStdString();
    EXPECT_TRUE(sheet.contains(s("<v>1250000</v>"))) << sheet.toStdString();
    for (const QString& text :
         {s("شرح"), s("مبلغ"), s("دريافت وجه نقد"), DocumentSearch::kGrandTotal.trimmed()})
        EXPECT_TRUE(strings.contains(text)) << text.toStdString();
    EXPECT_FALSE(QFile::exists(path + s(".part")));

    // A folder that is not there: refused with a message, nothing left behind.
    form.askSavePath = [&](const QString&) { return dir.filePath(s("no/such/folder/x.xlsx")); };
    form.xlsxAction()->trigger();
    ASSERT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(session->dialog.last().code, s("1ER"));
    EXPECT_FALSE(QFile::exists(dir.filePath(s("no/such/folder/x.xlsx"))));
}

// Printed as shown: the search's caption and filters, the rows with their amounts and the total,
// and the full name of who printed it; the preview holds the same pages, in landscape.
TEST_F(SearchForms, TheResultPrintsToPdfAndPreviewAsShown) {
    // Left in the build tree for a look by eye.
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    const QString pdf = QStringLiteral(TR_SCREENS_DIR "/search_result.pdf");
    QFile::remove(pdf);
    TCashSearchForm form(session->services);
    showFromYearStart(form);
    form.askSavePath = [&](const QString& suffix) {
        EXPECT_EQ(suffix, QStringLiteral("pdf"));
        return pdf;
    };
    // Before any search there is nothing to print.
    form.pdfAction()->trigger();
    ASSERT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(session->dialog.last().text, ui::kNothingToPrint);
    EXPECT_FALSE(QFile::exists(pdf));

    Doc a = receipt(1, 1250000);
    a.description = s("دريافت (قسط 2/3)");
    save(a);
    save(receipt(2, 40000));
    form.mnuSearchClick();
    ASSERT_GT(form.model()->rowCount(), 2);
    form.pdfAction()->trigger();
    EXPECT_EQ(session->dialog.shown().size(), 1);
    const QString printed = tr::test::pdfPlainText(pdf);
    for (const QString& expected :
         {form.search().family().caption, s("تاريخ از 1404/01/01"), s("1,250,000"),
          s("1,290,000"), DocumentSearch::kGrandTotal.trimmed(), s("مدير سيستم")})
        EXPECT_TRUE(printed.contains(tr::test::pdfFolded(expected))) << expected.toStdString() << "\n"
                                                << printed.toStdString();

    tr::test::RecordingModalRunner runner;
    int pages = 0;
    bool landscape = false;
    runner.answerBy([&](QDialog& dialog) {
        dialog.show();
        auto* preview = dialog.findChild<QPrintPreviewWidget*>();
        pages = preview->pageCount();
        landscape = preview->orientation() == QPageLayout::Landscape;
        dialog.reject();
    });
    form.printAction()->trigger();
    EXPECT_EQ(pages, 1);
    EXPECT_TRUE(landscape);
    EXPECT_EQ(form.printAction()->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_P));
}

}  // namespace
}  // namespace tr::cashbank::testing
