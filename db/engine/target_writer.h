#pragma once
// What the translator writes differently for each target database: everything else it decides
// once (names, types, the T-SQL rules), and asks the target's writer only how to spell it.
// SQLite's writer is the embedded engine's; PostgreSQL's comes with the server backend.
#include <QString>
#include <QStringList>

#include "db/engine/ast.h"
#include "db/tsql/builtin_functions.h"

namespace tr::engine {

// What a T-SQL column type is, whatever the target: the writers spell each kind.
enum class ColumnKind { None, Text, LongText, Date, Integer, Float, Decimal, Binary, Guid };
ColumnKind columnKind(const ast::TypeName& type);

class TargetWriter {
  public:
    virtual ~TargetWriter() = default;
    // A table, column or alias name as the target quotes it (T-SQL's names ignore case).
    virtual QString name(const QString& name) const = 0;
    // The column that addresses a row of any table (for an Update or Delete with Top or a join).
    virtual QString rowKey() const = 0;
    // Where the value bound as parameter `ordinal` (from 1) stands in the text.
    virtual QString parameter(int ordinal) const = 0;
    // A T-SQL column type as the target declares it (text types with the TSQL collation); empty
    // for a type the target keeps no column of.
    virtual QString columnType(const ast::TypeName& type) const = 0;
    // The declaration of an Identity column: the table's row key, numbered by the target.
    virtual QString identityColumn() const = 0;
    // `sql` with its leading and trailing blanks removed.
    virtual QString trimBlanks(const QString& sql) const = 0;
    // How the target writes a call of a built-in function (%1 ... for the arguments).
    virtual QString spelling(const tr::tsql::BuiltinFunction& function) const = 0;
    // T-SQL's ^ on integers; each operand is written once.
    virtual QString bitwiseXor(const QString& left, const QString& right) const = 0;
    // T-SQL LIKE with the TSQL collation's folding.
    virtual QString like(const QString& value, const QString& pattern, const QString& escape,
                         bool negated) const = 0;
    // Text as Order By sorts it, where the target's collation cannot give the TSQL collation's
    // order of a sort itself; empty where it can (the text then sorts by its collation).
    virtual QString orderKey(const QString& /*sql*/) const { return {}; }
    // Text as `=` compares it under the TSQL collation (blanks at either end dropped, case, yeh
    // and kaf folded, nothing else ignored), where the target's collation finds more texts equal;
    // empty where it finds exactly those.
    virtual QString exactText(const QString& /*sql*/) const { return {}; }
    // `left = right` byte for byte, where exactText is written: texts the same to the byte are
    // equal under any collation, so this cheap test goes before the folded one.
    virtual QString sameBytes(const QString& /*left*/, const QString& /*right*/) const { return {}; }
    // The schema of # tables (the connection's own).
    virtual QString localTempSchema() const = 0;
    // Creating index `name` of `schema`.`table`; `columns` already written.
    virtual QString createIndex(bool unique, const QString& schema, const QString& name,
                                const QString& table, const QString& columns) const = 0;
    // The view answering for SysObjects or SysColumns (`lowerName`) of the current database, or of
    // tempdb when `tempdb`; empty for any other name.
    virtual QString catalogView(const QString& lowerName, bool tempdb) const = 0;
    // What follows an Insert into a table with an identity column so that the statement itself
    // answers the keys it gave (its rows are then not a result); empty when the target tells the
    // last key another way.
    virtual QString returnIdentity(const QString& /*column*/) const { return {}; }
    // Whether a number read from text at run time is an integer or not as the text is (SQLite's
    // values carry their own types); where not, the translator types the literal texts it reads
    // as numbers itself.
    virtual bool textNumbersTyped() const { return true; }
    // Text written into a number column (`integer` or not), converted as the server converts it;
    // empty when the target's column converts it itself.
    virtual QString textIntoNumber(const QString& /*sql*/, bool /*integer*/) const { return {}; }
    // Where the target keeps names in one case only: the statements (one command each) that
    // record how a new table's columns were spelled (`table` already written), which its
    // catalogue then answers, and the mark of a result column's name in a statement's own
    // spelling (for a column the statement leaves unnamed, the expression's text). Empty where
    // the target keeps names as they were written.
    virtual QStringList columnSpellings(const QString& /*table*/, const QStringList& /*columns*/) const {
        return {};
    }
    virtual QString resultName(const QString& /*spelling*/) const { return {}; }
};

const TargetWriter& sqliteWriter();

}  // namespace tr::engine
