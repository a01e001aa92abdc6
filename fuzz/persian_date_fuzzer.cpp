// Any text given to the date reader and the edit-field handlers gives an answer, never a crash;
// the input's first line is the date and the next two the fiscal period.
#include <cstdlib>

#include <QStringList>

#include "common/persian/persian_date.h"
#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QStringList lines = fuzzText(data, size).split(QLatin1Char('\n'));
    const QString date = lines.value(0);
    const QString start = lines.value(1, QStringLiteral("1404/01/01"));
    const QString end = lines.value(2, QStringLiteral("1404/12/29"));
    using namespace tr::persian;
    isValidDate(date);
    const PeriodCheck check = checkInPeriod(date, start, end);
    if (check == PeriodCheck::Inside && !periodMessage(check, start, end).isEmpty()) std::abort();
    persianToGregorian(date);
    monthName(date.toInt());
    clampDayText(date);
    padDayText(date);
    clampMonthText(date);
    padMonthText(date);
    defaultDocumentDate(start, end);
    return 0;
}
