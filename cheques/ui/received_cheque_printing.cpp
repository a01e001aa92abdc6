#include "cheques/ui/received_cheque_printing.h"

#include "cheques/received_cheque_document.h"
#include "cheques/ui/cheque_document_printing.h"
#include "printing/ui/voucher_printing.h"

namespace tr::cheques::ui {

namespace {

const QString& kKind = ReceivedChequeDocument::kKind;

}  // namespace

bool printReceivedChequeDocument(const tr::Services& services, const QString& serial,
                                 PrintLayout layout, const PrintTarget& target, QWidget* parent) {
    return printChequeDocument(services, kKind, serial, layout, target, parent);
}

bool designReceivedChequePrint(const tr::Services& services, const QString& serial,
                               QWidget* parent) {
    return designChequeDocumentPrint(services, kKind, serial, parent);
}

bool printReceivedChequeVoucher(const tr::Services& services, const QString& serial,
                                const PrintTarget& target, QWidget* parent) {
    return tr::printing::ui::printVoucher(services, kKind, serial, target, parent);
}

}  // namespace tr::cheques::ui
