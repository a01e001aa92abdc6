// The opening cheques' states driven as the user drives the screen: the list of each side with
// its states and locks, the states each cheque is offered, "تاييد" and its refusals; then what
// the stored states mean to the actions screen and to a new receipt, and the first action's
// voucher starting from the opening row's accounts.
#include "cheques/opening_states.h"

#include <gtest/gtest.h>

#include "cheques/issued_actions.h"
#include "cheques/received_actions.h"
#include "cheques/tests/cheque_typing.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "instruments/latest_state.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::instruments::Side;
using tr::procedures::testing::chequeLedgerIsConsistent;

const QString kCollect = QStringLiteral("در جريان وصول");
const QString kCollected = QStringLiteral("وصول چک");
const QString kCashed = QStringLiteral("برداشت چک");
const QString kUndo = QStringLiteral("حذف عمليات قبلي");
const QString kStart = QStringLiteral("1404/01/01");

class OpeningStatesTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"),
            tr::fullRights({QStringLiteral("N_A_CHQGET_"), QStringLiteral("N_A_CHQPAY_"),
                            QStringLiteral("N_A_CHQACTION_")}));
    }
    void TearDown() override { session.reset(); }

    static DocumentCheque cheque(const char* number, bool guarantee = false) {
        DocumentCheque ch;
        ch.number = QString::fromLatin1(number);
        ch.series = QStringLiteral("S");
        ch.value = 250000;
        ch.guarantee = guarantee;
        return ch;
    }
    static DocumentCheque leaf(const char* number, bool guarantee = false) {
        DocumentCheque ch;
        ch.number = QString::fromLatin1(number);
        ch.series = QStringLiteral("12");
        ch.value = 400000;
        ch.bankAccount = 1;
        ch.guarantee = guarantee;
        return ch;
    }
    // Puts the list on the row of `number`.
    template <class List>
    static bool select(List& list, const QString& number) {
        tr::db::Query& rows = list.rows();
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number)
                return true;
        return false;
    }
    template <class List>
    static QString cell(List& list, const char* field) {
        return list.rows().FieldByName(QString::fromLatin1(field)).AsString().trimmed();
    }
    static std::string joined(const QStringList& names) {
        return names.join(QStringLiteral(" | ")).toStdString();
    }
    static QStringList kinds(const QList<QPair<QString, QString>>& choices) {
        QStringList out;
        for (const auto& [kind, name] : choices) out << kind;
        return out;
    }
    static QString state(const QString& number, const QString& series) {
        const auto latest =
            tr::instruments::latestRow(company(), tr::instruments::chequeHistory(), number, series);
        return latest ? latest->kind : QString();
    }
    static qint64 count(const QString& sql) {
        return tr::db::firstColumn(company(), sql).toLongLong();
    }
    static QString lastWhatDoc(const QString& number) {
        return tr::db::firstColumn(
                   company(),
                   QStringLiteral("Select LastWhatDoc From N_ChqFirst Where ChqOrTaraf = 1 "
                                  "And ChqNo = ") +
                       company().text(number))
            .toString()
            .trimmed();
    }
    const tr::test::RecordingMessageDialog::Shown& last() const { return session->dialog.last(); }
    // `number` set to `kind` on a list of `side` read afresh, and "تاييد".
    void setState(Side side, const QString& number, const QString& kind) {
        OpeningChequeStates screen(session->services, side);
        screen.fill();
        ASSERT_TRUE(select(screen, number)) << number.toStdString();
        ASSERT_TRUE(screen.chooseState(kind)) << number.toStdString() << " " << kind.toStdString();
        ASSERT_TRUE(screen.cmdOkClick()) << last().text.toStdString();
    }
    // One action chosen on `tab` for `number` on `date` and applied.
    template <class Tab>
    void act(Tab& tab, const QString& number, const QString& name, const QString& date) {
        tab.fill();
        ASSERT_TRUE(select(tab, number)) << number.toStdString();
        ASSERT_TRUE(tab.chooseAction(name)) << last().text.toStdString();
        ASSERT_TRUE(tab.setActionDate(date)) << last().text.toStdString();
    }

    std::unique_ptr<tr::test::TestSession> session;
};

TEST_F(OpeningStatesTest,
       ReceivedOpeningChequesAreListedOfferedTheirStatesAndStoredRereadAndChangedAgain) {
    receiveCheques({cheque("501"), cheque("502", /*guarantee=*/true), cheque("503")}, 1, kStart,
                   /*opening=*/true);
    receiveCheques({cheque("600")}, 2);  // not an opening cheque
    OpeningChequeStates screen(session->services, Side::Received);
    screen.fill();
    ASSERT_EQ(screen.rows().RecordCount(), 3);
    ASSERT_TRUE(select(screen, QStringLiteral("501")));
    EXPECT_EQ(cell(screen, "WhatDoc"), QStringLiteral("71"));
    EXPECT_EQ(cell(screen, "WhatDocNam"), QStringLiteral("دريافت چک"));
    EXPECT_EQ(cell(screen, "SarResidDate"), QStringLiteral("1404/05/01"));
    EXPECT_FALSE(screen.locked());
    EXPECT_EQ(kinds(screen.choices()), (QStringList{"71", "72", "76", "77", "79", "78"}));
    // A guarantee cheque is never offered a state of collection.
    ASSERT_TRUE(select(screen, QStringLiteral("502")));
    EXPECT_EQ(kinds(screen.choices()), (QStringList{"71", "78"}));
    EXPECT_FALSE(screen.chooseState(QStringLiteral("72")));
    EXPECT_EQ(cell(screen, "WhatDoc"), QStringLiteral("71"));

    // 501 in collection, 502 returned, the space bar stepping 503 to collection.
    ASSERT_TRUE(select(screen, QStringLiteral("501")));
    ASSERT_TRUE(screen.chooseStateNamed(QStringLiteral("در جريان وصول")));
    ASSERT_TRUE(select(screen, QStringLiteral("502")));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("78")));
    ASSERT_TRUE(select(screen, QStringLiteral("503")));
    screen.spaceOnState();
    EXPECT_EQ(cell(screen, "WhatDoc"), QStringLiteral("72"));
    screen.spaceOnState();
    EXPECT_EQ(cell(screen, "WhatDoc"), QStringLiteral("76"));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("71")));
    ASSERT_TRUE(screen.cmdOkClick()) << last().text.toStdString();
    EXPECT_EQ(lastWhatDoc(QStringLiteral("501")), QStringLiteral("72"));
    EXPECT_EQ(lastWhatDoc(QStringLiteral("502")), QStringLiteral("78"));
    EXPECT_EQ(lastWhatDoc(QStringLiteral("503")), QStringLiteral("71"));
    EXPECT_EQ(state(QStringLiteral("501"), QStringLiteral("S")), QStringLiteral("72"));
    EXPECT_EQ(state(QStringLiteral("502"), QStringLiteral("S")), QStringLiteral("78"));
    EXPECT_EQ(state(QStringLiteral("503"), QStringLiteral("S")), QStringLiteral("71"));
    // A state moves no money.
    EXPECT_EQ(count(QStringLiteral(
                  "Select Count(*) From Asnad Where TypeSys = 'N' And AtfCh In ('501', '502', "
                  "'503')")),
              0);

    // Read again by a new window, changed while nothing moved, and back to the document's kind.
    {
        OpeningChequeStates again(session->services, Side::Received);
        again.fill();
        ASSERT_TRUE(select(again, QStringLiteral("501")));
        EXPECT_EQ(cell(again, "WhatDocNam"), QStringLiteral("در جريان وصول"));
        EXPECT_FALSE(again.locked());
        ASSERT_TRUE(again.chooseState(QStringLiteral("79")));
        ASSERT_TRUE(again.cmdOkClick());
    }
    EXPECT_EQ(state(QStringLiteral("501"), QStringLiteral("S")), QStringLiteral("79"));
    setState(Side::Received, QStringLiteral("501"), QStringLiteral("71"));
    EXPECT_EQ(state(QStringLiteral("501"), QStringLiteral("S")), QStringLiteral("71"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqLastTrans Where ChqNo = '501'")), 1);
    EXPECT_EQ(lastWhatDoc(QStringLiteral("501")), QStringLiteral("71"));

    // A row left without a state refuses the whole list.
    screen.fill();
    ASSERT_TRUE(select(screen, QStringLiteral("503")));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("77")));
    ASSERT_TRUE(select(screen, QStringLiteral("501")));
    ASSERT_TRUE(screen.clearState());
    EXPECT_FALSE(screen.cmdOkClick());
    EXPECT_EQ(last().text, OpeningChequeStates::kNoState);
    EXPECT_EQ(last().code, QStringLiteral("1ER"));
    EXPECT_EQ(state(QStringLiteral("503"), QStringLiteral("S")), QStringLiteral("71"));
}

TEST_F(OpeningStatesTest,
       AChequeThatMovedIsLockedOnEitherSideAndAMoveAfterTheListWasReadRefusesTheList) {
    receiveCheques({cheque("511"), cheque("512"), cheque("513"), cheque("514")}, 1, kStart,
                   /*opening=*/true);
    // 512 is passed on by an opening payment: it moved, on the other side.
    DocumentCheque spent = cheque("512");
    payCheques({spent}, 1, kStart, /*opening=*/true);
    // 513 goes to collection in the new period.
    ReceivedChequeActions actions(session->services);
    act(actions, QStringLiteral("513"), kCollect, QStringLiteral("1404/02/01"));
    actions.setBankAccount(1);
    ASSERT_TRUE(actions.apply()) << last().text.toStdString();

    OpeningChequeStates screen(session->services, Side::Received);
    screen.fill();
    ASSERT_EQ(screen.rows().RecordCount(), 4);
    for (const char* number : {"512", "513"}) {
        ASSERT_TRUE(select(screen, QString::fromLatin1(number)));
        EXPECT_TRUE(screen.locked()) << number;
        EXPECT_FALSE(screen.chooseState(QStringLiteral("78")));
        EXPECT_EQ(last().text, OpeningChequeStates::kMoved);
        EXPECT_EQ(last().code, QStringLiteral("1ER"));
        EXPECT_FALSE(screen.clearState());
    }
    EXPECT_TRUE(screen.lockedAt(1));
    EXPECT_TRUE(screen.lockedAt(2));
    EXPECT_FALSE(screen.lockedAt(0));
    ASSERT_TRUE(select(screen, QStringLiteral("513")));
    EXPECT_EQ(cell(screen, "WhatDoc"), QStringLiteral("71"));  // the state it entered with

    // 511 is given a state while, at another desk, 514 is sent to collection after this list
    // was read and given one too: nothing is written.
    ASSERT_TRUE(select(screen, QStringLiteral("511")));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("72")));
    ASSERT_TRUE(select(screen, QStringLiteral("514")));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("72")));
    act(actions, QStringLiteral("514"), kCollect, QStringLiteral("1404/02/01"));
    actions.setBankAccount(1);
    ASSERT_TRUE(actions.apply()) << last().text.toStdString();
    EXPECT_FALSE(screen.cmdOkClick());
    EXPECT_EQ(last().text, OpeningChequeStates::kMoved + QStringLiteral("\nشماره چك :514"));
    EXPECT_EQ(state(QStringLiteral("511"), QStringLiteral("S")), QStringLiteral("71"));
    EXPECT_EQ(lastWhatDoc(QStringLiteral("511")), QStringLiteral("71"));

    // The issued side lists the opening payment's cheque passed on, free to come back.
    OpeningChequeStates issued(session->services, Side::Issued);
    issued.fill();
    ASSERT_TRUE(select(issued, QStringLiteral("512")));
    EXPECT_FALSE(issued.locked());
    EXPECT_EQ(cell(issued, "WhatDocNam"), QStringLiteral("خرج چك"));
    EXPECT_EQ(cell(issued, "AcountID"), QStringLiteral("0"));
}

TEST_F(OpeningStatesTest,
       IssuedOpeningChequesOfferTheirSideStatesAndAChequePassedOnComesBackToTheReceivedSide) {
    receiveCheques({cheque("521")}, 1, kStart, /*opening=*/true);
    payCheques({leaf("100031"), leaf("100032", /*guarantee=*/true), cheque("521")}, 1, kStart,
               /*opening=*/true);
    OpeningChequeStates screen(session->services, Side::Issued);
    screen.fill();
    ASSERT_EQ(screen.rows().RecordCount(), 3);
    ASSERT_TRUE(select(screen, QStringLiteral("100031")));
    EXPECT_EQ(cell(screen, "WhatDocNam"), QStringLiteral("پرداخت چك"));
    EXPECT_EQ(kinds(screen.choices()), (QStringList{"81", "85", "86", "87"}));
    ASSERT_TRUE(select(screen, QStringLiteral("100032")));
    EXPECT_EQ(kinds(screen.choices()), (QStringList{"81", "87"}));
    ASSERT_TRUE(select(screen, QStringLiteral("521")));
    const auto passedOn = screen.choices();
    ASSERT_EQ(passedOn.size(), 2);
    EXPECT_EQ(passedOn[0], (QPair<QString, QString>{"81", QStringLiteral("خرج چك")}));
    EXPECT_EQ(passedOn[1], (QPair<QString, QString>{"88", QStringLiteral("برگشت از خرج چك")}));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("88")));
    ASSERT_TRUE(select(screen, QStringLiteral("100031")));
    ASSERT_TRUE(screen.chooseState(QStringLiteral("85")));
    ASSERT_TRUE(screen.cmdOkClick()) << last().text.toStdString();
    ASSERT_TRUE(select(screen, QStringLiteral("521")));
    EXPECT_EQ(cell(screen, "WhatDocNam"), QStringLiteral("برگشت از خرج چك"));

    // Back from spending, the cheque is in hand on the received side and off the issued tab.
    IssuedChequeActions issuedTab(session->services);
    issuedTab.fill();
    EXPECT_FALSE(select(issuedTab, QStringLiteral("521")));
    ASSERT_TRUE(select(issuedTab, QStringLiteral("100031")));
    EXPECT_EQ(cell(issuedTab, "LastWhatDoc"), QStringLiteral("85"));
    ReceivedChequeActions receivedTab(session->services);
    receivedTab.fill();
    ASSERT_TRUE(select(receivedTab, QStringLiteral("521")));
    EXPECT_EQ(cell(receivedTab, "LastWhatDoc"), QStringLiteral("88"));
    EXPECT_TRUE(receivedTab.menu().contains(kCollect));
}

// The actions screen at an opening state: the next actions of the state, but no undo, for there
// is no earlier action to return to.
TEST_F(OpeningStatesTest, AnOpeningStateIsOfferedItsNextActionsButNotUndoOnTheActionsScreen) {
    receiveCheques({cheque("531"), cheque("532")}, 1, kStart, /*opening=*/true);
    payCheques({leaf("100041"), cheque("532")}, 1, kStart, /*opening=*/true);
    setState(Side::Received, QStringLiteral("531"), QStringLiteral("72"));
    setState(Side::Issued, QStringLiteral("100041"), QStringLiteral("85"));
    setState(Side::Issued, QStringLiteral("532"), QStringLiteral("88"));
    for (const char* number : {"531", "532", "100041"})
        EXPECT_TRUE(
            atOpeningState(company(), QString::fromLatin1(number), number[0] == '1' ? "12" : "S"))
            << number;

    ReceivedChequeActions received(session->services);
    received.fill();
    ASSERT_TRUE(select(received, QStringLiteral("531")));
    EXPECT_EQ(cell(received, "IsFirst"), QStringLiteral("Y"));
    EXPECT_EQ(joined(received.menu()),
              joined({kCollected, QStringLiteral("برگشت از در جريان وصول"),
                      QStringLiteral("واخواست چک"), QStringLiteral("کسر موجودي")}));
    EXPECT_FALSE(received.chooseAction(kUndo));
    ASSERT_TRUE(select(received, QStringLiteral("532")));
    EXPECT_EQ(joined(received.menu()), joined({kCollect, QStringLiteral("برگشت چک")}));
    IssuedChequeActions issued(session->services);
    issued.fill();
    ASSERT_TRUE(select(issued, QStringLiteral("100041")));
    EXPECT_EQ(joined(issued.menu()), joined({kCashed, QStringLiteral("برگشت چک")}));
}

// Opening cheques post nothing until their first action; its voucher starts from the accounts
// of the cheque's opening row.
TEST_F(OpeningStatesTest, TheFirstActionFromAnOpeningStateStartsFromTheOpeningRowsAccounts) {
    // An opening cheque in collection, typed on the collection account on the received document.
    {
        ReceivedChequeDocument document(session->services);
        document.newDocument();
        document.header().date = kStart;
        document.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
        document.appendCheque();
        testing::typeReceivedFields(
            document.cheques(),
            {QStringLiteral("541"), 300000, QStringLiteral("S"), QStringLiteral("1404/03/01")});
        document.cheques().FieldByName(QStringLiteral("Moein")).SetValue(QStringLiteral("0002"));
        ASSERT_TRUE(document.postCheque() && document.save(/*opening=*/true))
            << last().text.toStdString();
    }
    payCheques({leaf("100045")}, 1, kStart, /*opening=*/true);
    setState(Side::Received, QStringLiteral("541"), QStringLiteral("72"));
    setState(Side::Issued, QStringLiteral("100045"), QStringLiteral("85"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N'")), 0);

    // Collected into bank account 1: with no collection row of the cheque, the account chosen on
    // the row gives the heads.
    ReceivedChequeActions received(session->services);
    act(received, QStringLiteral("541"), kCollected, QStringLiteral("1404/03/05"));
    EXPECT_EQ(cell(received, "VKoll") + cell(received, "VMoein"), QStringLiteral("1030002"));
    EXPECT_EQ(cell(received, "VaKoll"), QString());
    received.setBankAccount(1);
    EXPECT_EQ(cell(received, "VaKoll") + cell(received, "VaMoein"), QStringLiteral("1020001"));
    ASSERT_TRUE(received.apply()) << last().text.toStdString();
    const auto on = [](const char* number, const char* koll, const char* moein) {
        return tr::db::firstColumn(
                   company(), QStringLiteral("Select IsNull(Sum(Bed - Bes), 0) From Asnad Where "
                                             "TypeSys = 'N' And AtfCh = '%1' And Koll = '%2' And "
                                             "Moein = '%3'")
                                  .arg(QString::fromLatin1(number), QString::fromLatin1(koll),
                                       QString::fromLatin1(moein)))
            .toDouble();
    };
    EXPECT_DOUBLE_EQ(on("541", "102", "0001"), 300000);
    EXPECT_DOUBLE_EQ(on("541", "103", "0002"), -300000);
    EXPECT_FALSE(atOpeningState(company(), QStringLiteral("541"), QStringLiteral("S")));

    // Our protested opening leaf cashed: from the payable heads its opening row names.
    IssuedChequeActions issued(session->services);
    act(issued, QStringLiteral("100045"), kCashed, QStringLiteral("1404/05/02"));
    ASSERT_TRUE(issued.apply()) << last().text.toStdString();
    EXPECT_DOUBLE_EQ(on("100045", "201", "0001"), 400000);
    EXPECT_DOUBLE_EQ(on("100045", "102", "0001"), -400000);
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));

    // Undone, the cheque is back at its opening state with nothing on the book.
    issued.fill();
    ASSERT_TRUE(select(issued, QStringLiteral("100045")));
    ASSERT_TRUE(issued.chooseAction(kUndo));
    ASSERT_TRUE(issued.apply()) << last().text.toStdString();
    EXPECT_EQ(state(QStringLiteral("100045"), QStringLiteral("12")), QStringLiteral("85"));
    EXPECT_TRUE(atOpeningState(company(), QStringLiteral("100045"), QStringLiteral("12")));
    EXPECT_EQ(count(QStringLiteral(
                  "Select Count(*) From Asnad Where TypeSys = 'N' And AtfCh = '100045'")),
              0);
}

TEST_F(OpeningStatesTest, AChequeReturnedBeforeThePeriodIsReceivedAgainOnlyWithALaterDate) {
    receiveCheques({cheque("551")}, 1, kStart, /*opening=*/true);
    setState(Side::Received, QStringLiteral("551"), QStringLiteral("78"));
    ReceivedChequeDocument again(session->services);
    again.newDocument();
    again.header().date = kStart;
    again.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    EXPECT_FALSE(testing::typeReceivedCheque(again.cheques(),
                                             {QStringLiteral("551"), 250000, QStringLiteral("S")}));
    EXPECT_EQ(last().text, QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ 1404/01/01 باشد."));
    again.header().date = QStringLiteral("1404/01/02");
    ASSERT_TRUE(testing::typeReceivedCheque(again.cheques(),
                                            {QStringLiteral("551"), 250000, QStringLiteral("S")}))
        << last().text.toStdString();
    ASSERT_TRUE(again.save()) << last().text.toStdString();
    // Received again, its opening state can no longer change.
    OpeningChequeStates screen(session->services, Side::Received);
    screen.fill();
    ASSERT_TRUE(select(screen, QStringLiteral("551")));
    EXPECT_TRUE(screen.locked());
    EXPECT_EQ(cell(screen, "WhatDoc"), QStringLiteral("78"));
}

// A state other than the document's kind is the cheque's latest row: the opening document holds
// it as it holds a moved cheque, until the state is set back.
TEST_F(OpeningStatesTest, AnOpeningDocumentIsDeletedOnlyWithItsChequesBackAtItsKind) {
    receiveCheques({cheque("561")}, 4, kStart, /*opening=*/true);
    setState(Side::Received, QStringLiteral("561"), QStringLiteral("72"));
    {
        ReceivedChequeDocument document(session->services);
        ASSERT_TRUE(document.open(QStringLiteral("4"))) << last().text.toStdString();
        EXPECT_FALSE(document.remove());
        EXPECT_EQ(last().text, QStringLiteral("آخرين گردش چك شماره 561 در جريان وصول ميباشد."));
    }
    setState(Side::Received, QStringLiteral("561"), QStringLiteral("71"));
    ReceivedChequeDocument document(session->services);
    ASSERT_TRUE(document.open(QStringLiteral("4")));
    session->dialog.answerYes();
    ASSERT_TRUE(document.remove()) << last().text.toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqLastTrans Where ChqNo = '561'")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqFirst Where ChqNo = '561'")), 0);
}

}  // namespace
}  // namespace tr::cheques

namespace tr::cheques {
namespace {

class OpeningStateUndoTest : public OpeningStatesTest {};

// A cheque that entered the period back from collection (77), sent to collection and back again:
// its latest 77 is an action of the period, not the opening state, and is undone like any other.
TEST_F(OpeningStateUndoTest, AnActionBackToTheOpeningStatesKindIsStillUndone) {
    receiveCheques({cheque("561")}, 1, kStart, /*opening=*/true);
    setState(Side::Received, QStringLiteral("561"), QStringLiteral("77"));
    ReceivedChequeActions actions(session->services);
    act(actions, QStringLiteral("561"), kCollect, QStringLiteral("1404/03/01"));
    actions.setBankAccount(1);
    ASSERT_TRUE(actions.apply()) << last().text.toStdString();
    act(actions, QStringLiteral("561"), QStringLiteral("برگشت از در جريان وصول"), QStringLiteral("1404/04/01"));
    ASSERT_TRUE(actions.apply()) << last().text.toStdString();
    EXPECT_FALSE(atOpeningState(company(), QStringLiteral("561"), QStringLiteral("S")));
    actions.fill();
    ASSERT_TRUE(select(actions, QStringLiteral("561")));
    ASSERT_TRUE(actions.chooseAction(kUndo)) << last().text.toStdString();
    ASSERT_TRUE(actions.apply()) << last().text.toStdString();
    EXPECT_EQ(state(QStringLiteral("561"), QStringLiteral("S")), QStringLiteral("72"));
    EXPECT_TRUE(chequeLedgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
