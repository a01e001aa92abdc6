// The cash search with subtotals and grand total over the large book (a date range, an amount
// range and a description word), beside the same result computed by the best plain SQLite a
// careful developer would write: one pass over the documents, the subtotals added up while the
// rows are read. Before timing, both results are compared row for row. Each side reports how much
// its run raised the process's peak resident set (the SQLite side runs first, so the engine's
// growth is what it needs beyond that).
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <QVariant>
#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "bench/large_book.h"
#include "cashbank/search/document_search.h"
#include "common/db/query.h"
#include "common/session/global.h"
#include "common/session/services.h"
#include "common/text/tsql_collation.h"
#include "bench/sqlite_value.h"

namespace {

using tr::bench::book;
using Row = std::vector<QVariant>;

const char kWord[] = "وجه";

double peakMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024.0;
}

using tr::bench::columnValue;
using tr::bench::sameValue;

struct ByCollation {
    bool operator()(const std::pair<QString, QString>& a, const std::pair<QString, QString>& b) const {
        if (const int c = tr::text::tsqlCompare(a.first, b.first)) return c < 0;
        return tr::text::tsqlCompare(a.second, b.second) < 0;
    }
};

// The hand-written search: the documents in date and serial order in the search grid's columns
// (CashCod, CashNam, NDocNam, Serial, Joz, CashNo, SanadDate, Des, SValue, WhatDoc, DocToDate,
// Sign, sOrder, IDX), then a subtotal per cash box and kind, then the grand total.
class HandWrittenSearch {
public:
    HandWrittenSearch() {
        sqlite3_open_v2(book().file.toUtf8().constData(), &db_, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_create_collation(db_, "TSQL", SQLITE_UTF8, nullptr,
                                 [](void*, int an, const void* a, int bn, const void* b) {
                                     return tr::text::tsqlCompareUtf8(static_cast<const char*>(a), an,
                                                                      static_cast<const char*>(b), bn);
                                 });
        // The line's key is looked up from the voucher line, and the text comparison keeps
        // exactly the pairs whose texts match (a Document of " 12" finds line 12, "012" none).
        const char* sql =
            "SELECT NC.CashCod, NC.CashNam, NA.NDocNam, NT.Serial, NT.Joz, A.AtfCh, A.SanadDate, "
            "A.Des, A.Bes + A.Bed, A.WhatDoc, A.DocToDate, "
            "CASE WHEN A.DocToDate = '1' OR A.WhatDoc = '20' THEN -1 ELSE 1 END "
            "FROM Asnad A JOIN N_NaghdTrans NT ON NT.IDX = CAST(A.Document AS INTEGER) "
            "AND A.Document = CAST(NT.IDX AS TEXT) "
            "JOIN N_Cash NC ON NC.CashCod = NT.CodWhatDoc JOIN N_AsnadNaghd NA ON NA.WhatDoc = NT.WhatDoc "
            "WHERE A.WhatDoc IN ('10', '11', '20', '21') AND NT.WhatDoc = NT.WhatDoc2 "
            "AND A.SanadDate >= '1404/03/01' AND A.SanadDate <= '1404/05/31' "
            "AND A.Bes + A.Bed >= 1000000 AND A.Bes + A.Bed <= 200000000 AND A.Des LIKE ?1 "
            "ORDER BY A.SanadDate, NT.Serial";
        sqlite3_prepare_v2(db_, sql, -1, &statement_, nullptr);
        word_ = std::string("%") + kWord + "%";
    }
    ~HandWrittenSearch() {
        sqlite3_finalize(statement_);
        sqlite3_close(db_);
    }

    std::vector<Row> run() {
        std::vector<Row> rows;
        std::map<std::pair<QString, QString>, double, ByCollation> subtotals;
        double total = 0;
        sqlite3_bind_text(statement_, 1, word_.c_str(), -1, SQLITE_STATIC);
        while (sqlite3_step(statement_) == SQLITE_ROW) {
            Row row;
            row.reserve(14);
            for (int i = 0; i < 12; ++i) row.push_back(columnValue(statement_, i));
            row.push_back(QStringLiteral(""));
            row.push_back(QVariant(static_cast<qint64>(rows.size() + 1)));
            const double signedValue = row[8].toDouble() * row[11].toLongLong();
            subtotals[{row[1].toString(), row[2].toString()}] += signedValue;
            total += signedValue;
            rows.push_back(std::move(row));
        }
        sqlite3_reset(statement_);
        if (rows.empty()) return rows;
        for (const auto& [key, sum] : subtotals) {
            rows.push_back({QVariant(), key.first, key.second, QVariant(), QVariant(), QVariant(), QVariant(),
                            QStringLiteral("جمع ") + key.second + QStringLiteral(" : ") + key.first, sum,
                            QVariant(), QVariant(), qint64(0), QStringLiteral("X"), qint64(rows.size() + 1)});
        }
        rows.push_back({QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant(),
                        tr::cashbank::DocumentSearch::kGrandTotal, total, QVariant(), QVariant(), qint64(0),
                        QStringLiteral("Y"), qint64(rows.size() + 1)});
        return rows;
    }

private:
    sqlite3* db_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
    std::string word_;
};

// The search screen's logic on the engine, with the benchmark's filters.
struct EngineSearch {
    tr::bench::BenchSession session{book().open(tr::bench::Sync::Full)};
    std::unique_ptr<tr::cashbank::DocumentSearch> search;

    EngineSearch() {
        search = std::make_unique<tr::cashbank::DocumentSearch>(session.services, tr::cashbank::SearchFamily::Cash);
        tr::cashbank::SearchFilters& f = search->filters();
        f.fromDate = {QStringLiteral("01"), QStringLiteral("03"), QStringLiteral("1404")};
        f.toDate = {QStringLiteral("31"), QStringLiteral("05"), QStringLiteral("1404")};
        f.fromAmount = QStringLiteral("1,000,000");
        f.toAmount = QStringLiteral("200,000,000");
        f.words[0] = QString::fromUtf8(kWord);
    }

    std::vector<Row> rows() { return tr::bench::rowsOf(search->result()); }
};

// Documents of one date and serial may come in either order; the subtotals and total may not.
QString firstDifference(std::vector<Row> engine, std::vector<Row> handWritten) {
    if (engine.size() != handWritten.size())
        return QStringLiteral("rows: engine %1, hand-written %2").arg(engine.size()).arg(handWritten.size());
    auto byDocument = [](const Row& a, const Row& b) {
        for (int c : {12, 6, 3, 9, 7, 8})
            if (const int d = tr::text::compareValues(a[c], b[c])) return d < 0;
        return false;
    };
    std::stable_sort(engine.begin(), engine.end(), byDocument);
    std::stable_sort(handWritten.begin(), handWritten.end(), byDocument);
    for (size_t i = 0; i < engine.size(); ++i)
        for (int c = 0; c < 13; ++c)
            if (!sameValue(engine[i][c], handWritten[i][c]))
                return QStringLiteral("row %1, column %2: engine '%3', hand-written '%4'")
                    .arg(i).arg(c).arg(engine[i][c].toString(), handWritten[i][c].toString());
    return {};
}

void BM_CashSearchSqlite(benchmark::State& state) {
    HandWrittenSearch search;
    size_t rows = 0;
    const double before = peakMiB();
    for (auto _ : state) {
        std::vector<Row> result = search.run();
        rows = result.size();
        benchmark::DoNotOptimize(result);
    }
    state.counters["rows"] = double(rows);
    state.counters["peak_growth_MiB"] = peakMiB() - before;
}
BENCHMARK(BM_CashSearchSqlite)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_CashSearchEngine(benchmark::State& state) {
    EngineSearch engine;
    {
        engine.search->mnuSearchClick();
        const QString difference = firstDifference(engine.rows(), HandWrittenSearch().run());
        if (!difference.isEmpty()) {
            state.SkipWithError(("results differ: " + difference).toStdString().c_str());
            return;
        }
    }
    int rows = 0;
    const double before = peakMiB();
    for (auto _ : state) {
        engine.search->mnuSearchClick();
        rows = engine.search->result().RecordCount();
    }
    state.counters["rows"] = rows;
    state.counters["peak_growth_MiB"] = peakMiB() - before;
}
BENCHMARK(BM_CashSearchEngine)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
