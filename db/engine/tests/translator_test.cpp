// Constructs whose checks need C++: procedures and functions registered with the engine, and a
// second connection. The rest of the constructs are tested from sql/*.test.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

class Translator : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        db->execute(
            "Create Table N_NaghdTrans (IDX Int Identity(1,1) Primary Key, WhatDoc Varchar(10), "
            "Serial Varchar(20), Raj Int, Des Varchar(200), Bed Float, Bes Float)");
        db->execute(
            "Create Table Asnad (IDX Int Identity(1,1) Primary Key, Document Varchar(20), "
            "SanadNo Varchar(20), Koll Varchar(3), Moein Varchar(4), Des Varchar(200), Bed Float, Bes Float)");
    }
};

TEST_F(Translator, IfExistsExecTextAndProcedures) {
    db->execute("Create Table ##t (a Int)");
    db->execute("If Exists(Select [Name] From Tempdb..SysObjects Where [Name] Like '%#t') Drop Table ##t");
    EXPECT_EQ(value("Select Count(*) From Tempdb..SysObjects Where Name = '##t'").toInt(), 0);
    db->execute("If Not Exists(Select * From Tempdb..SysObjects Where [Name] = '##t') Create Table ##t (a Int) "
                "Else Drop Table ##t");
    db->execute("Exec('Insert Into ##t (a) Values (' + '7' + ')')");
    EXPECT_EQ(value("Select a From ##t").toInt(), 7);
    // A text written out is run as it reads, its doubled quotes single.
    db->execute("Exec('Insert Into ##t (a) Values (''6'')')");
    EXPECT_EQ(value("Select Min(a) From ##t").toInt(), 6);
    db->execute("Delete From ##t Where a = 6");
    engine->procedures().addProcedure("sp_Echo", [](tr::db::Connection& c, const tr::tsql::ProcedureArgs& a) {
        c.execute("Insert Into ##t (a) Values (" + a.at(1).toString() + ")");
        return c.execute("Select '" + a.at(0).toString() + "' As Word");
    });
    EXPECT_EQ(value("Exec sp_Echo 'hi', 8").toString(), QStringLiteral("hi"));
    EXPECT_EQ(value("sp_Echo 'bare', 9").toString(), QStringLiteral("bare"));
    EXPECT_EQ(value("Select Count(*) From ##t").toInt(), 3);
    engine->procedures().addFunction("f_Next", [](tr::db::Connection& c, const tr::tsql::ProcedureArgs&) {
        const auto r = c.execute("Select IsNull(Max(a), 0) + 1 From ##t");
        return r.resultSets.front().rows.front().front();
    });
    EXPECT_EQ(value("Select dbo.f_Next()").toInt(), 10);
}

TEST_F(Translator, ProcedureFailureLeavesNothingWritten) {
    engine->procedures().addProcedure("sp_Half", [](tr::db::Connection& c, const tr::tsql::ProcedureArgs&) {
        c.execute("Insert Into Asnad (Document) Values ('x')");
        c.execute("Insert Into NoSuchTable (a) Values (1)");
        return tr::db::ExecResult{};
    });
    EXPECT_THROW(db->execute("Exec sp_Half"), DatabaseError);
    EXPECT_EQ(value("Select Count(*) From Asnad").toInt(), 0);
    EXPECT_FALSE(db->inTransaction());
}

TEST_F(Translator, ScopeIdentityIsTheKeyOfTheConnectionsLastInsert) {
    EXPECT_TRUE(value("Select Scope_Identity()").isNull());  // nothing inserted yet
    db->execute("Insert Into Asnad (Document) Values ('a')");
    db->execute("Insert Into Asnad (Document) Values ('b')");
    EXPECT_EQ(value("Select Scope_Identity()").toLongLong(), value("Select IDX From Asnad Where Document = 'b'").toLongLong());
    auto other = engine->open(QStringLiteral("Corvask_1_1404"));
    other->execute("Insert Into Asnad (Document) Values ('c')");
    EXPECT_EQ(value("Select Scope_Identity()").toLongLong(), value("Select IDX From Asnad Where Document = 'b'").toLongLong());
}

// A call answers the key of the row its own Insert added, so a procedure needs no second
// statement to read it; rows added by Exec('...') belong to another scope.
TEST_F(Translator, AnInsertAnswersTheKeyOfItsRow) {
    const tr::db::ExecResult first = db->execute("Insert Into Asnad (Document) Values ('a')");
    EXPECT_EQ(first.lastIdentity, value("Select IDX From Asnad Where Document = 'a'").toLongLong());
    const tr::db::ExecResult again = db->execute("Insert Into Asnad (Document) Values ('b')");
    EXPECT_EQ(again.lastIdentity, first.lastIdentity + 1);
    EXPECT_EQ(db->execute("Insert Into Asnad (Document) Select Document From Asnad Where 1 = 0").lastIdentity, 0);
    EXPECT_EQ(db->execute("Exec('Insert Into Asnad (Document) Values (''c'')')").lastIdentity, 0);
    EXPECT_EQ(db->execute("Update Asnad Set Des = 'x' Where Document = 'a'").lastIdentity, 0);
}

// ^ is T-SQL's exclusive or; an operand is written once, so a long chain stays as long as it is.
TEST_F(Translator, ExclusiveOrWritesEachOperandOnce) {
    EXPECT_EQ(value("Select 12 ^ 10").toInt(), 6);
    EXPECT_TRUE(value("Select Null ^ 1").isNull());
    QString chain = QStringLiteral("Select 1");
    for (int i = 0; i < 20; ++i) chain += QStringLiteral(" ^ 1");
    EXPECT_LT(db->translate(chain).size(), 20 * 20);
    EXPECT_EQ(value(chain).toInt(), 1);  // 21 ones
    // A key compared with a nested query's value: the query is not written twice per level.
    QString nested = QStringLiteral("'1'");
    for (int i = 0; i < 12; ++i)
        nested = QStringLiteral("(Select Top 1 Document From Asnad Where Cast(IDX As Varchar(20)) = %1)").arg(nested);
    EXPECT_LT(db->translate(QStringLiteral("Select ") + nested).size(), 12 * 400);
}
