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

// How many instruments a reader of latest rows reads. A few (its conditions pick them): each
// row is checked by a seek for a later row. Every one: one ordered pass over the number's index
// finds each instrument's greatest IDX and those rows are read in IDX order, which costs less
// once most instruments are read.
enum class Reach { Few, Every };

// "Select <columns> From <table> As L <joins> Where <the row is its instrument's latest>" +
// `more` (further conditions, starting with " And ").
QString latestRowsQuery(const ActionHistory& h, const QString& columns, const QString& more = {},
                        const QString& joins = {}, Reach reach = Reach::Few);

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
