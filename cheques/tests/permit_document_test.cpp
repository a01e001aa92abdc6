// The payment permit driven as its screen does: the payment's rows with the permit's own wording,
// the save that posts nothing to the ledger, the rights of a new and an edited permit, two desks
// saving at once, the delete's refusals in the order of the managers' steps, and the components
// that make up its amount.
#include <gtest/gtest.h>

#include "cheques/permit_components.h"
#include "cheques/tests/cheque_typing.h"
#include "cheques/tests/permit_fixture.h"

namespace tr::cheques {
namespace {

using tr::db::Query;

class PermitDocumentTest : public testing::PermitTest {};

TEST_F(PermitDocumentTest, RowsFollowThePaymentsRulesInThePermitsWordsAndPostNoVoucher) {
    PermitDocument doc(session->services);
    startPermit(doc);
    EXPECT_FALSE(typeLeaf(doc, QStringLiteral("100005"), 1000, /*account=*/2));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك متعلق به حساب بانكي انتخاب شده نميباشد."));
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('83', '100009', '12', '1404/02/01', '1', 0)"));
    EXPECT_FALSE(typeLeaf(doc, QStringLiteral("100009"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين چك ابطال شده است !"));
    // A guarantee cheque in hand cannot be passed on.
    testing::receiveThroughScreen(session->services, {QStringLiteral("7701"), 500000, QStringLiteral("ج"), QStringLiteral("1404/04/01")},
                                  [](Query& g) { g.FieldByName(QStringLiteral("Tazmin")).SetValue(QStringLiteral("ض")); });
    EXPECT_FALSE(doc.spendCheque(QStringLiteral("7701"), QStringLiteral("ج")));
    EXPECT_EQ(lastMessage(), QStringLiteral("چك تضميني دريافتي را نميتوانيد خرج كنيد."));
    // The payment's own rules stay: a leaf in no book.
    EXPECT_FALSE(typeLeaf(doc, QStringLiteral("990001"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك ثبت نشده است."));

    ASSERT_TRUE(typeLeaf(doc, QStringLiteral("100010"), 1000000)) << lastMessage().toStdString();
    ASSERT_TRUE(typeLeaf(doc, QStringLiteral("100011"), 2000000)) << lastMessage().toStdString();
    // Counterparty lines that balance the permit but not each cheque.
    Query& lines = doc.counterparties();
    ASSERT_EQ(lines.RecordCount(), 2);
    for (const double value : {2000000.0, 1000000.0}) {
        lines.Edit();
        lines.FieldByName(QStringLiteral("ChqValue")).SetValue(value);
        lines.Post();
        ASSERT_EQ(lines.state(), Query::State::Browse) << lastMessage().toStdString();
        lines.Next();
    }
    EXPECT_FALSE(doc.save());
    EXPECT_EQ(lastMessage(), QStringLiteral("جمع مبلغ چك 100010 در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد."));
    lines.First();
    for (const double value : {1000000.0, 2000000.0}) {
        lines.Edit();
        lines.FieldByName(QStringLiteral("ChqValue")).SetValue(value);
        lines.Post();
        lines.Next();
    }
    ASSERT_TRUE(doc.save()) << lastMessage().toStdString();
    EXPECT_EQ(doc.header().serial, QStringLiteral("1"));
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ Where Serial = 1 And ChqOrTaraf = 1"), 2);
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ Where Serial = 1 And ChqOrTaraf = 2"), 2);
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc <> '71'"), 0);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81'"), 0);
    EXPECT_EQ(tr::db::firstColumn(company(), "Select Max(TypeDoc) From ASNADACTIONS Where TypeDoc Like '%مجوز%'").toString(),
              QStringLiteral("مجوز پرداخت چك"));
    EXPECT_TRUE(doc.approvalNote().isEmpty());
    // Loaded again as saved.
    PermitDocument again(session->services);
    ASSERT_TRUE(again.open(QStringLiteral("1")));
    EXPECT_EQ(again.cheques().RecordCount(), 2);
    EXPECT_EQ(again.cheques().FieldByName(QStringLiteral("AcountCod")).AsString().trimmed(), QStringLiteral("0101234567"));
    EXPECT_EQ(again.header().date, QStringLiteral("1404/02/10"));
    EXPECT_FALSE(again.open(QStringLiteral("9")));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين شماره مجوز پرداخت چك در دسترس نمي باشد"));
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(PermitDocumentTest, ANewAndAnEditedPermitNeedTheirOwnRights) {
    const QString serial = writePermit({QStringLiteral("100012")});
    session->global.rights = QStringLiteral("N_A_CHQMOJAVEZ__VIEW(Y)");
    {
        PermitDocument doc(session->services);
        startPermit(doc);
        ASSERT_TRUE(typeLeaf(doc, QStringLiteral("100013"), 1000));
        EXPECT_FALSE(doc.save());
        EXPECT_EQ(lastMessage(), QStringLiteral("کاربر مجاز به ثبت مجوز پرداخت چك نميباشد"));
    }
    session->global.rights = QStringLiteral("N_A_CHQMOJAVEZ__SABT(Y)");
    PermitDocument doc(session->services);
    ASSERT_TRUE(doc.open(serial));
    EXPECT_FALSE(doc.save());
    EXPECT_EQ(lastMessage(), QStringLiteral("کاربر مجاز به ويرايش مجوز پرداخت چك نميباشد"));
}

TEST_F(PermitDocumentTest, TwoDesksSavingNewPermitsAtOnceGetTwoSerials) {
    tr::test::TestSession other(company(), 2, QStringLiteral("sara"), testing::permitRights());
    PermitDocument first(session->services), second(other.services);
    startPermit(first);
    startPermit(second);
    // Both show the same next serial while they type.
    EXPECT_EQ(first.header().serial, second.header().serial);
    ASSERT_TRUE(typeLeaf(first, QStringLiteral("100014"), 1000));
    ASSERT_TRUE(typeLeaf(second, QStringLiteral("100015"), 2000));
    ASSERT_TRUE(first.save()) << lastMessage().toStdString();
    ASSERT_TRUE(second.save()) << other.dialog.last().text.toStdString();
    EXPECT_EQ(first.header().serial, QStringLiteral("1"));
    EXPECT_EQ(second.header().serial, QStringLiteral("2"));
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ Where Serial = 2 And ChqOrTaraf = 1 And ChqNo = '100015'"), 1);
}

TEST_F(PermitDocumentTest, ADeleteIsRefusedInTheOrderOfTheManagersStepsThenConfirmed) {
    const QString serial = writePermit({QStringLiteral("100016")});
    company().execute(QStringLiteral("Update N_MojavezTrans Set ChqPaySerial = 7, ModirAmelDate = '1404/02/12', ModirMaleDate = "
                                     "'1404/02/11', ModirAmelAbtalDate = '1404/02/13', ModirMaleAbtalDate = '1404/02/13'"));
    PermitDocument doc(session->services);
    ASSERT_TRUE(doc.open(serial));
    EXPECT_EQ(doc.approvalNote(), QStringLiteral("(سند توسط مديرعامل تاييد شده است)"));
    const std::pair<const char*, QString> steps[] = {
        {"ChqPaySerial = 0", QStringLiteral("سريال مجوز دستور پرداخت به سريال پرداخت چك تبديل شده است.")},
        {"ModirAmelDate = ''", QStringLiteral("سريال مجوز دستور پرداخت توسط مدير عامل تاييد شده است.")},
        {"ModirMaleDate = ''", QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي تاييد شده است.")},
        {"ModirAmelAbtalDate = ''", QStringLiteral("سريال مجوز دستور پرداخت توسط مدير عامل ابطال شده است.")},
        {"ModirMaleAbtalDate = ''", QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي ابطال شده است.")},
    };
    for (const auto& [clear, refusal] : steps) {
        session->dialog.answerYes();
        EXPECT_FALSE(doc.remove());
        EXPECT_EQ(lastMessage(), refusal);
        session->dialog.clearAnswers();
        // An edit is refused alike.
        EXPECT_FALSE(doc.save());
        EXPECT_EQ(lastMessage(), refusal);
        company().execute(QStringLiteral("Update N_MojavezTrans Set ") + QString::fromLatin1(clear));
    }
    EXPECT_EQ(count("Select Count(*) From N_MojavezTrans"), 1);
    session->dialog.answerNo();
    EXPECT_FALSE(doc.remove());
    EXPECT_EQ(lastMessage(), QStringLiteral(" حذف شود؟"));
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ"), 2);
    session->dialog.answerYes();
    ASSERT_TRUE(doc.remove()) << lastMessage().toStdString();
    EXPECT_EQ(count("Select Count(*) From N_MojavezTrans"), 0);
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ"), 0);
    EXPECT_EQ(doc.mode(), DocumentMode::New);
}

TEST_F(PermitDocumentTest, ComponentsMakeTheAmountFromSignsAndRatesAndReachThePayment) {
    PermitDocument doc(session->services);
    startPermit(doc);
    ASSERT_TRUE(typeLeaf(doc, QStringLiteral("100017"), 58000000));
    ASSERT_TRUE(typeLeaf(doc, QStringLiteral("100018"), 29000000));
    PermitComponents components(doc);
    components.open();
    Query& rows = components.rows();
    ASSERT_EQ(rows.RecordCount(), 3);  // every kind of N_Mojavez
    const auto set = [&](const char* code, const QVariant& nerkh, const QVariant& value, bool subtract) {
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("PMojavezCod")).AsString().trimmed() == QLatin1String(code)) break;
        rows.Edit();
        rows.FieldByName(QStringLiteral("Nerkh")).SetValue(nerkh);
        rows.FieldByName(QStringLiteral("FactValue")).SetValue(value);
        rows.Post();
        if (subtract) {
            ASSERT_TRUE(components.toggleSign());
        }
    };
    set("01", 0, 100000000.0, false);  // the contract: the gross
    set("02", 10, 0, true);            // 10% kept for good work
    set("03", 3, 0, true);             // 3% tax withheld
    EXPECT_DOUBLE_EQ(components.componentTotal(), 87000000);
    EXPECT_DOUBLE_EQ(components.chequeTotal(), 87000000);
    ASSERT_TRUE(components.apply());
    // Spread over the cheques by their amounts.
    doc.cheques().First();
    EXPECT_DOUBLE_EQ(doc.cheques().FieldByName(QStringLiteral("FactValue")).AsFloat(), 58000000);
    ASSERT_TRUE(doc.save()) << lastMessage().toStdString();
    EXPECT_EQ(count("Select Count(*) From N_MojavezFact Where Serial = 1"), 3);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(company(), "Select FactValue From N_MojavezFact Where PMojavezCod = '03'").toDouble(),
                     3000000);
    // Loaded again, the components come back with the permit.
    PermitDocument again(session->services);
    ASSERT_TRUE(again.open(QStringLiteral("1")));
    PermitComponents reread(again);
    reread.open();
    EXPECT_DOUBLE_EQ(reread.componentTotal(), 87000000);
    // A payment carrying the permit out shows what the permit allowed and the components' part.
    company().execute(QStringLiteral("Update N_MojavezTrans Set ModirMaleDate = '1404/02/11', ModirAmelDate = '1404/02/12'"));
    ChequePaymentDocument payment(session->services);
    startPermit(payment, QStringLiteral("1404/02/20"));
    ASSERT_TRUE(payment.setPermit(QStringLiteral("1"))) << lastMessage().toStdString();
    payment.cheques().Last();
    EXPECT_DOUBLE_EQ(payment.cheques().FieldByName(QStringLiteral("FactValue")).AsFloat(), 29000000);
    EXPECT_DOUBLE_EQ(payment.cheques().FieldByName(QStringLiteral("MojavezValue")).AsFloat(), 29000000);
}

}  // namespace
}  // namespace tr::cheques
