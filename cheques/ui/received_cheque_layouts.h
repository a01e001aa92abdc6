#pragma once
// The built-in print layouts of a received-cheque document ("جديد" and "قديم"): the cheque
// document layouts (cheque_document_layouts.h) of kind 71.
#include "cheques/received_cheque_print.h"
#include "cheques/ui/cheque_document_layouts.h"

namespace tr::cheques::ui {

inline QString receivedChequeHtml(const ReceivedChequePrint& document,
                                  tr::printing::PrintLayout layout) {
    return chequeDocumentHtml(document, layout);
}

}  // namespace tr::cheques::ui
