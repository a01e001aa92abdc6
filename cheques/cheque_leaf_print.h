#pragma once
// What prints on our own cheque leaves of a saved payment ("چاپ چك ..."): each own leaf with its
// due date, amount in figures and words, payee and payable-to-order mark, and the form code of
// its book that chooses the layout; the printer's offsets; the print-design tables of the leaves.
#include <QString>
#include <vector>

#include "cheques/cheque_document_print.h"

namespace tr::cheques {

struct ChequeLeaf {
    int raj = 0;  // the cheque's row on the payment, from 1
    QString number, series;
    QString dueDate;
    double amount = 0;
    QString amountInWords;  // ends with "ريال"
    QString payee;
    bool payableToOrder = false;
    qint64 bankAccountId = 0;
    QString formCode;  // the book's N_Cheque.FormCode; "" for a leaf in no book of its account
};

// The own leaves of a payment, in its grid's order. A received cheque passed on is its drawer's
// leaf, already written, and does not print.
std::vector<ChequeLeaf> chequeLeaves(tr::db::Connection& connection,
                                     const ChequeDocumentPrint& payment);

// Where the printer puts a leaf's page relative to the layout, in millimetres: right and down
// are positive.
struct ChequeLeafOffsets {
    double horizontal = 0;
    double vertical = 0;
};
// The company's setting (Options.Naghd "CHQ_LEAF_DX=..;CHQ_LEAF_DY=..;"); 0 for a value unset or
// not a number.
ChequeLeafOffsets storedLeafOffsets(tr::db::Connection& connection);

// The leaves' print item in the print-design library, beside the payment's "پرداخت چک_".
inline const QString kChequeLeafLayoutKey = QStringLiteral("چاپ چك_");
// The payment's header row and one line row per own leaf; the caller drops both.
tr::printing::PrintTables createChequeLeafPrintTables(const tr::Services& services,
                                                      const ChequeDocumentPrint& payment,
                                                      const std::vector<ChequeLeaf>& leaves);

}  // namespace tr::cheques
