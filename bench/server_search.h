#pragma once
// The cash search with subtotals of the search benchmark (a date range, an amount range and a
// description word) run by the search screen's logic on any connection, timed as the median of
// `runs`; for the same book on the embedded engine and on the server.
#include <QString>
#include <QVariant>
#include <vector>

#include "db/tsql/books.h"

namespace tr::bench {

struct TimedSearch {
    std::vector<std::vector<QVariant>> rows;  // the last run's result, totals included
    double medianMs = 0;
    double slowestMs = 0;  // a plan the server changes after some runs shows here
};

TimedSearch timeCashSearch(tr::tsql::TsqlConnection& connection, int runs);

}  // namespace tr::bench
