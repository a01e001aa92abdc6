#pragma once
// An instrument's state is the kind of its latest action row: the greatest IDX among the rows of
// its number and series (compared as the book compares codes, blanks aside), over both sides, so
// that a received cheque spent and come back is read from its latest row whatever side wrote it.
// One query for every reader: the actions screens' filters, a document's delete check, the
// searches.
#include <QString>
#include <optional>

#include "common/db/connection.h"

namespace tr::instruments {

// Where an instrument's action rows are kept.
struct ActionHistory {
    QString table;         // e.g. N_ChqLastTrans
    QString numberColumn;  // e.g. ChqNo
    QString seriesColumn;  // e.g. Joz
};

const ActionHistory& chequeHistory();

// "Select <columns> From <table> As L <joins> Where <the row is its instrument's latest>" +
// `more` (further conditions, starting with " And ").
QString latestRowsQuery(const ActionHistory& h, const QString& columns, const QString& more = {},
                        const QString& joins = {});

// The IDX of the latest row of the instrument whose number and series stand in `alias`'s
// columns (a scalar expression: one seek of the number's index when the series is not empty).
QString latestIdxOf(const ActionHistory& h, const QString& alias);

struct LatestRow {
    qint64 idx = 0;
    QString kind;  // WhatDoc
    QString date;  // SanadDate
};
// The latest row of one instrument; nothing when it has none.
std::optional<LatestRow> latestRow(tr::db::Connection& c, const ActionHistory& h,
                                   const QString& number, const QString& series);

}  // namespace tr::instruments
