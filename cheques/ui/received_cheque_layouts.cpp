#include "cheques/ui/received_cheque_layouts.h"

#include "printing/ui/print_html.h"

namespace tr::cheques::ui {

namespace {

using namespace tr::printing::ui::html;

const QString kOpeningMark = QStringLiteral("(چک اول دوره)");
// The one who hands the cheques over signs the slip, as the payer of a cash receipt does.
const QStringList kSigners = {QStringLiteral("تنظيم کننده"), QStringLiteral("تاييد کننده"),
                              QStringLiteral("پرداخت کننده")};

QString mark(const ReceivedChequePrint& d, const QString& style) {
    if (!d.opening) return {};
    return QStringLiteral("<br/><span style=\"") + style + QStringLiteral("\">") +
           esc(kOpeningMark) + QStringLiteral("</span>");
}

QString bank(const ReceivedChequePrintCheque& c) {
    return c.branchName.isEmpty() ? c.bankName : c.bankName + QStringLiteral(" - ") + c.branchName;
}

// A heading over a grid.
QString caption(const QString& title) {
    return QStringLiteral(
               "<p align=\"right\" style=\"font-weight:bold; margin-top:10px; "
               "margin-bottom:0px;\">") +
           esc(title) + QStringLiteral("</p>");
}

QString code(const ReceivedChequePrintLine& l) {
    return accountCode({l.koll, l.moein, l.tafsily, l.tafsily2, l.projectCod});
}

// The cheques, then their total and the total in words; `head` and `plain` style the cells.
QString chequeGrid(const ReceivedChequePrint& d, const QString& head, const QString& plain,
                   bool wordsBesideTotal) {
    QString rows = headerCells({{QStringLiteral("رديف"), 5},
                                {QStringLiteral("شماره چک"), 12},
                                {QStringLiteral("سري"), 8},
                                {QStringLiteral("بانک"), 23},
                                {QStringLiteral("تاريخ سررسيد"), 12},
                                {QStringLiteral("در وجه"), 22},
                                {QStringLiteral("مبلغ (ريال)"), 18}},
                               head);
    const QString centred = QStringLiteral("align=\"center\" ") + plain;
    const QString amount = QStringLiteral("align=\"right\" ") + plain;
    for (const ReceivedChequePrintCheque& c : d.cheques) {
        rows += row({cell(number(c.raj), centred), cell(text(c.number), centred),
                     cell(text(c.series), centred), cell(text(bank(c)), plain),
                     cell(text(c.dueDate), centred), cell(text(c.payee), plain),
                     cell(money(c.amount), amount)});
    }
    const QString total = QStringLiteral("align=\"right\" ") + head;
    if (wordsBesideTotal) {
        rows += row({cell(QStringLiteral("<b>جمع :</b> ") + esc(d.totalInWords()),
                          QStringLiteral("colspan=\"6\" ") + head),
                     cell(money(d.total()), total)});
    } else {
        rows += row({cell(QStringLiteral("جمع"), QStringLiteral("colspan=\"6\" ") + head),
                     cell(money(d.total()), total)});
        rows += row({cell(QStringLiteral("<b>مبلغ به حروف :</b> ") + esc(d.totalInWords()),
                          QStringLiteral("colspan=\"7\" ") + plain)});
    }
    return table(kGrid, rows);
}

// The counterparty lines: which cheque, the account credited, its name, description and amount.
QString lineGrid(const ReceivedChequePrint& d, const QString& head, const QString& plain) {
    QString rows = headerCells({{QStringLiteral("رديف"), 5},
                                {QStringLiteral("شماره چک"), 11},
                                {QStringLiteral("کد حساب"), 20},
                                {QStringLiteral("نام حساب"), 22},
                                {QStringLiteral("شرح"), 24},
                                {QStringLiteral("مبلغ (ريال)"), 18}},
                               head);
    const QString centred = QStringLiteral("align=\"center\" ") + plain;
    double sum = 0;
    for (const ReceivedChequePrintLine& l : d.lines) {
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
QList<QPair<QString, QString>> numbers(const ReceivedChequePrint& d) {
    QList<QPair<QString, QString>> values = {{QStringLiteral("سريال"), text(d.serial)},
                                             {QStringLiteral("تاريخ"), text(d.date)}};
    if (!d.opening) values.append({QStringLiteral("سند"), number(d.voucherNo)});
    return values;
}

QString newLayout(const ReceivedChequePrint& d) {
    QString h = QStringLiteral("<body>") +
                documentTitleBand(d.companyName, d.kindName,
                                  mark(d, QStringLiteral("font-size:11pt; color:#1f4e8c; "
                                                         "font-weight:bold;")),
                                  numbers(d));
    h += caption(QStringLiteral("چک ها")) + chequeGrid(d, kHeadStyle, kCellStyle, false);
    h += caption(QStringLiteral("طرف حساب / بابت")) + lineGrid(d, kHeadStyle, kCellStyle);
    h += signatureBoxes(kSigners, QStringLiteral("امضاء"));
    return h + userLine(d.userFullName) + QStringLiteral("</body>");
}

QString oldLayout(const ReceivedChequePrint& d) {
    QString h =
        QStringLiteral("<body>") +
        oldDocumentTitle(d.companyName, d.kindName, mark(d, QStringLiteral("font-size:11pt;")));
    QList<QPair<QString, QString>> pairs = numbers(d);
    pairs.append({QStringLiteral("كاربر"), text(d.userFullName)});
    h += oldFieldGrid(pairs, 4);
    h += chequeGrid(d, kOldHeadStyle, kOldCellStyle, true);
    h += lineGrid(d, kOldHeadStyle, kOldCellStyle);
    QStringList signers;
    for (const QString& signer : kSigners) signers << QStringLiteral("امضاء ") + signer;
    return h + signatureLines(signers) + QStringLiteral("</body>");
}

}  // namespace

QString receivedChequeHtml(const ReceivedChequePrint& document, tr::printing::PrintLayout layout) {
    return QStringLiteral("<html>") +
           (layout == tr::printing::PrintLayout::New ? newLayout(document) : oldLayout(document)) +
           QStringLiteral("</html>");
}

}  // namespace tr::cheques::ui
