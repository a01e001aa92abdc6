#pragma once
// Syntax tree of the T-SQL subset the engine accepts; built by the parser, read by the translator.
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace tr::engine::ast {

struct Select;
struct Statement;
struct Expr;
using ExprPtr = std::unique_ptr<Expr>;
using SelectPtr = std::unique_ptr<Select>;
using StatementPtr = std::unique_ptr<Statement>;

struct TypeName {
    QString name;     // upper-cased: VARCHAR, INT, FLOAT, ...
    int length = -1;  // n of Varchar(n); -1 when absent; -2 for (max)
    int scale = -1;
};

struct Expr {
    enum class Kind {
        Null, Number, String, Column, Star, Variable, Unary, Binary, Function, Case, Cast,
        Subquery, Exists, In, Between, Like, IsNull, Identity
    };
    Kind kind;
    int position = 0;
    QString text;          // number text, string value, operator, function name
    QStringList parts;     // Column: name parts, last is the column; Function: qualifier parts
    std::vector<ExprPtr> args;
    SelectPtr select;      // Subquery, Exists, In (select)
    bool negated = false;  // NOT IN / NOT BETWEEN / NOT LIKE / IS NOT NULL
    bool distinct = false; // Count(Distinct x)
    bool hasElse = false;  // Case: last arg is the Else
    bool simpleCase = false;  // Case x When ...: first arg is x
    TypeName type;         // Cast / Convert / Identity
    int parameter = 0;     // Number / String: > 0 when the literal is bound as ?parameter
    bool wholeNumber = false;  // String bound as a parameter: its text is a whole number, as for
                               // every text that shares the translation (the key tells them apart)
    explicit Expr(Kind k, int pos = 0) : kind(k), position(pos) {}
};

struct TableRef {
    QStringList parts;  // [database, schema, table] as written (empty parts kept)
    QString alias;
    SelectPtr derived;  // (Select ...) As alias
    int position = 0;
};

struct Join {
    QString kind;  // "INNER", "LEFT", "RIGHT", "FULL", "CROSS"
    TableRef table;
    ExprPtr on;
};

struct FromItem {
    TableRef table;
    std::vector<Join> joins;
};

struct SelectItem {
    ExprPtr expr;  // Star for * and T.*
    QString alias;
};

struct OrderItem {
    ExprPtr expr;
    bool descending = false;
};

struct Select {
    int position = 0;
    bool distinct = false;
    ExprPtr top;
    std::vector<SelectItem> items;
    QStringList into;  // table name parts of Select ... Into
    std::vector<FromItem> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    std::vector<OrderItem> orderBy;
    SelectPtr unionNext;
    bool unionAll = false;
};

struct ColumnDef {
    QString name;
    TypeName type;
    bool identity = false;
    bool notNull = false;
    bool primaryKey = false;
    ExprPtr defaultValue;
    int position = 0;
};

struct Assignment {
    QStringList column;  // possibly qualified
    ExprPtr value;
};

struct Statement {
    enum class Kind {
        Select, Insert, Update, Delete, CreateTable, CreateIndex, DropTable, DropIndex, Truncate,
        AlterAdd, If, Block, Exec, ExecText, Begin, Commit, Rollback
    };
    Kind kind;
    int position = 0;
    int endPosition = 0;     // one past the last character of the statement
    SelectPtr select;        // Select; Insert ... Select; If Exists
    QStringList table;       // target table parts
    QString alias;
    QStringList columns;     // Insert column list; index columns; primary key columns
    std::vector<bool> descending;  // index columns
    std::vector<std::vector<ExprPtr>> values;  // Insert Values rows
    std::vector<Assignment> assignments;
    std::vector<FromItem> from;   // Update/Delete ... From
    ExprPtr where;
    ExprPtr top;
    std::vector<ColumnDef> columnDefs;  // Create Table / Alter Table Add
    QString name;            // index name, procedure name
    bool unique = false;
    bool delayedDurability = false;  // Commit ... With (Delayed_Durability = On)
    ExprPtr condition;       // If
    std::vector<StatementPtr> body;      // If: then-branch (one statement or a block); Block
    std::vector<StatementPtr> elseBody;
    std::vector<ExprPtr> args;  // Exec arguments; ExecText: the text expression
    explicit Statement(Kind k, int pos = 0) : kind(k), position(pos) {}
};

}  // namespace tr::engine::ast
