#pragma once
// A fully read result set: column names and rows of values (null is an invalid QVariant).
#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

namespace tr::db {

using Row = std::vector<QVariant>;

struct ResultSet {
    QStringList columns;
    std::vector<Row> rows;
    int columnIndex(const QString& name) const;  // case-insensitive; -1 when absent
};

// What one call of Connection::execute gave: every result set, in order, the rows changed, and
// the identity (row key) of the last row an Insert of the call itself added, as Scope_Identity()
// gives it (0 when none; inserts of procedures and Exec('...') it ran are other scopes).
struct ExecResult {
    std::vector<ResultSet> resultSets;
    qint64 rowsAffected = 0;
    qint64 lastIdentity = 0;
};

}  // namespace tr::db
