// A dropped ## table is emptied and kept for the next table of its name and definition: to every
// statement it is gone, a new table of that definition starts empty, and a rollback undoes both.
// On both backends.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "db/schema/tests/demo_fixture.h"
#include "tests/support/test_books.h"

using tr::db::DatabaseError;

// Readable failure output for Qt strings.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace {

QString messageOf(tr::db::Connection& db, const QString& sql) {
    try {
        db.execute(sql);
    } catch (const DatabaseError& e) {
        return e.message();
    }
    return {};
}

}  // namespace

class TempTableReuse : public ::testing::Test {
protected:
    void SetUp() override {
        books = tr::test::makeTestBooks(dir.path(), QStringLiteral("temp_tables"));
        db = books->connect(QStringLiteral("Corvask_1_1404"));
        db->execute("Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(20))");
        db->execute("Insert Into ##Lines (Des) Values ('a')");
        db->execute("Insert Into ##Lines (Des) Values ('b')");
    }
    QVariant value(const QString& sql) { return tr::schema::testing::scalar(*db, sql); }
    tr::db::ResultSet rows(const QString& sql) { return db->execute(sql).resultSets.front(); }
    bool listed(const QString& name = QStringLiteral("##Lines")) {
        return value("Select Count(*) From Tempdb..SysObjects Where [Name] Like '" + name + "'").toInt() == 1;
    }

    QTemporaryDir dir;
    std::unique_ptr<tr::tsql::Books> books;
    std::unique_ptr<tr::tsql::TsqlConnection> db;
};

TEST_F(TempTableReuse, ADroppedTableIsGoneToEveryStatementAndConnection) {
    auto other = books->connect(QStringLiteral("Corvask_1_1404"));
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

    // The same of a table the server keeps (no identity).
    db->execute("Select 'k' As Des Into ##Plain");
    EXPECT_EQ(messageOf(*other, "Select Count(*) From ##Plain"), QString());
    db->execute("Drop Table ##Plain");
    EXPECT_EQ(messageOf(*other, "Select Des From ##Plain"), QStringLiteral("Invalid object name '##Plain'."));
    EXPECT_TRUE(other->execute("Select Object_Id('tempdb..##Plain')").resultSets.front().rows.front().front().isNull());
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
        // Both spellings of dropping it; then it can be made again.
        EXPECT_EQ(messageOf(*db, round == 0 ? "Drop Index ##Lines.IX_Lines_Des" : "Drop Index IX_Lines_Des On ##Lines"),
                  QString());
        EXPECT_EQ(messageOf(*db, "Create Index IX_Lines_Des On ##Lines (Des)"), QString());
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

    // The same with a table without an identity, which the server too keeps rather than drops.
    db->execute("Select 'k' As Des Into ##Plain");
    db->execute("Begin Tran");
    db->execute("Drop Table ##Plain");
    EXPECT_FALSE(listed(QStringLiteral("##Plain")));
    db->execute("Rollback Tran");
    EXPECT_TRUE(listed(QStringLiteral("##Plain")));
    EXPECT_EQ(value("Select Des From ##Plain").toString(), QStringLiteral("k"));
    db->execute("Drop Table ##Plain");
    db->execute("Begin Tran");
    db->execute("Select 'n' As Des Into ##Plain");
    db->execute("Rollback Tran");
    EXPECT_FALSE(listed(QStringLiteral("##Plain")));
    EXPECT_EQ(messageOf(*db, "Select Des From ##Plain"), QStringLiteral("Invalid object name '##Plain'."));
    db->execute("Select 'm' As Des Into ##Plain");
    EXPECT_EQ(value("Select Des From ##Plain").toString(), QStringLiteral("m"));

    // A failed copy into the kept table leaves it gone.
    EXPECT_THROW(db->execute("Select IDX, Des, Des + 1 As Bad Into ##Lines From (Select 1 As IDX, 'q' As Des) As T"),
                 DatabaseError);
    EXPECT_FALSE(listed());
}

// A screen copies a voucher aside before each save: the copy's table is dropped if it is there and
// made again from the book by Select ... Into. The kept table serves each copy, and the catalogue,
// Object_Id and a drop answer as if it were made anew.
TEST_F(TempTableReuse, ACopyMadeAgainAndAgainIsTheKeptTable) {
    db->execute("Create Table Lines (Raj Int, Des Varchar(20))");
    db->execute("Insert Into Lines Values (1, 'one')");
    db->execute("Insert Into Lines Values (2, 'two')");
    const QString copyAside = QStringLiteral(
        "If Exists (Select * From Tempdb..SysObjects Where Name Like '##LinesHistory') Drop Table ##LinesHistory; "
        "Select * Into ##LinesHistory From Lines Where Raj >= %1 Order By Raj");
    db->execute(copyAside.arg(1));
    const QVariant first = value("Select Object_Id('tempdb..##LinesHistory')");
    ASSERT_FALSE(first.isNull());
    for (int from : {2, 3, 1}) {
        SCOPED_TRACE(from);
        db->execute(copyAside.arg(from));
        EXPECT_TRUE(listed(QStringLiteral("##LinesHistory")));
        EXPECT_EQ(value("Select Count(*) From ##LinesHistory").toInt(), 3 - from);
        EXPECT_EQ(value("Select Object_Id('tempdb..##LinesHistory')"), first);  // kept, not made anew
        EXPECT_EQ(rows("Select * From ##LinesHistory").columns, (QStringList{"Raj", "Des"}));
    }
    db->execute("Drop Table ##LinesHistory");
    EXPECT_FALSE(listed(QStringLiteral("##LinesHistory")));
    EXPECT_TRUE(value("Select Object_Id('tempdb..##LinesHistory')").isNull());
    // The same name with columns spelled otherwise is a table of its own.
    db->execute("Select Raj As RAJ, Des As Title Into ##LinesHistory From Lines");
    EXPECT_EQ(rows("Select * From ##LinesHistory").columns, (QStringList{"RAJ", "Title"}));
    EXPECT_EQ(value("Select Count(*) From ##LinesHistory").toInt(), 2);
}

// A kept table does not outlive the books' hold on it: the next connection can make it again.
TEST_F(TempTableReuse, AKeptTableIsFreeForTheNextConnection) {
    db->execute("Select 1 As A Into ##Kept");
    db->execute("Drop Table ##Kept");
    db.reset();
    auto next = books->connect(QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(messageOf(*next, "Select Count(*) From ##Kept"), QStringLiteral("Invalid object name '##Kept'."));
    EXPECT_EQ(messageOf(*next, "Select 2 As A Into ##Kept"), QString());
    EXPECT_EQ(next->execute("Select A From ##Kept").resultSets.front().rows.front().front().toInt(), 2);
}

// The condition a screen asks before each save, the same text every time (on the server it is
// prepared from the second time on): it sees the table come and go, kept or made anew.
TEST_F(TempTableReuse, TheSameConditionAskedAgainSeesTheTableComeAndGo) {
    const QString dropIfThere =
        QStringLiteral("If Exists (Select * From Tempdb..SysObjects Where [Name] Like '##Lines') Drop Table ##Lines");
    for (int round = 0; round < 4; ++round) {
        SCOPED_TRACE(round);
        EXPECT_EQ(messageOf(*db, dropIfThere), QString());
        EXPECT_FALSE(listed());
        EXPECT_EQ(messageOf(*db, dropIfThere), QString());  // nothing there: nothing dropped
        // Every other round a definition of its own, so the table is made anew, not kept.
        db->execute(round % 2 ? "Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(20))"
                              : "Create Table ##Lines (IDX Int Identity(1,1), Des Varchar(30), N Int)");
        EXPECT_TRUE(listed());
    }
}
