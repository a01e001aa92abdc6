#include <gtest/gtest.h>

#include <QCalendar>
#include <QDate>
#include <set>

#include "common/persian/persian_date.h"

using tr::persian::persianToGregorian;

namespace {

const QCalendar kJalali(QCalendar::System::Jalali);

QString persianText(int year, int month, int day) {
    return QStringLiteral("%1/%2/%3")
        .arg(year, 4, 10, QLatin1Char('0'))
        .arg(month, 2, 10, QLatin1Char('0'))
        .arg(day, 2, 10, QLatin1Char('0'));
}

// Days by which the module's conversion is later (+) or earlier (-) than Qt's Jalali calendar.
int departureFromQt(int year, int month, int day) {
    const QString ours = persianToGregorian(persianText(year, month, day));
    const QDate oursDate = QDate::fromString(ours, QStringLiteral("dd/MM/yyyy"));
    const QDate qts(year, month, day, kJalali);
    EXPECT_TRUE(oursDate.isValid()) << ours.toStdString();
    return static_cast<int>(qts.daysTo(oursDate));
}

// Years whose first of Farvardin Qt puts on 20 March while the conversion uses 21 March
// (listed in docs/persian-to-gregorian.md).
const std::set<int> kYearsOneDayLate = {1399, 1403, 1407, 1408, 1411, 1412, 1415, 1416, 1419, 1420};

bool gregorianLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

}  // namespace

TEST(PersianToGregorian, FixedOffsetYearsAndMonthBoundaries) {
    const std::pair<const char*, const char*> cases[] = {
        {"1385/01/01", "21/03/2006"},
        {"1387/01/01", "20/03/2008"},  // one of the six years starting on 20 March
        {"1385/01/11", "31/03/2006"},
        {"1385/10/01", "22/12/2006"},
        {"1385/10/11", "01/01/2007"},  // the year rolls over in Dey
        {"1385/12/29", "20/03/2007"},
        {"1387/12/30", "20/03/2009"},
        {"1402/12/10", "01/03/2024"},  // never 29 February
        {"1403/01/01", "21/03/2024"},
    };
    for (const auto& [persian, gregorian] : cases) {
        EXPECT_EQ(persianToGregorian(QString::fromUtf8(persian)), QString::fromUtf8(gregorian)) << persian;
    }
}

TEST(PersianToGregorian, FirstOfEveryMonthAgreesWithQtButInTheListedYears) {
    std::set<int> lateYears;
    for (int year = 1354; year <= 1420; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const int departure = departureFromQt(year, month, 1);
            ASSERT_TRUE(departure == 0 || departure == 1) << year << "/" << month << ": " << departure;
            if (departure == 1) lateYears.insert(year);
            EXPECT_EQ(departure == 1, kYearsOneDayLate.count(year) == 1) << year << "/" << month;
        }
    }
    EXPECT_EQ(lateYears, kYearsOneDayLate);
}

TEST(PersianToGregorian, EveryDayDepartsByAtMostOneDayLateAndOnlyWhereDocumented) {
    for (int year = 1354; year <= 1420; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= kJalali.daysInMonth(month, year); ++day) {
                // From 10 Esfand on, a year that ends in a Gregorian leap February runs a day late
                // because 29 February is skipped.
                const bool expectedLate = kYearsOneDayLate.count(year) == 1 ||
                                          (month == 12 && day >= 10 && gregorianLeap(year + 622));
                ASSERT_EQ(departureFromQt(year, month, day), expectedLate ? 1 : 0)
                    << persianText(year, month, day).toStdString();
            }
        }
    }
}
