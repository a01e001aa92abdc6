#pragma once
// "چاپ چك ..." of the cheque-payment screen: each of our own leaves on a saved payment printed on
// a leaf-sized page in its book's built-in layout, moved by the printer's offsets, to the print
// preview or a PDF file; and "طراحي فرم چاپ چك ...", the leaves handed to the PrintDesign library.
#include <QString>

#include "cheques/cheque_leaf_print.h"
#include "common/session/services.h"
#include "printing/ui/print_output.h"

class QWidget;

namespace tr::cheques::ui {

// One page per own leaf, in the payment's order. False when no payment has that serial, or,
// after telling the user ("1WR"), when it has no leaf of ours.
bool printChequeLeaves(const tr::Services& services, const QString& serial,
                       const tr::printing::ui::PrintTarget& target, QWidget* parent,
                       const ChequeLeafOffsets& offsets);

// PrintDesign in design mode under "چاپ چك_" on the payment's own leaves (none before the first
// save). Without the library the user is told so; answers whether it was called.
bool designChequeLeaves(const tr::Services& services, const QString& serial, QWidget* parent);

}  // namespace tr::cheques::ui
