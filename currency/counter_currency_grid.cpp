#include "currency/counter_currency_grid.h"

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/persian/amount_cells.h"

namespace tr::currency {

CounterCurrencyGrid::CounterCurrencyGrid(const tr::Services& services, const QString& base)
    : services_(services),
      messages_(services.dialog),
      base_(base),
      query_(&services.connection()) {
    query_.BeforePost = [this](tr::db::Query& q) { return beforePost(q); };
    query_.AfterPost = [this](tr::db::Query& q) { afterPost(q); };
}

CounterCurrencyGrid::~CounterCurrencyGrid() {
    tr::db::dropTempTableQuietly(*services_.database, base_ + QStringLiteral("_ArzNerkh"));
}

QString CounterCurrencyGrid::title() {
    return QStringLiteral("نرخ و ارز چك ها");
}

void CounterCurrencyGrid::fill(const QString& chequeTable) {
    tr::db::MyDatabase& db = *services_.database;
    tr::db::dropTempTable(db, base_ + QStringLiteral("_ArzNerkh"));
    tr::db::execute(db, QStringLiteral("Create Table ") + tableName() +
                            QStringLiteral(" (ArzCod Varchar(2), ArzNam NVarchar(50), "
                                           "ArzMaxCount Float, ArzCount Float, ArzNerkh Float)"));
    tr::db::execute(db, QStringLiteral("Insert Into ") + tableName() +
                            QStringLiteral(" (ArzCod, ArzNam, ArzMaxCount, ArzCount, ArzNerkh) "
                                           "Select LTRIM(ArzCod), Max(ArzNam), "
                                           "Sum(IsNull(ArzCount, 0)), 0, Max(IsNull(Nerkh, 0)) "
                                           "From ") +
                            chequeTable +
                            QStringLiteral(" Where LTRIM(IsNull(ArzCod, '')) <> '' "
                                           "Group By LTRIM(ArzCod)"));
}

void CounterCurrencyGrid::open() {
    query_.Close();
    query_.setSql(QStringLiteral("Select ArzCod, ArzNam, ArzMaxCount, ArzCount, ArzNerkh From ") +
                  tableName() + QStringLiteral(" Order By ArzCod"));
    query_.Open();
}

bool CounterCurrencyGrid::beforePost(tr::db::Query& q) {
    // A typed text that is not an amount stays in its cell for the user to correct.
    const QString refusal = tr::persian::readAmountCells(
        q, {QStringLiteral("ArzCount"), QStringLiteral("ArzNerkh")}, {false, false, 6});
    if (!refusal.isEmpty()) {
        messages_.show(refusal, QStringLiteral("1ER"));
        return false;
    }
    if (q.FieldByName(QStringLiteral("ArzCount")).AsFloat() >
        q.FieldByName(QStringLiteral("ArzMaxCount")).AsFloat()) {
        messages_.show(QStringLiteral("مقدار وارد شده از حداكثر مقدار مجاز بيشتر است !"),
                       QStringLiteral("1ER"));
        return false;
    }
    return true;
}

// A counter-account line is settled in one currency at one rate, so posting a row clears the
// others; the dataset is read again because the statement changed rows it holds.
void CounterCurrencyGrid::afterPost(tr::db::Query& q) {
    const QString arzCod = q.FieldByName(QStringLiteral("ArzCod")).AsString();
    const double rate = q.FieldByName(QStringLiteral("ArzNerkh")).AsFloat();
    const int row = q.RecNo() - 1;
    tr::db::execute(*services_.database,
                    QStringLiteral(" Update ") + tableName() +
                        QStringLiteral(" Set ArzCount = 0 where ArzCod <> ") +
                        services_.connection().text(arzCod) +
                        QStringLiteral(" And ArzNerkh <> ") + tr::db::sqlNumber(rate));
    q.Close();
    q.Open();
    if (row > 0 && row < q.RecordCount()) q.MoveTo(row);
}

std::optional<QList<CounterCurrency>> CounterCurrencyGrid::cmdOkClick() {
    if (query_.state() == tr::db::Query::State::Edit ||
        query_.state() == tr::db::Query::State::Insert) {
        query_.Post();
        if (query_.state() != tr::db::Query::State::Browse) return std::nullopt;
    }
    const tr::db::ExecResult result = services_.connection().execute(
        QStringLiteral("Select ArzCod, ArzNam, ArzCount, ArzNerkh from ") + tableName() +
        QStringLiteral(" Where ArzCount <> 0"));
    QList<CounterCurrency> rows;
    if (!result.resultSets.empty()) {
        for (const tr::db::Row& row : result.resultSets.front().rows) {
            rows << CounterCurrency{row.at(0).toString(), row.at(1).toString(),
                                    row.at(2).toDouble(), row.at(3).toDouble()};
        }
    }
    if (rows.isEmpty()) {
        messages_.show(QStringLiteral("هيچ مقداري وارد نشده است !"), QStringLiteral("1ER"));
        return std::nullopt;
    }
    return rows;
}

bool CounterCurrencyGrid::chequesCarry(const tr::Services& services, const QString& chequeTable,
                                       const QString& arzCod) {
    tr::db::Connection& connection = services.connection();
    const tr::db::ExecResult result = connection.execute(
        QStringLiteral("Select Top 1 ArzCod From ") + chequeTable +
        QStringLiteral(" Where LTRIM(ArzCod) = LTRIM(") + connection.text(arzCod) +
        QStringLiteral(")"));
    if (!result.resultSets.empty() && !result.resultSets.front().rows.empty()) return true;
    tr::dialog::Messages(services.dialog)
        .show(QStringLiteral("اين نوع ارز در چك ها وجود ندارد !"), QStringLiteral("1ER"));
    return false;
}

}  // namespace tr::currency
