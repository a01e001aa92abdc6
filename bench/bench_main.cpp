// Runs every benchmark, then prints the engine-to-SQLite ratios the targets are stated in.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <cstdio>
#include <string>

#include "bench/ratio_reporter.h"
#include "bench/slow_flush.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (const double flush = tr::bench::installSlowFlush(); flush > 0)
        std::printf("Every disk flush takes %.2f ms longer (TR_BENCH_FLUSH_MS).\n", flush);
    tr::bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\nRatios (engine / hand-written SQLite, real time):\n");
    reporter.printRatio("cached point query, translated vs prepared directly", "BM_PointQueryEngine",
                        "BM_PointQuerySqlite", 1.5);
    reporter.printRatio("aggregate over 1,000,000 rows", "BM_AggregateEngine", "BM_AggregateSqlite", 1.1);
    reporter.printRatio("cash search with subtotals on the large book", "BM_CashSearchEngine/real_time",
                        "BM_CashSearchSqlite/real_time", 1.5);
    for (const char* size : {"tenth", "full"}) {
        const std::string book = std::string(" (") + size + " of the cheque book)";
        reporter.printRatio("received-cheque search" + book,
                            std::string("BM_ReceivedChequeSearchEngine/") + size + "/real_time",
                            std::string("BM_ReceivedChequeSearchSqlite/") + size + "/real_time", 1.5);
        reporter.printRatio("latest state of every cheque" + book,
                            std::string("BM_LatestChequeStatesEngine/") + size + "/real_time",
                            std::string("BM_LatestChequeStatesSqlite/") + size + "/real_time", 1.5);
    }
    // A save rate of at least 90% (FULL) and 50% (NORMAL) of the hand-written one is a time ratio
    // of at most 1/0.9 and 1/0.5.
    for (const char* sync : {"full", "normal"}) {
        const double goal = std::string(sync) == "full" ? 1 / 0.9 : 1 / 0.5;
        const std::string baseline = std::string("BM_SaveReceiptSqlite/") + sync + "/real_time";
        for (const char* path : {"Procedure", "Controller"}) {
            const std::string label = std::string("3-line receipt saved by the ") +
                                      (std::string(path) == "Procedure" ? "procedure" : "controller") +
                                      ", synchronous=" + sync;
            reporter.printRatio(label, std::string("BM_SaveReceipt") + path + "/" + sync + "/real_time", baseline,
                                goal);
        }
        reporter.printRatio(std::string("the controller's save command alone, synchronous=") + sync,
                            std::string("BM_SaveStepController/") + sync + "/real_time", baseline, goal);
    }
    std::printf("\nThe collation against the code-point order it replaced:\n");
    reporter.printRatio("point query by hand, this order vs the one before", "BM_PointQuerySqlite",
                        "BM_PointQuerySqliteBefore", 1.1);
    reporter.printRatio("aggregate by hand, this order vs the one before", "BM_AggregateSqlite",
                        "BM_AggregateSqliteBefore", 1.1);
    reporter.printRatio("comparing ASCII codes", "BM_CollateAsciiCodes", "BM_CollateAsciiCodesBefore", 1.1);
    reporter.printRatio("comparing Persian names", "BM_CollatePersianNames", "BM_CollatePersianNamesBefore",
                        1.5);
    reporter.printRatio("SQLite sorting 200,000 Persian names", "BM_SortPersianNames",
                        "BM_SortPersianNamesBefore", 1.5);
    if (const double open = reporter.time("BM_OpenBySerial/real_time"); open > 0)
        std::printf("%-58s %6.2f ms (goal: under 5 ms) %s\n", "receipt opened by serial", open / 1e6,
                    open < 5e6 ? "met" : "NOT MET");
    benchmark::Shutdown();
    return 0;
}
