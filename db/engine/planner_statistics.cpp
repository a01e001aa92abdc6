#include "db/engine/planner_statistics.h"

#include <sqlite3.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <algorithm>
#include <optional>
#include <vector>

#include "db/engine/limits.h"
#include "db/engine/sql_identifiers.h"

namespace tr::engine {

namespace {

// Distinct key prefixes counted by seeking through an index, at most this many seeks each.
constexpr int kMaxPrefixSeeks = 512;

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

QByteArray textAt(sqlite3_stmt* s, int column) {
    const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(s, column));
    return p ? QByteArray(p, sqlite3_column_bytes(s, column)) : QByteArray();
}

// A table's rows, from both ends of its row key: each end is found in a few page reads, but
// only when a query asks for one end alone (both in one query scan the table). Rows deleted in
// between are counted. Nothing for a table without row keys.
std::optional<qint64> rowKeyRows(sqlite3* db, const QByteArray& schema, const QByteArray& table) {
    qint64 ends[2] = {0, 0};
    const QByteArray from = " FROM " + schema + '.' + quoteIdent(table);
    if (!eachRow(db, "SELECT max(rowid)" + from, [&](sqlite3_stmt* s) { ends[1] = sqlite3_column_int64(s, 0); }) ||
        !eachRow(db, "SELECT min(rowid)" + from, [&](sqlite3_stmt* s) { ends[0] = sqlite3_column_int64(s, 0); }))
        return std::nullopt;
    return ends[1] == 0 ? 0 : ends[1] - ends[0] + 1;
}

// Each table's rows by rowKeyRows, lower-case name to count; tables without row keys absent.
using TableRows = QHash<QByteArray, qint64>;

TableRows tableRows(sqlite3* db, const QByteArray& schema, bool& haveStatistics) {
    TableRows rows;
    std::vector<QByteArray> tables;
    haveStatistics = false;
    eachRow(db, "SELECT name FROM " + schema + ".sqlite_master WHERE type = 'table'", [&](sqlite3_stmt* s) {
        const QByteArray name = textAt(s, 0);
        if (name == "sqlite_stat1") haveStatistics = true;
        else if (!name.startsWith("sqlite_")) tables.push_back(name);
    });
    for (const QByteArray& table : tables)
        if (const std::optional<qint64> n = rowKeyRows(db, schema, table)) rows.insert(table.toLower(), *n);
    return rows;
}

// Whether any table is stale: none recorded while the table holds at least 100 rows, or fewer
// than half the rows it holds now.
bool anyStale(sqlite3* db, const QByteArray& schema, const TableRows& rows, bool haveStatistics) {
    // The first figure of a table's statistics is the rows it had (the table's own line, or
    // each index's, which count the same rows).
    QHash<QByteArray, qint64> recorded;
    if (haveStatistics) {
        eachRow(db, "SELECT tbl, max(CAST(stat AS INTEGER)) FROM " + schema + ".sqlite_stat1 GROUP BY tbl",
                [&](sqlite3_stmt* s) { recorded.insert(textAt(s, 0).toLower(), sqlite3_column_int64(s, 1)); });
    }
    for (auto it = rows.cbegin(); it != rows.cend(); ++it)
        if (it.value() >= 100 && it.value() > 2 * recorded.value(it.key(), 0)) return true;
    return false;
}

// Counts the distinct values of an index's first columns by seeking from one value to the next,
// column by column within each value of the columns before (each seek a min() over an equality
// prefix, which SQLite answers from the index in a few page reads). Nulls are not counted.
class PrefixCounter {
public:
    PrefixCounter(sqlite3* db, const QByteArray& schema, const QByteArray& table, const QList<QByteArray>& columns) {
        QByteArray equal;
        for (int j = 0; j < columns.size(); ++j) {
            const QByteArray c = quoteIdent(columns[j]);
            const QByteArray head = "SELECT min(" + c + ") FROM " + schema + '.' + quoteIdent(table) + " WHERE " + equal;
            sqlite3_stmt* first = nullptr;
            sqlite3_stmt* next = nullptr;
            sqlite3_prepare_v2(db, head + c + " IS NOT NULL", -1, &first, nullptr);
            sqlite3_prepare_v2(db, head + c + " > ?" + QByteArray::number(j + 1), -1, &next, nullptr);
            first_.push_back(first);
            next_.push_back(next);
            equal += c + " = ?" + QByteArray::number(j + 1) + " AND ";
        }
    }
    ~PrefixCounter() {
        for (auto* s : first_) sqlite3_finalize(s);
        for (auto* s : next_) sqlite3_finalize(s);
        for (auto* v : prefix_) sqlite3_value_free(v);
    }

    // Nothing when more than `maxSeeks` seeks would be needed.
    std::optional<qint64> count(int maxSeeks) {
        if (std::find(first_.begin(), first_.end(), nullptr) != first_.end() ||
            std::find(next_.begin(), next_.end(), nullptr) != next_.end())
            return std::nullopt;
        seeksLeft_ = maxSeeks;
        qint64 total = 0;
        return level(0, total) ? std::optional<qint64>(total) : std::nullopt;
    }

private:
    // The value `s` finds with the prefix bound (and `after`, for the next one), or null.
    sqlite3_value* seek(sqlite3_stmt* s, int column, sqlite3_value* after) {
        --seeksLeft_;
        for (int i = 0; i < column; ++i) sqlite3_bind_value(s, i + 1, prefix_[i]);
        if (after) sqlite3_bind_value(s, column + 1, after);
        sqlite3_value* found = nullptr;
        if (sqlite3_step(s) == SQLITE_ROW && sqlite3_column_type(s, 0) != SQLITE_NULL)
            found = sqlite3_value_dup(sqlite3_column_value(s, 0));
        sqlite3_reset(s);
        return found;
    }

    bool level(int column, qint64& total) {
        const int last = int(first_.size()) - 1;
        prefix_.resize(column + 1, nullptr);
        for (sqlite3_value* v = seek(first_[column], column, nullptr); v;) {
            if (seeksLeft_ < 0) {
                sqlite3_value_free(v);
                return false;
            }
            prefix_[column] = v;
            if (column == last) ++total;
            else if (!level(column + 1, total)) return false;
            prefix_.resize(column + 1);
            sqlite3_value* following = seek(next_[column], column, v);
            sqlite3_value_free(v);
            prefix_[column] = nullptr;
            v = following;
        }
        return true;
    }

    std::vector<sqlite3_stmt*> first_, next_;
    std::vector<sqlite3_value*> prefix_;
    int seeksLeft_ = 0;
};

// A sampled analysis reads only the first rows of each index: where those rows share a key
// prefix, it records the sample's size as the rows per prefix, so a column of a few values over
// millions of rows looks selective (the cash box of a voucher line, say) and the planner starts
// a search from it. Such figures, and the rows, are replaced by counts taken from the indexes.
void correctSampledFigures(sqlite3* db, const QByteArray& schema, const TableRows& rows) {
    struct Line {
        QByteArray table, index, stat;
    };
    std::vector<Line> lines;
    eachRow(db, "SELECT tbl, idx, stat FROM " + schema + ".sqlite_stat1",
            [&](sqlite3_stmt* s) { lines.push_back({textAt(s, 0), textAt(s, 1), textAt(s, 2)}); });
    for (Line& line : lines) {
        const auto found = rows.constFind(line.table.toLower());
        QList<QByteArray> figures = line.stat.split(' ');
        if (found == rows.cend() || found.value() <= 0 || figures.isEmpty()) continue;
        const std::optional<qint64> n = found.value();
        figures[0] = QByteArray::number(*n);
        if (!line.index.isEmpty()) {
            QList<QByteArray> columns;
            bool plain = true;
            eachRow(db, "PRAGMA " + schema + ".index_info(" + quoteIdent(line.index) + ")", [&](sqlite3_stmt* s) {
                if (sqlite3_column_int(s, 1) < 0) plain = false;  // an expression, not a column
                columns << textAt(s, 2);
            });
            qint64 previous = *n;
            for (int k = 1; plain && k <= columns.size() && k < figures.size(); ++k) {
                bool isNumber = false;
                const qint64 sampled = figures[k].toLongLong(&isNumber);
                if (!isNumber || sampled * 4 < kAnalysisRows) break;  // the sample saw many prefixes
                const std::optional<qint64> distinct =
                    PrefixCounter(db, schema, line.table, columns.mid(0, k)).count(kMaxPrefixSeeks);
                if (!distinct || *distinct == 0) break;
                previous = std::min(previous, std::max<qint64>(1, (*n + *distinct - 1) / *distinct));
                figures[k] = QByteArray::number(previous);
            }
        }
        line.stat = figures.join(' ');
    }
    sqlite3_stmt* update = nullptr;
    sqlite3_prepare_v2(db, "UPDATE " + schema + ".sqlite_stat1 SET stat = ?1 WHERE tbl = ?2 AND idx IS ?3", -1,
                       &update, nullptr);
    sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    for (const Line& line : lines) {
        sqlite3_bind_text(update, 1, line.stat.constData(), line.stat.size(), SQLITE_TRANSIENT);
        sqlite3_bind_text(update, 2, line.table.constData(), line.table.size(), SQLITE_TRANSIENT);
        if (line.index.isEmpty()) sqlite3_bind_null(update, 3);
        else sqlite3_bind_text(update, 3, line.index.constData(), line.index.size(), SQLITE_TRANSIENT);
        sqlite3_step(update);
        sqlite3_reset(update);
    }
    sqlite3_finalize(update);
    if (sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    // The planner reads the figures again.
    sqlite3_exec(db, "ANALYZE " + schema + ".sqlite_schema", nullptr, nullptr, nullptr);
}

}  // namespace

bool refreshStaleStatistics(sqlite3* db, const char* schemaName) {
    const QByteArray schema = quoteIdent(QByteArray(schemaName));
    bool haveStatistics = false;
    const TableRows rows = tableRows(db, schema, haveStatistics);
    if (!anyStale(db, schema, rows, haveStatistics)) return false;
    // Another connection's write would hold the analysis up for the whole busy timeout.
    sqlite3_busy_timeout(db, 0);
    const QByteArray limit = "PRAGMA analysis_limit=" + QByteArray::number(kAnalysisRows);
    sqlite3_exec(db, limit.constData(), nullptr, nullptr, nullptr);
    const bool done = sqlite3_exec(db, "ANALYZE " + schema, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_exec(db, "PRAGMA analysis_limit=0", nullptr, nullptr, nullptr);
    if (done) correctSampledFigures(db, schema, rows);
    sqlite3_busy_timeout(db, kBusyTimeoutMs);
    return done;
}

}  // namespace tr::engine
