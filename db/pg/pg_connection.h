#pragma once
// A connection to a book on the server: accepts T-SQL batches, translates each statement with
// PostgreSQL's writer (translations cached per text), runs multi-statement writes and stored
// procedures in one transaction, and answers the translator's catalogue from the server's.
#include <QHash>
#include <QSet>
#include <QString>
#include <memory>
#include <vector>

#include "db/engine/translator.h"
#include "db/pg/kept_temp_tables.h"
#include "db/tsql/books.h"

namespace tr::db {
class DatabaseError;
}

namespace tr::engine {
struct CachedBatch;
struct SharedTranslations;
}

namespace tr::pg {

class PgLink;
class PgServer;

class PgConnection final : public tr::tsql::TsqlConnection, private tr::engine::Catalog {
  public:
    PgConnection(PgServer& server, const QString& databaseName, std::unique_ptr<PgLink> link);
    // Drops the ## tables the connection made and left, as the server does when a session ends.
    ~PgConnection() override;

    tr::db::ExecResult execute(const QString& sql) override;
    tr::db::SqlDialect dialect() const override { return tr::db::SqlDialect::PostgreSql; }
    QString databaseName() const override { return databaseName_; }

    // The PostgreSQL text each statement of the batch becomes (without running it).
    QString translate(const QString& sql) override;
    // The server's plan for the first statement of `sql` (EXPLAIN, one line per plan row), taken
    // with a scan of the whole table as the last resort: it shows whether an index can serve the
    // statement, whatever the table's size now.
    QString explainQueryPlan(const QString& sql) override;
    bool inTransaction() const override { return depth_ > 0; }
    void setWaitObserver(tr::db::WaitObserver* observer) override { waitObserver_ = observer; }
    void setNextTurn(const tr::db::WriteTurn& turn) override { nextTurn_ = turn; }
    void takeWritersTurn() override;
    // Gathers the planner's statistics of the book's tables (what sp_updatestats runs).
    void refreshStatistics();
    // Analyses the book's tables that have no statistics (and two pages or more) or have grown
    // to more than twice the pages they record; a table another session analyses is skipped.
    void refreshStaleStatistics();
    // The identity's sequence does not follow keys written explicitly: it is moved past the highest.
    void continueIdentity(const QString& table) override;
    PgLink& link() { return *link_; }

  private:
    using Dependencies = std::vector<std::pair<QString, quint64>>;
    using Bindings = std::vector<QVariant>;
    QString schemaForDatabase(const QString& database, int position) override;
    std::vector<tr::engine::ColumnInfo> columns(const QString& schema, const QString& table) override;
    bool retired(const QString& schema, const QString& table) override;

    void run(const tr::engine::ast::Statement& statement, tr::engine::CachedBatch& batch, tr::db::ExecResult& result);
    void runStep(const tr::engine::Step& step, tr::engine::CachedBatch& batch, tr::db::ExecResult& result);
    // Runs `sql` through the translation it shares with texts that differ only in literal values,
    // prepared once on the server; false when the text cannot share one.
    bool runShared(const QString& sql, tr::db::ExecResult& result);
    tr::engine::Step translateRecorded(const tr::engine::ast::Statement& statement, const QString& sql,
                                       Dependencies& dependencies);
    void runStatements(const tr::engine::Step& step, tr::db::ExecResult& result, const Bindings* bindings);
    // Prepares the step's statements before any runs; a shape the server cannot prepare is given
    // up (ShapeRefused) with nothing run.
    void prepareAll(const tr::engine::Step& step, const Bindings& bindings);
    void runSql(const QString& sql, const tr::engine::Step& step, tr::db::ExecResult& result,
                const Bindings* bindings = nullptr);
    // `sql` with each dbo function call of literal arguments replaced by its value.
    QString withFunctionValues(const QString& sql, int position);
    // The value of an If's or Exec('...')'s query.
    // `prepared`: kept prepared for the next time the same text comes (no function values in it).
    // A text met for the first time runs as text: preparing it would cost a round trip more.
    QVariant scalar(const tr::engine::Step& from, bool prepared = false);
    // With TR_SQL_TRACE: `what` and the time since the first mark, on standard error.
    static void traceMark(const char* what);
    // BEGIN of a transaction that takes its turn's lock (the writers' lock, see kWriterLock, or
    // its key's) before its first statement that reads or writes a book or calls a procedure,
    // unless it writes only ## and # tables: work on those before it runs beside other writers.
    void beginTransaction(bool writer = true, const tr::db::WriteTurn& turn = {});
    void takeWriterLock();
    // `sql` (which may wait on another session's lock) through the wait observer, if there is one.
    tr::db::ExecResult runWaiting(const QString& sql, const QString& source);
    template <typename F>
    void inTransaction(F&& work, bool writer = true);
    QString tableKey(const QString& schema, const QString& table) const;
    // Tells the process's other connections which of `tables` this one now keeps hidden.
    void shareHidden(const QStringList& tables);
    void rollBackTempTables() { shareHidden(tempTables_.rollBack()); }
    bool current(const Dependencies& dependencies) const;
    [[noreturn]] void fail(const QString& message, int position);
    // The server's failure in the T-SQL system's words where the suite reads them.
    [[noreturn]] void refuse(const tr::db::DatabaseError& error, const QString& state, const QString& sql,
                             int position);

    PgServer& server_;
    QString databaseName_;
    QString schema_;
    std::unique_ptr<PgLink> link_;
    int depth_ = 0;
    QString lockPending_;  // the lock the open transaction takes when it needs it (none: empty)
    QSet<QString> conditionsSeen_;  // If conditions asked once: the second time they are prepared
    bool ownRowsTurn_ = false;  // the open transaction waits for nobody (yet)
    tr::db::WriteTurn nextTurn_;  // for a Begin Tran of the next batch
    tr::db::WriteTurn turn_;      // for a Begin Tran of this batch
    tr::db::WaitObserver* waitObserver_ = nullptr;
    bool waiting_ = false;  // the observer is being told of a wait
    int calls_ = 0;
    const QString* source_ = nullptr;
    Dependencies* recording_ = nullptr;
    QHash<QString, std::shared_ptr<tr::engine::CachedBatch>> batches_;
    std::unique_ptr<tr::engine::SharedTranslations> shared_;
    QHash<QString, std::pair<quint64, std::vector<tr::engine::ColumnInfo>>> columns_;
    KeptTempTables tempTables_;  // ## tables this connection made, some dropped and kept
};

}  // namespace tr::pg
