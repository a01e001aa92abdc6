#include "instruments/opening_state.h"

#include "common/db/query_helpers.h"
#include "instruments/latest_state.h"

namespace tr::instruments {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::sqlNumber;

bool atOpeningState(tr::db::Connection& c, const QString& number, const QString& series) {
    const auto latest =
        latestRow(c, chequeHistory(), number, series);
    if (!latest) return false;
    const tr::db::Query row =
        openQuery(c, QStringLiteral("Select Serial, LTrim(RTrim(IsNull(CodWhatDoc, ''))) From "
                                    "N_ChqLastTrans Where IDX = ") +
                         sqlNumber(latest->idx));
    if (row.IsEmpty()) return false;
    // The latest row is an opening document's own, or the opening state row written after it.
    const QString stateRow =
        row.value(0, 1).toString().isEmpty()
            ? QStringLiteral(" Or (O.Serial = ") + sqlNumber(row.value(0, 0).toLongLong()) +
                  QStringLiteral(" And O.IDX < ") + sqlNumber(latest->idx) +
                  QStringLiteral(" And IsNull(F.LastWhatDoc, '') = ") + c.text(latest->kind) +
                  QStringLiteral(" And F.WhatDoc <> ") + c.text(latest->kind) + QLatin1Char(')')
            : QString();
    return firstColumn(
               c,
               QStringLiteral(
                   "Select Count(*) From N_ChqFirst As F Inner Join N_ChqLastTrans As O On "
                   "(O.WhatDoc = F.WhatDoc And O.Serial = F.Serial And O.ChqNo = F.ChqNo And "
                   "IsNull(O.Joz, '') = IsNull(F.Joz, '')) Where F.ChqOrTaraf = 1 And F.ChqNo = ") +
                   c.text(number.trimmed()) + QStringLiteral(" And IsNull(F.Joz, '') = ") +
                   c.text(series.trimmed()) + QStringLiteral(" And (O.IDX = ") +
                   sqlNumber(latest->idx) + stateRow + QLatin1Char(')'))
               .toLongLong() > 0;
}

}  // namespace tr::instruments
