#include "cashbank/ui/printing/document_printing.h"

#include "printing/ui/print_design_handoff.h"
#include "printing/ui/print_design_library.h"

namespace tr::cashbank::ui {

namespace {

using tr::printing::ui::handOffToPrintDesign;
using tr::printing::ui::printDesignInstalled;

void handOff(const tr::Services& services, const DocumentPrint& document, const QString& mode,
             QWidget* parent) {
    const tr::printing::ui::PrintDesignLayout layout{
        printLayoutKey(document.kind), printLayoutSelection(services.connection(), document.kind),
        kPrintLinkFields};
    handOffToPrintDesign(
        services, mode, layout, [&] { return createPrintTables(services, document); }, parent);
}

}  // namespace

bool printDocument(const tr::Services& services, const QString& kind, const QString& serial,
                   PrintLayout layout, const PrintTarget& target, QWidget* parent) {
    const std::optional<DocumentPrint> document = loadDocumentPrint(services, kind, serial);
    if (!document) return false;
    if (layout == PrintLayout::New && !target.isPdf() && printDesignInstalled(services)) {
        handOff(services, *document, tr::printing::ui::kPreviewMode, parent);
        return true;
    }
    return tr::printing::ui::printHtml(documentHtml(*document, layout),
                                       document->kindName + QLatin1Char(' ') + document->serial,
                                       target, parent);
}

bool designDocumentPrint(const tr::Services& services, const QString& kind, const QString& serial,
                         QWidget* parent) {
    if (!printDesignInstalled(services)) {
        tr::printing::ui::tellPrintDesignMissing(services);
        return false;
    }
    const std::optional<DocumentPrint> document = loadDocumentPrint(services, kind, serial);
    handOff(services, document ? *document : emptyDocumentPrint(services, kind),
            tr::printing::ui::kDesignMode, parent);
    return true;
}

}  // namespace tr::cashbank::ui
