// The statements the cash and bank screens run, planned as SQLite would plan them on a book of a
// million documents: the demo company is given the planner statistics of such a book (kept in
// large_book_statistics.txt, gathered by the engine's own refresh on the generated book), the
// screens are driven as a user drives them, and no statement the screens ran may read the whole
// of a table that grows with the book.


#include "cashbank/search/document_pickers.h"
#include "cashbank/search/document_search.h"
#include "cashbank/tests/documents/documents_fixture.h"
#include "tests/support/statement_plans.h"

namespace tr::cashbank {
namespace {

using testing::DocumentsTest;
using testing::s;
using tr::test::StatementPlans;

// Every SQLite handle the test's engine opens is traced.
const bool kTraced = (StatementPlans::install(), true);

// The tables that grow with every document.
const QStringList kLargeTables = {"Asnad", "N_NaghdTrans", "N_ArzTrans", "ASNADACTIONS", "R_ForoshRelatedNaghd"};

class LargeBookPlansTest : public DocumentsTest {
  protected:
    static void SetUpTestSuite() {
        DocumentsTest::SetUpTestSuite();
        db_ = StatementPlans::handleOf(QStringLiteral("corvask_1_1404.sqlite"));
        ASSERT_NE(db_, nullptr);
        ASSERT_GT(StatementPlans::loadStatistics(db_, QStringLiteral(TR_LARGE_BOOK_STATISTICS)), 10);
    }

    void SetUp() override {
        DocumentsTest::SetUp();
        StatementPlans::clear();
    }

    // Each statement run on the company book since SetUp that reads a large table whole, with
    // its plan.
    static QStringList wholeTableReads() { return StatementPlans::wholeTableReads(db_, kLargeTables); }

    // A receipt of two lines saved through the screen, as the user types it.
    std::unique_ptr<CashBankDocument> savedReceipt() {
        auto screen = open(ScreenId::CashGet);
        fillHeader(*screen, 3000);
        EXPECT_TRUE(addLine(*screen, 1000, QStringLiteral("دريافت وجه")));
        EXPECT_TRUE(addLine(*screen, 2000));
        EXPECT_TRUE(screen->cmdOkClick());
        return screen;
    }

    static inline sqlite3* db_ = nullptr;
};

TEST_F(LargeBookPlansTest, SavingEditingAndCancellingAReceipt) {
    auto screen = savedReceipt();
    ASSERT_TRUE(addLine(*screen, 500));
    screen->setAmountText(QStringLiteral("3500"));
    ASSERT_TRUE(screen->cmdOkClick());
    admin->dialog.answerYes();
    ASSERT_TRUE(screen->cmdAbtalClick());
    admin->dialog.answerYes();
    ASSERT_TRUE(screen->cmdAbtalClick());
    EXPECT_NO_WHOLE_TABLE_READS();
    EXPECT_TRUE(ledgerIsConsistent());  // reads the whole ledger, so only after the plans
}

TEST_F(LargeBookPlansTest, OpeningDocumentsBySerialAndStepping) {
    savedReceipt();
    savedReceipt();
    auto screen = open(ScreenId::CashGet);
    ASSERT_TRUE(screen->openSerial(QStringLiteral("1")));
    EXPECT_TRUE(screen->spinNext());
    EXPECT_TRUE(screen->spinPrevious());
    EXPECT_NO_WHOLE_TABLE_READS();
}

TEST_F(LargeBookPlansTest, SearchesOverADateRangeAndReplacingInTheirDescriptions) {
    savedReceipt();
    for (SearchFamily family : {SearchFamily::Cash, SearchFamily::PettyCash, SearchFamily::Deposit,
                                SearchFamily::Withdrawal, SearchFamily::Transfer}) {
        DocumentSearch search(admin->services, family);
        SearchFilters& f = search.filters();
        f.fromDate = {QStringLiteral("01"), QStringLiteral("03"), QStringLiteral("1404")};
        f.toDate = {QStringLiteral("31"), QStringLiteral("03"), QStringLiteral("1404")};
        f.words[0] = QStringLiteral("فروش");
        ASSERT_TRUE(search.mnuSearchClick());
        if (family == SearchFamily::Cash) {
            EXPECT_GT(search.result().RecordCount(), 0);
            f.replacements[0] = QStringLiteral("خريد");
            admin->dialog.answerYes();
            ASSERT_TRUE(search.mnuReplaceClick());
        }
    }
    EXPECT_NO_WHOLE_TABLE_READS();
}

TEST_F(LargeBookPlansTest, PickingADocumentFromTheList) {
    savedReceipt();
    admin->pickList.chooseRow(0);
    EXPECT_TRUE(pickDocument(admin->services, QStringLiteral("10")).has_value());
    EXPECT_NO_WHOLE_TABLE_READS();
}

}  // namespace
}  // namespace tr::cashbank
