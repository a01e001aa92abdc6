#include "instruments/latest_state.h"

#include "common/db/query.h"
#include "common/db/query_helpers.h"

namespace tr::instruments {

const ActionHistory& chequeHistory() {
    static const ActionHistory h{QStringLiteral("N_ChqLastTrans"), QStringLiteral("ChqNo"),
                                 QStringLiteral("Joz")};
    return h;
}

QString latestRowsQuery(const ActionHistory& h, const QString& columns, const QString& more,
                        const QString& joins) {
    // The number's index (number, series, IDX) answers the maximum; a series kept as Null is the
    // empty series.
    return QStringLiteral("Select %1 From %2 As L %5 Where L.IDX = (Select Max(M.IDX) From %2 As M "
                          "Where M.%3 = L.%3 And IsNull(M.%4, '') = IsNull(L.%4, ''))")
               .arg(columns, h.table, h.numberColumn, h.seriesColumn, joins) +
           more;
}

std::optional<LatestRow> latestRow(tr::db::Connection& c, const ActionHistory& h,
                                   const QString& number, const QString& series) {
    const tr::db::Query q = tr::db::openQuery(
        c, QStringLiteral("Select Top 1 IDX, WhatDoc, SanadDate From %1 Where %2 = %3 And "
                          "IsNull(%4, '') = %5 Order By IDX Desc")
               .arg(h.table, h.numberColumn, c.text(number.trimmed()), h.seriesColumn,
                    c.text(series.trimmed())));
    if (q.IsEmpty()) return std::nullopt;
    return LatestRow{q.value(0, 0).toLongLong(), q.value(0, 1).toString().trimmed(),
                     q.value(0, 2).toString().trimmed()};
}

}  // namespace tr::instruments
