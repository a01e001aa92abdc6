#pragma once
// sp_Is_Name_Repeated 'table', 'column', 'name': one row, column Repeated, 1 when a row of the
// table already holds the name in that column (compared trimmed), else 0.
#include "db/procedures/procedures.h"

namespace tr::procedures {

tr::db::ExecResult isNameRepeated(tr::db::Connection& connection, const Args& args);

}  // namespace tr::procedures
