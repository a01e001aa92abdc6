// A date the calendar does not have is refused in every document screen, where it is typed and
// again before the save, the cancellation and its undo; nothing reaches the book.
#include "cashbank/tests/documents/documents_fixture.h"
#include "common/persian/persian_date.h"

namespace tr::cashbank::testing {
namespace {

using tr::vouchers::HeaderField;

class DateValidityTest : public DocumentsTest {
  protected:
    static void typeDate(CashBankDocument& screen, const char* date) {
        const QStringList parts = QString::fromUtf8(date).split(QLatin1Char('/'));
        screen.dayTyped(parts[2]);
        screen.dayLeave(parts[2]);
        screen.monthTyped(parts[1]);
        screen.monthLeave(parts[1]);
        screen.setYear(parts[0]);
    }
    int savedLines(const CashBankScreen& screen) {
        return rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '") +
                    screen.kind().code + QStringLiteral("'"));
    }
};

TEST_F(DateValidityTest, EveryScreenRefusesADayItsMonthDoesNotHave) {
    // The book of both years, so that the leap day of 1403 lies inside the period.
    admin->global.fiscalStart = QStringLiteral("1403/01/01");
    for (const CashBankScreen& row : cashBankScreens()) {
        SCOPED_TRACE(row.kind().title.toStdString());
        auto screen = open(row.id);
        fillHeader(*screen, 4000);
        ASSERT_TRUE(addLine(*screen, 4000));

        for (const char* bad : {"1404/07/31", "1404/12/30"}) {
            typeDate(*screen, bad);
            admin->dialog.clearShown();
            EXPECT_FALSE(screen->dateLeave());
            EXPECT_EQ(screen->focus(), HeaderField::Date);
            EXPECT_FALSE(screen->cmdOkClick());
            ASSERT_EQ(admin->dialog.shown().size(), 2);
            EXPECT_EQ(admin->dialog.last().text,
                      tr::persian::invalidDateMessage(QString::fromUtf8(bad)));
            EXPECT_EQ(admin->dialog.last().code, s("1ER"));
            EXPECT_EQ(screen->focus(), HeaderField::Date);
            EXPECT_EQ(savedLines(row), 0);
            EXPECT_EQ(screen->grid().RecordCount(), 1);  // the user's line stays
        }
        // A year or month that is none sends the user to that box.
        screen->setYear(QStringLiteral("140"));
        EXPECT_FALSE(screen->headerLeave());
        EXPECT_EQ(screen->focus(), HeaderField::Year);
        typeDate(*screen, "1404/05/10");
        screen->monthTyped(QString());
        EXPECT_FALSE(screen->cmdOkClick());
        EXPECT_EQ(screen->focus(), HeaderField::Month);

        typeDate(*screen, "1403/12/30");
        admin->dialog.clearShown();
        EXPECT_TRUE(screen->dateLeave());
        ASSERT_TRUE(screen->cmdOkClick()) << admin->dialog.last().text.toStdString();
        EXPECT_EQ(screen->header().date(), QStringLiteral("1403/12/30"));
        EXPECT_GT(savedLines(row), 0);

        // The cancellation is dated by the boxes: an impossible date is refused before the
        // question, and so is the undo of a cancellation.
        typeDate(*screen, "1404/07/31");
        admin->dialog.clearShown();
        EXPECT_FALSE(screen->cmdAbtalClick());
        ASSERT_EQ(admin->dialog.shown().size(), 1);
        EXPECT_EQ(admin->dialog.last().code, s("1ER"));
        EXPECT_FALSE(screen->cancelled());
        typeDate(*screen, "1404/07/30");
        admin->dialog.answerYes();
        ASSERT_TRUE(screen->cmdAbtalClick()) << admin->dialog.last().text.toStdString();
        ASSERT_TRUE(screen->cancelled());
        typeDate(*screen, "1404/12/30");
        admin->dialog.clearShown();
        EXPECT_FALSE(screen->cmdAbtalClick());
        EXPECT_EQ(admin->dialog.shown().size(), 1);
        EXPECT_TRUE(screen->cancelled());
        EXPECT_TRUE(ledgerIsConsistent());
    }
}

TEST_F(DateValidityTest, DatesTypedOnAPersianKeyboardReadAsTheirNumbers) {
    auto receipt = open(ScreenId::CashGet);
    EXPECT_EQ(receipt->dayLeave(s("۵")), QStringLiteral("05"));
    EXPECT_EQ(receipt->monthTyped(s("۱۳")), QStringLiteral("12"));
    receipt->setYear(s("۱۴۰۴"));
    EXPECT_EQ(receipt->header().date(), QStringLiteral("1404/12/05"));
    EXPECT_TRUE(receipt->dateLeave());
}

}  // namespace
}  // namespace tr::cashbank::testing
