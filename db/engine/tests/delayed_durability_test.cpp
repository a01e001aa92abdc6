// Commit ... With (Delayed_Durability = On): the transaction commits for every connection at
// once but flushes nothing to disk; every other commit flushes as before. The disk flushes are
// counted by a file system layer put in front of SQLite's own for the length of each test.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <map>
#include <string>

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "tests/support/sqlite_flush_hook.h"

namespace tr::engine {
namespace {

int flushes = 0;
std::map<std::string, int> flushesByName;  // by file name without its folder

void count(const char* file) {
    ++flushes;
    ++flushesByName[QFileInfo(QString::fromUtf8(file)).fileName().toStdString()];
}

class DelayedDurability : public ::testing::Test {
  protected:
    void SetUp() override {
        tr::testing::installSqliteFlushHook(&count);
        engine = std::make_unique<Engine>(dir.path());
        db = engine->open(QStringLiteral("Corvask_1_1404"));
        db->execute("Create Table Hold (Serial Int)");
    }
    void TearDown() override {
        db.reset();
        engine.reset();
        tr::testing::removeSqliteFlushHook();
    }
    // The disk flushes made while `sql` ran.
    int flushesOf(const char* sql) {
        const int before = flushes;
        db->execute(QString::fromUtf8(sql));
        return flushes - before;
    }
    qint64 rowCount(SqliteConnection& c, const char* sql) {
        return c.execute(QString::fromUtf8(sql)).resultSets.back().rows.front().front().toLongLong();
    }

    QTemporaryDir dir;
    std::unique_ptr<Engine> engine;
    std::unique_ptr<SqliteConnection> db;
};

TEST_F(DelayedDurability, CommitsForEveryoneWithoutFlushingAndLaterCommitsFlushAgain) {
    ASSERT_GT(flushesOf("Insert Into Hold Values (1)"), 0) << "a plain commit flushes";
    EXPECT_EQ(flushesOf("Begin Tran Insert Into Hold Values (2) "
                        "Commit Tran With (Delayed_Durability = On)"),
              0);
    auto other = engine->open(QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(rowCount(*other, "Select Count(*) From Hold"), 2);

    // The files are back at their own level: the next commits flush, in every spelling.
    EXPECT_GT(flushesOf("Insert Into Hold Values (3)"), 0);
    EXPECT_GT(flushesOf("Begin Transaction Insert Into Hold Values (4) Commit"), 0);
    EXPECT_GT(flushesOf("Begin Tran Insert Into Hold Values (5) "
                        "Commit Tran With (Delayed_Durability = Off)"),
              0);
    EXPECT_EQ(flushesOf("Begin Tran t Insert Into Hold Values (6) "
                        "Commit Transaction t With ( DELAYED_DURABILITY=ON );"),
              0);
    EXPECT_EQ(rowCount(*other, "Select Count(*) From Hold"), 6);
}

TEST_F(DelayedDurability, AnInnerCommitLeavesTheOutermostOneToFlush) {
    EXPECT_GT(flushesOf("Begin Tran Begin Tran Insert Into Hold Values (1) "
                        "Commit Tran With (Delayed_Durability = On) Commit Tran"),
              0);
}

TEST_F(DelayedDurability, OtherCompanyDatabasesFollowTheSameRule) {
    engine->open(QStringLiteral("Corvask_1_1403"))->execute("Create Table Hold (Serial Int)");
    // A log that starts afresh flushes its header once, at any level; the rule concerns commits.
    db->execute("Insert Into Corvask_1_1403..Hold Values (0)");
    EXPECT_EQ(flushesOf("Begin Tran Insert Into Hold Values (1) "
                        "Insert Into Corvask_1_1403..Hold Values (1) "
                        "Commit Tran With (Delayed_Durability = On)"),
              0);
    const int before = flushesByName["corvask_1_1403.sqlite-wal"];
    db->execute("Begin Tran Insert Into Corvask_1_1403..Hold Values (2) Commit Tran");
    EXPECT_GT(flushesByName["corvask_1_1403.sqlite-wal"], before) << "its log is flushed";
    auto other = engine->open(QStringLiteral("Corvask_1_1403"));
    EXPECT_EQ(rowCount(*other, "Select Count(*) From Hold"), 3);
}

TEST_F(DelayedDurability, ARolledBackTransactionLeavesTheFilesFlushingAsBefore) {
    db->execute("Begin Tran Insert Into Hold Values (1) Rollback Tran");
    EXPECT_GT(flushesOf("Insert Into Hold Values (2)"), 0);
    EXPECT_EQ(rowCount(*db, "Select Count(*) From Hold"), 1);
}

TEST_F(DelayedDurability, AFailedCommitClauseRunsNothing) {
    EXPECT_THROW(db->execute("Begin Tran Insert Into Hold Values (1) "
                             "Commit Tran With (Delayed_Durability = Soon)"),
                 tr::db::DatabaseError);
    auto other = engine->open(QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(rowCount(*other, "Select Count(*) From Hold"), 0);
}

}  // namespace
}  // namespace tr::engine
