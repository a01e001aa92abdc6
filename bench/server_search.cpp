#include "bench/server_search.h"

#include <QElapsedTimer>
#include <algorithm>

#include "bench/large_book.h"
#include "cashbank/search/document_search.h"
#include "common/db/query.h"
#include "common/session/global.h"
#include "common/session/services.h"

namespace tr::bench {

TimedSearch timeCashSearch(tr::tsql::TsqlConnection& connection, int runs) {
    tr::Global global;
    tr::db::Query command(&connection);
    tr::db::MyDatabase my{&command, &connection};
    SilentDialog dialog;
    NeverStops progress;
    tr::Services services;
    global.sessionText = QStringLiteral("BENCH_");
    services.global = &global;
    services.database = &my;
    services.dialog = &dialog;
    services.progress = &progress;
    tr::cashbank::DocumentSearch search(services, tr::cashbank::SearchFamily::Cash);
    tr::cashbank::SearchFilters& f = search.filters();
    f.fromDate = {QStringLiteral("01"), QStringLiteral("03"), QStringLiteral("1404")};
    f.toDate = {QStringLiteral("31"), QStringLiteral("05"), QStringLiteral("1404")};
    f.fromAmount = QStringLiteral("1,000,000");
    f.toAmount = QStringLiteral("200,000,000");
    f.words[0] = QStringLiteral("وجه");

    std::vector<double> ms;
    TimedSearch out;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        search.mnuSearchClick();
        ms.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    out.medianMs = ms.empty() ? 0 : ms[ms.size() / 2];
    out.slowestMs = ms.empty() ? 0 : ms.back();
    tr::db::Query& r = search.result();
    for (int i = 0; i < r.RecordCount(); ++i) {
        std::vector<QVariant> row;
        for (int c = 0; c < r.fieldNames().size(); ++c) row.push_back(r.value(i, c));
        out.rows.push_back(std::move(row));
    }
    return out;
}

}  // namespace tr::bench
