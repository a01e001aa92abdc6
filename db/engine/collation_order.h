#pragma once
// Keeps a book's indexes in the TSQL collation's current order: a file stamped (PRAGMA
// user_version) with an earlier order has every index on TSQL text rebuilt once, in one
// transaction, when it is opened or attached.
#include <QString>

struct sqlite3;

namespace tr::engine {

// `schema` is "main" or an attached alias. Throws DatabaseError when the rebuild fails.
void bringCollationOrderUpToDate(sqlite3* db, const QString& schema);

}  // namespace tr::engine
