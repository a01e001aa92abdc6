#include "db/pg/pg_server.h"

#include "db/engine/sql_identifiers.h"
#include "db/pg/pg_catalog_views.h"
#include "db/pg/pg_connection.h"
#include "db/pg/pg_link.h"
#include "db/pg/pg_runtime.h"

namespace tr::pg {

namespace {

// The advisory lock key under which clients install the runtime and make schemas: two clients
// making the same function or schema at once would otherwise fail on the catalogue's unique keys.
constexpr const char* kSetupLock = "7301402";
// Names the runtime a database was given: a client finding it there installs nothing. Raise the
// number whenever the runtime, the catalogue views or the tempdb schema change.
constexpr const char* kRuntimeMark = "tsql_runtime_5";

}  // namespace

PgServer::PgServer(const QString& connectionText) : connectionText_(connectionText) {
    procedures_.addUpkeep(QStringLiteral("sp_updatestats"), [](tr::db::Connection& c, const tr::tsql::ProcedureArgs&) {
        static_cast<PgConnection&>(c).refreshStatistics();
        return tr::db::ExecResult{};
    });
}

PgServer::~PgServer() = default;

bool PgServer::schemaExists(PgLink& link, const QString& schema) {
    const auto r = link.run(QStringLiteral("SELECT 1 FROM pg_namespace WHERE nspname = $1"), {schema});
    return !r.resultSets.empty() && !r.resultSets.front().rows.empty();
}

bool PgServer::databaseExists(const QString& databaseName) const {
    PgLink link(connectionText_);
    return schemaExists(link, schemaOf(databaseName));
}

void PgServer::prepare(PgLink& link, const QString& schema) {
    // Most opens find everything in place and take no lock.
    const auto found = link.run(QStringLiteral("SELECT to_regprocedure('public.%1()') IS NULL, "
                                               "to_regnamespace($1) IS NULL")
                                    .arg(QLatin1String(kRuntimeMark)),
                                {tr::engine::quoteIdent(schema)});
    const tr::db::Row& row = found.resultSets.front().rows.front();
    const bool runtime = row.at(0).toLongLong() != 0;
    if (!runtime && row.at(1).toLongLong() == 0) return;
    link.run(QStringLiteral("BEGIN"));
    try {
        link.run(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(QLatin1String(kSetupLock)));
        if (runtime) {
            installRuntime(link);
            installCatalogViews(link);
            link.run(QStringLiteral("CREATE SCHEMA IF NOT EXISTS tempdb"));
            link.run(QStringLiteral("CREATE OR REPLACE FUNCTION public.%1() RETURNS integer LANGUAGE sql "
                                    "IMMUTABLE AS 'SELECT 1'")
                         .arg(QLatin1String(kRuntimeMark)));
        }
        link.run(QStringLiteral("CREATE SCHEMA IF NOT EXISTS ") + tr::engine::quoteIdent(schema));
        link.run(QStringLiteral("COMMIT"));
    } catch (...) {
        link.run(QStringLiteral("ROLLBACK"));
        throw;
    }
}

std::unique_ptr<tr::tsql::TsqlConnection> PgServer::connect(const QString& databaseName) {
    return open(databaseName);
}

void PgServer::dropDatabase(const QString& databaseName) {
    PgLink link(connectionText_);
    link.run(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(tr::engine::quoteIdent(schemaOf(databaseName))));
}

std::unique_ptr<PgConnection> PgServer::open(const QString& databaseName) {
    auto link = std::make_unique<PgLink>(connectionText_);
    const QString schema = schemaOf(databaseName);
    prepare(*link, schema);
    auto connection = std::make_unique<PgConnection>(*this, databaseName.trimmed(), std::move(link));
    // A book restored or written without them may come without statistics: checked once per book
    // and process, as the embedded engine checks its books.
    if (firstOpen(databaseName)) connection->refreshStaleStatistics();
    return connection;
}

quint64 PgServer::tableGeneration(const QString& table) const {
    QMutexLocker lock(&stateLock_);
    return tableGenerations_.value(table, 0);
}

bool PgServer::tempTableHidden(const QString& table) const {
    QMutexLocker lock(&stateLock_);
    return hiddenTempTables_.contains(table.toLower());
}

void PgServer::setTempTableHidden(const QString& table, bool hidden) {
    QMutexLocker lock(&stateLock_);
    if (hidden) hiddenTempTables_.insert(table.toLower());
    else hiddenTempTables_.remove(table.toLower());
}

void PgServer::tableChanged(const QString& table) {
    QMutexLocker lock(&stateLock_);
    tableGenerations_.insert(table, ++lastGeneration_);
}

}  // namespace tr::pg
