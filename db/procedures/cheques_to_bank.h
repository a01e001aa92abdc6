#pragma once
// sp_N_Asnad_Chq_SendToBank(work table, from date, to date, our account number, from bank, to
// bank): every collection (kind 72) not undone, of our bank account, dated in the range, into the
// cheques-to-bank list whatever the cheque's state now, so a slip can be printed again later.
#include "db/procedures/procedures.h"

namespace tr::procedures {

tr::db::ExecResult listChequesSentToBank(tr::db::Connection& c, const Args& args);

}  // namespace tr::procedures
