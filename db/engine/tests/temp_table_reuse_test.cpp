// A dropped ## table is emptied and kept for the next table of its name and definition: to every
// statement it is gone, a new table of that definition starts empty, and a rollback undoes both.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

namespace {

QString messageOf(tr::engine::SqliteConnection& db, const QString& sql) {
    try {
        db.execute(sql);
    } catch (const DatabaseError& e) {
        return e.message();
    }
    return {};
}

}  // namespace

class TempTableReuse : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        db->execute("Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(20))");
        db->execute("Insert Into ##Lines (Des) Values ('a')");
        db->execute("Insert Into ##Lines (Des) Values ('b')");
    }
    bool listed() {
        return value("Select Count(*) From Tempdb..SysObjects Where [Name] Like '##Lines'").toInt() == 1;
    }
};

TEST_F(TempTableReuse, ADroppedTableIsGoneToEveryStatementAndConnection) {
    auto other = engine->open(QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(other->execute("Select Count(*) From ##Lines").resultSets.front().rows.front().front().toInt(), 2);
    db->execute("Drop Table ##Lines");
    EXPECT_FALSE(listed());
    EXPECT_EQ(value("Select Count(*) From Tempdb..SysColumns Where id = Object_Id('tempdb..##Lines')").toInt(), 0);
    EXPECT_TRUE(value("Select Object_Id('tempdb..##Lines')").isNull());
    EXPECT_TRUE(value("Select Col_Length('##Lines', 'Des')").isNull());
    EXPECT_EQ(messageOf(*db, "Select Count(*) From ##Lines"), QStringLiteral("Invalid object name '##Lines'."));
    EXPECT_EQ(messageOf(*other, "Select Des From ##Lines Where IDX = 1"),
              QStringLiteral("Invalid object name '##Lines'."));
    EXPECT_EQ(messageOf(*db, "Drop Table ##Lines"),
              QStringLiteral("Cannot drop the table '##Lines', because it does not exist or you do not have permission."));
}

TEST_F(TempTableReuse, TheNextTableStartsEmptyWhateverItsDefinition) {
    db->execute("Drop Table ##Lines");
    db->execute("Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(20))");  // the same definition
    EXPECT_TRUE(listed());
    EXPECT_EQ(value("Select Count(*) From ##Lines").toInt(), 0);
    db->execute("Insert Into ##Lines (Des) Values ('c')");
    EXPECT_EQ(value("Select IDX From ##Lines Where Des = 'c'").toInt(), 1);  // identity starts again

    db->execute("Drop Table ##Lines");
    db->execute("Create Table ##Lines (Des Varchar(20), Amount Float)");  // another definition
    EXPECT_EQ(rows("Select * From ##Lines").columns, (QStringList{"Des", "Amount"}));
    EXPECT_EQ(value("Select Count(*) From ##Lines").toInt(), 0);

    db->execute("Drop Table ##Lines");
    db->execute("Select 'x' As Des, 1.5 As Amount Into ##Lines");
    EXPECT_DOUBLE_EQ(value("Select Amount From ##Lines Where Des = 'x'").toDouble(), 1.5);
}

// A table given an index of its own goes with it: the next table of the name takes the index
// again, as a screen that lists anew and indexes its list does.
TEST_F(TempTableReuse, AnIndexGoesWithItsTable) {
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        EXPECT_EQ(messageOf(*db, "Create Index IX_Lines_Des On ##Lines (Des)"), QString());
        EXPECT_EQ(value("Select IDX From ##Lines Where Des = 'b'").toInt(), 2);
        db->execute("Drop Table ##Lines");
        EXPECT_FALSE(listed());
        db->execute("Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(20))");
        EXPECT_EQ(value("Select Count(*) From ##Lines").toInt(), 0);
        db->execute("Insert Into ##Lines (Des) Values ('a')");
        db->execute("Insert Into ##Lines (Des) Values ('b')");
    }
}

TEST_F(TempTableReuse, ARollbackUndoesADropAndAReuse) {
    db->execute("Begin Tran");
    db->execute("Drop Table ##Lines");
    EXPECT_FALSE(listed());
    db->execute("Rollback Tran");
    EXPECT_TRUE(listed());
    EXPECT_EQ(value("Select Count(*) From ##Lines").toInt(), 2);

    db->execute("Drop Table ##Lines");
    db->execute("Begin Tran");
    db->execute("Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(20))");
    db->execute("Insert Into ##Lines (Des) Values ('d')");
    db->execute("Rollback Tran");
    EXPECT_FALSE(listed());
    EXPECT_EQ(messageOf(*db, "Select Count(*) From ##Lines"), QStringLiteral("Invalid object name '##Lines'."));

    // A failed copy into the kept table leaves it gone.
    EXPECT_THROW(db->execute("Select IDX, Des, Des + 1 As Bad Into ##Lines From (Select 1 As IDX, 'q' As Des) As T"),
                 DatabaseError);
    EXPECT_FALSE(listed());
}
