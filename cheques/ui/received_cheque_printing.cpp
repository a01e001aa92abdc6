#include "cheques/ui/received_cheque_printing.h"

#include "cheques/received_cheque_document.h"
#include "cheques/received_cheque_print.h"
#include "cheques/ui/received_cheque_layouts.h"
#include "printing/ui/print_design_handoff.h"
#include "printing/ui/print_design_library.h"
#include "printing/ui/voucher_printing.h"

namespace tr::cheques::ui {

namespace {

using tr::printing::ui::printDesignInstalled;

const QString& kKind = ReceivedChequeDocument::kKind;

void handOff(const tr::Services& services, const ReceivedChequePrint& document, const QString& mode,
             QWidget* parent) {
    const tr::printing::ui::PrintDesignLayout layout{
        tr::printing::printLayoutKey(kKind),
        tr::printing::printLayoutSelection(services.connection(), kKind),
        kReceivedChequeLinkFields};
    tr::printing::ui::handOffToPrintDesign(
        services, mode, layout, [&] { return createReceivedChequePrintTables(services, document); },
        parent);
}

}  // namespace

bool printReceivedChequeDocument(const tr::Services& services, const QString& serial,
                                 PrintLayout layout, const PrintTarget& target, QWidget* parent) {
    const std::optional<ReceivedChequePrint> document = loadReceivedChequePrint(services, serial);
    if (!document) return false;
    if (layout == PrintLayout::New && !target.isPdf() && printDesignInstalled(services)) {
        handOff(services, *document, tr::printing::ui::kPreviewMode, parent);
        return true;
    }
    return tr::printing::ui::printHtml(receivedChequeHtml(*document, layout),
                                       document->kindName + QLatin1Char(' ') + document->serial,
                                       target, parent);
}

bool designReceivedChequePrint(const tr::Services& services, const QString& serial,
                               QWidget* parent) {
    if (!printDesignInstalled(services)) {
        tr::printing::ui::tellPrintDesignMissing(services);
        return false;
    }
    const std::optional<ReceivedChequePrint> document = loadReceivedChequePrint(services, serial);
    handOff(services, document ? *document : emptyReceivedChequePrint(services),
            tr::printing::ui::kDesignMode, parent);
    return true;
}

bool printReceivedChequeVoucher(const tr::Services& services, const QString& serial,
                                const PrintTarget& target, QWidget* parent) {
    return tr::printing::ui::printVoucher(services, kKind, serial, target, parent);
}

}  // namespace tr::cheques::ui
