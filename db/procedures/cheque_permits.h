#pragma once
// The cheque payment permit's procedure, sp_N_Asnad_Trans_ChqMojavez(mode, prefix, serial, date,
// user, state): 'DB->TRANS' loads permit `serial` into ##<prefix>Bed (its cheques), ##<prefix>_Taraf
// (its counterparty lines) and ##<prefix>_Fact (its components); 'TRANS->DB' writes them back into
// N_MojavezTrans, N_MOJAVEZCHQ and N_MojavezFact; 'DELETE' removes the permit. A permit a payment
// used, or a manager approved or voided, is neither rewritten nor deleted.
#include <vector>

#include "db/procedures/procedures.h"

namespace tr::procedures {

std::vector<ProcedureDefinition> chequePermitProcedures();

// The permit's cheques and counterparty lines into a payment's work tables (emptied first), as a
// payment carries them out ('MOJAVEZ->TRANS' of sp_N_Asnad_Trans_ChqPay) or as the permit's own
// screen edits them (`asSaved`: the rows keep their ids and the amount the permit allowed).
void copyPermitRows(tr::db::Connection& c, qint64 serial, const QString& chequeTable, const QString& counterpartyTable,
                    bool asSaved);

// Why permit `serial` may no longer change, in this order: a payment used it, the managing
// director or the finance manager approved it, either voided it; empty when it may.
QString permitLockedRefusal(tr::db::Connection& c, qint64 serial);

}  // namespace tr::procedures
