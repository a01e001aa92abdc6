// The counter-account currency grid over its working table: filling from the cheques, the
// maximum-amount refusal, the reset of other currencies and rates, confirmation, and the
// check for a currency no cheque carries.
#include <gtest/gtest.h>

#include <memory>

#include "common/db/query_helpers.h"
#include "currency/counter_currency_grid.h"
#include "currency/tests/currency_fixture.h"

namespace tr::currency {
namespace {

const QString kAboveMaximum = QStringLiteral("مقدار وارد شده از حداكثر مقدار مجاز بيشتر است !");

using tr::db::Query;

class CounterCurrencyGridTest : public testing::CurrencyTest {
  protected:
    void SetUp() override {
        CurrencyTest::SetUp();
        ASSERT_TRUE(tr::db::dropTempTable(database, "U1_77_Chq"));
        company().execute(
            "Create Table ##U1_77_Chq (ChqNo Varchar(6), ArzCod Varchar(2), ArzNam NVarchar(50), "
            "ArzCount Float, Nerkh Float)");
        company().execute(
            QStringLiteral("Insert Into ##U1_77_Chq Values ('100001', '01', 'دلار آمريکا', 100, "
                           "850000), ('100002', '01', 'دلار آمريکا', 50, 850000), "
                           "('100003', '02', 'يورو', 30, 930000), ('100004', '', '', 0, 0), "
                           "('100005', Null, Null, Null, Null)"));
        grid = std::make_unique<CounterCurrencyGrid>(services, "U1_77");
        grid->fill("##U1_77_Chq");
        grid->open();
    }

    // Moves to the row of a currency and posts the given amount (and rate).
    void enter(const QString& arzCod, double count, std::optional<double> rate = {}) {
        Query& q = grid->query();
        for (q.First(); !q.Eof(); q.Next()) {
            if (q.FieldByName("ArzCod").AsString() == arzCod) break;
        }
        ASSERT_FALSE(q.Eof()) << arzCod.toStdString();
        q.Edit();
        q.FieldByName("ArzCount").SetAsFloat(count);
        if (rate) q.FieldByName("ArzNerkh").SetAsFloat(*rate);
        q.Post();
    }

    double stored(const QString& arzCod) {
        return tr::schema::testing::scalar(
                   company(), "Select ArzCount From ##U1_77_ArzNerkh Where ArzCod = '" + arzCod +
                                  "'")
            .toDouble();
    }

    std::unique_ptr<CounterCurrencyGrid> grid;
};

TEST_F(CounterCurrencyGridTest, OneRowPerCurrencyOfTheChequesWithItsTotal) {
    Query& q = grid->query();
    EXPECT_EQ(grid->tableName(), "##U1_77_ArzNerkh");
    ASSERT_EQ(q.RecordCount(), 2);  // cheques without a currency have no row
    q.First();
    EXPECT_EQ(q.FieldByName("ArzCod").AsString(), "01");
    EXPECT_EQ(q.FieldByName("ArzMaxCount").AsFloat(), 150);
    EXPECT_EQ(q.FieldByName("ArzCount").AsFloat(), 0);
    EXPECT_EQ(q.FieldByName("ArzNerkh").AsFloat(), 850000);
    q.Next();
    EXPECT_EQ(q.FieldByName("ArzNam").AsString(), QStringLiteral("يورو"));
    EXPECT_EQ(q.FieldByName("ArzMaxCount").AsFloat(), 30);
}

TEST_F(CounterCurrencyGridTest, AnAmountAboveTheMaximumStaysInEdit) {
    enter("01", 151);
    EXPECT_EQ(grid->query().state(), Query::State::Edit);
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, kAboveMaximum);
    EXPECT_EQ(dialog.last().code, "1ER");
    EXPECT_EQ(stored("01"), 0);

    grid->query().FieldByName("ArzCount").SetAsFloat(150);  // the maximum itself is allowed
    grid->query().Post();
    EXPECT_EQ(grid->query().state(), Query::State::Browse);
    EXPECT_EQ(stored("01"), 150);
    EXPECT_EQ(dialog.shown().size(), 1);
}

// The grid hands over what the user typed; text that is not an amount is refused with its reason
// and stays in the cell, and the working table keeps its rows.
TEST_F(CounterCurrencyGridTest, ATypedAmountThatIsNotANumberStaysInEdit) {
    Query& q = grid->query();
    q.First();
    q.Edit();
    q.FieldByName("ArzCount").SetValue(QStringLiteral("1o0"));
    q.Post();
    EXPECT_EQ(q.state(), Query::State::Edit);
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().code, "1ER");
    EXPECT_TRUE(dialog.last().text.contains(QStringLiteral("1o0")));
    EXPECT_EQ(q.FieldByName("ArzCount").Value(), QVariant(QStringLiteral("1o0")));
    EXPECT_EQ(stored("01"), 0);
    EXPECT_EQ(stored("02"), 0);

    q.FieldByName("ArzCount").SetValue(QStringLiteral("۱۲۰"));
    q.Post();
    EXPECT_EQ(q.state(), Query::State::Browse);
    EXPECT_EQ(stored("01"), 120);
}

TEST_F(CounterCurrencyGridTest, PostingClearsRowsOfAnotherCurrencyAtAnotherRate) {
    enter("02", 20);
    enter("01", 100);
    EXPECT_EQ(stored("02"), 0);
    EXPECT_EQ(stored("01"), 100);
    // The dataset shows the cleared row, and the row can be edited again.
    enter("02", 10);
    EXPECT_EQ(grid->query().state(), Query::State::Browse);
    EXPECT_EQ(stored("01"), 0);

    // Only rows that differ in both currency and rate are cleared.
    enter("02", 10, 850000);
    enter("01", 100);
    EXPECT_EQ(stored("02"), 10);
    EXPECT_EQ(stored("01"), 100);
}

TEST_F(CounterCurrencyGridTest, ConfirmReturnsTheRowsWithAnAmount) {
    EXPECT_FALSE(grid->cmdOkClick());
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QStringLiteral("هيچ مقداري وارد نشده است !"));
    EXPECT_EQ(dialog.last().code, "1ER");

    enter("02", 25, 940000);
    const auto rows = grid->cmdOkClick();
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 1);
    EXPECT_EQ(rows->front().arzCod, "02");
    EXPECT_EQ(rows->front().arzCount, 25);
    EXPECT_EQ(rows->front().arzNerkh, 940000);
}

TEST_F(CounterCurrencyGridTest, ConfirmPostsAPendingEditFirst) {
    Query& q = grid->query();
    q.First();
    q.Edit();
    q.FieldByName("ArzCount").SetAsFloat(500);
    EXPECT_FALSE(grid->cmdOkClick());  // refused on posting, not reported as empty
    EXPECT_EQ(dialog.last().text, kAboveMaximum);
    q.FieldByName("ArzCount").SetAsFloat(5);
    ASSERT_TRUE(grid->cmdOkClick());
}

TEST_F(CounterCurrencyGridTest, ACurrencyNoChequeCarriesIsRefused) {
    EXPECT_TRUE(CounterCurrencyGrid::chequesCarry(services, "##U1_77_Chq", "01"));
    EXPECT_TRUE(CounterCurrencyGrid::chequesCarry(services, "##U1_77_Chq", "02"));
    EXPECT_TRUE(dialog.shown().isEmpty());
    EXPECT_FALSE(CounterCurrencyGrid::chequesCarry(services, "##U1_77_Chq", "03"));
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QStringLiteral("اين نوع ارز در چك ها وجود ندارد !"));
    EXPECT_EQ(dialog.last().code, "1ER");
}

}  // namespace
}  // namespace tr::currency
