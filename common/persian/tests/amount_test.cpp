// Reading typed amounts (what is accepted, what is refused and why), the one display format and
// the one rounding.
#include "common/persian/amount.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>
#include <limits>

namespace tr::persian {
namespace {

using P = AmountProblem;

struct ReadCase {
    const char* text;
    P problem;
    double value = 0;
    AmountRules rules = {};
};

constexpr AmountRules kNegative{false, true, 3};
constexpr AmountRules kRequired{true, false, 3};

const ReadCase kReadCases[] = {
    // Digits of the three scripts, alone and mixed.
    {"2500000", P::None, 2500000},
    {"۲۵۰۰۰۰۰", P::None, 2500000},
    {"٢٥٠٠٠٠٠", P::None, 2500000},
    {"۱2٣", P::None, 123},
    // Grouping: comma, Arabic thousands separator, Arabic comma, blanks; groups of three.
    {"12,500,000", P::None, 12500000},
    {"۱۲٬۵۰۰٬۰۰۰", P::None, 12500000},
    {"۱۲،۵۰۰", P::None, 12500},
    {"12 500 000", P::None, 12500000},
    {"1,0000", P::Grouping},
    {"1,5", P::Grouping},  // a decimal comma is not read as twelve times too much
    {"1,,000", P::Grouping},
    {",500", P::Grouping},
    {"500,", P::Grouping},
    {"1,000.5,0", P::Grouping},
    {"1234,567", P::Grouping},
    // One decimal point: '.', the Arabic decimal separator, the Persian '/'.
    {"1250.5", P::None, 1250.5},
    {"۱۲۵۰٫۵", P::None, 1250.5},
    {"1250/75", P::None, 1250.75},
    {".5", P::None, 0.5},
    {"7.", P::None, 7},
    {"1.2.3", P::TwoPoints},
    {"1٫2/3", P::TwoPoints},
    {"1.250", P::None, 1.25},  // trailing zeros are no decimals
    {"1.2345", P::TooManyDecimals},
    {"0.125", P::None, 0.125},
    // Blanks and direction marks around the number are not part of it.
    {"  4500  ", P::None, 4500},
    {"\u200F4500\u200E", P::None, 4500},
    // Anything else is refused, never read as a smaller number or as zero.
    {"5a000", P::NotANumber},
    {"12ريال", P::NotANumber},
    {"1e6", P::NotANumber},
    {"inf", P::NotANumber},
    {"nan", P::NotANumber},
    {"+5", P::NotANumber},
    {"5-", P::NotANumber},
    {".", P::NotANumber},
    {"-", P::NotANumber},
    {"--5", P::NotANumber, 0, kNegative},
    // A minus only where negatives are allowed.
    {"-500", P::Negative},
    {"-500", P::None, -500, kNegative},
    {"\u2212۵۰۰", P::None, -500, kNegative},
    {"-0", P::None, 0, kNegative},
    {"- 500", P::Grouping, 0, kNegative},
    // Empty: no amount, or refused where one is required.
    {"", P::None, 0},
    {"   ", P::None, 0},
    {"", P::Empty, 0, kRequired},
    // Digits a double holds exactly, and no more.
    {"999,999,999,999,999", P::None, 999999999999999.0},
    {"1,000,000,000,000,000", P::TooLarge},
    {"123456789012.345", P::None, 123456789012.345},
    {"1234567890123.456", P::TooLarge},
    {"0000000000000000001", P::None, 1},  // leading zeros carry no precision
    {"0.001", P::None, 0.001},
};

TEST(AmountReading, ReadsWhatUsersTypeAndRefusesTheRest) {
    for (const ReadCase& c : kReadCases) {
        const QString text = QString::fromUtf8(c.text);
        SCOPED_TRACE(c.text);
        const AmountReading r = readAmount(text, c.rules);
        EXPECT_EQ(r.problem, c.problem);
        EXPECT_EQ(r.value, c.value);
        EXPECT_EQ(r.empty, text.trimmed().isEmpty());
        if (r.ok()) {
            EXPECT_FALSE(std::signbit(r.value) && r.value == 0) << "a negative zero";
        }
    }
}

TEST(AmountReading, EveryRefusalHasItsOwnReasonNamingTheText) {
    QStringList reasons;
    for (const ReadCase& c : kReadCases) {
        const QString text = QString::fromUtf8(c.text);
        const AmountReading r = readAmount(text, c.rules);
        const QString message = amountRefusal(r, text, c.rules);
        if (r.ok()) {
            EXPECT_TRUE(message.isEmpty()) << c.text;
            continue;
        }
        ASSERT_FALSE(message.isEmpty()) << c.text;
        if (r.problem == P::Empty) {
            EXPECT_EQ(message, QStringLiteral("مبلغ وارد نشده است."));
        } else {
            EXPECT_TRUE(message.endsWith(QStringLiteral("(مبلغ وارد شده=") + text.trimmed() + ")"))
                << message.toStdString();
        }
        const QString reason = message.section(u'\n', 0, 0);
        if (!reasons.contains(reason)) reasons << reason;
    }
    EXPECT_EQ(reasons.size(), 7);  // one per problem
    EXPECT_EQ(kAmountMessageKind, QStringLiteral("1ER"));
    EXPECT_TRUE(amountRefusal(readAmount(u"1.2345"), u"1.2345").contains(u'3'));
}

TEST(AmountRounding, TiesGoToEvenAndNothingElseMoves) {
    EXPECT_EQ(roundAmount(0.125), 0.12);
    EXPECT_EQ(roundAmount(0.375), 0.38);
    EXPECT_EQ(roundAmount(-2.625), -2.62);
    EXPECT_EQ(roundAmount(2.5, 0), 2.0);
    EXPECT_EQ(roundAmount(3.5, 0), 4.0);
    EXPECT_EQ(roundAmount(1234.5678, 3), 1234.568);
    EXPECT_FALSE(std::signbit(roundAmount(-0.001)));
    // Past the digits a double holds there is nothing to round.
    EXPECT_EQ(roundAmount(1e300), 1e300);
    EXPECT_TRUE(std::isnan(roundAmount(std::numeric_limits<double>::quiet_NaN())));
}

TEST(AmountFormat, GroupsThousandsAndShowsOnlyTheDecimalsThereAre) {
    EXPECT_EQ(formatAmount(0), "0");
    EXPECT_EQ(formatAmount(999), "999");
    EXPECT_EQ(formatAmount(1000), "1,000");
    EXPECT_EQ(formatAmount(12500000), "12,500,000");
    EXPECT_EQ(formatAmount(1250.5), "1,250.5");
    EXPECT_EQ(formatAmount(1250.125), "1,250.125");
    EXPECT_EQ(formatAmount(1250.1256), "1,250.126");
    EXPECT_EQ(formatAmount(-3000.5), "-3,000.5");
    EXPECT_EQ(formatAmount(-0.0001), "0");                   // no "-0"
    EXPECT_EQ(formatAmount(1e15), "1,000,000,000,000,000");  // never an exponent
    EXPECT_EQ(formatAmount(52000.125, 2), "52,000.12");
    EXPECT_EQ(formatAmount(std::numeric_limits<double>::infinity()), "");

    EXPECT_EQ(amountEditText(0), "");
    EXPECT_EQ(amountEditText(2500000), "2500000");
    EXPECT_EQ(amountEditText(-12.5), "-12.5");

    EXPECT_EQ(printAmount(12500000.5), QStringLiteral("۱۲,۵۰۰,۰۰۰/۵"));
    EXPECT_EQ(printAmount(-7), QStringLiteral("-۷"));
}

TEST(AmountFormat, WhatIsShownReadsBackAsTheSameAmount) {
    const double amounts[] = {0,   1,           999.999,          1000,    -1234567.891,
                              0.5, 52000000.25, 999999999999.999, 123.456, 7.1};
    const AmountRules rules{false, true, 3};
    for (const double v : amounts) {
        SCOPED_TRACE(v);
        EXPECT_EQ(readAmount(formatAmount(v), rules).value, v);
        EXPECT_EQ(readAmount(amountEditText(v), rules).value, v);
        EXPECT_EQ(readAmount(printAmount(v), rules).value, v);
    }
}

}  // namespace
}  // namespace tr::persian
