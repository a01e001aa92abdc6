#pragma once
// Whether a cheque stands in the state its opening set (the opening document's own row or its
// opening state row is its latest row): there is no earlier action to undo. The actions screen and
// the apply procedures read it alike.
#include <QString>

#include "common/db/connection.h"

namespace tr::instruments {

bool atOpeningState(tr::db::Connection& c, const QString& number, const QString& series);

}  // namespace tr::instruments
