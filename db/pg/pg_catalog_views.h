#pragma once
// The T-SQL catalogue views a book's statements read (SysObjects and SysColumns of the current
// database and of tempdb), as views of the server's catalogue in the public schema.
namespace tr::pg {

class PgLink;

void installCatalogViews(PgLink& link);

}  // namespace tr::pg
