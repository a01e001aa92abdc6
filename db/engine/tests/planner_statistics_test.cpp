// Planner statistics: a book opened without them gets them, sp_updatestats renews them only where
// a table outgrew them, and a book another process is writing is left as it is, without waiting.
#include <sqlite3.h>

#include <QElapsedTimer>

#include "db/engine/tests/engine_fixture.h"

using tr::engine::Engine;
using tr::engine::testing::EngineTest;

namespace {

// ##Digits: 0 to 99, for filling tables in one statement.
void makeDigits(tr::engine::SqliteConnection& db) {
    db.execute("Create Table ##Digits (n Int)");
    QStringList values;
    for (int i = 0; i < 100; ++i) values << QStringLiteral("(%1)").arg(i);
    db.execute(QStringLiteral("Insert Into ##Digits (n) Values ") + values.join(QLatin1Char(',')));
}

class PlannerStatistics : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        makeDigits(*db);
        db->execute("Create Table Lines (Idx Int Identity(1,1) Primary Key, Code Varchar(10), Amount Float)");
        db->execute("Create Index IX_Lines_Code On Lines (Code)");
        addLines(1000);
    }
    void addLines(int n) {
        db->execute(QStringLiteral("Insert Into Lines (Code, Amount) Select Top %1 Cast(A.n % 7 As Varchar(10)), "
                                   "A.n From (Select (X.n * 100 + Y.n) As n From ##Digits X Cross Join ##Digits Y) "
                                   "As A")
                        .arg(n));
    }
    // The rows sqlite_stat1 holds for the table (its first figure), or -1 without any.
    qint64 recordedRows(const char* table) {
        sqlite3* raw = nullptr;
        sqlite3_open_v2(engine->databaseFile(QStringLiteral("Corvask_1_1404")).toUtf8().constData(), &raw,
                        SQLITE_OPEN_READONLY, nullptr);
        sqlite3_stmt* s = nullptr;
        qint64 rows = -1;
        if (sqlite3_prepare_v2(raw, "SELECT max(CAST(stat AS INTEGER)) FROM sqlite_stat1 WHERE tbl = ?1", -1, &s,
                               nullptr) == SQLITE_OK) {
            sqlite3_bind_text(s, 1, table, -1, SQLITE_STATIC);
            if (sqlite3_step(s) == SQLITE_ROW && sqlite3_column_type(s, 0) != SQLITE_NULL)
                rows = sqlite3_column_int64(s, 0);
        }
        sqlite3_finalize(s);
        sqlite3_close(raw);
        return rows;
    }
};

}  // namespace

TEST(PlannerStatisticsOnOpen, ABookWithoutStatisticsGetsThemWhenFirstOpened) {
    QTemporaryDir dir;
    {
        Engine writer(dir.path());
        auto db = writer.open(QStringLiteral("Corvask_1_1404"));
        makeDigits(*db);
        db->execute("Create Table Lines (Idx Int Identity(1,1) Primary Key, Code Varchar(10))");
        db->execute("Create Index IX_Lines_Code On Lines (Code)");
        db->execute("Insert Into Lines (Code) Select Cast(X.n As Varchar(10)) From ##Digits X Cross Join ##Digits Y");
    }
    const QByteArray file = (dir.path() + QStringLiteral("/corvask_1_1404.sqlite")).toUtf8();
    // A book copied in or written elsewhere: no statistics at all.
    sqlite3* raw = nullptr;
    sqlite3_open(file.constData(), &raw);
    sqlite3_exec(raw, "DROP TABLE IF EXISTS sqlite_stat1", nullptr, nullptr, nullptr);
    sqlite3_close(raw);

    Engine engine(dir.path());
    auto db = engine.open(QStringLiteral("Corvask_1_1404"));
    sqlite3_open(file.constData(), &raw);
    sqlite3_stmt* s = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(raw, "SELECT stat FROM sqlite_stat1 WHERE idx = 'Lines__IX_Lines_Code'", -1, &s,
                                 nullptr),
              SQLITE_OK);
    ASSERT_EQ(sqlite3_step(s), SQLITE_ROW);
    // 10,000 rows, 100 of each code.
    const QStringList figures = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 0)))
                                    .split(QLatin1Char(' '));
    EXPECT_GT(figures.value(0).toLongLong(), 2500);
    EXPECT_GT(figures.value(1).toLongLong(), 20);
    sqlite3_finalize(s);
    sqlite3_close(raw);
}

TEST_F(PlannerStatistics, UpdateStatsRenewsOnlyWhatATableOutgrew) {
    db->execute("Exec sp_updatestats");
    const qint64 before = recordedRows("Lines");
    ASSERT_GT(before, 0);
    // Twice the rows is not yet stale: nothing is written.
    addLines(1000);
    db->execute("Exec sp_updatestats");
    EXPECT_EQ(recordedRows("Lines"), before);
    // Grown past four times what was recorded: analysed again.
    for (int i = 0; i < 8; ++i) addLines(1000);
    db->execute("Exec sp_updatestats");
    EXPECT_GT(recordedRows("Lines"), 2 * before);
    // Statements planned before still run.
    EXPECT_EQ(value("Select Count(*) From Lines Where Code = '3'").toInt(), 1430);
}

TEST_F(PlannerStatistics, ABookBeingWrittenByAnotherProcessIsLeftWithoutWaiting) {
    // The other process's first open records the 1,000 lines; they then grow stale.
    Engine otherProcess(dir.path());
    auto writer = otherProcess.open(QStringLiteral("Corvask_1_1404"));
    ASSERT_EQ(recordedRows("Lines"), 1000);
    for (int i = 0; i < 4; ++i) addLines(1000);
    writer->execute("Begin Tran");
    writer->execute("Update Lines Set Amount = 0 Where Idx = 1");
    QElapsedTimer clock;
    clock.start();
    db->execute("Exec sp_updatestats");
    // The busy timeout is 30 s: the refresh gave way at once instead.
    EXPECT_LT(clock.elapsed(), 10000);
    EXPECT_EQ(recordedRows("Lines"), 1000);
    writer->execute("Commit Tran");
    db->execute("Exec sp_updatestats");
    EXPECT_EQ(recordedRows("Lines"), 5000);
}
