#pragma once
// A connection of the embedded engine: accepts T-SQL batches, translates each statement to SQLite
// (translations and prepared statements are cached), runs writes in BEGIN IMMEDIATE transactions
// and stored procedures all-or-nothing, and attaches other databases of the data directory on demand.
#include <QHash>
#include <QString>
#include <memory>

#include "db/tsql/books.h"
#include "db/engine/connection_caches.h"
#include "db/engine/translator.h"

struct sqlite3;
struct sqlite3_stmt;

namespace tr::engine {

class Engine;
struct Token;

class SqliteConnection final : public tr::tsql::TsqlConnection, private Catalog {
public:
    SqliteConnection(Engine& engine, const QString& databaseName);
    ~SqliteConnection() override;

    tr::db::ExecResult execute(const QString& sql) override;
    tr::db::SqlDialect dialect() const override { return tr::db::SqlDialect::Embedded; }
    QString databaseName() const override { return databaseName_; }

    // The SQLite text each statement of the batch becomes (without running it).
    QString translate(const QString& sql) override;
    // SQLite's query plan for the first statement of `sql`, one line per plan row.
    QString explainQueryPlan(const QString& sql) override;
    bool inTransaction() const override { return depth_ > 0; }
    // How many statements this connection has translated: texts that share a translation (the
    // same text, or one differing only in literal values) do not add to it.
    quint64 translations() const { return translations_; }
    // Gathers the planner's statistics again where tables outgrew them (what sp_updatestats runs
    // and what the engine does when it first opens a book); on a large book they let a join start
    // from the selective side. Answers whether it analysed.
    bool refreshStatistics();

    // Used by the runtime functions.
    QVariant columnLength(const QString& table, const QString& column);
    QVariant objectId(const QString& name);
    QVariant callFunction(const QString& name, const std::vector<QVariant>& args);
    // Whether schema.table is a ## table dropped and kept for reuse (absent to every statement).
    bool retired(const QString& schema, const QString& table) override;

private:
    QString schemaForDatabase(const QString& database, int position) override;
    std::vector<ColumnInfo> columns(const QString& schema, const QString& table) override;

    void run(const ast::Statement& statement, CachedBatch& batch, tr::db::ExecResult& result);
    void runStep(const Step& step, CachedBatch& batch, tr::db::ExecResult& result);
    // The SQLite statements of a Sql step, in a write transaction when it writes; a ## table it
    // drops is emptied and kept, and one it makes with a kept table's definition is that table.
    void runStatements(const Step& step, tr::db::ExecResult& result, int position, const Bindings* bindings);
    void noteTempTable(const QString& name, bool exists, const QString& definition, bool retired);
    void commitTempTables() { tempJournal_.clear(); }
    void rollBackTempTables();
    void runSql(const QString& sql, tr::db::ExecResult& result, int position, const Bindings* bindings = nullptr);
    void runSqlUntraced(const QString& sql, tr::db::ExecResult& result, int position, const Bindings* bindings);
    tr::db::ExecResult runBatch(const QString& sql, std::vector<Token> tokens);
    // Runs `sql` through the translation it shares with texts of the same shape; false when the
    // text is not one statement whose literals can be parameters.
    bool runShaped(const QString& sql, const ScannedText& scanned, tr::db::ExecResult& result);
    Step translateRecorded(const ast::Statement& statement, const QString& sql, Dependencies& dependencies);
    bool current(const Dependencies& dependencies) const;
    QString tableKey(const QString& schema, const QString& table) const;
    void clearTranslations();
    QVariant scalar(const QString& sql, int position);
    // `work` in a write transaction (joining the open one); a deferred one when `immediate` is
    // false, for work that writes only temporary tables.
    template <typename F>
    void inTransaction(F&& work, bool immediate = true);
    void exec(const char* sql);
    QByteArray pragmaText(const QByteArray& pragma);  // lower-cased
    int pragmaInt(const QByteArray& pragma);
    void beginExplicitTransaction();
    void commitExplicitTransaction(bool delayedDurability);
    void rollBackExplicitTransaction();
    void restoreFlushLevels();
    // A prepared statement and its result's column names (named by SQLite when it was prepared).
    struct PreparedStatement {
        sqlite3_stmt* statement = nullptr;
        QStringList columns;
        bool columnsHaveParameters = false;  // a name shows ?n: it takes the bound value's text
        int reprepared = 0;                  // SQLite's count of its own new preparations
    };
    PreparedStatement prepare(const QString& sql, int position);
    void readColumnNames(PreparedStatement& prepared);
    void finalizeStatements();
    [[noreturn]] void fail(const QString& message, int position);

    Engine& engine_;
    QString databaseName_;
    sqlite3* db_ = nullptr;
    int depth_ = 0;
    // Files of the open explicit transaction whose commit flushes their log, and their level.
    struct DeferredFlush {
        QByteArray schema;
        int level = 0;
    };
    std::vector<DeferredFlush> deferredFlush_;
    QHash<QString, int> flushLevels_;  // schema -> synchronous level; 0 when not write-ahead logged
    const QString* source_ = nullptr;  // the batch being run, for error messages
    quint64 translations_ = 0;
    struct TempTableNote {
        QString name;
        bool existed = false;
        QString definition;
        bool retired = false;
    };
    std::vector<TempTableNote> tempJournal_;  // the transaction's changes, undone by a rollback
    Dependencies* recording_ = nullptr;  // the tables the translation being made reads
    QHash<QString, std::shared_ptr<CachedBatch>> batches_;
    SharedTranslations shared_;
    QHash<QString, PreparedStatement> statements_;
    int stepping_ = 0;  // statements being stepped, nested by procedures they call
    int calls_ = 0;     // execute() calls running inside one another
    QHash<QString, std::pair<quint64, std::vector<ColumnInfo>>> columns_;  // by table key
    QHash<QString, QString> attached_;  // lower-case database name -> schema alias
    QHash<QString, QString> aliasDatabases_;  // schema alias -> lower-case database name
    QStringList attachOrder_;           // least recently used first
};

}  // namespace tr::engine
