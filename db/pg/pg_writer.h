#pragma once
// How the translator spells PostgreSQL: names folded to lower case (the server's quoted names
// keep their case, T-SQL's do not), $n parameters, the server's types with the `tsql` collation
// on text, identity keys, and the runtime helpers' calls.
#include "db/engine/target_writer.h"

namespace tr::pg {

const tr::engine::TargetWriter& postgresWriter();

}  // namespace tr::pg
