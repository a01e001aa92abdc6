#pragma once
// One libpq connection: SQL text in PostgreSQL's own dialect with its values as parameters ($1,
// $2, ...), rows out as the rest of the system reads them (integers as qint64, floating and
// numeric values as double, booleans as 0 or 1, texts as QString, null as an invalid QVariant).
// A failure raises DatabaseError with the server's message and the text it ran.
#include <QHash>
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

#include "common/db/result_set.h"

typedef struct pg_conn PGconn;
typedef struct pg_result PGresult;

namespace tr::pg {

class PgLink {
  public:
    // Refused with the server's reason (DatabaseError) when no connection can be made.
    explicit PgLink(const QString& connectionText);
    ~PgLink();
    PgLink(const PgLink&) = delete;
    PgLink& operator=(const PgLink&) = delete;

    // One statement, or several without parameters. `source` is the text named in an error
    // (the T-SQL the statement was made from); the statement itself when empty.
    tr::db::ExecResult run(const QString& sql, const std::vector<QVariant>& parameters = {},
                           const QString& source = {});
    // One statement, prepared on its first run (its parameters' types taken from the values then)
    // and kept while the connection has fewer than a couple of thousand.
    tr::db::ExecResult runPrepared(const QString& sql, const std::vector<QVariant>& parameters,
                                   const QString& source = {});
    // Like run() without parameters, for a statement that may wait on another session's lock:
    // while the answer is late, `waiting` is called about ten times a second with the
    // milliseconds waited, and answering false cancels the statement on the server (which then
    // fails as cancelled).
    tr::db::ExecResult runWaiting(const QString& sql, const std::function<bool(int)>& waiting,
                                  const QString& source = {});
    bool isPrepared(const QString& sql, const std::vector<QVariant>& parameters) const;
    // Prepares `sql` for values of the kinds of `parameters` (see runPrepared).
    void prepare(const QString& sql, const std::vector<QVariant>& parameters, const QString& source = {});

    // The SQLSTATE of the last failure ("40P01" a deadlock, "40001" a serialization failure).
    const QString& lastState() const { return lastState_; }
    bool inTransaction() const;
    int serverVersion() const;

  private:
    // Takes ownership of `answer`: its rows or row count, or the failure it reports.
    tr::db::ExecResult collect(PGresult* answer, const QString& sql, const QString& source);

    PGconn* connection_ = nullptr;
    QHash<QString, QByteArray> prepared_;  // statement text and value kinds -> its name on the server
    quint64 preparedNames_ = 0;
    QString lastState_;
};

}  // namespace tr::pg
