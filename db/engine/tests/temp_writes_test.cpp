// Writing ## tables takes no lock on the book: while another process holds a write transaction
// on it, a screen still makes, fills, reads, empties and drops its own tables at once.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::engine::testing::EngineTest;

class TempWrites : public EngineTest {};

TEST_F(TempWrites, DoNotWaitForAnotherProcessWritingTheBook) {
    db->execute("Create Table Counter (n Int)");
    db->execute("Insert Into Counter (n) Values (0)");
    // Another engine on the same files stands for another process: it shares the files'
    // locks but not this engine's tempdb.
    tr::engine::Engine otherProcess(dir.path());
    auto writer = otherProcess.open(QStringLiteral("Corvask_1_1404"));
    writer->execute("Begin Tran");
    writer->execute("Update Counter Set n = n + 1");

    // Before, each of these waited out the busy timeout and failed with "database is locked".
    db->execute("Create Table ##x (Code Varchar(10), n Int)");
    db->execute("Insert Into ##x (Code, n) Values ('a', 1)");
    db->execute("Insert Into ##x (Code, n) Select Code, n + 1 From ##x");
    db->execute("Select Code, n Into ##y From ##x Where n > 1");
    db->execute("Select n, Cast('' As Varchar(5)) As Tag Into ##z From Counter");
    db->execute("Create Index IX_x On ##x (Code)");
    db->execute("Update ##x Set n = n * 10");
    db->execute("Delete From ##y");
    db->execute("Truncate Table ##x");
    db->execute("Drop Table ##y");
    db->execute("Drop Table ##z");
    db->execute("Drop Table ##x");
    EXPECT_EQ(value("Select n From Counter").toInt(), 0);  // the other's write is not yet committed

    writer->execute("Commit Tran");
    EXPECT_EQ(value("Select n From Counter").toInt(), 1);
}

TEST_F(TempWrites, ASelectIntoThatFailsLeavesNoTable) {
    db->execute("Create Table ##x (Code Varchar(3))");
    db->execute("Insert Into ##x Values ('a')");
    EXPECT_THROW(db->execute("Select Cast(Code As Int) As n Into ##y From ##x"),
                 tr::db::DatabaseError);
    EXPECT_EQ(value("Select Count(*) From Tempdb..SysObjects Where name = '##y'").toInt(), 0);
    db->execute("Select Code Into ##y From ##x");
    EXPECT_EQ(value("Select Code From ##y").toString(), QStringLiteral("a"));
}
