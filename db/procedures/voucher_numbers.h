#pragma once
// dbo.sp_M_Asnad_GetMaxSanadNo(): the next voucher number of the company, one more than the
// numeric maximum of Asnad.SanadNo over every subsystem's vouchers (1 in an empty ledger).
#include "db/procedures/procedures.h"

namespace tr::procedures {

QVariant nextVoucherNumber(tr::db::Connection& connection, const Args& args);

}  // namespace tr::procedures
