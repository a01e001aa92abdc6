#pragma once
// Time-of-day texts from the system clock: "H:MM:SS", and the time stamp that makes global
// temporary table names unique (seconds since midnight, then the hundredths, unpadded).
#include <QString>
#include <QTime>

namespace tr {

QString timeText(const QTime& time = QTime::currentTime());
QString timeStamp(const QTime& time = QTime::currentTime());

}  // namespace tr
