#pragma once
// A connection to one database. It runs T-SQL text (one or more statements) and returns every
// result set read in full; failures raise DatabaseError. Code above this interface never knows
// which engine answers.
#include <QString>

#include "common/db/result_set.h"
#include "common/db/sql_literal.h"

namespace tr::db {

class Connection {
public:
    virtual ~Connection() = default;
    virtual ExecResult execute(const QString& sql) = 0;
    virtual SqlDialect dialect() const = 0;
    // The name of the database the connection works on (e.g. "Corvask_1_1403").
    virtual QString databaseName() const = 0;

    QString text(const QString& value) const { return sqlText(value, dialect()); }
};

}  // namespace tr::db
