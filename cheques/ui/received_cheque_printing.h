#pragma once
// What the received-cheque screen calls to print: the saved document in the chosen layout
// (through the suite's PrintDesign library when installed), its print-form designer, and its
// voucher. Each answers whether something was shown or written.
#include <QString>

#include "common/session/services.h"
#include "printing/print_layout.h"
#include "printing/ui/print_output.h"

class QWidget;

namespace tr::cheques::ui {

using tr::printing::PrintLayout;
using tr::printing::ui::PrintTarget;

// "تاييد و چاپ" and "چاپ دريافت چک …": the saved document `serial`. "جديد" hands it to PrintDesign
// when installed (preview mode, layouts "دريافت چک_"); "قديم", a PDF target and a host without
// the library use the built-in layouts. False when no received-cheque document has that serial.
bool printReceivedChequeDocument(const tr::Services& services, const QString& serial,
                                 PrintLayout layout, const PrintTarget& target, QWidget* parent);

// "طراحي فرم چاپ دريافت چک …": PrintDesign in design mode on the document (or on an empty one when
// `serial` names none). Without the library the user is told so; answers whether it was called.
bool designReceivedChequePrint(const tr::Services& services, const QString& serial,
                               QWidget* parent);

// "چاپ ..." (Ctrl+P): the document's voucher. False when the document is not saved or, holding
// opening cheques, has no voucher.
bool printReceivedChequeVoucher(const tr::Services& services, const QString& serial,
                                const PrintTarget& target, QWidget* parent);

}  // namespace tr::cheques::ui
