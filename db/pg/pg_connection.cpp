#include "db/pg/pg_connection.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QScopeGuard>
#include <cstdio>
#include <functional>
#include <utility>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"
#include "db/engine/connection_caches.h"
#include "db/engine/limits.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/parser.h"
#include "db/engine/sql_identifiers.h"
#include "db/engine/step_description.h"
#include "db/pg/pg_link.h"
#include "db/pg/pg_server.h"
#include "db/pg/pg_writer.h"

namespace tr::pg {

using tr::db::DatabaseError;
using tr::db::ExecResult;
using tr::db::ResultSet;
using tr::engine::CachedBatch;
using tr::engine::ColumnInfo;
using tr::engine::Step;
using tr::engine::TableName;
namespace ast = tr::engine::ast;

namespace {

constexpr int kMaxCachedBatches = 2000;

// Writers take turns, as on the embedded engine: every transaction that may write the books takes
// this lock before it reads or writes a book (a procedure's or an explicit one before its first
// such statement, a lone statement with itself), so taking the next serial or voucher number by
// Max() + 1 stays right with many clients and no two writers can deadlock. Work on a session's
// own ## tables before that runs beside other writers; readers never wait. Held until the
// transaction ends.
const QString kWriterLock = QStringLiteral("SELECT pg_advisory_xact_lock(7301401)");
// A transaction given a key (tr::db::WriteTurn) waits only for others given the same key in the
// same book: the two-number advisory locks of this class, the key's hash the second.
constexpr int kKeyedLockClass = 7301402;
// If conditions remembered as asked once; past this many the memory starts afresh (each search's
// table is dropped by a condition of its own name, asked once).
constexpr qsizetype kMaxConditionsSeen = 256;

// The server's type as format_type() names it, declared as the translator reads declarations
// (and as a Select ... Into may declare a column again).
QString declaredType(const QString& serverType) {
    static const QRegularExpression sized(QStringLiteral("^(character varying|numeric)\\((\\d+)(?:,(\\d+))?\\)$"));
    const auto m = sized.match(serverType);
    if (m.hasMatch()) {
        if (m.captured(1) == QLatin1String("numeric"))
            return QStringLiteral("DECIMAL(%1,%2)").arg(m.captured(2), m.captured(3).isEmpty() ? QStringLiteral("0") : m.captured(3));
        return QStringLiteral("VARCHAR(%1)").arg(m.captured(2));
    }
    if (serverType == QLatin1String("character varying")) return QStringLiteral("VARCHAR");
    if (serverType == QLatin1String("text")) return QStringLiteral("TEXT");
    if (serverType == QLatin1String("integer")) return QStringLiteral("INT");
    if (serverType == QLatin1String("bigint")) return QStringLiteral("BIGINT");
    if (serverType == QLatin1String("smallint")) return QStringLiteral("SMALLINT");
    if (serverType == QLatin1String("double precision") || serverType == QLatin1String("real"))
        return QStringLiteral("FLOAT");
    if (serverType == QLatin1String("numeric")) return QStringLiteral("DECIMAL");
    if (serverType == QLatin1String("bytea")) return QStringLiteral("BYTEA");
    return serverType.toUpper();
}

// TR_SQL_TRACE=1 prints every statement sent with its time, and when a transaction takes its turn
// and commits, to find a slow one.
bool tracing() {
    static const bool trace = qEnvironmentVariableIsSet("TR_SQL_TRACE");
    return trace;
}

// A shared translation the server cannot prepare with its values as parameters (a Group By whose
// expression holds a value twice, a value whose type only its text would tell): the text then
// runs with its values written in.
struct ShapeRefused {};

bool refusesParameters(const QString& state) {
    for (const char* code : {"42803", "42P18", "42804", "42725", "42883", "42P08"})
        if (state == QLatin1String(code)) return true;
    return false;
}

// A literal of the T-SQL value a dbo function gave, written into PostgreSQL text.
QString literalOf(const QVariant& v) {
    if (v.isNull()) return QStringLiteral("NULL");
    switch (v.typeId()) {
        case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
        case QMetaType::Bool:
            return tr::db::sqlNumber(v.toLongLong());
        case QMetaType::Double: case QMetaType::Float:
            return tr::db::sqlNumber(v.toDouble());
        default:
            return tr::db::sqlText(v.toString(), tr::db::SqlDialect::PostgreSql);
    }
}

// The name a server message puts in double quotes ("relation "x.y" does not exist").
QString quotedName(const QString& message) {
    const qsizetype open = message.indexOf(QLatin1Char('"'));
    const qsizetype close = open < 0 ? -1 : message.indexOf(QLatin1Char('"'), open + 1);
    return close < 0 ? QString() : message.mid(open + 1, close - open - 1);
}

}  // namespace

PgConnection::PgConnection(PgServer& server, const QString& databaseName, std::unique_ptr<PgLink> link)
    : server_(server), databaseName_(databaseName), schema_(PgServer::schemaOf(databaseName)),
      link_(std::move(link)), shared_(std::make_unique<tr::engine::SharedTranslations>()) {
    // A statement waits for another client's lock as long as the embedded engine waits for its
    // writer, and is then refused. No parallel workers: the statements that could have them read
    // a screen's ## table of some thousands of rows back (a search's result, its subtotals), where
    // starting workers costs more than it saves (about 50 ms of a search on the large book), and
    // a desk's server has its cores busy with other users.
    link_->run(QStringLiteral("SET search_path = %1, public; SET lock_timeout = %2; "
                              "SET max_parallel_workers_per_gather = 0")
                   .arg(tr::engine::quoteIdent(schema_))
                   .arg(tr::engine::kBusyTimeoutMs));
}

PgConnection::~PgConnection() {
    try {
        if (link_->inTransaction()) link_->run(QStringLiteral("ROLLBACK"));
        rollBackTempTables();
        for (const QString& table : tempTables_.tables()) {
            link_->run(QStringLiteral("DROP TABLE IF EXISTS tempdb.") + tr::engine::quoteIdent(table));
            server_.setTempTableHidden(table, false);
            server_.tableChanged(tableKey(QStringLiteral("tempdb"), table));
        }
    } catch (const DatabaseError&) {
        // The session ends anyway; the server drops nothing of its own for a lost one.
    }
}

void PgConnection::fail(const QString& message, int position) {
    throw DatabaseError(message, source_ ? *source_ : QString(), position);
}

void PgConnection::refuse(const DatabaseError& e, const QString& state, const QString& sql, int position) {
    if (state == QLatin1String("42P01")) {
        QString name = quotedName(e.message());
        if (name.contains(QLatin1Char('.'))) name = name.section(QLatin1Char('.'), -1);
        // The server knows names in lower case: the statement's spelling is the user's.
        const qsizetype at = source_ ? source_->indexOf(name, 0, Qt::CaseInsensitive) : -1;
        if (at >= 0) name = source_->mid(at, name.size());
        if (sql.startsWith(QLatin1String("DROP TABLE"))) {
            fail(QStringLiteral("Cannot drop the table '%1', because it does not exist or you do not have "
                                "permission.")
                     .arg(name),
                 position);
        }
        fail(QStringLiteral("Invalid object name '%1'.").arg(name), position);
    }
    if (state == QLatin1String("22012")) fail(QStringLiteral("Divide by zero error encountered."), position);
    if (state == QLatin1String("55P03")) fail(QStringLiteral("Lock request time out period exceeded."), position);
    if (state == QLatin1String("57014")) fail(QStringLiteral("Operation cancelled by user."), position);
    fail(e.message(), position);
}

QString PgConnection::tableKey(const QString& schema, const QString& table) const {
    return schema.toLower() + QLatin1Char('.') + table.toLower();
}

bool PgConnection::current(const Dependencies& dependencies) const {
    for (const auto& [table, generation] : dependencies)
        if (server_.tableGeneration(table) != generation) return false;
    return true;
}

// ---- catalogue -----------------------------------------------------------------------------

QString PgConnection::schemaForDatabase(const QString& database, int position) {
    const QString name = database.trimmed();
    if (name.isEmpty() || name.compare(databaseName_, Qt::CaseInsensitive) == 0) return schema_;
    if (name.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) == 0) return QStringLiteral("tempdb");
    const QString schema = PgServer::schemaOf(name);
    if (!PgServer::schemaExists(*link_, schema)) {
        fail(QStringLiteral("Database '%1' does not exist. Make sure that the name is entered correctly.").arg(name),
             position);
    }
    return schema;
}

bool PgConnection::retired(const QString& schema, const QString& table) {
    return schema.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) == 0 && server_.tempTableHidden(table);
}

void PgConnection::shareHidden(const QStringList& tables) {
    for (const QString& table : tables) {
        server_.setTempTableHidden(table, tempTables_.hidden(table));
        server_.tableChanged(tableKey(QStringLiteral("tempdb"), table));
    }
}

std::vector<ColumnInfo> PgConnection::columns(const QString& schema, const QString& table) {
    const QString key = tableKey(schema, table);
    const quint64 generation = server_.tableGeneration(key);
    if (recording_) recording_->emplace_back(key, generation);
    auto it = columns_.constFind(key);
    if (it != columns_.constEnd() && it.value().first == generation) return it.value().second;
    const QString qualified = tr::engine::quoteIdent(schema.toLower()) + QLatin1Char('.') +
                              tr::engine::quoteIdent(table.toLower());
    const ExecResult r = link_->run(
        QStringLiteral("SELECT coalesce(col_description(a.attrelid, a.attnum), a.attname), "
                       "format_type(a.atttypid, a.atttypmod), a.attidentity <> '' "
                       "FROM pg_attribute AS a WHERE a.attrelid = to_regclass($1) AND a.attnum > 0 "
                       "AND NOT a.attisdropped AND obj_description(a.attrelid, 'pg_class') IS DISTINCT FROM $2 "
                       "ORDER BY a.attnum"),
        {qualified, QString::fromLatin1(KeptTempTables::kHiddenMark)});
    std::vector<ColumnInfo> result;
    for (const tr::db::Row& row : r.resultSets.front().rows) {
        ColumnInfo c;
        c.name = row.at(0).toString();
        c.declaredType = declaredType(row.at(1).toString());
        c.type = tr::engine::typeOfDeclaration(c.declaredType);
        c.identity = row.at(2).toLongLong() != 0;
        result.push_back(c);
    }
    if (!result.empty()) columns_.insert(key, {generation, result});
    return result;
}

// ---- running -------------------------------------------------------------------------------

QString PgConnection::withFunctionValues(const QString& sql, int position) {
    static const QRegularExpression call(QStringLiteral("tsql_call\\('((?:[^']|'')*)'"));
    static const QRegularExpression argument(
        QStringLiteral("\\G, (NULL|-?[0-9]+(?:\\.[0-9]+)?(?:[eE][-+]?[0-9]+)?|'(?:[^']|'')*')"));
    QString out;
    qsizetype from = 0;
    for (auto m = call.match(sql); m.hasMatch(); m = call.match(sql, from)) {
        out += sql.mid(from, m.capturedStart() - from);
        const QString name = m.captured(1).replace(QLatin1String("''"), QLatin1String("'"));
        qsizetype at = m.capturedEnd();
        std::vector<QVariant> args;
        for (auto a = argument.match(sql, at); a.hasMatch(); a = argument.match(sql, at)) {
            const QString text = a.captured(1);
            if (text == QLatin1String("NULL")) args.emplace_back();
            else if (text.startsWith(QLatin1Char('\''))) args.emplace_back(text.mid(1, text.size() - 2).replace(QLatin1String("''"), QLatin1String("'")));
            else if (text.contains(QLatin1Char('.')) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) args.emplace_back(text.toDouble());
            else args.emplace_back(text.toLongLong());
            at = a.capturedEnd();
        }
        if (at >= sql.size() || sql.at(at) != QLatin1Char(')')) {
            fail(QStringLiteral("dbo.%1 is called with arguments that are not values; on the database server "
                                "its arguments must be values")
                     .arg(name),
                 position);
        }
        const tr::tsql::ScalarFunction* f = server_.procedures().function(name);
        if (!f) {
            fail(QStringLiteral("Cannot find either column \"dbo\" or the user-defined function or aggregate "
                                "\"dbo.%1\", or the name is ambiguous.")
                     .arg(name),
                 position);
        }
        const QString* outer = source_;
        const QVariant value = (*f)(*this, args);
        source_ = outer;
        out += literalOf(value);
        from = at + 1;
    }
    out += sql.mid(from);
    return out;
}

void PgConnection::runSql(const QString& sql, const Step& step, ExecResult& result, const Bindings* bindings) {
    QString text = step.callsFunctions && sql.contains(QLatin1String("tsql_call("))
                       ? withFunctionValues(sql, step.position)
                       : sql;
    // ## tables are scratch: the server need not log them.
    if (text.startsWith(QLatin1String("CREATE TABLE \"tempdb\".")))
        text.insert(int(qstrlen("CREATE ")), QStringLiteral("UNLOGGED "));
    // A function's whole-number value selected alone (a voucher number) needs no round trip:
    // it is answered here as the server would answer it.
    if (!bindings && step.callsFunctions) {
        static const QRegularExpression alone(QStringLiteral("^SELECT (-?\\d{1,18}) AS \"([^\"]+)\"$"));
        if (const QRegularExpressionMatch m = alone.match(text); m.hasMatch()) {
            ResultSet set;
            set.columns << m.captured(2);
            set.rows.push_back({QVariant(m.captured(1).toLongLong())});
            result.resultSets.push_back(std::move(set));
            return;
        }
    }
    const bool lone = depth_ == 0 && step.writes && !step.tempOnly;
    const bool trace = tracing();
    QElapsedTimer timer;
    if (trace) timer.start();
    const auto traced = qScopeGuard([&] {
        if (trace)
            std::fprintf(stderr, "%8.3f ms %s %s\n", double(timer.nsecsElapsed()) / 1e6, bindings ? "P" : "T",
                         text.toUtf8().constData());
    });
    ExecResult r;
    try {
        if (!bindings) {
            // A lone write takes the writers' lock in the same implicit transaction as itself.
            const QString source = source_ ? *source_ : QString();
            r = lone ? runWaiting(kWriterLock + QStringLiteral("; ") + text, source) : link_->run(text, {}, source);
        } else if (lone) {
            inTransaction([&] {
                takeWriterLock();
                r = link_->runPrepared(text, *bindings, source_ ? *source_ : QString());
            });
        } else {
            r = link_->runPrepared(text, *bindings, source_ ? *source_ : QString());
        }
    } catch (const DatabaseError& e) {
        refuse(e, link_->lastState(), text, step.position);
    }
    if (step.returnsIdentity && !r.resultSets.empty()) {
        const std::vector<tr::db::Row>& keys = r.resultSets.front().rows;
        result.rowsAffected += qint64(keys.size());
        if (!keys.empty()) result.lastIdentity = keys.back().front().toLongLong();
        return;
    }
    for (ResultSet& set : r.resultSets) result.resultSets.push_back(std::move(set));
    result.rowsAffected += r.rowsAffected;
}

QVariant PgConnection::scalar(const Step& from, bool prepared) {
    Step step;
    step.position = from.position;
    step.callsFunctions = from.callsFunctions;
    const QString& sql = from.query;
    ExecResult r;
    static const Bindings none;
    bool again = false;
    if (prepared && !from.callsFunctions) {
        again = conditionsSeen_.contains(sql);
        if (!again) {
            if (conditionsSeen_.size() >= kMaxConditionsSeen) conditionsSeen_.clear();
            conditionsSeen_.insert(sql);
        }
    }
    runSql(sql, step, r, again ? &none : nullptr);
    if (r.resultSets.empty() || r.resultSets.front().rows.empty()) return {};
    return r.resultSets.front().rows.front().front();
}

void PgConnection::beginTransaction(bool writer, const tr::db::WriteTurn& turn) {
    link_->run(QStringLiteral("BEGIN"));
    lockPending_.clear();
    ownRowsTurn_ = writer && turn.kind == tr::db::WriteTurn::Kind::OwnRows;
    if (!writer || turn.kind == tr::db::WriteTurn::Kind::OwnRows) return;
    // A key's lock is the book's: the same key in two books is two turns.
    lockPending_ = turn.kind == tr::db::WriteTurn::Kind::Writers
                       ? kWriterLock
                       : QStringLiteral("SELECT pg_advisory_xact_lock(%1, hashtext(%2))")
                             .arg(kKeyedLockClass)
                             .arg(tr::db::sqlText(schema_ + QLatin1Char(':') + turn.key.toLower(),
                                                  tr::db::SqlDialect::PostgreSql));
}

void PgConnection::takeWritersTurn() {
    if (depth_ == 0 || !std::exchange(ownRowsTurn_, false)) return;
    lockPending_ = kWriterLock;
}

void PgConnection::takeWriterLock() {
    if (lockPending_.isEmpty()) return;
    const QString lock = std::exchange(lockPending_, QString());
    traceMark("turn asked");
    try {
        runWaiting(lock, QString());
    } catch (const DatabaseError& e) {
        refuse(e, link_->lastState(), lock, 0);
    }
    traceMark("turn taken");
}

ExecResult PgConnection::runWaiting(const QString& sql, const QString& source) {
    if (!waitObserver_) return link_->run(sql, {}, source);
    bool told = false;
    const auto ended = qScopeGuard([&] {
        if (told) waitObserver_->waitEnded();
    });
    return link_->runWaiting(
        sql,
        [&](int waited) {
            told = true;
            waiting_ = true;
            const auto done = qScopeGuard([&] { waiting_ = false; });
            return waitObserver_->waiting(waited);
        },
        source);
}

void PgConnection::traceMark(const char* what) {
    static QElapsedTimer clock;
    if (!tracing()) return;
    if (!clock.isValid()) clock.start();
    std::fprintf(stderr, "-- %10.3f %s\n", double(clock.nsecsElapsed()) / 1e6, what);
}

template <typename F>
void PgConnection::inTransaction(F&& work, bool writer) {
    if (depth_ > 0) {
        work();
        return;
    }
    beginTransaction(writer);
    depth_ = 1;
    try {
        work();
    } catch (...) {
        depth_ = 0;
        lockPending_.clear();
        rollBackTempTables();
        try {
            link_->run(QStringLiteral("ROLLBACK"));
        } catch (const DatabaseError&) {
            // The connection is gone: the server has rolled back already.
        }
        throw;
    }
    depth_ = 0;
    lockPending_.clear();
    link_->run(QStringLiteral("COMMIT"));
    tempTables_.commit();
    traceMark("committed");
}

void PgConnection::runStatements(const Step& step, ExecResult& result, const Bindings* bindings) {
    // Bound text written into a column must fit it, as tsql_fit checks values in the text.
    Bindings fitted;
    if (!tr::engine::fitBoundTexts(step, bindings, fitted))
        fail(QStringLiteral("String or binary data would be truncated."), step.position);
    if (bindings) prepareAll(step, *bindings);
    const bool calls = step.callsFunctions;
    const KeptTempTables::Plan plan = tempTables_.plan(step);
    auto work = [&] {
        ExecResult scratch;
        for (const QString& sql : plan.before) runSql(sql, step, scratch);
        for (qsizetype i = 0; i < plan.sql.size(); ++i) {
            // Making a ## table touches no book: other writers need not wait for it, only for
            // the rows then read into it.
            if ((step.touchesBooks || calls) && i >= plan.making) takeWriterLock();
            // What stands for a statement answers nothing of its own (a drop counts no rows).
            if (plan.replaced) runSql(plan.sql[i], step, scratch);
            else runSql(plan.sql[i], step, result, bindings);
        }
    };
    if (step.writes && (plan.before.size() + plan.sql.size() > 1 || calls)) inTransaction(work, !step.tempOnly || calls);
    else work();
    shareHidden(tempTables_.apply(plan, depth_ > 0));
    for (const TableName& t : step.changedTables) server_.tableChanged(tableKey(t.schema, t.table));
}

void PgConnection::runStep(const Step& step, CachedBatch& batch, ExecResult& result) {
    switch (step.kind) {
        case Step::Kind::Sql:
            runStatements(step, result, nullptr);
            return;
        case Step::Kind::Call: {
            const tr::tsql::Procedure* procedure = server_.procedures().procedure(step.procedure);
            if (!procedure) fail(QStringLiteral("Could not find stored procedure '%1'.").arg(step.procedure), step.position);
            auto call = [&] {
                takeWriterLock();
                const QString* outer = source_;
                ExecResult r = (*procedure)(*this, step.args);
                source_ = outer;
                for (ResultSet& set : r.resultSets) result.resultSets.push_back(std::move(set));
                result.rowsAffected += r.rowsAffected;
            };
            if (depth_ == 0 && server_.procedures().isUpkeep(step.procedure)) call();
            else inTransaction(call);
            return;
        }
        case Step::Kind::If: {
            if (step.touchesBooks) takeWriterLock();
            // A screen asks the same condition at every save (whether its history table is
            // there): prepared, it is planned once, where planning it cost the server more than
            // answering it.
            const bool condition = scalar(step, true).toLongLong() != 0;
            for (const ast::Statement* s : condition ? step.thenBody : step.elseBody) run(*s, batch, result);
            return;
        }
        case Step::Kind::Block:
            for (const ast::Statement* s : step.thenBody) run(*s, batch, result);
            return;
        case Step::Kind::ExecText: {
            if (step.touchesBooks) takeWriterLock();
            const QString text = step.writtenText ? *step.writtenText : scalar(step).toString();
            const QString* outer = source_;
            ExecResult r = execute(text);
            source_ = outer;
            for (ResultSet& set : r.resultSets) result.resultSets.push_back(std::move(set));
            result.rowsAffected += r.rowsAffected;
            return;
        }
        case Step::Kind::Begin:
            if (depth_ == 0) beginTransaction(true, std::exchange(turn_, {}));
            ++depth_;
            return;
        case Step::Kind::Commit:
            if (depth_ == 0) {
                fail(QStringLiteral("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."),
                     step.position);
            }
            if (--depth_ == 0) {
                // A delayed commit is flushed with a later one, as the embedded engine's is.
                lockPending_.clear();
                if (step.delayedDurability) link_->run(QStringLiteral("SET LOCAL synchronous_commit = off"));
                link_->run(QStringLiteral("COMMIT"));
                tempTables_.commit();
                traceMark("committed");
            }
            return;
        case Step::Kind::Rollback:
            if (depth_ == 0) {
                fail(QStringLiteral("The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."),
                     step.position);
            }
            depth_ = 0;
            lockPending_.clear();
            rollBackTempTables();
            link_->run(QStringLiteral("ROLLBACK"));
            return;
    }
}

void PgConnection::run(const ast::Statement& statement, CachedBatch& batch, ExecResult& result) {
    auto it = batch.steps.find(&statement);
    if (it == batch.steps.end() || !current(it.value().dependencies)) {
        tr::engine::CachedStep made;
        made.step = translateRecorded(statement, *source_, made.dependencies);
        it = batch.steps.insert(&statement, std::move(made));
    }
    const Step step = it.value().step;  // a copy: running it may renew the batch's translations
    runStep(step, batch, result);
}

ExecResult PgConnection::execute(const QString& sql) {
    // The wait observer runs while a statement is on its way (the host paints its windows then):
    // work started from there would interleave with it.
    if (waiting_) throw DatabaseError(QStringLiteral("Connection is busy with results for another command"), sql);
    if (calls_ >= tr::engine::kMaxCallDepth) {
        throw DatabaseError(QStringLiteral("Maximum stored procedure, function, trigger, or view nesting level "
                                           "exceeded (limit %1).")
                                .arg(tr::engine::kMaxCallDepth),
                            sql);
    }
    // A turn asked for is the next batch's only.
    if (calls_ == 0) turn_ = std::exchange(nextTurn_, {});
    const QString* outer = source_;
    source_ = &sql;
    ++calls_;
    ExecResult result;
    try {
        if (runShared(sql, result)) {
            source_ = outer;
            --calls_;
            return result;
        }
        std::shared_ptr<CachedBatch> batch = batches_.value(sql);
        if (!batch) {
            batch = std::make_shared<CachedBatch>();
            batch->statements = tr::engine::parseBatch(sql);
            if (sql.size() <= tr::engine::kMaxCachedTextLength) {
                if (batches_.size() >= kMaxCachedBatches) batches_.clear();
                batches_.insert(sql, batch);
            }
        }
        for (const ast::StatementPtr& statement : batch->statements) run(*statement, *batch, result);
    } catch (...) {
        source_ = outer;
        --calls_;
        throw;
    }
    source_ = outer;
    --calls_;
    return result;
}

void PgConnection::prepareAll(const Step& step, const Bindings& bindings) {
    QStringList fresh;
    for (const QString& sql : step.sql)
        if (!(step.callsFunctions && sql.contains(QLatin1String("tsql_call("))) && !link_->isPrepared(sql, bindings))
            fresh << sql;
    if (fresh.isEmpty()) return;
    // Inside a transaction a refused preparation would end it: a savepoint keeps it.
    const bool open = link_->inTransaction();
    if (open) link_->run(QStringLiteral("SAVEPOINT tr_prepare"));
    try {
        for (const QString& sql : fresh) link_->prepare(sql, bindings, source_ ? *source_ : QString());
    } catch (const DatabaseError& e) {
        const QString state = link_->lastState();
        if (open) link_->run(QStringLiteral("ROLLBACK TO SAVEPOINT tr_prepare"));
        if (refusesParameters(state)) throw ShapeRefused{};
        refuse(e, state, fresh.front(), step.position);
    }
    if (open) link_->run(QStringLiteral("RELEASE SAVEPOINT tr_prepare"));
}

bool PgConnection::runShared(const QString& sql, ExecResult& result) {
    auto known = shared_->texts.constFind(sql);
    if (known != shared_->texts.constEnd() && current(known->statement->translation.dependencies)) {
        const tr::engine::ShapedText text = known.value();  // running it may change the cache
        try {
            runStatements(text.statement->translation.step, result, &text.values);
            return true;
        } catch (const ShapeRefused&) {
            shared_->texts.remove(sql);
        }
    }
    tr::engine::ScannedText scanned;
    if (!tr::engine::scanLiterals(sql, scanned) || !tr::engine::mayParameterise(scanned)) return false;
    Bindings values;
    const auto statement = tr::engine::sharedTranslation(
        *shared_, sql, scanned,
        [&](const ast::Statement& s, Dependencies& dependencies) { return translateRecorded(s, sql, dependencies); },
        [&](const Dependencies& dependencies) { return current(dependencies); }, values);
    if (!statement) return false;
    // A statement that makes a table runs with its values written in: the server prepares a
    // statement only against tables that exist. Its shape is not translated this way again.
    if (!statement->translation.step.changedTables.empty()) {
        shared_->shapes.value(scanned.key)->parameterised = false;
        return false;
    }
    try {
        runStatements(statement->translation.step, result, &values);
    } catch (const ShapeRefused&) {
        shared_->texts.remove(sql);
        shared_->shapes.value(scanned.key)->parameterised = false;
        return false;
    }
    return true;
}

Step PgConnection::translateRecorded(const ast::Statement& statement, const QString& sql, Dependencies& dependencies) {
    Dependencies* outer = recording_;
    recording_ = &dependencies;
    Step step;
    try {
        step = tr::engine::translateStatement(statement, *this, sql, postgresWriter());
    } catch (...) {
        recording_ = outer;
        throw;
    }
    recording_ = outer;
    // A statement that makes, drops or alters a table does not read that table's columns.
    for (const TableName& t : step.changedTables) {
        const QString changed = tableKey(t.schema, t.table);
        std::erase_if(dependencies, [&](const auto& d) { return d.first == changed; });
    }
    return step;
}

QString PgConnection::translate(const QString& sql) {
    return tr::engine::describeSteps(
        tr::engine::parseBatch(sql),
        [&](const ast::Statement& s) { return tr::engine::translateStatement(s, *this, sql, postgresWriter()); },
        QStringLiteral("BEGIN"));
}

QString PgConnection::explainQueryPlan(const QString& sql) {
    const std::vector<ast::StatementPtr> statements = tr::engine::parseBatch(sql);
    if (statements.empty()) return {};
    const Step step = tr::engine::translateStatement(*statements.front(), *this, sql, postgresWriter());
    if (step.kind != Step::Kind::Sql || step.sql.isEmpty()) return {};
    if (depth_ == 0) link_->run(QStringLiteral("BEGIN"));
    ExecResult r;
    try {
        link_->run(QStringLiteral("SET LOCAL enable_seqscan = off"));
        r = link_->run(QStringLiteral("EXPLAIN ") + step.sql.last(), {}, sql);
    } catch (const DatabaseError&) {
        if (depth_ == 0) link_->run(QStringLiteral("ROLLBACK"));
        throw;
    }
    if (depth_ == 0) link_->run(QStringLiteral("ROLLBACK"));
    QStringList lines;
    for (const tr::db::Row& row : r.resultSets.front().rows) lines << row.front().toString();
    return lines.join(QLatin1Char('\n'));
}

void PgConnection::continueIdentity(const QString& table) {
    for (const ColumnInfo& c : columns(schema_, table)) {
        if (!c.identity) continue;
        const QString qualified = tr::engine::quoteIdent(schema_) + QLatin1Char('.') + tr::engine::quoteIdent(table.toLower());
        const QString column = c.name.toLower();
        link_->run(QStringLiteral("SELECT setval(pg_get_serial_sequence($1, $2), coalesce(max(%1), 0) + 1, false) FROM %2")
                       .arg(tr::engine::quoteIdent(column), qualified),
                   {qualified, column});
    }
}

void PgConnection::refreshStatistics() {
    const ExecResult r = link_->run(
        QStringLiteral("SELECT format('%I.%I', schemaname, tablename) FROM pg_tables WHERE schemaname = $1"), {schema_});
    for (const tr::db::Row& row : r.resultSets.front().rows) link_->run(QStringLiteral("ANALYZE ") + row.front().toString());
}

void PgConnection::refreshStaleStatistics() {
    // The pages a table has now against those its statistics record: what the planner itself
    // scales its row estimates by, read without scanning anything.
    const ExecResult r = link_->run(
        QStringLiteral("SELECT format('%I.%I', n.nspname, c.relname) FROM pg_class AS c "
                       "JOIN pg_namespace AS n ON n.oid = c.relnamespace "
                       "WHERE n.nspname = $1 AND c.relkind = 'r' AND CASE "
                       "WHEN c.reltuples < 0 THEN pg_relation_size(c.oid) >= 2 * current_setting('block_size')::bigint "
                       "ELSE pg_relation_size(c.oid) > 2 * (c.relpages + 1) * current_setting('block_size')::bigint END"),
        {schema_});
    for (const tr::db::Row& row : r.resultSets.front().rows)
        link_->run(QStringLiteral("ANALYZE (SKIP_LOCKED) ") + row.front().toString());
}

}  // namespace tr::pg
