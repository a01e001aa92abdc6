#pragma once
// sp_N_Report_Acount(AcountID, up to date): one row, Mandeh, the ledger balance (debit less
// credit) of the bank account's own (J) heads over the vouchers dated up to the date (every
// voucher when the date is empty). The cheque payment shows it beside its bank account.
#include "db/procedures/procedures.h"

namespace tr::procedures {

tr::db::ExecResult reportBankAccountBalance(tr::db::Connection& c, const Args& args);

}  // namespace tr::procedures
