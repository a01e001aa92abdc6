#pragma once
// sp_R_Report_TotalSale(kind, layout, table, database): the sales module's invoice totals. Only
// 'FACT' / 'SUMMARY' is served: one row per invoice (SanadNoForosh, TotalSale = its lines' prices
// less discounts plus tax) into the ## table, made anew, read from `database` ('' = this one).
#include "db/procedures/procedures.h"

namespace tr::procedures {

tr::db::ExecResult reportTotalSale(tr::db::Connection& c, const Args& args);

}  // namespace tr::procedures
