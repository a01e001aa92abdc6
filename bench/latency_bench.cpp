// What a cashier feels on the large book: the latency of one receipt saved through the
// controller (entry and save, synchronous=FULL) and of opening a receipt by serial, as median and
// 99th percentile, on the book with its statistics and on the same book with its statistics
// removed and then opened (which gathers them again: the open's own time is reported too).
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <algorithm>
#include <random>
#include <vector>

#include "bench/cashier.h"
#include "bench/generator.h"
#include "bench/large_book.h"

namespace {

using tr::bench::book;
using tr::bench::Cashier;
using tr::bench::Sync;

enum class Statistics { Kept, Removed };

void reportPercentiles(benchmark::State& state, std::vector<double> ms) {
    if (ms.empty()) return;
    std::sort(ms.begin(), ms.end());
    auto at = [&](double q) { return ms[std::min(ms.size() - 1, size_t(q * double(ms.size())))]; };
    state.counters["p50_ms"] = at(0.50);
    state.counters["p99_ms"] = at(0.99);
    state.counters["max_ms"] = ms.back();
}

// A connection on the book through an engine of its own, after removing the book's statistics
// when asked; `openMs` is how long the open took (the statistics gathered again included).
std::unique_ptr<tr::engine::SqliteConnection> openBook(Statistics statistics, std::unique_ptr<tr::engine::Engine>& engine,
                                                        double& openMs) {
    book();  // generated first when missing
    if (statistics == Statistics::Removed) {
        sqlite3* raw = nullptr;
        sqlite3_open(book().file.toUtf8().constData(), &raw);
        sqlite3_exec(raw, "DELETE FROM sqlite_stat1", nullptr, nullptr, nullptr);
        sqlite3_close(raw);
    }
    QElapsedTimer clock;
    clock.start();
    engine = tr::bench::openDemoEngine(book().dir);
    auto c = tr::bench::openCompanyAt(*engine, Sync::Full);
    openMs = clock.nsecsElapsed() / 1e6;
    return c;
}

void BM_ReceiptSaveLatency(benchmark::State& state, Statistics statistics) {
    tr::bench::ReceiptsRemovedAfterwards restore;
    std::unique_ptr<tr::engine::Engine> engine;
    double openMs = 0;
    Cashier cashier(openBook(statistics, engine, openMs));
    std::vector<double> ms;
    int refused = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        if (!cashier.saveReceipt()) ++refused;
        ms.push_back(clock.nsecsElapsed() / 1e6);
    }
    reportPercentiles(state, ms);
    state.counters["open_ms"] = openMs;
    state.counters["refused"] = refused;
}

void BM_ReceiptOpenLatency(benchmark::State& state, Statistics statistics) {
    std::unique_ptr<tr::engine::Engine> engine;
    double openMs = 0;
    Cashier cashier(openBook(statistics, engine, openMs));
    const qint64 last = cashier.connection->execute(QStringLiteral(
        "Select IsNull(Max(Serial), 0) From N_NaghdTrans Where WhatDoc='10'")).resultSets.front().rows.front().front().toLongLong();
    std::mt19937 random(1404);
    std::uniform_int_distribution<qint64> serial(1, std::max<qint64>(1, last));
    std::vector<double> ms;
    int missing = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        if (!cashier.receipt->openDocument(QString::number(serial(random)))) ++missing;
        ms.push_back(clock.nsecsElapsed() / 1e6);
    }
    reportPercentiles(state, ms);
    state.counters["open_ms"] = openMs;
    state.counters["missing"] = missing;
}

BENCHMARK_CAPTURE(BM_ReceiptSaveLatency, statistics_kept, Statistics::Kept)
    ->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK_CAPTURE(BM_ReceiptSaveLatency, statistics_removed, Statistics::Removed)
    ->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK_CAPTURE(BM_ReceiptOpenLatency, statistics_kept, Statistics::Kept)
    ->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK_CAPTURE(BM_ReceiptOpenLatency, statistics_removed, Statistics::Removed)
    ->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);

}  // namespace
