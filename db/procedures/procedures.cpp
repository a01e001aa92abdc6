#include "db/procedures/procedures.h"

#include "db/procedures/action_log.h"
#include "db/procedures/bank_balance.h"
#include "db/procedures/cash_bank_documents.h"
#include "db/procedures/cheque_action_apply.h"
#include "db/procedures/cheque_documents.h"
#include "db/procedures/cheque_permits.h"
#include "db/procedures/cheques_to_bank.h"
#include "db/procedures/name_repeated.h"
#include "db/procedures/returned_cheques.h"
#include "db/procedures/sales_summary.h"
#include "db/procedures/voucher_numbers.h"

namespace tr::procedures {

std::vector<ProcedureDefinition> allProcedures() {
    std::vector<ProcedureDefinition> all = {
        {QStringLiteral("sp_Is_Name_Repeated"), isNameRepeated},
        {QStringLiteral("sp_Asnad_Actions"), logDocumentAction},
        {QStringLiteral("sp_N_Report_Acount"), reportBankAccountBalance},
        {QStringLiteral("sp_N_Report_ChqGetReturned"), reportReturnedCheques},
        {QStringLiteral("sp_R_Report_TotalSale"), reportTotalSale},
        {QStringLiteral("sp_N_Asnad_Chq_SendToBank"), listChequesSentToBank},
    };
    for (ProcedureDefinition& p : cashBankDocumentProcedures()) all.push_back(std::move(p));
    for (ProcedureDefinition& p : chequeDocumentProcedures()) all.push_back(std::move(p));
    for (ProcedureDefinition& p : chequeActionProcedures()) all.push_back(std::move(p));
    for (ProcedureDefinition& p : chequePermitProcedures()) all.push_back(std::move(p));
    return all;
}

std::vector<FunctionDefinition> allFunctions() {
    return {
        {QStringLiteral("sp_M_Asnad_GetMaxSanadNo"), nextVoucherNumber},
    };
}

}  // namespace tr::procedures
