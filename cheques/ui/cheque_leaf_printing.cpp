#include "cheques/ui/cheque_leaf_printing.h"

#include <QFile>
#include <QFileInfo>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include "cheques/ui/cheque_leaf_layouts.h"
#include "common/dialog/message_dialog.h"
#include "host/sdk/modal_runner.h"
#include "printing/print_layout.h"
#include "printing/ui/outline_painting.h"
#include "printing/ui/print_design_handoff.h"
#include "printing/ui/print_design_library.h"
#include "vouchers/document_kinds.h"

namespace tr::cheques::ui {

namespace {

const QString& kind() {
    return tr::vouchers::issuedChequeKind().code;
}

void prepare(QPrinter& printer, const QString& title) {
    printer.setDocName(title);
    printer.setFullPage(true);
    printer.setPageLayout(chequeLeafPage());
}

void paintLeaves(QPainter& painter, QPrinter& printer, const std::vector<ChequeLeaf>& leaves,
                 const ChequeLeafOffsets& offsets) {
    for (size_t i = 0; i < leaves.size(); ++i) {
        if (i > 0) printer.newPage();
        paintChequeLeaf(painter, leaves[i], offsets);
    }
}

bool printToPdf(const std::vector<ChequeLeaf>& leaves, const ChequeLeafOffsets& offsets,
                const QString& title, const QString& path) {
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, title);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    QFile::remove(path);
    {
        QPainter painter(&printer);
        if (!painter.isActive()) return false;
        paintLeaves(painter, printer, leaves, offsets);
    }
    return QFileInfo(path).size() > 0;
}

void showPreview(const std::vector<ChequeLeaf>& leaves, const ChequeLeafOffsets& offsets,
                 const QString& title, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, title);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setWindowTitle(title);
    preview.setObjectName(QStringLiteral("ChequeLeafPreview"));
    preview.setLayoutDirection(Qt::RightToLeft);
    QObject::connect(
        &preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* target) {
            // The preview records pages as pictures, which replay right-to-left text out of order.
            if (target->paintEngine() && target->paintEngine()->type() == QPaintEngine::Picture) {
                tr::printing::ui::paintWithOutlines(*target, [&](QPainter& painter) {
                    paintLeaves(painter, *target, leaves, offsets);
                });
                return;
            }
            QPainter painter(target);
            if (painter.isActive()) paintLeaves(painter, *target, leaves, offsets);
        });
    tr::sdk::ModalRunner::current().exec(preview);
}

}  // namespace

bool printChequeLeaves(const tr::Services& services, const QString& serial,
                       const tr::printing::ui::PrintTarget& target, QWidget* parent,
                       const ChequeLeafOffsets& offsets) {
    const std::optional<ChequeDocumentPrint> payment =
        loadChequeDocumentPrint(services, kind(), serial);
    if (!payment) return false;
    const std::vector<ChequeLeaf> leaves = chequeLeaves(services.connection(), *payment);
    if (leaves.empty()) {
        tr::dialog::Messages(services.dialog)
            .show(QStringLiteral("در اين سند چك صادره اي براي چاپ وجود ندارد."),
                  QStringLiteral("1WR"));
        return false;
    }
    const QString title = QStringLiteral("چاپ چك ") + payment->serial;
    if (target.isPdf()) return printToPdf(leaves, offsets, title, target.pdfPath);
    showPreview(leaves, offsets, title, parent);
    return true;
}

bool designChequeLeaves(const tr::Services& services, const QString& serial, QWidget* parent) {
    if (!tr::printing::ui::printDesignInstalled(services)) {
        tr::printing::ui::tellPrintDesignMissing(services);
        return false;
    }
    const std::optional<ChequeDocumentPrint> saved =
        loadChequeDocumentPrint(services, kind(), serial);
    const ChequeDocumentPrint payment = saved ? *saved : emptyChequeDocumentPrint(services, kind());
    const std::vector<ChequeLeaf> leaves = chequeLeaves(services.connection(), payment);
    const tr::printing::ui::PrintDesignLayout layout{
        kChequeLeafLayoutKey, tr::printing::printLayoutSelection(services.connection(), kind()),
        kChequePrintLinkFields};
    tr::printing::ui::handOffToPrintDesign(
        services, tr::printing::ui::kDesignMode, layout,
        [&] { return createChequeLeafPrintTables(services, payment, leaves); }, parent);
    return true;
}

}  // namespace tr::cheques::ui
