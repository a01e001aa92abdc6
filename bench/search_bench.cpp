// The cash search with subtotals and grand total over the large book (a date range, an amount
// range and a description word), beside the same result computed by hand-written SQLite queries
// in the same run. Each side reports how much its run raised the process's peak resident set
// (the SQLite side runs first, so the engine's growth is what it needs beyond that).
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <QVariant>
#include <vector>

#include "bench/large_book.h"
#include "cashbank/search/document_search.h"
#include "common/db/query.h"
#include "common/session/global.h"
#include "common/session/services.h"
#include "common/text/tsql_collation.h"

namespace {

using tr::bench::book;

const char kWord[] = "وجه";

double peakMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024.0;
}

class NeverStops : public tr::dialog::ProgressWindow {
public:
    void showState(const QString&) override {}
    void setStateText(const QString&) override {}
    bool stopRequested() override { return false; }
    void closeState() override {}
};

// The same documents, subtotals and total straight from SQLite, read into the same kind of rows.
void BM_CashSearchSqlite(benchmark::State& state) {
    sqlite3* raw = nullptr;
    sqlite3_open_v2(book().file.toUtf8().constData(), &raw, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_create_collation(raw, "TSQL", SQLITE_UTF8, nullptr, [](void*, int an, const void* a, int bn, const void* b) {
        return tr::text::tsqlCompareUtf8(static_cast<const char*>(a), an, static_cast<const char*>(b), bn);
    });
    const std::string word = std::string("%") + kWord + "%";
    const std::string documents =
        "SELECT NC.CashCod, NC.CashNam, NA.NDocNam, NT.Serial, NT.Joz, A.AtfCh, A.SanadDate, A.Des, "
        "A.Bes + A.Bed AS SValue, A.WhatDoc, A.DocToDate, "
        "CASE WHEN A.DocToDate = '1' OR A.WhatDoc = '20' THEN -1 ELSE 1 END AS Sign "
        "FROM N_NaghdTrans NT JOIN Asnad A ON A.Document = CAST(NT.IDX AS TEXT) "
        "JOIN N_Cash NC ON NT.CodWhatDoc = NC.CashCod JOIN N_AsnadNaghd NA ON NT.WhatDoc = NA.WhatDoc "
        "WHERE A.WhatDoc IN ('10','11','20','21') AND NT.WhatDoc = NT.WhatDoc2 "
        "AND A.SanadDate >= '1404/03/01' AND A.SanadDate <= '1404/05/31' "
        "AND A.Bes + A.Bed >= 1000000 AND A.Bes + A.Bed <= 200000000 AND A.Des LIKE ?1 "
        "ORDER BY A.SanadDate, NT.Serial";
    const std::string totals = "SELECT NDocNam, CashNam, SUM(SValue * Sign) FROM (" + documents +
                               ") GROUP BY NDocNam, CashNam UNION ALL SELECT NULL, NULL, SUM(SValue * Sign) FROM (" +
                               documents + ")";
    sqlite3_stmt* rowsStatement = nullptr;
    sqlite3_stmt* totalsStatement = nullptr;
    sqlite3_prepare_v2(raw, documents.c_str(), -1, &rowsStatement, nullptr);
    sqlite3_prepare_v2(raw, totals.c_str(), -1, &totalsStatement, nullptr);
    int rows = 0;
    const double before = peakMiB();
    for (auto _ : state) {
        std::vector<std::vector<QVariant>> result;
        for (sqlite3_stmt* s : {rowsStatement, totalsStatement}) {
            sqlite3_bind_text(s, 1, word.c_str(), -1, SQLITE_STATIC);
            while (sqlite3_step(s) == SQLITE_ROW) {
                std::vector<QVariant> row;
                for (int i = 0; i < sqlite3_column_count(s); ++i) {
                    row.emplace_back(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, i))));
                }
                result.push_back(std::move(row));
            }
            sqlite3_reset(s);
        }
        rows = static_cast<int>(result.size());
        benchmark::DoNotOptimize(result);
    }
    sqlite3_finalize(rowsStatement);
    sqlite3_finalize(totalsStatement);
    sqlite3_close(raw);
    state.counters["rows"] = rows;
    state.counters["peak_growth_MiB"] = peakMiB() - before;
}
BENCHMARK(BM_CashSearchSqlite)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_CashSearchEngine(benchmark::State& state) {
    auto db = book().open(tr::bench::Sync::Full);
    tr::Global global;
    global.sessionText = QStringLiteral("BENCH_");
    tr::db::Query command(db.get());
    tr::db::MyDatabase my{&command, db.get()};
    tr::bench::SilentDialog dialog;
    NeverStops progress;
    tr::Services services;
    services.global = &global;
    services.database = &my;
    services.dialog = &dialog;
    services.progress = &progress;
    tr::cashbank::DocumentSearch search(services, tr::cashbank::SearchFamily::Cash);
    tr::cashbank::SearchFilters& f = search.filters();
    f.fromDate = {QStringLiteral("01"), QStringLiteral("03"), QStringLiteral("1404")};
    f.toDate = {QStringLiteral("31"), QStringLiteral("05"), QStringLiteral("1404")};
    f.fromAmount = QStringLiteral("1,000,000");
    f.toAmount = QStringLiteral("200,000,000");
    f.words[0] = QString::fromUtf8(kWord);
    int rows = 0;
    const double before = peakMiB();
    for (auto _ : state) {
        search.mnuSearchClick();
        rows = search.result().RecordCount();
    }
    state.counters["rows"] = rows;
    state.counters["peak_growth_MiB"] = peakMiB() - before;
}
BENCHMARK(BM_CashSearchEngine)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
