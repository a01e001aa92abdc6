#include "db/engine/sqlite_connection.h"

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QRegularExpression>
#include <cstdio>

#include "common/db/database_error.h"
#include "db/engine/collation_order.h"
#include "db/engine/connection_caches.h"
#include "db/engine/engine.h"
#include "db/engine/limits.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/parser.h"
#include "db/engine/planner_statistics.h"
#include "db/engine/sql_identifiers.h"
#include "db/engine/sqlite_functions.h"
#include "db/engine/step_description.h"

namespace tr::engine {

using tr::db::DatabaseError;
using tr::db::ExecResult;
using tr::db::ResultSet;

namespace {

constexpr int kMaxAttached = 8;
constexpr int kMaxCachedStatements = 2000;
constexpr int kMaxCachedBatches = 2000;

const char* const kCatalogViews[] = {
    "CREATE TEMP VIEW tr_sysobjects AS SELECT name AS name, rowid AS id, "
    "CASE type WHEN 'table' THEN 'U' WHEN 'view' THEN 'V' ELSE 'TR' END AS xtype, "
    "CASE type WHEN 'table' THEN 'U' WHEN 'view' THEN 'V' ELSE 'TR' END AS type "
    "FROM main.sqlite_master WHERE type IN ('table','view','trigger') AND substr(name, 1, 7) <> 'sqlite_'",
    "CREATE TEMP VIEW tr_syscolumns AS SELECT m.rowid AS id, p.name AS name, p.cid + 1 AS colid, p.type AS length "
    "FROM main.sqlite_master AS m JOIN pragma_table_info(m.name, 'main') AS p WHERE m.type IN ('table','view')",
    "CREATE TEMP VIEW tr_tempdb_sysobjects AS SELECT name AS name, rowid AS id, "
    "CASE type WHEN 'table' THEN 'U' WHEN 'view' THEN 'V' ELSE 'TR' END AS xtype, "
    "CASE type WHEN 'table' THEN 'U' WHEN 'view' THEN 'V' ELSE 'TR' END AS type "
    "FROM tempdb.sqlite_master WHERE type IN ('table','view','trigger') AND substr(name, 1, 7) <> 'sqlite_' "
    "AND NOT tsql_retired(name)",
    "CREATE TEMP VIEW tr_tempdb_syscolumns AS SELECT m.rowid AS id, p.name AS name, p.cid + 1 AS colid, "
    "p.type AS length FROM tempdb.sqlite_master AS m JOIN pragma_table_info(m.name, 'tempdb') AS p "
    "WHERE m.type IN ('table','view') AND NOT tsql_retired(m.name)",
};

QVariant columnValue(sqlite3_stmt* statement, int i) {
    switch (sqlite3_column_type(statement, i)) {
        case SQLITE_INTEGER:
            return QVariant(static_cast<qlonglong>(sqlite3_column_int64(statement, i)));
        case SQLITE_FLOAT:
            return QVariant(sqlite3_column_double(statement, i));
        case SQLITE_NULL:
            return QVariant();
        case SQLITE_BLOB:
            return QVariant(QByteArray(static_cast<const char*>(sqlite3_column_blob(statement, i)),
                                       sqlite3_column_bytes(statement, i)));
        default:
            return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, i)),
                                              sqlite3_column_bytes(statement, i)));
    }
}

// SQLite's message for the last error; its own limits on a statement's depth and length are
// given as the server words them, as are the engine's.
QString errorMessage(sqlite3* db) {
    const QString message = QString::fromUtf8(sqlite3_errmsg(db));
    if (message == QLatin1String("parser stack overflow") ||
        message.startsWith(QLatin1String("Expression tree is too large")) ||
        message.startsWith(QLatin1String("too many terms in compound SELECT")))
        return nestedTooDeeplyMessage();
    return message;
}

}  // namespace

SqliteConnection::SqliteConnection(Engine& engine, const QString& databaseName)
    : engine_(engine), databaseName_(databaseName.trimmed()) {
    const QByteArray file = engine.databaseFile(databaseName_).toUtf8();
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(file.constData(), &db_, flags, nullptr) != SQLITE_OK) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(db_));
        sqlite3_close(db_);
        db_ = nullptr;
        throw DatabaseError(QStringLiteral("Cannot open database '%1': %2").arg(databaseName_, message));
    }
    sqlite3_extended_result_codes(db_, 0);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_busy_timeout(db_, kBusyTimeoutMs);
    registerTsqlFunctions(db_, this);
    try {
        exec("PRAGMA journal_mode=WAL");
        exec("PRAGMA synchronous=FULL");
        exec("PRAGMA foreign_keys=ON");
        // SQLite's automatic indexes with a condition (a join on a column that the statement also
        // compares with a constant) lose rows that the TSQL collation finds equal but not
        // byte-equal, such as a code with a leading blank; real indexes are unaffected.
        exec("PRAGMA automatic_index=OFF");
        const QByteArray attach = (QStringLiteral("ATTACH DATABASE '") + engine.tempdbUri() +
                                   QStringLiteral("' AS tempdb")).toUtf8();
        exec(attach.constData());
        for (const char* view : kCatalogViews) exec(view);
        bringCollationOrderUpToDate(db_, QStringLiteral("main"));
    } catch (...) {
        sqlite3_close(db_);
        db_ = nullptr;
        throw;
    }
}

SqliteConnection::~SqliteConnection() {
    finalizeStatements();
    if (!db_) return;
    // Keeps the planner's statistics fresh where the connection's writes outgrew them. SQLite's
    // own PRAGMA optimize would analyse from an uncorrected sample and undo the counted figures.
    if (depth_ == 0) refreshStaleStatistics(db_, "main");
    sqlite3_close(db_);
}

bool SqliteConnection::refreshStatistics() {
    if (!refreshStaleStatistics(db_, "main")) return false;
    // Plans made before the statistics would keep the old choices.
    if (stepping_ == 0) finalizeStatements();
    return true;
}

void SqliteConnection::fail(const QString& message, int position) {
    throw DatabaseError(message, source_ ? *source_ : QString(), position);
}

void SqliteConnection::exec(const char* sql) {
    char* error = nullptr;
    if (sqlite3_exec(db_, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        const QString message = QString::fromUtf8(error ? error : sqlite3_errmsg(db_));
        sqlite3_free(error);
        throw DatabaseError(message, QString::fromUtf8(sql));
    }
}

QByteArray SqliteConnection::pragmaText(const QByteArray& pragma) {
    sqlite3_stmt* statement = nullptr;
    const QByteArray sql = "PRAGMA " + pragma;
    QByteArray value;
    if (sqlite3_prepare_v2(db_, sql.constData(), int(sql.size()), &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        value = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
    return value.toLower();
}

int SqliteConnection::pragmaInt(const QByteArray& pragma) { return pragmaText(pragma).toInt(); }

// SQLite fixes how a commit flushes when its transaction begins, and Commit ... With
// (Delayed_Durability = On) decides only at the end. So an explicit transaction runs its files
// that flush at every commit (synchronous FULL or EXTRA, write-ahead log) at NORMAL, where a
// commit writes the log without flushing it, and a durable commit flushes each such log itself
// before answering. Checkpoints flush as at FULL; a delayed commit becomes durable with the next
// flush of its log, and the log's checksummed frames let a power loss lose it only whole.
void SqliteConnection::beginExplicitTransaction() {
    deferredFlush_.clear();
    const auto lower = [&](const QString& schema) {
        const QByteArray quoted = quoteIdent(schema).toUtf8();
        // Read once per file: nothing the engine runs changes either setting afterwards.
        auto level = flushLevels_.constFind(schema);
        if (level == flushLevels_.constEnd()) {
            const bool wal = pragmaText(quoted + ".journal_mode") == "wal";
            level = flushLevels_.insert(schema, wal ? pragmaInt(quoted + ".synchronous") : 0);
        }
        if (level.value() < 2) return;
        exec(("PRAGMA " + quoted + ".synchronous=NORMAL").constData());
        deferredFlush_.push_back({schema.toUtf8(), level.value()});
    };
    try {
        lower(QStringLiteral("main"));
        for (const QString& alias : std::as_const(attached_)) lower(alias);
        exec("BEGIN IMMEDIATE");
    } catch (...) {
        restoreFlushLevels();
        throw;
    }
}

void SqliteConnection::commitExplicitTransaction(bool delayedDurability) {
    try {
        exec("COMMIT");
    } catch (...) {
        if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        restoreFlushLevels();
        throw;
    }
    int rc = SQLITE_OK;
    if (!delayedDurability) {
        for (const DeferredFlush& f : deferredFlush_) {
            sqlite3_file* log = nullptr;
            sqlite3_file_control(db_, f.schema.constData(), SQLITE_FCNTL_JOURNAL_POINTER, &log);
            if (log && log->pMethods && rc == SQLITE_OK) rc = log->pMethods->xSync(log, SQLITE_SYNC_NORMAL);
        }
    }
    restoreFlushLevels();
    if (rc != SQLITE_OK) throw DatabaseError(QString::fromUtf8(sqlite3_errstr(rc)), QStringLiteral("COMMIT"));
}

void SqliteConnection::rollBackExplicitTransaction() {
    const int rc = sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    restoreFlushLevels();
    if (rc != SQLITE_OK) throw DatabaseError(QString::fromUtf8(sqlite3_errmsg(db_)), QStringLiteral("ROLLBACK"));
}

void SqliteConnection::restoreFlushLevels() {
    for (const DeferredFlush& f : deferredFlush_) {
        const QByteArray sql = "PRAGMA " + quoteIdent(QString::fromUtf8(f.schema)).toUtf8() +
                               ".synchronous=" + QByteArray::number(f.level);
        sqlite3_exec(db_, sql.constData(), nullptr, nullptr, nullptr);
    }
    deferredFlush_.clear();
}

void SqliteConnection::finalizeStatements() {
    for (const PreparedStatement& s : std::as_const(statements_)) sqlite3_finalize(s.statement);
    statements_.clear();
}

void SqliteConnection::clearTranslations() {
    batches_.clear();
    shared_.clear();
}

QString SqliteConnection::tableKey(const QString& schema, const QString& table) const {
    const QString s = schema.toLower();
    const QString database = s.isEmpty() || s == QLatin1String("main") ? databaseName_.toLower()
                             : s == QLatin1String("tempdb") || s == QLatin1String("temp") ? s
                                                                                           : aliasDatabases_.value(s, s);
    return database + QLatin1Char('.') + table.toLower();
}

bool SqliteConnection::current(const Dependencies& dependencies) const {
    for (const auto& [table, generation] : dependencies)
        if (engine_.tableGeneration(table) != generation) return false;
    return true;
}

// ---- catalogue -----------------------------------------------------------------------------

QString SqliteConnection::schemaForDatabase(const QString& database, int position) {
    const QString name = database.trimmed();
    if (name.isEmpty() || name.compare(databaseName_, Qt::CaseInsensitive) == 0) return QStringLiteral("main");
    if (name.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) == 0) return QStringLiteral("tempdb");
    const QString key = name.toLower();
    if (attached_.contains(key)) {
        attachOrder_.removeOne(key);
        attachOrder_.append(key);
        return attached_.value(key);
    }
    if (!engine_.databaseExists(name)) {
        fail(QStringLiteral("Database '%1' does not exist. Make sure that the name is entered correctly.").arg(name),
             position);
    }
    if (depth_ > 0 || !sqlite3_get_autocommit(db_)) {
        fail(QStringLiteral("Database '%1' is first used inside a transaction; use it once before the transaction "
                            "begins")
                 .arg(name),
             position);
    }
    if (attached_.size() >= kMaxAttached) {
        const QString oldest = attachOrder_.takeFirst();
        finalizeStatements();
        clearTranslations();
        const QString oldAlias = attached_.take(oldest);
        flushLevels_.remove(oldAlias);
        aliasDatabases_.remove(oldAlias.toLower());
        exec(QStringLiteral("DETACH DATABASE %1").arg(quoteIdent(oldAlias)).toUtf8().constData());
    }
    QString alias = QStringLiteral("db_") + key;
    alias.replace(QRegularExpression(QStringLiteral("[^a-z0-9_]")), QStringLiteral("_"));
    QString file = engine_.databaseFile(name);
    file.replace(QLatin1Char('\''), QLatin1String("''"));
    exec(QStringLiteral("ATTACH DATABASE '%1' AS %2").arg(file, quoteIdent(alias)).toUtf8().constData());
    exec(QStringLiteral("PRAGMA %1.journal_mode=WAL").arg(quoteIdent(alias)).toUtf8().constData());
    exec(QStringLiteral("PRAGMA %1.synchronous=FULL").arg(quoteIdent(alias)).toUtf8().constData());
    try {
        bringCollationOrderUpToDate(db_, alias);
    } catch (...) {
        sqlite3_exec(db_, QStringLiteral("DETACH DATABASE %1").arg(quoteIdent(alias)).toUtf8().constData(),
                     nullptr, nullptr, nullptr);
        throw;
    }
    attached_.insert(key, alias);
    aliasDatabases_.insert(alias.toLower(), key);
    attachOrder_.append(key);
    return alias;
}

std::vector<ColumnInfo> SqliteConnection::columns(const QString& schema, const QString& table) {
    const QString key = tableKey(schema, table);
    const quint64 generation = engine_.tableGeneration(key);
    if (recording_) recording_->emplace_back(key, generation);
    if (retired(schema, table)) return {};
    auto it = columns_.constFind(key);
    if (it != columns_.constEnd() && it.value().first == generation) return it.value().second;
    std::vector<ColumnInfo> result;
    const QString sql = QStringLiteral("PRAGMA %1.table_info(%2)").arg(quoteIdent(schema), quoteIdent(table));
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(db_, utf8.constData(), utf8.size(), &statement, nullptr) == SQLITE_OK) {
        while (sqlite3_step(statement) == SQLITE_ROW) {
            ColumnInfo c;
            c.name = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 1)));
            c.declaredType = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 2)));
            c.type = typeOfDeclaration(c.declaredType);
            // Only an Identity column is declared INTEGER PRIMARY KEY (other integers say INT).
            c.identity = sqlite3_column_int(statement, 5) == 1 && c.declaredType == QLatin1String("INTEGER");
            result.push_back(c);
        }
    }
    sqlite3_finalize(statement);
    if (!result.empty()) columns_.insert(key, {generation, result});
    return result;
}

QVariant SqliteConnection::columnLength(const QString& table, const QString& column) {
    QStringList parts = table.split(QLatin1Char('.'));
    const QString name = parts.last();
    const QString schema = name.startsWith(QLatin1String("##")) ? QStringLiteral("tempdb")
                           : parts.size() == 3              ? schemaForDatabase(parts.first(), 0)
                                                            : QStringLiteral("main");
    for (const ColumnInfo& c : columns(schema, name)) {
        if (c.name.compare(column, Qt::CaseInsensitive) != 0) continue;
        const QString t = c.declaredType.toUpper();
        static const QRegularExpression length(QStringLiteral("\\((\\d+)"));
        const auto m = length.match(t);
        const int n = m.hasMatch() ? m.captured(1).toInt() : -1;
        if (t.startsWith(QLatin1String("NVARCHAR")) || t.startsWith(QLatin1String("NCHAR"))) return n < 0 ? 2 : 2 * n;
        if (t.contains(QLatin1String("CHAR"))) return n < 0 ? 1 : n;
        if (t.startsWith(QLatin1String("BIGINT")) || t.startsWith(QLatin1String("FLOAT"))) return 8;
        if (t.startsWith(QLatin1String("SMALLINT"))) return 2;
        if (t.startsWith(QLatin1String("TINYINT")) || t.startsWith(QLatin1String("BIT"))) return 1;
        if (t.startsWith(QLatin1String("INT"))) return 4;
        return 16;
    }
    return {};
}

QVariant SqliteConnection::objectId(const QString& name) {
    const QStringList parts = name.split(QLatin1Char('.'));
    const QString object = parts.last();
    const bool temp = object.startsWith(QLatin1String("##")) ||
                      (parts.size() == 3 && parts.first().compare(QLatin1String("tempdb"), Qt::CaseInsensitive) == 0);
    if (temp && retired(QStringLiteral("tempdb"), object)) return {};
    const QString sql = QStringLiteral("SELECT rowid FROM %1.sqlite_master WHERE name = '%2' COLLATE NOCASE AND type <> 'index'")
                            .arg(temp ? QStringLiteral("tempdb") : QStringLiteral("main"),
                                 QString(object).replace(QLatin1Char('\''), QLatin1String("''")));
    return scalar(sql, 0);
}

QVariant SqliteConnection::callFunction(const QString& name, const std::vector<QVariant>& args) {
    const tr::tsql::ScalarFunction* f = engine_.procedures().function(name);
    if (!f) {
        throw DatabaseError(QStringLiteral("Cannot find either column \"dbo\" or the user-defined function or aggregate "
                                           "\"dbo.%1\", or the name is ambiguous.")
                                .arg(name));
    }
    return (*f)(*this, args);
}

// ---- running -------------------------------------------------------------------------------

SqliteConnection::PreparedStatement SqliteConnection::prepare(const QString& sql, int position) {
    auto it = statements_.constFind(sql);
    if (it != statements_.constEnd()) return it.value();
    // Not while a statement is being stepped: a procedure it calls may be preparing this one.
    if (statements_.size() >= kMaxCachedStatements && stepping_ == 0) finalizeStatements();
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(db_, utf8.constData(), utf8.size(), &statement, nullptr) != SQLITE_OK) {
        const QString message = errorMessage(db_);
        sqlite3_finalize(statement);
        fail(message, position);
    }
    PreparedStatement prepared;
    prepared.statement = statement;
    readColumnNames(prepared);
    statements_.insert(sql, prepared);
    return prepared;
}

void SqliteConnection::readColumnNames(PreparedStatement& prepared) {
    sqlite3_stmt* statement = prepared.statement;
    prepared.columns.clear();
    prepared.columnsHaveParameters = false;
    for (int i = 0, n = sqlite3_column_count(statement); i < n; ++i) {
        prepared.columns << QString::fromUtf8(sqlite3_column_name(statement, i));
        if (prepared.columns.back().contains(QLatin1Char('?'))) prepared.columnsHaveParameters = true;
    }
    prepared.reprepared = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
}

void SqliteConnection::runSql(const QString& sql, ExecResult& result, int position, const Bindings* bindings) {
    // TR_SQL_TRACE=1 prints every SQLite statement with its time (and bound values), to find a slow one.
    static const bool trace = qEnvironmentVariableIsSet("TR_SQL_TRACE");
    QElapsedTimer timer;
    if (trace) timer.start();
    runSqlUntraced(sql, result, position, bindings);
    if (trace) {
        QString values;
        for (const QVariant& v : bindings ? *bindings : Bindings{})
            values += (values.isEmpty() ? QStringLiteral("  -- ") : QStringLiteral(", ")) + v.toString();
        std::fprintf(stderr, "%8.3f ms  %s%s\n", timer.nsecsElapsed() / 1e6, sql.toUtf8().constData(),
                     values.toUtf8().constData());
    }
}

namespace {

void bind(sqlite3_stmt* statement, const Bindings& values) {
    const int count = std::min(sqlite3_bind_parameter_count(statement), int(values.size()));
    for (int i = 1; i <= count; ++i) {
        const QVariant& v = values[i - 1];
        switch (v.typeId()) {
            case QMetaType::LongLong:
                sqlite3_bind_int64(statement, i, v.toLongLong());
                break;
            case QMetaType::Double:
                sqlite3_bind_double(statement, i, v.toDouble());
                break;
            default: {
                const QByteArray utf8 = v.toString().toUtf8();
                sqlite3_bind_text(statement, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
            }
        }
    }
}

// An unnamed result column is named by its expression; one written with parameters is named
// with the values as the text wrote them, as it was before they were bound.
QString withValues(const QString& name, const Bindings& values) {
    static const QRegularExpression parameter(QStringLiteral("\\?(\\d+)"));
    QString out;
    qsizetype last = 0;
    for (auto it = parameter.globalMatch(name); it.hasNext();) {
        const auto m = it.next();
        out += QStringView(name).mid(last, m.capturedStart() - last);
        const qsizetype k = m.captured(1).toLongLong() - 1;
        if (k < 0 || k >= qsizetype(values.size())) {
            out += m.captured();
        } else {
            const QVariant& v = values[k];
            out += v.typeId() == QMetaType::QString
                       ? QLatin1Char('\'') + v.toString().replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'')
                       : v.toString();
        }
        last = m.capturedEnd();
    }
    out += QStringView(name).mid(last);
    return out;
}

}  // namespace

void SqliteConnection::runSqlUntraced(const QString& sql, ExecResult& result, int position,
                                      const Bindings* bindings) {
    PreparedStatement prepared = prepare(sql, position);
    sqlite3_stmt* statement = prepared.statement;
    if (bindings) bind(statement, *bindings);
    ResultSet set;
    int rc;
    ++stepping_;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
        const int columnCount = sqlite3_column_count(statement);
        tr::db::Row row;
        row.reserve(columnCount);
        for (int i = 0; i < columnCount; ++i) row.push_back(columnValue(statement, i));
        set.rows.push_back(std::move(row));
    }
    --stepping_;
    // SQLite prepares a statement again, with the columns as they now are, when a table it reads
    // has changed; the names kept with it are read again then.
    if (sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0) != prepared.reprepared) {
        readColumnNames(prepared);
        statements_.insert(sql, prepared);
    }
    const int columnCount = int(prepared.columns.size());
    set.columns = prepared.columns;
    if (bindings && prepared.columnsHaveParameters)
        for (QString& name : set.columns) name = withValues(name, *bindings);
    if (rc != SQLITE_DONE) {
        const QString message = errorMessage(db_);
        sqlite3_reset(statement);
        fail(message, position);
    }
    sqlite3_reset(statement);
    if (columnCount > 0) {
        result.resultSets.push_back(std::move(set));
    } else if (!sqlite3_stmt_readonly(statement)) {
        const int changed = sqlite3_changes(db_);
        result.rowsAffected += changed;
        if (changed > 0 && sql.startsWith(QLatin1String("INSERT ")))
            result.lastIdentity = sqlite3_last_insert_rowid(db_);
    }
}

QVariant SqliteConnection::scalar(const QString& sql, int position) {
    ExecResult r;
    runSql(sql, r, position);
    if (r.resultSets.empty() || r.resultSets.front().rows.empty()) return {};
    return r.resultSets.front().rows.front().front();
}

template <typename F>
void SqliteConnection::inTransaction(F&& work, bool immediate) {
    if (depth_ > 0) {
        work();
        return;
    }
    exec(immediate ? "BEGIN IMMEDIATE" : "BEGIN");
    depth_ = 1;
    try {
        work();
    } catch (...) {
        depth_ = 0;
        if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        rollBackTempTables();
        throw;
    }
    depth_ = 0;
    exec("COMMIT");
    commitTempTables();
}

bool SqliteConnection::retired(const QString& schema, const QString& table) {
    if (schema.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) != 0) return false;
    const auto state = engine_.tempTable(table.toLower());
    return state && state->retired;
}

void SqliteConnection::noteTempTable(const QString& name, bool exists, const QString& definition, bool retired) {
    const auto before = engine_.tempTable(name);
    tempJournal_.push_back({name, before.has_value(), before ? before->definition : QString(), before && before->retired});
    if (exists) engine_.setTempTable(name, Engine::TempTable{definition, retired});
    else engine_.setTempTable(name, std::nullopt);
}

void SqliteConnection::rollBackTempTables() {
    for (auto it = tempJournal_.rbegin(); it != tempJournal_.rend(); ++it) {
        if (it->existed) engine_.setTempTable(it->name, Engine::TempTable{it->definition, it->retired});
        else engine_.setTempTable(it->name, std::nullopt);
        engine_.tableChanged(tableKey(QStringLiteral("tempdb"), it->name));
    }
    tempJournal_.clear();
}

void SqliteConnection::runStatements(const Step& step, ExecResult& result, int position, const Bindings* bindings) {
    // Bound text written into a column must fit it, as tsql_fit checks values in the text.
    Bindings fitted;
    if (!fitBoundTexts(step, bindings, fitted)) fail(QStringLiteral("String or binary data would be truncated."), position);
    auto work = [&] {
        int first = 0;
        for (const TableName& t : step.changedTables) {
            if (t.schema.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) != 0) continue;
            const QString name = t.table.toLower();
            const auto state = engine_.tempTable(name);
            const QString target = QStringLiteral("\"tempdb\".") + quoteIdent(t.table);
            ExecResult scratch;
            switch (t.change) {
                case TableName::Change::Dropped:
                    if (state && state->retired) {
                        fail(QStringLiteral("Cannot drop the table '%1', because it does not exist or you do not "
                                            "have permission.")
                                 .arg(t.table),
                             position);
                    }
                    if (state && !state->retired && !state->definition.isEmpty()) {
                        runSql(QStringLiteral("DELETE FROM ") + target, scratch, position);
                        if (state->definition.contains(QLatin1String("AUTOINCREMENT")))
                            runSql(QStringLiteral("DELETE FROM \"tempdb\".sqlite_sequence WHERE name = ") +
                                       text(t.table),
                                   scratch, position);
                        noteTempTable(name, true, state->definition, true);
                        return;  // emptied and kept: the DROP itself is not run
                    }
                    noteTempTable(name, false, {}, false);
                    break;
                case TableName::Change::Created:
                    if (state && state->retired) {
                        if (state->definition == step.sql.front()) {
                            first = 1;  // the kept table is the new one
                        } else {
                            runSql(QStringLiteral("DROP TABLE ") + target, scratch, position);
                        }
                    }
                    noteTempTable(name, true, step.sql.front(), false);
                    break;
                case TableName::Change::Altered:
                    if (state) noteTempTable(name, true, QString(), state->retired);
                    break;
            }
        }
        for (int i = first; i < step.sql.size(); ++i) runSql(step.sql[i], result, position, bindings);
    };
    // Writing only temporary tables needs no lock on the database files, which BEGIN IMMEDIATE
    // would take (waiting for whoever writes the book): one statement runs on its own, several
    // in a transaction that locks only the files they touch.
    const bool alone = step.tempOnly && depth_ == 0 && step.sql.size() == 1 && step.changedTables.empty();
    if (step.writes && !alone) inTransaction(work, !step.tempOnly);
    else work();
    for (const TableName& t : step.changedTables) engine_.tableChanged(tableKey(t.schema, t.table));
}

void SqliteConnection::runStep(const Step& step, CachedBatch& batch, ExecResult& result) {
    switch (step.kind) {
        case Step::Kind::Sql:
            runStatements(step, result, step.position, nullptr);
            return;
        case Step::Kind::Call: {
            const tr::tsql::Procedure* procedure = engine_.procedures().procedure(step.procedure);
            if (!procedure) fail(QStringLiteral("Could not find stored procedure '%1'.").arg(step.procedure), step.position);
            auto call = [&] {
                const QString* outer = source_;
                ExecResult r = (*procedure)(*this, step.args);
                source_ = outer;
                for (ResultSet& set : r.resultSets) result.resultSets.push_back(std::move(set));
                result.rowsAffected += r.rowsAffected;
            };
            if (depth_ == 0 && engine_.procedures().isUpkeep(step.procedure)) call();
            else inTransaction(call);
            return;
        }
        case Step::Kind::If: {
            const bool condition = scalar(step.query, step.position).toLongLong() != 0;
            for (const ast::Statement* s : condition ? step.thenBody : step.elseBody) run(*s, batch, result);
            return;
        }
        case Step::Kind::Block:
            for (const ast::Statement* s : step.thenBody) run(*s, batch, result);
            return;
        case Step::Kind::ExecText: {
            const QString text = step.writtenText ? *step.writtenText : scalar(step.query, step.position).toString();
            const QString* outer = source_;
            ExecResult r = execute(text);
            source_ = outer;
            for (ResultSet& set : r.resultSets) result.resultSets.push_back(std::move(set));
            result.rowsAffected += r.rowsAffected;
            return;
        }
        case Step::Kind::Begin:
            if (depth_ == 0) beginExplicitTransaction();
            ++depth_;
            return;
        case Step::Kind::Commit:
            if (depth_ == 0) {
                fail(QStringLiteral("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."),
                     step.position);
            }
            if (--depth_ == 0) {
                commitExplicitTransaction(step.delayedDurability);
                commitTempTables();
            }
            return;
        case Step::Kind::Rollback:
            if (depth_ == 0) {
                fail(QStringLiteral("The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."),
                     step.position);
            }
            depth_ = 0;
            rollBackExplicitTransaction();
            rollBackTempTables();
            return;
    }
}

Step SqliteConnection::translateRecorded(const ast::Statement& statement, const QString& sql,
                                        Dependencies& dependencies) {
    ++translations_;
    Dependencies* outer = recording_;
    recording_ = &dependencies;
    try {
        Step step = translateStatement(statement, *this, sql);
        recording_ = outer;
        // A statement that creates, drops or alters a table does not read that table's columns:
        // its own change must not make its translation stale.
        for (const TableName& t : step.changedTables) {
            const QString changed = tableKey(t.schema, t.table);
            std::erase_if(dependencies, [&](const auto& d) { return d.first == changed; });
        }
        return step;
    } catch (...) {
        recording_ = outer;
        throw;
    }
}

void SqliteConnection::run(const ast::Statement& statement, CachedBatch& batch, ExecResult& result) {
    auto it = batch.steps.find(&statement);
    if (it == batch.steps.end() || !current(it.value().dependencies)) {
        CachedStep made;
        made.step = translateRecorded(statement, *source_, made.dependencies);
        it = batch.steps.insert(&statement, std::move(made));
    }
    const Step step = it.value().step;  // a copy: running it may renew the batch's translations
    runStep(step, batch, result);
}

ExecResult SqliteConnection::runBatch(const QString& sql, std::vector<Token> tokens) {
    auto batch = std::make_shared<CachedBatch>();
    batch->statements = parseBatch(sql, std::move(tokens), nullptr);
    if (sql.size() <= kMaxCachedTextLength) {
        if (batches_.size() >= kMaxCachedBatches) batches_.clear();
        batches_.insert(sql, batch);
    }
    ExecResult result;
    for (const ast::StatementPtr& statement : batch->statements) run(*statement, *batch, result);
    return result;
}

ExecResult SqliteConnection::execute(const QString& sql) {
    // Exec('...') and procedures run their statements through here, inside the statement that
    // called them: past the server's nesting limit the text is refused rather than the stack spent.
    if (calls_ >= kMaxCallDepth) {
        throw DatabaseError(QStringLiteral("Maximum stored procedure, function, trigger, or view nesting level "
                                           "exceeded (limit %1).")
                                .arg(kMaxCallDepth),
                            sql);
    }
    const QString* outer = source_;
    source_ = &sql;
    ++calls_;
    ExecResult result;
    try {
        auto shaped = shared_.texts.constFind(sql);
        if (shaped != shared_.texts.constEnd() && current(shaped->statement->translation.dependencies)) {
            const ShapedText text = shaped.value();  // running it may change the cache
            runStatements(text.statement->translation.step, result, text.position, &text.values);
        } else if (std::shared_ptr<CachedBatch> batch = batches_.value(sql)) {
            for (const ast::StatementPtr& statement : batch->statements) run(*statement, *batch, result);
        } else {
            ScannedText scanned;
            if (!(scanLiterals(sql, scanned) && mayParameterise(scanned) && runShaped(sql, scanned, result)))
                result = runBatch(sql, tokenize(sql));
        }
    } catch (...) {
        source_ = outer;
        --calls_;
        throw;
    }
    source_ = outer;
    --calls_;
    return result;
}

QString SqliteConnection::translate(const QString& sql) {
    return describeSteps(
        parseBatch(sql), [&](const ast::Statement& s) { return translateStatement(s, *this, sql); },
        QStringLiteral("BEGIN IMMEDIATE"));
}

QString SqliteConnection::explainQueryPlan(const QString& sql) {
    const std::vector<ast::StatementPtr> statements = parseBatch(sql);
    if (statements.empty()) return {};
    const Step step = translateStatement(*statements.front(), *this, sql);
    if (step.kind != Step::Kind::Sql || step.sql.isEmpty()) return {};
    ExecResult r;
    source_ = &sql;
    runSql(QStringLiteral("EXPLAIN QUERY PLAN ") + step.sql.last(), r, step.position);
    source_ = nullptr;
    QStringList lines;
    for (const tr::db::Row& row : r.resultSets.front().rows) lines << row.back().toString();
    return lines.join(QLatin1Char('\n'));
}

}  // namespace tr::engine
