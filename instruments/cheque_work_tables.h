#pragma once
// The columns of the cheque screens' ## work tables (for "Create Table ##... (<columns>)"): the
// received-cheque document's two tables and the actions screen's list. The screens make them and
// the procedures fill and read them, so both take the columns from here.
#include <QString>

namespace tr::instruments {

// ##<prefix>_Chq: one row per cheque of a received-cheque document.
QString chequeWorkTableColumns();
// ##<prefix>Bed: one row per cheque of a cheque payment, our own leaf ("صدور چك", on AcountID)
// or a received cheque passed on ("خرج چك").
QString paymentChequeWorkTableColumns();
// ##<prefix>_Taraf: its counterparty lines, each tied to its cheque by ChqNo and Joz.
QString counterpartyWorkTableColumns();
// The actions screen's received list (##TT...), in the order the screen's rules give: where each
// cheque stands in VKoll ... VProjectCod, where its action hands it in VaKoll ... VaProjectCod.
QString chequeActionWorkTableColumns();
// The issued list (##TTPay...), the same columns with Koll ... ProjectCod (width 20) in place of
// the V-accounts. The payment screen's "تاييد و برداشت" hands a table of this shape to
// sp_N_Asnad_ChqPayAction_Apply.
QString issuedChequeActionWorkTableColumns();
// The actions screen's second table: the counterparty lines a returned cheque goes back to, each
// with the part of the cheque (NewValue) it takes.
QString returnSplitWorkTableColumns();

}  // namespace tr::instruments
