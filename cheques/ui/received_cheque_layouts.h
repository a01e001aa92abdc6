#pragma once
// The built-in print layouts of a received-cheque document ("جديد" and "قديم"): the header, the
// cheques, the counterparty lines they are credited to, the total in figures and words.
#include <QString>

#include "cheques/received_cheque_print.h"
#include "printing/print_layout.h"

namespace tr::cheques::ui {

QString receivedChequeHtml(const ReceivedChequePrint& document, tr::printing::PrintLayout layout);

}  // namespace tr::cheques::ui
