#include <gtest/gtest.h>

#include "common/persian/persian_date.h"

using namespace tr::persian;

namespace {

struct ValidityCase {
    const char* text;
    bool valid;
};

// Shape, emptiness, the month-length rules and the leap rule counted from 1355.
const ValidityCase kValidityCases[] = {
    {"", true},
    {"//", true},
    {"  //  ", true},
    {"1385/01/15", true},
    {" 1385/01/15 ", true},
    {"1385/06/31", true},
    {"1385/07/31", false},
    {"1385/07/30", true},
    {"1385/11/30", true},
    {"1385/12/29", true},
    {"1385/12/30", false},  // 1385 - 1355 = 30: ordinary year
    {"1387/12/30", true},   // 1387 - 1355 = 32: leap year
    {"1387/12/31", false},
    {"1355/12/30", false},  // the base year itself is ordinary
    {"1359/12/30", true},
    {"1455/12/30", false},  // difference 100
    {"1385/13/01", false},
    {"1385/00/10", false},
    {"1385/01/00", false},
    {"0000/01/01", false},
    {"1385/1/15", false},   // second slash not third in the rest
    {"1385/01/5", false},   // one-character day
    {"138/01/15", false},
    {"13850/1/15", false},
    {"1385-01-15", false},
    {"1385/ab/15", false},
    {"abcd/01/15", false},
    {"1385/01/", false},
    {"1385/01/3x", false},
};

class DateValidity : public ::testing::TestWithParam<ValidityCase> {};

TEST_P(DateValidity, FollowsTheFixedWidthRules) {
    const ValidityCase& c = GetParam();
    EXPECT_EQ(isValidDate(QString::fromUtf8(c.text)), c.valid) << c.text;
}

INSTANTIATE_TEST_SUITE_P(Table, DateValidity, ::testing::ValuesIn(kValidityCases));

const QString kStart = QStringLiteral("1403/01/01");
const QString kEnd = QStringLiteral("1403/12/29");

}  // namespace

TEST(FiscalPeriod, DatesCompareAsTextAgainstBothEnds) {
    EXPECT_EQ(checkInPeriod(QStringLiteral("1403/01/01"), kStart, kEnd), PeriodCheck::Inside);
    EXPECT_EQ(checkInPeriod(QStringLiteral("1403/12/29"), kStart, kEnd), PeriodCheck::Inside);
    EXPECT_EQ(checkInPeriod(QStringLiteral("1402/12/29"), kStart, kEnd), PeriodCheck::BeforeStart);
    EXPECT_EQ(checkInPeriod(QStringLiteral("1404/01/01"), kStart, kEnd), PeriodCheck::AfterEnd);
    EXPECT_TRUE(periodMessage(PeriodCheck::Inside, kStart, kEnd).isEmpty());
}

TEST(FiscalPeriod, MessagesCarryLineBreakAndRightToLeftMark) {
    const QString rlm(QChar(0x200F));
    EXPECT_EQ(periodMessage(PeriodCheck::BeforeStart, kStart, kEnd),
              QStringLiteral("تاريخ وارد شده كوچكتر از تاريخ ابتداي دوره مالي مي") + rlm +
                  QStringLiteral("باشد.") + QChar(u'\n') + QStringLiteral("(تاريخ ابتداي دوره=1403/01/01)"));
    EXPECT_EQ(periodMessage(PeriodCheck::AfterEnd, kStart, kEnd),
              QStringLiteral("تاريخ وارد شده بزرگتر از تاريخ انتهاي دوره مالي مي") + rlm +
                  QStringLiteral("باشد.") + QChar(u'\n') + QStringLiteral("(تاريخ انتهاي دوره=1403/12/29)"));
    // Arabic yeh and kaf, as the rest of the product's texts.
    const QString message = periodMessage(PeriodCheck::AfterEnd, kStart, kEnd);
    EXPECT_FALSE(message.contains(QChar(0x06CC)));
    EXPECT_FALSE(message.contains(QChar(0x06A9)));
}

TEST(FiscalPeriod, NewDocumentsStartInsideThePeriod) {
    const QString today = tr::persian::today();
    EXPECT_EQ(tr::persian::defaultDocumentDate("1300/01/01", "1300/12/29"), QStringLiteral("1300/12/29"));
    EXPECT_EQ(tr::persian::defaultDocumentDate("1500/01/01", "1500/12/29"), QStringLiteral("1500/01/01"));
    EXPECT_EQ(tr::persian::defaultDocumentDate("1300/01/01", "1500/12/29"), today);
}

TEST(MonthNames, TwelveAndOutOfRangeNumbersAreEsfand) {
    EXPECT_EQ(monthName(1), QStringLiteral("فروردين"));
    EXPECT_EQ(monthName(10), QStringLiteral("دي"));
    EXPECT_EQ(monthName(11), QStringLiteral("بهمن"));
    for (int month : {12, 13, 0, -1}) EXPECT_EQ(monthName(month), QStringLiteral("اسفند")) << month;
}

TEST(FieldHandlers, ClampOnTypingAndPadOnLeaving) {
    struct Case {
        const char* text;
        const char* clampedDay;
        const char* paddedDay;
        const char* clampedMonth;
        const char* paddedMonth;
    };
    const Case cases[] = {
        {"45", "31", "45", "12", "45"},  // padding does not clamp
        {"31", "31", "31", "12", "31"},
        {"12", "12", "12", "12", "12"},
        {"13", "13", "13", "12", "13"},
        {"5", "5", "05", "5", "05"},
        {"0", "0", "01", "0", "01"},
        {"", "", "01", "", "01"},
        {"x", "x", "01", "x", "01"},
        {"-3", "-3", "01", "-3", "01"},
        {" 7", " 7", "07", " 7", "07"},
    };
    for (const Case& c : cases) {
        const QString text = QString::fromUtf8(c.text);
        EXPECT_EQ(clampDayText(text), QString::fromUtf8(c.clampedDay)) << c.text;
        EXPECT_EQ(padDayText(text), QString::fromUtf8(c.paddedDay)) << c.text;
        EXPECT_EQ(clampMonthText(text), QString::fromUtf8(c.clampedMonth)) << c.text;
        EXPECT_EQ(padMonthText(text), QString::fromUtf8(c.paddedMonth)) << c.text;
    }
}

// The box a user must correct: the day beyond its month, then a month or a year that is none.
TEST(PersianDate, InvalidDateNamesTheBoxAtFault) {
    struct Case {
        const char *year, *month, *day;
        DatePart part;
    };
    const Case cases[] = {
        {"1404", "07", "30", DatePart::None},  {"1404", "07", "31", DatePart::Day},
        {"1404", "06", "31", DatePart::None},  {"1403", "12", "30", DatePart::None},  // leap
        {"1404", "12", "30", DatePart::Day},   {"1404", "12", "29", DatePart::None},
        {"1404", "7", "5", DatePart::None},    {"1404", "00", "05", DatePart::Month},
        {"1404", "13", "05", DatePart::Month}, {"1404", "", "05", DatePart::Month},
        {"1404", "03", "", DatePart::Day},     {"1404", "03", "00", DatePart::Day},
        {"", "03", "05", DatePart::Year},      {"140", "03", "05", DatePart::Year},
        {"0000", "03", "05", DatePart::Year},  {"", "", "", DatePart::Year},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(invalidDatePart(QString::fromUtf8(c.year), QString::fromUtf8(c.month),
                                  QString::fromUtf8(c.day)),
                  c.part)
            << c.year << "/" << c.month << "/" << c.day;
    }
    EXPECT_EQ(latinDigits(QString::fromUtf8("۱۴۰۳/١٢/30")), QStringLiteral("1403/12/30"));
}
