#pragma once
// The built-in print layouts of a cash or bank document ("جديد" and "قديم") and of its voucher:
// right-to-left rich text laid out on the printer's page, to a PDF file or to a print preview
// whose modal show goes through tr::sdk::ModalRunner.
#include <QPageLayout>
#include <QString>
#include <memory>

#include "cashbank/printing/document_print.h"
#include "cashbank/printing/print_layout.h"

class QPrinter;
class QTextDocument;
class QWidget;

namespace tr::cashbank::ui {

using tr::cashbank::PrintLayout;

QString documentHtml(const DocumentPrint& document, PrintLayout layout);
QString voucherHtml(const VoucherPrint& voucher);

// A document ready to lay out on a printer (font, direction, the HTML).
std::unique_ptr<QTextDocument> printableDocument(const QString& html);
// Lays the document out on the printer's page and prints every page (in the print preview, with
// glyphs as outlines so the preview shows what paper and PDF show).
void renderTo(QTextDocument& document, QPrinter& printer);

// Both answer false when nothing was printed (file not writable, preview closed unseen is fine).
bool printToPdf(const QString& html, const QString& title, const QString& pdfPath,
                QPageLayout::Orientation orientation = QPageLayout::Portrait);
// `key` names the preview window (the report key of a voucher print).
bool showPrintPreview(const QString& html, const QString& title, QWidget* parent,
                      const QString& key = {},
                      QPageLayout::Orientation orientation = QPageLayout::Portrait);

}  // namespace tr::cashbank::ui
