#pragma once
// The embedded engine: a data directory holding one SQLite file per database name, a process-wide
// in-memory tempdb for ## tables, the registry of stored procedures, and connections that accept
// the suite's T-SQL dialect.
#include <QHash>
#include <QMutex>
#include <QString>
#include <memory>
#include <optional>

#include "db/tsql/books.h"
#include "db/tsql/procedure_registry.h"

struct sqlite3;

namespace tr::engine {

class SqliteConnection;

class Engine final : public tr::tsql::Books {
public:
    explicit Engine(const QString& dataDirectory);
    ~Engine() override;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    const QString& dataDirectory() const { return dataDirectory_; }
    QString databaseFile(const QString& databaseName) const;
    bool databaseExists(const QString& databaseName) const override;
    // Opens (creating the file when missing) a connection whose current database is `databaseName`.
    std::unique_ptr<SqliteConnection> open(const QString& databaseName);
    std::unique_ptr<tr::tsql::TsqlConnection> connect(const QString& databaseName) override;
    void dropDatabase(const QString& databaseName) override;
    tr::tsql::ProcedureRegistry& procedures() override { return procedures_; }
    const QString& tempdbUri() const { return tempdbUri_; }
    // A table's generation, renewed whenever any connection creates, drops or alters it, so that
    // only the translations that read that table's columns are made again. `table` is
    // "<database>.<table>", lower case; a table never changed is generation 0.
    quint64 tableGeneration(const QString& table) const;
    void tableChanged(const QString& table);

    // A ## table as the engine made it. Dropping one empties it and keeps it ("retired") for the
    // next table of that name and definition, because making and dropping a table has SQLite
    // prepare again every statement that reads tempdb. `name` is lower case.
    struct TempTable {
        QString definition;  // the SQLite CREATE TABLE text that made it; empty after an Alter
        bool retired = false;
    };
    std::optional<TempTable> tempTable(const QString& name) const;
    void setTempTable(const QString& name, const std::optional<TempTable>& state);

private:
    QString dataDirectory_;
    QString tempdbUri_;
    sqlite3* tempdbKeeper_ = nullptr;  // keeps the shared in-memory tempdb alive
    tr::tsql::ProcedureRegistry procedures_;
    mutable QMutex stateLock_;  // the table generations and the ## tables
    QHash<QString, quint64> tableGenerations_;
    QHash<QString, TempTable> tempTables_;
    quint64 lastGeneration_ = 0;
};

}  // namespace tr::engine
