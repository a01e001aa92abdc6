#pragma once
// The cheque documents' procedures, one body for both: sp_N_Asnad_Trans_ChqGet (received cheques,
// ##<prefix>_Chq) and sp_N_Asnad_Trans_ChqPay (cheque payments, ##<prefix>Bed), each with its _Arzi
// twin, moving a document between its two work tables (the cheques and ##<prefix>_Taraf; columns in
// instruments/cheque_work_tables.h) and N_NaghdTrans / Asnad / N_ArzTrans / N_ChqLastTrans /
// N_ChqFirst, the payment's 'MOJAVEZ->TRANS' filling its rows from a payment permit; and
// sp_N_Create_LastChqAction.
#include <vector>

#include "db/procedures/procedures.h"

namespace tr::procedures {

std::vector<ProcedureDefinition> chequeDocumentProcedures();

// The received-cheque document's title, as the action log and its refusals name it.
QString receivedChequeTitle();

}  // namespace tr::procedures
