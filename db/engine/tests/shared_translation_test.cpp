// Texts that differ only in literal values share one translation with the values bound, and a
// translation is made again when a table it read is created, dropped or altered by any connection.
// The values such statements compute are tested from sql/literal-values.test.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

class SharedTranslation : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        db->execute(
            "Create Table Asnad (IDX Int Identity(1,1) Primary Key, Document Varchar(20), SanadNo Int, "
            "Koll Varchar(3), Des NVarchar(200), Bed Float, Bes Float)");
    }
};

TEST_F(SharedTranslation, EachTextBindsItsOwnValuesThroughOneTranslation) {
    const quint64 before = db->translations();
    struct Line {
        const char* document;
        int voucher;
        const char* des;
        const char* bed;
    };
    const Line lines[] = {{"1", 10, "O''Brien", "2.5"},    {"2", -3, "بابت افزايش سرمايه", "-7"},
                          {"3", 0, "", "1e3"},             {"4", 2147483647, "a -- b /* c */", "0.125"},
                          {"5", 12, "N''quoted'' inside", "-0.5"}};
    for (const Line& l : lines) {
        db->execute(QStringLiteral("Insert Into Asnad (Document, SanadNo, Des, Bed) Values ('%1', %2, N'%3', %4)")
                        .arg(QLatin1String(l.document))
                        .arg(l.voucher)
                        .arg(QString::fromUtf8(l.des), QLatin1String(l.bed)));
    }
    // Three shapes: (integer, decimal), (-integer, -integer) and (integer, -decimal); a minus
    // sign is part of the text's shape.
    EXPECT_EQ(db->translations() - before, 3u);
    EXPECT_EQ(value("Select Des From Asnad Where Document = '1'").toString(), QStringLiteral("O'Brien"));
    EXPECT_EQ(value("Select Des From Asnad Where Document = '2'").toString(),
              QString::fromUtf8("بابت افزايش سرمايه"));
    EXPECT_EQ(value("Select Des From Asnad Where Document = '4'").toString(), QStringLiteral("a -- b /* c */"));
    EXPECT_EQ(value("Select SanadNo From Asnad Where Document = '2'").toInt(), -3);
    EXPECT_EQ(value("Select SanadNo From Asnad Where Document = '4'").toLongLong(), 2147483647LL);
    EXPECT_DOUBLE_EQ(value("Select Bed From Asnad Where Document = '3'").toDouble(), 1000.0);
    EXPECT_DOUBLE_EQ(value("Select Bed From Asnad Where Document = '5'").toDouble(), -0.5);
    EXPECT_EQ(value("Select Count(*) From Asnad Where Bed < 0").toInt(), 2);
    EXPECT_EQ(value("Select Count(*) From Asnad Where Des = ''").toInt(), 1);
}

TEST_F(SharedTranslation, BatchesAndOddTextsStillRunWhole) {
    const auto r = db->execute("Select 1 As A Select 'two' As B");
    ASSERT_EQ(r.resultSets.size(), 2u);
    EXPECT_EQ(r.resultSets[1].rows.front().front().toString(), QStringLiteral("two"));
    // A literal holding the key's separator is not shared, and still round-trips.
    const QString odd = QStringLiteral("a") + QChar(1) + QStringLiteral("b");
    db->execute(QStringLiteral("Insert Into Asnad (Document, Des) Values ('odd', '%1')").arg(odd));
    EXPECT_EQ(value("Select Des From Asnad Where Document = 'odd'").toString(), odd);
    EXPECT_THROW(db->execute("Select Nope From Asnad Where Koll = '1'"), DatabaseError);
    EXPECT_THROW(db->execute("Select Des From Asnad Where Koll = 'unclosed"), DatabaseError);
}

TEST_F(SharedTranslation, ATableRecreatedWithOtherTypesRenewsTranslationsOfEveryConnection) {
    auto other = engine->open(QStringLiteral("Corvask_1_1404"));
    db->execute("Create Table ##Sums (V Varchar(10))");
    db->execute("Insert Into ##Sums (V) Values ('5')");
    const QString plain = QStringLiteral("Select V + V From ##Sums");
    const QString shaped = QStringLiteral("Select V + V From ##Sums Where V > 0");
    EXPECT_EQ(value(plain).toString(), QStringLiteral("55"));
    EXPECT_EQ(value(shaped).toString(), QStringLiteral("55"));
    const quint64 translated = db->translations();
    EXPECT_EQ(value(plain).toString(), QStringLiteral("55"));  // still current: not made again
    EXPECT_EQ(db->translations(), translated);

    // The other connection recreates the table with a number column.
    other->execute("Drop Table ##Sums");
    other->execute("Create Table ##Sums (V Int)");
    other->execute("Insert Into ##Sums (V) Values (5)");
    EXPECT_EQ(value(plain).toInt(), 10);
    EXPECT_EQ(value(shaped).toInt(), 10);

    // A column added later is seen by Select *.
    other->execute("Alter Table ##Sums Add W Int");
    EXPECT_EQ(rows("Select * From ##Sums Where V = 5").columns.size(), 2);
}

TEST_F(SharedTranslation, SelectIntoRepeatedWithOtherValuesFillsEachTableAfresh) {
    for (int i = 1; i <= 3; ++i)
        db->execute(QStringLiteral("Insert Into Asnad (Document, SanadNo, Bed) Values ('%1', %1, %2)").arg(i).arg(i * 100));
    quint64 before = 0;
    for (int voucher = 1; voucher <= 3; ++voucher) {
        before = db->translations();
        db->execute("If Exists (Select * From Tempdb..SysObjects Where [Name] Like '##AsnadHistory') "
                    "Exec('Drop Table ##AsnadHistory')");
        db->execute(QStringLiteral("Select * Into ##AsnadHistory From Asnad Where SanadNo = %1").arg(voucher));
        EXPECT_EQ(value("Select Count(*) From ##AsnadHistory").toInt(), 1);
        EXPECT_DOUBLE_EQ(value("Select Bed From ##AsnadHistory").toDouble(), voucher * 100.0);
    }
    // The last round made again only the two reads of the table it recreated: the check, the
    // drop and the copy were shared with the earlier rounds.
    EXPECT_EQ(db->translations() - before, 2u);

    // The source gains a column: the copy carries it.
    db->execute("Alter Table Asnad Add Moein Varchar(4)");
    db->execute("Drop Table ##AsnadHistory");
    db->execute("Select * Into ##AsnadHistory From Asnad Where SanadNo = 2");
    EXPECT_EQ(rows("Select * From ##AsnadHistory").columns.size(), 8);
}
