// The cheques-to-bank window and its deposit slips: the list shown, ticked with "ض" and by
// double-click, sorted by a title; the print form; every built-in slip with and without its
// template to PDF (rendered to PNG and kept in screens/ for a look by eye); the PrintDesign items.
#include "cheques/ui/chq_to_bank_form.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QComboBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include "cheques/received_actions.h"
#include "cheques/ui/bank_slip_printing.h"
#include "cheques/ui/cheque_condition_dialog.h"
#include "cheques/ui/chq_to_bank_print_form.h"
#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/pdf_text.h"
#include "tests/support/recording_modal_runner.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

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

int pageCount(const QString& pdf) {
    const QString info = run(QStringLiteral("pdfinfo"), {pdf});
    for (const QString& line : info.split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("Pages:"))) return line.mid(6).trimmed().toInt();
    return 0;
}

class ChqToBankFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        // Seven cheques for one account, two for another, one of them of a series.
        std::vector<DocumentCheque> cheques;
        for (int i = 0; i < 9; ++i) {
            DocumentCheque ch;
            ch.number = QString::number(5001 + i);
            ch.series = i == 0 ? QStringLiteral("الف") : QString();
            ch.value = 1250000.0 * (i + 1);
            ch.due = QStringLiteral("1404/05/%1").arg(1 + i, 2, 10, QLatin1Char('0'));
            cheques.push_back(ch);
        }
        receiveCheques(cheques, 1);
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        ReceivedChequeActions actions(session->services);
        actions.fill();
        tr::db::Query& rows = actions.rows();
        int n = 0;
        for (rows.First(); !rows.Eof(); rows.Next(), ++n) {
            ASSERT_TRUE(actions.chooseAction(QStringLiteral("در جريان وصول")));
            actions.setBankAccount(n < 7 ? 1 : 2);
            ASSERT_TRUE(actions.setActionDate(QStringLiteral("1404/03/05")));
        }
        ASSERT_TRUE(actions.apply()) << session->dialog.last().text.toStdString();
        form = std::make_unique<TChqToBankForm>(session->services);
        form->resize(1150, 420);
        form->show();
    }
    void TearDown() override {
        form.reset();
        session.reset();
    }
    void showMonth() {
        form->monthBox()->setText(QStringLiteral("1404/03"));
        emit form->monthBox()->editingFinished();
        form->showList();
    }
    void tickAll() {
        for (int r = 0; r < form->model()->rowCount(); ++r) form->toggleRow(r);
    }
    // A slip form, with or without its template, to PDF and its page `page` to PNG.
    QString slipPdf(TChqToBankPrintForm& print, int formIndex, bool withTemplate, const QString& name,
                    int page = 1) {
        print.formBox()->setCurrentIndex(formIndex);
        print.templateBox()->setChecked(withTemplate);
        const QString pdf = out.filePath(name + QStringLiteral(".pdf"));
        EXPECT_TRUE(print.print(tr::printing::ui::PrintTarget::pdf(pdf))) << name.toStdString();
        const QString png = screen(name + QStringLiteral(".png"));
        QFile::remove(png);
        QString root = png;
        root.chop(4);
        run(QStringLiteral("pdftoppm"), {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("60"),
                                         QStringLiteral("-f"), QString::number(page), QStringLiteral("-l"),
                                         QString::number(page), QStringLiteral("-singlefile"), pdf, root});
        return pdf;
    }

    QTemporaryDir out;
    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<TChqToBankForm> form;
};

TEST_F(ChqToBankFormTest, TheListTicksWithTheLetterAndDoubleClickCountsAndSortsByATitle) {
    showMonth();
    EXPECT_EQ(form->fromDateBox()->text(), QStringLiteral("1404/03/01"));
    EXPECT_EQ(form->toDateBox()->text(), QStringLiteral("1404/03/31"));
    ASSERT_EQ(form->model()->rowCount(), 9);
    QTableView* grid = form->grid();
    const int tick = form->model()->fieldColumn(QStringLiteral("sSelect"));
    grid->setCurrentIndex(form->model()->index(0, tick));
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QStringLiteral("ض"));
    QApplication::sendEvent(grid, &letter);
    grid->setCurrentIndex(form->model()->index(2, tick));
    QTest::keyClick(grid, Qt::Key_Space);
    emit grid->doubleClicked(form->model()->index(3, tick));
    EXPECT_EQ(form->list().tickedCount(), 3);
    EXPECT_TRUE(form->countLabel()->text().endsWith(QStringLiteral("3")));
    emit grid->doubleClicked(form->model()->index(3, tick));
    EXPECT_EQ(form->list().tickedCount(), 2);
    EXPECT_EQ(form->model()->data(form->model()->index(0, tick)).toString(), QStringLiteral("ض"));

    // The account title: the accounts in order, each by number.
    const int account = form->model()->fieldColumn(QStringLiteral("HesabVago"));
    emit grid->horizontalHeader()->sectionClicked(account);
    EXPECT_EQ(form->model()->data(form->model()->index(0, account)).toString().trimmed(),
              QStringLiteral("0101234567"));
    EXPECT_EQ(form->model()->data(form->model()->index(0, form->model()->fieldColumn(QStringLiteral("ChqNo"))))
                  .toString()
                  .trimmed(),
              QStringLiteral("5001"));

    // The condition window's dates go into the date filters.
    tr::test::RecordingModalRunner runner;
    runner.answer(QDialog::Accepted, [](QDialog& d) {
        auto& c = static_cast<TChequeConditionDialog&>(d);
        c.fromBox()->setText(QStringLiteral("1404/03/04"));
        c.toBox()->setText(QStringLiteral("1404/03/06"));
    });
    form->askConditions();
    EXPECT_EQ(runner.last().kind, TChequeConditionDialog::kConditionKind);
    EXPECT_EQ(form->fromDateBox()->text(), QStringLiteral("1404/03/04"));
    EXPECT_TRUE(form->reportTitle().startsWith(QStringLiteral("گزارش ارسال چک به بانک دوره مالي [")));
    EXPECT_TRUE(form->printList(out.filePath(QStringLiteral("list.pdf"))));
    EXPECT_TRUE(form->grab().save(screen(QStringLiteral("chq_to_bank_form.png"))));
}

TEST_F(ChqToBankFormTest, EverySlipFormPrintsWithAndWithoutItsTemplate) {
    showMonth();
    TChqToBankPrintForm print(form->list(), form->slips(), form.get());
    print.show();
    // Nothing ticked: the print says so and makes no file.
    EXPECT_FALSE(print.print(tr::printing::ui::PrintTarget::pdf(out.filePath(QStringLiteral("none.pdf")))));
    EXPECT_EQ(session->dialog.last().text, BankSlips::kNothingTicked);
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1WR"));
    EXPECT_EQ(print.rowsBox()->value(), 5);
    EXPECT_EQ(print.rowsBox()->maximum(), 30);
    EXPECT_EQ(print.horizontalBox()->minimum(), -90);
    EXPECT_EQ(print.verticalBox()->maximum(), 20);

    tickAll();
    EXPECT_TRUE(print.grab().save(screen(QStringLiteral("chq_to_bank_print_form.png"))));
    const char* names[] = {"slip_default", "slip_tejarat", "slip_saderat"};
    for (int f = 0; f < 3; ++f) {
        for (bool withTemplate : {false, true}) {
            const QString name = QString::fromLatin1(names[f]) + (withTemplate ? QStringLiteral("_template") : QString());
            const QString pdf = slipPdf(print, f, withTemplate, name);
            // Seven at five a slip for one account, two for the other: three slips.
            EXPECT_EQ(pageCount(pdf), 3) << name.toStdString();
        }
    }
    const QString text = tr::test::pdfFolded(run(
        QStringLiteral("pdftotext"), {QStringLiteral("-enc"), QStringLiteral("UTF-8"), QStringLiteral("-l"),
                                      QStringLiteral("1"), out.filePath(QStringLiteral("slip_default.pdf")),
                                      QStringLiteral("-")}));
    // The first slip: 1.25 + 2.5 + ... + 6.25 million.
    EXPECT_TRUE(text.contains(tr::test::pdfFolded(QStringLiteral("هجده ميليون و هفتصد و پنجاه هزار ريال"))))
        << text.toStdString();

    // Shared slips: nine cheques at five, two slips; no limit and no split: one.
    // The first account's second slip: two cheques and three empty lines.
    slipPdf(print, 0, true, QStringLiteral("slip_default_second"), 2);
    print.sharedButton()->setChecked(true);
    EXPECT_EQ(pageCount(slipPdf(print, 0, false, QStringLiteral("slip_shared"), 2)), 2);
    print.rowsBox()->setValue(0);
    EXPECT_EQ(pageCount(slipPdf(print, 0, false, QStringLiteral("slip_unlimited"))), 1);
}

TEST_F(ChqToBankFormTest, TheDesignItemsNeedPrintDesignAndHandItTheSlipsTables) {
    showMonth();
    tickAll();
    form->designPrint(true);
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("برنامه طراحي فرم چاپ (PrintDesign) نصب نشده است."));
    const QString folder = out.path() + QStringLiteral("/host/DLLs/GlobalForms");
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::copy(QStringLiteral(TR_FAKE_PRINT_DESIGN), folder + QStringLiteral("/PrintDesign.so")));
    session->global.hostFolder = out.path() + QStringLiteral("/host");
    form->designPrint(false);
    EXPECT_EQ(form->property("mode").toString(), QStringLiteral("PreviewPrn"));
    EXPECT_EQ(form->property("layoutKey").toString(), ui::kBankSlipLayoutKey);
    EXPECT_EQ(form->property("linkFields").toString(), QStringLiteral("HesabVago"));
    EXPECT_EQ(form->property("lineCount").toInt(), 9 + 3 + 3);  // two accounts' last slips filled up
    form->designPrint(true);
    EXPECT_EQ(form->property("mode").toString(), QStringLiteral("DesignPrn"));
}

}  // namespace
}  // namespace tr::cheques
