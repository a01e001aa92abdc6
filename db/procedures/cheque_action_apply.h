#pragma once
// sp_N_Asnad_ChqGetAction_Apply (received tab) and sp_N_Asnad_ChqPayAction_Apply (issued tab):
// a work table's actions checked again against the cheques' states now, then posted or undone,
// all in one transaction; any refused row refuses the batch, naming the cheque.
#include <vector>

#include "db/procedures/procedures.h"

namespace tr::procedures {

std::vector<ProcedureDefinition> chequeActionProcedures();

}  // namespace tr::procedures
