// The actions screen as a window: the received list shown by "نمايش", the space bar on the
// action cell stepping the row's menu, the drop-down refusing what the state does not offer, and
// "تاييد" posting; the issued tab over our leaves in several states and a cheque passed on, with
// its report; screenshots are left for a look by eye.
#include "cheques/ui/chq_action1_form.h"

#include <QTableWidget>

#include "cheques/ui/return_split_dialog.h"
#include "host/sdk/modal_runner.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QTabWidget>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "common/db/query_helpers.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class ChqAction1FormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        tr::db::Connection& c = company();
        makeDocumentTables(QStringLiteral("FA71"));
        // Three cheques of one document; the third a guarantee cheque.
        const char* rows[][3] = {{"1101", "12500000", ""}, {"1102", "8300000", ""}, {"1103", "40000000", "ض"}};
        int raj = 0;
        for (const auto& r : rows) {
            c.execute(QStringLiteral("Insert Into ##FA71_Chq (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, "
                                     "ChqGetter, Tazmin, BankCod) Values (%1, '103', '0001', 'ب', '%2', %3, '1404/05/01', "
                                     "'حامل', '%4', '01')")
                          .arg(raj)
                          .arg(QLatin1String(r[0]), QLatin1String(r[1]), QString::fromUtf8(r[2])));
            c.execute(QStringLiteral("Insert Into ##FA71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
                                     "(%1, '01', '104', '0002', 'ب', '%2', %3)")
                          .arg(raj++)
                          .arg(QLatin1String(r[0]), QLatin1String(r[1])));
        }
        c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'TRANS->DB', 'FA71', '1', '1404/02/10', 'admin', 'NEW'"));
        session = std::make_unique<tr::test::TestSession>(c, 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        form = std::make_unique<TChqAction1Form>(session->services);
        form->resize(1100, 420);
        form->show();
    }
    void TearDown() override {
        form.reset();
        session.reset();
    }
    QModelIndex actionCell(int row) {
        return form->receivedModel()->index(row, form->receivedModel()->fieldColumn(QStringLiteral("WhatDocNam")));
    }
    QString text(int row, const char* field) {
        return form->receivedModel()
            ->index(row, form->receivedModel()->fieldColumn(QString::fromLatin1(field)))
            .data()
            .toString()
            .trimmed();
    }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<TChqAction1Form> form;
};

TEST_F(ChqAction1FormTest, TheSpaceBarStepsTheActionAndTheListIsApplied) {
    QTest::mouseClick(form->showButton(), Qt::LeftButton);
    ASSERT_EQ(form->receivedModel()->rowCount(), 3);
    QTableView* grid = form->receivedGrid();
    grid->setFocus();
    grid->setCurrentIndex(actionCell(1));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(text(1, "WhatDocNam"), QStringLiteral("در جريان وصول"));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(text(1, "WhatDocNam"), QStringLiteral("برگشت چک"));
    EXPECT_EQ(text(1, "VaKoll"), QStringLiteral("104"));
    EXPECT_FALSE(text(1, "ActionDate").isEmpty());
    // The guarantee cheque: the space bar offers its return only.
    grid->setCurrentIndex(actionCell(2));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(text(2, "WhatDocNam"), QStringLiteral("برگشت چک"));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(text(2, "WhatDocNam"), QString());

    // A collection for the first cheque, to its bank account, which the grid names.
    grid->setCurrentIndex(actionCell(0));
    QTest::keyClick(grid, Qt::Key_Space);
    form->received().setBankAccount(1);
    EXPECT_TRUE(text(0, "AcountID").contains(QStringLiteral("0101234567"))) << text(0, "AcountID").toStdString();

    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_action1_form.png")));
    // The list as the user sees it, printed: the period in the title, the shown columns.
    const QString html = tr::ui::gridReportHtml(form->reportTitle(), *grid);
    EXPECT_TRUE(html.contains(QStringLiteral("گزارش عمليات چکها دوره مالي [")));
    EXPECT_TRUE(html.contains(QStringLiteral("<th>عمليات جاري</th>")));
    EXPECT_FALSE(html.contains(QStringLiteral("<th>sOrder</th>")));
    EXPECT_TRUE(html.contains(QStringLiteral("برگشت چک")));
    const QString pdf = QStringLiteral(TR_SCREENS_DIR "/chq_action1_report.pdf");
    QFile::remove(pdf);
    ASSERT_TRUE(form->printList(pdf));
    EXPECT_GT(QFileInfo(pdf).size(), 1000);

    QTest::mouseClick(form->applyButton(), Qt::LeftButton);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '78'"))
                  .toInt(),
              1);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '72'"))
                  .toInt(),
              1);
    // The list read again shows the cheque's new state.
    for (int r = 0; r < form->receivedModel()->rowCount(); ++r)
        if (text(r, "ChqNo") == QLatin1String("1102")) EXPECT_EQ(text(r, "LastWhatDocNam").isEmpty(), false);
}

// Answers the split dialog as a user would: looks at it, changes nothing, confirms.
struct SplitAnswer : tr::sdk::ModalRunner {
    int shown = 0;
    int exec(QDialog& dialog) override {
        ++shown;
        auto& split = static_cast<ReturnSplitDialog&>(dialog);
        split.resize(560, 200);
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        split.grab().save(QStringLiteral(TR_SCREENS_DIR "/return_split_dialog.png"));
        split.confirm();
        return split.result();
    }
};

TEST_F(ChqAction1FormTest, AReturnOfAChequeCreditedToTwoLinesAsksHowItSplits) {
    tr::db::Connection& c = company();
    c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'DB->TRANS', 'FA71', '1', '', '', ''"));
    c.execute(QStringLiteral("Update ##FA71_Taraf Set ChqValue = 8000000 Where ChqNo = '1101'"));
    c.execute(QStringLiteral("Insert Into ##FA71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
                             "(9, '01', '202', '0001', 'ب', '1101', 4500000)"));
    c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'TRANS->DB', 'FA71', '1', '1404/02/10', 'admin', 'EDIT'"));
    SplitAnswer answer;
    tr::sdk::ModalRunner* previous = tr::sdk::ModalRunner::install(&answer);
    QTest::mouseClick(form->showButton(), Qt::LeftButton);
    QTableView* grid = form->receivedGrid();
    grid->setFocus();
    grid->setCurrentIndex(actionCell(0));
    QTest::keyClick(grid, Qt::Key_Space, Qt::NoModifier, 20);
    QTest::keyClick(grid, Qt::Key_Space, Qt::NoModifier, 20);
    tr::sdk::ModalRunner::install(previous);
    EXPECT_EQ(answer.shown, 1);
    EXPECT_EQ(text(0, "WhatDocNam"), QStringLiteral("برگشت چک"));
    QTest::mouseClick(form->applyButton(), Qt::LeftButton);
    EXPECT_EQ(tr::db::firstColumn(c, QStringLiteral("Select Count(*) From Asnad Where WhatDoc = '78' And Bed > 0")).toInt(), 2);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(c, QStringLiteral("Select Sum(Bed - Bes) From Asnad Where Koll = '202'")).toDouble(),
                     0);
}

TEST_F(ChqAction1FormTest, TheIssuedTabShowsOurLeavesInTheirStatesAndAChequePassedOnAndPostsAWithdrawal) {
    tr::db::Connection& c = company();
    // Four leaves of account 1 and received cheque 1102 passed on, all on one payment.
    std::vector<DocumentCheque> paid;
    for (const char* number : {"100021", "100022", "100023", "100024"}) {
        DocumentCheque leaf{QString::fromLatin1(number), QStringLiteral("12"), 4750000};
        leaf.bankAccount = 1;
        paid.push_back(leaf);
    }
    paid.push_back({QStringLiteral("1102"), QStringLiteral("ب"), 8300000});
    payCheques(paid, 1);
    // Moved on before the window opens: one protested, one short, one cashed.
    IssuedChequeActions& logic = form->issued();
    logic.fill();
    for (const auto& [number, name] : {std::pair{"100022", "واخواست چک"}, std::pair{"100023", "کسر موجودي"},
                                       std::pair{"100024", "برداشت چک"}}) {
        for (logic.rows().First(); !logic.rows().Eof(); logic.rows().Next())
            if (logic.rows().FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == QLatin1String(number)) break;
        ASSERT_TRUE(logic.chooseAction(QString::fromUtf8(name)));
        ASSERT_TRUE(logic.setActionDate(QStringLiteral("1404/05/02")));
    }
    ASSERT_TRUE(logic.apply()) << session->dialog.last().text.toStdString();

    form->tabs()->setCurrentWidget(form->issuedTab());
    QTest::mouseClick(form->issuedTab()->showButton(), Qt::LeftButton);
    tr::ui::DatasetModel* model = form->issuedTab()->model();
    ASSERT_EQ(model->rowCount(), 5);
    auto at = [&](int row, const char* field) {
        return model->index(row, model->fieldColumn(QString::fromLatin1(field))).data().toString().trimmed();
    };
    QStringList states;
    for (int r = 0; r < model->rowCount(); ++r) states << at(r, "LastWhatDoc");
    EXPECT_EQ(states, (QStringList{"81", "85", "86", "82", "81"}));
    // The leaf still paid out: the space bar steps to a withdrawal from its bank account.
    QTableView* grid = form->issuedTab()->grid();
    grid->setFocus();
    grid->setCurrentIndex(model->index(0, model->fieldColumn(QStringLiteral("WhatDocNam"))));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(at(0, "WhatDocNam"), QStringLiteral("برداشت چک"));
    EXPECT_EQ(at(0, "VaKoll") + at(0, "VaMoein"), QStringLiteral("1020001"));
    // The cheque passed on offers its way back only.
    grid->setCurrentIndex(model->index(4, model->fieldColumn(QStringLiteral("WhatDocNam"))));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(at(4, "WhatDocNam"), QStringLiteral("برگشت از خرج چک"));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(at(4, "WhatDocNam"), QString());

    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_action1_issued.png")));
    // "نمايش گزارش چکهاي پرداختي" prints the tab's list on the grid-report printer.
    bool offered = false;
    for (QAction* action : grid->actions()) offered = offered || action->text() == QStringLiteral("نمايش گزارش چکهاي پرداختي");
    EXPECT_TRUE(offered);
    const QString html = tr::ui::gridReportHtml(form->issuedTab()->reportTitle(), *grid);
    EXPECT_TRUE(html.contains(QStringLiteral("<th>شماره حساب</th>")));
    EXPECT_TRUE(html.contains(QStringLiteral("واخواست چک")));
    const QString pdf = QStringLiteral(TR_SCREENS_DIR "/chq_action1_issued_report.pdf");
    QFile::remove(pdf);
    ASSERT_TRUE(form->issuedTab()->printList(pdf));
    EXPECT_GT(QFileInfo(pdf).size(), 1000);

    // The withdrawal dated before the due date is refused, then dated right it posts.
    model->setCurrentRow(0);
    ASSERT_TRUE(logic.setActionDate(QStringLiteral("1404/04/30")));
    QTest::mouseClick(form->issuedTab()->applyButton(), Qt::LeftButton);
    EXPECT_TRUE(session->dialog.last().text.startsWith(QStringLiteral("تاريخ برداشت نمي تواند كمتر از تاريخ سررسيد باشد.")))
        << session->dialog.last().text.toStdString();
    model->setCurrentRow(0);
    ASSERT_TRUE(logic.setActionDate(QStringLiteral("1404/05/03")));
    QTest::mouseClick(form->issuedTab()->applyButton(), Qt::LeftButton);
    EXPECT_EQ(tr::db::firstColumn(c, QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '82'")).toInt(), 2);
    EXPECT_EQ(at(0, "LastWhatDoc"), QStringLiteral("82"));
}

}  // namespace
}  // namespace tr::cheques
