// The runtime helpers on the server answer as the embedded engine's do: the same T-SQL runs on
// both (translated with each one's writer) and gives the same values and the same messages.
// Also: each helper takes every type of argument the server may pass without an ambiguous call,
// and the catalogue and session helpers read the server's own catalogue.
#include "db/pg/pg_runtime.h"

#include <gtest/gtest.h>

#include <QHash>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/engine/parser.h"
#include "db/engine/sqlite_connection.h"
#include "db/engine/translator.h"
#include "db/pg/pg_link.h"
#include "db/pg/pg_writer.h"
#include "db/pg/tests/pg_fixture.h"

namespace tr::pg {
namespace {

using tr::engine::ColumnInfo;
using tr::engine::SqlType;

// The tables a test made on the server, as a catalogue would answer for them.
class KnownTables : public tr::engine::Catalog {
  public:
    QString schemaForDatabase(const QString&, int) override { return schema; }
    std::vector<ColumnInfo> columns(const QString&, const QString& table) override {
        return tables.value(table.toLower());
    }
    QString schema = QStringLiteral("public");
    QHash<QString, std::vector<ColumnInfo>> tables;
};

// What a statement gave: the first value of its last rows, or the message it failed with.
struct Answer {
    QVariant value;
    QString error;
    QString state;  // the server's SQLSTATE of the failure
};

// A value as both backends can give it: numbers by value whatever their type (the server reads
// a decimal as a double), texts quoted.
QString shown(const Answer& a) {
    if (!a.error.isEmpty()) return QStringLiteral("error: ") + a.error;
    if (a.value.isNull()) return QStringLiteral("null");
    switch (a.value.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
            return QString::number(a.value.toLongLong());
        case QMetaType::Double:
            return QString::number(a.value.toDouble(), 'g', 15);
        default:
            return QLatin1Char('\'') + a.value.toString() + QLatin1Char('\'');
    }
}

QString quoted(const char* text) {
    return QStringLiteral("N'") + QString::fromUtf8(text).replace(QLatin1Char('\''), QLatin1String("''")) +
           QLatin1Char('\'');
}

class PgRuntimeTest : public testing::PgDatabaseTest {
  protected:
    PgRuntimeTest() : PgDatabaseTest("runtime") {}
    void SetUp() override {
        PgDatabaseTest::SetUp();
        installRuntime(*link);
        installRuntime(*link);  // a second time changes nothing
        ASSERT_TRUE(dir.isValid());
        engine = std::make_unique<tr::engine::Engine>(dir.path());
        book = engine->open(QStringLiteral("Corvask_1_1404"));
    }

    Answer answer(const std::function<std::vector<tr::db::ResultSet>()>& run) {
        Answer a;
        try {
            for (const tr::db::ResultSet& rows : run())
                if (!rows.rows.empty()) a.value = rows.rows.front().front();
        } catch (const tr::db::DatabaseError& e) {
            a.error = e.message();
            a.state = link->lastState();
        }
        return a;
    }
    Answer onEngine(const QString& tsql) {
        return answer([&] { return book->execute(tsql).resultSets; });
    }
    // Translated with PostgreSQL's writer.
    Answer onServer(const QString& tsql) {
        return answer([&] {
            std::vector<tr::db::ResultSet> sets;
            for (const auto& statement : tr::engine::parseBatch(tsql)) {
                const auto step = tr::engine::translateStatement(*statement, catalog, tsql, postgresWriter());
                for (const QString& sql : step.sql)
                    for (tr::db::ResultSet& rows : link->run(sql, {}, tsql).resultSets) sets.push_back(rows);
            }
            return sets;
        });
    }
    Answer sql(const QString& text) {
        return answer([&] { return link->run(text).resultSets; });
    }

    // Both give the same; a failure on the server is of class 22, data exceptions.
    void expectAlike(const QString& tsql) {
        const Answer actual = onServer(tsql);
        EXPECT_EQ(shown(actual).toStdString(), shown(onEngine(tsql)).toStdString()) << tsql.toStdString();
        if (!actual.error.isEmpty()) {
            EXPECT_TRUE(actual.state.startsWith(QLatin1String("22"))) << tsql.toStdString();
        }
    }
    void expectAlike(std::initializer_list<const char*> statements) {
        for (const char* tsql : statements) expectAlike(QString::fromUtf8(tsql));
    }

    QTemporaryDir dir;
    std::unique_ptr<tr::engine::Engine> engine;
    std::unique_ptr<tr::engine::SqliteConnection> book;
    KnownTables catalog;
};

TEST_F(PgRuntimeTest, LikeMatchesAsOnTheEngine) {
    struct Case {
        const char* text;
        const char* pattern;
        const char* escape = nullptr;
    };
    const Case cases[] = {
        {"abc", "a_c"}, {"ac", "a_c"}, {"", "%"}, {"", "_"}, {"abcbd", "a%b"}, {"mississippi", "%iss%ppi"},
        {"ABC", "a%c"}, {"abc", "A%C"},
        // sets and ranges, folded as the text is; a range from high to low holds nothing
        {"B", "[a-c]"}, {"b", "[A-C]"}, {"d", "[a-c]"}, {"d", "[^a-c]"}, {"b", "[^a-c]"}, {"-", "[a-]"},
        {"-", "[-a]"}, {"b", "[c-a]"}, {"b", "[^c-a]"}, {"x", "[^]"}, {"^", "[^^]"}, {"]", "[]]"},
        {"[]]", "[]]"}, {"[", "["}, {"a[]b", "a[]b"}, {"x", "[%_]"}, {"_", "[%_]"}, {"\\", "[\\]"},
        {"د", "[ا-ی]"},
        // what a regular expression would read as its own
        {"abc", "a.c"}, {"a*c", "a*c"}, {"aac", "a*c"}, {"(a)|b{2}", "(a)|b{2}"}, {"$^+?", "$^+?"},
        {"a1", "a\\d"},
        // escapes: none inside a set, one at the end is itself, compared before folding
        {"10%", "10!%", "!"}, {"100", "10!%", "!"}, {"a_bc", "a!_%", "!"}, {"[", "![", "!"}, {"a!", "a!", "!"},
        {"a!b", "a[!]b", "!"}, {"ab", "aAb", "A"}, {"a%", "a\\%", "\\"},
        // Arabic and Persian yeh and kaf; blanks are characters like any other
        {"كتاب", "کتاب"}, {"کتاب", "كتاب"}, {"علي", "%ی"}, {"علی", "%ي"}, {"على", "%ی"}, {"كيك", "[ک][ی]_"},
        {"ab", "ab "}, {"ab ", "ab"}, {"سلام عليكم", "%ی_م"}, {"XYZ", "%y%"}, {"a.b", "a%.%"},
        // null, and an escape of other than one character
        {nullptr, "a"}, {"a", nullptr}, {"a", "a", "xy"}, {"a", "a", ""},
    };
    // A pattern given as a parameter is matched as the writer spells it then: made once into a
    // regular expression over the text as it is (or over folded text for a set), in a plan kept
    // for any parameters too.
    const QString byParameter = QStringLiteral("SELECT CASE WHEN %1 THEN 1 WHEN NOT (%1) THEN 0 END")
                                    .arg(postgresWriter().like(QStringLiteral("$1::text"), QStringLiteral("$2"), {}, false));
    for (const Case& c : cases) {
        QString condition = (c.text ? quoted(c.text) : QStringLiteral("Null")) + QStringLiteral(" Like ") +
                            (c.pattern ? quoted(c.pattern) : QStringLiteral("Null"));
        if (c.escape) condition += QStringLiteral(" Escape ") + quoted(c.escape);
        const QString tsql = QStringLiteral("Select Case When %1 Then 1 When Not (%1) Then 0 End").arg(condition);
        expectAlike(tsql);
        if (c.escape) continue;
        const std::vector<QVariant> values = {c.text ? QVariant(QString::fromUtf8(c.text)) : QVariant(),
                                              c.pattern ? QVariant(QString::fromUtf8(c.pattern)) : QVariant()};
        const std::string expected = shown(onEngine(tsql)).toStdString();
        for (const char* mode : {"force_custom_plan", "force_generic_plan"}) {
            link->run(QStringLiteral("SET plan_cache_mode = ") + QLatin1String(mode));
            const Answer given = answer([&] { return link->runPrepared(byParameter, values).resultSets; });
            EXPECT_EQ(shown(given).toStdString(), expected) << tsql.toStdString() << " " << mode;
        }
    }
    link->run(QStringLiteral("RESET plan_cache_mode"));
    // Patterns that make a backtracking matcher explode, over a long text.
    link->run(QStringLiteral("SET statement_timeout = '20s'"));
    const QString text = quoted(QByteArray(20000, 'a').constData());
    for (const QString& pattern : {QStringLiteral("%_%_%_%_%_z%"), QStringLiteral("%a").repeated(30) + QLatin1Char('b'),
                                   QStringLiteral("[a-c]%").repeated(2000)})
        expectAlike(QStringLiteral("Select Case When %1 Like '%2' Then 1 Else 0 End").arg(text, pattern));
}

TEST_F(PgRuntimeTest, HelpersOnColumnsOfTheCollationAndOnNumbers) {
    const QString create = QStringLiteral("Create Table D (Des NVarchar(50) Null, Num Int Null, Amount Float Null)");
    const QString insert = QStringLiteral(
        "Insert Into D (Des, Num, Amount) Values (N'صندوق كرمان', 120, 1.5); "
        "Insert Into D (Des, Num, Amount) Values (N'Bank [Main] 10%', 7, 2); "
        "Insert Into D (Des, Num, Amount) Values (Null, Null, Null)");
    catalog.tables.insert(QStringLiteral("d"), {{QStringLiteral("Des"), QStringLiteral("NVARCHAR(50)"), SqlType::Text},
                                                {QStringLiteral("Num"), QStringLiteral("INT"), SqlType::Integer},
                                                {QStringLiteral("Amount"), QStringLiteral("FLOAT"), SqlType::Real}});
    for (const QString& tsql : {create, insert}) {
        book->execute(tsql);
        ASSERT_EQ(onServer(tsql).error, QString());
    }
    expectAlike({"Select Count(*) From D Where Des Like N'%کرمان'", "Select Count(*) From D Where Des Like 'bank%'",
                 "Select Count(*) From D Where Des Like '%[[]main]%'",
                 "Select Count(*) From D Where Des Like '%10!%' Escape '!'",
                 "Select Count(*) From D Where Des Not Like '%a%'", "Select Count(*) From D Where Num Like '12%'",
                 "Select Count(*) From D Where Amount Like '1.5'",
                 "Select Count(*) From D Where PatIndex('%[0-9]%', Des) = 13",
                 "Select Count(*) From D Where CharIndex(N'ک', Des) = 7",
                 "Select Count(*) From D Where Replace(Des, 'MAIN', 'x') = 'Bank [x] 10%'",
                 "Select Substring(Des, 0, 4) + Right(Num, 1) + Cast(Amount As Varchar(5)) From D Where Num = 7"});
}

TEST_F(PgRuntimeTest, StringFunctionsAgreeWithTheEngine) {
    expectAlike({
        // a start before 1 counts the characters before the text
        "Select Substring('abcdef', 0, 3)", "Select Substring('abcdef', -2, 5)", "Select Substring('abcdef', -5, 3)",
        "Select Substring('abcdef', 5, 10)", "Select Substring('abcdef', 9, 2)", "Select Substring(12345, 0, 3)",
        "Select Substring('abc', 0, -1)", "Select Left(N'کتاب', 2)", "Select Left('abc', -1)",
        "Select Right('ab', 5)", "Select Right(12345, 2)", "Select Right('abc', -1)",
        // CharIndex folds case, yeh and kaf; a start before 1 is 1
        "Select CharIndex('B', 'abcabc')", "Select CharIndex('b', 'abcabc', 3)", "Select CharIndex('b', 'abcabc', -4)",
        "Select CharIndex('c', 'abc', 10)", "Select CharIndex('', 'abc')", "Select CharIndex(N'ك', N'یکي')",
        "Select CharIndex('a ', 'ba')", "Select CharIndex(Null, 'abc')",
        "Select PatIndex('%b_d%', 'aabcd')", "Select PatIndex('b%', 'abc')", "Select PatIndex('%', 'abc')",
        "Select PatIndex('%', '')", "Select PatIndex('%c', 'abcabc')", "Select PatIndex('%[^a-c]%', 'abcxd')",
        "Select PatIndex(N'%ی%', N'علي')", "Select PatIndex('%.%', 'ab.c')",
        // Replace matches under the collation and keeps the rest as it is
        "Select Replace('Abcabc', 'B', 'x')", "Select Replace(N'علي علی', N'ی', 'Y')",
        "Select Replace(N'كتاب کتاب', N'ک', N'گ')", "Select Replace('a.b.c', '.', '\\1&')",
        "Select Replace('aaa', 'aa', 'b')", "Select Replace('abc', '', 'x')", "Select Replace('a*b', '*', '$0')",
        "Select Replace('abc', 'b', Null)",
        "Select Replicate('ab', 3)", "Select Replicate('ab', -1)", "Select Len(Replicate('x', 9000))",
        "Select Space(3) + '|'",
        // to text: a number too long for its width is *; doubles as the engine writes them
        "Select Cast('abcdef' As Varchar(3))", "Select Cast(12345 As Varchar(3))", "Select Cast(1.5 As Varchar(2))",
        "Select Str(1.5)", "Select Cast(0.0001 As Varchar(20))", "Select Cast(0.00012 As Varchar(20))",
        "Select Cast(-0.5 As Varchar(10))", "Select Cast(123456789012345.6 As Varchar(30))",
        "Select Cast(1e15 As Varchar(30))", "Select Cast(2.5e20 As Varchar(30))", "Select Cast(1.5e-7 As Varchar(30))",
        "Select Cast(12345678901234567890.0 As Varchar(30))",
    });
}

TEST_F(PgRuntimeTest, NumbersAgreeWithTheEngine) {
    expectAlike({
        "Select Cast(' 12 ' As Int)", "Select Cast('+7' As Int)", "Select Cast('' As Int)", "Select Cast(-12.7 As Int)",
        "Select Cast('1e5' As Float)", "Select Cast('.5' As Float)", "Select Cast('12.50' As Decimal(18, 2))",
        "Select Cast(Null As Int)",
        // conversions refused with the engine's messages
        "Select Cast('abc' As Int)", "Select Cast('12.5' As Int)", "Select Cast('1e5' As Int)",
        "Select Cast(' x ' As Float)", "Select Cast('1e400' As Float)", "Select Cast('9223372036854775808' As Int)",
        // Round halves away from zero; a third argument other than 0 cuts instead
        "Select Round(2.5, 0)", "Select Round(-2.5, 0)", "Select Round(1234.5678, 2)", "Select Round(1234.5678, 2, 1)",
        "Select Round(-1234.5678, 2, 1)", "Select Round(1234.5678, -2)", "Select Round(1250, -2)",
        "Select Round(-1250, -2)", "Select Round(1299, -2, 1)", "Select Round(Null, 2)",
        // IsNumeric: blank text is no number, an exponent is, a sign or currency alone is not
        "Select IsNumeric('')", "Select IsNumeric('   ')", "Select IsNumeric('1e5')", "Select IsNumeric('1E+05')",
        "Select IsNumeric('$')", "Select IsNumeric(' 12 ')", "Select IsNumeric('.5')", "Select IsNumeric('5.')",
        "Select IsNumeric('.')", "Select IsNumeric('-')", "Select IsNumeric('1,000')", "Select IsNumeric('0x10')",
        "Select IsNumeric('1e400')", "Select IsNumeric('inf')", "Select IsNumeric(N'۱۲')", "Select IsNumeric(1.5)",
        "Select IsNumeric(Null)",
    });
}

// The helpers the translation calls where it cannot tell an operand's type, with each type the
// server may hand them: literals, nulls, and columns of each kind a table has.
TEST_F(PgRuntimeTest, EveryArgumentTypeFindsItsHelper) {
    link->run(QStringLiteral(
        "CREATE TABLE kinds (t varchar(20) COLLATE tsql, i integer, b bigint, s smallint, n numeric(18,4), "
        "d double precision, blank varchar(20) COLLATE tsql, big bigint); "
        "INSERT INTO kinds VALUES (' 12 ', 5, 7, 3, 12.5, 2.5, '', 9007199254740993)"));
    const std::pair<const char*, const char*> cases[] = {
        // + of two texts joins them; of a text and a number, adds
        {"tsql_add('1', 2)", "3"}, {"tsql_add(1.5, 2)", "3.5"}, {"tsql_add(NULL, 'x')", "null"},
        {"tsql_add('a', 'b')", "'ab'"}, {"tsql_add(t, i)", "17"}, {"tsql_add(d, t)", "14.5"},
        {"tsql_add(t, t)", "' 12  12 '"}, {"tsql_add(i, b)", "12"}, {"tsql_add(s, s)", "6"}, {"tsql_add(n, d)", "15"},
        {"tsql_add(blank, i)", "5"}, {"tsql_add('x', NULL::integer)", "null"}, {"tsql_add(b, big)", "9007199254741000"},
        {"tsql_add(d, 'x')", "error: Conversion failed when converting the varchar value 'x' to data type int."},
        // / of integers or their texts is an integer, cut toward zero
        {"tsql_divide(-7, 2)", "-3"}, {"tsql_divide('7', 2)", "3"}, {"tsql_divide('-7', '2')", "-3"},
        {"tsql_divide('7.0', 2)", "3.5"}, {"tsql_divide(7, '2.0')", "3.5"}, {"tsql_divide(t, i)", "2"},
        {"tsql_divide(d, i)", "0.5"}, {"tsql_divide(n, s)", "4.16666666666667"}, {"tsql_divide(NULL, 0)", "null"},
        {"tsql_divide(i, 0)", "error: Divide by zero error encountered."},
        {"tsql_divide(t, 0.0)", "error: Divide by zero error encountered."},
        {"tsql_divide(1.5, '')", "error: Divide by zero error encountered."},
        {"tsql_num('12')", "12"}, {"tsql_num(t)", "12"}, {"tsql_num(n)", "12.5"}, {"tsql_num(NULL)", "null"},
        {"tsql_num(blank)", "0"}, {"tsql_int(t)", "12"}, {"tsql_int(n)", "12"}, {"tsql_int(-2.5::float8)", "-2"},
        {"tsql_substring(t, 2, 3)", "'12 '"}, {"tsql_substring(i, 1, 1)", "'5'"}, {"tsql_substring(n, 1, 9)", "'12.5'"},
        {"tsql_right(b, 2)", "'7'"}, {"tsql_varchar(d, 30)", "'2.5'"}, {"tsql_varchar(i, 0)", "'*'"},
        {"tsql_varchar(t, 2)", "' 1'"}, {"tsql_varchar(big, -1)", "'9007199254740993'"}, {"tsql_replicate(i, 2)", "'55'"},
        {"tsql_like(i, '5')::integer", "1"}, {"tsql_like(d, '2._')::integer", "1"}, {"tsql_like(t, '!%', '!')::integer", "0"},
        {"tsql_charindex('2', t, NULL)", "3"}, {"tsql_patindex('%2%', t)", "3"}, {"tsql_replace(t, '1', 'x')", "' x2 '"},
        {"tsql_isnumeric(t)", "1"}, {"tsql_isnumeric(d)", "1"}, {"tsql_isnumeric(blank)", "0"},
        {"tsql_round(i, -1, 0)", "10"}, {"tsql_round(n, 0, 0)", "13"}, {"tsql_round(d, 0, 0)", "3"},
        {"tsql_round(t, 0, 0)", "12"}, {"tsql_round(s, -1, 0)", "0"}, {"tsql_round('12.345', 2, 1)", "12.34"},
        {"tsql_intkey(t)", "12"}, {"tsql_intkey(b)", "7"}, {"tsql_intkey('+12')", "null"}, {"tsql_intkey('1.0')", "null"},
        {"tsql_intkey(' -9223372036854775808 ')", "-9223372036854775808"}, {"tsql_intkey('9223372036854775808')", "null"},
        // a value on its way into a column keeps all its digits
        {"tsql_fit(big, 0)", "9007199254740993"}, {"tsql_fit(n, 0)", "12.5"}, {"tsql_fit(i, 0)", "5"},
        {"tsql_fit(t, 3)", "' 12'"},
    };
    for (const auto& [expression, expected] : cases) {
        const Answer a = sql(QStringLiteral("SELECT %1 FROM kinds").arg(QLatin1String(expression)));
        EXPECT_EQ(shown(a).toStdString(), expected) << expression;
        if (!a.error.isEmpty()) {
            EXPECT_TRUE(a.state.startsWith(QLatin1String("22"))) << expression;
        }
    }
    EXPECT_EQ(sql(QStringLiteral("SELECT pg_typeof(tsql_add(i, i))::text FROM kinds")).value.toString(),
              QStringLiteral("integer"));
}

TEST_F(PgRuntimeTest, ColumnLengthsAndObjectsFromTheCatalogue) {
    // The book is a schema of its own, the current one.
    link->run(QStringLiteral("CREATE SCHEMA corvask_1_1404; SET search_path = corvask_1_1404, public"));
    catalog.schema = QStringLiteral("corvask_1_1404");
    const QString create = QStringLiteral(
        "Create Table N_Cash (IDX Int Identity(1,1), CashCod Varchar(10) Not Null, CashNam NVarchar(50) Null, "
        "Amount Float Null, Rate Decimal(18,4) Null, Qty Decimal(5,0) Null, Big BigInt Null, "
        "Small SmallInt Null, Dat DateTime Null, Memo Text Null)");
    book->execute(create);
    ASSERT_EQ(onServer(create).error, QString());
    // As the engine answers, whatever the case of the names and the form of the book's name.
    expectAlike({"Select Col_Length('n_cash', 'CASHCOD')", "Select Col_Length('Corvask_1_1404..N_Cash', 'Small')",
                 "Select Col_Length('Corvask_1_1404.dbo.N_Cash', 'Amount')", "Select Col_Length('dbo.N_Cash', 'Big')",
                 "Select Col_Length('N_Cash', 'Memo')", "Select Col_Length('N_Cash', 'Nothing')",
                 "Select Col_Length('Nothing', 'CashCod')", "Select Col_Length(Null, 'CashCod')"});
    // Where the server's types tell more than the engine's declared types: a decimal by its
    // precision and a date as SQL Server gives them; but a national text and an Int key are a
    // varchar and a bigint on the server.
    for (const auto& [column, length] : {std::pair{"Rate", 9}, std::pair{"Qty", 5}, std::pair{"Dat", 8},
                                         std::pair{"CashNam", 50}, std::pair{"IDX", 8}}) {
        EXPECT_EQ(onServer(QStringLiteral("Select Col_Length('N_Cash', '%1')").arg(QLatin1String(column))).value,
                  QVariant(qint64(length)))
            << column;
    }

    // Object_Id: the table's own number, the same on every call; null for what is not a table.
    const QVariant id = onServer(QStringLiteral("Select Object_Id('N_CASH')")).value;
    EXPECT_EQ(id, sql(QStringLiteral("SELECT 'corvask_1_1404.n_cash'::regclass::oid::bigint")).value);
    EXPECT_EQ(id, onServer(QStringLiteral("Select Object_Id('Corvask_1_1404..n_cash')")).value);
    link->run(QStringLiteral("CREATE INDEX n_cash__code ON n_cash (cashcod)"));
    for (const char* absent : {"Object_Id('Nothing')", "Object_Id('Other..N_Cash')", "Object_Id('##N_Cash')",
                               "Object_Id('n_cash__code')", "Object_Id(Null)"}) {
        EXPECT_TRUE(onServer(QStringLiteral("Select %1").arg(QLatin1String(absent))).value.isNull()) << absent;
    }

    // ## tables live in tempdb, # tables among the session's own.
    link->run(QStringLiteral("CREATE SCHEMA tempdb; CREATE TABLE tempdb.\"##list\" (code varchar(7)); "
                             "CREATE TEMPORARY TABLE \"#work\" (id bigint)"));
    EXPECT_EQ(sql(QStringLiteral("SELECT tsql_col_length('##List', 'Code')")).value, QVariant(qint64(7)));
    EXPECT_EQ(sql(QStringLiteral("SELECT tsql_col_length('tempdb..##List', 'code')")).value, QVariant(qint64(7)));
    EXPECT_EQ(sql(QStringLiteral("SELECT tsql_col_length('#Work', 'ID')")).value, QVariant(qint64(8)));
    EXPECT_FALSE(sql(QStringLiteral("SELECT tsql_object_id('#work')")).value.isNull());
}

TEST_F(PgRuntimeTest, TheSessionsDatabaseKeyAndClock) {
    link->run(QStringLiteral("CREATE SCHEMA corvask_1_1404; SET search_path = corvask_1_1404, public"));
    EXPECT_EQ(onServer(QStringLiteral("Select DB_Name()")).value.toString(), QStringLiteral("corvask_1_1404"));

    EXPECT_TRUE(onServer(QStringLiteral("Select Scope_Identity()")).value.isNull());  // nothing inserted yet
    link->run(QStringLiteral("CREATE TABLE t (idx bigint GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY, v integer); "
                             "INSERT INTO t (v) VALUES (1), (2)"));
    EXPECT_EQ(onServer(QStringLiteral("Select Scope_Identity()")).value.toLongLong(), 2);

    // The engine's text form, and one time for the whole statement.
    const QRegularExpression form(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}$"));
    for (const Answer& now : {onServer(QStringLiteral("Select GetDate()")), onEngine(QStringLiteral("Select GetDate()"))})
        EXPECT_TRUE(form.match(now.value.toString()).hasMatch()) << now.value.toString().toStdString();
    EXPECT_EQ(sql(QStringLiteral("SELECT count(DISTINCT tsql_getdate()) FROM generate_series(1, 20000)")).value,
              QVariant(qint64(1)));
}

}  // namespace
}  // namespace tr::pg
