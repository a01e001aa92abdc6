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

// What one call of Connection::execute gave: every result set, in order, and the rows changed.
struct ExecResult {
    std::vector<ResultSet> resultSets;
    qint64 rowsAffected = 0;
};

}  // namespace tr::db
