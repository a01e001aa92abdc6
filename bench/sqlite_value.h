#pragma once
// A column of a hand-written SQLite statement's current row as the engine answers it, so that both
// sides of a benchmark read into the same row type; and whether two such values are the same.
#include <sqlite3.h>

#include <QString>
#include <QVariant>
#include <algorithm>
#include <cmath>

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

// Null only with null, text as text, numbers to within a billionth.
inline bool sameValue(const QVariant& a, const QVariant& b) {
    if (a.isNull() || b.isNull()) return a.isNull() == b.isNull();
    const QMetaType::Type ta = QMetaType::Type(a.typeId()), tb = QMetaType::Type(b.typeId());
    if (ta == QMetaType::QString || tb == QMetaType::QString) return a.toString() == b.toString();
    const double x = a.toDouble(), y = b.toDouble();
    return std::abs(x - y) <= 1e-9 * std::max(1.0, std::abs(x));
}

}  // namespace tr::bench
