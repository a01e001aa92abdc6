// The actions screen's issued tab driven as the user drives it: our own leaves and received
// cheques passed on, each action chosen with the space bar or the drop-down, its date, and
// "تاييد" posting the list; the accounts each action moves the cheque between; what it refuses
// writes nothing. The spending path runs across both tabs.
#include "cheques/issued_actions.h"

#include <gtest/gtest.h>

#include "cheques/received_actions.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::procedures::testing::chequeLedgerIsConsistent;

const QString kCashed = QStringLiteral("برداشت چک");
const QString kProtest = QStringLiteral("واخواست چک");
const QString kShortfall = QStringLiteral("کسر موجودي");
const QString kReturned = QStringLiteral("برگشت چک");
const QString kBackFromSpending = QStringLiteral("برگشت از خرج چک");
const QString kCollect = QStringLiteral("در جريان وصول");
const QString kCollected = QStringLiteral("وصول چک");
const QString kUndo = QStringLiteral("حذف عمليات قبلي");

class IssuedActionsTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"),
            tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        issued = std::make_unique<IssuedChequeActions>(session->services);
        received = std::make_unique<ReceivedChequeActions>(session->services);
    }
    void TearDown() override {
        issued.reset();
        received.reset();
        session.reset();
    }

    // Leaves of account 1's book (series "12"), paid to the supplier on 1404/02/20.
    static DocumentCheque leaf(const char* number, double value, bool guarantee = false) {
        DocumentCheque ch{QString::fromLatin1(number), QStringLiteral("12"), value};
        ch.bankAccount = 1;
        ch.guarantee = guarantee;
        return ch;
    }

    // Puts `tab`'s list on the row of `number`.
    static void select(ChequeActionList& tab, const QString& number) {
        tr::db::Query& rows = tab.rows();
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number) return;
        FAIL() << "cheque " << number.toStdString() << " is not listed";
    }
    static bool listed(ChequeActionList& tab, const QString& number) {
        tr::db::Query& rows = tab.rows();
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number)
                return true;
        return false;
    }
    static QString cell(ChequeActionList& tab, const char* field) {
        return tab.rows().FieldByName(QString::fromLatin1(field)).AsString().trimmed();
    }
    // Chooses `name` on the row of `number` with `date`, all three accepted.
    void choose(ChequeActionList& tab, const QString& number, const QString& name,
                const QString& date) {
        select(tab, number);
        ASSERT_TRUE(tab.chooseAction(name)) << lastMessage().toStdString();
        ASSERT_TRUE(tab.setActionDate(date)) << lastMessage().toStdString();
    }
    static QString state(const QString& number) {
        return tr::db::firstColumn(
                   company(),
                   QStringLiteral("Select Top 1 WhatDoc From N_ChqLastTrans Where ChqNo = ") +
                       company().text(number) + QStringLiteral(" Order By IDX Desc"))
            .toString()
            .trimmed();
    }
    // What the cheque's lines leave on an account (Koll and Moein), debit positive.
    static double on(const QString& number, const char* koll, const char* moein) {
        return tr::db::firstColumn(
                   company(),
                   QStringLiteral("Select IsNull(Sum(Bed - Bes), 0) From Asnad Where AtfCh = ") +
                       company().text(number) +
                       QStringLiteral(" And Koll = '%1' And Moein = '%2'")
                           .arg(QLatin1String(koll), QLatin1String(moein)))
            .toDouble();
    }
    static qint64 count(const char* sql) {
        return tr::db::firstColumn(company(), QString::fromUtf8(sql)).toLongLong();
    }
    const QString& lastMessage() { return session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<IssuedChequeActions> issued;
    std::unique_ptr<ReceivedChequeActions> received;
};

TEST_F(IssuedActionsTest, AWithdrawalWaitsForTheDueDateAndPaysFromTheBankAccountTheLeafIsDrawnOn) {
    payCheques({leaf("100001", 3000000), leaf("100003", 900000, /*guarantee=*/true)}, 1);
    issued->fill();
    ASSERT_EQ(issued->rows().RecordCount(), 2);
    select(*issued, QStringLiteral("100001"));
    // It stands on its bank account's payable heads.
    EXPECT_EQ(cell(*issued, "Koll") + cell(*issued, "Moein") + cell(*issued, "Tafsily"),
              QStringLiteral("201000120001"));
    EXPECT_EQ(cell(*issued, "OldAcountID"), QStringLiteral("1"));
    EXPECT_EQ(issued->menu(), QStringList({kCashed, kProtest, kShortfall, kReturned}));
    issued->spaceOnAction();
    EXPECT_EQ(cell(*issued, "WhatDocNam"), kCashed);
    EXPECT_EQ(cell(*issued, "VaKoll") + cell(*issued, "VaMoein") + cell(*issued, "VaTafsily"),
              QStringLiteral("102000120001"));
    ASSERT_TRUE(issued->setActionDate(QStringLiteral("1404/04/30")));
    EXPECT_FALSE(issued->apply());
    EXPECT_EQ(
        lastMessage(),
        QStringLiteral("تاريخ برداشت نمي تواند كمتر از تاريخ سررسيد باشد.\nشماره چك :100001"));
    EXPECT_EQ(state(QStringLiteral("100001")), QStringLiteral("81"));

    // A guarantee leaf only comes back.
    select(*issued, QStringLiteral("100003"));
    EXPECT_EQ(issued->menu(), QStringList{kReturned});
    EXPECT_FALSE(issued->chooseAction(kCashed));

    choose(*issued, QStringLiteral("100001"), kCashed, QStringLiteral("1404/05/01"));
    const double bank = on(QStringLiteral("100001"), "102", "0001");
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("100001")), QStringLiteral("82"));
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100001"), "201", "0001"), 0);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100001"), "102", "0001"), bank - 3000000);
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));

    // Final: undo only, and undo puts the leaf back on the payable heads.
    select(*issued, QStringLiteral("100001"));
    EXPECT_EQ(issued->menu(), QStringList{kUndo});
    issued->spaceOnAction();
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("100001")), QStringLiteral("81"));
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100001"), "201", "0001"), -3000000);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100001"), "102", "0001"), 0);
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));
}

TEST_F(IssuedActionsTest,
       AShortfallMovesNothingAProtestMovesTheDebtAndAReturnGivesTheSupplierItsClaimBack) {
    payCheques({leaf("100002", 1200000)}, 1);
    issued->fill();
    const qint64 lines = count("Select Count(*) From Asnad");
    choose(*issued, QStringLiteral("100002"), kShortfall, QStringLiteral("1404/03/01"));
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("100002")), QStringLiteral("86"));
    EXPECT_EQ(count("Select Count(*) From Asnad"), lines);
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc = '86'"), 1);

    choose(*issued, QStringLiteral("100002"), kProtest, QStringLiteral("1404/03/02"));
    EXPECT_EQ(cell(*issued, "Koll") + cell(*issued, "Moein"), QStringLiteral("2010001"));
    EXPECT_EQ(cell(*issued, "VaKoll") + cell(*issued, "VaMoein"), QStringLiteral("2010003"));
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100002"), "201", "0001"), 0);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100002"), "201", "0003"), -1200000);

    // The return takes the cheque off the protest's account and owes the supplier again.
    choose(*issued, QStringLiteral("100002"), kReturned, QStringLiteral("1404/03/05"));
    EXPECT_EQ(cell(*issued, "Koll") + cell(*issued, "Moein"), QStringLiteral("2010003"));
    EXPECT_EQ(cell(*issued, "VaKoll") + cell(*issued, "VaMoein"), QStringLiteral("2020001"));
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(QStringLiteral("100002")), QStringLiteral("87"));
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100002"), "201", "0003"), 0);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100002"), "202", "0001"), 0);
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));
    // The tab's state filter and the history read the same book.
    issued->filters().state = QStringLiteral("87");
    issued->fill();
    EXPECT_EQ(issued->rows().RecordCount(), 1);
    const QList<QStringList> steps =
        issued->history(QStringLiteral("100002"), QStringLiteral("12"));
    ASSERT_EQ(steps.size(), 4);
    EXPECT_EQ(steps[3][0], kReturned);
}

TEST_F(IssuedActionsTest, AReturnOfALeafPaidOverTwoLinesGivesEachLineItsPart) {
    DocumentCheque split = leaf("100004", 1000000);
    split.parties = {{QStringLiteral("202"), QStringLiteral("0001"), 600000},
                     {QStringLiteral("104"), QStringLiteral("0002"), 400000}};
    payCheques({split}, 1);
    issued->fill();
    choose(*issued, QStringLiteral("100004"), kReturned, QStringLiteral("1404/03/01"));
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100004"), "202", "0001"), 0);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100004"), "104", "0002"), 0);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100004"), "201", "0001"), 0);
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '87' And Bes > 0"), 2);
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));
}

TEST_F(IssuedActionsTest, AnOpeningLeafIsWithdrawnFromTheHeadsItsOpeningRowNames) {
    payCheques({leaf("100005", 500000)}, 7, QStringLiteral("1404/01/01"), /*opening=*/true);
    issued->fill();
    select(*issued, QStringLiteral("100005"));
    EXPECT_EQ(cell(*issued, "IsFirst"), QStringLiteral("Y"));
    EXPECT_EQ(cell(*issued, "Koll") + cell(*issued, "Moein"), QStringLiteral("2010001"));
    EXPECT_EQ(cell(*issued, "ChqValue").toDouble(), 500000);
    choose(*issued, QStringLiteral("100005"), kCashed, QStringLiteral("1404/05/01"));
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    // The opening balance had no voucher: the withdrawal alone is on the book.
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100005"), "201", "0001"), 500000);
    EXPECT_DOUBLE_EQ(on(QStringLiteral("100005"), "102", "0001"), -500000);
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));
}

TEST_F(IssuedActionsTest, ABatchFailingInItsMiddleRowWritesNothingAndKeepsTheList) {
    std::vector<DocumentCheque> leaves;
    for (int i = 0; i < 9; ++i)
        leaves.push_back(leaf(QByteArray::number(100010 + i).constData(), 100000.0 * (i + 1)));
    payCheques(leaves, 1);
    issued->fill();
    tr::db::Query& rows = issued->rows();
    ASSERT_EQ(rows.RecordCount(), 9);
    for (rows.First(); !rows.Eof(); rows.Next()) {
        ASSERT_TRUE(issued->chooseAction(kCashed));
        ASSERT_TRUE(issued->setActionDate(QStringLiteral("1404/05/10")));
    }
    const qint64 lines = count("Select Count(*) From Asnad");
    // After the list was read the fifth row's account is one the chart has closed.
    company().execute(
        QStringLiteral("Update ") + issued->workTable() +
        QStringLiteral(" Set VaKoll = '501', VaMoein = '0009' Where ChqNo = '100014'"));
    EXPECT_FALSE(issued->apply());
    EXPECT_EQ(lastMessage(), QStringLiteral("كد حساب معين غيرفعال مي باشد.\nشماره چك :100014"));
    EXPECT_EQ(count("Select Count(*) From Asnad"), lines);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '82'"), 0);
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc = '82'"), 0);
    int chosen = 0;
    for (rows.First(); !rows.Eof(); rows.Next())
        chosen += rows.FieldByName(QStringLiteral("WhatDocNam")).AsString() == kCashed;
    EXPECT_EQ(chosen, 9);
}

// Received (71), spent on a payment (81), back from the supplier (88), sent to collection (72),
// collected (73): after each step the cheque's amount stands on one account, and the tab that
// offers its next action is the one that lists it.
TEST_F(IssuedActionsTest, TheSpendingPathCrossesBothTabsAndEachStateHoldsTheAmountOnItsAccount) {
    const QString number = QStringLiteral("5001");
    receiveCheques({{number, QStringLiteral("ج"), 2000000}}, 1);
    struct Holding {
        double inHand, supplier, collection, bank;
    };
    auto holds = [&](const Holding& want) {
        EXPECT_DOUBLE_EQ(on(number, "103", "0001"), want.inHand);
        EXPECT_DOUBLE_EQ(on(number, "202", "0001"), want.supplier);
        EXPECT_DOUBLE_EQ(on(number, "103", "0002"), want.collection);
        EXPECT_DOUBLE_EQ(on(number, "102", "0001"), want.bank);
        EXPECT_TRUE(chequeLedgerIsConsistent(company()));
    };
    holds({2000000, 0, 0, 0});

    DocumentCheque spent{number, QStringLiteral("ج"), 2000000};
    payCheques({spent}, 1);
    EXPECT_EQ(state(number), QStringLiteral("81"));
    holds({0, 2000000, 0, 0});
    received->fill();
    select(*received, number);
    EXPECT_TRUE(received->menu().isEmpty());  // spent: its next action is on the issued tab
    issued->fill();
    select(*issued, number);
    EXPECT_EQ(cell(*issued, "Koll") + cell(*issued, "Moein"),
              QStringLiteral("2020001"));  // the party it paid
    EXPECT_EQ(issued->menu(), QStringList{kBackFromSpending});

    choose(*issued, number, kBackFromSpending, QStringLiteral("1404/03/01"));
    EXPECT_EQ(cell(*issued, "VaKoll") + cell(*issued, "VaMoein"), QStringLiteral("1030001"));
    ASSERT_TRUE(issued->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(number), QStringLiteral("88"));
    holds({2000000, 0, 0, 0});
    EXPECT_FALSE(listed(*issued, number));

    received->fill();
    select(*received, number);
    EXPECT_EQ(received->menu(), QStringList({kCollect, QStringLiteral("برگشت چک"), kUndo}));
    choose(*received, number, kCollect, QStringLiteral("1404/03/02"));
    received->setBankAccount(1);
    ASSERT_TRUE(received->apply()) << lastMessage().toStdString();
    holds({0, 0, 2000000, 0});

    choose(*received, number, kCollected, QStringLiteral("1404/05/01"));
    ASSERT_TRUE(received->apply()) << lastMessage().toStdString();
    EXPECT_EQ(state(number), QStringLiteral("73"));
    holds({0, 0, 0, 2000000});
    const QList<QStringList> steps = received->history(number, QStringLiteral("ج"));
    ASSERT_EQ(steps.size(), 5);
    EXPECT_EQ(steps[2][0], QStringLiteral("برگشت از خرج چك"));
}

}  // namespace
}  // namespace tr::cheques
