// Select ... Into gives each new column the declared type of its expression where one is known
// (a cast or convert, a column), as the server does; other expressions get their kind's type.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::engine::testing::EngineTest;

class SelectIntoTypes : public EngineTest {};

TEST_F(SelectIntoTypes, ColumnsKeepTheDeclaredTypeOfTheirExpression) {
    db->execute("Create Table Src (Code Varchar(12), Amount Float)");
    db->execute("Insert Into Src Values ('a', 1.5)");
    db->execute(
        "Select Cast('' As Varchar(100)) As X, Convert(Char(7), Code) As C, Cast(Amount As Int) As "
        "I, "
        "Cast(Code As Float) As F, Cast(1 As NVarchar(20)) As N, Cast('' As Varchar) As D, Code, "
        "Code + 'x' As Joined, Amount Into ##T From Src Where 1 = 0");
    const struct {
        const char* column;
        int length;
    } expected[] = {{"X", 100}, {"C", 7},  {"I", 4},     {"F", 8},
                    {"N", 40},  {"D", 30}, {"Code", 12}, {"Amount", 8}};
    for (const auto& e : expected) {
        EXPECT_EQ(
            value(QStringLiteral("Select Col_Length('tempdb..##T', '%1')").arg(e.column)).toInt(),
            e.length)
            << e.column;
    }
    // The widths hold for later writes: the cast made room for 100 characters, no more.
    db->execute("Insert Into ##T (X) Values ('" + QStringLiteral("y").repeated(100) + "')");
    EXPECT_THROW(
        db->execute("Insert Into ##T (X) Values ('" + QStringLiteral("y").repeated(101) + "')"),
        tr::db::DatabaseError);
}
