#include "common/ui/grid_report.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QPrintDialog>
#include <QPrinter>
#include <QTableView>
#include <QTextDocument>
#include <QTextOption>

#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::ui {

QString gridReportHtml(const QString& title, const QTableView& view) {
    const QAbstractItemModel* model = view.model();
    const QHeaderView* header = view.horizontalHeader();
    QList<int> columns;  // logical columns in the order the user sees them
    for (int visual = 0; model && visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (!view.isColumnHidden(logical)) columns << logical;
    }
    QString html = QStringLiteral("<html dir=\"rtl\"><body dir=\"rtl\"><h3 align=\"center\">") + title.toHtmlEscaped() +
                   QStringLiteral("</h3><table dir=\"rtl\" width=\"100%\" border=\"1\" cellspacing=\"0\" "
                                  "cellpadding=\"3\"><tr>");
    for (int c : columns) {
        html += QStringLiteral("<th>") + model->headerData(c, Qt::Horizontal).toString().toHtmlEscaped() +
                QStringLiteral("</th>");
    }
    html += QStringLiteral("</tr>");
    for (int r = 0; model && r < model->rowCount(); ++r) {
        html += QStringLiteral("<tr>");
        for (int c : columns)
            html += QStringLiteral("<td>") + model->index(r, c).data().toString().toHtmlEscaped() + QStringLiteral("</td>");
        html += QStringLiteral("</tr>");
    }
    return html + QStringLiteral("</table></body></html>");
}

bool printReport(QTextDocument& report, const QString& title, const QString& html, QWidget* parent,
                 const QString& pdfFile, PageTurn turn) {
    // Points, not pixels: the printer's resolution would shrink a pixel-sized font to nothing.
    QFont font = tr::sdk::persianFont();
    font.setPointSize(10);
    report.setDefaultFont(font);
    QTextOption option = report.defaultTextOption();
    option.setTextDirection(Qt::RightToLeft);
    option.setAlignment(Qt::AlignRight);
    report.setDefaultTextOption(option);
    report.setHtml(html);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    if (turn == PageTurn::Landscape) printer.setPageOrientation(QPageLayout::Landscape);
    if (!pdfFile.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdfFile);
    } else {
        QPrintDialog dialog(&printer, parent);
        if (tr::sdk::ModalRunner::current().exec(dialog) != QDialog::Accepted) return false;
    }
    report.print(&printer);
    return true;
}

}  // namespace tr::ui
