#include "printing/ui/print_output.h"

#include <QAbstractTextDocumentLayout>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QPageSize>
#include <QPaintEngine>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"
#include "printing/ui/outline_painting.h"

namespace tr::printing::ui {

std::unique_ptr<QTextDocument> printableDocument(const QString& html) {
    auto document = std::make_unique<QTextDocument>();
    // Points, not pixels: the page is laid out at the printer's resolution.
    QFont font = tr::sdk::persianFont();
    font.setPointSizeF(9.5);
    document->setDefaultFont(font);
    QTextOption option = document->defaultTextOption();
    option.setTextDirection(Qt::RightToLeft);
    option.setAlignment(Qt::AlignRight);
    document->setDefaultTextOption(option);
    document->setDocumentMargin(0);
    document->setHtml(html);
    // Blocks take their direction from their first letter otherwise, and a line that starts
    // with a number would run left to right.
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format;
        format.setLayoutDirection(Qt::RightToLeft);
        QTextCursor(block).mergeBlockFormat(format);
    }
    return document;
}

void renderTo(QTextDocument& document, QPrinter& printer) {
    // Laid out on the printer itself, the page size is the printable area and nothing is scaled.
    document.documentLayout()->setPaintDevice(&printer);
    document.setPageSize(printer.pageRect(QPrinter::DevicePixel).size());
    // The preview's printer records pages as pictures, whose text replays in the wrong order.
    if (printer.paintEngine() && printer.paintEngine()->type() == QPaintEngine::Picture)
        paintAsOutlines(document, printer);
    else
        document.print(&printer);
}

namespace {

// The layouts measure borders and padding in pixels; at screen resolution they keep their size
// on paper, and text and rules stay vector in a PDF whatever the resolution.
void preparePrinter(QPrinter& printer, const QString& title, QPageLayout::Orientation orientation) {
    printer.setDocName(title);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(orientation);
    printer.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
}

}  // namespace

bool printToPdf(const QString& html, const QString& title, const QString& pdfPath,
                QPageLayout::Orientation orientation) {
    QPrinter printer(QPrinter::ScreenResolution);
    preparePrinter(printer, title, orientation);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdfPath);
    QFile::remove(pdfPath);
    auto document = printableDocument(html);
    renderTo(*document, printer);
    return QFileInfo(pdfPath).size() > 0;
}

bool showPrintPreview(const QString& html, const QString& title, QWidget* parent,
                      const QString& key, QPageLayout::Orientation orientation) {
    QPrinter printer(QPrinter::ScreenResolution);
    preparePrinter(printer, title, orientation);
    auto document = printableDocument(html);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setWindowTitle(title);
    preview.setObjectName(key.isEmpty() ? QStringLiteral("PrintPreview") : key);
    preview.setLayoutDirection(Qt::RightToLeft);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&document](QPrinter* target) { renderTo(*document, *target); });
    tr::sdk::ModalRunner::current().exec(preview);
    return true;
}

bool printHtml(const QString& html, const QString& title, const PrintTarget& target,
               QWidget* parent, const QString& key) {
    return target.isPdf() ? printToPdf(html, title, target.pdfPath)
                          : showPrintPreview(html, title, parent, key);
}

}  // namespace tr::printing::ui
