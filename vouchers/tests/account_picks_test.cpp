// Picking codes from the lookup lists into a grid row: what the lists offer for a line, what a
// pick copies and clears, and the refusal of inactive accounts.
#include <gtest/gtest.h>

#include "common/db/query_helpers.h"
#include "vouchers/account_lookup.h"
#include "vouchers/tests/account_test_session.h"

namespace tr::vouchers {
namespace {

using testing::SessionTest;

class AccountPicksTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        static int n = 0;
        openLine(row, QStringLiteral("##pick_line_") + QString::number(++n));
    }
    void fill(const QStringList& codes) {
        const QStringList fields{"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"};
        for (int i = 0; i < fields.size(); ++i) {
            row.FieldByName(fields[i]).SetValue(i < codes.size() ? codes[i] : QString());
        }
    }
    QStringList codes() {
        QStringList values;
        for (const char* f : {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"}) {
            values << row.FieldByName(QString::fromLatin1(f)).AsString();
        }
        return values;
    }
    bool pick(AccountLevel level, const QString& field, const QString& code) {
        pickList.chooseWhere(field, code);
        return AccountLookup(services).pickInto(level, row);
    }

    tr::db::Query row;
};

TEST_F(AccountPicksTest, SubsidiaryPickClearsOnlyTheFirstLevelItLacks) {
    struct {
        const char* koll;
        const char* moein;
        QStringList after;
    } cases[] = {
        // Lacks all three: only the detail goes.
        {"103", "0001", {"103", "0001", "", "50001", "P0001"}},
        // Has a detail, lacks the second detail (and the project): only the second detail goes.
        {"101", "0001", {"101", "0001", "30001", "", "P0001"}},
        // Project only: the detail goes, the project stays.
        {"401", "0001", {"401", "0001", "", "50001", "P0001"}},
        // Carries everything: nothing goes.
        {"104", "0001", {"104", "0001", "30001", "50001", "P0001"}},
    };
    for (const auto& c : cases) {
        fill({"202", "0001", "30001", "50001", "P0001"});
        row.FieldByName("Koll").SetValue(QString::fromLatin1(c.koll));
        ASSERT_TRUE(pick(AccountLevel::Moein, "Moein", QString::fromLatin1(c.moein))) << c.koll;
        EXPECT_EQ(codes(), c.after) << c.koll << "-" << c.moein;
    }
}

TEST_F(AccountPicksTest, PickCopiesTheCodeAndTheLevelsAboveTheListCarries) {
    fill({});
    ASSERT_TRUE(pick(AccountLevel::Koll, "Koll", "104"));
    ASSERT_TRUE(pick(AccountLevel::Moein, "Moein", "0001"));
    ASSERT_TRUE(pick(AccountLevel::Tafsily, "Tafsily", "30001"));
    ASSERT_TRUE(pick(AccountLevel::Tafsily2, "Tafsily2", "51001"));
    ASSERT_TRUE(pick(AccountLevel::Project, "ProjectCod", "P0001"));
    EXPECT_EQ(codes(), (QStringList{"104", "0001", "30001", "51001", "P0001"}));
    EXPECT_TRUE(dialog.shown().isEmpty());
}

TEST_F(AccountPicksTest, InactiveAccountsAreRefusedWithTheirLevelsMessage) {
    struct {
        AccountLevel level;
        const char* field;
        QStringList line;
        const char* code;
        const char* message;
    } cases[] = {
        {AccountLevel::Koll, "Koll", {}, "998", "كد حساب کل غيرفعال مي باشد."},
        {AccountLevel::Moein, "Moein", {"501"}, "0009", "كد حساب معين غيرفعال مي باشد."},
        {AccountLevel::Tafsily,
         "Tafsily",
         {"104", "0001"},
         "30009",
         "كد حساب تفصيلي غيرفعال مي باشد."},
        {AccountLevel::Tafsily2,
         "Tafsily2",
         {"104", "0001", "30003"},
         "50009",
         "كد حساب تفصيلي دو غيرفعال مي باشد."},
        {AccountLevel::Project,
         "ProjectCod",
         {"401", "0001"},
         "P0009",
         "كد پروژه غيرفعال مي باشد."},
    };
    for (const auto& c : cases) {
        fill(c.line);
        const QStringList before = codes();
        dialog.clearShown();
        EXPECT_FALSE(pick(c.level, QString::fromLatin1(c.field), QString::fromLatin1(c.code)));
        EXPECT_EQ(codes(), before) << c.code;
        ASSERT_EQ(dialog.shown().size(), 1) << c.code;
        EXPECT_EQ(dialog.last().text, QString::fromUtf8(c.message));
        EXPECT_EQ(dialog.last().code, QStringLiteral("1ER"));
    }
}

TEST_F(AccountPicksTest, ListsFollowTheLinesUpperLevelsAndAllowances) {
    AccountLookup lookup(services);
    auto offered = [&](AccountLevel level, const QStringList& line, const char* field) {
        fill(line);
        pickList.cancel();
        lookup.chooseAccount(level, LineAccount::fromRow(row));
        return pickList.lastColumn(QString::fromLatin1(field));
    };
    EXPECT_EQ(offered(AccountLevel::Moein, {"101"}, "Moein"), (QStringList{"0001", "0002"}));
    EXPECT_EQ(pickList.lastColumn("IsTafsily"), (QStringList{"دارد", "دارد"}));
    EXPECT_EQ(offered(AccountLevel::Tafsily, {"101", "0001"}, "Tafsily"),
              (QStringList{"10001", "10002"}));
    EXPECT_EQ(offered(AccountLevel::Tafsily, {"202", "0001"}, "Tafsily"),
              (QStringList{"30001", "30002", "30003", "30009", "40001"}));
    EXPECT_EQ(offered(AccountLevel::Tafsily2, {"104", "0001", "30001"}, "Tafsily2"),
              (QStringList{"51001"}));
    EXPECT_EQ(offered(AccountLevel::Tafsily2, {"104", "0001", "30003"}, "Tafsily2"),
              (QStringList{"50001", "50002", "50009"}));
    EXPECT_EQ(offered(AccountLevel::Project, {"104", "0001", "30002", "50001"}, "ProjectCod"),
              (QStringList{"P0002"}));
    EXPECT_EQ(pickList.last().title, QStringLiteral("انتخاب پروژه"));
}

TEST_F(AccountPicksTest, ListTablesAreDroppedAfterThePick) {
    fill({"101", "0001"});
    pickList.chooseRow(0);
    AccountLookup(services).pickInto(AccountLevel::Tafsily, row);
    const QString sql = pickList.last().sql;
    ASSERT_TRUE(sql.startsWith(QStringLiteral("Select * From ##T1_"))) << sql.toStdString();
    EXPECT_FALSE(tr::db::objectExistsInTempdb(company(),
                                              sql.mid(QStringLiteral("Select * From ##").size())));
    EXPECT_EQ(row.FieldByName("Tafsily").AsString(), QStringLiteral("10001"));
}

TEST_F(AccountPicksTest, FundsListsShowGroupAndSubGroupCaptions) {
    AccountLookup lookup(services);
    pickList.chooseWhere("ManabehCod", "10201");
    ASSERT_TRUE(lookup.pickFundsInto(row, kSourcesOfFunds));
    EXPECT_EQ(row.FieldByName("ManabehCod").AsString(), QStringLiteral("10201"));
    EXPECT_EQ(pickList.lastColumn("ManabehCod"), (QStringList{"10101", "10201"}));
    QStringList captions;
    for (const auto& column : pickList.last().columns) captions << column.caption;
    for (const char* caption : {"كد گروه", "نام گروه", "كد زير گروه", "نام زير گروه"}) {
        EXPECT_TRUE(captions.contains(QString::fromUtf8(caption))) << caption;
    }
    EXPECT_EQ(pickList.lastColumn("ManabehZGNam"), (QStringList{"فروش", "تسهيلات بانکي"}));

    pickList.cancel();
    lookup.chooseFundsSubGroup(QStringLiteral("2"));
    EXPECT_EQ(pickList.lastColumn("ManabehZGCod"), (QStringList{"01", "02"}));
    EXPECT_EQ(pickList.lastColumn("ManabehGNam"), (QStringList{"مصارف", "مصارف"}));
}

}  // namespace
}  // namespace tr::vouchers
