#include "common/persian/persian_date.h"

#include <QCalendar>
#include <QDate>

#include <algorithm>
#include <array>

namespace tr::persian {

namespace {

// Non-numeric text counts as 0, which makes a date part invalid.
int toNumber(const QString& text) {
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    return ok ? value : 0;
}

constexpr std::array<int, 12> kPersianMonthDays = {31, 31, 31, 31, 31, 31, 30, 30, 30, 30, 30, 29};
// Counted from March; February always has 28 days here, so 29 February is never produced.
constexpr std::array<int, 12> kGregorianMonthDaysFromMarch = {31, 30, 31, 30, 31, 31,
                                                              30, 31, 30, 31, 31, 28};

QString clampText(const QString& text, int maximum) {
    return toNumber(text) > maximum ? QString::number(maximum) : text;
}

QString padText(const QString& text) {
    QString result = toNumber(text) < 1 ? QStringLiteral("1") : text;
    if (result.trimmed().size() < 2) result = QLatin1Char('0') + result.trimmed();
    return result;
}

}  // namespace

bool isValidDate(const QString& text) {
    QString rest = text.trimmed();
    if (rest.isEmpty() || rest == QLatin1String("//")) return true;

    if (rest.indexOf(QLatin1Char('/')) != 4) return false;
    const QString year = rest.left(4).trimmed();
    rest.remove(0, 5);
    if (rest.indexOf(QLatin1Char('/')) != 2) return false;
    const QString month = rest.left(2).trimmed();
    rest.remove(0, 3);
    const QString day = rest.trimmed();

    if (year.isEmpty() || month.isEmpty() || day.isEmpty() || day.size() == 1) return false;
    const int yearNumber = toNumber(year);
    if (yearNumber == 0 || toNumber(month) == 0 || toNumber(day) == 0) return false;

    // Month and day compare as texts, as the fixed-width fields were always compared.
    auto notAfter = [](const QString& a, const char* b) {
        return a.compare(QLatin1String(b)) <= 0;
    };
    if (notAfter(month, "06") && notAfter(day, "31")) return true;
    // Leap years are counted from 1355, which itself (difference 0) is an ordinary year.
    const int fromBase = yearNumber - 1355;
    if (fromBase % 4 == 0 && fromBase % 100 != 0) return notAfter(month, "12") && notAfter(day, "30");
    if (notAfter(month, "11") && notAfter(day, "30")) return true;
    return month == QLatin1String("12") && notAfter(day, "29");
}

QString latinDigits(const QString& text) {
    QString result = text;
    for (QChar& c : result)
        if (c.isDigit() && c.unicode() > 0x7F) c = QChar(u'0' + c.digitValue());
    return result;
}

DatePart invalidDatePart(const QString& year, const QString& month, const QString& day) {
    const QString y = year.trimmed(), m = month.trimmed(), d = day.trimmed();
    const QString pad = QStringLiteral("0");
    const QString date = y + QLatin1Char('/') + (m.size() == 1 ? pad + m : m) + QLatin1Char('/') +
                         (d.size() == 1 ? pad + d : d);
    if (!y.isEmpty() && isValidDate(date)) return DatePart::None;
    // The box to correct: a year that is no year, then a month that is no month; otherwise the
    // day is beyond its month (31 in the seventh to eleventh month, 30 in a common last month).
    if (y.size() != 4 || toNumber(y) < 1) return DatePart::Year;
    if (m.isEmpty() || m.size() > 2 || toNumber(m) < 1 || toNumber(m) > 12) return DatePart::Month;
    return DatePart::Day;
}

QString invalidDateMessage(const QString& date) {
    return QStringLiteral("تاريخ وارد شده معتبر نمي\u200Fباشد.\n(") + date + QLatin1Char(')');
}

PeriodCheck checkInPeriod(const QString& date, const QString& periodStart, const QString& periodEnd) {
    if (date.compare(periodStart) < 0) return PeriodCheck::BeforeStart;
    if (date.compare(periodEnd) > 0) return PeriodCheck::AfterEnd;
    return PeriodCheck::Inside;
}

QString periodMessage(PeriodCheck check, const QString& periodStart, const QString& periodEnd) {
    // U+200F (right-to-left mark) sits between "مي" and "باشد" in both texts.
    switch (check) {
        case PeriodCheck::BeforeStart:
            return QStringLiteral("تاريخ وارد شده كوچكتر از تاريخ ابتداي دوره مالي مي\u200Fباشد.\n") +
                   QStringLiteral("(تاريخ ابتداي دوره=") + periodStart + QLatin1Char(')');
        case PeriodCheck::AfterEnd:
            return QStringLiteral("تاريخ وارد شده بزرگتر از تاريخ انتهاي دوره مالي مي\u200Fباشد.\n") +
                   QStringLiteral("(تاريخ انتهاي دوره=") + periodEnd + QLatin1Char(')');
        case PeriodCheck::Inside:
            break;
    }
    return {};
}

QString monthName(int month) {
    switch (month) {
        case 1: return QStringLiteral("فروردين");
        case 2: return QStringLiteral("ارديبهشت");
        case 3: return QStringLiteral("خرداد");
        case 4: return QStringLiteral("تير");
        case 5: return QStringLiteral("مرداد");
        case 6: return QStringLiteral("شهريور");
        case 7: return QStringLiteral("مهر");
        case 8: return QStringLiteral("آبان");
        case 9: return QStringLiteral("آذر");
        case 10: return QStringLiteral("دي");
        case 11: return QStringLiteral("بهمن");
        default: return QStringLiteral("اسفند");
    }
}

QString persianToGregorian(const QString& date) {
    const int year = toNumber(date.mid(0, 4));
    const int month = toNumber(date.mid(5, 2));
    const int day = toNumber(date.mid(8, 2));

    int gregorianYear = year + 621;
    // The years in which the first of Farvardin is taken to fall on 20 March; every other year
    // starts on 21 March.
    static constexpr std::array<int, 6> kTwentiethOfMarchYears = {1375, 1379, 1383, 1387, 1391, 1395};
    const bool early = std::find(kTwentiethOfMarchYears.begin(), kTwentiethOfMarchYears.end(), year) !=
                       kTwentiethOfMarchYears.end();
    int n = day + (early ? 19 : 20);
    for (int m = 1; m < month && m <= 12; ++m) n += kPersianMonthDays[m - 1];

    int gregorianMonth = 3;
    for (int length : kGregorianMonthDaysFromMarch) {
        if (length >= n) break;
        n -= length;
        ++gregorianMonth;
    }
    if (gregorianMonth > 12) {
        gregorianMonth -= 12;
        ++gregorianYear;
    }
    return QStringLiteral("%1/%2/%3")
        .arg(n, 2, 10, QLatin1Char('0'))
        .arg(gregorianMonth, 2, 10, QLatin1Char('0'))
        .arg(gregorianYear);
}

QString clampDayText(const QString& text) { return clampText(text, 31); }
QString padDayText(const QString& text) { return padText(text); }
QString clampMonthText(const QString& text) { return clampText(text, 12); }
QString padMonthText(const QString& text) { return padText(text); }

QString today() {
    const QCalendar jalali(QCalendar::System::Jalali);
    const QCalendar::YearMonthDay ymd = jalali.partsFromDate(QDate::currentDate());
    return QStringLiteral("%1/%2/%3")
        .arg(ymd.year, 4, 10, QLatin1Char('0'))
        .arg(ymd.month, 2, 10, QLatin1Char('0'))
        .arg(ymd.day, 2, 10, QLatin1Char('0'));
}

QString defaultDocumentDate(const QString& periodStart, const QString& periodEnd) {
    const QString date = today();
    if (!periodEnd.isEmpty() && date > periodEnd) return periodEnd;
    if (!periodStart.isEmpty() && date < periodStart) return periodStart;
    return date;
}

}  // namespace tr::persian
