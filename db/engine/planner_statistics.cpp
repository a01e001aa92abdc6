#include "db/engine/planner_statistics.h"

#include <sqlite3.h>

#include <QByteArray>
#include <QHash>
#include <vector>

#include "db/engine/limits.h"

namespace tr::engine {

namespace {

QByteArray quoted(const QByteArray& name) {
    QByteArray n = name;
    n.replace('"', "\"\"");
    return '"' + n + '"';
}

// Runs `sql` and hands each row to `row`; false when it could not be prepared or stepped.
template <typename F>
bool eachRow(sqlite3* db, const QByteArray& sql, F&& row) {
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), -1, &s, nullptr) != SQLITE_OK) {
        sqlite3_finalize(s);
        return false;
    }
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) row(s);
    sqlite3_finalize(s);
    return rc == SQLITE_DONE;
}

}  // namespace

int staleStatisticsTables(sqlite3* db, const char* schemaName) {
    const QByteArray schema = quoted(schemaName);
    std::vector<QByteArray> tables;
    bool haveStatistics = false;
    eachRow(db, "SELECT name FROM " + schema + ".sqlite_master WHERE type = 'table'",
            [&](sqlite3_stmt* s) {
                const QByteArray name(reinterpret_cast<const char*>(sqlite3_column_text(s, 0)));
                if (name == "sqlite_stat1") haveStatistics = true;
                else if (!name.startsWith("sqlite_")) tables.push_back(name);
            });
    // The first figure of a table's statistics is the rows it had (the table's own line, or
    // each index's, which count the same rows).
    QHash<QByteArray, qint64> recorded;
    if (haveStatistics) {
        eachRow(db, "SELECT tbl, max(CAST(stat AS INTEGER)) FROM " + schema + ".sqlite_stat1 GROUP BY tbl",
                [&](sqlite3_stmt* s) {
                    recorded.insert(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(s, 0))).toLower(),
                                    sqlite3_column_int64(s, 1));
                });
    }
    int stale = 0;
    for (const QByteArray& table : tables) {
        // Each end of the row key is found from the table's tree in a few page reads, but only
        // when a query asks for one end alone (both in one query scan the table). Rows deleted
        // in between are counted, which errs towards analysing.
        qint64 ends[2] = {0, 0};
        const QByteArray from = " FROM " + schema + '.' + quoted(table);
        if (!eachRow(db, "SELECT max(rowid)" + from, [&](sqlite3_stmt* s) { ends[1] = sqlite3_column_int64(s, 0); }) ||
            !eachRow(db, "SELECT min(rowid)" + from, [&](sqlite3_stmt* s) { ends[0] = sqlite3_column_int64(s, 0); }))
            continue;  // a table without row keys: left to the planner's defaults
        const qint64 rows = ends[1] == 0 ? 0 : ends[1] - ends[0] + 1;
        const qint64 known = recorded.value(table.toLower(), 0);
        if (rows >= 100 && rows > 4 * known) ++stale;
    }
    return stale;
}

bool refreshStaleStatistics(sqlite3* db, const char* schemaName) {
    if (staleStatisticsTables(db, schemaName) == 0) return false;
    // Another connection's write would hold the analysis up for the whole busy timeout.
    sqlite3_busy_timeout(db, 0);
    const QByteArray limit = "PRAGMA analysis_limit=" + QByteArray::number(kAnalysisRows);
    sqlite3_exec(db, limit.constData(), nullptr, nullptr, nullptr);
    const QByteArray analyze = "ANALYZE " + quoted(schemaName);
    const bool done = sqlite3_exec(db, analyze.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_exec(db, "PRAGMA analysis_limit=0", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, kBusyTimeoutMs);
    return done;
}

}  // namespace tr::engine
