#pragma once
// The logic of a document search screen: filters, the condition built from the filled ones, the
// result table with subtotals per account and document name and a grand total (ordered by
// sOrder so totals stay last), stopping through the progress window, and replacing words in the
// descriptions of every line of the vouchers found.
#include <QString>
#include <array>
#include <functional>
#include <optional>

#include "cashbank/search/search_families.h"
#include "common/db/query.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/persian_date.h"
#include "common/search/search_filters.h"
#include "common/search/search_result_table.h"
#include "common/session/services.h"

namespace tr::cashbank {

using tr::search::DateBoxes;
using tr::search::WordJoin;
using tr::search::serialBox;

// The date filter refused last and its box at fault.
enum class DateFilter { None, From, To };
struct DateFault {
    DateFilter filter = DateFilter::None;
    tr::persian::DatePart part = tr::persian::DatePart::None;
};

struct SearchFilters {
    QString fromCode, toCode;
    DateBoxes fromDate, toDate;
    std::optional<qint64> fromSerial, toSerial;
    QString fromAmount, toAmount;  // as typed; a search refuses a text that is not an amount
    bool receipts = true, payments = true, cancellations = true;
    std::array<QString, 3> words;
    std::array<QString, 3> replacements;
    // joins[i] joins word i + 1 to the words before it.
    std::array<WordJoin, 2> joins{WordJoin::And, WordJoin::And};
};

class DocumentSearch {
  public:
    static inline const QString& kProgressTitle = tr::search::SearchResultTable::kProgressTitle;
    static inline const QString& kProgressText = tr::search::SearchResultTable::kProgressText;
    static inline const QString& kStoppedMessage = tr::search::SearchResultTable::kStoppedMessage;
    static const QString kReplaceQuestion;
    static const QString kNoReplacementMessage;
    static inline const QString& kGrandTotal = tr::search::SearchResultTable::kGrandTotal;

    DocumentSearch(const tr::Services& services, SearchFamily family);
    ~DocumentSearch();
    DocumentSearch(const DocumentSearch&) = delete;
    DocumentSearch& operator=(const DocumentSearch&) = delete;

    void setServices(const tr::Services& services) { services_ = services; }
    const SearchFamilyRow& family() const { return family_; }
    SearchFilters& filters() { return filters_; }
    const SearchFilters& filters() const { return filters_; }

    // The filled filters as "And (...) " pieces, the kinds group included.
    QString condition() const;
    QString kindsGroup() const;
    QString selectStatement() const;
    QString resultTable() const { return table_.name(); }
    QStringList resultFields() const;
    // The result grid's caption of a field, empty for the fields the grid hides.
    QString fieldCaption(const QString& field) const;

    // F5 / "نمايش نتيجه جستجو". Answers false when the user stopped it: the result is then
    // empty and stopped() is true until the next search. A description word with a control
    // character is refused first ("1ER"); line breaks in the words become spaces. An amount box
    // that does not read is refused with its reason before anything is run, and the last result
    // stays.
    bool mnuSearchClick();
    bool stopped() const { return stopped_; }
    // Replaces each word that has a replacement in every line of the vouchers found, after a
    // yes/no question, then searches again. Answers whether anything was run.
    bool mnuReplaceClick();

    // Leaving a date filter, and again before a search or a replace: a filled date the calendar
    // does not have (1404/07/31) is refused ("1ER") and dateFault() names its box.
    bool datesRead();
    const DateFault& dateFault() const { return dateFault_; }

    // The name beside a code-range box ("" for an unknown or empty code).
    QString accountName(const QString& code) const;

    tr::db::Query& result() { return result_; }
    static bool isTotalRow(const QString& sOrder) {
        return tr::search::SearchResultTable::isTotalRow(sOrder);
    }

    // The document a result row (in the result's current order) lists; nothing for a total row.
    struct ListedDocument {
        QString kind;    // WhatDoc of the row
        QString serial;
    };
    std::optional<ListedDocument> documentAt(int row);
    // Opens the document of a result row in its screen (double-click or Enter on the row)
    // through `openDocument`. A total row opens nothing; a row of a kind no screen here saves
    // (money moved in by another document) is answered with a message. Whether one opened.
    bool openRow(int row);
    // Set by the form that shows the result: opens `serial` of `kind` in that kind's screen and
    // answers whether it did (the user may stay on unsaved work); nothing when no screen here
    // saves that kind.
    std::function<std::optional<bool>(const QString& kind, const QString& serial)> openDocument;
    static const QString kNoDocumentMessage;

    // The result as shown: its titled columns and, in its current order, every row's values
    // (totals included, flagged).
    struct ShownResult {
        QStringList titles;
        QList<QVariantList> rows;
        QList<bool> totals;
    };
    ShownResult shownResult();

    // Saves the result as shown (its titled columns, in its current order, totals included) as a
    // CSV file for spreadsheet programs; amounts are plain numbers there. A file that cannot be
    // written is refused with a message ("1ER"). Whether it was saved.
    bool saveCsv(const QString& path);
    // The same as an Excel workbook (.xlsx): one right-to-left sheet, amounts as numbers with
    // group separators, totals bold. Refused like saveCsv.
    bool saveXlsx(const QString& path);

  private:
    tr::db::Connection& connection() const { return services_.connection(); }
    QString text(const QString& value) const { return connection().text(value); }
    QString wordsCondition() const;
    bool checkWords();
    bool amountsRead() const;
    void prepareTable();
    void run(const QString& statement);
    bool shouldStop();
    void finishStopped();
    void refuseFile(const QString& path, const QString& reason) const;

    tr::Services services_;
    const SearchFamilyRow& family_;
    SearchFilters filters_;
    tr::search::SearchResultTable table_{QStringLiteral("Search")};
    bool stopped_ = false;
    DateFault dateFault_;
    tr::db::Query result_;
};

}  // namespace tr::cashbank
