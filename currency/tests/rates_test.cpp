// The current-rate rule and its list variant, the currency of an account line and the rate side
// each screen takes, on the demo company.
#include <gtest/gtest.h>

#include <QHash>

#include "currency/rates.h"
#include "currency/tests/currency_fixture.h"

namespace tr::currency {
namespace {

using testing::CurrencyTest;
namespace demo = tr::schema::demo;

class CurrentRateRule : public CurrencyTest {};

TEST_F(CurrentRateRule, LatestHourOfTheLatestDateWins) {
    // Demo dollars: 1404/02/20 at 09:00 and at 14:30, and an older date.
    const auto usd = currentRate(company(), demo::kUsd);
    ASSERT_TRUE(usd);
    EXPECT_EQ(usd->buy, demo::kUsdBuy);
    EXPECT_EQ(usd->sell, demo::kUsdSell);
    EXPECT_EQ(usd->arzNam, QStringLiteral("دلار آمريکا"));

    // An 08:00 quotation of a later day beats a later hour of an earlier day.
    addCurrency("91", {"1404/03/01 09:00 100 110", "1404/03/01 14:30 200 210",
                       "1404/03/02 08:00 300 310"});
    const auto later = currentRate(company(), "91");
    ASSERT_TRUE(later);
    EXPECT_EQ(later->buy, 300);
    EXPECT_EQ(later->sell, 310);
}

TEST_F(CurrentRateRule, OldQuotationsStillGiveTheLatestAndNoneGivesNothing) {
    addCurrency("92", {"1403/11/01 10:00 500 520", "1403/12/25 09:00 600 620"});
    const auto old = currentRate(company(), "92");
    ASSERT_TRUE(old);
    EXPECT_EQ(old->buy, 600);

    EXPECT_FALSE(currentRate(company(), demo::kAed));  // listed, never quoted
    EXPECT_FALSE(currentRate(company(), "99"));        // not a currency
}

TEST_F(CurrentRateRule, CodeStoredWithALeadingBlankFindsItsQuotations) {
    addCurrency(" 7", {"1404/04/01 10:00 700 710"});
    const auto rate = currentRate(company(), " 7");
    ASSERT_TRUE(rate);
    EXPECT_EQ(rate->sell, 710);
}

TEST_F(CurrentRateRule, ListTakesTheGreatestHourOverAllDates) {
    // The greatest hour (16:00) lies on an older date than the greatest date: empty rates, while
    // the current-rate rule still answers the latest date's quotation.
    addCurrency("93", {"1404/03/01 16:00 100 110", "1404/03/05 09:00 200 210"});
    // Greatest hour and greatest date agree.
    addCurrency("94", {"1404/03/01 08:00 100 110", "1404/03/05 09:00 200 210"});

    QHash<QString, ListedCurrency> listed;
    for (const ListedCurrency& c : currencyList(company())) {
        EXPECT_FALSE(listed.contains(c.arzCod)) << "listed twice: " << c.arzCod.toStdString();
        listed.insert(c.arzCod, c);
    }

    ASSERT_TRUE(listed.contains("93"));
    EXPECT_FALSE(listed["93"].buy);
    EXPECT_FALSE(listed["93"].sell);
    ASSERT_TRUE(currentRate(company(), "93"));
    EXPECT_EQ(currentRate(company(), "93")->buy, 200);

    ASSERT_TRUE(listed.contains("94"));
    EXPECT_EQ(listed["94"].buy, 200);
    EXPECT_EQ(listed[demo::kUsd].sell, demo::kUsdSell);
    ASSERT_TRUE(listed.contains(demo::kAed));  // never quoted, still listed
    EXPECT_FALSE(listed[demo::kAed].buy);
}

struct LineCase {
    const char* name;
    AccountCodes account;
    BankAccountSet set;
    const char* currency;  // "" for a rial line
};

class AccountLineCurrency : public CurrencyTest,
                            public ::testing::WithParamInterface<LineCase> {};

TEST_P(AccountLineCurrency, ComesFromTheCashBoxOrTheMatchingBankAccountSet) {
    const LineCase& c = GetParam();
    const auto currency = accountCurrency(company(), c.account, c.set);
    if (QString(c.currency).isEmpty()) {
        EXPECT_FALSE(currency) << currency->arzCod.toStdString();
    } else {
        ASSERT_TRUE(currency);
        EXPECT_EQ(currency->arzCod, c.currency);
        EXPECT_FALSE(currency->arzNam.isEmpty());
    }
}

// Demo: cash box 3 is 101-0002-11001 in dollars; cash box 1 (null code) and 2 (empty code) are in
// rials; bank account 4 is in dollars with J = 102-0002-20004 and A = 201-0001-20004.
INSTANTIATE_TEST_SUITE_P(
    Demo, AccountLineCurrency,
    ::testing::Values(
        LineCase{"ForeignCashBox", {"101", "0002", "11001", "", ""}, BankAccountSet::Own, "01"},
        LineCase{"ForeignCashBoxOtherProject",
                 {"101", "0002", "11001", "", "P0001"}, BankAccountSet::Own, ""},
        LineCase{"RialCashBoxNullCode", {"101", "0001", "10001", "", ""}, BankAccountSet::Own, ""},
        LineCase{"RialCashBoxEmptyCode", {"101", "0001", "10002", "", ""}, BankAccountSet::Own,
                 ""},
        LineCase{"BankOwnAccount", {"102", "0002", "20004", "", ""}, BankAccountSet::Own, "01"},
        LineCase{"BankOwnAccountOnIssuedSet",
                 {"102", "0002", "20004", "", ""}, BankAccountSet::IssuedCheques, ""},
        LineCase{"BankIssuedAccount",
                 {"201", "0001", "20004", "", ""}, BankAccountSet::IssuedCheques, "01"},
        LineCase{"BankIssuedAccountOnOwnSet",
                 {"201", "0001", "20004", "", ""}, BankAccountSet::Own, ""},
        LineCase{"RialBank", {"102", "0001", "20001", "", ""}, BankAccountSet::Own, ""},
        LineCase{"QuoteInCode", {"101'", "0002", "11001", "", ""}, BankAccountSet::Own, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CurrentRateRule, EachScreenValuesAtItsSideAndMatchesItsBankSet) {
    const auto usd = currentRate(company(), demo::kUsd);
    ASSERT_TRUE(usd);
    const struct {
        Screen screen;
        double rate;
        BankAccountSet set;
    } cases[] = {
        {Screen::CashReceipt, demo::kUsdBuy, BankAccountSet::Own},
        {Screen::CashPayment, demo::kUsdSell, BankAccountSet::Own},
        {Screen::BankDeposit, demo::kUsdBuy, BankAccountSet::Own},
        {Screen::BankWithdrawal, demo::kUsdSell, BankAccountSet::Own},
        {Screen::Transfer, demo::kUsdBuy, BankAccountSet::Own},
        {Screen::ReceivedCheque, demo::kUsdBuy, BankAccountSet::Own},
        {Screen::IssuedCheque, demo::kUsdSell, BankAccountSet::IssuedCheques},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(int(c.screen));
        EXPECT_EQ(rateOf(*usd, defaultRateSide(c.screen)), c.rate);
        EXPECT_EQ(bankAccountSet(c.screen), c.set);
    }
}

}  // namespace
}  // namespace tr::currency
