#pragma once
// Keeps SQLite's planner statistics present and roughly current: a schema whose tables have grown
// past what sqlite_stat1 records (or have none) is analysed again from a bounded sample of each
// index, without ever waiting for another connection's write lock.
struct sqlite3;

namespace tr::engine {

// Rows each index is sampled for; large enough that a column's distinct values are estimated
// within a few percent on the books seen, small enough that a million-line book takes well
// under a second (docs/decisions/planner-statistics.md).
inline constexpr int kAnalysisRows = 20000;

// The tables of `schema` whose statistics are stale: none recorded while the table holds at least
// 100 rows, or under half the rows it holds now. Rows are estimated from the row keys.
int staleStatisticsTables(sqlite3* db, const char* schema);

// Analyses `schema` again when any of its tables is stale, from a sample whose rows and
// few-valued key prefixes are then counted in the indexes; answers whether it did. A busy book
// is left as it is (the next check tries again).
bool refreshStaleStatistics(sqlite3* db, const char* schema);

}  // namespace tr::engine
