#include "bench/server_search.h"

#include <QElapsedTimer>
#include <algorithm>
#include <memory>

#include "bench/large_book.h"
#include "cashbank/search/document_search.h"
#include "common/db/query.h"

namespace tr::bench {

namespace {

// One search screen's logic on one connection, with the session it needs.
class SearchScreen {
  public:
    explicit SearchScreen(tr::tsql::TsqlConnection& connection)
        : session_(connection),
          search_(std::make_unique<tr::cashbank::DocumentSearch>(session_.services, tr::cashbank::SearchFamily::Cash)) {
        tr::cashbank::SearchFilters& f = search_->filters();
        f.fromDate = {QStringLiteral("01"), QStringLiteral("03"), QStringLiteral("1404")};
        f.toDate = {QStringLiteral("31"), QStringLiteral("05"), QStringLiteral("1404")};
        f.fromAmount = QStringLiteral("1,000,000");
        f.toAmount = QStringLiteral("200,000,000");
        f.words[0] = QStringLiteral("وجه");
    }

    void run() {
        QElapsedTimer timer;
        timer.start();
        search_->mnuSearchClick();
        ms_.push_back(double(timer.nsecsElapsed()) / 1e6);
    }

    TimedSearch timed() {
        TimedSearch out;
        std::sort(ms_.begin(), ms_.end());
        out.medianMs = ms_.empty() ? 0 : ms_[ms_.size() / 2];
        out.slowestMs = ms_.empty() ? 0 : ms_.back();
        tr::db::Query& r = search_->result();
        for (int i = 0; i < r.RecordCount(); ++i) {
            std::vector<QVariant> row;
            for (int c = 0; c < r.fieldNames().size(); ++c) row.push_back(r.value(i, c));
            out.rows.push_back(std::move(row));
        }
        return out;
    }

  private:
    BenchSession session_;
    std::unique_ptr<tr::cashbank::DocumentSearch> search_;
    std::vector<double> ms_;
};

}  // namespace

std::pair<TimedSearch, TimedSearch> timeCashSearches(tr::tsql::TsqlConnection& first,
                                                     tr::tsql::TsqlConnection& second, int runs) {
    SearchScreen a(first), b(second);
    for (int i = 0; i < runs; ++i) {
        a.run();
        b.run();
    }
    return {a.timed(), b.timed()};
}

}  // namespace tr::bench
