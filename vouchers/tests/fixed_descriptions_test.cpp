// Fixed descriptions: what the pick offers a line, what the look-up fills in, and the rules of
// the fixed-descriptions screen before a row is stored.
#include "vouchers/fixed_descriptions.h"

#include <gtest/gtest.h>

#include "common/db/query_helpers.h"
#include "vouchers/fix_des_screen.h"
#include "vouchers/tests/account_test_session.h"

namespace tr::vouchers {
namespace {

using testing::SessionTest;

const QString kGeneral = QStringLiteral("بابت ساير موارد");  // stored without an account

LineAccount line(const char* k, const char* m = "", const char* t = "", const char* t2 = "",
                 const char* p = "") {
    return {QString::fromUtf8(k), QString::fromUtf8(m), QString::fromUtf8(t), QString::fromUtf8(t2),
            QString::fromUtf8(p)};
}

class FixedDescriptionPick : public SessionTest {
  protected:
    QStringList offered(const LineAccount& account) {
        pickList.cancel();
        EXPECT_FALSE(pickFixedDescription(services, account).has_value());
        return pickList.lastColumn(QStringLiteral("FixDes"));
    }
};

TEST_F(FixedDescriptionPick, LineWithoutDetailGetsEveryDescriptionOfItsSubsidiary) {
    EXPECT_EQ(offered(line("104", "0001")),
              (QStringList{kGeneral, "بابت تسويه صورتحساب فروش", "بابت حساب جاري شرکت پخش البرز"}));
    const auto& shown = pickList.last();
    EXPECT_EQ(shown.title, QStringLiteral("انتخاب شرح ثابت"));
    QStringList captions;
    for (const auto& column : shown.columns) captions << column.caption;
    EXPECT_EQ(captions, (QStringList{"شرح", "کل", "معين", "تفصيلي"}));
    EXPECT_EQ(pickList.lastColumn("IDX"), (QStringList{"1", "2", "3"}));
}

TEST_F(FixedDescriptionPick, LevelsTheLineCarriesNarrowTheList) {
    EXPECT_EQ(offered(line("104", "0001", "30001")),
              (QStringList{kGeneral, "بابت حساب جاري شرکت پخش البرز"}));
    EXPECT_EQ(offered(line("104", "0001", "30003")), QStringList{kGeneral});
    EXPECT_EQ(offered(line("301", "0001")), QStringList{kGeneral});
}

TEST_F(FixedDescriptionPick, ChoiceGoesIntoTheLineAndTheTableIsDropped) {
    tr::db::Query row;
    openLine(row, QStringLiteral("##fixdes_line"));
    row.FieldByName("Koll").SetValue("501");
    row.FieldByName("Moein").SetValue("0001");
    pickList.chooseWhere("FixDes", "پرداخت حقوق ماهانه");
    ASSERT_TRUE(pickFixedDescriptionInto(services, row));
    EXPECT_EQ(row.FieldByName("Des").AsString(), QStringLiteral("پرداخت حقوق ماهانه"));
    const QString table = pickList.last().sql.section(u' ', 3, 3);
    EXPECT_FALSE(tr::db::objectExistsInTempdb(company(), table.mid(2)));
}

class FixedDescriptionLookup : public SessionTest {};

TEST_F(FixedDescriptionLookup, FirstRowIsUsedOnlyWhenItNamesNoLevelTheLineLacks) {
    auto found = [&](const LineAccount& account) {
        return lookupFixedDescription(company(), account).value_or(QStringLiteral("<none>"));
    };
    EXPECT_EQ(found(line("104", "0001")), QStringLiteral("بابت تسويه صورتحساب فروش"));
    EXPECT_EQ(found(line("104", "0001", "30001")), QStringLiteral("بابت حساب جاري شرکت پخش البرز"));
    // Stored only for detail 60001: a line without detail gets nothing.
    EXPECT_EQ(found(line("501", "0001")), QStringLiteral("<none>"));
    EXPECT_EQ(found(line("501", "0001", "60001", "50001")), QStringLiteral("<none>"));
    EXPECT_EQ(found(line("101", "0001", "10001")), QStringLiteral("<none>"));
}

// The screen's rules before a row is posted, against the real FixDes table.
class FixDesScreenTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        screen = std::make_unique<FixDesScreen>(services);
        screen->show();
    }
    void TearDown() override {
        company().execute(QStringLiteral("Delete From FixDes Where FixDes Like 'TEST%'"));
    }
    // Appends and posts a row; whether it was stored.
    bool post(const QString& des, const QStringList& codes) {
        tr::db::Query& grid = screen->grid();
        grid.Append();
        grid.FieldByName("FixDes").SetValue(des);
        const QStringList fields{"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"};
        for (int i = 0; i < codes.size(); ++i) grid.FieldByName(fields[i]).SetValue(codes[i]);
        grid.Post();
        const bool stored = grid.state() == tr::db::Query::State::Browse;
        if (!stored) grid.Cancel();
        return stored;
    }
    int stored(const QString& des) {
        return scalar(QStringLiteral("Select Count(*) From FixDes Where FixDes = ") +
                      company().text(des))
            .toInt();
    }

    std::unique_ptr<FixDesScreen> screen;
};

TEST_F(FixDesScreenTest, SameDescriptionForTwoAccountsButNotTwiceForOne) {
    const QString des = QStringLiteral("TEST بابت کرايه");
    EXPECT_TRUE(post(des, {"101", "0001", "10001"}));
    EXPECT_TRUE(post(des, {"101", "0001", "10002"}));
    EXPECT_TRUE(dialog.shown().isEmpty()) << messages().join(u'|').toStdString();
    EXPECT_FALSE(post(des, {"101", "0001", "10001"}));
    EXPECT_EQ(messages(), QStringList{"شرح تکراري مي باشد"});
    EXPECT_EQ(dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(screen->refusedField(), QStringLiteral("FixDes"));
    EXPECT_EQ(stored(des), 2);
    // Codes of levels the account lacks are stored empty, so the pick and look-up find them.
    EXPECT_EQ(scalar(QStringLiteral("Select Count(*) From FixDes Where FixDes = ") +
                     company().text(des) + QStringLiteral(" And Tafsily2 = '' And ProjectCod = ''"))
                  .toInt(),
              2);
}

TEST_F(FixDesScreenTest, ChecksRunInOrderAndNameTheCellToFocus) {
    EXPECT_FALSE(post(QStringLiteral("  "), {"999"}));
    EXPECT_FALSE(post(QStringLiteral("بابت ساير موارد"), {"", "", "", "", ""}));
    EXPECT_FALSE(post(QStringLiteral("TEST x"), {"104", "0001", "30003", "51001"}));
    EXPECT_EQ(screen->refusedField(), QStringLiteral("Tafsily2"));
    EXPECT_FALSE(post(QStringLiteral("TEST x"), {"104", "0001", "30003", "50001", "P0009"}));
    EXPECT_EQ(screen->refusedField(), QStringLiteral("ProjectCod"));
    EXPECT_EQ(messages(),
              (QStringList{"شرح خالي مي باشد", "شرح تکراري مي باشد",
                           "كد حساب تفصيلي دو موجود نمي باشد.", "كد پروژه غيرفعال مي باشد."}));
}

TEST_F(FixDesScreenTest, PastedDescriptionsAreOneLineAndControlCharactersAreRefused) {
    EXPECT_TRUE(post(QStringLiteral("TEST بابت\r\nکرايه"), {"101", "0001", "10001"}));
    EXPECT_EQ(stored(QStringLiteral("TEST بابت کرايه")), 1);
    EXPECT_FALSE(post(QStringLiteral("TEST\x01"), {"101", "0001", "10001"}));
    EXPECT_EQ(dialog.last().text, QStringLiteral("شرح داراي حرف غير مجاز است."));
    EXPECT_EQ(dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(screen->refusedField(), QStringLiteral("FixDes"));
}

TEST_F(FixDesScreenTest, EditingARowWithoutChangingItIsNoDuplicate) {
    const QString des = QStringLiteral("TEST ثابت");
    ASSERT_TRUE(post(des, {"301", "0001"}));
    tr::db::Query& grid = screen->grid();
    grid.FieldByName("FixDes").SetValue(QStringLiteral("TEST ثابت دوم"));
    grid.FieldByName("FixDes").SetValue(des);
    grid.Post();
    EXPECT_EQ(grid.state(), tr::db::Query::State::Browse);
    grid.FieldByName("FixDes").SetValue(QStringLiteral("TEST ثابت دوم"));
    grid.Post();
    EXPECT_EQ(stored(QStringLiteral("TEST ثابت دوم")), 1);
    EXPECT_TRUE(dialog.shown().isEmpty()) << messages().join(u'|').toStdString();
}

TEST_F(FixDesScreenTest, DeleteAsksFirst) {
    ASSERT_TRUE(post(QStringLiteral("TEST حذف"), {"301", "0001"}));
    dialog.answerNo();
    EXPECT_FALSE(screen->deleteRow());
    dialog.answerYes();
    EXPECT_TRUE(screen->deleteRow());
    EXPECT_EQ(dialog.last().code, QStringLiteral("3QR"));
    EXPECT_EQ(stored(QStringLiteral("TEST حذف")), 0);
}

TEST_F(FixDesScreenTest, AccountCellsOpenTheirLists) {
    tr::db::Query& grid = screen->grid();
    grid.Append();
    grid.FieldByName("Koll").SetValue("104");
    pickList.chooseWhere("Moein", "0001");
    EXPECT_TRUE(screen->pickAccount(QStringLiteral("moein")));
    EXPECT_EQ(grid.FieldByName("Moein").AsString(), QStringLiteral("0001"));
    EXPECT_FALSE(screen->pickAccount(QStringLiteral("FixDes")));
    EXPECT_EQ(pickList.shown().size(), 1);
    grid.Cancel();
}

TEST(TurnoverFilter, NamesTheChosenLevelOrTheMostDetailedOne) {
    const LineAccount full = line("104", "0001", "30001", "51001", "P0001");
    EXPECT_EQ(turnoverFilter(full, AccountLevel::Koll), QStringLiteral("K=104"));
    EXPECT_EQ(turnoverFilter(full, AccountLevel::Moein), QStringLiteral("M=(K=104),(M=0001)"));
    EXPECT_EQ(turnoverFilter(full, AccountLevel::Tafsily), QStringLiteral("T1=30001"));
    EXPECT_EQ(turnoverFilter(full, AccountLevel::Tafsily2), QStringLiteral("T2=51001"));
    EXPECT_EQ(turnoverFilter(full), QStringLiteral("P=P0001"));
    EXPECT_EQ(turnoverFilter(line("101", "0001"), AccountLevel::Tafsily),
              QStringLiteral("M=(K=101),(M=0001)"));
    EXPECT_EQ(turnoverFilter(line("")), QString());
}

TEST_F(FixDesScreenTest, TurnoverWithoutTheLibraryDoesNothing) {
    global.hostFolder = QStringLiteral("/nonexistent");
    screen->grid().First();
    EXPECT_FALSE(screen->showTurnover(QStringLiteral("Koll"), nullptr));
    EXPECT_TRUE(dialog.shown().isEmpty());
}

TEST_F(FixDesScreenTest, ReportIsRightToLeftUnderTheFiscalPeriod) {
    EXPECT_EQ(screen->reportTitle(), QStringLiteral("گزارش شرح ثابت اسناد دوره مالي[1404]"));
    const QString html = screen->reportHtml();
    EXPECT_TRUE(html.contains(QStringLiteral("dir=\"rtl\"")));
    EXPECT_TRUE(html.contains(QStringLiteral("<th>شرح</th><th>کل</th><th>معين</th>")));
    EXPECT_TRUE(html.contains(QStringLiteral("پرداخت حقوق ماهانه")));
}

}  // namespace
}  // namespace tr::vouchers
