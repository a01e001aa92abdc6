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
                        const QString& joins, Reach reach) {
    // A series kept as Null is the empty series. Each look-up compares the stored series with a
    // value, so that the number's index (number, series, IDX) answers it with one seek; those
    // for the rows kept as Null or empty are asked only of a row whose series is empty.
    const QString laterNull = QStringLiteral("Not Exists (Select M.IDX From %1 As M Where M.%2 = L.%2 And M.%3 Is Null "
                                             "And M.IDX > L.IDX)");
    if (reach == Reach::Few) {
        return QStringLiteral("Select %1 From %2 As L %5 Where Not Exists (Select M.IDX From %2 As M "
                              "Where M.%3 = L.%3 And M.%4 = IsNull(L.%4, '') And M.IDX > L.IDX) And "
                              "(IsNull(L.%4, '') <> '' Or ")
                   .arg(columns, h.table, h.numberColumn, h.seriesColumn, joins) +
               laterNull.arg(h.table, h.numberColumn, h.seriesColumn) + QStringLiteral(")") + more;
    }
    // Grouping keeps Null apart from '', so an empty series' candidate is also checked against
    // the later rows of the other spelling.
    return QStringLiteral("Select %1 From %2 As L %5 Where L.IDX In (Select Max(M.IDX) From %2 As M Group By M.%3, "
                          "M.%4) And (IsNull(L.%4, '') <> '' Or (Not Exists (Select M.IDX From %2 As M Where M.%3 = "
                          "L.%3 And M.%4 = '' And M.IDX > L.IDX) And ")
               .arg(columns, h.table, h.numberColumn, h.seriesColumn, joins) +
           laterNull.arg(h.table, h.numberColumn, h.seriesColumn) + QStringLiteral("))") + more;
}

QString latestIdxOf(const ActionHistory& h, const QString& alias) {
    // A series kept as Null is the empty series; only the empty series needs that comparison.
    return QStringLiteral("Case When IsNull(%2.%4, '') <> '' Then (Select Max(X.IDX) From %1 As X Where X.%3 = "
                          "%2.%3 And X.%4 = %2.%4) Else (Select Max(X.IDX) From %1 As X Where X.%3 = %2.%3 And "
                          "IsNull(X.%4, '') = '') End")
        .arg(h.table, alias, h.numberColumn, h.seriesColumn);
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
