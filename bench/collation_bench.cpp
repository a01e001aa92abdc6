// The TSQL collation's comparison against the code-point order it replaced: pairs of ASCII codes
// (what indexes on codes and serials compare), pairs of Persian names, and SQLite sorting
// 200,000 Persian names by each.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QByteArray>
#include <random>
#include <string>
#include <vector>

#include "bench/collation_before.h"
#include "common/text/tsql_collation.h"

namespace {

using tr::bench::compareBefore;

std::vector<QByteArray> asciiCodes() {
    std::vector<QByteArray> codes;
    std::mt19937 random(7);
    for (int i = 0; i < 4096; ++i) codes.push_back(QByteArray::number(int(random() % 1000000)));
    return codes;
}

// Names built from the words of a chart of accounts, so that many share their first letters.
std::vector<QByteArray> persianNames(int count) {
    static const char* words[] = {"حساب",   "هاي",   "دريافتني", "پرداختني", "بانک",  "ملت",
                                  "صادرات", "تجارت", "صندوق",    "فروشگاه",  "مرکزي", "تنخواه",
                                  "گردان",  "چک",    "ژاله",     "کالا",     "يزد",   "سرمايه",
                                  "هزينه",  "اداري", "آموزش",    "أمين"};
    std::vector<QByteArray> names;
    std::mt19937 random(11);
    for (int i = 0; i < count; ++i) {
        QByteArray name = words[random() % std::size(words)];
        for (int n = random() % 3; n >= 0; --n)
            name += QByteArray(" ") + words[random() % std::size(words)];
        names.push_back(name);
    }
    return names;
}

template <typename Compare>
void comparePairs(benchmark::State& state, const std::vector<QByteArray>& strings,
                  Compare compare) {
    for (auto _ : state) {
        int sum = 0;
        for (size_t i = 1; i < strings.size(); ++i) {
            const QByteArray &a = strings[i - 1], &b = strings[i];
            sum += compare(a.constData(), int(a.size()), b.constData(), int(b.size()));
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * int64_t(strings.size() - 1));
}

void BM_CollateAsciiCodes(benchmark::State& state) {
    static const auto codes = asciiCodes();
    comparePairs(state, codes, tr::text::tsqlCompareUtf8);
}
BENCHMARK(BM_CollateAsciiCodes);

void BM_CollateAsciiCodesBefore(benchmark::State& state) {
    static const auto codes = asciiCodes();
    comparePairs(state, codes, compareBefore);
}
BENCHMARK(BM_CollateAsciiCodesBefore);

void BM_CollatePersianNames(benchmark::State& state) {
    static const auto names = persianNames(4096);
    comparePairs(state, names, tr::text::tsqlCompareUtf8);
}
BENCHMARK(BM_CollatePersianNames);

void BM_CollatePersianNamesBefore(benchmark::State& state) {
    static const auto names = persianNames(4096);
    comparePairs(state, names, compareBefore);
}
BENCHMARK(BM_CollatePersianNamesBefore);

// An in-memory table of names that SQLite sorts with either collation.
struct NameTable {
    sqlite3* db = nullptr;
    NameTable() {
        sqlite3_open(":memory:", &db);
        sqlite3_create_collation(db, "TSQL", SQLITE_UTF8, nullptr,
                                 [](void*, int an, const void* a, int bn, const void* b) {
                                     return tr::text::tsqlCompareUtf8(
                                         static_cast<const char*>(a), an,
                                         static_cast<const char*>(b), bn);
                                 });
        sqlite3_create_collation(db, "BEFORE", SQLITE_UTF8, nullptr,
                                 [](void*, int an, const void* a, int bn, const void* b) {
                                     return compareBefore(static_cast<const char*>(a), an,
                                                          static_cast<const char*>(b), bn);
                                 });
        sqlite3_exec(db, "CREATE TABLE Names (Nam TEXT); BEGIN", nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(db, "INSERT INTO Names VALUES (?1)", -1, &insert, nullptr);
        for (const QByteArray& name : persianNames(200000)) {
            sqlite3_bind_text(insert, 1, name.constData(), int(name.size()), SQLITE_TRANSIENT);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    }
};

void sortNames(benchmark::State& state, const char* sql) {
    static NameTable table;
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(table.db, sql, -1, &s, nullptr);
    for (auto _ : state) {
        int rows = 0;
        while (sqlite3_step(s) == SQLITE_ROW) ++rows;
        sqlite3_reset(s);
        benchmark::DoNotOptimize(rows);
    }
    sqlite3_finalize(s);
}

void BM_SortPersianNames(benchmark::State& state) {
    sortNames(state, "SELECT Nam FROM Names ORDER BY Nam COLLATE TSQL");
}
BENCHMARK(BM_SortPersianNames)->Unit(benchmark::kMillisecond);

void BM_SortPersianNamesBefore(benchmark::State& state) {
    sortNames(state, "SELECT Nam FROM Names ORDER BY Nam COLLATE BEFORE");
}
BENCHMARK(BM_SortPersianNamesBefore)->Unit(benchmark::kMillisecond);

}  // namespace
