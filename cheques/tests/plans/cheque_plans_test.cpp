// The cheque screens' heavy statements planned as SQLite would plan them on a book of 300,000
// cheques and a million documents: the demo company is given the planner statistics of such a
// book (kept in cheque_book_statistics.txt, gathered by the engine's own refresh on the
// generated cheque book), the screens are driven as a user drives them, and no statement they
// ran may read the whole of the state table, the voucher lines or the treasury rows.


#include "cheques/cheques_to_bank.h"
#include "cheques/issued_actions.h"
#include "cheques/received_cheque_document.h"
#include "cheques/received_actions.h"
#include "cheques/search/cheque_search.h"
#include "cheques/spend_picker.h"
#include "cheques/tests/received_action_steps.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "instruments/latest_state.h"
#include "tests/support/statement_plans.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::test::StatementPlans;

// Every SQLite handle the test's engine opens is traced.
const bool kTraced = (StatementPlans::install(), true);

// The tables that grow with every cheque and document.
const QStringList kLargeTables = {"N_ChqLastTrans", "Asnad", "N_NaghdTrans"};

const QString& kCollect = testing::kCollectAction;
const QString kReturned = QStringLiteral("برگشت چک");

class ChequePlansTest : public tr::procedures::testing::ChequeTest {
  protected:
    static void SetUpTestSuite() {
        ChequeTest::SetUpTestSuite();
        db_ = StatementPlans::handleOf(QStringLiteral("corvask_1_1404.sqlite"));
        ASSERT_NE(db_, nullptr);
        ASSERT_GT(StatementPlans::loadStatistics(db_, QStringLiteral(TR_CHEQUE_BOOK_STATISTICS)), 10);
    }

    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQACTION_"), QStringLiteral("N_A_CHQGET_")}));
        // Received cheques 501-506 (in hand, in collection, returned, one passed on), an opening
        // cheque, and our leaf 100001.
        receiveCheques({{QStringLiteral("501"), QStringLiteral("S"), 1000000, QStringLiteral("1404/09/10")},
                        {QStringLiteral("502"), QStringLiteral("S"), 2000000, QStringLiteral("1404/10/10")},
                        {QStringLiteral("503"), QStringLiteral("S"), 3000000, QStringLiteral("1404/11/10")},
                        {QStringLiteral("504"), QStringLiteral("S"), 4000000, QStringLiteral("1404/12/10")}},
                       1);
        receiveCheques({{QStringLiteral("505"), QStringLiteral("S"), 500000}}, 2, QStringLiteral("1404/01/01"), true);
        act({QStringLiteral("502"), QStringLiteral("503")}, kCollect, QStringLiteral("1404/03/01"));
        act({QStringLiteral("504")}, kReturned, QStringLiteral("1404/03/02"));
        DocumentCheque leaf{QStringLiteral("100001"), QStringLiteral("12"), 5000000};
        leaf.bankAccount = 1;
        payCheques({{QStringLiteral("501"), QStringLiteral("S"), 1000000, QStringLiteral("1404/09/10")}, leaf}, 1);
        StatementPlans::clear();
    }
    void TearDown() override { session.reset(); }

    void act(const QStringList& numbers, const QString& name, const QString& date) {
        testing::actOnReceived(*session, numbers, name, date);
    }

    // Each statement run on the company book since SetUp that reads a large table whole, with
    // its plan.
    static QStringList wholeTableReads() { return StatementPlans::wholeTableReads(db_, kLargeTables); }

    std::unique_ptr<tr::test::TestSession> session;
    static inline sqlite3* db_ = nullptr;
};

TEST_F(ChequePlansTest, BothSearchesWithEveryBoxAndWithADueDateRange) {
    for (ChequeSide side : {ChequeSide::Received, ChequeSide::Issued}) {
        ChequeSearch search(session->services, side);
        ASSERT_TRUE(search.mnuSearchClick());
        EXPECT_GT(search.result().RecordCount(), 0);
        ChequeSearchFilters& f = search.filters();
        f.fromDue = {QStringLiteral("01"), QStringLiteral("09"), QStringLiteral("1404")};
        f.toDue = {QStringLiteral("29"), QStringLiteral("12"), QStringLiteral("1404")};
        f.fromAmount = QStringLiteral("1,000");
        f.fromDate = {QStringLiteral("01"), QStringLiteral("01"), QStringLiteral("1404")};
        for (int i = 0; i < f.states.size(); ++i) f.states[i] = i < 2;
        ASSERT_TRUE(search.mnuSearchClick());
    }
    EXPECT_NO_WHOLE_TABLE_READS();
}

TEST_F(ChequePlansTest, TheActionsScreensListsWithAndWithoutFilters) {
    ReceivedChequeActions received(session->services);
    received.fill();
    EXPECT_GT(received.rows().RecordCount(), 0);
    received.filters().fromDate = QStringLiteral("1404/02/01");
    received.filters().toDate = QStringLiteral("1404/02/31");
    received.filters().state = QStringLiteral("72");
    received.fill();
    received.filters() = {};
    received.filters().chequeNumber = QStringLiteral("502");
    received.fill();
    EXPECT_EQ(received.rows().RecordCount(), 1);
    EXPECT_EQ(received.history(QStringLiteral("502"), QStringLiteral("S")).size(), 2);

    IssuedChequeActions issued(session->services);
    issued.fill();
    EXPECT_GT(issued.rows().RecordCount(), 0);
    issued.filters().bankAccount = 1;
    issued.filters().state = QStringLiteral("81");
    issued.fill();
    EXPECT_NO_WHOLE_TABLE_READS();
}

TEST_F(ChequePlansTest, TheToBankListTheReturnedReportAndThePaymentsPickList) {
    ChequesToBank toBank(session->services);
    toBank.filters().fromDate = QStringLiteral("1404/03/01");
    toBank.filters().toDate = QStringLiteral("1404/03/31");
    toBank.fill();
    EXPECT_EQ(toBank.rows().RecordCount(), 2);

    company().execute(QStringLiteral("Exec sp_N_Report_ChqGetReturned '##PlanChqRet', '104', '0002', '', '', ''"));
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From ##PlanChqRet")).toInt(), 1);

    SpendPicker picker(session->services);
    picker.fill();
    EXPECT_GT(picker.rows().RecordCount(), 0);
    EXPECT_TRUE(tr::instruments::latestRow(company(), tr::instruments::chequeHistory(), QStringLiteral("503"),
                                           QStringLiteral("S")));
    EXPECT_NO_WHOLE_TABLE_READS();

    // What the check catches: a condition no index answers.
    company().execute(QStringLiteral("Select Count(*) From N_ChqLastTrans Where CodWhatDoc = '1'"));
    EXPECT_EQ(wholeTableReads().size(), 1);
}

// A document's delete check builds every cheque's last action: one pass over the number's
// covering index (the only whole read it may make), not a seek per state row, nor the table.
TEST_F(ChequePlansTest, ADeleteCheckReadsEveryChequesLatestRowFromTheNumbersIndex) {
    ReceivedChequeDocument received(session->services);
    ASSERT_TRUE(received.open(QStringLiteral("1")));
    EXPECT_FALSE(received.remove());
    ASSERT_FALSE(session->dialog.shown().isEmpty());
    EXPECT_TRUE(session->dialog.last().text.startsWith(QStringLiteral("آخرين گردش چك شماره")))
        << session->dialog.last().text.toStdString();
    const QStringList reads = wholeTableReads();
    ASSERT_EQ(reads.size(), 1) << reads.join(QStringLiteral("\n\n")).toStdString();
    EXPECT_TRUE(reads.front().contains(QStringLiteral("SCAN M USING COVERING INDEX N_ChqLastTrans__IX_N_ChqLastTrans_Chq")))
        << reads.front().toStdString();
    const QString plan = reads.front().section(QLatin1Char('\n'), 1);
    EXPECT_EQ(plan.count(QStringLiteral("SCAN ")), 1) << plan.toStdString();
}

}  // namespace
}  // namespace tr::cheques
