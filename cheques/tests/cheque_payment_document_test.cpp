// The cheque payment driven as its screen does: our own leaves typed on a bank account (the
// book rules in their order, a leaf typed twice), received cheques passed on at their amount,
// the save, load and delete with the ledger checked after each posting, the permit released,
// and the user's right worded.
#include "cheques/cheque_payment_document.h"

#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include "cheques/received_cheque_document.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::db::Query;

class ChequePaymentDocumentTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        start(tr::fullRights({QStringLiteral("N_A_CHQPAY_"), QStringLiteral("N_A_CHQGET_")}));
    }
    void TearDown() override {
        doc.reset();
        session.reset();
    }
    void start(const QString& rights) {
        doc.reset();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"), rights);
        doc = std::make_unique<ChequePaymentDocument>(session->services);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/20");
        doc->lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("20001"), {}, {}};
    }
    // Our own leaf typed on bank account `account`; answers whether the row posted.
    bool typeLeaf(const QString& number, const QString& series, double value, qint64 account = 1) {
        doc->appendCheque();
        Query& g = doc->cheques();
        EXPECT_EQ(g.FieldByName(QStringLiteral("ChqStateNam")).AsString(), ChequePaymentDocument::kIssue);
        if (!doc->setBankAccount(account)) g.FieldByName(QStringLiteral("AcountID")).SetValue(account);
        g.FieldByName(QStringLiteral("ChqNo")).SetValue(number);
        g.FieldByName(QStringLiteral("Joz")).SetValue(series);
        g.FieldByName(QStringLiteral("ChqValue")).SetValue(value);
        g.FieldByName(QStringLiteral("SarResidDate")).SetValue(QStringLiteral("1404/03/15"));
        g.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("خريد کالا"));
        return post();
    }
    bool post() {
        Query& g = doc->cheques();
        g.Post();
        const bool posted = g.state() == Query::State::Browse;
        if (!posted) g.Cancel();
        return posted;
    }
    QString receive(const QString& number, double value) {
        return testing::receiveThroughScreen(session->services, {number, value, QStringLiteral("ج"), QStringLiteral("1404/04/01")});
    }
    static qint64 count(const QString& sql) { return tr::db::firstColumn(company(), sql).toLongLong(); }
    static double amount(const QString& sql) { return tr::db::firstColumn(company(), sql).toDouble(); }
    const QString& lastMessage() { return session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ChequePaymentDocument> doc;
};

TEST_F(ChequePaymentDocumentTest, OwnLeavesFollowTheirAccountsBooksInTheRulesOrder) {
    EXPECT_FALSE(typeLeaf(QStringLiteral("100005"), QStringLiteral("12"), 1000, 2));
    EXPECT_EQ(lastMessage(), QStringLiteral("تركيب سري و شماره چك مربوط به حساب بانكي انتخاب شده نمي باشد !"));
    EXPECT_FALSE(typeLeaf(QStringLiteral("990001"), QStringLiteral("12"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك ثبت نشده است."));
    EXPECT_FALSE(typeLeaf(QStringLiteral("1OOO05"), QStringLiteral("12"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك ثبت نشده است."));
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('83', '100009', '12', '1404/02/01', '1', 0)"));
    EXPECT_FALSE(typeLeaf(QStringLiteral("100009"), QStringLiteral("12"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك 100009در تاريخ '1404/02/01' ابطال شده است."));
    ASSERT_TRUE(typeLeaf(QStringLiteral("100005"), QStringLiteral("12"), 2500000)) << lastMessage().toStdString();
    // The account's payable heads, its number and name on the row.
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("Koll")).AsString().trimmed(), QStringLiteral("201"));
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("AcountCod")).AsString().trimmed(), QStringLiteral("0101234567"));
    EXPECT_FALSE(typeLeaf(QStringLiteral("100005"), QStringLiteral("12"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك تکراري ميباشد."));
    // A book whose bounds differ in width: the leaf is compared as a number.
    company().execute(QStringLiteral("Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, FormCode) Values (3, 'W', "
                                     "'99998', '100002', '1')"));
    ASSERT_TRUE(typeLeaf(QStringLiteral("99999"), QStringLiteral("W"), 500000, 3)) << lastMessage().toStdString();
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81' And CodWhatDoc In ('1', '3')"), 2);
    EXPECT_DOUBLE_EQ(amount("Select Sum(Bes) From Asnad Where WhatDoc = '81'"), 3000000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    // The bank account's balance beside it: account 1's own heads, the payment not on them.
    doc->cheques().First();
    ASSERT_TRUE(doc->bankBalance().has_value());
    // Issued once: a second payment is told where.
    const QString serial = doc->header().serial;
    doc->newDocument();
    doc->header().date = QStringLiteral("1404/02/20");
    EXPECT_FALSE(typeLeaf(QStringLiteral("100005"), QStringLiteral("12"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين چك در سريال ") + serial + QStringLiteral(" صادر شده است."));
    ASSERT_TRUE(doc->open(serial));
    EXPECT_EQ(doc->cheques().RecordCount(), 2);
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("ChqStateNam")).AsString(), ChequePaymentDocument::kIssue);
}

TEST_F(ChequePaymentDocumentTest, AReceivedChequeIsPassedOnAtItsAmountAndItsReceiptStaysWhole) {
    const QString receipt = receive(QStringLiteral("5101"), 1000000);
    ASSERT_TRUE(doc->spendCheque(QStringLiteral("5101"), QStringLiteral("ج"))) << lastMessage().toStdString();
    Query& g = doc->cheques();
    EXPECT_EQ(g.FieldByName(QStringLiteral("ChqStateNam")).AsString(), ChequePaymentDocument::kSpend);
    EXPECT_EQ(g.FieldByName(QStringLiteral("Koll")).AsString().trimmed(), QStringLiteral("103"));
    g.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("پرداخت به تامين کننده"));
    g.FieldByName(QStringLiteral("ChqValue")).SetValue(999999);
    EXPECT_FALSE(post());
    EXPECT_EQ(lastMessage(), QStringLiteral("مبلغ چك خرج شده بايد 1,000,000 باشد."));
    ASSERT_TRUE(doc->spendCheque(QStringLiteral("5101"), QStringLiteral("ج")));
    doc->cheques().FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("پرداخت به تامين کننده"));
    ASSERT_TRUE(post()) << lastMessage().toStdString();
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    // Off cheques in hand; its state row names no bank account.
    EXPECT_DOUBLE_EQ(amount("Select Sum(Bed) - Sum(Bes) From Asnad Where Koll = '103' And Moein = '0001' And AtfCh = '5101'"), 0);
    EXPECT_EQ(tr::db::firstColumn(company(), "Select CodWhatDoc From N_ChqLastTrans Where WhatDoc = '81'").toString(), QString());
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    // Its receipt, still the latest received-side row, cannot be deleted now.
    ReceivedChequeDocument received(session->services);
    ASSERT_TRUE(received.open(receipt));
    EXPECT_FALSE(received.remove());
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral("آخرين گردش چك شماره 5101 "))) << lastMessage().toStdString();
    // Nor spent twice.
    doc->newDocument();
    doc->header().date = QStringLiteral("1404/02/21");
    EXPECT_FALSE(doc->spendCheque(QStringLiteral("5101"), QStringLiteral("ج")));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين چك قبلا ثبت شده و گردش پيدا كرده است."));
}

TEST_F(ChequePaymentDocumentTest, ADeleteNamesALaterActionsSerialAndReleasesThePermit) {
    ASSERT_TRUE(typeLeaf(QStringLiteral("100020"), QStringLiteral("12"), 700000));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    const QString serial = doc->header().serial;
    company().execute(QStringLiteral("Insert Into N_MojavezTrans (Serial, SanadDate, ChqPaySerial) Values (41, "
                                     "'1404/02/15', ") + serial + QLatin1Char(')'));
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('82', '100020', '12', '1404/03/15', '1', 17)"));
    session->dialog.answer(tr::dialog::ResultYes);
    EXPECT_FALSE(doc->remove());
    EXPECT_TRUE(lastMessage().endsWith(QStringLiteral(" ميباشد.\nاين عمليات در سريال 17 انجام گرفته شده است.")))
        << lastMessage().toStdString();
    // The date of a document whose cheque moved stays.
    doc->header().date = QStringLiteral("1404/03/20");
    EXPECT_FALSE(doc->checkDate());
    EXPECT_EQ(lastMessage(), QStringLiteral("بعلت گردش چكها نميتوانيد تاريخ صدور چك را بزرگتر از تاريخ 1404/03/15 وارد كنيد."));
    doc->header().date = QStringLiteral("1404/02/21");
    EXPECT_FALSE(doc->checkDate());
    EXPECT_EQ(lastMessage(), QStringLiteral("بعلت گردش چك 100020 نميتوانيد تاريخ صدور را تغيير دهيد."));
    doc->header().date = QStringLiteral("1404/02/20");
    company().execute(QStringLiteral("Delete From N_ChqLastTrans Where WhatDoc = '82'"));
    session->dialog.answer(tr::dialog::ResultNo);
    EXPECT_FALSE(doc->remove());
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc = '81'"), 2);
    session->dialog.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(doc->remove()) << lastMessage().toStdString();
    EXPECT_EQ(count("Select ChqPaySerial From N_MojavezTrans Where Serial = 41"), 0);
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '81'"), 0);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ChequePaymentDocumentTest, AnOpeningPaymentPostsNoVoucherAndAUserWithoutTheRightIsTold) {
    ASSERT_TRUE(typeLeaf(QStringLiteral("100030"), QStringLiteral("12"), 300000));
    ASSERT_TRUE(doc->save(/*opening=*/true)) << lastMessage().toStdString();
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '81'"), 0);
    EXPECT_EQ(count("Select Count(*) From N_ChqFirst_Log Where WhatDoc = '81'"), 2);
    EXPECT_EQ(tr::db::firstColumn(company(), "Select TypeDoc From ASNADACTIONS").toString(),
              QStringLiteral("پرداخت چک - چک اول دوره"));
    start(QStringLiteral("N_A_CHQPAY__VIEW(Y)"));
    ASSERT_TRUE(typeLeaf(QStringLiteral("100031"), QStringLiteral("12"), 300000));
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("کاربر مجاز به ثبت پرداخت چك نميباشد"));
}

TEST_F(ChequePaymentDocumentTest, SaveAndWithdrawTakesOnlyOurLeavesDueOnTheDocumentsDate) {
    const auto due = [&](const QString& date) { doc->cheques().FieldByName(QStringLiteral("SarResidDate")).SetValue(date); };
    receive(QStringLiteral("5301"), 400000);
    doc->appendCheque();
    ASSERT_TRUE(doc->setBankAccount(1));
    doc->cheques().FieldByName(QStringLiteral("ChqNo")).SetValue(QStringLiteral("100040"));
    doc->cheques().FieldByName(QStringLiteral("Joz")).SetValue(QStringLiteral("12"));
    doc->cheques().FieldByName(QStringLiteral("ChqValue")).SetValue(600000);
    doc->cheques().FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("خريد"));
    due(QStringLiteral("1404/02/20"));  // the document's date
    ASSERT_TRUE(post()) << lastMessage().toStdString();
    ASSERT_TRUE(typeLeaf(QStringLiteral("100041"), QStringLiteral("12"), 700000));  // due later
    ASSERT_TRUE(doc->spendCheque(QStringLiteral("5301"), QStringLiteral("ج")));
    due(QStringLiteral("1404/02/20"));  // passed on, due that day too: not ours to withdraw
    doc->cheques().FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("پرداخت"));
    ASSERT_TRUE(post()) << lastMessage().toStdString();
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    ASSERT_TRUE(doc->withdrawDue()) << lastMessage().toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), "Select ChqNo From N_ChqLastTrans Where WhatDoc = '82'").toString().trimmed(),
              QStringLiteral("100040"));
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '82'"), 1);
    // Off the payable heads onto the bank's own.
    EXPECT_DOUBLE_EQ(amount("Select Sum(Bes) - Sum(Bed) From Asnad Where Koll = '201' And AtfCh = '100040'"), 0);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    // Once withdrawn, the payment cannot be deleted.
    session->dialog.answer(tr::dialog::ResultYes);
    EXPECT_FALSE(doc->remove());
}

TEST_F(ChequePaymentDocumentTest, TwoDesksIssuingOneLeafAtOnceOneSaveWins) {
    tr::test::TestSession other(company(), 2, QStringLiteral("sara"), tr::fullRights({QStringLiteral("N_A_CHQPAY_")}));
    other.global.sessionText = QStringLiteral("U2_");
    ChequePaymentDocument second(other.services);
    second.newDocument();
    second.header().date = QStringLiteral("1404/02/20");
    second.lowerAccount() = doc->lowerAccount();
    // Both desks type the leaf before either saves: both rows pass their checks.
    ASSERT_TRUE(typeLeaf(QStringLiteral("100045"), QStringLiteral("12"), 900000));
    second.appendCheque();
    ASSERT_TRUE(second.setBankAccount(1));
    for (const auto& [field, value] : {std::pair{"ChqNo", QVariant(QStringLiteral("100045"))},
                                       std::pair{"Joz", QVariant(QStringLiteral("12"))},
                                       std::pair{"ChqValue", QVariant(900000)},
                                       std::pair{"SarResidDate", QVariant(QStringLiteral("1404/03/15"))},
                                       std::pair{"Des", QVariant(QStringLiteral("خريد"))}})
        second.cheques().FieldByName(QString::fromLatin1(field)).SetValue(value);
    ASSERT_TRUE(second.postCheque()) << other.dialog.last().text.toStdString();
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    const qint64 lines = count("Select Count(*) From Asnad");
    EXPECT_FALSE(second.save());
    EXPECT_EQ(other.dialog.last().text, QStringLiteral("اين چك در سريال ") + doc->header().serial + QStringLiteral(" صادر شده است."));
    EXPECT_EQ(count("Select Count(*) From Asnad"), lines);
    EXPECT_EQ(second.mode(), DocumentMode::New);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
