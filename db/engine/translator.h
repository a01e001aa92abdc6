#pragma once
// Translates one parsed T-SQL statement into the steps a backend runs: its target's SQL text (with
// the TSQL collation, T-SQL conversions and runtime helpers, spelled by the target's writer),
// procedure calls, and the control flow of If and Exec('...'). Column types come from the catalogue, so `+` becomes `||`
// for text and `+` for numbers, with the runtime tsql_add() only where a type is unknown.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <vector>

#include "db/engine/ast.h"
#include "db/engine/target_writer.h"

namespace tr::engine {

enum class SqlType { Unknown, Null, Text, Integer, Real };

struct ColumnInfo {
    QString name;
    QString declaredType;  // as SQLite keeps it, e.g. "VARCHAR(200)"
    SqlType type = SqlType::Unknown;
    bool identity = false;  // the row key an Identity column becomes
};

SqlType typeOfDeclaration(const QString& declaredType);

// What the translator needs to know about the databases.
class Catalog {
public:
    virtual ~Catalog() = default;
    // The SQLite schema holding `database` ("" means the current one): "main", "tempdb" or an
    // attached alias; attaches the database on demand.
    virtual QString schemaForDatabase(const QString& database, int position) = 0;
    // Columns of schema.table in order; empty when the table is not known.
    virtual std::vector<ColumnInfo> columns(const QString& schema, const QString& table) = 0;
    // A table dropped but kept for reuse: it must be treated as absent.
    virtual bool retired(const QString& /*schema*/, const QString& /*table*/) { return false; }
};

struct TableName {
    enum class Change { Created, Dropped, Altered };
    QString schema;  // SQLite schema: "main", "tempdb", "temp" or an attached alias
    QString table;
    Change change = Change::Altered;
};

struct Step {
    enum class Kind { Sql, Call, If, ExecText, Begin, Commit, Rollback, Block };
    Kind kind = Kind::Sql;
    QStringList sql;               // Sql: SQLite statements run in order
    bool writes = false;           // needs a write transaction
    bool tempOnly = false;         // writes only ## or # tables
    std::vector<TableName> changedTables;  // tables created, dropped or altered
    QString procedure;             // Call
    std::vector<QVariant> args;    // Call
    QString query;                 // If: "SELECT <0 or 1>"; ExecText: "SELECT <text>"
    std::optional<QString> writtenText;  // ExecText: the text itself, when written out (no query)
    bool negate = false;
    bool delayedDurability = false;  // Commit: flushed with a later commit, not this one
    // Sql: (ordinal, width) of each bound text value written into a column of that width, which
    // the value must fit (see tsqlFitText).
    std::vector<std::pair<int, int>> boundWidths;
    // Sql: the Insert answers the identity keys it gave as its rows (see returnIdentity).
    bool returnsIdentity = false;
    // Reads or writes a table of a database (not only ## and # tables or the catalogue).
    bool touchesBooks = false;
    // Calls a dbo function written in C++ (tsql_call in the text).
    bool callsFunctions = false;
    std::vector<ast::Statement*> thenBody, elseBody;  // If / Block: translated when reached
    int position = 0;
};

// `writer` spells what differs between target databases (SQLite's by default).
Step translateStatement(const ast::Statement& statement, Catalog& catalog, const QString& sourceSql,
                        const TargetWriter& writer = sqliteWriter());

}  // namespace tr::engine
