// The date service's own duties: telling the user about a date outside the fiscal period,
// today's Persian date, and keeping typed day and month fields in range.
#include "host/sdk/my_date.h"

#include <gtest/gtest.h>

#include <QCalendar>
#include <QCoreApplication>
#include <QDate>
#include <QKeyEvent>
#include <QLineEdit>

#include "common/persian/persian_date.h"
#include "host/sdk/global.h"
#include "tests/support/recording_message_dialog.h"

namespace {

TEST(MyDate, OutsideTheFiscalPeriodTellsTheUserAndFails) {
    tr::sdk::Global g = tr::sdk::demoGlobal();
    g.fiscalStart = "1403/01/01";
    g.fiscalEnd = "1403/12/30";
    tr::test::RecordingMessageDialog dlg;
    tr::sdk::MyDate date(&g, &dlg);

    EXPECT_TRUE(date.checkInFiscalPeriod("1403/01/01"));
    EXPECT_TRUE(date.checkInFiscalPeriod("1403/12/30"));
    EXPECT_TRUE(dlg.shown().isEmpty());

    EXPECT_FALSE(date.checkInFiscalPeriod("1402/12/29"));
    ASSERT_EQ(dlg.shown().size(), 1);
    EXPECT_EQ(dlg.last().code, "1ER");
    EXPECT_EQ(dlg.last().text, tr::persian::periodMessage(tr::persian::PeriodCheck::BeforeStart,
                                                          g.fiscalStart, g.fiscalEnd));
    EXPECT_FALSE(date.checkInFiscalPeriod("1404/01/01"));
    EXPECT_TRUE(dlg.last().text.contains("1403/12/30"));

    g.fiscalEnd = "1404/12/29";  // read at every check
    EXPECT_TRUE(date.checkInFiscalPeriod("1404/01/01"));
}

TEST(MyDate, TodayIsThePersianDateOfTheSystemDate) {
    const QString today = tr::sdk::MyDate().today();
    const auto ymd = QCalendar(QCalendar::System::Jalali).partsFromDate(QDate::currentDate());
    ASSERT_EQ(today.size(), 10);
    EXPECT_EQ(today.left(4).toInt(), ymd.year);
    EXPECT_EQ(today.mid(5, 2).toInt(), ymd.month);
    EXPECT_EQ(today.mid(8, 2).toInt(), ymd.day);
    EXPECT_TRUE(tr::persian::isValidDate(today));
}

void type(QLineEdit& edit, const QString& text) {
    for (QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(&edit, &press);
    }
}

void leave(QLineEdit& edit) {
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&edit, &enter);
}

TEST(MyDate, DayAndMonthFieldsClampWhileTypingAndPadOnLeaving) {
    tr::sdk::MyDate date;
    QLineEdit day, month;
    date.attachDayField(&day);
    date.attachMonthField(&month);

    type(day, "45");
    EXPECT_EQ(day.text(), "31");
    type(month, "13");
    EXPECT_EQ(month.text(), "12");

    day.clear();
    type(day, "7");
    leave(day);
    EXPECT_EQ(day.text(), "07");
    month.clear();
    type(month, "0");
    leave(month);
    EXPECT_EQ(month.text(), "01");
}

}  // namespace
