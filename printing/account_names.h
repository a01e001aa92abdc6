#pragma once
// The name a print gives an account line: that of its most detailed level which the line fills
// and the chart names (project, second detail, detail, subsidiary, general).
#include <QString>

#include "common/db/query.h"

namespace tr::printing {

// Columns and joins that add every level's name to a statement over an account line aliased A
// (A.Koll ... A.ProjectCod): the columns after the statement's own, the joins after its From.
QString accountNameColumns();
QString accountNameJoins();
// The line's name from a row read with those columns; "" when no filled level has one.
QString accountLastName(tr::db::Query& row);

}  // namespace tr::printing
