#pragma once
// Persian (solar) date texts "YYYY/MM/DD": validity, fiscal-period check and its message, month
// names, the module's own Persian-to-Gregorian conversion ("DD/MM/YYYY") and the day/month edit
// field handlers. Every rule here is the module's historical one, quirks included.
#include <QString>

namespace tr::persian {

// "" and "//" (an empty date mask) count as valid; callers that need a date test for emptiness.
bool isValidDate(const QString& text);

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

// Edit-field handlers: the clamping ones suit typing, the padding ones leaving the field.
QString clampDayText(const QString& text);    // above 31 -> "31"
QString padDayText(const QString& text);      // below 1 -> "1", then "0" in front of one digit
QString clampMonthText(const QString& text);  // above 12 -> "12"
QString padMonthText(const QString& text);    // below 1 -> "1", then "0" in front of one digit

}  // namespace tr::persian
