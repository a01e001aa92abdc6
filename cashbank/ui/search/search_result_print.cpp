#include "cashbank/ui/search/search_result_print.h"

#include "common/dialog/message_dialog.h"
#include "common/persian/amount.h"
#include "common/persian/persian_date.h"
#include "printing/print_names.h"
#include "printing/ui/print_html.h"

namespace tr::cashbank::ui {

namespace {

namespace html = tr::printing::ui::html;
using html::cell;
using html::esc;
using html::row;
using html::table;
using tr::persian::persianDigits;
using tr::printing::ui::printToPdf;
using tr::printing::ui::showPrintPreview;

const QString& kHead = html::kHeadStyle;
const QString& kCell = html::kCellStyle;
const QString kTotal = QStringLiteral(
    "style=\"background-color:#f1f4f8; font-weight:bold; border:1px solid #9aa8ba;\"");

QString valueHtml(const QVariant& value) {
    if (value.isNull()) return {};
    if (value.typeId() == QMetaType::Double) return esc(tr::persian::printAmount(value.toDouble()));
    return esc(persianDigits(value.toString().trimmed()));
}

QString range(const QString& label, const QString& from, const QString& to) {
    if (from.isEmpty() && to.isEmpty()) return {};
    QString text = label;
    if (!from.isEmpty()) text += QStringLiteral(" از ") + from;
    if (!to.isEmpty()) text += QStringLiteral(" تا ") + to;
    return text;
}

}  // namespace

QString filtersInForce(const SearchFilters& f) {
    QStringList parts;
    const auto serial = [](const std::optional<qint64>& s) {
        return s ? QString::number(*s) : QString();
    };
    for (const QString& part :
         {range(QStringLiteral("تاريخ"), f.fromDate.text(), f.toDate.text()),
          range(QStringLiteral("کد"), f.fromCode.trimmed(), f.toCode.trimmed()),
          range(QStringLiteral("سريال"), serial(f.fromSerial), serial(f.toSerial)),
          range(QStringLiteral("مبلغ"), f.fromAmount.trimmed(), f.toAmount.trimmed())})
        if (!part.isEmpty()) parts << part;
    QStringList words;
    for (const QString& word : f.words)
        if (!word.trimmed().isEmpty()) words << word.trimmed();
    if (!words.isEmpty()) parts << QStringLiteral("شرح : ") + words.join(QStringLiteral("، "));
    return persianDigits(parts.join(QStringLiteral(" - ")));
}

QString searchResultHtml(const DocumentSearch::ShownResult& shown,
                         const SearchPrintHeading& heading) {
    QString h = QStringLiteral("<html><body>");
    h += html::titleBand(heading.company, esc(heading.caption), 14, QStringLiteral("تاريخ چاپ"),
                         esc(persianDigits(heading.printedOn)));
    if (!heading.filters.isEmpty())
        h += QStringLiteral("<p align=\"center\" style=\"margin-top:2px;\">") +
             esc(heading.filters) + QStringLiteral("</p>");

    QStringList titles;
    for (const QString& title : shown.titles)
        titles << QStringLiteral("<th align=\"center\" ") + kHead + QStringLiteral(">") +
                      esc(title) + QStringLiteral("</th>");
    // A header row repeats on every page.
    QString rows = QStringLiteral("<thead>") + row(titles) + QStringLiteral("</thead>");
    for (int r = 0; r < shown.rows.size(); ++r) {
        const QString style = shown.totals.value(r) ? kTotal : kCell;
        QStringList cells;
        for (const QVariant& value : shown.rows[r]) {
            const bool amount = value.typeId() == QMetaType::Double;
            cells << cell(valueHtml(value),
                          (amount ? QStringLiteral("align=\"right\" ") : QString()) + style);
        }
        rows += row(cells);
    }
    h += table(QStringLiteral("cellspacing=\"0\" cellpadding=\"3\" "
                              "style=\"border-collapse:collapse; margin-top:6px;\""),
               rows);
    h += html::userLine(heading.user) + QStringLiteral("</body></html>");
    return h;
}

bool printSearchResult(const tr::Services& services, DocumentSearch& search,
                       const PrintTarget& target, QWidget* parent) {
    if (!search.result().Active()) {
        tr::dialog::Messages(services.dialog).show(kNothingToPrint, QStringLiteral("1ER"));
        return false;
    }
    SearchPrintHeading heading;
    heading.company = tr::printing::companyName(services);
    heading.caption = search.family().caption;
    heading.filters = filtersInForce(search.filters());
    heading.user = tr::printing::userFullName(services, services.global->userName);
    heading.printedOn = tr::persian::today();
    const QString html = searchResultHtml(search.shownResult(), heading);
    if (target.isPdf()) {
        if (printToPdf(html, heading.caption, target.pdfPath, QPageLayout::Landscape)) return true;
        tr::dialog::Messages(services.dialog)
            .show(QStringLiteral("فايل %1 ذخيره نشد.").arg(target.pdfPath), QStringLiteral("1ER"));
        return false;
    }
    return showPrintPreview(html, heading.caption, parent, search.family().gridKey,
                            QPageLayout::Landscape);
}

}  // namespace tr::cashbank::ui
