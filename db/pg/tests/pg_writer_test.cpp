// T-SQL translated with PostgreSQL's writer runs on the server: a table's types and identity
// key, an index, names whatever their case, the tsql collation (Arabic and Persian kaf alike),
// ^, and values fitted to their columns with the embedded engine's messages.
#include "db/pg/pg_writer.h"

#include <gtest/gtest.h>

#include <QHash>

#include "common/db/database_error.h"

#include "db/engine/parser.h"
#include "db/engine/translator.h"
#include "db/pg/pg_link.h"
#include "db/pg/pg_runtime.h"
#include "db/pg/tests/pg_fixture.h"

namespace tr::pg {
namespace {

using tr::engine::ColumnInfo;
using tr::engine::SqlType;

// The tables the test made, as a catalogue would answer for them.
class KnownTables : public tr::engine::Catalog {
  public:
    QString schemaForDatabase(const QString&, int) override { return QStringLiteral("public"); }
    std::vector<ColumnInfo> columns(const QString&, const QString& table) override {
        return tables.value(table.toLower());
    }
    QHash<QString, std::vector<ColumnInfo>> tables;
};

class PgWriterTest : public testing::PgDatabaseTest {
  protected:
    PgWriterTest() : PgDatabaseTest("writer") {}
    void SetUp() override {
        PgDatabaseTest::SetUp();
        installRuntime(*link);
        installRuntime(*link);  // a second time changes nothing
    }
    // Translates a T-SQL batch with PostgreSQL's writer and runs what it gives; the last rows.
    std::vector<tr::db::Row> run(const QString& tsql) {
        std::vector<tr::db::Row> rows;
        for (const auto& statement : tr::engine::parseBatch(tsql)) {
            const tr::engine::Step step =
                tr::engine::translateStatement(*statement, catalog, tsql, postgresWriter());
            for (const QString& sql : step.sql) {
                const auto result = link->run(sql, {}, tsql);
                if (!result.resultSets.empty()) rows = result.resultSets.front().rows;
            }
        }
        return rows;
    }
    KnownTables catalog;
};

TEST_F(PgWriterTest, TranslatedStatementsRunOnTheServer) {
    run(QStringLiteral("Create Table N_Cash (IDX Int Identity(1,1), CashCod Varchar(10) Not Null, "
                       "CashNam NVarchar(50) Null, Amount Float Null, Rate Decimal(18,4) Null)"));
    run(QStringLiteral("Create Index IX_Name On N_Cash (CashNam)"));
    link->run(QStringLiteral("INSERT INTO n_cash (cashcod, cashnam, amount, rate) VALUES "
                             "('1', $1, 12.5, 3.25), ('2', $2, 1, 1)"),
              {QStringLiteral("صندوق كرمان"), QStringLiteral("صندوق تهران")});
    catalog.tables.insert(QStringLiteral("n_cash"),
                          {{QStringLiteral("IDX"), QStringLiteral("INT"), SqlType::Integer, true},
                           {QStringLiteral("CashCod"), QStringLiteral("VARCHAR(10)"), SqlType::Text},
                           {QStringLiteral("CashNam"), QStringLiteral("NVARCHAR(50)"), SqlType::Text},
                           {QStringLiteral("Amount"), QStringLiteral("FLOAT"), SqlType::Real},
                           {QStringLiteral("Rate"), QStringLiteral("DECIMAL(18,4)"), SqlType::Real}});

    // Typed with the Persian kaf, stored with the Arabic one; the names in any case.
    const auto found = run(QStringLiteral("Select IDX, cashnam, Amount * Rate As Worth From n_CASH "
                                          "Where CashNam = N'صندوق کرمان'"));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0][0].toLongLong(), 1);  // the identity numbered the rows
    EXPECT_EQ(found[0][1].toString(), QStringLiteral("صندوق كرمان"));
    EXPECT_DOUBLE_EQ(found[0][2].toDouble(), 40.625);
    EXPECT_EQ(run(QStringLiteral("Select Count(*) From N_Cash Where CashCod In ('1', '2')"))[0][0].toLongLong(), 2);
    EXPECT_EQ(run(QStringLiteral("Select 12 ^ 10"))[0][0].toLongLong(), 6);
    EXPECT_EQ(single(QStringLiteral("SELECT count(*) FROM pg_indexes WHERE indexname = 'n_cash__ix_name'"))
                  .toLongLong(),
              1);
}

TEST_F(PgWriterTest, ValuesAreFittedToTheirColumnsAsTheEngineFitsThem) {
    run(QStringLiteral("Create Table T (Code Varchar(3) Null, Amount Float Null)"));
    catalog.tables.insert(QStringLiteral("t"),
                          {{QStringLiteral("Code"), QStringLiteral("VARCHAR(3)"), SqlType::Text},
                           {QStringLiteral("Amount"), QStringLiteral("FLOAT"), SqlType::Real}});
    run(QStringLiteral("Insert Into T (Code, Amount) Values ('ab   ', 1.5)"));  // blanks may go
    EXPECT_EQ(run(QStringLiteral("Select Code + '|' From T"))[0][0].toString(), QStringLiteral("ab |"));
    try {
        run(QStringLiteral("Insert Into T (Code) Values ('abcd')"));
        FAIL() << "a text wider than its column was written";
    } catch (const tr::db::DatabaseError& e) {
        EXPECT_EQ(e.message(), QStringLiteral("String or binary data would be truncated."));
        EXPECT_EQ(e.sql(), QStringLiteral("Insert Into T (Code) Values ('abcd')"));
    }
    EXPECT_EQ(single(QStringLiteral("SELECT count(*) FROM t")).toLongLong(), 1);
}

}  // namespace
}  // namespace tr::pg
