// Translation by construct family: the rewritten text where its shape matters, and the executed
// result for every semantic trap the server's dialect sets.
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

TEST_F(Translator, PlusConcatenatesTextAndAddsNumbers) {
    db->execute("Insert Into Asnad (Document, Koll, Moein, Bed, Bes) Values ('7', '101', '0001', 10, 2.5)");
    EXPECT_TRUE(db->translate("Select Koll + Moein From Asnad").contains("||"));
    EXPECT_EQ(value("Select Koll + Moein From Asnad").toString(), QStringLiteral("1010001"));
    EXPECT_DOUBLE_EQ(value("Select Bed + Bes From Asnad").toDouble(), 12.5);
    EXPECT_EQ(value("Select 'x' + NULL").isNull(), true);
    EXPECT_EQ(value("Select 1 + '2'").toInt(), 3);  // text meets a number: converted
    EXPECT_EQ(value("Select 'Corvask_' + LTrim(RTrim(' 1 ')) + '_' + '1404'").toString(),
              QStringLiteral("Corvask_1_1404"));
    // Unknown operand types fall back to the runtime rule.
    EXPECT_THROW(db->execute("Select 'abc' + 1"), DatabaseError);
    EXPECT_TRUE(value("Select Des + 1 From Asnad Where Koll = '101'").isNull());
}

TEST_F(Translator, NonNumericTextAddedToNumberRaisesConversionError) {
    db->execute("Insert Into Asnad (Document, Koll, Bed) Values ('abc', '101', 1)");
    try {
        db->execute("Select Document + 1 From Asnad");
        FAIL() << "expected a conversion error";
    } catch (const DatabaseError& e) {
        EXPECT_TRUE(e.message().contains("Conversion failed when converting the varchar value 'abc'")) << e.what();
    }
}

TEST_F(Translator, VarcharSerialComparedWithNumberComparesNumerically) {
    for (const char* s : {"2", "9", "10", "11"}) {
        db->execute(QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj) Values ('10', '%1', 1)").arg(s));
    }
    EXPECT_EQ(value("Select Count(*) From N_NaghdTrans Where Serial > 9").toInt(), 2);
    EXPECT_EQ(value("Select Count(*) From N_NaghdTrans Where Serial > '9'").toInt(), 0);  // text order
    EXPECT_EQ(value("Select Count(*) From N_NaghdTrans Where Serial In (9, 10)").toInt(), 2);
    EXPECT_EQ(value("Select Count(*) From N_NaghdTrans Where Serial Between 3 And 10").toInt(), 2);
}

TEST_F(Translator, CollationIgnoresBlanksCaseAndYehKafForms) {
    db->execute(QStringLiteral("Insert Into Asnad (Document, Koll, Des) Values ('1', '101', 'ABC  ')"));
    db->execute(QStringLiteral("Insert Into Asnad (Document, Koll, Des) Values ('2', '102', 'كيك')"));
    EXPECT_EQ(value("Select Document From Asnad Where Des = 'abc'").toString(), QStringLiteral("1"));
    EXPECT_EQ(value(QStringLiteral("Select Document From Asnad Where Des = 'کیک'")).toString(), QStringLiteral("2"));
    EXPECT_EQ(value(QStringLiteral("Select Document From Asnad Where Des Like '%ی%'")).toString(), QStringLiteral("2"));
    EXPECT_EQ(value(QStringLiteral("Select Document From Asnad Where Des Like 'a_c%'")).toString(), QStringLiteral("1"));
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From Asnad Where Des Like '[ak]%'")).toInt(), 1);
    EXPECT_EQ(value("Select Len('ab  ')").toInt(), 2);
    EXPECT_EQ(value("Select Count(Distinct Des) From Asnad Where Des In ('abc', 'ABC ')").toInt(), 1);
}

TEST_F(Translator, CastTruncatesAndConverts) {
    EXPECT_EQ(value("Select Cast('abcdef' As Varchar(3))").toString(), QStringLiteral("abc"));
    EXPECT_EQ(value("Select Cast(12 As Varchar(20))").toString(), QStringLiteral("12"));
    EXPECT_EQ(value("Select Convert(Int, ' 42 ')").toInt(), 42);
    EXPECT_EQ(value("Select Cast(2.9 As Int)").toInt(), 2);
    EXPECT_THROW(db->execute("Select Cast('x1' As Int)"), DatabaseError);
    EXPECT_EQ(value("Select SubString('abcdef', 2, 3)").toString(), QStringLiteral("bcd"));
    EXPECT_EQ(value("Select SubString('abcdef', 0, 2)").toString(), QStringLiteral("a"));
    EXPECT_EQ(value("Select CharIndex('c', 'abcabc')").toInt(), 3);
    EXPECT_EQ(value("Select PatIndex('%1402%', 'a/1402/b')").toInt(), 3);
    EXPECT_EQ(value("Select PatIndex('%' + SubString('12345', 1, 2) + '%', '/99/12/')").toInt(), 5);
    EXPECT_EQ(value("Select IsNull(NULL, 'z')").toString(), QStringLiteral("z"));
}

TEST_F(Translator, SelectIntoKeepsSourceTypesAndNumbersIdentity) {
    db->execute("Insert Into Asnad (Document, Koll, Moein, Bed) Values ('1', '101', '0002', 5), ('2', '101', '0001', 6)");
    db->execute("Select Koll, Moein, Bed, IDX = Identity(int, 1, 1) Into ##x From Asnad Order By Moein");
    const auto r = rows("Select Moein, IDX From ##x Order By IDX");
    ASSERT_EQ(r.rows.size(), 2u);
    EXPECT_EQ(r.rows[0][0].toString(), QStringLiteral("0001"));
    EXPECT_EQ(r.rows[0][1].toInt(), 1);
    // Text stays text (leading zeros kept) and concatenates; the float column still adds.
    EXPECT_EQ(value("Select Koll + Moein From ##x Where IDX = 1").toString(), QStringLiteral("1010001"));
    EXPECT_EQ(value("Select Count(*) From Tempdb..SysObjects Where Name = '##x'").toInt(), 1);
    EXPECT_EQ(value("Select Col_Length('##x', 'Moein')").toInt(), 4);
}

TEST_F(Translator, TopAliasesUpdateFromJoinAndTruncate) {
    db->execute("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj, Des) Values ('10', '1', 1, 'a'), ('10', '2', 1, 'b')");
    db->execute("Insert Into Asnad (Document, SanadNo, Des) Values ('1', '5', 'old'), ('2', '6', 'old')");
    const auto r = rows("Select Top 1 Kind = WhatDoc, Serial As S From N_NaghdTrans Order By Serial Desc");
    EXPECT_EQ(r.columns, (QStringList{"Kind", "S"}));
    EXPECT_EQ(r.rows.size(), 1u);
    EXPECT_EQ(r.rows[0][1].toString(), QStringLiteral("2"));
    db->execute(
        "Update A Set A.Des = N.Des From Asnad A Inner Join N_NaghdTrans N On (Cast(N.IDX As Varchar(20)) = "
        "LTrim(A.Document)) Where N.Serial = '2'");
    EXPECT_EQ(value("Select Des From Asnad Where Document = '2'").toString(), QStringLiteral("b"));
    EXPECT_EQ(value("Select Des From Asnad Where Document = '1'").toString(), QStringLiteral("old"));
    db->execute("Delete A From Asnad A Join N_NaghdTrans N On N.IDX = A.Document Where N.Serial = '1'");
    EXPECT_EQ(value("Select Count(*) From Asnad").toInt(), 1);
    db->execute("Truncate Table Asnad");
    EXPECT_EQ(value("Select Count(*) From Asnad").toInt(), 0);
}

TEST_F(Translator, IfExistsExecTextAndProcedures) {
    db->execute("Create Table ##t (a Int)");
    db->execute("If Exists(Select [Name] From Tempdb..SysObjects Where [Name] Like '%#t') Drop Table ##t");
    EXPECT_EQ(value("Select Count(*) From Tempdb..SysObjects Where Name = '##t'").toInt(), 0);
    db->execute("If Not Exists(Select * From Tempdb..SysObjects Where [Name] = '##t') Create Table ##t (a Int) "
                "Else Drop Table ##t");
    db->execute("Exec('Insert Into ##t (a) Values (' + '7' + ')')");
    EXPECT_EQ(value("Select a From ##t").toInt(), 7);
    engine->procedures().addProcedure("sp_Echo", [](tr::db::Connection& c, const tr::engine::ProcedureArgs& a) {
        c.execute("Insert Into ##t (a) Values (" + a.at(1).toString() + ")");
        return c.execute("Select '" + a.at(0).toString() + "' As Word");
    });
    EXPECT_EQ(value("Exec sp_Echo 'hi', 8").toString(), QStringLiteral("hi"));
    EXPECT_EQ(value("sp_Echo 'bare', 9").toString(), QStringLiteral("bare"));
    EXPECT_EQ(value("Select Count(*) From ##t").toInt(), 3);
    engine->procedures().addFunction("f_Next", [](tr::db::Connection& c, const tr::engine::ProcedureArgs&) {
        const auto r = c.execute("Select IsNull(Max(a), 0) + 1 From ##t");
        return r.resultSets.front().rows.front().front();
    });
    EXPECT_EQ(value("Select dbo.f_Next()").toInt(), 10);
}

TEST_F(Translator, ProcedureFailureLeavesNothingWritten) {
    engine->procedures().addProcedure("sp_Half", [](tr::db::Connection& c, const tr::engine::ProcedureArgs&) {
        c.execute("Insert Into Asnad (Document) Values ('x')");
        c.execute("Insert Into NoSuchTable (a) Values (1)");
        return tr::db::ExecResult{};
    });
    EXPECT_THROW(db->execute("Exec sp_Half"), DatabaseError);
    EXPECT_EQ(value("Select Count(*) From Asnad").toInt(), 0);
    EXPECT_FALSE(db->inTransaction());
}

TEST_F(Translator, UnsupportedConstructsNameThemselvesAndTheirPosition) {
    struct Case {
        const char* sql;
        const char* named;
        int position;
    };
    const Case cases[] = {
        {"Select Foo(1)", "'Foo' is not a recognized built-in function name", 8},
        {"Declare @x Int", "DECLARE", 1},
        {"Select * From Asnad Where Bed > @limit", "variables (@limit)", 33},
        {"Select Row_Number() Over (Order By IDX) From Asnad", "OVER", 21},
        {"Create View V As Select 1", "CREATE VIEW", 8},
        {"Exec sp_Missing", "Could not find stored procedure 'sp_Missing'", 1},
    };
    for (const Case& c : cases) {
        try {
            db->execute(QString::fromLatin1(c.sql));
            ADD_FAILURE() << c.sql << " was accepted";
        } catch (const DatabaseError& e) {
            EXPECT_TRUE(e.message().contains(QLatin1String(c.named), Qt::CaseInsensitive)) << c.sql << ": " << e.what();
            EXPECT_EQ(e.position(), c.position) << c.sql;
            EXPECT_EQ(e.sql(), QString::fromLatin1(c.sql));
        }
    }
}

TEST_F(Translator, CatalogueViewsAnswerLikeTheServer) {
    EXPECT_EQ(value("Select Count(*) From sysobjects Where XType = 'U' And Name = 'asnad'").toInt(), 1);
    EXPECT_EQ(value("Select Count(*) From syscolumns As C inner join sysobjects As O On(C.[id]=O.[id] And "
                    "O.XType='U' And O.Type='U') where O.[Name]='Asnad' And C.[Name]='Des'")
                  .toInt(),
              1);
    EXPECT_EQ(value("Select Col_Length('Asnad', 'Des')").toInt(), 200);
    EXPECT_TRUE(value("Select Col_Length('Asnad', 'Nothing')").isNull());
}

// The rewritten text of one statement per construct family.
TEST_F(Translator, RewrittenTextByConstructFamily) {
    struct Case {
        const char* tsql;
        const char* sqlite;
    };
    const Case cases[] = {
        {"Select Koll + Moein From Asnad", R"(SELECT "Asnad"."Koll" || "Asnad"."Moein" FROM "main"."Asnad" AS "Asnad";)"},
        {"Select Top 1 Des From Asnad Where LTrim(RTrim(Document)) = '5' Order By IDX Desc",
         R"(SELECT "Asnad"."Des" FROM "main"."Asnad" AS "Asnad" WHERE "Asnad"."Document" COLLATE TSQL = '5' ORDER BY "Asnad"."IDX" DESC LIMIT 1;)"},
        {"Select Count(*) From N_NaghdTrans Where Serial > 9",
         R"(SELECT count(*) FROM "main"."N_NaghdTrans" AS "N_NaghdTrans" WHERE tsql_num("N_NaghdTrans"."Serial") > 9;)"},
        {"Select Koll, IDX = Identity(int, 1, 1) Into ##x From Asnad Order By Koll",
         "CREATE TABLE \"tempdb\".\"##x\" (\"Koll\" VARCHAR(3) COLLATE TSQL, \"IDX\" INTEGER);\n"
         R"(INSERT INTO "tempdb"."##x" ("Koll", "IDX") SELECT "Asnad"."Koll", (row_number() OVER (ORDER BY "Asnad"."Koll") - 1) * 1 + 1 AS "IDX" FROM "main"."Asnad" AS "Asnad" ORDER BY "Asnad"."Koll";)"},
        {"Update A Set A.Des = N.Des From Asnad A Inner Join N_NaghdTrans N On (Cast(N.IDX As Varchar(20)) = "
         "LTrim(A.Document)) Where N.Serial = '2'",
         R"(UPDATE "main"."Asnad" AS "A" SET "Des" = "N"."Des" FROM "main"."N_NaghdTrans" AS "N" WHERE (tsql_varchar("N"."IDX", 20) COLLATE TSQL = "A"."Document") AND ("N"."Serial" COLLATE TSQL = '2');)"},
        {"Delete From Asnad Where Bed + 1 > '5'",
         R"(DELETE FROM "main"."Asnad" WHERE ("main"."Asnad"."Bed" + 1) > 5;)"},
        {"If Exists(Select [Name] From Tempdb..SysObjects Where [Name] Like '%x') Drop Table ##x",
         "-- if (SELECT CASE WHEN EXISTS (SELECT \"SysObjects\".\"name\" FROM temp.\"tr_tempdb_sysobjects\" AS "
         "\"SysObjects\" WHERE \"SysObjects\".\"name\" LIKE '%x') THEN 1 ELSE 0 END) = 1:\n"
         R"(  DROP TABLE "tempdb"."##x";)"},
        {"Select IsNull(Max(Des), '') + 'x', Len(Des) From Asnad Group By Des",
         R"(SELECT ifnull(max("Asnad"."Des"), '') || 'x', length(rtrim("Asnad"."Des", ' ')) FROM "main"."Asnad" AS "Asnad" GROUP BY "Asnad"."Des";)"},
    };
    for (const Case& c : cases) EXPECT_EQ(db->translate(QString::fromUtf8(c.tsql)), QString::fromUtf8(c.sqlite)) << c.tsql;
}

TEST_F(Translator, OrderByNameOfTheSelectListWinsOverTheTables) {
    db->execute("Create Table Doc (IDX Int, SanadDate Varchar(10))");
    db->execute("Create Table Line (Document Int, SanadDate Varchar(10))");
    db->execute("Insert Into Doc Values (1, '1404/01/01'), (2, '1404/01/05')");
    db->execute("Insert Into Line Values (1, '1404/02/01'), (2, '1404/01/02')");
    const auto r = rows("Select L.SanadDate, D.IDX From Doc D Join Line L On L.Document = D.IDX Order By SanadDate");
    ASSERT_EQ(r.rows.size(), 2u);
    EXPECT_EQ(r.rows[0][1].toInt(), 2);  // by the line's date, the one the select returns
}

TEST_F(Translator, TrimmedTextInANumberListStillFindsItsRows) {
    db->execute("Create Index IX_Doc On Asnad (Document)");
    db->execute("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj) Values ('10', '7', 1), ('10', '7', 2)");
    db->execute("Insert Into Asnad (Document, Des) Values ('1', 'a'), ('2', 'b'), ('3', 'c')");
    const QString sql = "Select Count(*) From Asnad Where ltrim(rtrim(Document)) In (Select IDX From N_NaghdTrans "
                        "Where ltrim(rtrim(Serial)) = '7' And WhatDoc = '10')";
    EXPECT_EQ(value(sql).toInt(), 2);
    EXPECT_TRUE(db->explainQueryPlan(sql).contains("SEARCH Asnad")) << db->explainQueryPlan(sql).toStdString();
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

