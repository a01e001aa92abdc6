#pragma once
// The received and issued cheque searches: one row per cheque at its latest state, filtered by
// series, number, bank account, dates, amount, description words and state boxes, with a total
// per state and a grand total kept last; and word replacement in the found cheques' vouchers.
#include <QList>
#include <QString>
#include <QStringList>
#include <array>

#include "common/db/query.h"
#include "common/search/search_filters.h"
#include "common/search/search_result_table.h"
#include "common/session/services.h"

namespace tr::cheques {

enum class ChequeSide { Received, Issued };

// A state check box: its caption and the latest-state kinds it lets through.
struct ChequeStateBox {
    QString caption;
    QStringList kinds;
};

struct ChequeSearchFilters {
    QString fromSeries, toSeries, fromNumber, toNumber;
    // Compared with BankCod + ShobehCod + AcountCod as one text.
    QString fromAccount, toAccount;
    tr::search::DateBoxes fromDate, toDate, fromDue, toDue;
    QString fromAmount, toAmount;  // as typed; a search refuses a text that is not an amount
    std::array<QString, 3> words;
    std::array<QString, 3> replacements;
    std::array<tr::search::WordJoin, 2> joins{tr::search::WordJoin::And, tr::search::WordJoin::And};
    QList<bool> states;   // one per stateBoxes(side), all checked to start with
    bool opening = true;  // "اول دوره": cheques of the opening balances
};

class ChequeSearch {
  public:
    static const QString kSpentName;     // "خرج چك"
    static const QString kSpentBackName; // "برگشت از خرج چك"
    static const QString kNoReplacementMessage;
    static const QString kReplaceQuestion;

    ChequeSearch(const tr::Services& services, ChequeSide side);
    ~ChequeSearch();

    static const QList<ChequeStateBox>& stateBoxes(ChequeSide side);
    static QString caption(ChequeSide side);
    static QString reportKey(ChequeSide side);  // CHEQUE_GET / CHEQUE_PAY

    ChequeSide side() const { return side_; }
    void setServices(const tr::Services& services) { services_ = services; }
    ChequeSearchFilters& filters() { return filters_; }

    // F5. False when refused (an amount that does not read, a date the calendar lacks) or stopped.
    bool mnuSearchClick();
    bool stopped() const { return stopped_; }
    // Replaces each word that has a replacement in every line of the vouchers of the side that
    // the search finds, after a yes/no question, then searches again.
    bool mnuReplaceClick();

    tr::db::Query& result() { return result_; }
    QString resultTable() const { return table_.name(); }
    // The grid's caption of a field, empty for the fields it hides.
    QString fieldCaption(const QString& field) const;
    QStringList shownFields() const;
    static bool isTotalRow(const QString& sOrder) {
        return tr::search::SearchResultTable::isTotalRow(sOrder);
    }

  private:
    tr::db::Connection& connection() const { return services_.connection(); }
    QString text(const QString& v) const { return connection().text(v); }
    QString sameCheque(const QString& a, const QString& aNumber, const QString& aSeries,
                       const QString& b) const;
    QString sideRows() const;
    QString stateKinds() const;
    QString range(const QString& column, const QString& from, const QString& to) const;
    QString amountRange(const QString& column) const;
    QString filterCondition() const;
    bool filtersRead();
    void fillReceived();
    void fill();
    void describe();
    void total();

    tr::Services services_;
    ChequeSide side_;
    ChequeSearchFilters filters_;
    tr::search::SearchResultTable table_;
    bool stopped_ = false;
    tr::db::Query result_;
};

}  // namespace tr::cheques
