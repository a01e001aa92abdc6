// The actions screen's received tab driven as the user drives it: the list, the space bar and the
// drop-down on a row's action, the dates, the bank account of a collection, and "تاييد" posting
// the whole list; what it refuses, with its message, writes nothing.
#include "cheques/received_actions.h"

#include <gtest/gtest.h>

#include <QScopeGuard>

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

const QString kCollect = QStringLiteral("در جريان وصول");
const QString kCollected = QStringLiteral("وصول چک");
const QString kReturned = QStringLiteral("برگشت چک");
const QString kUndo = QStringLiteral("حذف عمليات قبلي");

struct Wait : tr::dialog::ProgressWindow {
    QStringList shown;
    void showState(const QString& text) override { shown << text; }
    void setStateText(const QString&) override {}
    bool stopRequested() override { return false; }
    void closeState() override {}
};

class ReceivedActionsTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        session->services.progress = &wait;
        screen = std::make_unique<ReceivedChequeActions>(session->services);
    }
    void TearDown() override {
        screen.reset();
        session.reset();
    }

    // A received-cheque document of one cheque (an opening one when `opening`), as its procedure
    // keeps it.
    static void receive(const QString& number, qint64 serial, bool guarantee = false, bool opening = false) {
        tr::db::Connection& c = company();
        makeDocumentTables(QStringLiteral("RA71"));
        c.execute(QStringLiteral("Insert Into ##RA71_Chq (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, Tazmin, "
                                 "BankCod) Values (0, '103', '0001', 'S', ") +
                  c.text(number) + QStringLiteral(", 2500000, '1404/05/01', ") +
                  c.text(guarantee ? QStringLiteral("ض") : QString()) + QStringLiteral(", '01')"));
        c.execute(QStringLiteral("Insert Into ##RA71_Taraf (Raj, WhatDoc2, Koll, Moein, Tafsily, Joz, ChqNo, ChqValue) "
                                 "Values (0, '01', '104', '0002', '', 'S', ") +
                  c.text(number) + QStringLiteral(", 2500000)"));
        c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet ") +
                  c.text(opening ? QStringLiteral("FIRST->DB") : QStringLiteral("TRANS->DB")) +
                  QStringLiteral(", 'RA71', ") + c.text(QString::number(serial)) +
                  QStringLiteral(", '1404/02/10', 'admin', 'NEW'"));
    }

    // Puts the list on the row of `number`.
    void select(const QString& number) {
        tr::db::Query& rows = screen->rows();
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number) return;
        FAIL() << "cheque " << number.toStdString() << " is not listed";
    }
    QString cell(const char* field) { return screen->rows().FieldByName(QString::fromLatin1(field)).AsString().trimmed(); }
    static QString state(const QString& number) {
        return tr::db::firstColumn(company(), QStringLiteral("Select Top 1 WhatDoc From N_ChqLastTrans Where ChqNo = ") +
                                                  company().text(number) + QStringLiteral(" Order By IDX Desc"))
            .toString()
            .trimmed();
    }
    static double balance(const char* koll, const char* moein) {
        return tr::db::firstColumn(company(), QStringLiteral("Select IsNull(Sum(Bed - Bes), 0) From Asnad Where Koll = '%1' "
                                                             "And Moein = '%2'")
                                                  .arg(QLatin1String(koll), QLatin1String(moein)))
            .toDouble();
    }
    const QString& lastMessage() { return session->dialog.last().text; }

    Wait wait;
    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeActions> screen;
};

TEST_F(ReceivedActionsTest, TheSpaceBarStepsThroughTheStatesMenuAndAGuaranteeChequeOnlyGoesBack) {
    receive(QStringLiteral("501"), 1);
    receive(QStringLiteral("502"), 2, /*guarantee=*/true);
    screen->fill();
    ASSERT_EQ(screen->rows().RecordCount(), 2);
    select(QStringLiteral("501"));
    EXPECT_EQ(cell("LastWhatDoc"), QStringLiteral("71"));
    QStringList stepped;
    for (int i = 0; i < 3; ++i) {
        screen->spaceOnAction();
        stepped << cell("WhatDocNam");
    }
    EXPECT_EQ(stepped, (QStringList{kCollect, kReturned, QString()}));
    EXPECT_EQ(cell("ActionDate"), QString());  // back to no action, no date

    select(QStringLiteral("502"));
    EXPECT_EQ(screen->menu(), QStringList{kReturned});
    EXPECT_FALSE(screen->chooseAction(kCollect));
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral("عمليات ") + kCollect)) << lastMessage().toStdString();
    EXPECT_EQ(cell("WhatDocNam"), QString());  // the cell cleared
    EXPECT_TRUE(screen->chooseAction(kReturned));
    // Back to the customer it came from, the account required for a return.
    EXPECT_EQ(cell("VaKoll"), QStringLiteral("104"));
    EXPECT_EQ(cell("VKoll"), QStringLiteral("103"));
}

TEST_F(ReceivedActionsTest, ACollectionPostsThenItsDueDateGuardsTheCollectedAndUndoRestoresTheBalances) {
    receive(QStringLiteral("601"), 1);
    screen->fill();
    select(QStringLiteral("601"));
    ASSERT_TRUE(screen->chooseAction(kCollect));
    screen->setBankAccount(1);
    EXPECT_EQ(cell("VaKoll") + cell("VaMoein"), QStringLiteral("1030002"));
    // The date: outside the year, before the cheque's receipt, then right.
    EXPECT_FALSE(screen->setActionDate(QStringLiteral("1405/01/10")));
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ بايد در بازه سال مالي باشد !"));
    EXPECT_FALSE(screen->setActionDate(QStringLiteral("1404/02/01")));
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ عمليات 1404/02/01 نبايد كوچکتر از 1404/02/10 باشد"));
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/03/01")));
    const double inHand = balance("103", "0001");
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    EXPECT_EQ(wait.shown, QStringList{ReceivedChequeActions::kWaitText});
    EXPECT_EQ(state(QStringLiteral("601")), QStringLiteral("72"));
    EXPECT_DOUBLE_EQ(balance("103", "0002"), 2500000);
    EXPECT_DOUBLE_EQ(balance("103", "0001"), inHand - 2500000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));

    // The list is read again: the row now offers the collection's menu.
    select(QStringLiteral("601"));
    EXPECT_EQ(cell("LastWhatDoc"), QStringLiteral("72"));
    ASSERT_TRUE(screen->chooseAction(kCollected));
    EXPECT_EQ(cell("VaKoll") + cell("VaMoein"), QStringLiteral("1020001"));  // the bank account it went to
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/04/01")));
    const QString before = QString::number(balance("102", "0001"));
    EXPECT_FALSE(screen->apply());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ اعلام وصول نمي تواند از تاريخ سررسيد كمتر باشد."));
    EXPECT_EQ(state(QStringLiteral("601")), QStringLiteral("72"));
    EXPECT_EQ(cell("WhatDocNam"), kCollected);  // the list kept for a correction
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/05/02")));
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("601")), QStringLiteral("73"));
    EXPECT_DOUBLE_EQ(balance("102", "0001"), before.toDouble() + 2500000);

    // A final state: the space bar toggles between nothing and undo; undo restores the balances.
    select(QStringLiteral("601"));
    screen->spaceOnAction();
    EXPECT_EQ(cell("WhatDocNam"), kUndo);
    screen->spaceOnAction();
    EXPECT_EQ(cell("WhatDocNam"), QString());
    screen->spaceOnAction();
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("601")), QStringLiteral("72"));
    EXPECT_DOUBLE_EQ(balance("102", "0001"), before.toDouble());
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedActionsTest, AnOpeningChequeGoesToCollectionFromItsOpeningAccounts) {
    receive(QStringLiteral("701"), 3, false, /*opening=*/true);
    screen->fill();
    select(QStringLiteral("701"));
    EXPECT_EQ(cell("IsFirst"), QStringLiteral("Y"));
    EXPECT_EQ(cell("VKoll") + cell("VMoein"), QStringLiteral("1030001"));
    ASSERT_TRUE(screen->chooseAction(kCollect));
    screen->setBankAccount(1);
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/03/01")));
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("701")), QStringLiteral("72"));
    EXPECT_DOUBLE_EQ(balance("103", "0002"), 2500000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedActionsTest, ReturningChequesTiedToInvoicesAsksFirstAndOnNoWritesNothing) {
    receive(QStringLiteral("801"), 1);
    company().execute(QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, "
                                     "SanadNoForosh, TypeAction, NaghdValue) Values (0, '71', 1, '801', 'S', '9001', '1', "
                                     "2500000)"));
    screen->fill();
    select(QStringLiteral("801"));
    ASSERT_TRUE(screen->chooseAction(kReturned));
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/03/01")));
    session->dialog.answerNo();
    EXPECT_FALSE(screen->apply());
    EXPECT_EQ(lastMessage(), ReceivedChequeActions::kUnlinkQuestion);
    EXPECT_EQ(state(QStringLiteral("801")), QStringLiteral("71"));
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From R_ForoshRelatedNaghd")).toInt(), 1);
    session->dialog.answerYes();
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("801")), QStringLiteral("78"));
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From R_ForoshRelatedNaghd")).toInt(), 0);
    EXPECT_DOUBLE_EQ(balance("104", "0002"), 0);  // credited at receipt, debited back on return
}

TEST_F(ReceivedActionsTest, TheSecondDeskActingOnTheSameChequeIsRefusedAndWritesNothing) {
    receive(QStringLiteral("901"), 1);
    tr::test::TestSession other(company(), 2, QStringLiteral("sara"), tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
    other.global.sessionText = QStringLiteral("U2_");
    ReceivedChequeActions second(other.services);
    screen->fill();
    second.fill();
    for (ReceivedChequeActions* desk : {screen.get(), &second}) {
        tr::db::Query& rows = desk->rows();
        rows.First();
        ASSERT_TRUE(desk->chooseAction(kReturned));
        ASSERT_TRUE(desk->setActionDate(QStringLiteral("1404/03/01")));
    }
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    const qint64 lines = tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad")).toLongLong();
    EXPECT_FALSE(second.apply());
    EXPECT_TRUE(other.dialog.last().text.contains(QStringLiteral("شماره چك :901"))) << other.dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad")).toLongLong(), lines);
    EXPECT_EQ(state(QStringLiteral("901")), QStringLiteral("78"));
}

TEST_F(ReceivedActionsTest, ABatchWhoseEleventhRowFailsInsideTheCallWritesNothingAndKeepsTheList) {
    for (int i = 0; i < 20; ++i) receive(QString::number(1000 + i), i + 1);
    screen->fill();
    tr::db::Query& rows = screen->rows();
    ASSERT_EQ(rows.RecordCount(), 20);
    for (rows.First(); !rows.Eof(); rows.Next()) {
        ASSERT_TRUE(screen->chooseAction(kReturned));
        ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/03/01")));
    }
    const QString list = [&] {
        QString out;
        for (rows.First(); !rows.Eof(); rows.Next())
            out += rows.FieldByName(QStringLiteral("ChqNo")).AsString() + rows.FieldByName(QStringLiteral("WhatDocNam")).AsString();
        return out;
    }();
    const qint64 lines = tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad")).toLongLong();

    // After the list was read: the 11th cheque's customer account is made inactive.
    company().execute(QStringLiteral("Update Moein Set IsActive = 'غيرفعال' Where Koll = '104' And Moein = '0002'"));
    const auto reactivate = qScopeGuard([] {
        company().execute(QStringLiteral("Update Moein Set IsActive = 'فعال' Where Koll = '104' And Moein = '0002'"));
    });
    rows.MoveTo(10);
    const QString eleventh = rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    company().execute(QStringLiteral("Update ") + screen->workTable() +
                      QStringLiteral(" Set VaMoein = '0001' Where ChqNo <> ") +
                      company().text(rows.FieldByName(QStringLiteral("ChqNo")).AsString()));
    EXPECT_FALSE(screen->apply());
    EXPECT_EQ(lastMessage(), QStringLiteral("كد حساب معين غيرفعال مي باشد.\nشماره چك :") + eleventh);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad")).toLongLong(), lines);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '78'"))
                  .toLongLong(),
              0);
    QString after;
    for (rows.First(); !rows.Eof(); rows.Next())
        after += rows.FieldByName(QStringLiteral("ChqNo")).AsString() + rows.FieldByName(QStringLiteral("WhatDocNam")).AsString();
    EXPECT_EQ(after, list);
}

TEST_F(ReceivedActionsTest, TheChequesHistoryListsItsActionsWithTheirVouchersAndNamesASpentChequeBack) {
    receive(QStringLiteral("1201"), 1);
    screen->fill();
    select(QStringLiteral("1201"));
    ASSERT_TRUE(screen->chooseAction(kCollect));
    screen->setBankAccount(1);
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/03/01")));
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    select(QStringLiteral("1201"));
    screen->showHistory();
    const auto& shown = session->pickList.last();
    EXPECT_EQ(shown.title, QStringLiteral("گردش چک 1201"));
    EXPECT_EQ(session->pickList.lastColumn(QStringLiteral("ActDate")),
              (QStringList{QStringLiteral("1404/02/10"), QStringLiteral("1404/03/01")}));
    const QStringList vouchers = session->pickList.lastColumn(QStringLiteral("SanadNo"));
    ASSERT_EQ(vouchers.size(), 2);
    EXPECT_FALSE(vouchers[0].isEmpty());
    EXPECT_NE(vouchers[0], vouchers[1]);
    // Spent to a supplier and come back: its 88 row is named for what happened to it.
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                     "Values ('81', '1201', 'S', '1404/03/05', '', 0)"));
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                     "Values ('88', '1201', 'S', '1404/03/09', '', 0)"));
    const QList<QStringList> rows = screen->history(QStringLiteral("1201"), QStringLiteral("S"));
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[3][0], QStringLiteral("برگشت از خرج چك"));
}

TEST_F(ReceivedActionsTest, AReturnSplitOverTheLinesTheChequeWasCreditedToDebitsEachItsPart) {
    // One cheque credited to two customers' lines (2,500,000 = 1,500,000 + 1,000,000).
    receive(QStringLiteral("1301"), 1);
    tr::db::Connection& c = company();
    c.execute(QStringLiteral("Delete From ##RA71_Taraf"));
    c.execute(QStringLiteral("Insert Into ##RA71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
                             "(0, '01', '104', '0002', 'S', '1301', 1500000)"));
    c.execute(QStringLiteral("Insert Into ##RA71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
                             "(1, '01', '202', '0001', 'S', '1301', 1000000)"));
    c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'TRANS->DB', 'RA71', '1', '1404/02/10', 'admin', 'EDIT'"));

    screen->fill();
    select(QStringLiteral("1301"));
    ASSERT_TRUE(screen->chooseAction(kReturned));
    ASSERT_TRUE(screen->setActionDate(QStringLiteral("1404/03/01")));
    const QList<ReturnLine> lines = screen->returnLines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_DOUBLE_EQ(lines[0].credited, 1500000);
    EXPECT_EQ(lines[1].account.value(0), QStringLiteral("202"));
    EXPECT_FALSE(screen->splitReturn({1600000, 900000}));
    EXPECT_EQ(lastMessage(), QStringLiteral("مبلغ وارد شده بايد كوچكتر يا مساوي با مبلغ بستانكار باشد."));
    EXPECT_FALSE(screen->splitReturn({1500000, 900000}));
    EXPECT_EQ(lastMessage(), QStringLiteral("جمع مبلغ بايد برابر <2500000> شود."));
    ASSERT_TRUE(screen->splitReturn({1500000, 1000000}));
    EXPECT_DOUBLE_EQ(screen->returnLines()[1].newValue, 1000000);
    ASSERT_TRUE(screen->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("1301")), QStringLiteral("78"));
    // Each customer is debited back what it was credited; the cheques account is cleared.
    EXPECT_DOUBLE_EQ(balance("104", "0002"), 0);
    EXPECT_DOUBLE_EQ(balance("202", "0001"), 0);
    EXPECT_DOUBLE_EQ(balance("103", "0001"), 0);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
