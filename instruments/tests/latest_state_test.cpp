// A cheque's state is its latest action row, found by number and series as the book compares
// codes, over both sides; the query for many cheques agrees with the one for each.
#include "instruments/latest_state.h"

#include "db/schema/tests/demo_fixture.h"

namespace tr::instruments {
namespace {

using tr::schema::testing::DemoCompanyTest;

class LatestState : public DemoCompanyTest {
  protected:
    void SetUp() override {
        DemoCompanyTest::SetUp();
        company().execute(QStringLiteral("Delete From N_ChqLastTrans"));
    }
    static void act(const char* kind, const char* number, const QVariant& series, const char* date) {
        company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate) Values (") +
                          company().text(QString::fromLatin1(kind)) + QStringLiteral(", ") +
                          company().text(QString::fromLatin1(number)) + QStringLiteral(", ") +
                          (series.isNull() ? QStringLiteral("Null") : company().text(series.toString())) +
                          QStringLiteral(", ") + company().text(QString::fromLatin1(date)) + QStringLiteral(")"));
    }
};

TEST_F(LatestState, TheLatestRowOfANumberAndSeriesIsTheState) {
    act("71", "1001", "A", "1404/01/10");  // received
    act("81", "1001", "A", "1404/01/20");  // spent: written by the issued side
    act("88", " 1001 ", "A", "1404/02/01");  // came back; the number kept with blanks
    act("71", "1001", "B", "1404/01/11");  // another series: another cheque
    act("71", "2002", QVariant(), "1404/01/12");
    act("72", "2002", "", "1404/01/15");  // Null and '' are one series
    const auto spent = latestRow(company(), chequeHistory(), QStringLiteral("1001"), QStringLiteral("A"));
    ASSERT_TRUE(spent);
    EXPECT_EQ(spent->kind, QStringLiteral("88"));
    EXPECT_EQ(spent->date, QStringLiteral("1404/02/01"));
    EXPECT_EQ(latestRow(company(), chequeHistory(), QStringLiteral("1001"), QStringLiteral("B"))->kind,
              QStringLiteral("71"));
    EXPECT_EQ(latestRow(company(), chequeHistory(), QStringLiteral("2002"), QString())->kind,
              QStringLiteral("72"));
    EXPECT_FALSE(latestRow(company(), chequeHistory(), QStringLiteral("3003"), QString()));

    act("72", "3003", "", "1404/01/12");  // an empty series, then Null: one cheque
    act("77", "3003", QVariant(), "1404/01/13");
    act("72", "4004", "x", "1404/01/12");  // case and trailing blanks aside: one series
    act("73", "4004", "X ", "1404/01/14");
    // Both forms of the many-cheque query find the same rows, whichever spelling came last.
    for (const Reach reach : {Reach::Few, Reach::Every}) {
        SCOPED_TRACE(reach == Reach::Few ? "few" : "every");
        const auto all = company().execute(latestRowsQuery(
            chequeHistory(), QStringLiteral("LTrim(RTrim(L.ChqNo)) As ChqNo, IsNull(L.Joz, '') As Joz, L.WhatDoc"),
            QStringLiteral(" Order By 1, 2"), {}, reach));
        ASSERT_EQ(all.resultSets.size(), 1u);
        const auto& rows = all.resultSets[0].rows;
        ASSERT_EQ(rows.size(), 5u);
        EXPECT_EQ(rows[0][2].toString(), QStringLiteral("88"));
        EXPECT_EQ(rows[1][2].toString(), QStringLiteral("71"));
        EXPECT_EQ(rows[2][2].toString(), QStringLiteral("72"));
        EXPECT_EQ(rows[3][2].toString(), QStringLiteral("77"));
        EXPECT_EQ(rows[4][2].toString(), QStringLiteral("73"));
    }
}

}  // namespace
}  // namespace tr::instruments
