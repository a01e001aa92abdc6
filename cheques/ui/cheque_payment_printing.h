#pragma once
// What the cheque-payment screen calls to print its document: the saved payment in the chosen
// layout (through the suite's PrintDesign library when installed), its print-form designer, and
// its voucher. Each answers whether something was shown or written.
#include <QString>

#include "cheques/ui/cheque_document_printing.h"

namespace tr::cheques::ui {

// "تاييد و چاپ" and "چاپ پرداخت چک …": the saved payment `serial`. "جديد" hands it to PrintDesign
// when installed (preview mode, layouts "پرداخت چک_"); "قديم", a PDF target and a host without
// the library use the built-in layouts. False when no payment has that serial.
bool printChequePaymentDocument(const tr::Services& services, const QString& serial,
                                PrintLayout layout, const PrintTarget& target, QWidget* parent);

// "طراحي فرم چاپ پرداخت چک …": PrintDesign in design mode on the payment (or an empty one before
// the first save). Without the library the user is told so; answers whether it was called.
bool designChequePaymentPrint(const tr::Services& services, const QString& serial, QWidget* parent);

// "چاپ ..." (Ctrl+P): the payment's voucher. False when it is not saved or, holding opening
// cheques, has no voucher.
bool printChequePaymentVoucher(const tr::Services& services, const QString& serial,
                               const PrintTarget& target, QWidget* parent);

}  // namespace tr::cheques::ui
