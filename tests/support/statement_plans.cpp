#include "tests/support/statement_plans.h"

#include <sqlite3.h>

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <QSet>
#include <mutex>

namespace tr::test {

namespace {

std::mutex lock;
std::vector<RecordedStatement> statements;
QSet<QString> seen;
std::vector<sqlite3*> handles;

int traced(unsigned type, void*, void* p, void*) {
    if (type == SQLITE_TRACE_CLOSE) {
        std::lock_guard<std::mutex> guard(lock);
        auto* db = static_cast<sqlite3*>(p);
        std::erase(handles, db);
        std::erase_if(statements, [db](const RecordedStatement& s) { return s.db == db; });
        return 0;
    }
    auto* statement = static_cast<sqlite3_stmt*>(p);
    const char* text = sqlite3_sql(statement);
    if (!text || text[0] == '-') return 0;  // a trigger's own statements
    const QString sql = QString::fromUtf8(text);
    std::lock_guard<std::mutex> guard(lock);
    if (seen.contains(sql)) return 0;
    seen.insert(sql);
    statements.push_back({sql, sqlite3_db_handle(statement)});
    return 0;
}

int onOpen(sqlite3* db, char**, const sqlite3_api_routines*) {
    sqlite3_trace_v2(db, SQLITE_TRACE_STMT | SQLITE_TRACE_CLOSE, traced, nullptr);
    std::lock_guard<std::mutex> guard(lock);
    handles.push_back(db);
    return SQLITE_OK;
}

}  // namespace

void StatementPlans::install() {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&onOpen));
}

void StatementPlans::clear() {
    std::lock_guard<std::mutex> guard(lock);
    statements.clear();
    seen.clear();
}

std::vector<RecordedStatement> StatementPlans::recorded() {
    std::lock_guard<std::mutex> guard(lock);
    return statements;
}

QStringList StatementPlans::plan(sqlite3* db, const QString& sql) {
    QStringList lines;
    sqlite3_stmt* s = nullptr;
    const QByteArray text = ("EXPLAIN QUERY PLAN " + sql).toUtf8();
    if (sqlite3_prepare_v2(db, text.constData(), -1, &s, nullptr) != SQLITE_OK) {
        lines << QStringLiteral("(no plan: ") + QString::fromUtf8(sqlite3_errmsg(db)) + QLatin1Char(')');
    } else {
        while (sqlite3_step(s) == SQLITE_ROW)
            lines << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 3)));
    }
    sqlite3_finalize(s);
    return lines;
}

sqlite3* StatementPlans::handleOf(const QString& fileEnd) {
    std::lock_guard<std::mutex> guard(lock);
    for (sqlite3* db : handles) {
        const char* file = sqlite3_db_filename(db, "main");
        if (file && QString::fromUtf8(file).endsWith(fileEnd, Qt::CaseInsensitive)) return db;
    }
    return nullptr;
}

QStringList StatementPlans::fullReads(const QString& sql, const QStringList& plan, const QStringList& tables) {
    QSet<QString> names;
    for (const QString& table : tables) {
        names.insert(table.toLower());
        // The engine writes every table as "schema"."Table" AS "Alias".
        const QRegularExpression alias(QStringLiteral("\"%1\"\\s+AS\\s+\"([^\"]+)\"").arg(table),
                                       QRegularExpression::CaseInsensitiveOption);
        for (auto m = alias.globalMatch(sql); m.hasNext();) names.insert(m.next().captured(1).toLower());
    }
    QStringList out;
    for (const QString& line : plan) {
        if (!line.startsWith(QLatin1String("SCAN "))) continue;
        const QString name = line.mid(5).section(QLatin1Char(' '), 0, 0).toLower();
        if (names.contains(name)) out << line;
    }
    return out;
}

int StatementPlans::loadStatistics(sqlite3* db, const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text)) return -1;
    // The statistics table exists once any table has been analysed; the book's figures replace
    // the demo's, and SQLite reads them again.
    if (sqlite3_exec(db, "ANALYZE main.N_Cash; DELETE FROM main.sqlite_stat1", nullptr, nullptr, nullptr) != SQLITE_OK)
        return -1;
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO main.sqlite_stat1 (tbl, idx, stat) VALUES (?1, NULLIF(?2, ''), ?3)", -1,
                       &insert, nullptr);
    int loaded = 0;
    for (const QByteArray& line : in.readAll().split('\n')) {
        const QList<QByteArray> fields = line.split('|');
        if (fields.size() != 3) continue;
        for (int i = 0; i < 3; ++i) sqlite3_bind_text(insert, i + 1, fields[i].constData(), fields[i].size(), SQLITE_TRANSIENT);
        if (sqlite3_step(insert) == SQLITE_DONE) ++loaded;
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    if (sqlite3_exec(db, "ANALYZE sqlite_schema", nullptr, nullptr, nullptr) != SQLITE_OK) return -1;
    return loaded;
}

QStringList StatementPlans::wholeTableReads(sqlite3* db, const QStringList& tables) {
    QStringList found;
    int planned = 0;
    for (const RecordedStatement& r : recorded()) {
        if (r.db != db) continue;
        const bool large = std::any_of(tables.begin(), tables.end(), [&](const QString& t) {
            return r.sql.contains(QLatin1Char('"') + t + QLatin1Char('"'), Qt::CaseInsensitive);
        });
        if (!large) continue;
        ++planned;
        const QStringList steps = plan(db, r.sql);
        if (!fullReads(r.sql, steps, tables).isEmpty())
            found << r.sql + QStringLiteral("\n    ") + steps.join(QStringLiteral("\n    "));
    }
    if (planned == 0) found << QStringLiteral("no statement reading a large table was seen");
    return found;
}

}  // namespace tr::test
