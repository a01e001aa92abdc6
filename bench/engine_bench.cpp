// The embedded engine against SQLite used by hand: translation cost (uncached and cached), a point
// query and an aggregate over 1,000,000 voucher lines.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QDir>
#include <QTemporaryDir>
#include <QVariant>
#include <memory>

#include "bench/collation_before.h"
#include "common/text/tsql_collation.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"

namespace {

constexpr int kRows = 1000000;

// One data directory with Asnad filled once for all benchmarks of the run.
struct Book {
    QTemporaryDir dir;
    std::unique_ptr<tr::engine::Engine> engine;
    std::unique_ptr<tr::engine::SqliteConnection> db;
    sqlite3* raw = nullptr;
    sqlite3* rawBefore = nullptr;  // the same file, its collation comparing as it did before

    Book() {
        engine = std::make_unique<tr::engine::Engine>(dir.path());
        db = engine->open(QStringLiteral("Corvask_1_1404"));
        db->execute(QStringLiteral(
            "Create Table Asnad (REC Int Identity(1,1) Primary Key, TypeSys Varchar(1), WhatDoc Varchar(2), "
            "Document Varchar(20), SanadNo Int, SanadDate Varchar(10), Raj Int, Koll Varchar(3), Moein Varchar(4), "
            "Des NVarchar(200), Bed Float, Bes Float, AtfCh Varchar(20))"));
        db->execute(QStringLiteral("Create Index IX_Doc On Asnad (Document)"));
        sqlite3_open(engine->databaseFile(QStringLiteral("Corvask_1_1404")).toUtf8().constData(), &raw);
        // The same collation the engine registers, so both sides compare text alike.
        sqlite3_create_collation(raw, "TSQL", SQLITE_UTF8, nullptr, [](void*, int an, const void* a, int bn, const void* b) {
            return tr::text::tsqlCompareUtf8(static_cast<const char*>(a), an, static_cast<const char*>(b), bn);
        });
        sqlite3_exec(raw, "PRAGMA journal_mode=WAL; BEGIN", nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(raw,
                           "INSERT INTO Asnad (TypeSys, WhatDoc, Document, SanadNo, SanadDate, Raj, Koll, Moein, Des, "
                           "Bed, Bes) VALUES ('N', ?1, ?2, ?3, ?4, ?5, ?6, '0001', ?7, ?8, ?9)",
                           -1, &insert, nullptr);
        static const char* kinds[] = {"10", "20", "40", "50", "60", "90"};
        static const char* kolls[] = {"101", "102", "104", "202", "401", "501"};
        for (int i = 0; i < kRows; ++i) {
            const std::string document = std::to_string(i + 1);
            const std::string date = "1404/" + std::string(i % 12 < 9 ? "0" : "") + std::to_string(i % 12 + 1) + "/" +
                                     std::string(i % 28 < 9 ? "0" : "") + std::to_string(i % 28 + 1);
            sqlite3_bind_text(insert, 1, kinds[i % 6], -1, SQLITE_STATIC);
            sqlite3_bind_text(insert, 2, document.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int(insert, 3, i / 3 + 1);
            sqlite3_bind_text(insert, 4, date.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int(insert, 5, i % 3 + 1);
            sqlite3_bind_text(insert, 6, kolls[i % 6], -1, SQLITE_STATIC);
            sqlite3_bind_text(insert, 7, "بابت دريافت وجه نقد", -1, SQLITE_STATIC);
            sqlite3_bind_double(insert, 8, i % 2 ? 1000.0 * (i % 97) : 0.0);
            sqlite3_bind_double(insert, 9, i % 2 ? 0.0 : 1000.0 * (i % 89));
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(raw, "COMMIT; ANALYZE", nullptr, nullptr, nullptr);
        // The indexed and grouped columns hold ASCII, which both orders sort alike.
        sqlite3_open(engine->databaseFile(QStringLiteral("Corvask_1_1404")).toUtf8().constData(), &rawBefore);
        sqlite3_create_collation(rawBefore, "TSQL", SQLITE_UTF8, nullptr,
                                 [](void*, int an, const void* a, int bn, const void* b) {
                                     return tr::bench::compareBefore(static_cast<const char*>(a), an,
                                                                     static_cast<const char*>(b), bn);
                                 });
    }
    ~Book() {
        sqlite3_close(rawBefore);
        sqlite3_close(raw);
    }
};

Book& book() {
    static Book instance;
    return instance;
}

const char* const kStatements[] = {
    "Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, A.Bed From Asnad As A Where A.TypeSys='N' And A.WhatDoc='10' "
    "And A.Bed>0 And LTrim(A.Document)='12345'",
    "Select Koll + Moein As Hesab, Sum(Bed) - Sum(Bes) As Mandeh From Asnad Where SanadDate Between '1404/01/01' "
    "And '1404/06/31' Group By Koll + Moein Order By Hesab",
    "Select Top 1 SanadDate From Asnad Where SanadNo='77'",
    "Update Asnad Set Des = Des + ' (اصلاح)' Where Document In (Select Document From Asnad Where SanadNo = 5)",
};

void BM_TranslateUncached(benchmark::State& state) {
    auto& db = *book().db;
    const QString sql = QString::fromUtf8(kStatements[state.range(0)]);
    for (auto _ : state) benchmark::DoNotOptimize(db.translate(sql));
}
BENCHMARK(BM_TranslateUncached)->DenseRange(0, 3);

// A cached statement: the whole engine path (cache look-up, prepared statement, reading rows)
// for a query that touches no row, so what remains is the engine's own cost.
void BM_TranslateCached(benchmark::State& state) {
    auto& db = *book().db;
    const QString sql = QString::fromUtf8(kStatements[state.range(0)]) + QStringLiteral(" And 1 = 0");
    if (state.range(0) == 1 || state.range(0) == 3) {
        state.SkipWithError("not a plain filter");
        return;
    }
    for (auto _ : state) benchmark::DoNotOptimize(db.execute(sql));
}
BENCHMARK(BM_TranslateCached)->Arg(0)->Arg(2);

void BM_PointQueryEngine(benchmark::State& state) {
    auto& db = *book().db;
    const QString sql = QStringLiteral("Select Des, Bed, Bes From Asnad Where Document = '654321'");
    for (auto _ : state) benchmark::DoNotOptimize(db.execute(sql));
}
BENCHMARK(BM_PointQueryEngine);

// The same query prepared once on SQLite, reading the same values into the same kind of rows.
void pointQuery(benchmark::State& state, sqlite3* raw) {
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(raw, "SELECT Des, Bed, Bes FROM Asnad WHERE Document = '654321'", -1, &s, nullptr);
    for (auto _ : state) {
        std::vector<std::vector<QVariant>> rows;
        while (sqlite3_step(s) == SQLITE_ROW) {
            rows.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 0))),
                            sqlite3_column_double(s, 1), sqlite3_column_double(s, 2)});
        }
        sqlite3_reset(s);
        benchmark::DoNotOptimize(rows);
    }
    sqlite3_finalize(s);
}
void BM_PointQuerySqlite(benchmark::State& state) { pointQuery(state, book().raw); }
BENCHMARK(BM_PointQuerySqlite);
void BM_PointQuerySqliteBefore(benchmark::State& state) { pointQuery(state, book().rawBefore); }
BENCHMARK(BM_PointQuerySqliteBefore);

void BM_AggregateEngine(benchmark::State& state) {
    auto& db = *book().db;
    const QString sql = QStringLiteral("Select WhatDoc, Count(*) As N, Sum(Bed) As Bed, Sum(Bes) As Bes From Asnad "
                                       "Group By WhatDoc");
    for (auto _ : state) benchmark::DoNotOptimize(db.execute(sql));
}
BENCHMARK(BM_AggregateEngine)->Unit(benchmark::kMillisecond);

void aggregate(benchmark::State& state, sqlite3* raw) {
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(raw,
                       "SELECT WhatDoc, count(*) AS N, sum(Bed) AS Bed, sum(Bes) AS Bes FROM Asnad GROUP BY WhatDoc",
                       -1, &s, nullptr);
    for (auto _ : state) {
        std::vector<std::vector<QVariant>> rows;
        while (sqlite3_step(s) == SQLITE_ROW) {
            rows.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 0))),
                            sqlite3_column_int64(s, 1), sqlite3_column_double(s, 2), sqlite3_column_double(s, 3)});
        }
        sqlite3_reset(s);
        benchmark::DoNotOptimize(rows);
    }
    sqlite3_finalize(s);
}
void BM_AggregateSqlite(benchmark::State& state) { aggregate(state, book().raw); }
BENCHMARK(BM_AggregateSqlite)->Unit(benchmark::kMillisecond);
void BM_AggregateSqliteBefore(benchmark::State& state) { aggregate(state, book().rawBefore); }
BENCHMARK(BM_AggregateSqliteBefore)->Unit(benchmark::kMillisecond);

}  // namespace
