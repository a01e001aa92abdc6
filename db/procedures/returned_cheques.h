#pragma once
// sp_N_Report_ChqGetReturned(table, Koll, Moein, Tafsily, Tafsily2, ProjectCod): makes the ##
// table anew and fills it with the received cheques now returned (latest state 78) whose return
// debited the account (empty lower levels take every account under the levels given).
#include "db/procedures/procedures.h"

namespace tr::procedures {

tr::db::ExecResult reportReturnedCheques(tr::db::Connection& c, const Args& args);

}  // namespace tr::procedures
