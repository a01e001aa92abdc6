#pragma once
// A connection to one database. It runs T-SQL text (one or more statements) and returns every
// result set read in full; failures raise DatabaseError. Code above this interface never knows
// which engine answers.
#include <QString>

#include "common/db/result_set.h"
#include "common/db/sql_literal.h"

namespace tr::db {

// Told while a statement waits for another user's work (a lock another desk holds), so that the
// screen can show it and let the user stop waiting.
class WaitObserver {
public:
    virtual ~WaitObserver() = default;
    // About ten times a second while waiting, with the milliseconds waited so far; answering
    // false stops the wait, and the statement fails ("Operation cancelled by user.").
    virtual bool waiting(int waitedMs) = 0;
    // The wait is over, whichever way; only after at least one waiting().
    virtual void waitEnded() = 0;
};

// Whom a write transaction waits for where users write side by side (a database server). The
// embedded engine lets one writer in at a time whatever is asked.
struct WriteTurn {
    enum class Kind {
        Writers,  // every other writer of the books: serials and numbers taken by Max() + 1
        Key,      // only transactions given the same key; they must write nothing else it guards
        OwnRows,  // nobody: the transaction changes only rows no other user reads to decide
    };
    Kind kind = Kind::Writers;
    QString key;

    static WriteTurn of(const QString& key) { return {Kind::Key, key}; }
    static WriteTurn ownRows() { return {Kind::OwnRows, {}}; }
};

class Connection {
public:
    virtual ~Connection() = default;
    virtual ExecResult execute(const QString& sql) = 0;
    virtual SqlDialect dialect() const = 0;
    // The name of the database the connection works on (e.g. "Corvask_1_1403").
    virtual QString databaseName() const = 0;
    // Who hears of waits on other users (none by default; a connection without such waits
    // never calls it). Not owned.
    virtual void setWaitObserver(WaitObserver* /*observer*/) {}
    // The turn the next outermost "Begin Tran" takes (then back to Writers); ignored inside a
    // transaction, whose own turn covers it.
    virtual void setNextTurn(const WriteTurn& /*turn*/) {}
    // In a transaction begun with the OwnRows turn: from the next statement that reads or writes
    // a book, wait for every other writer as a Writers transaction does. Nothing elsewhere.
    virtual void takeWritersTurn() {}

    QString text(const QString& value) const { return sqlText(value, dialect()); }
};

}  // namespace tr::db
