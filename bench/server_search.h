#pragma once
// The cash search with subtotals of the search benchmark (a date range, an amount range and a
// description word) run by the search screen's logic on two connections to the same book, the
// embedded engine's and the server's, one run each in turn: the machine's drift falls on both.
#include <QString>
#include <QVariant>
#include <vector>

#include "db/tsql/books.h"

namespace tr::bench {

struct TimedSearch {
    std::vector<std::vector<QVariant>> rows;  // the last run's result, totals included
    double medianMs = 0;
    double slowestMs = 0;  // the first run of a session, or a plan the server changes after some runs
};

// `runs` runs on each connection, alternating, timed separately.
std::pair<TimedSearch, TimedSearch> timeCashSearches(tr::tsql::TsqlConnection& first,
                                                     tr::tsql::TsqlConnection& second, int runs);

}  // namespace tr::bench
