#include "cheques/ui/cheque_document_printing.h"

#include "cheques/cheque_document_print.h"
#include "cheques/ui/cheque_document_layouts.h"
#include "printing/ui/print_design_handoff.h"
#include "printing/ui/print_design_library.h"

namespace tr::cheques::ui {

namespace {

using tr::printing::ui::printDesignInstalled;

void handOff(const tr::Services& services, const ChequeDocumentPrint& document, const QString& mode,
             QWidget* parent) {
    const tr::printing::ui::PrintDesignLayout layout{
        tr::printing::printLayoutKey(document.kind),
        tr::printing::printLayoutSelection(services.connection(), document.kind),
        kChequePrintLinkFields};
    tr::printing::ui::handOffToPrintDesign(
        services, mode, layout, [&] { return createChequeDocumentPrintTables(services, document); },
        parent);
}

}  // namespace

bool printChequeDocument(const tr::Services& services, const QString& kind, const QString& serial,
                         PrintLayout layout, const PrintTarget& target, QWidget* parent) {
    const std::optional<ChequeDocumentPrint> document =
        loadChequeDocumentPrint(services, kind, serial);
    if (!document) return false;
    if (layout == PrintLayout::New && !target.isPdf() && printDesignInstalled(services)) {
        handOff(services, *document, tr::printing::ui::kPreviewMode, parent);
        return true;
    }
    return tr::printing::ui::printHtml(chequeDocumentHtml(*document, layout),
                                       document->kindName + QLatin1Char(' ') + document->serial,
                                       target, parent);
}

bool designChequeDocumentPrint(const tr::Services& services, const QString& kind,
                               const QString& serial, QWidget* parent) {
    if (!printDesignInstalled(services)) {
        tr::printing::ui::tellPrintDesignMissing(services);
        return false;
    }
    const std::optional<ChequeDocumentPrint> document =
        loadChequeDocumentPrint(services, kind, serial);
    handOff(services, document ? *document : emptyChequeDocumentPrint(services, kind),
            tr::printing::ui::kDesignMode, parent);
    return true;
}

}  // namespace tr::cheques::ui
