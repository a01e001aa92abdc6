#pragma once
// The procedures of the cash and bank documents (sp_N_Asnad_Trans_CashGet and its siblings, with
// their _Arzi twins): one implementation driven by a table of kinds, moving a document between its
// transfer table and N_NaghdTrans / Asnad / N_ArzTrans in the modes of the treasury call contract.
// A save leaves the transfer table as a load would and numbers a new voucher last, in the writers'
// turn it then takes.
#include <vector>

#include "db/procedures/posting.h"
#include "db/procedures/procedures.h"

namespace tr::procedures {

// The object that stands on a document's treasury side. `lookup` is a Select with one %1 (the
// quoted code from the header) answering Nam, ArzCod, Koll, Moein, Tafsily, Tafsily2, ProjectCod.
struct TreasuryObject {
    const char* label;  // how the screens name it, for messages
    const char* lookup;
};

struct CashBankKind {
    const char* whatDoc;
    const char* title;      // as in the action log and the duplicate-serial message
    const char* procedure;  // the _Arzi twin appends "_Arzi"
    LedgerSide treasurySide;
    const TreasuryObject* object;
    bool currencyTwin;
};

const std::vector<CashBankKind>& cashBankKinds();

// One definition per procedure name of cashBankKinds(), twins included.
std::vector<ProcedureDefinition> cashBankDocumentProcedures();

// The body shared by all of them; `foreignCurrency` selects the _Arzi argument list.
tr::db::ExecResult runCashBankDocument(const CashBankKind& kind, bool foreignCurrency,
                                       tr::db::Connection& connection, const Args& args);

}  // namespace tr::procedures
