// tr-generate: fills the demo company of a data directory (created when absent) with a book of
// cash and bank documents and, when asked, cheques with their actions, e.g.
// `tr-generate --data /tmp/book --documents 1000000 --cheques 300000`.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <cstdio>

#include "bench/generator.h"
#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Adds cash and bank documents to the demo company of a data directory."));
    parser.addHelpOption();
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("Data directory."),
                                  QStringLiteral("DIR"));
    const QCommandLineOption documents(QStringLiteral("documents"),
                                       QStringLiteral("Documents to add (default 10000)."),
                                       QStringLiteral("N"), QStringLiteral("10000"));
    const QCommandLineOption batch(QStringLiteral("batch"),
                                   QStringLiteral("Documents per transaction (default 250)."),
                                   QStringLiteral("K"), QStringLiteral("250"));
    const QCommandLineOption seed(QStringLiteral("seed"),
                                  QStringLiteral("Random seed (default 1404)."),
                                  QStringLiteral("S"), QStringLiteral("1404"));
    const QCommandLineOption cheques(
        QStringLiteral("cheques"),
        QStringLiteral("Cheques to add after the documents, with their actions (default 0)."),
        QStringLiteral("N"), QStringLiteral("0"));
    parser.addOptions({data, documents, batch, seed, cheques});
    parser.process(app);
    if (!parser.isSet(data)) {
        std::fprintf(stderr, "tr-generate: --data DIR is required\n");
        return 2;
    }
    bool ok = false;
    tr::bench::BookOptions options;
    options.documents = parser.value(documents).toLongLong(&ok);
    if (!ok || options.documents < 0) {
        std::fprintf(stderr, "tr-generate: --documents takes a number\n");
        return 2;
    }
    options.documentsPerTransaction = std::max(1, parser.value(batch).toInt());
    options.seed = parser.value(seed).toUInt();
    options.cheques.cheques = parser.value(cheques).toLongLong(&ok);
    if (!ok || options.cheques.cheques < 0) {
        std::fprintf(stderr, "tr-generate: --cheques takes a number\n");
        return 2;
    }
    options.cheques.seed = options.seed;
    QDir().mkpath(parser.value(data));

    QElapsedTimer clock;
    clock.start();
    options.progress = [&clock](qint64 done, qint64 total) {
        static qint64 lastReport = -1;
        const qint64 second = clock.elapsed() / 2000;
        if (second == lastReport && done != total) return;
        lastReport = second;
        std::fprintf(stderr, "\r%lld / %lld documents, %.0f per second   ",
                     static_cast<long long>(done), static_cast<long long>(total),
                     done / std::max(1e-3, clock.elapsed() / 1000.0));
        if (done == total) std::fputc('\n', stderr);
    };
    options.cheques.progress = [&clock](int day, int days, qint64 written, qint64 actions) {
        static qint64 lastReport = -1;
        const qint64 second = clock.elapsed() / 2000;
        if (second == lastReport && day != days) return;
        lastReport = second;
        std::fprintf(stderr, "\rday %d / %d: %lld cheques, %lld actions   ", day, days,
                     static_cast<long long>(written), static_cast<long long>(actions));
        if (day == days) std::fputc('\n', stderr);
    };
    try {
        auto engine = tr::bench::openDemoEngine(parser.value(data));
        auto company = tr::bench::openDemoCompany(*engine);
        clock.start();
        const tr::bench::BookReport r = tr::bench::generateBook(*company, options);
        std::printf(
            "%lld documents (%lld counter lines, %lld cancelled, %lld in currency) in %.1f s: "
            "%.0f documents per second; the book now holds %lld documents\n",
            static_cast<long long>(r.documents), static_cast<long long>(r.lines),
            static_cast<long long>(r.cancelled), static_cast<long long>(r.currency), r.seconds,
            r.rate(), static_cast<long long>(tr::bench::documentCount(*company)));
        if (r.cheques.cheques() > 0) {
            const tr::bench::ChequeReport& q = r.cheques;
            std::printf("%lld cheques (%lld received, %lld ours, %lld passed on) in %lld receipts and "
                        "%lld payments, %lld actions (%lld undone) in %lld batches, in %.1f s: %.0f "
                        "cheques and actions per second\n",
                        static_cast<long long>(q.cheques()), static_cast<long long>(q.received),
                        static_cast<long long>(q.own), static_cast<long long>(q.spent),
                        static_cast<long long>(q.receipts), static_cast<long long>(q.payments),
                        static_cast<long long>(q.actions), static_cast<long long>(q.undone),
                        static_cast<long long>(q.batches), q.seconds, q.rate());
            for (const auto& [kind, count] : q.perKind)
                std::printf("  %s: %lld\n", kind.toUtf8().constData(), static_cast<long long>(count));
        }
    } catch (const tr::db::DatabaseError& error) {
        std::fprintf(stderr, "\ntr-generate: %s\n", error.what());
        return 1;
    }
    return 0;
}
