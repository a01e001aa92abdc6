#pragma once
// The built-in print layouts of a cheque document, received or paid ("جديد" and "قديم"): the
// header, the cheques, the counterparty lines they stand against, the total in figures and words.
#include <QString>

#include "cheques/cheque_document_print.h"
#include "printing/print_layout.h"

namespace tr::cheques::ui {

QString chequeDocumentHtml(const ChequeDocumentPrint& document, tr::printing::PrintLayout layout);

}  // namespace tr::cheques::ui
