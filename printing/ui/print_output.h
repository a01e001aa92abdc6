#pragma once
// Where a built-in print goes: right-to-left rich text in the Persian font, laid out on an A4
// printer page, written to a PDF file or shown in a print preview whose modal show goes through
// tr::sdk::ModalRunner.
#include <QPageLayout>
#include <QString>
#include <memory>

class QPrinter;
class QTextDocument;
class QWidget;

namespace tr::printing::ui {

// Where a print goes: the print preview (empty path) or a PDF file.
struct PrintTarget {
    QString pdfPath;

    static PrintTarget preview() { return {}; }
    static PrintTarget pdf(const QString& path) { return {path}; }
    bool isPdf() const { return !pdfPath.isEmpty(); }
};

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
// A portrait print to `target`: printToPdf or showPrintPreview.
bool printHtml(const QString& html, const QString& title, const PrintTarget& target,
               QWidget* parent, const QString& key = {});

}  // namespace tr::printing::ui
