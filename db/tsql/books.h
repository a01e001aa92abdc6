#pragma once
// Where the suite's databases live, whichever backend keeps them: the embedded engine's data
// directory or a database server. Both open connections that run the suite's T-SQL and both
// run the same registered procedures.
#include <QMutex>
#include <QSet>
#include <QString>
#include <memory>

#include "common/db/connection.h"
#include "db/tsql/procedure_registry.h"

namespace tr::tsql {

// A connection running the suite's T-SQL on a backend, with what tests and tools ask of it.
class TsqlConnection : public tr::db::Connection {
  public:
    virtual bool inTransaction() const = 0;
    // The backend's text each statement of `sql` becomes, without running it.
    virtual QString translate(const QString& sql) = 0;
    // The backend's plan for the first statement of `sql`.
    virtual QString explainQueryPlan(const QString& sql) = 0;
    // After rows were written into `table` of the current database with their identity values
    // given: the identity goes on after the highest of them (where the backend does not by itself).
    virtual void continueIdentity(const QString& /*table*/) {}
};

class Books {
  public:
    virtual ~Books() = default;
    virtual bool databaseExists(const QString& databaseName) const = 0;
    // A connection whose current database is `databaseName`, made when missing.
    virtual std::unique_ptr<TsqlConnection> connect(const QString& databaseName) = 0;
    // Removes a database with everything in it; no connection may have it open.
    virtual void dropDatabase(const QString& databaseName) = 0;
    virtual ProcedureRegistry& procedures() = 0;

  protected:
    // True once per book: the first time it is opened through these books (where a book that
    // came without planner statistics is given them).
    bool firstOpen(const QString& databaseName) {
        QMutexLocker lock(&openedLock_);
        const QString key = databaseName.trimmed().toLower();
        if (opened_.contains(key)) return false;
        opened_.insert(key);
        return true;
    }

  private:
    QMutex openedLock_;
    QSet<QString> opened_;
};

}  // namespace tr::tsql
