// What a write may put into a column: text no wider than the column (blanks past the width are
// dropped, anything else refused as the server refuses it) and only finite numbers, by every kind
// of write, into company tables and ## tables alike; a refused write changes nothing.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"
#include "db/schema/schema.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

namespace {

const QString kTruncated = QStringLiteral("String or binary data would be truncated.");
const QString kOverflow =
    QStringLiteral("Arithmetic overflow error converting expression to data type float.");

}  // namespace

class WrittenValues : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        tr::schema::createCompanySchema(*db);
        db->execute("Create Table ##W (Code Varchar(5), Name NVarchar(10), Amount Float, Qty Int)");
    }
    int count(const char* table) {
        return value(QStringLiteral("Select Count(*) From ") + table).toInt();
    }
};

TEST_F(WrittenValues, TextWiderThanItsColumnIsRefusedByEveryKindOfWrite) {
    const QString longText = QStringLiteral("x").repeated(1000000);
    const QString des =
        QStringLiteral("ش").repeated(201);  // one character too many, two bytes each
    db->execute("Insert Into ##W (Code, Name) Values ('a', 'bbbbbbbbbb')");
    const QString writes[] = {
        "Insert Into Asnad (TypeSys, Des) Values ('1', '" + longText + "')",
        "Insert Into Asnad (TypeSys, Des) Values ('1', N'" + des + "')",
        "Insert Into Asnad (TypeSys, AtfCh) Values ('1', '" + QStringLiteral("1").repeated(21) +
            "')",
        "Insert Into Asnad (TypeSys, AtfCh) Select '1', Name + Name + Name From ##W",
        "Insert Into ##W (Code) Values ('abcdef')",
        "Insert Into ##W Values ('a', 'b' + '" + QStringLiteral("c").repeated(10) + "', 0, 0)",
        "Insert Into ##W (Code) Select Name From ##W",
        "Insert Into ##W Select * From ##W Union All Select 'abcdef', '', 0, 0",
        "Update ##W Set Code = 'abcdef'",
        "Update ##W Set Name = Name + 'c'",
    };
    for (const QString& sql : writes)
        EXPECT_EQ(refusal(sql), kTruncated) << sql.left(80).toStdString();
    EXPECT_EQ(count("Asnad"), 0);
    EXPECT_EQ(value("Select Code + '|' + Name From ##W").toString(),
              QStringLiteral("a|bbbbbbbbbb"));
}

TEST_F(WrittenValues, TextThatFitsIsStoredWholeAndBlanksPastTheWidthAreDropped) {
    const QString des = QStringLiteral("ش").repeated(200);
    db->execute("Insert Into Asnad (TypeSys, Des, AtfCh) Values ('1', N'" + des +
                "', '12345678901234567890')");
    EXPECT_EQ(value("Select Des From Asnad").toString(), des);
    db->execute("Insert Into ##W (Code, Name) Values ('abc' + '      ', N'علی  ')");
    EXPECT_EQ(value("Select Code + '|' From ##W").toString(), QStringLiteral("abc  |"));
    db->execute("Update ##W Set Code = 'abcde   '");
    EXPECT_EQ(value("Select DataLength(Code) From ##W").toInt(), 5);
    // Copying a column into one at least as wide needs no check, and keeps the value.
    db->execute("Insert Into ##W (Name) Select Code From ##W");
    EXPECT_EQ(value("Select Count(*) From ##W Where Name = 'abcde'").toInt(), 1);
}

TEST_F(WrittenValues, NumbersThatAreNotFiniteAreRefusedAndReadingNeverFails) {
    db->execute("Insert Into ##W (Code, Amount, Qty) Values ('a', 1e308, 1)");
    const QString writes[] = {
        "Update ##W Set Amount = Amount * 10",
        "Insert Into ##W (Amount) Select Amount * 10 From ##W",
        "Insert Into ##W (Amount) Values (1e308 * 10)",
        "Insert Into ##W (Amount) Values (-1e308 - 1e308)",
        "Insert Into ##W (Qty) Select Amount + Amount From ##W",
        "Insert Into ##W (Amount) Values ('1e400')",
        "Insert Into Asnad (TypeSys, Bed) Select '1', Amount * 10 From ##W",
    };
    for (const QString& sql : writes) EXPECT_EQ(refusal(sql), kOverflow) << sql.toStdString();
    EXPECT_EQ(count("##W"), 1);
    EXPECT_EQ(count("Asnad"), 0);
    // Every row the engine let in can be read back, as a number and as text.
    EXPECT_DOUBLE_EQ(value("Select Amount From ##W").toDouble(), 1e308);
    EXPECT_EQ(value("Select Cast(Amount As Varchar(30)) From ##W").toString(),
              QStringLiteral("1e+308"));
}

TEST_F(WrittenValues, StatementsSharingATranslationCheckTheirOwnValues) {
    // The same statement shape with another value shares its translation and binds the value.
    db->execute("Insert Into ##W (Code) Values ('abc')");
    EXPECT_EQ(refusal("Insert Into ##W (Code) Values ('abcdefgh')"), kTruncated);
    db->execute("Update ##W Set Amount = 2.5 Where Code = 'abc'");
    EXPECT_EQ(value("Select Amount From ##W Where Code = 'abc'").toDouble(), 2.5);
}
