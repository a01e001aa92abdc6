#pragma once
// What a book's database needs before translated T-SQL runs on it: the tsql collation and the
// runtime helpers the translation calls, written in SQL with the embedded engine's messages.
// Installing again changes nothing.
namespace tr::pg {

class PgLink;

void installRuntime(PgLink& link);

}  // namespace tr::pg
