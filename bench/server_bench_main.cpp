// tr-server-bench: the books on a PostgreSQL server. Starts a private server with its durable
// settings (or uses TR_PG_SERVER_DIR's), loads the demo company, and for 1, 4 and 8 client
// processes saving 3-line receipts through the receipt screen's controller at once reports
// receipts per second and the median and 99th-percentile save, each round on a book with a day's
// receipts in it (TR_BENCH_PREFILL, TR_BENCH_RECEIPTS and TR_BENCH_CLIENTS change the rounds).
// Clients are this program run again
// with --client. With `--search DIR` it copies the large book of DIR onto the server and times the
// cash search with subtotals there and on the embedded engine, after comparing their rows;
// `--search DIR "CONNECTION"` does the same on a server of one's own, copying only a missing book.
// Asserts nothing.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/cashier.h"
#include "bench/server_search.h"
#include "tools/book_copy.h"
#include "db/engine/engine.h"
#include "db/pg/pg_connection.h"
#include "db/pg/pg_link.h"
#include "db/pg/pg_server.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"
#include "db/schema/schema.h"
#include "tests/support/private_pg_server.h"

namespace {

void registerProcedures(tr::tsql::Books& books) {
    for (const auto& p : tr::procedures::allProcedures()) books.procedures().addProcedure(p.name, p.body);
    for (const auto& f : tr::procedures::allFunctions()) books.procedures().addFunction(f.name, f.body);
}

// One client: `count` receipts, each save's milliseconds on a line of its own.
int client(const QString& connectionText, int user, int count) {
    tr::pg::PgServer server(connectionText);
    registerProcedures(server);
    tr::bench::Cashier cashier(server.connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase)));
    cashier.global.userNumber = user;
    cashier.global.userName = QStringLiteral("bench%1").arg(user);
    std::printf("READY\n");
    std::fflush(stdout);
    int failed = 0;
    for (int i = 0; i < count; ++i) {
        QElapsedTimer timer;
        timer.start();
        const bool saved = cashier.saveReceipt();
        const double ms = double(timer.nsecsElapsed()) / 1e6;
        if (saved) std::printf("%.3f\n", ms);
        else ++failed;
    }
    std::fflush(stdout);
    return failed == 0 ? 0 : 1;
}

struct Round {
    int clients = 0;
    int receipts = 0;
    double seconds = 0;
    double p50 = 0, p99 = 0;
};

Round measure(const QString& program, const QString& connectionText, int clients, int perClient) {
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < clients; ++i) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(program, {QStringLiteral("--client"), connectionText, QString::number(100 + i),
                                          QString::number(perClient)});
    }
    // The clock starts when every client has its connection and controller ready.
    for (auto& p : processes) {
        p->waitForReadyRead(60000);
        p->readLine();
    }
    QElapsedTimer wall;
    wall.start();
    std::vector<double> ms;
    Round r;
    r.clients = clients;
    for (auto& p : processes) {
        p->waitForFinished(-1);
        for (const QByteArray& line : p->readAllStandardOutput().split('\n'))
            if (!line.trimmed().isEmpty()) ms.push_back(line.toDouble());
        if (p->exitCode() != 0) std::fprintf(stderr, "a client failed: %s\n", p->readAllStandardError().constData());
    }
    r.seconds = double(wall.nsecsElapsed()) / 1e9;
    r.receipts = int(ms.size());
    std::sort(ms.begin(), ms.end());
    if (!ms.empty()) {
        r.p50 = ms[ms.size() / 2];
        r.p99 = ms[std::min(ms.size() - 1, size_t(0.99 * double(ms.size())))];
    }
    return r;
}

// The large book of `directory` on the server, and the cash search on both backends.
int compareSearch(const QString& connectionText, const QString& directory) {
    tr::engine::Engine embedded(directory);
    registerProcedures(embedded);
    tr::pg::PgServer server(connectionText);
    registerProcedures(server);
    const QString book = QString::fromUtf8(tr::schema::demo::kCurrentDatabase);
    if (!server.databaseExists(book)) {
        QElapsedTimer copy;
        copy.start();
        tr::tools::copyBooks(embedded, server);
        std::printf("book copied onto the server in %.1f s\n", double(copy.elapsed()) / 1000.0);
    }
    auto onEngine = embedded.connect(book);
    auto onServer = server.connect(book);
    onServer->execute(QStringLiteral("Exec sp_updatestats"));
    const auto [e, s] = tr::bench::timeCashSearches(*onEngine, *onServer, 7);
    std::printf("cash search, median of 7 (slowest): embedded %.1f ms (%.1f), server %.1f ms (%.1f), %.2fx, "
                "rows %zu / %zu\n",
                e.medianMs, e.slowestMs, s.medianMs, s.slowestMs, s.medianMs / e.medianMs, e.rows.size(),
                s.rows.size());
    if (e.rows.size() != s.rows.size()) std::printf("the results differ in their row count\n");
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 5 && args.at(1) == QLatin1String("--client"))
        return client(args.at(2), args.at(3).toInt(), args.at(4).toInt());

    // A server of one's own, with the book already copied there: the search alone, again and again.
    if (args.size() == 4 && args.at(1) == QLatin1String("--search")) return compareSearch(args.at(3), args.at(2));
    qputenv("TR_PG_SERVER_DURABLE", "1");
    tr::test::PrivatePgServer& server = tr::test::PrivatePgServer::instance();
    if (!server.running()) {
        std::fprintf(stderr, "no server: %s\n", qPrintable(server.failure()));
        return 1;
    }
    if (args.size() == 3 && args.at(1) == QLatin1String("--search"))
        return compareSearch(server.connectionText(server.createDatabase(QStringLiteral("search"))), args.at(2));
    const int perClient = qEnvironmentVariableIntValue("TR_BENCH_RECEIPTS") > 0
                              ? qEnvironmentVariableIntValue("TR_BENCH_RECEIPTS")
                              : 300;
    // TR_BENCH_CLIENTS names other rounds, e.g. "1,8,8"; the first is the one others are set against.
    std::vector<int> rounds{1, 4, 8};
    if (qEnvironmentVariableIsSet("TR_BENCH_CLIENTS")) {
        rounds.clear();
        for (const QString& n : qEnvironmentVariable("TR_BENCH_CLIENTS").split(QLatin1Char(',')))
            if (n.toInt() > 0) rounds.push_back(n.toInt());
    }
    // Each round on a book of its own: the demo company with a day's receipts already saved (8
    // cashiers, TR_BENCH_PREFILL each, 150 unless set) and its statistics gathered, from a
    // checkpoint. On the bare demo company the tables grow from a few rows to thousands within
    // the round, and the plans the server chose and kept for a few rows (a hash join reading
    // the whole voucher table) cost more at every save until its own statistics catch up.
    const int prefill = qEnvironmentVariableIsSet("TR_BENCH_PREFILL") ? qEnvironmentVariableIntValue("TR_BENCH_PREFILL")
                                                                      : 150;
    auto bookInUse = [&] {
        const QString connectionText = server.connectionText(server.createDatabase(QStringLiteral("bench")));
        tr::pg::PgServer books(connectionText);
        registerProcedures(books);
        auto suite = books.connect(QString::fromUtf8(tr::schema::kSuiteDatabase));
        tr::schema::loadDemoCompany(*suite, [&](const QString& name) -> std::unique_ptr<tr::db::Connection> {
            return books.connect(name);
        });
        if (prefill > 0) measure(app.applicationFilePath(), connectionText, 8, prefill);
        books.connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase))->execute(QStringLiteral("Exec sp_updatestats"));
        static_cast<tr::pg::PgConnection&>(*suite).link().run(QStringLiteral("CHECKPOINT"));
        return connectionText;
    };
    std::printf("%-8s %10s %12s %10s %10s\n", "clients", "receipts", "receipts/s", "p50 ms", "p99 ms");
    double single = 0;
    for (int clients : rounds) {
        const Round r = measure(app.applicationFilePath(), bookInUse(), clients, perClient);
        const double rate = r.receipts / r.seconds;
        if (single == 0) single = rate;
        std::printf("%-8d %10d %12.1f %10.2f %10.2f   (%.2fx the first round)\n", r.clients, r.receipts, rate, r.p50,
                    r.p99, rate / single);
        std::fflush(stdout);
    }
    return 0;
}
