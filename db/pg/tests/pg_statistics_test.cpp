// A book opened on the server for the first time by a process gets statistics for the tables
// that have none or have grown past twice what they record, as the embedded engine's books do.
#include <gtest/gtest.h>

#include "db/pg/pg_connection.h"
#include "db/pg/pg_server.h"
#include "db/pg/tests/pg_fixture.h"

namespace tr::pg {
namespace {

class PgStatisticsTest : public testing::PgDatabaseTest {
  protected:
    PgStatisticsTest() : PgDatabaseTest("statistics") {}
    void SetUp() override {
        PgDatabaseTest::SetUp();
        if (HasFatalFailure()) return;
        PgServer(connectionText).connect(QStringLiteral("Book"))->execute(QStringLiteral("Create Table Lines (IDX Int, Des Varchar(20))"));
    }
    void add(int rows) {
        link->run(QStringLiteral("INSERT INTO book.lines SELECT g, 'x' FROM generate_series(1, %1) AS g").arg(rows));
    }
    // The rows the table's statistics record (-1: none).
    double recorded() { return single("SELECT reltuples FROM pg_class WHERE oid = 'book.lines'::regclass").toDouble(); }
    // A new process's first open of the book.
    void openAnew() { PgServer(connectionText).connect(QStringLiteral("Book")); }
};

TEST_F(PgStatisticsTest, TheFirstOpenAnalysesWhatHasNoneOrHasOutgrownThem) {
    add(2000);
    ASSERT_LT(recorded(), 0);
    openAnew();
    EXPECT_EQ(recorded(), 2000);

    add(500);  // within twice its pages: left to the server's own upkeep
    openAnew();
    EXPECT_EQ(recorded(), 2000);

    add(10000);
    openAnew();
    EXPECT_EQ(recorded(), 12500);
}

TEST_F(PgStatisticsTest, ASmallTableAndALaterOpenAreLeftAsTheyAre) {
    add(20);  // one page
    PgServer server(connectionText);
    server.connect(QStringLiteral("Book"));
    EXPECT_LT(recorded(), 0);
    add(5000);
    server.connect(QStringLiteral("Book"));  // the same process: checked once
    EXPECT_LT(recorded(), 0);
}

}  // namespace
}  // namespace tr::pg
