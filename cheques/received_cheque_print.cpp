#include "cheques/received_cheque_print.h"

#include "cheques/received_cheque_document.h"

namespace tr::cheques {

std::optional<ReceivedChequePrint> loadReceivedChequePrint(const tr::Services& services,
                                                           const QString& serial) {
    return loadChequeDocumentPrint(services, ReceivedChequeDocument::kKind, serial);
}

ReceivedChequePrint emptyReceivedChequePrint(const tr::Services& services) {
    return emptyChequeDocumentPrint(services, ReceivedChequeDocument::kKind);
}

}  // namespace tr::cheques
