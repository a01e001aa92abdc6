#pragma once
// A book server: one PostgreSQL database holding a schema per suite database (the suite database
// and each company-year book) and a `tempdb` schema for ## tables, the registry of stored
// procedures, and connections that accept the suite's T-SQL. Opening a database makes its schema.
#include <QHash>
#include <QSet>
#include <QMutex>
#include <QString>
#include <memory>

#include "db/tsql/books.h"

namespace tr::pg {

class PgConnection;
class PgLink;

class PgServer final : public tr::tsql::Books {
  public:
    // `connectionText` is libpq's ("host=... port=... dbname=... user=..."); nothing is
    // connected until a database is opened.
    explicit PgServer(const QString& connectionText);
    ~PgServer() override;
    PgServer(const PgServer&) = delete;
    PgServer& operator=(const PgServer&) = delete;

    const QString& connectionText() const { return connectionText_; }
    // The schema a suite database lives in: its name in lower case.
    static QString schemaOf(const QString& databaseName) { return databaseName.trimmed().toLower(); }
    bool databaseExists(const QString& databaseName) const override;
    static bool schemaExists(PgLink& link, const QString& schema);
    // A connection whose current database is `databaseName` (its schema made when missing).
    // Refused with the server's reason when the server cannot be reached.
    std::unique_ptr<PgConnection> open(const QString& databaseName);
    std::unique_ptr<tr::tsql::TsqlConnection> connect(const QString& databaseName) override;
    void dropDatabase(const QString& databaseName) override;
    tr::tsql::ProcedureRegistry& procedures() override { return procedures_; }

    // As the embedded engine's: renewed whenever a connection of this process creates, drops or
    // alters the table, so that translations reading its columns are made again.
    quint64 tableGeneration(const QString& table) const;
    void tableChanged(const QString& table);
    // ## tables a connection of this process dropped and keeps: absent to all its connections.
    bool tempTableHidden(const QString& table) const;
    void setTempTableHidden(const QString& table, bool hidden);

  private:
    // The runtime (unless its version's marker is there), the tempdb schema and `schema`, made
    // under a lock that serialises the clients doing the same.
    void prepare(PgLink& link, const QString& schema);

    QString connectionText_;
    tr::tsql::ProcedureRegistry procedures_;
    mutable QMutex stateLock_;
    QHash<QString, quint64> tableGenerations_;
    QSet<QString> hiddenTempTables_;  // ## tables a connection keeps (KeptTempTables)
    quint64 lastGeneration_ = 0;
};

}  // namespace tr::pg
