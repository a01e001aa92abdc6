// The received-cheque document's writes with a failing connection: for a new save, an opening
// save, an edit and a delete, the commit and then the 1st, 2nd, ... statement the screen sends
// fail in turn until the action runs through. After every failure the book, the screen's work
// tables and its grids are as they were before the action; the round without a failure is the
// retry from what the failures left, and it leaves the ledger whole.
#include <gtest/gtest.h>

#include <functional>

#include "cheques/cheque_payment_document.h"
#include "cheques/received_cheque_document.h"
#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "settlement/in_factor_dialog.h"
#include "cheques/tests/fault_rounds.h"
#include "tests/support/failing_connection.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::test::FailingConnection;

const QStringList kBook = {"N_NaghdTrans", "Asnad",  "N_ChqLastTrans", "N_ArzTrans",        "ASNADACTIONS",
                           "N_ChqFirst",   "N_ChqFirst_Log", "R_ForoshRelatedNaghd", "R_OldFactor"};

class ReceivedChequeFaultsTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        failing = std::make_unique<FailingConnection>(company());
        session = std::make_unique<tr::test::TestSession>(*failing, 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        doc = std::make_unique<ReceivedChequeDocument>(session->services);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/10");
        doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
        typeCheque(QStringLiteral("8001"), 1500000);
        typeCheque(QStringLiteral("8002"), 700000);
    }
    void TearDown() override {
        failing->disarm();
        doc.reset();
        session.reset();
        failing.reset();
    }
    void typeCheque(const QString& number, double value) {
        tr::db::Query& g = doc->cheques();
        g.Append();
        g.FieldByName(QStringLiteral("Koll")).SetValue(QStringLiteral("103"));
        g.FieldByName(QStringLiteral("Moein")).SetValue(QStringLiteral("0001"));
        g.FieldByName(QStringLiteral("ChqNo")).SetValue(number);
        g.FieldByName(QStringLiteral("Joz")).SetValue(QStringLiteral("ف"));
        g.FieldByName(QStringLiteral("ChqValue")).SetValue(value);
        g.FieldByName(QStringLiteral("SarResidDate")).SetValue(QStringLiteral("1404/06/01"));
        g.Post();
        ASSERT_EQ(g.state(), tr::db::Query::State::Browse) << session->dialog.last().text.toStdString();
    }
    // The book, the work tables and what the grids show.
    QString image() {
        QString out = snapshot(kBook) + snapshot({doc->chequeTable(), doc->counterpartyTable()});
        for (tr::db::Query* grid : {&doc->cheques(), &doc->counterparties()}) {
            for (int r = 0; r < grid->RecordCount(); ++r)
                for (int c = 0; c < grid->fieldNames().size(); ++c) out += grid->value(r, c).toString() + QLatin1Char('|');
            out += QLatin1Char('\n');
        }
        return out + doc->header().serial + QLatin1Char('|') + doc->header().voucherNo + QLatin1Char('|') +
               QString::number(int(doc->mode()));
    }
    // The action's commit and then each of its statements fail in turn, until it runs through.
    void failInTurn(const std::function<bool()>& action) {
        EXPECT_GT(testing::failInTurn(*failing, action, [this] { return image(); },
                                      [this] { return session->dialog.last().text; }),
                  2);
        EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    }

    std::unique_ptr<FailingConnection> failing;
    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ChequeDocument> doc;
};

TEST_F(ReceivedChequeFaultsTest, ANewSaveIsWholeOrAbsent) {
    failInTurn([&] { return doc->save(); });
    EXPECT_EQ(doc->mode(), DocumentMode::Edit);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans")).toInt(), 2);
}

TEST_F(ReceivedChequeFaultsTest, ASaveOfChequesPayingInvoicesIsWholeOrAbsent) {
    session->global.sCode = QStringLiteral("1");
    session->global.sYear = QStringLiteral("1404");
    company().execute(QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1, MandehFactor = FactorValue - NaghdValue1"));
    auto& received = static_cast<ReceivedChequeDocument&>(*doc);
    doc->cheques().First();
    const auto payer = received.settlement().payerForCurrentCheque();
    ASSERT_TRUE(payer);
    {
        tr::settlement::InFactorDialog dialog(*payer);
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
        ASSERT_TRUE(dialog.setAllocation(1500000));
        ASSERT_TRUE(dialog.cmdOkClick());
    }
    // The waiting choice outlives every failed save and is written by the one that succeeds.
    failInTurn([&] { return doc->save(); });
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Sum(NaghdValue) From R_ForoshRelatedNaghd")).toDouble(),
              1500000);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = '1002'"))
                  .toDouble(),
              8500000);
    EXPECT_FALSE(received.settlement().hasPending());
}

TEST_F(ReceivedChequeFaultsTest, AnOpeningSaveIsWholeOrAbsent) {
    failInTurn([&] { return doc->save(/*opening=*/true); });
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqFirst_Log")).toInt(), 4);
}

TEST_F(ReceivedChequeFaultsTest, AnEditAndADeleteAreWholeOrAbsent) {
    ASSERT_TRUE(doc->save()) << session->dialog.last().text.toStdString();
    doc->cheques().First();
    doc->cheques().Edit();
    doc->cheques().FieldByName(QStringLiteral("ChqValue")).SetValue(1600000);
    ASSERT_TRUE(doc->postCheque());
    failInTurn([&] { return doc->save(); });
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Sum(Bed) From Asnad Where WhatDoc = '71'")).toDouble(),
              2300000);
    failInTurn([&] { return doc->remove(); });
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_NaghdTrans")).toInt(), 0);
}

TEST_F(ReceivedChequeFaultsTest, APaymentsSaveAndDeleteAreWholeOrAbsent) {
    doc.reset();  // the received document goes with the session it was made on
    session = std::make_unique<tr::test::TestSession>(*failing, 1, QStringLiteral("admin"),
                                                      tr::fullRights({QStringLiteral("N_A_CHQPAY_")}));
    auto payment = std::make_unique<ChequePaymentDocument>(session->services);
    payment->newDocument();
    payment->header().date = QStringLiteral("1404/02/20");
    payment->lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("20001"), {}, {}};
    for (const char* leaf : {"100048", "100049"}) {
        payment->appendCheque();
        ASSERT_TRUE(payment->setBankAccount(1));
        tr::db::Query& g = payment->cheques();
        g.FieldByName(QStringLiteral("ChqNo")).SetValue(QString::fromLatin1(leaf));
        g.FieldByName(QStringLiteral("Joz")).SetValue(QStringLiteral("12"));
        g.FieldByName(QStringLiteral("ChqValue")).SetValue(400000.0);
        g.FieldByName(QStringLiteral("SarResidDate")).SetValue(QStringLiteral("1404/03/01"));
        g.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("خريد"));
        ASSERT_TRUE(payment->postCheque()) << session->dialog.last().text.toStdString();
    }
    doc = std::move(payment);
    failInTurn([&] { return doc->save(); });
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81'")).toInt(), 2);
    failInTurn([&] {
        // Each attempt is confirmed; an attempt that fails before asking leaves no answer behind.
        session->dialog.clearAnswers();
        session->dialog.answerYes();
        return doc->remove();
    });
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_NaghdTrans")).toInt(), 0);
}

}  // namespace
}  // namespace tr::cheques
