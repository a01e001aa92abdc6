#pragma once
// sp_N_Asnad_ChqGetAction_Apply: the received cheques' actions of one work table (##TT), all in
// one transaction: each row's action checked again against the state table and the cheque's state
// now, then posted (a treasury row of the action's kind, a voucher moving the amount from the
// row's V-accounts to its Va-accounts, the cheque's new state row), or its latest action undone.
// Any refused row refuses the whole batch, naming the cheque.
#include <vector>

#include "db/procedures/procedures.h"

namespace tr::procedures {

std::vector<ProcedureDefinition> chequeActionProcedures();

}  // namespace tr::procedures
