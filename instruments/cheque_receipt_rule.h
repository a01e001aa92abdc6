#pragma once
// Whether a cheque may be received: one the book received before is refused, unless its latest
// action returned it to its drawer, and then only with a later issue date. The received-cheque
// screen checks it as a row is typed and its procedure again before it writes.
#include <QString>

#include "common/db/connection.h"

namespace tr::instruments {

// The refusal for receiving `number`/`series` on `issueDate`, or empty when it may be received.
// The receipt rows of document `ownSerial` (the one being edited; 0 for none) do not count.
QString chequeReceiptRefusal(tr::db::Connection& c, const QString& number, const QString& series,
                             const QString& issueDate, qint64 ownSerial = 0);

}  // namespace tr::instruments
