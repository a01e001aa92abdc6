#include "common/clock.h"

namespace tr {

QString timeText(const QTime& time) {
    return QStringLiteral("%1:%2:%3")
        .arg(time.hour())
        .arg(time.minute(), 2, 10, QLatin1Char('0'))
        .arg(time.second(), 2, 10, QLatin1Char('0'));
}

QString timeStamp(const QTime& time) {
    const int seconds = time.hour() * 3600 + time.minute() * 60 + time.second();
    return QString::number(seconds) + QString::number(time.msec() / 10);
}

}  // namespace tr
