#include "cheques/ui/cheque_document_layouts.h"

#include "printing/ui/print_html.h"

namespace tr::cheques::ui {

namespace {

using namespace tr::printing::ui::html;

const QString kOpeningMark = QStringLiteral("(چک اول دوره)");

// The third signer is the one the cheques change hands with: who hands them over on a receipt
// (as the payer of a cash receipt), who takes them on a payment.
QStringList signers(const ChequeDocumentPrint& d) {
    return {QStringLiteral("تنظيم کننده"), QStringLiteral("تاييد کننده"),
            d.payment() ? QStringLiteral("دريافت کننده") : QStringLiteral("پرداخت کننده")};
}

QString mark(const ChequeDocumentPrint& d, const QString& style) {
    if (!d.opening) return {};
    return QStringLiteral("<br/><span style=\"") + style + QStringLiteral("\">") +
           esc(kOpeningMark) + QStringLiteral("</span>");
}

// The bank and branch; our own leaf also names the account it is drawn on.
QString bank(const ChequePrintCheque& c) {
    QString name =
        c.branchName.isEmpty() ? c.bankName : c.bankName + QStringLiteral(" - ") + c.branchName;
    QString html = text(name);
    if (c.ownLeaf() && !c.accountNumber.isEmpty())
        html += QStringLiteral("<br/><span style=\"font-size:8pt;\">") +
                esc(QStringLiteral("حساب ")) + text(c.accountNumber) + QStringLiteral("</span>");
    return html;
}

// A heading over a grid.
QString caption(const QString& title) {
    return QStringLiteral(
               "<p align=\"right\" style=\"font-weight:bold; margin-top:10px; "
               "margin-bottom:0px;\">") +
           esc(title) + QStringLiteral("</p>");
}

QString code(const ChequePrintLine& l) {
    return accountCode({l.koll, l.moein, l.tafsily, l.tafsily2, l.projectCod});
}

// A payment's grid tells our own leaves from the received cheques it passes on.
QList<QPair<QString, int>> chequeColumns(const ChequeDocumentPrint& d) {
    if (d.payment()) {
        return {{QStringLiteral("رديف"), 5},      {QStringLiteral("نوع"), 9},
                {QStringLiteral("شماره چک"), 11}, {QStringLiteral("سري"), 6},
                {QStringLiteral("بانک"), 22},     {QStringLiteral("تاريخ سررسيد"), 11},
                {QStringLiteral("در وجه"), 18},   {QStringLiteral("مبلغ (ريال)"), 18}};
    }
    return {{QStringLiteral("رديف"), 5},          {QStringLiteral("شماره چک"), 12},
            {QStringLiteral("سري"), 8},           {QStringLiteral("بانک"), 23},
            {QStringLiteral("تاريخ سررسيد"), 12}, {QStringLiteral("در وجه"), 22},
            {QStringLiteral("مبلغ (ريال)"), 18}};
}

// The cheques, then their total and the total in words; `head` and `plain` style the cells.
QString chequeGrid(const ChequeDocumentPrint& d, const QString& head, const QString& plain,
                   bool wordsBesideTotal) {
    const QList<QPair<QString, int>> columns = chequeColumns(d);
    QString rows = headerCells(columns, head);
    const QString centred = QStringLiteral("align=\"center\" ") + plain;
    const QString amount = QStringLiteral("align=\"right\" ") + plain;
    for (const ChequePrintCheque& c : d.cheques) {
        QStringList cells = {cell(number(c.raj), centred)};
        if (d.payment())
            cells << cell(esc(c.ownLeaf() ? QStringLiteral("صدور چك") : QStringLiteral("خرج چك")),
                          centred);
        cells << cell(text(c.number), centred) << cell(text(c.series), centred)
              << cell(bank(c), plain) << cell(text(c.dueDate), centred)
              << cell(text(c.payee), plain) << cell(money(c.amount), amount);
        rows += row(cells);
    }
    const QString span = QStringLiteral("colspan=\"%1\" ").arg(columns.size() - 1);
    const QString total = QStringLiteral("align=\"right\" ") + head;
    if (wordsBesideTotal) {
        rows += row({cell(QStringLiteral("<b>جمع :</b> ") + esc(d.totalInWords()), span + head),
                     cell(money(d.total()), total)});
    } else {
        rows += row({cell(QStringLiteral("جمع"), span + head), cell(money(d.total()), total)});
        rows += row({cell(QStringLiteral("<b>مبلغ به حروف :</b> ") + esc(d.totalInWords()),
                          QStringLiteral("colspan=\"%1\" ").arg(columns.size()) + plain)});
    }
    return table(kGrid, rows);
}

// The counterparty lines: which cheque, the account, its name, description and amount.
QString lineGrid(const ChequeDocumentPrint& d, const QString& head, const QString& plain) {
    QString rows = headerCells({{QStringLiteral("رديف"), 5},
                                {QStringLiteral("شماره چک"), 11},
                                {QStringLiteral("کد حساب"), 20},
                                {QStringLiteral("نام حساب"), 22},
                                {QStringLiteral("شرح"), 24},
                                {QStringLiteral("مبلغ (ريال)"), 18}},
                               head);
    const QString centred = QStringLiteral("align=\"center\" ") + plain;
    double sum = 0;
    for (const ChequePrintLine& l : d.lines) {
        rows +=
            row({cell(number(l.raj), centred), cell(text(l.chequeNumber), centred),
                 cell(code(l), centred), cell(esc(l.accountName), plain), cell(text(l.des), plain),
                 cell(money(l.amount), QStringLiteral("align=\"right\" ") + plain)});
        sum += l.amount;
    }
    rows += row({cell(QStringLiteral("جمع"), QStringLiteral("colspan=\"5\" ") + head),
                 cell(money(sum), QStringLiteral("align=\"right\" ") + head)});
    return table(kGrid, rows);
}

// An opening-cheque document has no voucher, so no voucher number to leave blank.
QList<QPair<QString, QString>> numbers(const ChequeDocumentPrint& d) {
    QList<QPair<QString, QString>> values = {{QStringLiteral("سريال"), text(d.serial)},
                                             {QStringLiteral("تاريخ"), text(d.date)}};
    if (!d.opening) values.append({QStringLiteral("سند"), number(d.voucherNo)});
    return values;
}

QString newLayout(const ChequeDocumentPrint& d) {
    QString h = QStringLiteral("<body>") +
                documentTitleBand(d.companyName, d.kindName,
                                  mark(d, QStringLiteral("font-size:11pt; color:#1f4e8c; "
                                                         "font-weight:bold;")),
                                  numbers(d));
    h += caption(QStringLiteral("چک ها")) + chequeGrid(d, kHeadStyle, kCellStyle, false);
    h += caption(QStringLiteral("طرف حساب / بابت")) + lineGrid(d, kHeadStyle, kCellStyle);
    h += signatureBoxes(signers(d), QStringLiteral("امضاء"));
    return h + userLine(d.userFullName) + QStringLiteral("</body>");
}

QString oldLayout(const ChequeDocumentPrint& d) {
    QString h =
        QStringLiteral("<body>") +
        oldDocumentTitle(d.companyName, d.kindName, mark(d, QStringLiteral("font-size:11pt;")));
    QList<QPair<QString, QString>> pairs = numbers(d);
    pairs.append({QStringLiteral("كاربر"), text(d.userFullName)});
    h += oldFieldGrid(pairs, 4);
    h += chequeGrid(d, kOldHeadStyle, kOldCellStyle, true);
    h += lineGrid(d, kOldHeadStyle, kOldCellStyle);
    QStringList lines;
    for (const QString& signer : signers(d)) lines << QStringLiteral("امضاء ") + signer;
    return h + signatureLines(lines) + QStringLiteral("</body>");
}

}  // namespace

QString chequeDocumentHtml(const ChequeDocumentPrint& document, tr::printing::PrintLayout layout) {
    return QStringLiteral("<html>") +
           (layout == tr::printing::PrintLayout::New ? newLayout(document) : oldLayout(document)) +
           QStringLiteral("</html>");
}

}  // namespace tr::cheques::ui
