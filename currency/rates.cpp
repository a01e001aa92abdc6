#include "currency/rates.h"

#include <array>
#include <utility>

namespace tr::currency {

namespace {

const tr::db::ResultSet* firstResult(const tr::db::ExecResult& result) {
    return result.resultSets.empty() ? nullptr : &result.resultSets.front();
}

QString cell(const tr::db::ResultSet& rows, const tr::db::Row& row, const char* column) {
    const int index = rows.columnIndex(QLatin1String(column));
    return index < 0 ? QString() : row.at(index).toString();
}

std::optional<double> number(const tr::db::ResultSet& rows, const tr::db::Row& row,
                             const char* column) {
    const int index = rows.columnIndex(QLatin1String(column));
    if (index < 0 || row.at(index).isNull()) return std::nullopt;
    return row.at(index).toDouble();
}

std::optional<Currency> firstCurrency(tr::db::Connection& connection, const QString& sql) {
    const tr::db::ExecResult result = connection.execute(sql);
    const tr::db::ResultSet* rows = firstResult(result);
    if (!rows || rows->rows.empty()) return std::nullopt;
    const tr::db::Row& row = rows->rows.front();
    return Currency{cell(*rows, row, "ArzCod"), cell(*rows, row, "ArzNam")};
}

// The rate side of each screen, in the order of the enum.
constexpr std::array<std::pair<Screen, RateSide>, 7> kRateSides{{
    {Screen::CashReceipt, RateSide::Buy},
    {Screen::CashPayment, RateSide::Sell},
    {Screen::BankDeposit, RateSide::Buy},
    {Screen::BankWithdrawal, RateSide::Sell},
    {Screen::Transfer, RateSide::Buy},
    {Screen::ReceivedCheque, RateSide::Buy},
    {Screen::IssuedCheque, RateSide::Sell},
}};

}  // namespace

QString currentRateSql(tr::db::Connection& connection, const QString& arzCod) {
    return QStringLiteral(
               "select A.*, NA.Buy, NA.Sell from N_Arz As A Left join N_NerkhArz As NA On "
               "LTRIM(A.ArzCod) = NA.ArzCod Where A.ArzCod = ") +
           connection.text(arzCod) +
           QStringLiteral(
               " And (NA.DateNerkh = (Select Max(DateNerkh) From N_NerkhArz Where ArzCod = "
               "LTRIM(A.ArzCod)) And NA.HourNerkh = (Select Max(HourNerkh) From N_NerkhArz Where "
               "ArzCod = LTRIM(A.ArzCod) And DateNerkh = NA.DateNerkh))");
}

std::optional<CurrentRate> currentRate(tr::db::Connection& connection, const QString& arzCod) {
    const tr::db::ExecResult result = connection.execute(currentRateSql(connection, arzCod));
    const tr::db::ResultSet* rows = firstResult(result);
    if (!rows || rows->rows.empty()) return std::nullopt;
    const tr::db::Row& row = rows->rows.front();
    return CurrentRate{cell(*rows, row, "ArzCod"), cell(*rows, row, "ArzNam"),
                       number(*rows, row, "Buy").value_or(0),
                       number(*rows, row, "Sell").value_or(0)};
}

// The rate conditions sit in the join, not in a Where clause: a currency whose greatest hour was
// quoted on an older date than its greatest date must stay in the list, with empty rates, like a
// currency never quoted (which a Where clause would keep only through "Or NA.ArzCod Is Null").
QString currencyListSql() {
    return QStringLiteral(
        "select A.ArzCod, A.ArzNam, NA.Buy, NA.Sell from N_Arz As A Left join N_NerkhArz As NA "
        "On LTRIM(A.ArzCod) = NA.ArzCod "
        "And NA.DateNerkh = (Select Max(DateNerkh) From N_NerkhArz Where ArzCod = "
        "LTRIM(A.ArzCod)) "
        "And NA.HourNerkh = (Select Max(HourNerkh) From N_NerkhArz Where ArzCod = "
        "LTRIM(A.ArzCod)) "
        "Order By A.ArzCod");
}

QList<ListedCurrency> currencyList(tr::db::Connection& connection) {
    QList<ListedCurrency> list;
    const tr::db::ExecResult result = connection.execute(currencyListSql());
    const tr::db::ResultSet* rows = firstResult(result);
    if (!rows) return list;
    for (const tr::db::Row& row : rows->rows) {
        list << ListedCurrency{cell(*rows, row, "ArzCod"), cell(*rows, row, "ArzNam"),
                               number(*rows, row, "Buy"), number(*rows, row, "Sell")};
    }
    return list;
}

QString currencyChoiceSql() {
    return QStringLiteral("Select ArzCod, ArzNam From N_Arz Order By ArzCod");
}

std::optional<Currency> chooseCurrency(tr::dialog::PickList& pickList) {
    const auto chosen = pickList.pick(QStringLiteral("انتخاب ارز"), currencyChoiceSql(),
                                      {{QStringLiteral("ArzCod"), QStringLiteral("ارز"), 0},
                                       {QStringLiteral("ArzNam"), QStringLiteral("نام ارز"), 0}},
                                      0);
    if (!chosen) return std::nullopt;
    return Currency{chosen->value(QStringLiteral("ArzCod")).toString(),
                    chosen->value(QStringLiteral("ArzNam")).toString()};
}

QString cashCurrencySql(tr::db::Connection& connection, const AccountCodes& account) {
    return QStringLiteral(
               "select C.*, A.ArzNam from N_cash as C join N_Arz AS A On LTRIM(C.ArzCod) = "
               "LTRIM(A.ArzCod) where IsNull(Koll,'') = ") +
           connection.text(account.koll) + QStringLiteral(" And IsNull(Moein,'') = ") +
           connection.text(account.moein) + QStringLiteral(" And IsNull(Tafsily,'') = ") +
           connection.text(account.tafsily) + QStringLiteral(" And IsNull(Tafsily2,'') = ") +
           connection.text(account.tafsily2) + QStringLiteral(" And IsNull(ProjectCod,'') = ") +
           connection.text(account.projectCod);
}

QString bankCurrencySql(tr::db::Connection& connection, const AccountCodes& account,
                        BankAccountSet set) {
    const QString p = set == BankAccountSet::IssuedCheques ? QStringLiteral("A")
                                                           : QStringLiteral("J");
    return QStringLiteral(
               "select B.*, A.ArzNam from N_BankHesab as B join N_Arz AS A On LTRIM(B.ArzCod) = "
               "LTRIM(A.ArzCod) where IsNull(") +
           p + QStringLiteral("Koll,'') = ") + connection.text(account.koll) +
           QStringLiteral(" And IsNull(") + p + QStringLiteral("Moein,'') = ") +
           connection.text(account.moein) + QStringLiteral(" And IsNull(") + p +
           QStringLiteral("Tafsily,'') = ") + connection.text(account.tafsily) +
           QStringLiteral(" And IsNull(") + p + QStringLiteral("Tafsily2,'') = ") +
           connection.text(account.tafsily2) + QStringLiteral(" And IsNull(") + p +
           QStringLiteral("ProjectCod,'') = ") + connection.text(account.projectCod) +
           QStringLiteral(" Order By B.AcountID");
}

std::optional<Currency> accountCurrency(tr::db::Connection& connection,
                                        const AccountCodes& account, BankAccountSet set) {
    if (auto cash = firstCurrency(connection, cashCurrencySql(connection, account))) return cash;
    return firstCurrency(connection, bankCurrencySql(connection, account, set));
}

RateSide defaultRateSide(Screen screen) {
    for (const auto& [s, side] : kRateSides) {
        if (s == screen) return side;
    }
    return RateSide::Buy;
}

QString rateColumn(RateSide side) {
    return side == RateSide::Sell ? QStringLiteral("Sell") : QStringLiteral("Buy");
}

double rateOf(const CurrentRate& rate, RateSide side) {
    return side == RateSide::Sell ? rate.sell : rate.buy;
}

BankAccountSet bankAccountSet(Screen screen) {
    return screen == Screen::IssuedCheque ? BankAccountSet::IssuedCheques : BankAccountSet::Own;
}

}  // namespace tr::currency
