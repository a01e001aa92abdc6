#include "cashbank/ui/printing/print_layouts.h"

#include <QAbstractTextDocumentLayout>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPaintEngine>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

#include "cashbank/ui/printing/outline_painting.h"
#include "cashbank/ui/printing/print_html.h"
#include "common/persian/amount.h"
#include "common/persian/amount_words.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"
#include "vouchers/document_kinds.h"
#include "vouchers/n_global.h"

namespace tr::cashbank::ui {

namespace {

using tr::vouchers::TreasuryObject;

using html::cell;
using html::esc;
using html::row;
using html::table;

using tr::persian::persianDigits;

QString number(qint64 value) {
    return persianDigits(QString::number(value));
}

QString treasuryLabel(const QString& kind) {
    const auto* k = tr::vouchers::findTreasuryDocumentKind(kind);
    switch (k ? k->treasuryObject : TreasuryObject::CashBox) {
        case TreasuryObject::CashBox:
            return QStringLiteral("صندوق");
        case TreasuryObject::PettyCashHolder:
            return QStringLiteral("تنخواه گردان");
        case TreasuryObject::BankAccount:
            break;
    }
    return QStringLiteral("حساب بانکي");
}

// The bank forms name their reference number after the operation.
QString referenceLabel(const QString& kind) {
    if (kind == QLatin1String("50")) return QStringLiteral("شماره واريز");
    if (kind == QLatin1String("90")) return QStringLiteral("شماره برداشت");
    if (kind == QLatin1String("60")) return QStringLiteral("شماره حواله");
    return QStringLiteral("شماره");
}

QString reference(const DocumentPrint& d) {
    if (d.part.isEmpty()) return persianDigits(d.reference);
    return persianDigits(d.reference) + QStringLiteral(" (جزء ") + persianDigits(d.part) +
           QStringLiteral(")");
}

// Money comes in (the treasury line is debited) from someone who pays, and goes out to someone
// who receives: that person signs the slip.
QString counterpartySignature(const QString& kind) {
    const auto* k = tr::vouchers::findTreasuryDocumentKind(kind);
    return k && k->treasurySide == tr::vouchers::Side::Bes ? QStringLiteral("دريافت کننده")
                                                           : QStringLiteral("پرداخت کننده");
}

QString amountWords(double amount) {
    return tr::persian::amountInWords(amount);
}

QString cancelledMark(const DocumentPrint& d, const QString& style) {
    if (!d.cancelled) return {};
    return QStringLiteral("<br/><span style=\"") + style + QStringLiteral("\">") +
           tr::vouchers::N_Global::kCancelledMark + QStringLiteral("</span>");
}

// Label-value pairs of the header, in reading order; empty values are left out.
QList<QPair<QString, QString>> headerFields(const DocumentPrint& d) {
    QList<QPair<QString, QString>> fields = {
        {treasuryLabel(d.kind),
         persianDigits(d.treasuryCode) +
             (d.treasuryName.isEmpty() ? QString() : QStringLiteral(" - ") + d.treasuryName)},
        {referenceLabel(d.kind), reference(d)},
        {QStringLiteral("شرح"), d.description},
    };
    if (!d.pettyCashName.isEmpty())
        fields.append({QStringLiteral("تنخواه گردان"), d.pettyCashName});
    if (!d.fundsName.isEmpty()) fields.append({QStringLiteral("مصارف"), d.fundsName});
    return fields;
}

QString accountCode(const DocumentPrintLine& l) {
    QStringList parts;
    for (const QString& code : {l.koll, l.moein, l.tafsily, l.tafsily2, l.projectCod})
        if (!code.isEmpty()) parts << code;
    // Codes read left to right whatever the page direction: a left-to-right embedding keeps a
    // project code's letters from splitting the numbers apart.
    return QChar(0x202A) + esc(persianDigits(parts.join(QLatin1Char('-')))) + QChar(0x202C);
}

// User texts are printed with Persian digits like everything else on the page.
QString text(const QString& value) {
    return esc(persianDigits(value));
}

const QString& kNewHead = html::kHeadStyle;
const QString& kNewCell = html::kCellStyle;
const QString kGrid = QStringLiteral(
    "cellspacing=\"0\" cellpadding=\"4\" style=\"border-collapse:collapse; margin-top:10px;\"");

QString headerCells(const QList<QPair<QString, int>>& columns, const QString& style) {
    QStringList cells;
    for (const auto& [title, width] : columns) {
        cells << QStringLiteral("<th width=\"%1%\" align=\"center\" ").arg(width) + style +
                     QStringLiteral(">") + esc(title) + QStringLiteral("</th>");
    }
    return QStringLiteral("<thead>") + row(cells) + QStringLiteral("</thead>");
}

// Title band: company at the right, the kind in the middle, serial, date and voucher at the left.
QString newTitleBand(const DocumentPrint& d) {
    QString numbers;
    const QList<QPair<QString, QString>> values = {
        {QStringLiteral("سريال"), persianDigits(d.serial)},
        {QStringLiteral("تاريخ"), persianDigits(d.date)},
        {QStringLiteral("سند"), d.voucherNo ? number(d.voucherNo) : QString()}};
    for (const auto& [label, value] : values) {
        numbers += row({cell(QStringLiteral("<b>") + esc(label) + QStringLiteral(" :</b>")),
                        cell(esc(value))});
    }
    return table(
        QStringLiteral("cellspacing=\"0\" cellpadding=\"4\""),
        row({cell(QStringLiteral("<span style=\"font-size:12pt; font-weight:bold;\">") +
                      esc(d.companyName) + QStringLiteral("</span>"),
                  QStringLiteral("width=\"32%\" valign=\"middle\"")),
             cell(QStringLiteral("<p align=\"center\"><span style=\"font-size:17pt; "
                                 "font-weight:bold;\">") +
                      esc(d.kindName) + QStringLiteral("</span>") +
                      cancelledMark(d, QStringLiteral("font-size:11pt; color:#b00020; "
                                                      "font-weight:bold;")) +
                      QStringLiteral("</p>"),
                  QStringLiteral("width=\"36%\" valign=\"middle\"")),
             cell(QStringLiteral("<table align=\"left\" cellspacing=\"0\" cellpadding=\"2\">") +
                      numbers + QStringLiteral("</table>"),
                  QStringLiteral("width=\"32%\" valign=\"middle\""))}));
}

QString newLayout(const DocumentPrint& d) {
    QString h = QStringLiteral("<body>") + newTitleBand(d);

    // Header values, two pairs a row.
    QString fields;
    const auto pairs = headerFields(d);
    for (int i = 0; i < pairs.size(); i += 2) {
        QStringList cells;
        for (int j = i; j < i + 2; ++j) {
            const bool filled = j < pairs.size();
            cells << cell(filled ? esc(pairs[j].first) : QString(),
                          QStringLiteral("width=\"13%\" ") + (filled ? kNewHead : QString()))
                  << cell(filled ? text(pairs[j].second) : QString(),
                          QStringLiteral("width=\"37%\" ") + (filled ? kNewCell : QString()));
        }
        fields += row(cells);
    }
    h += table(QStringLiteral("cellspacing=\"0\" cellpadding=\"5\" "
                              "style=\"border-collapse:collapse; margin-top:6px;\""),
               fields);

    // Lines, their total and the amount in words.
    QString lines = headerCells({{QStringLiteral("رديف"), 5},
                                 {QStringLiteral("کل"), 6},
                                 {QStringLiteral("معين"), 7},
                                 {QStringLiteral("تفصيلي"), 8},
                                 {QStringLiteral("تفصيلي2"), 8},
                                 {QStringLiteral("پروژه"), 8},
                                 {QStringLiteral("نام حساب"), 19},
                                 {QStringLiteral("شرح"), 25},
                                 {QStringLiteral("مبلغ (ريال)"), 14}},
                                kNewHead);
    const QString centred = QStringLiteral("align=\"center\" ") + kNewCell;
    const QString amount = QStringLiteral("align=\"right\" ") + kNewCell;
    for (const DocumentPrintLine& l : d.lines) {
        lines += row({cell(number(l.raj), centred), cell(text(l.koll), centred),
                      cell(text(l.moein), centred), cell(text(l.tafsily), centred),
                      cell(text(l.tafsily2), centred), cell(text(l.projectCod), centred),
                      cell(esc(l.lastNam), kNewCell), cell(text(l.des), kNewCell),
                      cell(esc(tr::persian::printAmount(l.amount)), amount)});
    }
    lines +=
        row({cell(QStringLiteral("جمع"), QStringLiteral("colspan=\"8\" ") + kNewHead),
             cell(esc(tr::persian::printAmount(d.amount)), QStringLiteral("align=\"right\" ") + kNewHead)});
    lines += row({cell(QStringLiteral("<b>مبلغ به حروف :</b> ") + esc(amountWords(d.amount)),
                       QStringLiteral("colspan=\"9\" ") + kNewCell)});
    h += table(kGrid, lines);

    // Signature boxes.
    QStringList signers;
    for (const QString& signer : {QStringLiteral("تنظيم کننده"), QStringLiteral("تاييد کننده"),
                                  counterpartySignature(d.kind)}) {
        signers << cell(QStringLiteral("<p align=\"center\"><b>") + esc(signer) +
                            QStringLiteral("</b></p><p align=\"center\" style=\"margin-top:40px; "
                                           "color:#777777;\">امضاء</p>"),
                        QStringLiteral("width=\"33%\" valign=\"top\" ") + kNewCell);
    }
    h += table(QStringLiteral("cellspacing=\"8\" cellpadding=\"6\" style=\"margin-top:14px;\""),
               row(signers));
    h += html::userLine(d.userFullName) + QStringLiteral("</body>");
    return h;
}

const QString kOldCell = QStringLiteral("style=\"border:1px solid #000000;\"");
const QString kOldHead = QStringLiteral(
    "style=\"border:1px solid #000000; font-weight:bold; background-color:#eeeeee;\"");

QString oldLayout(const DocumentPrint& d) {
    QString h = QStringLiteral("<body>");
    h += QStringLiteral(
             "<p align=\"center\" style=\"font-size:13pt; font-weight:bold; "
             "margin-bottom:0px;\">") +
         esc(d.companyName) +
         QStringLiteral(
             "</p><p align=\"center\" style=\"font-size:15pt; font-weight:bold; "
             "margin-top:4px;\">") +
         esc(d.kindName) + cancelledMark(d, QStringLiteral("font-size:11pt;")) +
         QStringLiteral("</p>");

    // Every header value in one bordered grid, three pairs a row.
    QList<QPair<QString, QString>> pairs = {
        {QStringLiteral("سريال"), persianDigits(d.serial)},
        {QStringLiteral("تاريخ"), persianDigits(d.date)},
        {QStringLiteral("سند"), d.voucherNo ? number(d.voucherNo) : QString()}};
    pairs += headerFields(d);
    pairs.append({QStringLiteral("كاربر"), d.userFullName});
    QString fields;
    for (int i = 0; i < pairs.size(); i += 3) {
        QStringList cells;
        for (int j = i; j < i + 3; ++j) {
            cells << cell(j < pairs.size() ? QStringLiteral("<b>") + esc(pairs[j].first) +
                                                 QStringLiteral(" :</b> ") + text(pairs[j].second)
                                           : QString(),
                          QStringLiteral("width=\"33%\" ") + kOldCell);
        }
        fields += row(cells);
    }
    h += table(QStringLiteral("cellspacing=\"0\" cellpadding=\"4\" "
                              "style=\"border-collapse:collapse;\""),
               fields);

    QString lines = headerCells({{QStringLiteral("رديف"), 6},
                                 {QStringLiteral("کد حساب"), 24},
                                 {QStringLiteral("نام حساب"), 22},
                                 {QStringLiteral("شرح"), 32},
                                 {QStringLiteral("مبلغ"), 16}},
                                kOldHead);
    for (const DocumentPrintLine& l : d.lines) {
        lines += row(
            {cell(number(l.raj), QStringLiteral("align=\"center\" ") + kOldCell),
             cell(accountCode(l), QStringLiteral("align=\"center\" ") + kOldCell),
             cell(esc(l.lastNam), kOldCell), cell(text(l.des), kOldCell),
             cell(esc(tr::persian::printAmount(l.amount)), QStringLiteral("align=\"right\" ") + kOldCell)});
    }
    lines +=
        row({cell(QStringLiteral("<b>جمع :</b> ") + esc(amountWords(d.amount)),
                  QStringLiteral("colspan=\"4\" ") + kOldHead),
             cell(esc(tr::persian::printAmount(d.amount)), QStringLiteral("align=\"right\" ") + kOldHead)});
    h += table(kGrid, lines);

    QStringList signers;
    for (const QString& signer :
         {QStringLiteral("امضاء تنظيم کننده"), QStringLiteral("امضاء تاييد کننده"),
          QStringLiteral("امضاء ") + counterpartySignature(d.kind)}) {
        signers << cell(QStringLiteral("<p align=\"center\">") + esc(signer) +
                            QStringLiteral("</p><p align=\"center\" style=\"margin-top:30px;\">"
                                           "..............................</p>"),
                        QStringLiteral("width=\"33%\""));
    }
    h += table(QStringLiteral("cellspacing=\"0\" cellpadding=\"4\" style=\"margin-top:24px;\""),
               row(signers));
    return h + QStringLiteral("</body>");
}

}  // namespace

QString documentHtml(const DocumentPrint& document, PrintLayout layout) {
    return QStringLiteral("<html>") +
           (layout == PrintLayout::New ? newLayout(document) : oldLayout(document)) +
           QStringLiteral("</html>");
}

QString voucherHtml(const VoucherPrint& v) {
    QString h = QStringLiteral("<html><body>");
    h += html::titleBand(v.companyName, text(v.title), 15, QStringLiteral("تاريخ"), text(v.date));

    QString lines = headerCells({{QStringLiteral("رديف"), 5},
                                 {QStringLiteral("کل"), 5},
                                 {QStringLiteral("معين"), 6},
                                 {QStringLiteral("تفصيلي"), 7},
                                 {QStringLiteral("تفصيلي2"), 9},
                                 {QStringLiteral("پروژه"), 7},
                                 {QStringLiteral("نام حساب"), 16},
                                 {QStringLiteral("شرح"), 21},
                                 {QStringLiteral("بدهکار"), 12},
                                 {QStringLiteral("بستانکار"), 12}},
                                kNewHead);
    const QString centred = QStringLiteral("align=\"center\" ") + kNewCell;
    const QString amount = QStringLiteral("align=\"right\" ") + kNewCell;
    const auto money = [](double value) {
        return value != 0 ? esc(tr::persian::printAmount(value)) : QString();
    };
    for (const VoucherPrintLine& l : v.lines) {
        lines += row({cell(number(l.raj), centred), cell(text(l.koll), centred),
                      cell(text(l.moein), centred), cell(text(l.tafsily), centred),
                      cell(text(l.tafsily2), centred), cell(text(l.projectCod), centred),
                      cell(esc(l.lastNam), kNewCell), cell(text(l.des), kNewCell),
                      cell(money(l.bed), amount), cell(money(l.bes), amount)});
    }
    const QString total = QStringLiteral("align=\"right\" ") + kNewHead;
    lines += row({cell(QStringLiteral("جمع"), QStringLiteral("colspan=\"8\" ") + kNewHead),
                  cell(esc(tr::persian::printAmount(v.totalBed())), total),
                  cell(esc(tr::persian::printAmount(v.totalBes())), total)});
    h += table(kGrid, lines);

    QStringList signers;
    for (const QString& signer : {QStringLiteral("تنظيم کننده"), QStringLiteral("تاييد کننده"),
                                  QStringLiteral("مدير مالي")}) {
        signers << cell(QStringLiteral("<p align=\"center\"><b>") + esc(signer) +
                            QStringLiteral("</b></p><p style=\"margin-top:40px;\"></p>"),
                        QStringLiteral("width=\"33%\" valign=\"top\" ") + kNewCell);
    }
    h += table(QStringLiteral("cellspacing=\"8\" cellpadding=\"6\" style=\"margin-top:14px;\""),
               row(signers));
    h += html::userLine(v.userFullName) + QStringLiteral("</body></html>");
    return h;
}

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
void preparePrinter(QPrinter& printer, const QString& title,
                    QPageLayout::Orientation orientation) {
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

}  // namespace tr::cashbank::ui
