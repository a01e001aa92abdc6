// Permits through the two managers' approval and into a payment: the finance manager's approval
// alone is not enough, the managing director sees only what the finance manager let through, an
// unticked permit loses only that approver's date, used and director-approved permits stay as
// they are, the approval date follows the listed permits, a payment uses a permit once and frees
// it when deleted; an approval failing part way changes nothing.
#include <gtest/gtest.h>

#include "cheques/tests/permit_fixture.h"
#include "common/db/database_error.h"
#include "tests/support/failing_connection.h"

namespace tr::cheques {
namespace {

using tr::db::Query;
using tr::procedures::testing::ledgerIsConsistent;

class PermitApprovalTest : public testing::PermitTest {
  protected:
    // A payment of the permit's rows, dated 1404/02/20 unless said.
    std::unique_ptr<ChequePaymentDocument> pay(const QString& permit, const QString& date = QStringLiteral("1404/02/20")) {
        auto payment = std::make_unique<ChequePaymentDocument>(session->services);
        startPermit(*payment, date);
        EXPECT_TRUE(payment->setPermit(permit)) << lastMessage().toStdString();
        return payment;
    }
    static QStringList listed(PermitApproval& screen) {
        QStringList out;
        for (screen.rows().First(); !screen.rows().Eof(); screen.rows().Next())
            out << screen.rows().FieldByName(QStringLiteral("Serial")).AsString().trimmed();
        return out;
    }
};

TEST_F(PermitApprovalTest, APermitReachesAPaymentOnlyOnceBothManagersApprovedIt) {
    const QString permit = writePermit({QStringLiteral("100021"), QStringLiteral("100022")});
    const QString other = writePermit({QStringLiteral("100023")});
    // Without a permit a payment of our leaves is refused.
    ChequePaymentDocument bare(session->services);
    startPermit(bare, QStringLiteral("1404/02/20"));
    ASSERT_TRUE(typeLeaf(bare, QStringLiteral("100030"), 1000));
    EXPECT_FALSE(bare.save());
    EXPECT_EQ(lastMessage(), QStringLiteral("صدور چك فقط با صدور مجوز امكان پذير ميباشد."));
    // Opening cheques need none, and may not carry one.
    ASSERT_TRUE(bare.save(/*opening=*/true)) << lastMessage().toStdString();

    ASSERT_TRUE(decide(permit, Approver::FinanceManager, QStringLiteral("1404/02/11"))) << lastMessage().toStdString();
    EXPECT_EQ(lastMessage(), QStringLiteral("تغييرات ثبت شد."));
    ChequePaymentDocument payment(session->services);
    startPermit(payment, QStringLiteral("1404/02/20"));
    EXPECT_FALSE(payment.setPermit(permit));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين مجوز دستور پرداخت هنوز به تاييد مديرعامل نرسيده است."));
    EXPECT_FALSE(payment.setPermit(QStringLiteral("77")));
    EXPECT_EQ(lastMessage(), QStringLiteral("دستور مجوز پرداختي با اين سريال ثبت نشده است."));
    {
        PermitDocument doc(session->services);
        ASSERT_TRUE(doc.open(permit));
        EXPECT_EQ(doc.approvalNote(), QStringLiteral("(سند توسط مديرمالي تاييد شده است)"));
    }
    // The managing director's list: only what the finance manager approved, its sum of cheques.
    PermitApproval director(session->services);
    ASSERT_TRUE(director.setApprover(Approver::ManagingDirector));
    director.fill();
    EXPECT_EQ(listed(director), QStringList{permit});
    EXPECT_DOUBLE_EQ(director.rows().FieldByName(QStringLiteral("sValue")).AsFloat(), 2000000);
    EXPECT_EQ(director.rows().FieldByName(QStringLiteral("ModirMale")).AsString(), PermitApproval::kTicked);
    ASSERT_TRUE(decide(permit, Approver::ManagingDirector, QStringLiteral("1404/02/12"))) << lastMessage().toStdString();

    // Dated on the approval's day: too early.
    auto first = pay(permit, QStringLiteral("1404/02/12"));
    EXPECT_EQ(first->cheques().RecordCount(), 2);
    EXPECT_EQ(first->counterparties().RecordCount(), 2);
    EXPECT_FALSE(first->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ تاييد مجوز پرداخت چك (1404/02/12) باشد."));
    first->header().date = QStringLiteral("1404/02/20");
    ASSERT_TRUE(first->save()) << lastMessage().toStdString();
    const QString paid = first->header().serial;
    EXPECT_EQ(permitValue(permit, "ChqPaySerial"), paid);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81' And Serial = " + paid), 2);
    EXPECT_TRUE(ledgerIsConsistent(company()));
    // Reopened, the payment shows its permit.
    ChequePaymentDocument reopened(session->services);
    ASSERT_TRUE(reopened.open(paid));
    EXPECT_EQ(reopened.permitSerial(), permit);
    EXPECT_DOUBLE_EQ(reopened.cheques().FieldByName(QStringLiteral("MojavezValue")).AsFloat(), 1000000);

    // Used once: another payment is told where.
    ChequePaymentDocument second(session->services);
    startPermit(second, QStringLiteral("1404/02/21"));
    EXPECT_FALSE(second.setPermit(permit));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين دستور مجوز پرداخت در سريال ") + paid + QStringLiteral(" پرداخت چك صادر شده است."));
    // Deleting the payment frees it; the second payment then saves.
    session->dialog.answerYes();
    ASSERT_TRUE(reopened.remove()) << lastMessage().toStdString();
    EXPECT_EQ(permitValue(permit, "ChqPaySerial"), QStringLiteral("0"));
    EXPECT_TRUE(ledgerIsConsistent(company()));
    ASSERT_TRUE(second.setPermit(permit)) << lastMessage().toStdString();
    ASSERT_TRUE(second.save()) << lastMessage().toStdString();
    EXPECT_EQ(permitValue(permit, "ChqPaySerial"), second.header().serial);
    EXPECT_TRUE(ledgerIsConsistent(company()));
    // The other permit, never approved, stays out of the payment and out of the director's list.
    EXPECT_FALSE(second.setPermit(other));
}

TEST_F(PermitApprovalTest, VoidedPermitsAreRefusedByThePaymentForEitherManager) {
    const QString permit = writePermit({QStringLiteral("100024")});
    ASSERT_TRUE(decide(permit, Approver::FinanceManager, QStringLiteral("1404/02/11")));
    ASSERT_TRUE(decide(permit, Approver::ManagingDirector, QStringLiteral("1404/02/12")));
    // The finance manager cannot touch a permit the director approved; the director voids it.
    EXPECT_FALSE(decide(permit, Approver::FinanceManager, QStringLiteral("1404/02/13"), QStringLiteral("Abtal")));
    EXPECT_EQ(lastMessage(), QStringLiteral("مجوز پرداخت چك توسط مديرعامل تاييد شده است."));
    ASSERT_TRUE(decide(permit, Approver::ManagingDirector, QStringLiteral("1404/02/13"), QStringLiteral("Abtal")));
    ChequePaymentDocument payment(session->services);
    startPermit(payment, QStringLiteral("1404/02/20"));
    EXPECT_FALSE(payment.setPermit(permit));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين مجوز دستور پرداخت توسط مديرعامل ابطال شده است."));
    PermitApproval screen(session->services);
    ASSERT_TRUE(screen.setApprover(Approver::ManagingDirector));
    screen.fill();
    ASSERT_TRUE(moveTo(screen, permit));
    EXPECT_EQ(screen.rows().FieldByName(QStringLiteral("Abtal")).AsString(), PermitApproval::kTicked);
    EXPECT_EQ(screen.rows().FieldByName(QStringLiteral("AbtalDate")).AsString().trimmed(), QStringLiteral("1404/02/13"));
    // A finance manager's voiding of a permit the director left alone.
    company().execute(QStringLiteral("Update N_MojavezTrans Set ModirAmelAbtalDate = '', ModirMaleAbtalDate = '1404/02/14'"));
    EXPECT_FALSE(payment.setPermit(permit));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين مجوز دستور پرداخت توسط مديرمالي ابطال شده است."));
}

TEST_F(PermitApprovalTest, UntickingClearsOnlyThatApproversDateAndOwnApprovalsComeTicked) {
    const QString permit = writePermit({QStringLiteral("100025")});
    ASSERT_TRUE(decide(permit, Approver::FinanceManager, QStringLiteral("1404/02/11")));
    ASSERT_TRUE(decide(permit, Approver::ManagingDirector, QStringLiteral("1404/02/12")));
    PermitApproval screen(session->services);
    ASSERT_TRUE(screen.setApprover(Approver::ManagingDirector));
    screen.fill();
    ASSERT_TRUE(moveTo(screen, permit));
    EXPECT_EQ(screen.rows().FieldByName(QStringLiteral("sSelect")).AsString(), PermitApproval::kTicked);
    ASSERT_TRUE(screen.toggle(QStringLiteral("sSelect")));
    screen.actionDate() = QStringLiteral("1404/02/15");
    ASSERT_TRUE(screen.apply()) << lastMessage().toStdString();
    EXPECT_EQ(permitValue(permit, "ModirAmelDate"), QString());
    EXPECT_EQ(permitValue(permit, "ModirMaleDate"), QStringLiteral("1404/02/11"));
    // The finance manager's own approval comes ticked; re-confirming keeps its first date.
    ASSERT_TRUE(screen.setApprover(Approver::FinanceManager));
    screen.fill();
    ASSERT_TRUE(moveTo(screen, permit));
    EXPECT_EQ(screen.rows().FieldByName(QStringLiteral("sSelect")).AsString(), PermitApproval::kTicked);
    screen.actionDate() = QStringLiteral("1404/02/16");
    ASSERT_TRUE(screen.apply());
    EXPECT_EQ(permitValue(permit, "ModirMaleDate"), QStringLiteral("1404/02/11"));
    ASSERT_TRUE(decide(permit, Approver::FinanceManager, QStringLiteral("1404/02/17")));
    EXPECT_EQ(permitValue(permit, "ModirMaleDate"), QString());
}

TEST_F(PermitApprovalTest, UsedPermitsCannotBeTickedAndTheDateMustFollowTheList) {
    const QString early = writePermit({QStringLiteral("100026")}, QStringLiteral("1404/02/10"));
    const QString late = writePermit({QStringLiteral("100027")}, QStringLiteral("1404/02/18"));
    PermitApproval screen(session->services);
    ASSERT_EQ(screen.roles(), (QList<Approver>{Approver::FinanceManager, Approver::ManagingDirector}));
    screen.fill();
    ASSERT_TRUE(moveTo(screen, early));
    ASSERT_TRUE(screen.toggle(QStringLiteral("sSelect")));
    // Not after the latest permit listed.
    screen.actionDate() = QStringLiteral("1404/02/18");
    EXPECT_FALSE(screen.apply());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ تاييد/ابطال صدور مجوز بايد بزرگتر از تاريخ 1404/02/18"));
    EXPECT_EQ(permitValue(early, "ModirMaleDate"), QString());
    // The serial filter leaves the late permit out, and with it its date.
    screen.filter().toSerial = early;
    screen.fill();
    ASSERT_TRUE(moveTo(screen, early));
    ASSERT_TRUE(screen.toggle(QStringLiteral("sSelect")));
    ASSERT_TRUE(screen.apply()) << lastMessage().toStdString();
    EXPECT_EQ(permitValue(early, "ModirMaleDate"), QStringLiteral("1404/02/18"));
    // The director's date must also follow the finance manager's approval.
    ASSERT_TRUE(screen.setApprover(Approver::ManagingDirector));
    screen.fill();
    ASSERT_TRUE(moveTo(screen, early));
    ASSERT_TRUE(screen.toggle(QStringLiteral("sSelect")));
    screen.actionDate() = QStringLiteral("1404/02/18");
    EXPECT_FALSE(screen.apply());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ تاييد/ابطال صدور مجوز بايد بزرگتر از تاريخ 1404/02/18"));
    // A used permit takes no tick.
    company().execute(QStringLiteral("Update N_MojavezTrans Set ChqPaySerial = 5 Where Serial = ") + late);
    screen.filter() = {};
    ASSERT_TRUE(screen.setApprover(Approver::FinanceManager));
    screen.fill();
    ASSERT_TRUE(moveTo(screen, late));
    EXPECT_EQ(screen.rows().FieldByName(QStringLiteral("IsChqSodor")).AsString(), PermitApproval::kTicked);
    EXPECT_FALSE(screen.toggle(QStringLiteral("sSelect")));
    EXPECT_EQ(lastMessage(), QStringLiteral("چك/چكهاي مجوز پرداخت صادر شده است."));
    EXPECT_FALSE(screen.toggle(QStringLiteral("Abtal")));
    // A user with neither right approves nothing.
    session->global.rights = QStringLiteral("N_A_CHQMOJAVEZ__VIEW(Y)");
    PermitApproval none(session->services);
    EXPECT_FALSE(none.mayApprove());
    none.fill();
    EXPECT_TRUE(none.rows().IsEmpty());
}

TEST_F(PermitApprovalTest, AnApprovalFailingPartWayChangesNoPermit) {
    QStringList permits;
    for (int i = 0; i < 4; ++i) permits << writePermit({QString::number(100031 + i)});
    tr::test::FailingConnection failing(company());
    tr::test::TestSession desk(failing, 1, QStringLiteral("admin"), testing::permitRights());
    PermitApproval screen(desk.services);
    screen.fill();
    for (const QString& serial : permits) {
        ASSERT_TRUE(moveTo(screen, serial));
        ASSERT_TRUE(screen.toggle(QStringLiteral("sSelect")));
    }
    screen.actionDate() = QStringLiteral("1404/02/11");
    const QString before = snapshot({"N_MojavezTrans"});
    int failures = 0;
    for (int n = 1; n < 100; ++n) {
        failing.failStatement(n);
        const bool done = screen.apply();
        const bool fired = failing.fired();
        failing.disarm();
        if (done) break;
        ASSERT_TRUE(fired) << desk.dialog.last().text.toStdString();
        ++failures;
        ASSERT_EQ(snapshot({"N_MojavezTrans"}), before) << "statement " << n;
    }
    EXPECT_GT(failures, 4);
    for (const QString& serial : permits) EXPECT_EQ(permitValue(serial, "ModirMaleDate"), QStringLiteral("1404/02/11"));
}

}  // namespace
}  // namespace tr::cheques
