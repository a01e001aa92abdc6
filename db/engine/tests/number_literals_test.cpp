// Number literals: only 0-9 make one, and one beyond a float's range is refused, the same whether
// the statement shares a translation with an earlier one (its literals bound as values) or not.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

class NumberLiterals : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        db->execute("Create Table T (a Int, b Float)");
        // Earlier statements of the same shapes: the ones below would share their translations.
        db->execute("Insert Into T (a, b) Values (1, 12)");
        db->execute("Update T Set b = 3 Where a = 1");
        value("Select 12 + 1");
    }
};

TEST_F(NumberLiterals, PersianAndArabicIndicDigitsAreRefusedNeverReadAsZero) {
    const struct {
        QString sql;
        QString near;
    } cases[] = {
        {QStringLiteral("Insert Into T (a, b) Values (2, ۱۲)"), QStringLiteral("۱۲")},
        {QStringLiteral("Select ۱۲ + 1"), QStringLiteral("۱۲")},
        {QStringLiteral("Update T Set b = ٣٤ Where a = 1"), QStringLiteral("٣٤")},
        {QStringLiteral("Select 12۳ + 1"), QStringLiteral("۳")},
        {QStringLiteral("Select 1 Where ۱ = 1"), QStringLiteral("۱")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(refusal(c.sql), QStringLiteral("Incorrect syntax near '%1'").arg(c.near))
            << c.sql.toStdString();
    EXPECT_EQ(value("Select Count(*) From T").toInt(), 1);
    EXPECT_EQ(value("Select b From T").toDouble(), 3);
    // In text they are just characters.
    EXPECT_EQ(value("Select N'۱۲' + '3'").toString(), QStringLiteral("۱۲3"));
}

TEST_F(NumberLiterals, ALiteralBeyondAFloatsRangeIsRefused) {
    for (const QString& literal : {QStringLiteral("1e309"), QStringLiteral("1.5E+400"),
                                   QStringLiteral("1e-400"), QStringLiteral("9").repeated(400)}) {
        const QString message = QStringLiteral(
                                    "The floating point value '%1' is out of the range of computer "
                                    "representation (8 bytes).")
                                    .arg(literal);
        EXPECT_EQ(refusal("Insert Into T (a, b) Values (2, " + literal + ")"), message);
        EXPECT_EQ(refusal("Select -" + literal + " + 1"), message);
    }
    EXPECT_EQ(value("Select Count(*) From T").toInt(), 1);
    EXPECT_DOUBLE_EQ(value("Select 1.5e308").toDouble(), 1.5e308);
    EXPECT_EQ(value("Select 1e-300 * 0").toDouble(), 0);
}
