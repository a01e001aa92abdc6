#include "printing/ui/voucher_printing.h"

#include "printing/ui/print_html.h"

namespace tr::printing::ui {

using namespace html;

QString voucherHtml(const VoucherPrint& v) {
    QString h = QStringLiteral("<html><body>");
    h += titleBand(v.companyName, text(v.title), 15, QStringLiteral("تاريخ"), text(v.date));

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
                                kHeadStyle);
    const QString centred = QStringLiteral("align=\"center\" ") + kCellStyle;
    const QString amount = QStringLiteral("align=\"right\" ") + kCellStyle;
    // An empty side stays blank rather than printing a zero.
    const auto side = [](double value) { return value != 0 ? money(value) : QString(); };
    for (const VoucherPrintLine& l : v.lines) {
        lines += row({cell(number(l.raj), centred), cell(text(l.koll), centred),
                      cell(text(l.moein), centred), cell(text(l.tafsily), centred),
                      cell(text(l.tafsily2), centred), cell(text(l.projectCod), centred),
                      cell(esc(l.lastNam), kCellStyle), cell(text(l.des), kCellStyle),
                      cell(side(l.bed), amount), cell(side(l.bes), amount)});
    }
    const QString total = QStringLiteral("align=\"right\" ") + kHeadStyle;
    lines += row({cell(QStringLiteral("جمع"), QStringLiteral("colspan=\"8\" ") + kHeadStyle),
                  cell(money(v.totalBed()), total), cell(money(v.totalBes()), total)});
    h += table(kGrid, lines);
    h += signatureBoxes(
        {QStringLiteral("تنظيم کننده"), QStringLiteral("تاييد کننده"), QStringLiteral("مدير مالي")},
        QString());
    h += userLine(v.userFullName) + QStringLiteral("</body></html>");
    return h;
}

bool printVoucher(const tr::Services& services, const QString& kind, const QString& serial,
                  const PrintTarget& target, QWidget* parent) {
    const std::optional<VoucherPrint> voucher = loadVoucherPrint(services, kind, serial);
    if (!voucher) return false;
    return printHtml(voucherHtml(*voucher), voucher->title, target, parent, voucher->reportKey);
}

}  // namespace tr::printing::ui
