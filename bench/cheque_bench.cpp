// The cheque searches on a book with cheques: the received-cheque search for a due-date range
// with the in-hand and in-collection boxes checked (its totals per state and grand total), and
// the latest state of every cheque (the shared latest-row query the screens' lists use). Each
// beside the best plain SQLite a careful developer would write for the same rows, on the same
// indexes and collation; before timing, both results are compared row for row. The engine's
// benchmarks report their time over the hand-written one (x_handwritten). A probe shows what
// the latest-row query's pass over the index saves a reader of every cheque (docs/benchmarks.md).
//
// The books: the demo company with 1,000,000 documents and 300,000 cheques in
// <TR_BENCH_BOOK_DIR>-cheques, a tenth of it in <TR_BENCH_BOOK_DIR>-cheques-tenth, generated
// on the first run (as `tr-generate --documents N --cheques M` would) and kept.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>
#include <QVariant>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

#include "bench/cheque_generator.h"
#include "bench/large_book.h"
#include "cheques/issued_actions.h"
#include "cheques/received_actions.h"
#include "cheques/search/cheque_search.h"
#include "common/db/query.h"
#include "common/session/global.h"
#include "common/session/services.h"
#include "common/text/tsql_collation.h"
#include "instruments/latest_state.h"
#include "bench/sqlite_value.h"

namespace {

using Row = std::vector<QVariant>;

enum class Size { Tenth, Full };

// The search's due-date range and the states it lists.
const char kFromDue[] = "1404/09/01";
const char kToDue[] = "1404/12/29";

// ---- memory ---------------------------------------------------------------------------------

// The process's resident set and its peak since the last reset, in MiB.
double statusMiB(const char* field) {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith(field)) return line.mid(int(qstrlen(field))).trimmed().split(' ').front().toDouble() / 1024;
    return 0;
}
// Starts a fresh peak, so that each benchmark reports its own growth whatever ran before it.
double resetPeak() {
    QFile f(QStringLiteral("/proc/self/clear_refs"));
    if (f.open(QIODevice::WriteOnly)) f.write("5");
    return statusMiB("VmRSS:");
}
// Nothing when the set shrank meanwhile.
double peakGrowth(double start) { return std::max(0.0, statusMiB("VmHWM:") - start); }

// ---- the books ------------------------------------------------------------------------------

struct ChequeBook {
    std::unique_ptr<tr::engine::Engine> engine;
    QString file;

    explicit ChequeBook(Size size) {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&tr::bench::rememberHandle));
        const bool full = size == Size::Full;
        const QString dir = qEnvironmentVariable("TR_BENCH_BOOK_DIR", QStringLiteral(TR_BENCH_BOOK_DIR)) +
                            (full ? QStringLiteral("-cheques") : QStringLiteral("-cheques-tenth"));
        const qint64 documents = full ? 1000000 : 100000;
        const qint64 cheques = full ? 300000 : 30000;
        engine = tr::bench::openDemoEngine(dir);
        file = engine->databaseFile(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
        auto company = tr::bench::openDemoCompany(*engine);
        const qint64 haveDocuments = tr::bench::documentCount(*company);
        const qint64 haveCheques = tr::bench::chequeCount(*company);
        if (haveDocuments < documents || haveCheques < cheques) {
            std::fprintf(stderr, "generating the book in %s: %lld documents, %lld cheques\n", dir.toUtf8().constData(),
                         static_cast<long long>(documents - haveDocuments),
                         static_cast<long long>(cheques - haveCheques));
            tr::bench::BookOptions options;
            options.documents = std::max<qint64>(0, documents - haveDocuments);
            options.cheques.cheques = std::max<qint64>(0, cheques - haveCheques);
            options.cheques.seed = options.seed;
            options.cheques.progress = [](int day, int days, qint64 written, qint64 actions) {
                if (day % 30 == 0 || day == days)
                    std::fprintf(stderr, "\rday %d / %d: %lld cheques, %lld actions", day, days,
                                 static_cast<long long>(written), static_cast<long long>(actions));
            };
            const tr::bench::BookReport r = tr::bench::generateBook(*company, options);
            std::fprintf(stderr, "\n%.0f documents per second, %.0f cheques and actions per second\n", r.rate(),
                         r.cheques.rate());
        }
        std::fprintf(stderr, "cheque book: %lld documents, %lld cheques\n",
                     static_cast<long long>(tr::bench::documentCount(*company)),
                     static_cast<long long>(tr::bench::chequeCount(*company)));
    }

    std::unique_ptr<tr::engine::SqliteConnection> open() { return tr::bench::openCompanyAt(*engine, tr::bench::Sync::Full); }
};

ChequeBook& chequeBook(Size size) {
    static ChequeBook tenth(Size::Tenth);
    if (size == Size::Tenth) return tenth;
    static ChequeBook full(Size::Full);
    return full;
}

// ---- the hand-written side ------------------------------------------------------------------

using tr::bench::columnValue;
using tr::bench::sameValue;

// A read-only handle on the book with the TSQL collation its columns and indexes use.
class HandWritten {
  public:
    HandWritten(Size size, const char* sql) {
        sqlite3_open_v2(chequeBook(size).file.toUtf8().constData(), &db_, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_create_collation(db_, "TSQL", SQLITE_UTF8, nullptr,
                                 [](void*, int an, const void* a, int bn, const void* b) {
                                     return tr::text::tsqlCompareUtf8(static_cast<const char*>(a), an,
                                                                      static_cast<const char*>(b), bn);
                                 });
        if (sqlite3_prepare_v2(db_, sql, -1, &statement_, nullptr) != SQLITE_OK)
            std::fprintf(stderr, "%s\n", sqlite3_errmsg(db_));
    }
    ~HandWritten() {
        sqlite3_finalize(statement_);
        sqlite3_close(db_);
    }
    HandWritten(const HandWritten&) = delete;
    HandWritten& operator=(const HandWritten&) = delete;

  protected:
    // The statement's current row as `columns` values after those of `row`.
    Row currentRow(int columns, Row row = {}) const {
        row.reserve(row.size() + columns);
        for (int i = 0; i < columns; ++i) row.push_back(columnValue(statement_, i));
        return row;
    }

    sqlite3* db_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

// The received-cheque search: each received cheque whose latest state is in hand (71) or in
// collection (72, 76) and whose due date lies in the range, in the search grid's columns (IDX,
// WhatDoc, NDocNam, Serial, Joz, BankCod, BankNam, ShobehCod, ShobehNam, AcountCod, AcountId,
// SanadDate, Des, SRDate, ChqNo, DocToDate, SValue, CLId, sOrder, Sign, ChqGetter, O_IDX), then a
// total per state name and the grand total, added up while the rows are read. One pass from the
// receipt rows (the kind index): the receipt's voucher line, found by its treasury row, holds
// amount and due date and is filtered first; then the cheque's latest row (one seek of the
// number's index for its greatest IDX), kept when its state is asked for and no later receipt
// of the cheque exists (a cheque received again is listed from its last receipt; bounded by
// the latest row so that SQLite asks it only of the rows the due date kept); the description is
// the latest state's last voucher line (one seek of the cheque index). The series is compared
// as stored: every cheque of the generated book has one.
class HandWrittenSearch : public HandWritten {
  public:
    explicit HandWrittenSearch(Size size)
        : HandWritten(size,
                      "SELECT L.WhatDoc, K.NDocNam, L.Serial, L.Joz, N.WhatDoc2, B.BankNam, N.CodWhatDoc2, "
                      "CASE WHEN ifnull(N.Des1, '') = '' AND S.BankCod IS NOT NULL THEN S.ShobehNam ELSE N.Des1 END, "
                      "N.Des2, NULL, L.SanadDate, "
                      "ifnull((SELECT D.Des FROM Asnad D WHERE D.AtfCh = L.ChqNo AND D.DocToDate = L.Joz "
                      "AND D.WhatDoc = L.WhatDoc AND D.TypeSys = 'N' ORDER BY D.REC DESC LIMIT 1), ''), "
                      "V.AtfDate, L.ChqNo, L.Joz, V.Bed + V.Bes, L.IDX, '', 0, N.Des6, N.IDX "
                      "FROM N_ChqLastTrans F "
                      "JOIN Asnad V ON V.Document = F.CodWhatDoc AND V.TypeSys = 'N' AND V.WhatDoc = '71' "
                      "AND V.AtfDate >= ?1 AND V.AtfDate <= ?2 "
                      "JOIN N_ChqLastTrans L ON L.IDX = (SELECT max(M.IDX) FROM N_ChqLastTrans M "
                      "WHERE M.ChqNo = F.ChqNo AND M.Joz = F.Joz) "
                      "JOIN N_NaghdTrans N ON N.IDX = CAST(F.CodWhatDoc AS INTEGER) "
                      "LEFT JOIN N_AsnadNaghd K ON K.WhatDoc = L.WhatDoc "
                      "LEFT JOIN N_Bank B ON B.BankCod = N.WhatDoc2 "
                      "LEFT JOIN N_Shoab S ON S.BankCod = N.WhatDoc2 AND S.ShobehCod = N.CodWhatDoc2 "
                      "WHERE F.WhatDoc = '71' AND L.WhatDoc IN ('71', '72', '76') "
                      "AND NOT EXISTS (SELECT 1 FROM N_ChqLastTrans G WHERE G.ChqNo = F.ChqNo AND G.Joz = F.Joz "
                      "AND G.WhatDoc = '71' AND G.IDX > F.IDX AND G.IDX <= L.IDX)") {}

    std::vector<Row> run() {
        std::vector<Row> rows;
        std::map<QString, double, bool (*)(const QString&, const QString&)> totals(
            [](const QString& a, const QString& b) { return tr::text::tsqlCompare(a, b) < 0; });
        double total = 0;
        sqlite3_bind_text(statement_, 1, kFromDue, -1, SQLITE_STATIC);
        sqlite3_bind_text(statement_, 2, kToDue, -1, SQLITE_STATIC);
        while (sqlite3_step(statement_) == SQLITE_ROW) {
            Row row = currentRow(21, {QVariant(static_cast<qint64>(rows.size() + 1))});
            totals[row[2].toString()] += row[16].toDouble();
            total += row[16].toDouble();
            rows.push_back(std::move(row));
        }
        sqlite3_reset(statement_);
        if (rows.empty()) return rows;
        const auto totalRow = [&](const QVariant& name, const QString& des, double sum, const char* order) {
            Row row(22);
            row[0] = QVariant(static_cast<qint64>(rows.size() + 1));
            row[2] = name;
            row[12] = des;
            row[16] = sum;
            row[18] = QString::fromLatin1(order);
            row[19] = qint64(1);
            rows.push_back(std::move(row));
        };
        for (const auto& [name, sum] : totals)
            totalRow(name, QStringLiteral("جمع ") + name + QStringLiteral(" : "), sum, "X");
        totalRow(QVariant(), tr::search::SearchResultTable::kGrandTotal, total, "Y");
        return rows;
    }
};

// Every cheque's latest state row: one ordered pass over the number's index (covering: number,
// series, IDX) keeps the greatest IDX of each number and series, then those rows are read by
// rowid in IDX order. A series kept as Null is the empty one, so an empty series' row is checked
// for a later row of the other spelling (one seek, and only for such rows).
class HandWrittenLatest : public HandWritten {
  public:
    explicit HandWrittenLatest(Size size)
        : HandWritten(size,
                      "SELECT L.ChqNo, L.Joz, L.WhatDoc, L.SanadDate, L.IDX FROM N_ChqLastTrans L "
                      "WHERE L.IDX IN (SELECT max(IDX) FROM N_ChqLastTrans GROUP BY ChqNo, Joz) "
                      "AND (ifnull(L.Joz, '') <> '' OR NOT EXISTS (SELECT 1 FROM N_ChqLastTrans M "
                      "WHERE M.ChqNo = L.ChqNo AND (M.Joz = '' OR M.Joz IS NULL) AND M.IDX > L.IDX))") {}

    std::vector<Row> run() {
        std::vector<Row> rows;
        while (sqlite3_step(statement_) == SQLITE_ROW) rows.push_back(currentRow(5));
        sqlite3_reset(statement_);
        return rows;
    }
};

// ---- the engine side ------------------------------------------------------------------------

// The search screen's logic on the engine, with the benchmark's filters.
struct EngineSearch {
    tr::bench::BenchSession session;
    std::unique_ptr<tr::cheques::ChequeSearch> search;

    explicit EngineSearch(Size size) : session(chequeBook(size).open()) {
        search = std::make_unique<tr::cheques::ChequeSearch>(session.services, tr::cheques::ChequeSide::Received);
        tr::cheques::ChequeSearchFilters& f = search->filters();
        f.fromDue = {QStringLiteral("01"), QStringLiteral("09"), QStringLiteral("1404")};
        f.toDue = {QStringLiteral("29"), QStringLiteral("12"), QStringLiteral("1404")};
        // "دريافت چک" and "در جريان وصول" only.
        for (int i = 0; i < f.states.size(); ++i) f.states[i] = i < 2;
    }

    std::vector<Row> rows() { return tr::bench::rowsOf(search->result()); }
};

// The shared latest-row query as a reader of every cheque asks it (the cheque documents' table
// of every cheque's last action); `reach` Few is the form for readers of a few.
QString engineLatestQuery(tr::instruments::Reach reach) {
    return tr::instruments::latestRowsQuery(tr::instruments::chequeHistory(),
                                            QStringLiteral("L.ChqNo, L.Joz, L.WhatDoc, L.SanadDate, L.IDX"), {}, {},
                                            reach);
}

// The engine's rows are already the row type: taken as they are, not copied.
std::vector<Row> engineLatest(tr::engine::SqliteConnection& c,
                              tr::instruments::Reach reach = tr::instruments::Reach::Every) {
    return std::move(c.execute(engineLatestQuery(reach)).resultSets.front().rows);
}

// ---- comparing ------------------------------------------------------------------------------

// Rows compared in the order of `key`'s columns (the row order within equal keys is free), every
// column but those in `skip`.
QString firstDifference(std::vector<Row> engine, std::vector<Row> handWritten, const std::vector<int>& key,
                        const std::vector<int>& skip = {}) {
    if (engine.size() != handWritten.size())
        return QStringLiteral("rows: engine %1, hand-written %2").arg(engine.size()).arg(handWritten.size());
    auto byKey = [&](const Row& a, const Row& b) {
        for (int c : key)
            if (const int d = tr::text::compareValues(a[c], b[c])) return d < 0;
        return false;
    };
    std::stable_sort(engine.begin(), engine.end(), byKey);
    std::stable_sort(handWritten.begin(), handWritten.end(), byKey);
    for (size_t i = 0; i < engine.size(); ++i) {
        if (engine[i].size() != handWritten[i].size())
            return QStringLiteral("columns: engine %1, hand-written %2").arg(engine[i].size()).arg(handWritten[i].size());
        for (int c = 0; c < int(engine[i].size()); ++c) {
            if (std::find(skip.begin(), skip.end(), c) != skip.end()) continue;
            if (!sameValue(engine[i][c], handWritten[i][c]))
                return QStringLiteral("row %1, column %2: engine '%3', hand-written '%4'")
                    .arg(i)
                    .arg(c)
                    .arg(engine[i][c].toString(), handWritten[i][c].toString());
        }
    }
    return {};
}

// The search rows by total kind, state, cheque; IDX (column 0) is the order rows were written in.
const std::vector<int> kSearchKey = {18, 2, 14, 4, 17};
const std::vector<int> kLatestKey = {0, 1, 4};

// Each side's time per run, so that the engine's benchmark can state its ratio.
std::map<std::string, double> handWrittenSeconds;

std::string sideKey(const char* what, Size size) {
    return std::string(what) + (size == Size::Full ? "/full" : "/tenth");
}

// Runs `read` (answering how many rows it read) once per iteration: the rows counter set, the
// seconds per run answered.
template <class Read>
double timeReads(benchmark::State& state, const Read& read) {
    size_t rows = 0;
    QElapsedTimer clock;
    clock.start();
    for (auto _ : state) rows = read();
    state.counters["rows"] = double(rows);
    return clock.nsecsElapsed() / 1e9 / double(state.iterations());
}

// A reader of result rows as timeReads wants it.
template <class Rows>
auto counted(Rows rows) {
    return [rows] {
        auto result = rows();
        benchmark::DoNotOptimize(result);
        return result.size();
    };
}

// The hand-written side of `key`: timed, and kept for the engine's ratio. It is read once before
// timing, as the engine's side is by its check against this side, so that neither pays for a
// cold handle or for the first touch of the memory its rows take.
template <class Read>
void timeHandWritten(benchmark::State& state, const std::string& key, const Read& read) {
    read();
    const double start = resetPeak();
    handWrittenSeconds[key] = timeReads(state, read);
    state.counters["peak_growth_MiB"] = peakGrowth(start);
}

// An engine side of `key`: timed, and stated as a ratio to the hand-written side.
template <class Read>
void timeAgainst(benchmark::State& state, const std::string& key, const Read& read) {
    const double start = resetPeak();
    const double seconds = timeReads(state, read);
    state.counters["peak_growth_MiB"] = peakGrowth(start);
    const auto it = handWrittenSeconds.find(key);
    if (it != handWrittenSeconds.end() && it->second > 0) state.counters["x_handwritten"] = seconds / it->second;
}

// Nothing is timed that answers other rows than the hand-written side.
bool differs(benchmark::State& state, const QString& difference) {
    if (difference.isEmpty()) return false;
    state.SkipWithError(("results differ: " + difference).toStdString().c_str());
    return true;
}

// ---- the benchmarks -------------------------------------------------------------------------

void BM_ReceivedChequeSearchSqlite(benchmark::State& state, Size size) {
    HandWrittenSearch search(size);
    timeHandWritten(state, sideKey("search", size), counted([&] { return search.run(); }));
}

void BM_ReceivedChequeSearchEngine(benchmark::State& state, Size size) {
    EngineSearch engine(size);
    engine.search->mnuSearchClick();
    if (differs(state, firstDifference(engine.rows(), HandWrittenSearch(size).run(), kSearchKey, {0}))) return;
    timeAgainst(state, sideKey("search", size), [&] {
        engine.search->mnuSearchClick();
        return size_t(engine.search->result().RecordCount());
    });
}

void BM_LatestChequeStatesSqlite(benchmark::State& state, Size size) {
    HandWrittenLatest latest(size);
    timeHandWritten(state, sideKey("latest", size), counted([&] { return latest.run(); }));
}

void BM_LatestChequeStatesEngine(benchmark::State& state, Size size) {
    auto c = chequeBook(size).open();
    if (differs(state, firstDifference(engineLatest(*c), HandWrittenLatest(size).run(), kLatestKey))) return;
    timeAgainst(state, sideKey("latest", size), counted([&] { return engineLatest(*c); }));
}

// A probe (not a goal): every cheque read through the form for readers of a few, a seek per
// state row for a later one, to show what the pass over the index saves.
void BM_LatestChequeStatesEngineFew(benchmark::State& state, Size size) {
    auto c = chequeBook(size).open();
    const auto read = [&] { return engineLatest(*c, tr::instruments::Reach::Few); };
    if (differs(state, firstDifference(read(), HandWrittenLatest(size).run(), kLatestKey))) return;
    timeAgainst(state, sideKey("latest", size), counted(read));
}

// An actions tab with no filter: every cheque of its side listed with where it stands (not a
// goal: the screen a user opens most on a large book).
template <class Tab>
void timeActionsList(benchmark::State& state, Size size) {
    tr::bench::BenchSession session(chequeBook(size).open());
    Tab tab(session.services);
    const double start = resetPeak();
    const double seconds = timeReads(state, [&] {
        tab.fill();
        return size_t(tab.rows().RecordCount());
    });
    state.counters["peak_growth_MiB"] = peakGrowth(start);
    state.counters["ms"] = seconds * 1000;
}
void BM_ReceivedChequeActionsList(benchmark::State& state, Size size) {
    timeActionsList<tr::cheques::ReceivedChequeActions>(state, size);
}
void BM_IssuedChequeActionsList(benchmark::State& state, Size size) {
    timeActionsList<tr::cheques::IssuedChequeActions>(state, size);
}

BENCHMARK_CAPTURE(BM_ReceivedChequeSearchSqlite, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_ReceivedChequeSearchEngine, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_LatestChequeStatesSqlite, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_LatestChequeStatesEngine, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_LatestChequeStatesEngineFew, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_ReceivedChequeSearchSqlite, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_ReceivedChequeSearchEngine, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_LatestChequeStatesSqlite, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_LatestChequeStatesEngine, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_LatestChequeStatesEngineFew, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_CAPTURE(BM_ReceivedChequeActionsList, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_IssuedChequeActionsList, tenth, Size::Tenth)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_ReceivedChequeActionsList, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_IssuedChequeActionsList, full, Size::Full)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
