#pragma once
// Currencies and their rates as every screen sees them: the current buy/sell rate of a currency,
// the currency list with rates, the currency choice list, the currency of an account line and the
// rate column (buy or sell) each document screen takes by default. Database errors propagate.
#include <QList>
#include <QString>
#include <optional>

#include "common/db/connection.h"
#include "common/dialog/host_windows.h"

namespace tr::currency {

struct Currency {
    QString arzCod;
    QString arzNam;
};

// The current quotation of one currency, rials per unit.
struct CurrentRate {
    QString arzCod;
    QString arzNam;
    double buy = 0;
    double sell = 0;
};

// One line of the currency list; a currency without a current quotation has no rates.
struct ListedCurrency {
    QString arzCod;
    QString arzNam;
    std::optional<double> buy;
    std::optional<double> sell;
};

// The latest quotation of `arzCod`: greatest date, then the greatest hour of that date. Nothing
// when the currency has no quotation, whatever the document's date.
QString currentRateSql(tr::db::Connection& connection, const QString& arzCod);
std::optional<CurrentRate> currentRate(tr::db::Connection& connection, const QString& arzCod);

// Every currency in code order, with the quotation of its greatest date at its greatest hour
// over all dates; when that hour was quoted on another date the currency is listed without rates.
QString currencyListSql();
QList<ListedCurrency> currencyList(tr::db::Connection& connection);

// The currency choice list ("انتخاب ارز"); nothing when the user cancels.
QString currencyChoiceSql();
std::optional<Currency> chooseCurrency(tr::dialog::PickList& pickList);

// The five account levels of a document line.
struct AccountCodes {
    QString koll;
    QString moein;
    QString tafsily;
    QString tafsily2;
    QString projectCod;
};

// Which account of a bank account a line is matched against: `J*` is the bank account's own
// ledger account, `A*` the account its issued cheques are credited to.
enum class BankAccountSet { Own, IssuedCheques };

QString cashCurrencySql(tr::db::Connection& connection, const AccountCodes& account);
QString bankCurrencySql(tr::db::Connection& connection, const AccountCodes& account,
                        BankAccountSet set);
// The currency of a cash box with exactly these codes, else of a bank account whose chosen set
// matches; nothing for a rial line.
std::optional<Currency> accountCurrency(tr::db::Connection& connection,
                                        const AccountCodes& account, BankAccountSet set);

// The document screens that value currency lines.
enum class Screen {
    CashReceipt,
    CashPayment,
    BankDeposit,
    BankWithdrawal,
    Transfer,
    ReceivedCheque,
    IssuedCheque,
};

enum class RateSide { Buy, Sell };

// Money coming in is valued at the buying rate and money going out at the selling rate; the
// transfer screen takes the buying rate although it moves money both ways.
RateSide defaultRateSide(Screen screen);
// "Buy" or "Sell": the N_NerkhArz column of the side.
QString rateColumn(RateSide side);
double rateOf(const CurrentRate& rate, RateSide side);
BankAccountSet bankAccountSet(Screen screen);

}  // namespace tr::currency
