// The rate dialog's arithmetic (rial = amount x rate through every edit, two-decimal ties-to-even
// rounding, single precision), its zero guards and its confirmation.
#include <gtest/gtest.h>

#include <cmath>

#include "currency/rate_dialog.h"
#include "tests/support/recording_message_dialog.h"

namespace tr::currency {
namespace {

using Field = RateDialog::Field;

class RateDialogTest : public ::testing::Test {
  protected:
    RateDialog make(float amount, float rate, const QString& second = {}, float factor = 1) {
        RateRequest request{QStringLiteral("دلار آمريکا"), second, {}};
        request.values.mainAmount = amount;
        request.values.mainRate = rate;
        request.values.factor = factor;
        return RateDialog(tr::dialog::Messages(&dialog), request);
    }
    static void expectRialIsAmountTimesRate(const RateDialog& d) {
        const RateValues& v = d.values();
        EXPECT_EQ(v.rialAmount, RateDialog::round2(double(v.mainAmount) * v.mainRate));
    }
    tr::test::RecordingMessageDialog dialog;
};

TEST_F(RateDialogTest, RialAmountFollowsAmountAndRateAndSetsTheRateWhenTyped) {
    RateDialog d = make(0, 52000);
    d.edit(Field::MainAmount, "1,000");
    EXPECT_EQ(d.value(Field::RialAmount), 52000000.0f);
    EXPECT_EQ(d.text(Field::RialAmount), "52,000,000");

    d.edit(Field::RialAmount, "52500000");
    EXPECT_EQ(d.value(Field::MainRate), 52500.0f);
    EXPECT_EQ(d.text(Field::MainRate), "52,500");
    EXPECT_TRUE(d.leave(Field::RialAmount));
    expectRialIsAmountTimesRate(d);

    // Persian digits as a Persian keyboard types them.
    d.edit(Field::MainAmount, QStringLiteral("۲٬۰۰۰"));
    EXPECT_EQ(d.value(Field::RialAmount), 105000000.0f);
    EXPECT_TRUE(dialog.shown().isEmpty());
}

TEST_F(RateDialogTest, ARialAmountWithoutAnAmountGivesTheAmount) {
    RateDialog d = make(0, 52000);
    d.edit(Field::RialAmount, "104000000");
    EXPECT_EQ(d.value(Field::MainAmount), 2000.0f);
    EXPECT_EQ(d.value(Field::MainRate), 52000.0f);
}

TEST_F(RateDialogTest, RecomputedValuesRoundToTwoDecimalsTiesToEven) {
    EXPECT_EQ(RateDialog::round2(0.125), 0.12f);   // a tie, down to even
    EXPECT_EQ(RateDialog::round2(0.375), 0.38f);   // a tie, up to even
    EXPECT_EQ(RateDialog::round2(-2.625), -2.62f);
    EXPECT_EQ(RateDialog::round2(0.126), 0.13f);

    // 1 rial for 8 units: 0.125 a unit, shown and held as 0.12; the rial amount then follows the
    // rounded rate once the field is left.
    RateDialog d = make(8, 1);
    d.edit(Field::RialAmount, "1");
    EXPECT_EQ(d.value(Field::MainRate), 0.12f);
    EXPECT_EQ(d.text(Field::MainRate), "0.12");
    d.leave(Field::RialAmount);
    EXPECT_EQ(d.value(Field::RialAmount), 0.96f);

    d.edit(Field::RialAmount, "3");
    EXPECT_EQ(d.value(Field::MainRate), 0.38f);
}

// A text that is not an amount changes nothing: it stays in its field, leaving the field or
// confirming says why, and the values keep rial = amount x rate.
TEST_F(RateDialogTest, ATextThatIsNotAnAmountIsKeptAndRefused) {
    RateDialog d = make(1000, 52000);
    const RateValues before = d.values();
    EXPECT_FALSE(d.edit(Field::MainRate, "52,0o0"));
    EXPECT_EQ(d.text(Field::MainRate), "52,0o0");
    EXPECT_EQ(d.values().mainRate, before.mainRate);
    EXPECT_EQ(d.values().rialAmount, before.rialAmount);
    EXPECT_TRUE(dialog.shown().isEmpty());  // typing is not interrupted

    EXPECT_FALSE(d.leave(Field::MainRate));
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().code, "1ER");
    EXPECT_TRUE(dialog.last().text.contains(QStringLiteral("52,0o0")));
    EXPECT_FALSE(d.cmdOkClick().has_value());
    EXPECT_EQ(dialog.shown().size(), 2);

    EXPECT_TRUE(d.edit(Field::MainRate, "52,500"));
    EXPECT_EQ(d.text(Field::MainRate), "52,500");
    EXPECT_TRUE(d.leave(Field::MainRate));
    ASSERT_TRUE(d.cmdOkClick().has_value());
    expectRialIsAmountTimesRate(d);
}

TEST_F(RateDialogTest, SinglePrecisionLosesDigitsPastSevenFigures) {
    RateDialog d = make(1, 0);
    d.edit(Field::MainRate, "123456789");
    EXPECT_EQ(d.value(Field::MainRate), 123456792.0f);
    EXPECT_EQ(d.text(Field::RialAmount), "123,456,792");

    // 1,234.56 x 52,000 is 64,197,120 in decimal; held in single precision the amount is
    // 1234.560059 and the rial amount lands on a multiple of 4 above it.
    d.edit(Field::MainAmount, "1234.56");
    d.edit(Field::MainRate, "52000");
    EXPECT_EQ(d.value(Field::RialAmount), 64197124.0f);
    expectRialIsAmountTimesRate(d);
}

TEST_F(RateDialogTest, SecondCurrencyFollowsThroughTheFactorAndKeepsTheRialAmount) {
    RateDialog d = make(1000, 52000, QStringLiteral("يورو"), 1.25f);
    EXPECT_EQ(d.value(Field::SecondAmount), 1250.0f);
    EXPECT_EQ(d.value(Field::SecondRate), 41600.0f);
    EXPECT_EQ(d.value(Field::RialAmount), 52000000.0f);

    const struct {
        Field field;
        const char* text;
        float amount, rate, factor, secondAmount, secondRate;
    } steps[] = {
        {Field::Factor, "1.1", 1000, 52000, 1.1f, 1100, 47272.73f},
        {Field::SecondAmount, "2200", 2000, 52000, 1.1f, 2200, 47272.73f},
        {Field::SecondRate, "50000", 2000, 55000, 1.1f, 2200, 50000},
        {Field::MainRate, "55000", 2000, 55000, 1.1f, 2200, 50000},
        {Field::RialAmount, "121000000", 2000, 60500, 1.1f, 2200, 55000},
        {Field::MainAmount, "3", 3, 60500, 1.1f, 3.3f, 55000},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.text);
        d.edit(s.field, s.text);
        d.leave(s.field);
        EXPECT_EQ(d.value(Field::MainAmount), s.amount);
        EXPECT_EQ(d.value(Field::MainRate), s.rate);
        EXPECT_EQ(d.value(Field::Factor), s.factor);
        EXPECT_EQ(d.value(Field::SecondAmount), s.secondAmount);
        EXPECT_EQ(d.value(Field::SecondRate), s.secondRate);
        expectRialIsAmountTimesRate(d);
    }
    EXPECT_TRUE(dialog.shown().isEmpty());
}

TEST_F(RateDialogTest, CaptionsCarryTheSecondCurrencysName) {
    RateDialog euro = make(1, 1, QStringLiteral("يورو"));
    EXPECT_EQ(euro.caption(Field::SecondAmount), QStringLiteral("مقدار ارز فرعي يورو"));
    EXPECT_EQ(euro.caption(Field::Factor), QStringLiteral("ضريب تبديل به يورو"));
    EXPECT_TRUE(euro.enabled(Field::SecondRate));

    RateDialog single = make(1, 1);
    EXPECT_EQ(single.caption(Field::Factor), QStringLiteral("ضريب تبديل :"));
    EXPECT_FALSE(single.enabled(Field::Factor));
    EXPECT_TRUE(single.enabled(Field::RialAmount));
}

struct GuardCase {
    Field field;
    const char* text;
    const char* message;  // nullptr: no guard
};

class RateDialogGuard : public RateDialogTest, public ::testing::WithParamInterface<GuardCase> {};

TEST_P(RateDialogGuard, AZeroRateOrFactorBecomesOneWithTheMessage) {
    const GuardCase& c = GetParam();
    RateDialog d = make(1000, 52000, QStringLiteral("يورو"), 2);
    d.edit(c.field, c.text);
    const bool left = d.leave(c.field);
    if (!c.message) {
        EXPECT_TRUE(left);
        EXPECT_TRUE(dialog.shown().isEmpty());
        return;
    }
    EXPECT_FALSE(left);  // focus goes back to the field
    EXPECT_EQ(d.text(c.field), "1");
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QString::fromUtf8(c.message));
    EXPECT_EQ(dialog.last().code, "1ER");
    expectRialIsAmountTimesRate(d);
}

const char* const kRateZero = "نرخ ارز نبايد صفر باشد !";
const char* const kFactorZero = "ضريب تبديل نبايد صفر باشد !";

INSTANTIATE_TEST_SUITE_P(
    Fields, RateDialogGuard,
    ::testing::Values(GuardCase{Field::MainRate, "0", kRateZero},
                      GuardCase{Field::MainRate, "", kRateZero},
                      GuardCase{Field::MainRate, "0.00", kRateZero},
                      GuardCase{Field::Factor, "0", kFactorZero},
                      GuardCase{Field::Factor, "", kFactorZero},
                      GuardCase{Field::SecondRate, "0", kFactorZero},
                      GuardCase{Field::MainRate, "0.5", nullptr},
                      GuardCase{Field::MainAmount, "0", nullptr},
                      GuardCase{Field::RialAmount, "", nullptr}));

TEST_F(RateDialogTest, ConfirmRefusesWithoutAmountsAndReturnsTheValues) {
    RateDialog empty = make(0, 52000);
    EXPECT_FALSE(empty.cmdOkClick());
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QStringLiteral("مبالغ تعيين نشده است !"));
    EXPECT_EQ(dialog.last().code, "1ER");

    RateDialog filled = make(0, 52000);
    filled.edit(Field::MainAmount, "1000");
    const auto values = filled.cmdOkClick();
    ASSERT_TRUE(values);
    EXPECT_EQ(values->mainAmount, 1000.0f);
    EXPECT_EQ(values->mainRate, 52000.0f);
    EXPECT_EQ(values->rialAmount, 52000000.0f);
    EXPECT_EQ(dialog.shown().size(), 1);
}

}  // namespace
}  // namespace tr::currency
