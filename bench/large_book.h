#pragma once
// The large book the voucher and search benchmarks share: the demo company grown to
// TR_BENCH_BOOK_DOCUMENTS documents (1,000,000 unless set) in TR_BENCH_BOOK_DIR, generated on the
// first run and kept; and a message dialog that never waits.
#include <sqlite3.h>

#include <QString>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/generator.h"
#include "common/db/my_database.h"
#include "common/db/query.h"
#include "common/db/transaction.h"
#include "common/dialog/host_windows.h"
#include "common/dialog/message_dialog.h"
#include "common/session/global.h"
#include "common/session/services.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/schema/demo_company.h"

namespace tr::bench {

enum class Sync { Full, Normal };

inline const char* pragmaOf(Sync sync) {
    return sync == Sync::Full ? "PRAGMA main.synchronous=FULL" : "PRAGMA main.synchronous=NORMAL";
}

// The engine always opens its files with synchronous=FULL and offers no setting; the benchmark
// catches each new SQLite handle as it is opened so that it can lower the level afterwards.
inline sqlite3* lastOpened = nullptr;
inline int rememberHandle(sqlite3* db, char**, const sqlite3_api_routines*) {
    lastOpened = db;
    return SQLITE_OK;
}

// Saving never asks; a refusal would show here and is counted as an error.
class SilentDialog : public tr::dialog::MessageDialog {
  public:
    int shown = 0;
    QSize screenSize() const override { return {1024, 768}; }
    QSize dialogSize() const override { return {300, 140}; }
    void setDialogPosition(int, int) override {}
    void setDialogHeight(int) override {}
    QString defaultCaption() const override { return {}; }
    void setCaptionText(const QString&) override {}
    void setButtonVisible(tr::dialog::Button, bool) override {}
    void setOk1Caption(const QString&) override {}
    void setIconVisible(tr::dialog::Icon, bool) override {}
    void setCloseResult(int) override {}
    void setMemoHorizontal(int, int) override {}
    void setMemoHeight(int) override {}
    void setMemoText(const QString&) override {}
    int memoLineCount() const override { return 1; }
    void setMemoVerticalScrollBar(bool) override {}
    void setInfoPanelEnabled(bool) override {}
    int showModal() override {
        ++shown;
        return tr::dialog::ResultYes;
    }
};

// Long work is never stopped.
class NeverStops : public tr::dialog::ProgressWindow {
  public:
    void showState(const QString&) override {}
    void setStateText(const QString&) override {}
    bool stopRequested() override { return false; }
    void closeState() override {}
};

// The services a screen's logic takes, over one connection: messages answered at once, long work
// never stopped, the session text of a benchmark.
struct BenchSession {
    std::unique_ptr<tr::engine::SqliteConnection> db;  // when the session holds its connection
    tr::Global global;
    tr::db::Query command;
    tr::db::MyDatabase my;
    SilentDialog dialog;
    NeverStops progress;
    tr::Services services;

    explicit BenchSession(tr::tsql::TsqlConnection& connection) : command(&connection), my(&command, &connection) {
        global.sessionText = QStringLiteral("BENCH_");
        services.global = &global;
        services.database = &my;
        services.dialog = &dialog;
        services.progress = &progress;
    }
    explicit BenchSession(std::unique_ptr<tr::engine::SqliteConnection> connection) : BenchSession(*connection) {
        db = std::move(connection);
    }
    BenchSession(const BenchSession&) = delete;
    BenchSession& operator=(const BenchSession&) = delete;
};

// A screen's result table as rows of values, for comparing with a hand-written query's.
inline std::vector<std::vector<QVariant>> rowsOf(const tr::db::Query& result) {
    std::vector<std::vector<QVariant>> out;
    out.reserve(result.RecordCount());
    for (int i = 0; i < result.RecordCount(); ++i) {
        std::vector<QVariant> row;
        for (int c = 0; c < result.fieldNames().size(); ++c) row.push_back(result.value(i, c));
        out.push_back(std::move(row));
    }
    return out;
}

// A connection to the demo company through `engine`, its flushes lowered to `sync`.
inline std::unique_ptr<tr::engine::SqliteConnection> openCompanyAt(tr::engine::Engine& engine, Sync sync) {
    lastOpened = nullptr;
    auto c = tr::bench::openDemoCompany(engine);
    if (lastOpened) sqlite3_exec(lastOpened, pragmaOf(sync), nullptr, nullptr, nullptr);
    return c;
}

struct LargeBook {
    std::unique_ptr<tr::engine::Engine> engine;
    QString dir;
    QString file;
    qint64 documents = 0;

    LargeBook() {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&rememberHandle));
        dir = qEnvironmentVariable("TR_BENCH_BOOK_DIR", QStringLiteral(TR_BENCH_BOOK_DIR));
        const qint64 target =
            qEnvironmentVariable("TR_BENCH_BOOK_DOCUMENTS", QStringLiteral("1000000")).toLongLong();
        engine = tr::bench::openDemoEngine(dir);
        file = engine->databaseFile(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
        auto company = tr::bench::openDemoCompany(*engine);
        documents = tr::bench::documentCount(*company);
        if (documents < target) {
            std::fprintf(stderr, "generating the book in %s: %lld documents\n",
                         dir.toUtf8().constData(), static_cast<long long>(target - documents));
            tr::bench::BookOptions options;
            options.documents = target - documents;
            options.progress = [](qint64 done, qint64 total) {
                if (done % 20000 == 0 || done == total)
                    std::fprintf(stderr, "\r%lld / %lld", static_cast<long long>(done),
                                 static_cast<long long>(total));
            };
            const tr::bench::BookReport r = tr::bench::generateBook(*company, options);
            std::fprintf(stderr, "\n%.0f documents per second\n", r.rate());
            documents = tr::bench::documentCount(*company);
        }
        std::fprintf(stderr, "book: %lld documents\n", static_cast<long long>(documents));
    }

    std::unique_ptr<tr::engine::SqliteConnection> open(Sync sync) { return openCompanyAt(*engine, sync); }
};

inline LargeBook& book() {
    static LargeBook instance;
    return instance;
}

// The receipts a saving benchmark adds are taken out again when it ends, so that every run
// measures the same book instead of one grown by the runs before it.
class ReceiptsRemovedAfterwards {
  public:
    ReceiptsRemovedAfterwards() {
        auto c = book().open(Sync::Normal);
        serial_ = first(*c, "Select IsNull(Max(Serial), 0) From N_NaghdTrans Where WhatDoc = '10'");
        voucher_ = first(*c, "Select IsNull(Max(SanadNo), 0) From Asnad");
    }
    ~ReceiptsRemovedAfterwards() {
        auto c = book().open(Sync::Normal);
        const QString serial = QString::number(serial_), voucher = QString::number(voucher_);
        tr::db::Transaction transaction(*c);
        c->execute(QStringLiteral("Delete From Asnad Where SanadNo > ") + voucher);
        c->execute(QStringLiteral("Delete From N_NaghdTrans Where WhatDoc = '10' And Serial > ") + serial);
        c->execute(QStringLiteral("Delete From ASNADACTIONS Where TypeSys = 'N' And TypeDoc = ") +
                   c->text(QStringLiteral("دريافت صندوق")) + QStringLiteral(" And REC > ") + serial);
        transaction.commit();
        // The next benchmark starts from an empty log, not one full of this one's writes.
        if (lastOpened)
            sqlite3_wal_checkpoint_v2(lastOpened, "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }

  private:
    static qint64 first(tr::engine::SqliteConnection& c, const char* sql) {
        return c.execute(QString::fromUtf8(sql)).resultSets.front().rows.front().front().toLongLong();
    }
    qint64 serial_ = 0, voucher_ = 0;
};

}  // namespace tr::bench
