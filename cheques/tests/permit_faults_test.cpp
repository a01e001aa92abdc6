// A permit's save, edit and delete with a failing connection: the 1st, 2nd, ... statement the
// screen sends fails in turn until the action runs through. After every failure the permit
// tables, the log, the screen's work tables and what it shows are as they were before.
#include <gtest/gtest.h>

#include <functional>

#include "cheques/permit_components.h"
#include "cheques/tests/permit_fixture.h"
#include "common/db/database_error.h"
#include "cheques/tests/fault_rounds.h"
#include "tests/support/failing_connection.h"

namespace tr::cheques {
namespace {

using tr::test::FailingConnection;

// The first line of `after` that `before` does not have, and the reverse.
const QStringList kPermitBook = {"N_MojavezTrans", "N_MOJAVEZCHQ", "N_MojavezFact", "ASNADACTIONS"};

class PermitFaultsTest : public testing::PermitTest {
  protected:
    void SetUp() override {
        PermitTest::SetUp();
        failing = std::make_unique<FailingConnection>(company());
        desk = std::make_unique<tr::test::TestSession>(*failing, 1, QStringLiteral("admin"), testing::permitRights());
        doc = std::make_unique<PermitDocument>(desk->services);
        startPermit(*doc);
        ASSERT_TRUE(typeLeaf(*doc, QStringLiteral("100041"), 1500000));
        ASSERT_TRUE(typeLeaf(*doc, QStringLiteral("100042"), 700000));
        PermitComponents components(*doc);
        components.open();
        components.rows().First();
        components.rows().Edit();
        components.rows().FieldByName(QStringLiteral("FactValue")).SetValue(2200000.0);
        components.rows().Post();
        ASSERT_TRUE(components.apply());
    }
    void TearDown() override {
        failing->disarm();
        doc.reset();
        desk.reset();
        failing.reset();
        PermitTest::TearDown();
    }
    QString image() {
        QString out = snapshot(kPermitBook) + snapshot({doc->chequeTable(), doc->counterpartyTable(), doc->componentTable()});
        for (tr::db::Query* grid : {&doc->cheques(), &doc->counterparties()}) {
            for (int r = 0; r < grid->RecordCount(); ++r)
                for (int c = 0; c < grid->fieldNames().size(); ++c) out += grid->value(r, c).toString() + QLatin1Char('|');
            out += QLatin1Char('\n');
        }
        return out + doc->header().serial + QLatin1Char('|') + QString::number(int(doc->mode()));
    }
    void failInTurn(const std::function<bool()>& action) {
        EXPECT_GT(testing::failInTurn(*failing, action, [this] { return image(); },
                                      [this] { return desk->dialog.last().text; }),
                  2);
    }

    std::unique_ptr<FailingConnection> failing;
    std::unique_ptr<tr::test::TestSession> desk;
    std::unique_ptr<PermitDocument> doc;
};

TEST_F(PermitFaultsTest, ANewPermitIsSavedWholeOrNotAtAll) {
    failInTurn([&] { return doc->save(); });
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ Where Serial = 1"), 4);
    EXPECT_EQ(count("Select Count(*) From N_MojavezFact Where Serial = 1"), 1);
    EXPECT_EQ(count("Select Count(*) From ASNADACTIONS"), 1);
}

TEST_F(PermitFaultsTest, AnEditAndADeleteAreWholeOrNotAtAll) {
    ASSERT_TRUE(doc->save()) << desk->dialog.last().text.toStdString();
    doc->cheques().First();
    doc->cheques().Edit();
    doc->cheques().FieldByName(QStringLiteral("ChqGetter")).SetValue(QStringLiteral("شرکت ساختماني"));
    ASSERT_TRUE(doc->postCheque());
    failInTurn([&] { return doc->save(); });
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ Where ChqGetter = 'شرکت ساختماني'"), 1);
    failInTurn([&] {
        desk->dialog.clearAnswers();
        desk->dialog.answerYes();
        return doc->remove();
    });
    EXPECT_EQ(count("Select Count(*) From N_MojavezTrans"), 0);
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ"), 0);
    EXPECT_EQ(count("Select Count(*) From N_MojavezFact"), 0);
}

TEST_F(PermitFaultsTest, APaymentWhoseDeleteFailsStillNamesItsPermit) {
    ASSERT_TRUE(doc->save()) << desk->dialog.last().text.toStdString();
    company().execute(QStringLiteral("Update N_MojavezTrans Set ModirMaleDate = '1404/02/11', ModirAmelDate = '1404/02/12'"));
    ChequePaymentDocument payment(desk->services);
    startPermit(payment, QStringLiteral("1404/02/20"));
    ASSERT_TRUE(payment.setPermit(QStringLiteral("1"))) << desk->dialog.last().text.toStdString();
    ASSERT_TRUE(payment.save()) << desk->dialog.last().text.toStdString();
    failing->failCommit(1);
    desk->dialog.answerYes();
    EXPECT_FALSE(payment.remove());
    EXPECT_TRUE(failing->fired());
    EXPECT_EQ(payment.permitSerial(), QStringLiteral("1"));
    EXPECT_EQ(permitValue(QStringLiteral("1"), "ChqPaySerial"), payment.header().serial);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
