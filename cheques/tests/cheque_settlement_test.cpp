// Received cheques paying sales invoices, driven as the document's screen and the settlement
// dialog drive the logic: the allocations confirmed in the dialog, written with the document's
// save, the invoices' open balances after every save and delete, and the refusals.
#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include "cheques/received_cheque_document.h"
#include "cheques/received_cheque_rows.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "db/schema/demo_company.h"
#include "settlement/in_factor_dialog.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::db::Query;
using tr::settlement::InFactorDialog;
namespace demo = tr::schema::demo;

// Demo invoices: 1002 (customer 30002) owes 10,000,000 of 12,000,000, 1001 (30001) 20,000,000,
// and 950 of the previous period (30002) 18,000,000.
constexpr double kOpen1002 = 10000000;
constexpr double kOpen950 = 18000000;

class ChequeSettlementTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        company().execute(QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1, MandehFactor = FactorValue - "
                                         "NaghdValue1"));
        start();
    }
    void TearDown() override {
        doc.reset();
        session.reset();
    }
    // A new received-cheque screen; its cheques come from `customer` (30002 unless told).
    void start(const QString& customer = QStringLiteral("30002")) {
        doc.reset();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        session->global.sCode = QString::fromUtf8(demo::kCompanyCode);
        session->global.sYear = QString::fromUtf8(demo::kCurrentYear);
        doc = std::make_unique<ReceivedChequeDocument>(session->services);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/04/01");
        doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0001"), customer, {}, {}};
    }
    bool typeCheque(const QString& number, double value) {
        return testing::typeReceivedCheque(doc->cheques(), {number, value});
    }
    // Puts the cheque grid on `number`.
    void onCheque(const QString& number) {
        Query& g = doc->cheques();
        for (g.First(); !g.Eof(); g.Next())
            if (g.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number) return;
        ADD_FAILURE() << "no cheque " << number.toStdString();
    }
    std::unique_ptr<tr::settlement::InvoicePayer> payerFor(const QString& number) {
        onCheque(number);
        return doc->settlement().payerForCurrentCheque();
    }
    // The dialog for `number`, its allocations typed invoice by invoice, then "تاييد".
    bool allocate(const QString& number, const std::vector<std::pair<QString, double>>& amounts) {
        const auto payer = payerFor(number);
        if (!payer) return false;
        InFactorDialog dialog(*payer);
        for (const auto& [invoice, amount] : amounts) {
            EXPECT_TRUE(dialog.moveTo(invoice)) << invoice.toStdString();
            if (!dialog.setAllocation(amount)) return false;
        }
        return dialog.cmdOkClick();
    }
    static double open(const QString& invoice) {
        return tr::db::firstColumn(company(), QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = ") +
                                                  tr::db::sqlText(invoice))
            .toDouble();
    }
    static double linked(const QString& invoice) {
        return tr::db::firstColumn(company(), QStringLiteral("Select IsNull(Sum(NaghdValue), 0) From R_ForoshRelatedNaghd "
                                                             "Where SanadNoForosh = ") +
                                                  tr::db::sqlText(invoice))
            .toDouble();
    }
    bool saved() {
        const bool ok = doc->save();
        EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
        return ok;
    }
    QString lastMessage() const { return session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeDocument> doc;
};

TEST_F(ChequeSettlementTest, AChequeSplitOverTwoInvoicesSavesWithTheDocumentAndIsReplacedOnTheNextChoice) {
    ASSERT_TRUE(typeCheque(QStringLiteral("7101"), 10000000));
    {
        const auto payer = payerFor(QStringLiteral("7101"));
        ASSERT_TRUE(payer);
        InFactorDialog dialog(*payer);
        EXPECT_EQ(dialog.amount(), 10000000);
        // The customer's invoices of both periods, each with what it still owes.
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("950"), QString::fromUtf8(demo::kPreviousYear)));
        EXPECT_DOUBLE_EQ(dialog.list().FieldByName(QStringLiteral("GetValue")).AsFloat(), kOpen950);
        EXPECT_EQ(dialog.list().FieldByName(QStringLiteral("ChqNo")).AsString().trimmed(), QStringLiteral("7101"));
        ASSERT_TRUE(dialog.setAllocation(6000000));
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
        EXPECT_DOUBLE_EQ(dialog.list().FieldByName(QStringLiteral("GetValue")).AsFloat(), kOpen1002);
        // One row may take the whole cheque; the sum is checked on confirming.
        EXPECT_FALSE(dialog.setAllocation(10000001));
        EXPECT_EQ(lastMessage(), QStringLiteral("مبلغ تخصيصي نبايد از مبلغ چک بيشتر باشد"));
        ASSERT_TRUE(dialog.setAllocation(4000001));
        EXPECT_FALSE(dialog.cmdOkClick());
        EXPECT_EQ(lastMessage(), QStringLiteral("مجموع مبالغ تخصيصي نمي تواند از مبلغ چک بيشتر باشد"));
        EXPECT_FALSE(doc->settlement().hasPending());
        ASSERT_TRUE(dialog.setAllocation(4000000));
        ASSERT_TRUE(dialog.cmdOkClick());
    }
    // Nothing is written before the document's save.
    EXPECT_EQ(linked(QStringLiteral("1002")), 0);
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(linked(QStringLiteral("950")), 6000000);
    EXPECT_EQ(linked(QStringLiteral("1002")), 4000000);
    EXPECT_EQ(open(QStringLiteral("950")), kOpen950 - 6000000);
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 4000000);
    // Each link names the cheque and its treasury row.
    const Query link = tr::db::openQuery(
        company(), QStringLiteral("Select L.AtfCh, L.DocToDate, L.Idx, N.CodWhatDoc From R_ForoshRelatedNaghd As L Left Join "
                                  "N_NaghdTrans As N On N.IDX = L.Idx Where L.SanadNoForosh = '1002'"));
    EXPECT_EQ(link.value(0, 0).toString().trimmed(), QStringLiteral("7101"));
    EXPECT_EQ(link.value(0, 1).toString().trimmed(), QStringLiteral("ج"));
    EXPECT_EQ(link.value(0, 3).toString().trimmed(), QStringLiteral("7101"));

    // Re-opened, the dialog shows the choice ticked; a new one replaces it, and a plain save of
    // the edited document keeps it.
    const QString serial = doc->header().serial;
    start();
    ASSERT_TRUE(doc->open(serial));
    {
        const auto payer = payerFor(QStringLiteral("7101"));
        ASSERT_TRUE(payer);
        InFactorDialog dialog(*payer);
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
        EXPECT_EQ(dialog.list().FieldByName(QStringLiteral("sSelect")).AsString(), QStringLiteral("P"));
        EXPECT_EQ(dialog.list().FieldByName(QStringLiteral("NaghdValue")).AsFloat(), 4000000);
        EXPECT_DOUBLE_EQ(dialog.list().FieldByName(QStringLiteral("GetValue")).AsFloat(), kOpen1002);
        EXPECT_EQ(dialog.allocated(), 10000000);
        ASSERT_TRUE(dialog.setAllocation(3000000));
        ASSERT_TRUE(dialog.cmdOkClick());
    }
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(linked(QStringLiteral("1002")), 3000000);
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 3000000);
    ASSERT_TRUE(saved());
    EXPECT_EQ(linked(QStringLiteral("950")), 6000000);
    EXPECT_EQ(open(QStringLiteral("950")), kOpen950 - 6000000);

    // "وجوه پرداختي" lists the invoice's payments.
    {
        const auto payer = payerFor(QStringLiteral("7101"));
        InFactorDialog dialog(*payer);
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
        dialog.showPayments();
        EXPECT_EQ(session->pickList.last().title, QStringLiteral("وجوه پرداختي صورتحساب شماره : 1002"));
        EXPECT_EQ(session->pickList.lastColumn(QStringLiteral("AtfCh")), QStringList{QStringLiteral("7101")});
    }
}

// The menu item on the first row, still being typed (the grid holds no posted row): the row is
// posted and checked first; a row its checks refuse opens nothing and says why.
TEST_F(ChequeSettlementTest, TheRowBeingTypedIsPostedBeforeItIsAllocated) {
    doc->appendCheque();
    testing::typeReceivedFields(doc->cheques(), {QStringLiteral("9301"), 10000000});
    ASSERT_TRUE(doc->cheques().IsEmpty() || doc->cheques().state() != Query::State::Browse);
    const auto payer = doc->settlement().payerForCurrentCheque();
    ASSERT_TRUE(payer) << (session->dialog.shown().isEmpty() ? std::string() : lastMessage().toStdString());
    EXPECT_EQ(doc->cheques().state(), Query::State::Browse);
    EXPECT_EQ(doc->cheques().RecordCount(), 1);

    doc->appendCheque();
    doc->cheques().FieldByName(QStringLiteral("ChqValue")).SetValue(5000000.0);
    const int shown = session->dialog.shown().size();
    EXPECT_FALSE(doc->settlement().payerForCurrentCheque());
    EXPECT_GT(session->dialog.shown().size(), shown);
}

TEST_F(ChequeSettlementTest, GuaranteeAndReturnedChequesCannotPayAndAnAllocatedChequeStaysOrdinary) {
    Query& g = doc->cheques();
    g.Append();
    testing::typeReceivedFields(g, {QStringLiteral("7201"), 5000000});
    g.FieldByName(QStringLiteral("Tazmin")).SetValue(QStringLiteral("ض"));
    g.Post();
    ASSERT_EQ(g.state(), Query::State::Browse);
    EXPECT_FALSE(payerFor(QStringLiteral("7201")));
    EXPECT_EQ(lastMessage(), QStringLiteral("امکان تخصيص چک هاي تضميني به صورتحساب وجود ندارد"));
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1ER"));

    ASSERT_TRUE(typeCheque(QStringLiteral("7202"), 5000000));
    ASSERT_TRUE(allocate(QStringLiteral("7202"), {{QStringLiteral("1002"), 3000000}}));
    // The waiting allocation already binds the cheque.
    onCheque(QStringLiteral("7202"));
    g.Edit();
    g.FieldByName(QStringLiteral("Tazmin")).SetValue(QStringLiteral("ض"));
    g.Post();
    EXPECT_NE(g.state(), Query::State::Browse);
    EXPECT_EQ(lastMessage(), QStringLiteral("چک به صورتحساب اختصاص داده شده و نميتوان آن را تبديل به چک تضميني کرد"));
    g.FieldByName(QStringLiteral("Tazmin")).SetValue(QString());
    g.FieldByName(QStringLiteral("ChqValue")).SetValue(2999999);
    g.Post();
    EXPECT_NE(g.state(), Query::State::Browse);
    EXPECT_EQ(lastMessage(),
              QStringLiteral("مبلغ چک نميتواند کوچکتر از مجموع مبالغ اختصاص داده شده به صورتحساب ها ( 3,000,000) باشد "));
    g.Cancel();
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 3000000);

    // A cheque gone back to its drawer pays nothing.
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                     "Values ('78', '7202', 'ج', '1404/04/05', '', 0)"));
    EXPECT_FALSE(payerFor(QStringLiteral("7202")));
    EXPECT_EQ(lastMessage(), QStringLiteral("امکان تخصيص چک هاي برگشتي به صورتحساب وجود ندارد"));
}

TEST_F(ChequeSettlementTest, TwoChequesNeverPayOneInvoiceTwice) {
    ASSERT_TRUE(typeCheque(QStringLiteral("7301"), 8000000));
    ASSERT_TRUE(typeCheque(QStringLiteral("7302"), 8000000));
    ASSERT_TRUE(allocate(QStringLiteral("7301"), {{QStringLiteral("1002"), 8000000}}));
    {
        // The first cheque's choice, still waiting, leaves the second what is left.
        const auto payer = payerFor(QStringLiteral("7302"));
        InFactorDialog dialog(*payer);
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
        EXPECT_DOUBLE_EQ(dialog.list().FieldByName(QStringLiteral("GetValue")).AsFloat(), kOpen1002 - 8000000);
        EXPECT_FALSE(dialog.setAllocation(2000001));
        EXPECT_EQ(lastMessage(), QStringLiteral("مبلغ تخصيصي نبايد از مبلغ مانده صورتحساب بيشتر باشد"));
        // Chosen with nothing typed, the invoice waits for its amount.
        ASSERT_TRUE(dialog.toggleSelect());
        EXPECT_EQ(dialog.list().FieldByName(QStringLiteral("NaghdValue")).AsFloat(), 2000000);
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("950")));
        ASSERT_TRUE(dialog.setAllocation(6000000));
        ASSERT_TRUE(dialog.cmdOkClick());
    }
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(linked(QStringLiteral("1002")), kOpen1002);
    EXPECT_EQ(open(QStringLiteral("1002")), 0);
    // A later document's cheque finds the invoice paid, and the earlier period's balance less
    // what the second cheque gave it.
    start();
    ASSERT_TRUE(typeCheque(QStringLiteral("7303"), 1000000));
    const auto payer = payerFor(QStringLiteral("7303"));
    InFactorDialog dialog(*payer);
    EXPECT_FALSE(dialog.moveTo(QStringLiteral("1002")));
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("950")));
    EXPECT_DOUBLE_EQ(dialog.list().FieldByName(QStringLiteral("GetValue")).AsFloat(), kOpen950 - 6000000);
}

TEST_F(ChequeSettlementTest, TheFilterTakesTheChosenInvoicesCustomerAndAChosenInvoiceNeedsAnAmount) {
    ASSERT_TRUE(typeCheque(QStringLiteral("7401"), kOpen1002 + kOpen950));
    const auto payer = payerFor(QStringLiteral("7401"));
    InFactorDialog dialog(*payer);
    EXPECT_FALSE(dialog.customerFilter());
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("1001")));
    ASSERT_TRUE(dialog.setAllocation(1000000));
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
    ASSERT_TRUE(dialog.setAllocation(1000000));
    EXPECT_FALSE(dialog.setCustomerFilter(true));
    EXPECT_EQ(lastMessage(),
              QStringLiteral("صورتحساب هاي انتخاب شده متعلق به بيش از يک مشتري است لذا پالايش ممکن نيست"));
    EXPECT_FALSE(dialog.customerFilter());
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("1001")));
    ASSERT_TRUE(dialog.setAllocation(0));
    ASSERT_TRUE(dialog.setCustomerFilter(true));
    QStringList shown;
    for (dialog.list().First(); !dialog.list().Eof(); dialog.list().Next())
        shown << dialog.list().FieldByName(QStringLiteral("SanadNoForosh")).AsString().trimmed();
    EXPECT_EQ(shown, (QStringList{QStringLiteral("950"), QStringLiteral("1002")}));

    // The whole cheque given, a further invoice is chosen with nothing and must get an amount.
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
    ASSERT_TRUE(dialog.setAllocation(kOpen1002));
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("950")));
    ASSERT_TRUE(dialog.setAllocation(kOpen950));
    ASSERT_TRUE(dialog.setCustomerFilter(false));
    ASSERT_TRUE(dialog.moveTo(QStringLiteral("1001")));
    ASSERT_TRUE(dialog.toggleSelect());  // chosen with what is left: nothing
    EXPECT_EQ(dialog.list().FieldByName(QStringLiteral("NaghdValue")).AsFloat(), 0);
    EXPECT_EQ(dialog.list().FieldByName(QStringLiteral("sSelect")).AsString(), QStringLiteral("P"));
    EXPECT_FALSE(dialog.cmdOkClick());
    EXPECT_EQ(lastMessage(), QStringLiteral("براي صورتحساب هاي انتخاب شده مبلغ تخصيصي را وارد کنيد"));
}

TEST_F(ChequeSettlementTest, DeletingTheChequeOrTheDocumentGivesTheInvoicesTheirBalanceBack) {
    ASSERT_TRUE(typeCheque(QStringLiteral("7501"), 4000000));
    ASSERT_TRUE(typeCheque(QStringLiteral("7502"), 5000000));
    ASSERT_TRUE(allocate(QStringLiteral("7501"), {{QStringLiteral("1002"), 4000000}}));
    ASSERT_TRUE(allocate(QStringLiteral("7502"), {{QStringLiteral("950"), 5000000}}));
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 4000000);

    // The cheque row goes after its own question; its invoice owes again once the document is saved.
    onCheque(QStringLiteral("7501"));
    session->dialog.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(deleteChequeRow(*doc));
    EXPECT_EQ(session->dialog.last().text, kLinkedChequeDeleteQuestion);
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 4000000);
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002);
    EXPECT_EQ(linked(QStringLiteral("1002")), 0);
    EXPECT_EQ(open(QStringLiteral("950")), kOpen950 - 5000000);

    session->dialog.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(doc->remove()) << lastMessage().toStdString();
    EXPECT_EQ(open(QStringLiteral("950")), kOpen950);
    EXPECT_EQ(linked(QStringLiteral("950")), 0);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ChequeSettlementTest, ChoicesWaitingForASaveAreForgottenWithTheDocumentOnTheScreen) {
    ASSERT_TRUE(typeCheque(QStringLiteral("7701"), 2000000));
    ASSERT_TRUE(allocate(QStringLiteral("7701"), {{QStringLiteral("1002"), 2000000}}));
    ASSERT_TRUE(doc->settlement().hasPending());
    doc->cancelEdits();  // "انصراف" on a document never saved: a new one
    EXPECT_FALSE(doc->settlement().hasPending());
    ASSERT_TRUE(typeCheque(QStringLiteral("7701"), 2000000));
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(linked(QStringLiteral("1002")), 0);

    // Opening another document forgets them too.
    ASSERT_TRUE(allocate(QStringLiteral("7701"), {{QStringLiteral("1002"), 1000000}}));
    const QString serial = doc->header().serial;
    doc->newDocument();
    EXPECT_FALSE(doc->settlement().hasPending());
    ASSERT_TRUE(doc->open(serial));
    ASSERT_TRUE(saved());
    EXPECT_EQ(linked(QStringLiteral("1002")), 0);
}

TEST_F(ChequeSettlementTest, AScreenOpenedForAnInvoiceTiesItsChequesToIt) {
    doc->setInvoiceNumber(QStringLiteral("1002"));
    EXPECT_EQ(doc->mode(), DocumentMode::New);
    doc->header().date = QStringLiteral("1404/04/01");
    ASSERT_TRUE(typeCheque(QStringLiteral("7601"), 3000000));
    ASSERT_TRUE(typeCheque(QStringLiteral("7602"), 2000000));
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(linked(QStringLiteral("1002")), 5000000);
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 5000000);
    const QString serial = doc->header().serial;

    // Opened again for the invoice, the screen shows that document; one cheque less is saved as
    // one link less.
    start();
    doc->setInvoiceNumber(QStringLiteral("1002"));
    ASSERT_EQ(doc->mode(), DocumentMode::Edit);
    EXPECT_EQ(doc->header().serial, serial);
    EXPECT_EQ(doc->invoiceNote(), QStringLiteral("1002"));
    onCheque(QStringLiteral("7602"));
    session->dialog.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(deleteChequeRow(*doc));
    ASSERT_TRUE(saved()) << lastMessage().toStdString();
    EXPECT_EQ(linked(QStringLiteral("1002")), 3000000);
    EXPECT_EQ(open(QStringLiteral("1002")), kOpen1002 - 3000000);
}

}  // namespace
}  // namespace tr::cheques
