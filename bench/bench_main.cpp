// Runs every benchmark, then prints the engine-to-SQLite ratios the targets are stated in.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <cstdio>

#include "bench/ratio_reporter.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    tr::bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\nRatios (engine / hand-written SQLite, real time):\n");
    reporter.printRatio("cached point query, translated vs prepared directly", "BM_PointQueryEngine",
                        "BM_PointQuerySqlite", 1.5);
    reporter.printRatio("aggregate over 1,000,000 rows", "BM_AggregateEngine", "BM_AggregateSqlite", 1.1);
    benchmark::Shutdown();
    return 0;
}
