#pragma once
// Persian (solar) date texts "YYYY/MM/DD": validity, fiscal-period check and its message, month
// names, the module's own Persian-to-Gregorian conversion ("DD/MM/YYYY") and the day/month edit
// field handlers. Every rule here is the module's historical one, quirks included.
#include <QString>

namespace tr::persian {

// "" and "//" (an empty date mask) count as valid; callers that need a date test for emptiness.
bool isValidDate(const QString& text);

// The box of a date typed as day, month and year that makes it invalid; None for a valid date.
// All three boxes are required here: an empty year, month or day is at fault.
enum class DatePart { None, Day, Month, Year };
DatePart invalidDatePart(const QString& year, const QString& month, const QString& day);
// The refusal of an invalid date (code "1ER"), naming the date as typed.
QString invalidDateMessage(const QString& date);

enum class PeriodCheck { Inside, BeforeStart, AfterEnd };
// Texts compare in date order because every part has a fixed width.
PeriodCheck checkInPeriod(const QString& date, const QString& periodStart, const QString& periodEnd);
// The message shown (code "1ER") for BeforeStart / AfterEnd; empty for Inside.
QString periodMessage(PeriodCheck check, const QString& periodStart, const QString& periodEnd);

// 1..11 by name; every other number (12, 0, 13, negatives) is "اسفند".
QString monthName(int month);

// Fixed-offset conversion: departs from the true calendar by one day in some years and never
// yields 29 February (see docs/persian-to-gregorian.md).
QString persianToGregorian(const QString& date);
// Today's Persian date from the system clock, YYYY/MM/DD.
QString today();
// The date a new document starts with: today, moved into the fiscal period when it lies outside
// (a book of an earlier year opens on its last day).
QString defaultDocumentDate(const QString& periodStart, const QString& periodEnd);

// Persian and Arabic-Indic digits as Latin ones, so that a date typed on a Persian keyboard
// reads, stores and compares as the same text; other characters are kept.
QString latinDigits(const QString& text);

// Edit-field handlers: the clamping ones suit typing, the padding ones leaving the field.
QString clampDayText(const QString& text);    // above 31 -> "31"
QString padDayText(const QString& text);      // below 1 -> "1", then "0" in front of one digit
QString clampMonthText(const QString& text);  // above 12 -> "12"
QString padMonthText(const QString& text);    // below 1 -> "1", then "0" in front of one digit

}  // namespace tr::persian
