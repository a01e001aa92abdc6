// The cheques' state-action table through the mechanism: the menus by state and facts, the space
// bar's stepping, the name-to-kind mapping of each side against the book's kind names, and the
// mechanism serving another instrument's table unchanged.
#include "instruments/cheque_actions.h"

#include <gtest/gtest.h>

#include "common/text/tsql_collation.h"
#include "db/schema/document_kinds.h"

namespace tr::instruments {
namespace {

QString u(const char* text) {
    return QString::fromUtf8(text);
}

const QString kUndo = QStringLiteral("حذف عمليات قبلي");

TEST(ChequeActions, AGuaranteeChequeInHandCanOnlyBeReturned) {
    InstrumentFacts guarantee;
    guarantee.guarantee = true;
    EXPECT_EQ(chequeActions().menu(u("71"), guarantee), QStringList{u("برگشت چک")});
    EXPECT_FALSE(chequeActions().allows(u("71"), guarantee, u("در جريان وصول")));
    EXPECT_EQ(chequeActions().menu(u("71"), {}), QStringList({u("در جريان وصول"), u("برگشت چک")}));
    EXPECT_TRUE(chequeActions().allows(u("71"), {}, u("در جريان وصول")));
    EXPECT_TRUE(chequeActions().allows(u("71"), guarantee, QString()));  // no action is always allowed
}

TEST(ChequeActions, TheSpaceBarStepsThroughTheMenuAndBackToNothing) {
    QStringList seen;
    QString current;
    for (int press = 0; press < 7; ++press) {
        current = chequeActions().step(u("72"), {}, current);
        seen << current;
    }
    EXPECT_EQ(seen, QStringList({u("وصول چک"), u("برگشت از در جريان وصول"), u("واخواست چک"),
                                 u("کسر موجودي"), kUndo, QString(), u("وصول چک")}));
    // A final state toggles between nothing and undo; a voided leaf offers nothing at all.
    EXPECT_EQ(chequeActions().step(u("73"), {}, QString()), kUndo);
    EXPECT_EQ(chequeActions().step(u("73"), {}, kUndo), QString());
    EXPECT_EQ(chequeActions().step(u("83"), {}, QString()), QString());
    EXPECT_FALSE(chequeActions().allows(u("83"), {}, kUndo));
    // Typed with the other keyboard's kaf, a name is the same name.
    EXPECT_EQ(chequeActions().step(u("71"), {}, u("در جريان وصول")), u("برگشت چک"));
    EXPECT_TRUE(chequeActions().allows(u("72"), {}, u("وصول چك")));
}

TEST(ChequeActions, UndoIsNotOfferedAtAnOpeningBalancesState) {
    InstrumentFacts opening;
    opening.opening = true;
    for (const char* state : {"72", "79", "85", "77", "73"}) {
        EXPECT_TRUE(chequeActions().menu(u(state), {}).contains(kUndo)) << state;
        EXPECT_FALSE(chequeActions().menu(u(state), opening).contains(kUndo)) << state;
    }
    EXPECT_EQ(chequeActions().menu(u("72"), opening).size(), 4);
}

TEST(ChequeActions, PaidOutChequesFollowWhoseChequeItIsAndWhichSideHoldsIt) {
    // A received cheque passed on comes back from the issued side; back in hand (88) it is the
    // received side's again.
    InstrumentFacts spent;
    spent.paidOut = true;
    spent.side = Side::Issued;
    EXPECT_EQ(chequeActions().menu(u("81"), spent), QStringList{u("برگشت از خرج چک")});
    EXPECT_TRUE(chequeActions().menu(u("88"), spent).isEmpty());
    spent.side = Side::Received;
    EXPECT_TRUE(chequeActions().menu(u("81"), spent).isEmpty());
    EXPECT_EQ(chequeActions().menu(u("88"), spent), QStringList({u("در جريان وصول"), u("برگشت چک"), kUndo}));
    InstrumentFacts own;
    own.own = true;
    own.side = Side::Issued;
    EXPECT_EQ(chequeActions().menu(u("81"), own),
              QStringList({u("برداشت چک"), u("واخواست چک"), u("کسر موجودي"), u("برگشت چک")}));
    own.guarantee = true;
    EXPECT_EQ(chequeActions().menu(u("81"), own), QStringList{u("برگشت چک")});
    own.guarantee = false;
    EXPECT_EQ(chequeActions().menu(u("88"), own), QStringList({u("ابطال چک"), kUndo}));
}

TEST(ChequeActions, ANameRecordsItsSidesKindAsTheBookNamesIt) {
    EXPECT_EQ(chequeActions().kindOf(u("برگشت چک"), Side::Received), u("78"));
    EXPECT_EQ(chequeActions().kindOf(u("برگشت چک"), Side::Issued), u("87"));
    EXPECT_EQ(chequeActions().kindOf(u("واخواست چک"), Side::Issued), u("85"));
    EXPECT_EQ(chequeActions().kindOf(u("کسر موجودي"), Side::Received), u("76"));
    EXPECT_FALSE(chequeActions().kindOf(u("در جريان وصول"), Side::Issued));
    EXPECT_FALSE(chequeActions().kindOf(kUndo, Side::Received));
    EXPECT_TRUE(chequeActions().isUndo(kUndo));
    EXPECT_EQ(chequeActions().names(Side::Received),
              QStringList({u("در جريان وصول"), u("برگشت چک"), u("وصول چک"), u("واخواست چک"),
                           u("کسر موجودي"), u("برگشت از در جريان وصول"), kUndo}));
    EXPECT_EQ(chequeActions().kindOf(u("برگشت از خرج چك"), Side::Issued), u("88"));
    for (const Side side : {Side::Received, Side::Issued}) {
        for (const QString& name : chequeActions().names(side)) {
            if (chequeActions().isUndo(name)) continue;
            const QString kind = *chequeActions().kindOf(name, side);
            EXPECT_EQ(tr::text::tsqlCompare(tr::schema::documentKindName(kind), name), 0)
                << kind.toStdString() << " " << name.toStdString();
        }
    }
}

// Nothing in the mechanism is a cheque's: a promissory note's table runs on it as it stands.
TEST(StateActionsMechanism, ServesAnotherInstrumentsTable) {
    const StateActions notes(u("حذف عمليات قبلي"),
                             {{u("A1"), {}, {u("در جريان وصول"), u("برگشت سفته")}},
                              {u("A3"), {}, {u("حذف عمليات قبلي")}}},
                             {{u("در جريان وصول"), Side::Received, u("A2")},
                              {u("برگشت سفته"), Side::Received, u("A8")}});
    EXPECT_EQ(notes.step(u("A1"), {}, QString()), u("در جريان وصول"));
    EXPECT_EQ(notes.kindOf(u("برگشت سفته"), Side::Received), u("A8"));
    EXPECT_TRUE(notes.menu(u("A9"), {}).isEmpty());  // a state the table does not list
}

}  // namespace
}  // namespace tr::instruments
