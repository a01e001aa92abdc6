// The shared statement routines on the embedded engine, and the ADO-like dataset over it.
#include <gtest/gtest.h>

#include <functional>

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/db/transaction.h"
#include "db/engine/tests/engine_fixture.h"
#include "db/procedures/procedures.h"

using namespace tr::db;
using tr::engine::testing::EngineTest;

class QueryHelpers : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        for (const auto& p : tr::procedures::allProcedures()) engine->procedures().addProcedure(p.name, p.body);
        command.setConnection(db.get());
        my.CommandQuery = &command;
        my.Connection = db.get();
        db->execute("Create Table FixDes (IDX Int Identity(1,1) Primary Key, Koll Varchar(3), FixDes Varchar(200), Raj Int)");
        db->execute("Insert Into FixDes (Koll, FixDes, Raj) Values ('101', 'اجاره', 1), ('102', 'حقوق', 2), ('103', 'آب', 3)");
        db->execute("Create Table UserPrivilege (UserId Varchar(10), TableName Varchar(50), FieldCode Varchar(20))");
        db->execute("Insert Into UserPrivilege Values ('1', 'KOLL', 'Koll')");
    }
    Query command;
    MyDatabase my;
};

TEST_F(QueryHelpers, ExecuteRunsThroughTheCommandQueryAndEmptyTextTouchesNothing) {
    command.setSql("Select 1");
    EXPECT_TRUE(execute(my, ""));
    EXPECT_EQ(command.sql(), QStringLiteral("Select 1"));
    EXPECT_TRUE(execute(my, "Update FixDes Set Raj = Raj + 10"));
    EXPECT_EQ(command.sql(), QStringLiteral("Update FixDes Set Raj = Raj + 10"));
    Query orphan;
    MyDatabase unconnected{&orphan, nullptr};
    EXPECT_FALSE(execute(unconnected, "Delete From FixDes"));
    EXPECT_EQ(value("Select Count(*) From FixDes").toInt(), 3);
}

TEST_F(QueryHelpers, TemporaryTablesAreNamedDroppedAndFoundInTempdb) {
    const QString name = globalTempTableName(QStringLiteral("S1_"));
    EXPECT_TRUE(name.startsWith(QStringLiteral("##S1_")));
    db->execute("Select Koll Into " + name + " From FixDes");
    EXPECT_TRUE(objectExistsInTempdb(*db, name.toUpper()));
    EXPECT_TRUE(columnExists(*db, name, "Koll"));
    EXPECT_FALSE(columnExists(*db, name, "FixDes"));
    EXPECT_TRUE(columnExists(*db, "FixDes", "FixDes"));
    EXPECT_FALSE(columnExists(*db, "FixDes", "Nothing"));
    EXPECT_TRUE(dropTempTable(my, name.mid(2)));
    EXPECT_FALSE(objectExistsInTempdb(*db, name.toUpper()));
    EXPECT_TRUE(dropTempTable(my, QStringLiteral("NeverMade")));  // silent for a missing table
}

TEST_F(QueryHelpers, LookupsPrivilegesRenumberingAndNames) {
    EXPECT_EQ(firstValue(*db, "FixDes", "FixDes", "Koll", "102").toString(), QStringLiteral("حقوق"));
    EXPECT_TRUE(firstValue(*db, "FixDes", "FixDes", "Koll", "999").isNull());
    EXPECT_EQ(firstValueWhere(*db, "Koll", "FixDes", "Raj > 1 And FixDes Like '%ب%'").toString(), QStringLiteral("103"));
    const QString sub = privilegedFields(*db, "1", "KOLL");
    EXPECT_EQ(sub, QStringLiteral("(Select FieldCode From UserPrivilege Where UserId='1' And Upper(TableName)='KOLL') "));
    EXPECT_EQ(value("Select Count(*) From FixDes Where Koll In " + sub).toInt(), 0);
    EXPECT_TRUE(renumberRows(my, "FixDes", 2, "DELETE"));
    EXPECT_EQ(value("Select Sum(Raj) From FixDes").toInt(), 1 + 1 + 2);
    EXPECT_TRUE(renumberRows(my, "FixDes", 1, "INSERT"));
    EXPECT_EQ(value("Select Min(Raj) From FixDes").toInt(), 2);
    EXPECT_TRUE(nameRepeated(*db, "FixDes", "FixDes", " حقوق "));
    EXPECT_FALSE(nameRepeated(*db, "FixDes", "FixDes", "مالیات"));
    EXPECT_THROW(nameRepeated(*db, "FixDes", "Nothing", "x"), DatabaseError);
}

TEST_F(QueryHelpers, TransactionsAndWorkTablesAreUndoneWhenAnErrorLeavesTheirScope) {
    const auto failing = [&](const std::function<void()>& work) {
        try {
            work();
        } catch (const DatabaseError& error) {
            return error.message();
        }
        return QString();
    };
    // An error rolls back; the error reported is the first one, not the failed outer rollback
    // after an inner transaction has already rolled everything back.
    const QString inner = failing([&] {
        Transaction outer(*db);
        db->execute("Update FixDes Set Raj = 0");
        Transaction transaction(*db);
        db->execute("Insert Into NoSuchTable Values (1)");
    });
    EXPECT_TRUE(inner.contains(QStringLiteral("NoSuchTable"))) << inner.toStdString();
    EXPECT_EQ(value("Select Sum(Raj) From FixDes").toInt(), 6);
    {
        Transaction transaction(*db);
        db->execute("Update FixDes Set Raj = Raj + 1");
        transaction.commit(Transaction::Durability::Delayed);
    }
    EXPECT_EQ(value("Select Sum(Raj) From FixDes").toInt(), 9);

    // A work table goes with the error, on drop(), or stays when kept.
    const QString name = globalTempTableName(QStringLiteral("W_"));
    failing([&] {
        db->execute("Select Koll Into " + name + " From FixDes");
        ScopedTempTable table(my, name);
        db->execute("Select Nothing From " + name);
    });
    EXPECT_FALSE(objectExistsInTempdb(*db, name));
    {
        db->execute("Select Koll Into " + name + " From FixDes");
        ScopedTempTable table(my, name);
        table.keep();
    }
    EXPECT_TRUE(objectExistsInTempdb(*db, name));
    ScopedTempTable table(my, name);
    table.drop();
    EXPECT_FALSE(objectExistsInTempdb(*db, name));
}

TEST_F(QueryHelpers, CompanyDatabaseNameComesFromTheSuiteRegistry) {
    auto suite = engine->open("CORVASK_Sdc");
    suite->execute("Create Table SDC_Company (sCode Varchar(10), sYear Varchar(4))");
    suite->execute("Insert Into SDC_Company Values (' 1 ', '1404')");
    EXPECT_EQ(companyDatabaseName(*db, "1", "1404"), QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(companyDatabaseName(*db, "2", "1404"), QString());
}

TEST_F(QueryHelpers, HostileTextRoundTripsThroughTheQuotingHelper) {
    db->execute("Create Table Echo (IDX Int Identity(1,1) Primary Key, V Varchar(20000))");
    const QString samples[] = {
        QStringLiteral("O'Brien ''"), QStringLiteral("back\\\nslash\\\r\nend\\"),
        QStringLiteral("\u02BCmodifier\u2019right\uFF07fullwidth"), QStringLiteral("'); Drop Table Echo; --"),
        QStringLiteral("x' Or '1'='1"), QString(10000, QChar(u'ق')) + QStringLiteral("'"),
        QStringLiteral("مي\u200Cخواهم \u200F تست\t"), QStringLiteral("/* not a comment */ -- nor this"),
    };
    for (const QString& s : samples) {
        db->execute("Delete From Echo");
        db->execute("Insert Into Echo (V) Values (" + db->text(s) + ")");
        EXPECT_EQ(value("Select V From Echo").toString(), s);
        EXPECT_EQ(value("Select Count(*) From Echo Where V = " + db->text(s)).toInt(), 1);
    }
    EXPECT_THROW(db->text(QStringLiteral("nul") + QChar(0)), DatabaseError);
    EXPECT_EQ(value("Select Count(*) From Echo").toInt(), 1);
}

TEST_F(QueryHelpers, DatasetEditsPostBackAndRefusalsKeepTheRow) {
    db->execute("Select Koll, FixDes, Raj Into ##Trans From FixDes");
    Query q(db.get());
    q.setSql("Select * From ##Trans Order By Raj");
    q.Open();
    ASSERT_EQ(q.RecordCount(), 3);
    q.Next();
    q.FieldByName("FixDes").SetValue(QStringLiteral("حقوق و دستمزد"));
    q.Post();
    EXPECT_EQ(value("Select FixDes From ##Trans Where Koll = '102'").toString(), QStringLiteral("حقوق و دستمزد"));

    q.BeforePost = [](Query& d) { return !d.FieldByName("FixDes").AsString().isEmpty(); };
    q.Append();
    q.FieldByName("Koll").SetValue(QStringLiteral("104"));
    q.Post();  // refused: the row stays in insert, nothing written
    EXPECT_EQ(q.state(), Query::State::Insert);
    EXPECT_EQ(value("Select Count(*) From ##Trans").toInt(), 3);
    q.FieldByName("FixDes").SetValue(QStringLiteral("بیمه"));
    q.FieldByName("Raj").SetValue(4);
    q.Post();
    EXPECT_EQ(q.state(), Query::State::Browse);
    EXPECT_EQ(value("Select FixDes From ##Trans Where Raj = 4").toString(), QStringLiteral("بیمه"));

    q.setSort("Koll DESC");
    q.First();
    EXPECT_EQ(q.FieldByName("Koll").AsString(), QStringLiteral("104"));
    q.Delete();
    EXPECT_EQ(value("Select Count(*) From ##Trans").toInt(), 3);
    EXPECT_EQ(q.RecordCount(), 3);
    EXPECT_THROW(q.setSort("sOrder ASC"), DatabaseError);
}
