#pragma once
// A column of a hand-written SQLite statement's current row as the engine answers it, so that both
// sides of a benchmark read into the same row type.
#include <sqlite3.h>

#include <QString>
#include <QVariant>

namespace tr::bench {

inline QVariant columnValue(sqlite3_stmt* s, int i) {
    switch (sqlite3_column_type(s, i)) {
        case SQLITE_INTEGER: return QVariant(static_cast<qint64>(sqlite3_column_int64(s, i)));
        case SQLITE_FLOAT: return QVariant(sqlite3_column_double(s, i));
        case SQLITE_NULL: return QVariant();
        default:
            return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, i)),
                                              sqlite3_column_bytes(s, i)));
    }
}

}  // namespace tr::bench
