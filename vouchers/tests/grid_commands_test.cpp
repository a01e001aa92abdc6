// The grid commands shared by the document screens, over a work table of their shape: what a
// grid's own identity keeps out of copies and pastes, and the screen's own new row on an empty
// grid, which the clipboard carries. (The cash screens' tests cover the rest.)
#include "vouchers/grid_commands.h"

#include <gtest/gtest.h>

#include "common/db/query_helpers.h"
#include "vouchers/tests/account_test_session.h"

namespace tr::vouchers {
namespace {

class GridCommandsTest : public testing::SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        const QString table = QStringLiteral("##grid_commands_test");
        if (tr::db::objectExistsInTempdb(company(), table))
            company().execute(QStringLiteral("Drop Table ") + table);
        company().execute(
            QStringLiteral("Create Table ") + table +
            QStringLiteral(
                " (IDX Int, Raj Int, ChqNo Varchar(6), Koll Varchar(3), Moein Varchar(4), "
                "Des NVarchar(50))"));
        company().execute(QStringLiteral("Insert Into ") + table +
                          QStringLiteral(" Values (7, 0, '100', '501', '0001', 'اول')"));
        grid.setConnection(&company());
        grid.setSql(QStringLiteral("Select * From ") + table + QStringLiteral(" Order By Raj"));
        grid.Open();
    }
    void TearDown() override {
        company().execute(QStringLiteral("Delete From ##grid_commands_test"));
    }
    QString field(const char* name) {
        return grid.FieldByName(QString::fromLatin1(name)).AsString();
    }

    tr::db::Query grid;
    GridCommands commands{
        services,
        grid,
        {QStringLiteral("N"), QStringLiteral("T"), QStringLiteral("F"), QStringLiteral("P")},
        {QStringLiteral("Raj"), QStringLiteral("IDX"), QStringLiteral("ChqNo")}};
};

TEST_F(GridCommandsTest, TheRowsIdentityIsNeverCopiedOrPasted) {
    grid.Append();
    ASSERT_TRUE(commands.copyRowAbove());
    EXPECT_EQ(field("Koll"), QStringLiteral("501"));
    EXPECT_EQ(field("Des"), QStringLiteral("اول"));
    EXPECT_TRUE(grid.FieldByName(QStringLiteral("ChqNo")).IsNull());
    EXPECT_TRUE(grid.FieldByName(QStringLiteral("IDX")).IsNull());
    grid.FieldByName(QStringLiteral("ChqNo")).SetValue(QStringLiteral("101"));
    grid.FieldByName(QStringLiteral("Raj")).SetValue(1);
    grid.Post();

    // The first row's memory pasted over the second keeps the second's number.
    grid.First();
    commands.rememberRow();
    commands.rememberCell(QStringLiteral("ChqNo"));
    grid.Last();
    grid.Edit();
    grid.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("دوم"));
    EXPECT_FALSE(commands.restoreCell(QStringLiteral("ChqNo")));
    ASSERT_TRUE(commands.restoreRow());
    grid.Post();
    EXPECT_EQ(field("ChqNo"), QStringLiteral("101"));
    EXPECT_EQ(field("Des"), QStringLiteral("اول"));
    EXPECT_EQ(grid.FieldByName(QStringLiteral("Raj")).AsInteger(), 1);
    grid.First();
    EXPECT_FALSE(commands.copyRowAbove());  // nothing above the first row
}

TEST_F(GridCommandsTest, AnEmptyGridStartsTheScreensOwnRowAndTheClipboardCarriesIt) {
    grid.First();
    grid.Delete();
    int started = 0;
    commands.appendRow = [&] {
        ++started;
        grid.Append();
        grid.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("حامل"));
    };
    pickList.cancel();
    EXPECT_FALSE(commands.pickFixedDescription());
    EXPECT_EQ(started, 1);
    ASSERT_EQ(grid.state(), tr::db::Query::State::Insert);
    EXPECT_EQ(commands.currentRowIndex(), 0);
    EXPECT_EQ(commands.clipboardText({{QStringLiteral("Des"), QStringLiteral("شرح")},
                                      {QStringLiteral("Nothing"), QStringLiteral("x")}}),
              QStringLiteral("شرح\tx\nحامل\t"));
}

}  // namespace
}  // namespace tr::vouchers
