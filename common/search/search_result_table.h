#pragma once
// The result table of a search screen: a "##" table of the session created on the first search,
// emptied before each later one and dropped with the search; total rows carry a non-empty sOrder
// and the table opens ordered by sOrder so they stay last. Also the progress window's stopping.
#include <QString>

#include "common/db/query.h"
#include "common/session/services.h"

namespace tr::search {

class SearchResultTable {
  public:
    static const QString kProgressTitle;
    static const QString kProgressText;
    static const QString kStoppedMessage;
    static const QString kGrandTotal;

    // `stem` tells the searches of a session apart in the table's name, e.g. "Search".
    explicit SearchResultTable(QString stem) : stem_(std::move(stem)) {}
    ~SearchResultTable();
    SearchResultTable(const SearchResultTable&) = delete;
    SearchResultTable& operator=(const SearchResultTable&) = delete;

    void setServices(const tr::Services& services) { services_ = services; }
    QString name() const { return name_; }
    static bool isTotalRow(const QString& sOrder) { return !sOrder.trimmed().isEmpty(); }

    // Shows the progress window, then creates the table with `columns` (DDL) or empties it.
    void begin(const QString& columns);
    void run(const QString& statement) const;
    bool shouldStop() const;
    // A stopped search shows nothing: rows without their totals would read as a complete answer.
    void finishStopped(tr::db::Query& result);
    // Opens "Select * From <table> Order By IDX" (totals are written last, so this is the order
    // by sOrder too) and closes the progress window.
    void finish(tr::db::Query& result);
    // Whether any row has `where` (e.g. "Sign <> 0").
    bool any(const QString& where) const;

  private:
    void open(tr::db::Query& result) const;

    QString stem_;
    tr::Services services_;
    QString name_;
    bool created_ = false;
};

}  // namespace tr::search
