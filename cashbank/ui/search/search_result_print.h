#pragma once
// A search result printed as the screen shows it: company, the search's caption and the filters
// in force, the titled columns in the result's order with totals set apart, who printed it and
// when; A4 landscape, to the print preview or a PDF file.
#include <QString>

#include "cashbank/search/document_search.h"
#include "printing/ui/print_output.h"

class QWidget;

namespace tr::cashbank::ui {

using tr::printing::ui::PrintTarget;

struct SearchPrintHeading {
    QString company;
    QString caption;   // the search screen's title
    QString filters;   // the filters in force, one line
    QString user;      // full name
    QString printedOn; // yyyy/mm/dd
};

QString searchResultHtml(const DocumentSearch::ShownResult& shown,
                         const SearchPrintHeading& heading);
// The filters the user filled, as a line of the heading ("" when none).
QString filtersInForce(const SearchFilters& filters);

// Refuses with a message ("1ER") when no search has been run or the PDF file cannot be written.
// Whether something was shown or written.
bool printSearchResult(const tr::Services& services, DocumentSearch& search,
                       const PrintTarget& target, QWidget* parent);

inline const QString kNothingToPrint = QStringLiteral("ابتدا جستجو را انجام دهيد.");

}  // namespace tr::cashbank::ui
