#pragma once
// The row commands of the received-cheque document's two grids that go beyond the shared grid
// commands: deleting a cheque with its counterparty lines, deleting a line, copying a line's
// account head down, and keeping the lines numbered 0,1,2,... in the grid's order.
#include <QString>

#include "cheques/received_cheque_document.h"

namespace tr::cheques {

// Asked instead of "آيا حذف شود؟" before deleting a cheque assigned to sales invoices.
extern const QString kLinkedChequeDeleteQuestion;

// Whether the document's saved serial assigns the cheque to sales invoices.
bool chequeAssignedToInvoices(ChequeDocument& document, const QString& number,
                              const QString& series);

// "حذف رديف" on the cheque grid: after the question, the current cheque and every counterparty
// line of the same number and series. Its invoice links stay until the document is saved
// without it (a cancel brings both back).
bool deleteChequeRow(ChequeDocument& document);
// "حذف رديف" on the counterparty grid.
bool deleteCounterpartyRow(ChequeDocument& document);
// "کپي سرفصل": the current line's account head (accounts, kind, code and name of the
// counterparty) into every line below it.
bool copyAccountHeadDown(ChequeDocument& document);
// Raj = 0,1,2,... in the grid's order.
void renumberCounterparties(ChequeDocument& document);

}  // namespace tr::cheques
