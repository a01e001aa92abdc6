#include <gtest/gtest.h>

#include "common/clock.h"

TEST(Clock, TimeTextHasUnpaddedHoursAndTwoDigitMinutesAndSeconds) {
    EXPECT_EQ(tr::timeText(QTime(9, 5, 7)), QStringLiteral("9:05:07"));
    EXPECT_EQ(tr::timeText(QTime(0, 0, 0)), QStringLiteral("0:00:00"));
    EXPECT_EQ(tr::timeText(QTime(23, 59, 59)), QStringLiteral("23:59:59"));
}

TEST(Clock, TimeStampIsSecondsSinceMidnightThenUnpaddedHundredths) {
    EXPECT_EQ(tr::timeStamp(QTime(1, 2, 3, 40)), QStringLiteral("37234"));
    EXPECT_EQ(tr::timeStamp(QTime(1, 2, 3, 450)), QStringLiteral("372345"));
    EXPECT_EQ(tr::timeStamp(QTime(0, 0, 0, 0)), QStringLiteral("00"));
}
