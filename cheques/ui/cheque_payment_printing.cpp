#include "cheques/ui/cheque_payment_printing.h"

#include "printing/ui/voucher_printing.h"
#include "vouchers/document_kinds.h"

namespace tr::cheques::ui {

namespace {

const QString& kind() {
    return tr::vouchers::issuedChequeKind().code;
}

}  // namespace

bool printChequePaymentDocument(const tr::Services& services, const QString& serial,
                                PrintLayout layout, const PrintTarget& target, QWidget* parent) {
    return printChequeDocument(services, kind(), serial, layout, target, parent);
}

bool designChequePaymentPrint(const tr::Services& services, const QString& serial,
                              QWidget* parent) {
    return designChequeDocumentPrint(services, kind(), serial, parent);
}

bool printChequePaymentVoucher(const tr::Services& services, const QString& serial,
                               const PrintTarget& target, QWidget* parent) {
    return tr::printing::ui::printVoucher(services, kind(), serial, target, parent);
}

}  // namespace tr::cheques::ui
