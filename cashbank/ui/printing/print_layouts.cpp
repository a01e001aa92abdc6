#include "cashbank/ui/printing/print_layouts.h"

#include "common/persian/amount_words.h"
#include "printing/ui/print_html.h"
#include "vouchers/document_kinds.h"
#include "vouchers/n_global.h"

namespace tr::cashbank::ui {

namespace {

using tr::vouchers::TreasuryObject;

using namespace tr::printing::ui::html;
using tr::persian::persianDigits;

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

QString newLayout(const DocumentPrint& d) {
    QString h =
        QStringLiteral("<body>") +
        documentTitleBand(d.companyName, d.kindName,
                          cancelledMark(d, QStringLiteral("font-size:11pt; color:#b00020; "
                                                          "font-weight:bold;")),
                          {{QStringLiteral("سريال"), text(d.serial)},
                           {QStringLiteral("تاريخ"), text(d.date)},
                           {QStringLiteral("سند"), d.voucherNo ? number(d.voucherNo) : QString()}});

    // Header values, two pairs a row.
    QString fields;
    const auto pairs = headerFields(d);
    for (int i = 0; i < pairs.size(); i += 2) {
        QStringList cells;
        for (int j = i; j < i + 2; ++j) {
            const bool filled = j < pairs.size();
            cells << cell(filled ? esc(pairs[j].first) : QString(),
                          QStringLiteral("width=\"13%\" ") + (filled ? kHeadStyle : QString()))
                  << cell(filled ? text(pairs[j].second) : QString(),
                          QStringLiteral("width=\"37%\" ") + (filled ? kCellStyle : QString()));
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
                                kHeadStyle);
    const QString centred = QStringLiteral("align=\"center\" ") + kCellStyle;
    const QString amount = QStringLiteral("align=\"right\" ") + kCellStyle;
    for (const DocumentPrintLine& l : d.lines) {
        lines += row({cell(number(l.raj), centred), cell(text(l.koll), centred),
                      cell(text(l.moein), centred), cell(text(l.tafsily), centred),
                      cell(text(l.tafsily2), centred), cell(text(l.projectCod), centred),
                      cell(esc(l.lastNam), kCellStyle), cell(text(l.des), kCellStyle),
                      cell(money(l.amount), amount)});
    }
    lines += row({cell(QStringLiteral("جمع"), QStringLiteral("colspan=\"8\" ") + kHeadStyle),
                  cell(money(d.amount), QStringLiteral("align=\"right\" ") + kHeadStyle)});
    lines += row({cell(QStringLiteral("<b>مبلغ به حروف :</b> ") + esc(amountWords(d.amount)),
                       QStringLiteral("colspan=\"9\" ") + kCellStyle)});
    h += table(kGrid, lines);
    h += signatureBoxes({QStringLiteral("تنظيم کننده"), QStringLiteral("تاييد کننده"),
                         counterpartySignature(d.kind)},
                        QStringLiteral("امضاء"));
    h += userLine(d.userFullName) + QStringLiteral("</body>");
    return h;
}

QString oldLayout(const DocumentPrint& d) {
    QString h = QStringLiteral("<body>") +
                oldDocumentTitle(d.companyName, d.kindName,
                                 cancelledMark(d, QStringLiteral("font-size:11pt;")));

    // Every header value in one bordered grid, three pairs a row.
    QList<QPair<QString, QString>> pairs = {
        {QStringLiteral("سريال"), d.serial},
        {QStringLiteral("تاريخ"), d.date},
        {QStringLiteral("سند"), d.voucherNo ? QString::number(d.voucherNo) : QString()}};
    pairs += headerFields(d);
    pairs.append({QStringLiteral("كاربر"), d.userFullName});
    for (auto& pair : pairs) pair.second = text(pair.second);
    h += oldFieldGrid(pairs, 3);

    QString lines = headerCells({{QStringLiteral("رديف"), 6},
                                 {QStringLiteral("کد حساب"), 24},
                                 {QStringLiteral("نام حساب"), 22},
                                 {QStringLiteral("شرح"), 32},
                                 {QStringLiteral("مبلغ"), 16}},
                                kOldHeadStyle);
    for (const DocumentPrintLine& l : d.lines) {
        lines += row({cell(number(l.raj), QStringLiteral("align=\"center\" ") + kOldCellStyle),
                      cell(accountCode({l.koll, l.moein, l.tafsily, l.tafsily2, l.projectCod}),
                           QStringLiteral("align=\"center\" ") + kOldCellStyle),
                      cell(esc(l.lastNam), kOldCellStyle), cell(text(l.des), kOldCellStyle),
                      cell(money(l.amount), QStringLiteral("align=\"right\" ") + kOldCellStyle)});
    }
    lines += row({cell(QStringLiteral("<b>جمع :</b> ") + esc(amountWords(d.amount)),
                       QStringLiteral("colspan=\"4\" ") + kOldHeadStyle),
                  cell(money(d.amount), QStringLiteral("align=\"right\" ") + kOldHeadStyle)});
    h += table(kGrid, lines);
    h += signatureLines({QStringLiteral("امضاء تنظيم کننده"), QStringLiteral("امضاء تاييد کننده"),
                         QStringLiteral("امضاء ") + counterpartySignature(d.kind)});
    return h + QStringLiteral("</body>");
}

}  // namespace

QString documentHtml(const DocumentPrint& document, PrintLayout layout) {
    return QStringLiteral("<html>") +
           (layout == PrintLayout::New ? newLayout(document) : oldLayout(document)) +
           QStringLiteral("</html>");
}

}  // namespace tr::cashbank::ui
