#pragma once
// What a printed received-cheque document ("دريافت چک", kind 71) shows: the cheque document print
// (cheque_document_print.h) read for that kind.
#include "cheques/cheque_document_print.h"

namespace tr::cheques {

using ReceivedChequePrintCheque = ChequePrintCheque;
using ReceivedChequePrintLine = ChequePrintLine;
using ReceivedChequePrint = ChequeDocumentPrint;

// Null when no received-cheque document has that serial.
std::optional<ReceivedChequePrint> loadReceivedChequePrint(const tr::Services& services,
                                                           const QString& serial);
// Company, user and name only: what the designer shows before the first save.
ReceivedChequePrint emptyReceivedChequePrint(const tr::Services& services);

inline const QString kReceivedChequeLinkFields = kChequePrintLinkFields;
inline tr::printing::PrintTables createReceivedChequePrintTables(
    const tr::Services& services, const ReceivedChequePrint& document) {
    return createChequeDocumentPrintTables(services, document);
}

}  // namespace tr::cheques
