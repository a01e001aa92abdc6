#pragma once
// What the shell needs besides a backend: the procedures a company database answers to, the
// database a data directory or server opens by default, and the demo company.
#include <QString>
#include <memory>

#include "db/tsql/books.h"

namespace tr::tools {

// The embedded engine on `dataDirectory`, or the server when `server` (a libpq connection text)
// is given; every procedure registered.
std::unique_ptr<tr::tsql::Books> openBooks(const QString& dataDirectory, const QString& server);
void registerProcedures(tr::tsql::Books& books);
// The company database of the books (the newest registered one), else "CORVASK_Sdc".
QString defaultDatabase(tr::tsql::Books& books);
// Creates the demo company in `books`; answers a one-line summary naming `where`.
QString createDemo(tr::tsql::Books& books, const QString& where);

}  // namespace tr::tools
