#include "common/search/search_result_table.h"

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/host_windows.h"
#include "common/dialog/message_dialog.h"

namespace tr::search {

const QString SearchResultTable::kProgressTitle = QStringLiteral("جستجوي اسناد");
const QString SearchResultTable::kProgressText = QStringLiteral("لطفا صبر کنيد");
const QString SearchResultTable::kStoppedMessage =
    QStringLiteral("جستجو متوقف شد؛ نتيجه اي نمايش داده نمي شود.");
const QString SearchResultTable::kGrandTotal = QStringLiteral("جمع کل ");

SearchResultTable::~SearchResultTable() {
    // The host may already have closed the company; a table left behind dies with the session.
    if (!created_ || !services_.database || !services_.database->CommandQuery) return;
    tr::db::dropTempTableQuietly(*services_.database, name_.mid(2));
}

void SearchResultTable::run(const QString& statement) const {
    tr::db::execute(*services_.database, statement);
}

void SearchResultTable::begin(const QString& columns) {
    if (services_.progress) {
        services_.progress->showState(kProgressTitle);
        services_.progress->setStateText(kProgressText);
    }
    if (created_) {
        run(QStringLiteral("Truncate Table ") + name_);
        return;
    }
    // Several searches may start within one tick of the clock: the time stamp alone would clash.
    static int opened = 0;
    name_ = tr::db::globalTempTableName(services_.global->sessionText + stem_ +
                                        QString::number(++opened) + QStringLiteral("_"));
    run(QStringLiteral("Create Table ") + name_ + QStringLiteral(" (") + columns +
        QStringLiteral(")"));
    created_ = true;
}

bool SearchResultTable::shouldStop() const {
    return services_.progress && services_.progress->stopRequested();
}

void SearchResultTable::open(tr::db::Query& result) const {
    result.setConnection(&services_.connection());
    // The rows come first, then the subtotals ('X'), then the grand total ('Y'), each written
    // after what it sums: the identity's order is therefore "sOrder, IDX", and on the embedded
    // engine it is the table's own key, read without sorting the whole result.
    result.setSql(QStringLiteral("Select * From ") + name_ + QStringLiteral(" Order By IDX"));
    result.setSort({});
    result.Open();
}

void SearchResultTable::finishStopped(tr::db::Query& result) {
    run(QStringLiteral("Truncate Table ") + name_);
    open(result);
    if (services_.progress) services_.progress->closeState();
    tr::dialog::Messages(services_.dialog).show(kStoppedMessage, QStringLiteral("1IR"));
}

void SearchResultTable::finish(tr::db::Query& result) {
    open(result);
    if (services_.progress) services_.progress->closeState();
}

bool SearchResultTable::any(const QString& where) const {
    const auto counted = services_.connection().execute(QStringLiteral("Select Count(*) From ") +
                                                        name_ + QStringLiteral(" Where ") + where);
    return !counted.resultSets.empty() && !counted.resultSets.front().rows.empty() &&
           counted.resultSets.front().rows.front().at(0).toLongLong() > 0;
}

}  // namespace tr::search
