#pragma once
// The embedded engine: a data directory holding one SQLite file per database name, a process-wide
// in-memory tempdb for ## tables, the registry of stored procedures, and connections that accept
// the suite's T-SQL dialect.
#include <QString>
#include <atomic>
#include <memory>

#include "db/engine/procedure_registry.h"

struct sqlite3;

namespace tr::engine {

class SqliteConnection;

class Engine {
public:
    explicit Engine(const QString& dataDirectory);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    const QString& dataDirectory() const { return dataDirectory_; }
    QString databaseFile(const QString& databaseName) const;
    bool databaseExists(const QString& databaseName) const;
    // Opens (creating the file when missing) a connection whose current database is `databaseName`.
    std::unique_ptr<SqliteConnection> open(const QString& databaseName);
    ProcedureRegistry& procedures() { return procedures_; }
    const QString& tempdbUri() const { return tempdbUri_; }
    // Bumped by every schema change made through any connection, so cached translations renew.
    quint64 schemaGeneration() const { return schemaGeneration_.load(); }
    void schemaChanged() { ++schemaGeneration_; }

private:
    QString dataDirectory_;
    QString tempdbUri_;
    sqlite3* tempdbKeeper_ = nullptr;  // keeps the shared in-memory tempdb alive
    ProcedureRegistry procedures_;
    std::atomic<quint64> schemaGeneration_{1};
};

}  // namespace tr::engine
