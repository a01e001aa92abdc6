#include "db/engine/engine.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "common/db/database_error.h"
#include "db/engine/sqlite_connection.h"

namespace tr::engine {

Engine::Engine(const QString& dataDirectory) : dataDirectory_(QDir(dataDirectory).absolutePath()) {
    if (!QDir().mkpath(dataDirectory_)) {
        throw tr::db::DatabaseError(QStringLiteral("Cannot create the data directory '%1'").arg(dataDirectory_));
    }
    const QByteArray key = QCryptographicHash::hash(dataDirectory_.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    // One tempdb per engine, shared by its connections, as the server's tempdb is shared by its sessions.
    tempdbUri_ = QStringLiteral("file:tr_tempdb_%1_%2?mode=memory&cache=shared")
                     .arg(QString::fromLatin1(key))
                     .arg(reinterpret_cast<quintptr>(this), 0, 16);
    const QByteArray uri = tempdbUri_.toUtf8();
    if (sqlite3_open_v2(uri.constData(), &tempdbKeeper_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI,
                        nullptr) != SQLITE_OK) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(tempdbKeeper_));
        sqlite3_close(tempdbKeeper_);
        throw tr::db::DatabaseError(QStringLiteral("Cannot create tempdb: ") + message);
    }
    procedures_.addUpkeep(QStringLiteral("sp_updatestats"), [](tr::db::Connection& c, const tr::tsql::ProcedureArgs&) {
        static_cast<SqliteConnection&>(c).refreshStatistics();
        return tr::db::ExecResult{};
    });
}

Engine::~Engine() { sqlite3_close(tempdbKeeper_); }

QString Engine::databaseFile(const QString& databaseName) const {
    // Database names are case-insensitive, as on the server.
    return dataDirectory_ + QLatin1Char('/') + databaseName.trimmed().toLower() + QStringLiteral(".sqlite");
}

bool Engine::databaseExists(const QString& databaseName) const {
    return QFileInfo::exists(databaseFile(databaseName));
}

quint64 Engine::tableGeneration(const QString& table) const {
    QMutexLocker lock(&stateLock_);
    return tableGenerations_.value(table, 0);
}

void Engine::tableChanged(const QString& table) {
    QMutexLocker lock(&stateLock_);
    tableGenerations_.insert(table, ++lastGeneration_);
}

std::optional<Engine::TempTable> Engine::tempTable(const QString& name) const {
    QMutexLocker lock(&stateLock_);
    auto it = tempTables_.constFind(name);
    if (it == tempTables_.constEnd()) return std::nullopt;
    return it.value();
}

void Engine::setTempTable(const QString& name, const std::optional<TempTable>& state) {
    QMutexLocker lock(&stateLock_);
    if (state) tempTables_.insert(name, *state);
    else tempTables_.remove(name);
}

std::unique_ptr<tr::tsql::TsqlConnection> Engine::connect(const QString& databaseName) {
    return open(databaseName);
}

void Engine::dropDatabase(const QString& databaseName) {
    const QString file = databaseFile(databaseName);
    for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")}) {
        if (QFile::exists(file + suffix) && !QFile::remove(file + suffix))
            throw tr::db::DatabaseError(QStringLiteral("Cannot remove '%1'").arg(file + suffix));
    }
}

std::unique_ptr<SqliteConnection> Engine::open(const QString& databaseName) {
    auto connection = std::make_unique<SqliteConnection>(*this, databaseName);
    // A book copied in, restored or written by an older version may come without statistics;
    // without them every save scans whole tables. Checked once per book and engine.
    if (firstOpen(databaseName)) connection->refreshStatistics();
    return connection;
}

}  // namespace tr::engine
