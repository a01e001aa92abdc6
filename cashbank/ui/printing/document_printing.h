#pragma once
// What the cash and bank document screens call to print: the document in the chosen layout
// (through the suite's PrintDesign library when installed), its print-form designer, and its
// voucher (the shared voucher print). Each answers whether something was shown or written.
#include <QString>

#include "cashbank/ui/printing/print_layouts.h"
#include "common/session/services.h"
#include "printing/ui/voucher_printing.h"

class QWidget;

namespace tr::cashbank::ui {

// "چاپ ..." (Ctrl+P): the document's voucher. False when no such document is saved.
using tr::printing::ui::printVoucher;

// "چاپ ... …" and "تاييد و چاپ": the saved document `serial` of `kind`. "جديد" hands the document
// to PrintDesign when it is installed (preview mode); "قديم", a PDF target and a host without
// the library use the built-in layouts. False when no such document is saved.
bool printDocument(const tr::Services& services, const QString& kind, const QString& serial,
                   PrintLayout layout, const PrintTarget& target, QWidget* parent);

// "طراحي فرم چاپ ... …": PrintDesign in design mode on the document (or on an empty one when
// `serial` names none). Without the library the user is told so; answers whether it was called.
bool designDocumentPrint(const tr::Services& services, const QString& kind, const QString& serial,
                         QWidget* parent);

}  // namespace tr::cashbank::ui
