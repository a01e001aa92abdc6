// The received-cheque document's rules beyond the plain save: currency cheques and the three
// currency refusals, the issue date (its period, and frozen once a cheque moved), cheques
// assigned to sales invoices, the invoice the screen is opened for, the user's rights and the
// voucher kept aside before an edit. Driven as the screen drives the logic.
#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include "cheques/received_cheque_document.h"
#include "common/db/query_helpers.h"
#include "currency/counter_currency_grid.h"
#include "currency/rates.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::db::Query;

// Stands in for the counter-account currency window: answers what the test tells it.
class ScriptedCurrencies : public tr::currency::CounterCurrencyPrompt {
  public:
    std::optional<QList<tr::currency::CounterCurrency>> answer;
    QString askedBase, askedTable;
    std::optional<QList<tr::currency::CounterCurrency>> askCounterCurrencies(const QString& base,
                                                                             const QString& table) override {
        askedBase = base;
        askedTable = table;
        return answer;
    }
};

class ReceivedChequeRulesTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        start(tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
    }
    void TearDown() override {
        doc.reset();
        session.reset();
    }
    void start(const QString& rights) {
        doc.reset();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"), rights);
        doc = std::make_unique<ReceivedChequeDocument>(session->services);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/10");
        doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    }
    // A cheque typed as the grid does it; `currency` chosen from the list before the count.
    bool typeCheque(const QString& number, double value, const QString& currency = {}, double count = 0) {
        Query& g = doc->cheques();
        g.Append();
        testing::typeReceivedFields(g, {number, value});
        if (!currency.isEmpty()) {
            EXPECT_TRUE(doc->setChequeCurrency({currency, currency == QLatin1String("01") ? QStringLiteral("دلار آمريکا")
                                                                                          : QStringLiteral("يورو")}));
            g.FieldByName(QStringLiteral("ArzCount")).SetValue(count);
        }
        g.Post();
        const bool posted = g.state() == Query::State::Browse;
        if (!posted) g.Cancel();
        return posted;
    }
    // Moves to the counterparty line of `number` and edits `field`; answers whether it posted.
    bool editLine(const QString& number, const QString& field, const QVariant& value) {
        Query& t = doc->counterparties();
        for (t.First(); !t.Eof(); t.Next())
            if (t.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number) break;
        t.Edit();
        t.FieldByName(field).SetValue(value);
        t.Post();
        const bool posted = t.state() == Query::State::Browse;
        if (!posted) t.Cancel();
        return posted;
    }
    static qint64 count(const QString& sql) { return tr::db::firstColumn(company(), sql).toLongLong(); }
    const QString& lastMessage() { return session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeDocument> doc;
};

TEST_F(ReceivedChequeRulesTest, ACurrencyDocumentIsValuedAtTheBuyingRateAndRoundTrips) {
    // Two dollars at the latest buying rate (850,000 at 14:30 of 1404/02/20), in rials.
    ASSERT_TRUE(typeCheque(QStringLiteral("6001"), 0, QStringLiteral("01"), 2)) << lastMessage().toStdString();
    EXPECT_DOUBLE_EQ(doc->cheques().FieldByName(QStringLiteral("Nerkh")).AsFloat(), 850000);
    EXPECT_DOUBLE_EQ(doc->cheques().FieldByName(QStringLiteral("ChqValue")).AsFloat(), 1700000);
    // Its counterparty line carries the currency with the amount.
    Query& t = doc->counterparties();
    ASSERT_EQ(t.RecordCount(), 1);
    EXPECT_EQ(t.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed(), QStringLiteral("01"));
    EXPECT_DOUBLE_EQ(t.FieldByName(QStringLiteral("ArzCount")).AsFloat(), 2);
    EXPECT_TRUE(doc->currencyDocument());
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ArzTrans Where ArzCod = '01'")), 2);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    const QString serial = doc->header().serial;
    doc->newDocument();
    ASSERT_TRUE(doc->open(serial));
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("ArzCod")).AsString().trimmed(), QStringLiteral("01"));
    EXPECT_DOUBLE_EQ(doc->cheques().FieldByName(QStringLiteral("ArzCount")).AsFloat(), 2);
    EXPECT_DOUBLE_EQ(doc->cheques().FieldByName(QStringLiteral("ChqValue")).AsFloat(), 1700000);
    EXPECT_EQ(doc->counterparties().FieldByName(QStringLiteral("ArzCod")).AsString().trimmed(), QStringLiteral("01"));
    // Saved again unchanged, as an edit through the twin: the same voucher figures.
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ArzTrans Where ArzCod = '01'")), 2);
    EXPECT_EQ(count(QStringLiteral("Select Sum(Bed) From Asnad Where WhatDoc = '71'")), 1700000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedChequeRulesTest, CounterpartyLinesRefuseForeignChequesCurrenciesAndAccounts) {
    doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0001"), QStringLiteral("30001"),
                           QStringLiteral("51001"), QStringLiteral("P0001")};
    ASSERT_TRUE(typeCheque(QStringLiteral("6101"), 0, QStringLiteral("01"), 1));
    ASSERT_TRUE(typeCheque(QStringLiteral("6102"), 0, QStringLiteral("02"), 1));
    const QString before = snapshot({doc->counterpartyTable()});
    EXPECT_FALSE(editLine(QStringLiteral("6101"), QStringLiteral("ChqNo"), QStringLiteral("6199")));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك در ليست چك ها وجود ندارد !"));
    EXPECT_FALSE(editLine(QStringLiteral("6101"), QStringLiteral("ArzCod"), QStringLiteral("03")));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين نوع ارز در چك ها وجود ندارد !"));
    // The dollar cash box's account, for the euro cheque.
    Query& t = doc->counterparties();
    t.Last();
    t.Edit();
    t.FieldByName(QStringLiteral("Koll")).SetValue(QStringLiteral("101"));
    t.FieldByName(QStringLiteral("Moein")).SetValue(QStringLiteral("0002"));
    t.FieldByName(QStringLiteral("Tafsily")).SetValue(QStringLiteral("11001"));
    t.FieldByName(QStringLiteral("Tafsily2")).SetValue(QString());
    t.FieldByName(QStringLiteral("ProjectCod")).SetValue(QString());
    t.Post();
    EXPECT_NE(t.state(), Query::State::Browse);
    EXPECT_EQ(lastMessage(), QStringLiteral("نوع ارز اين سرفصل با چك انتخاب شده يكسان نيست !"));
    t.Cancel();
    EXPECT_EQ(snapshot({doc->counterpartyTable()}), before);
    // The window's answer: one dollar and 1,000 euros on the euro cheque's line.
    ScriptedCurrencies window;
    window.answer = QList<tr::currency::CounterCurrency>{{QStringLiteral("02"), QStringLiteral("يورو"), 1, 930000}};
    t.Last();
    ASSERT_TRUE(doc->askCounterpartyCurrencies(window)) << lastMessage().toStdString();
    EXPECT_EQ(window.askedTable, doc->chequeTable());
    EXPECT_EQ(t.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed(), QStringLiteral("02"));
    EXPECT_DOUBLE_EQ(t.FieldByName(QStringLiteral("ChqValue")).AsFloat(), 930000);
    window.answer.reset();  // cancelled: the line stays
    EXPECT_FALSE(doc->askCounterpartyCurrencies(window));
    EXPECT_DOUBLE_EQ(t.FieldByName(QStringLiteral("ChqValue")).AsFloat(), 930000);
}

TEST_F(ReceivedChequeRulesTest, TheIssueDateStaysInThePeriodAndFreezesOnceAChequeMoved) {
    ASSERT_TRUE(typeCheque(QStringLiteral("6201"), 1000));
    doc->header().date = QStringLiteral("1405/01/05");
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ از تاريخ انتهايي دوره مالي بزرگتر است !")) << lastMessage().toStdString();
    doc->header().date = QStringLiteral("1404/01/01");
    EXPECT_TRUE(doc->checkDate());
    doc->header().date = QStringLiteral("1403/12/29");
    EXPECT_FALSE(doc->checkDate());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ از تاريخ ابتدايي دوره مالي كوچكتر است !"));
    doc->header().date = QStringLiteral("1404/02/32");
    EXPECT_FALSE(doc->checkDate());
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ وارد شده اشکال دارد."));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 0);
    doc->header().date = QStringLiteral("1404/02/10");
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    // A new date is fine while the cheque is in hand...
    doc->header().date = QStringLiteral("1404/02/11");
    EXPECT_TRUE(doc->checkDate()) << lastMessage().toStdString();
    // ...and refused once it went to collection.
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) Values "
                                     "('72', '6201', 'ج', '1404/03/01', '', 0)"));
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("بعلت گردش چك 6201 نميتوانيد تاريخ صدور آنرا تغيير دهيد."));
    doc->header().date = QStringLiteral("1404/02/10");
    EXPECT_TRUE(doc->checkDate());
}

TEST_F(ReceivedChequeRulesTest, AChequeAssignedToInvoicesStaysOrdinaryAndCoversItsAssignments) {
    ASSERT_TRUE(typeCheque(QStringLiteral("6301"), 1000000));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    const QString serial = doc->header().serial;
    company().execute(QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, "
                                     "SanadNoForosh, TypeAction, NaghdValue, DorehMali) Values (0, '71', ") +
                      serial + QStringLiteral(", '6301', 'ج', 'F-17', '1', 600000, '1404')"));
    Query& g = doc->cheques();
    g.Edit();
    g.FieldByName(QStringLiteral("Tazmin")).SetValue(QStringLiteral("ض"));
    g.Post();
    EXPECT_NE(g.state(), Query::State::Browse);
    EXPECT_EQ(lastMessage(), QStringLiteral("چک به صورتحساب اختصاص داده شده و نميتوان آن را تبديل به چک تضميني کرد"));
    EXPECT_EQ(session->dialog.last().caption.trimmed(), QStringLiteral("خطا..."));
    g.FieldByName(QStringLiteral("Tazmin")).SetValue(QString());
    g.FieldByName(QStringLiteral("ChqValue")).SetValue(500000);
    g.Post();
    EXPECT_EQ(lastMessage(),
              QStringLiteral("مبلغ چک نميتواند کوچکتر از مجموع مبالغ اختصاص داده شده به صورتحساب ها ( 600,000) باشد "));
    g.FieldByName(QStringLiteral("ChqValue")).SetValue(600000);
    g.Post();
    EXPECT_EQ(g.state(), Query::State::Browse) << lastMessage().toStdString();

    // A screen opened for the invoice finds the document; a second invoice makes it a note.
    start(tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
    doc->setInvoiceNumber(QStringLiteral("F-17"));
    EXPECT_EQ(doc->mode(), DocumentMode::Edit);
    EXPECT_EQ(doc->header().serial, serial);
    EXPECT_EQ(doc->invoiceNote(), QStringLiteral("F-17"));
    company().execute(QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, "
                                     "SanadNoForosh, TypeAction, NaghdValue, DorehMali) Values (0, '71', ") +
                      serial + QStringLiteral(", '6301', 'ج', 'F-18', '1', 100000, '1404')"));
    ASSERT_TRUE(doc->open(serial));
    EXPECT_EQ(doc->invoiceNote(), ReceivedChequeDocument::kMultiInvoiceNote);
    doc->setInvoiceNumber(QStringLiteral("F-99"));
    EXPECT_EQ(doc->mode(), DocumentMode::New);

    // Deleting the document asks first; on yes its invoices owe again what its cheque paid.
    company().execute(QStringLiteral("Insert Into R_OldFactor (SanadNoForosh, MainDorehMali, DorehMali, FactorValue, "
                                     "NaghdValue, MandehFactor) Values ('F-17', '1404', '1404', 1000000, 600000, 400000)"));
    ASSERT_TRUE(doc->open(serial));
    const QString before = snapshot({QStringLiteral("R_ForoshRelatedNaghd"), QStringLiteral("R_OldFactor"),
                                     QStringLiteral("N_NaghdTrans")});
    session->dialog.answer(tr::dialog::ResultNo);
    EXPECT_FALSE(doc->remove());
    EXPECT_EQ(snapshot({QStringLiteral("R_ForoshRelatedNaghd"), QStringLiteral("R_OldFactor"),
                        QStringLiteral("N_NaghdTrans")}),
              before);
    session->dialog.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(doc->remove()) << lastMessage().toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From R_ForoshRelatedNaghd")), 0);
    EXPECT_EQ(count(QStringLiteral("Select NaghdValue From R_OldFactor Where SanadNoForosh = 'F-17'")), 0);
    EXPECT_EQ(count(QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = 'F-17'")), 1000000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedChequeRulesTest, CommandsFollowTheUsersRightsAndAnEditKeepsTheOldVoucherAside) {
    // Record only: no opening cheques, no edit, no delete.
    start(QStringLiteral("N_A_CHQGET__SABT(Y)"));
    ASSERT_TRUE(typeCheque(QStringLiteral("6401"), 1000));
    EXPECT_FALSE(doc->canSave(/*opening=*/true));
    EXPECT_FALSE(doc->save(/*opening=*/true));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqFirst")), 0);
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_FALSE(doc->canSave());
    EXPECT_FALSE(doc->remove());
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 2);

    start(tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
    const QString serial = tr::db::firstColumn(company(), QStringLiteral("Select Max(Serial) From N_NaghdTrans")).toString();
    ASSERT_TRUE(doc->open(serial));
    doc->cheques().Edit();
    doc->cheques().FieldByName(QStringLiteral("ChqValue")).SetValue(2500);
    ASSERT_TRUE(doc->postCheque());
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    // The history table holds the voucher as it was before the edit.
    const QString history = QStringLiteral("##") + doc->prefix() + QStringLiteral("History");
    EXPECT_EQ(count(QStringLiteral("Select Sum(Bed) From ") + history), 1000);
    EXPECT_EQ(count(QStringLiteral("Select Sum(Bed) From Asnad Where WhatDoc = '71'")), 2500);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
