#pragma once
// Keeps SQLite's planner statistics present and roughly current: a schema whose tables have grown
// past what sqlite_stat1 records (or have none) is analysed again from a bounded sample of each
// index, without ever waiting for another connection's write lock.
struct sqlite3;

namespace tr::engine {

// Rows each index is sampled for: wide key prefixes (dates, serials) are estimated from them
// within a factor of two, and a million-line book is sampled in tens of milliseconds
// (docs/decisions/planner-statistics.md).
inline constexpr int kAnalysisRows = 20000;

// Analyses `schema` again when any of its tables is stale (no statistics while it holds at least
// 100 rows, or fewer than half its rows recorded; rows estimated from the row keys), from a
// sample whose rows and few-valued key prefixes are then counted in the indexes; answers whether
// it did. A busy book is left as it is (the next check tries again).
bool refreshStaleStatistics(sqlite3* db, const char* schema);

}  // namespace tr::engine
