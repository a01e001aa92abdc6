#include "cashbank/ui/printing/document_printing.h"

#include "cashbank/ui/printing/print_design_library.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"

namespace tr::cashbank::ui {

namespace {

const QString kNoDesigner = QStringLiteral("برنامه طراحي فرم چاپ (PrintDesign) نصب نشده است.");

QString hostFolder(const tr::Services& services) {
    return services.global ? services.global->hostFolder : QString();
}

// The library reads the two tables while it runs; they are gone as soon as it returns.
void handOff(const tr::Services& services, const DocumentPrint& document, const QString& mode,
             QWidget* parent) {
    const PrintTables tables = createPrintTables(services, document);
    tr::db::ScopedTempTable header(*services.database, tables.header);
    tr::db::ScopedTempTable lines(*services.database, tables.lines);
    const PrintDesignCall call{mode,
                               printLayoutKey(document.kind),
                               printLayoutSelection(services.connection(), document.kind),
                               tables.header,
                               tables.lines,
                               kPrintLinkFields};
    callPrintDesign(hostFolder(services), call, services.database, parent);
    header.drop();
    lines.drop();
}

bool output(const QString& html, const QString& title, const PrintTarget& target, QWidget* parent,
            const QString& key = {}) {
    return target.isPdf() ? printToPdf(html, title, target.pdfPath)
                          : showPrintPreview(html, title, parent, key);
}

}  // namespace

bool printDocument(const tr::Services& services, const QString& kind, const QString& serial,
                   PrintLayout layout, const PrintTarget& target, QWidget* parent) {
    const std::optional<DocumentPrint> document = loadDocumentPrint(services, kind, serial);
    if (!document) return false;
    if (layout == PrintLayout::New && !target.isPdf() &&
        printDesignAvailable(hostFolder(services))) {
        handOff(services, *document, kPreviewMode, parent);
        return true;
    }
    return output(documentHtml(*document, layout),
                  document->kindName + QLatin1Char(' ') + document->serial, target, parent);
}

bool designDocumentPrint(const tr::Services& services, const QString& kind, const QString& serial,
                         QWidget* parent) {
    if (!printDesignAvailable(hostFolder(services))) {
        tr::dialog::Messages(services.dialog).show(kNoDesigner, QStringLiteral("1WR"));
        return false;
    }
    const std::optional<DocumentPrint> document = loadDocumentPrint(services, kind, serial);
    handOff(services, document ? *document : emptyDocumentPrint(services, kind), kDesignMode,
            parent);
    return true;
}

bool printVoucher(const tr::Services& services, const QString& kind, const QString& serial,
                  const PrintTarget& target, QWidget* parent) {
    const std::optional<VoucherPrint> voucher = loadVoucherPrint(services, kind, serial);
    if (!voucher) return false;
    return output(voucherHtml(*voucher), voucher->title, target, parent, voucher->reportKey);
}

}  // namespace tr::cashbank::ui
