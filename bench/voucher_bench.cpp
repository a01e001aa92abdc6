// Saving 3-line cash receipts on a large book: through the document controller as the receipt
// screen saves (entry and save, and the save command alone), through the kind's procedure alone,
// and the same rows written by a hand-written SQLite transaction, each with synchronous=FULL and
// NORMAL; and opening a receipt by serial.
// The book (TR_BENCH_BOOK_DIR, TR_BENCH_BOOK_DOCUMENTS documents, 1,000,000 unless set) is
// generated on the first run and kept; each benchmark takes the receipts it saved out again.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <cstdio>
#include <memory>
#include <random>

#include "bench/generator.h"
#include "bench/cashier.h"
#include "bench/large_book.h"
#include "common/db/query.h"
#include "common/session/services.h"
#include "common/text/tsql_collation.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/schema/demo_company.h"
#include "vouchers/n_global.h"

namespace {

using tr::vouchers::N_Global;
using tr::bench::book;
using tr::bench::Cashier;
using tr::bench::LargeBook;
using tr::bench::SilentDialog;
using tr::bench::Sync;
using tr::bench::pragmaOf;
using tr::bench::ReceiptsRemovedAfterwards;

qint64 maxReceiptSerial(tr::db::Connection& c) {
    return c
        .execute(QStringLiteral("Select IsNull(Max(Serial), 0) From N_NaghdTrans Where "
                                "WhatDoc='10'"))
        .resultSets.front()
        .rows.front()
        .front()
        .toLongLong();
}

void BM_SaveReceiptController(benchmark::State& state, Sync sync) {
    ReceiptsRemovedAfterwards restore;
    Cashier cashier(sync);
    int failed = 0;
    for (auto _ : state)
        if (!cashier.saveReceipt()) ++failed;
    state.SetItemsProcessed(state.iterations());
    state.counters["refused"] = failed;
}

// The save command alone, the receipt entered outside the timing.
void BM_SaveStepController(benchmark::State& state, Sync sync) {
    ReceiptsRemovedAfterwards restore;
    Cashier cashier(sync);
    int failed = 0;
    for (auto _ : state) {
        state.PauseTiming();
        cashier.enterReceipt();
        state.ResumeTiming();
        if (!cashier.receipt->save()) ++failed;
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["refused"] = failed;
}

void BM_SaveReceiptProcedure(benchmark::State& state, Sync sync) {
    ReceiptsRemovedAfterwards restore;
    auto c = book().open(sync);
    const QString table = QStringLiteral("##BENCH_RECEIPT");
    c->execute(QStringLiteral("If Exists (Select * From Tempdb..SysObjects Where [Name] Like ") +
               c->text(table) + QStringLiteral(") Exec('Drop Table ") + table +
               QStringLiteral("')"));
    c->execute(tr::vouchers::createTransferTableStatement(table));
    const auto& kind = *tr::vouchers::findTreasuryDocumentKind(QStringLiteral("10"));
    // The transfer table is the screen's work, not the procedure's, and a save only reads it:
    // filled once, outside the time.
    c->execute(QStringLiteral("Insert Into ") + table +
               QStringLiteral(" (Raj, Koll, Moein, Des, Bed, Bes) Values (1, '301', '0001', "
                              "'بابت افزايش سرمايه', 0, 1000000), (2, '301', '0001', 'بابت "
                              "افزايش سرمايه', 0, 2000000), (3, '301', '0001', 'بابت افزايش "
                              "سرمايه', 0, 3000000)"));
    qint64 serial = maxReceiptSerial(*c);
    for (auto _ : state) {
        tr::vouchers::ProcedureArguments a;
        a.table = table;
        a.serial = QString::number(++serial);
        a.treasuryCode = QStringLiteral("1");
        a.referenceNumber = a.serial;
        a.date = QStringLiteral("1404/12/20");
        a.description = QStringLiteral("دريافت وجه از مشتري");
        a.userName = QStringLiteral("bench");
        a.formState = QStringLiteral("NEW");
        a.computerName = QStringLiteral("BENCH");
        c->execute(tr::vouchers::procedureCall(*c, kind, tr::vouchers::DocumentAction::Save, a));
    }
    c->execute(QStringLiteral("Drop Table ") + table);
    state.SetItemsProcessed(state.iterations());
}

// The rows a saved receipt consists of (its four document lines, their four voucher lines and
// the log row), written with prepared statements in one transaction on a plain SQLite handle.
class HandWritten {
  public:
    explicit HandWritten(Sync sync) {
        sqlite3_open_v2(book().file.toUtf8().constData(), &db_, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_create_collation(db_, "TSQL", SQLITE_UTF8, nullptr,
                                 [](void*, int an, const void* a, int bn, const void* b) {
                                     return tr::text::tsqlCompareUtf8(
                                         static_cast<const char*>(a), an,
                                         static_cast<const char*>(b), bn);
                                 });
        sqlite3_busy_timeout(db_, 30000);
        sqlite3_exec(db_, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
        sqlite3_exec(db_, pragmaOf(sync), nullptr, nullptr, nullptr);
        nextSerial_ =
            prepare("SELECT ifnull(max(Serial), 0) + 1 FROM N_NaghdTrans WHERE WhatDoc = '10'");
        nextVoucher_ = prepare("SELECT ifnull(max(SanadNo), 0) + 1 FROM Asnad");
        // The cash box's accounts: any save must read them, the treasury line posts to them.
        cashBox_ = prepare(
            "SELECT Koll, Moein, Tafsily, Tafsily2, ProjectCod FROM N_Cash WHERE CashCod = '1'");
        line_ = prepare(
            "INSERT INTO N_NaghdTrans (WhatDoc, Serial, Raj, CodWhatDoc, WhatDoc2, CodWhatDoc2, "
            "NamWhatDoc2, Joz, ManabehCod, SanadDate, Des1, Des2, Des3, Des4) VALUES ('10', ?1, "
            "?2, '1', '', '', NULL, '', NULL, '1404/12/20', '', '', '', '')");
        voucher_ = prepare(
            "INSERT INTO Asnad (TypeSys, WhatDoc, WhatDoc2, DocToDate, Document, SanadNo, "
            "SanadDate, Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, Bes, AtfCh, "
            "User_Name) VALUES ('N', '10', '', '0', ?1, ?2, '1404/12/20', ?3, ?4, ?5, ?6, '', '', "
            "?7, ?8, ?9, ?10, 'bench')");
        log_ = prepare(
            "INSERT INTO ASNADACTIONS (TypeSys, TypeDoc, ActDate, ActUser, ActType, DocNo, "
            "ActTime, REC, ComputerName) VALUES ('N', 'دريافت صندوق', '1404/12/20', 'bench', 'I', "
            "?1, '12:00:00', ?2, 'BENCH')");
    }
    ~HandWritten() {
        for (sqlite3_stmt* s : {nextSerial_, nextVoucher_, cashBox_, line_, voucher_, log_})
            sqlite3_finalize(s);
        sqlite3_close(db_);
    }

    void saveReceipt() {
        sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        const qint64 serial = single(nextSerial_);
        const qint64 voucher = single(nextVoucher_);
        sqlite3_step(cashBox_);
        const std::string boxKoll = text(cashBox_, 0), boxMoein = text(cashBox_, 1),
                          boxTafsily = text(cashBox_, 2);
        sqlite3_reset(cashBox_);
        const std::string reference = std::to_string(serial);
        for (int raj = 1; raj <= 4; ++raj) {
            sqlite3_bind_int64(line_, 1, serial);
            sqlite3_bind_int(line_, 2, raj);
            step(line_);
            const std::string document = std::to_string(sqlite3_last_insert_rowid(db_));
            const bool cash = raj == 1;
            const double amount = cash ? 6000000.0 : 1000000.0 * (raj - 1);
            sqlite3_bind_text(voucher_, 1, document.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int64(voucher_, 2, voucher);
            sqlite3_bind_int(voucher_, 3, raj);
            sqlite3_bind_text(voucher_, 4, cash ? boxKoll.c_str() : "301", -1, SQLITE_STATIC);
            sqlite3_bind_text(voucher_, 5, cash ? boxMoein.c_str() : "0001", -1, SQLITE_STATIC);
            sqlite3_bind_text(voucher_, 6, cash ? boxTafsily.c_str() : "", -1, SQLITE_STATIC);
            sqlite3_bind_text(voucher_, 7,
                              cash ? "دريافت وجه از مشتري ( 1 )" : "بابت افزايش سرمايه", -1,
                              SQLITE_STATIC);
            sqlite3_bind_double(voucher_, 8, cash ? amount : 0.0);
            sqlite3_bind_double(voucher_, 9, cash ? 0.0 : amount);
            sqlite3_bind_text(voucher_, 10, reference.c_str(), -1, SQLITE_TRANSIENT);
            step(voucher_);
        }
        const std::string voucherText = std::to_string(voucher);
        sqlite3_bind_text(log_, 1, voucherText.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_int64(log_, 2, serial);
        step(log_);
        sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
    }

  private:
    sqlite3_stmt* prepare(const char* sql) {
        sqlite3_stmt* s = nullptr;
        if (sqlite3_prepare_v2(db_, sql, -1, &s, nullptr) != SQLITE_OK)
            std::fprintf(stderr, "%s: %s\n", sql, sqlite3_errmsg(db_));
        return s;
    }
    void step(sqlite3_stmt* s) {
        if (sqlite3_step(s) != SQLITE_DONE) std::fprintf(stderr, "%s\n", sqlite3_errmsg(db_));
        sqlite3_reset(s);
    }
    static std::string text(sqlite3_stmt* s, int column) {
        const auto* value = sqlite3_column_text(s, column);
        return value ? std::string(reinterpret_cast<const char*>(value)) : std::string();
    }
    qint64 single(sqlite3_stmt* s) {
        sqlite3_step(s);
        const qint64 v = sqlite3_column_int64(s, 0);
        sqlite3_reset(s);
        return v;
    }

    sqlite3* db_ = nullptr;
    sqlite3_stmt *nextSerial_ = nullptr, *nextVoucher_ = nullptr, *cashBox_ = nullptr, *line_ = nullptr,
                 *voucher_ = nullptr, *log_ = nullptr;
};

void BM_SaveReceiptSqlite(benchmark::State& state, Sync sync) {
    ReceiptsRemovedAfterwards restore;
    HandWritten writer(sync);
    for (auto _ : state) writer.saveReceipt();
    state.SetItemsProcessed(state.iterations());
}

// Opening a receipt by serial as the screen does: its lines into the transfer table, the header
// from the ledger, the cash box, the hold and the cancelled check.
void BM_OpenBySerial(benchmark::State& state) {
    Cashier cashier(Sync::Full);
    const qint64 last = maxReceiptSerial(*cashier.connection);
    std::mt19937 random(1404);
    std::uniform_int_distribution<qint64> serial(1, std::max<qint64>(1, last));
    int missing = 0;
    for (auto _ : state)
        if (!cashier.receipt->openDocument(QString::number(serial(random)))) ++missing;
    state.counters["missing"] = missing;
}

BENCHMARK_CAPTURE(BM_SaveReceiptSqlite, full, Sync::Full)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveReceiptProcedure, full, Sync::Full)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveReceiptController, full, Sync::Full)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveStepController, full, Sync::Full)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveReceiptSqlite, normal, Sync::Normal)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveReceiptProcedure, normal, Sync::Normal)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveReceiptController, normal, Sync::Normal)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SaveStepController, normal, Sync::Normal)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenBySerial)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
