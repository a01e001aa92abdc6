#pragma once
// The report of a grid as the user arranged it: a title over the grid's shown columns in their
// shown order and captions, and its rows as the grid shows them, printed right to left to a
// printer the user picks or to a PDF file. Every grid report of the module prints through here.
#include <QString>

class QTableView;
class QTextDocument;
class QWidget;

namespace tr::ui {

// The report's HTML: `title`, then one table of the view's visible columns and rows.
QString gridReportHtml(const QString& title, const QTableView& view);
// Prints `html` through `report` (which keeps the user's report settings) to `pdfFile`, or to a
// printer chosen in the print dialog when `pdfFile` is empty; false when the user cancels. A wide
// grid prints on a landscape page.
enum class PageTurn { Portrait, Landscape };
bool printReport(QTextDocument& report, const QString& title, const QString& html, QWidget* parent,
                 const QString& pdfFile = {}, PageTurn turn = PageTurn::Portrait);

}  // namespace tr::ui
