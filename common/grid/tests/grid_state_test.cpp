#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "common/grid/grid_state.h"
#include "common/grid/tests/grid_test_support.h"

using namespace tr::grid;
using tr::grid::testing::FakeGrid;
using tr::grid::testing::GridStateDatabase;

namespace {

FakeGrid designedGrid() {
    FakeGrid grid;
    grid.columns = {{"Koll", true, 60}, {"Moein", true, 70}, {"Des", true, 200}, {"Bed", true, 90}};
    return grid;
}

struct Message {
    QString text, caption, code;
};

class GridStateTest : public ::testing::Test {
protected:
    GridStateDatabase db;
    tr::grid::testing::RecordingConnection& table = db.connection;
    tr::db::MyDatabase& database = db.database;
    std::vector<Message> messages;
    GridState state{database, 7, [this](const QString& t, const QString& c, const QString& k) {
                        messages.push_back({t, c, k});
                        return 1;
                    }};
    const GridKey key{"Naghd", "CashGet", "TCashGetForm", "dbgAsnad"};
};

}  // namespace

TEST_F(GridStateTest, SaveWritesTheExactStatementsAndConfirmsWithTheErrorIcon) {
    FakeGrid grid = designedGrid();
    grid.columns[2].visible = false;
    ASSERT_TRUE(state.save(grid, key));

    ASSERT_EQ(table.statements.size(), 5);
    EXPECT_EQ(table.statements[0],
              "Delete From Grid_State Where UserId='7' And sProg = 'Naghd' And sItem = 'CashGet' "
              "And sForm ='TCashGetForm' And sPart='dbgAsnad'");
    EXPECT_EQ(table.statements[3],
              "Insert Into Grid_State(UserId, sVisible, sProg, sItem, sForm, sPart, sColName, iLen, iRaj) "
              "Values('7', 'F', 'Naghd', 'CashGet', 'TCashGetForm', 'dbgAsnad', 'Des', 200, 2)");
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].text, QStringLiteral("وضعيت ستونها ثبت شد."));
    EXPECT_EQ(messages[0].code, QStringLiteral("1ER"));
}

TEST_F(GridStateTest, SaveDoesNothingWhileTheDatasetIsClosed) {
    FakeGrid grid = designedGrid();
    grid.open = false;
    EXPECT_FALSE(state.save(grid, key));
    EXPECT_TRUE(table.statements.isEmpty());
    EXPECT_TRUE(messages.empty());
}

TEST_F(GridStateTest, RoundTripRestoresHiddenColumnsWidthsAndOrder) {
    FakeGrid edited = designedGrid();
    edited.columns[1].visible = false;  // Moein hidden
    edited.columns[3].width = 140;      // Bed wider
    edited.moveColumn(3, 0);            // Bed first
    edited.moveColumn(3, 1);            // Des second
    ASSERT_EQ(edited.order(), QStringList({"Bed", "Des", "Koll", "Moein"}));
    state.save(edited, key);
    // Saving again replaces the layout instead of adding to it.
    state.save(edited, key);
    EXPECT_EQ(db.rowCount(), 4);

    FakeGrid reopened = designedGrid();
    tr::db::Query reader;  // takes the database's connection
    EXPECT_TRUE(state.restore(reopened, reader, key));
    EXPECT_EQ(table.statements.last(),
              "Select * From Grid_State Where UserId='7' And sProg = 'Naghd' And sItem = 'CashGet' "
              "And sForm = 'TCashGetForm' And sPart='dbgAsnad' Order By iRaj ");
    EXPECT_EQ(reopened.order(), edited.order());
    for (int i = 0; i < reopened.count(); ++i) {
        EXPECT_EQ(reopened.columns[i].visible, edited.columns[i].visible) << i;
        EXPECT_EQ(reopened.columns[i].width, edited.columns[i].width) << i;
    }
}

TEST_F(GridStateTest, LayoutsAreKeptPerUserAndGrid) {
    FakeGrid edited = designedGrid();
    edited.columns[0].visible = false;
    state.save(edited, key);

    FakeGrid otherPart = designedGrid();
    tr::db::Query reader(&table);
    EXPECT_FALSE(state.restore(otherPart, reader, GridKey{"Naghd", "CashGet", "TCashGetForm", "dbgOther"}));
    GridState otherUser(database, 8, {});
    EXPECT_FALSE(otherUser.restore(otherPart, reader, key));
    EXPECT_TRUE(otherPart.columns[0].visible);
}

TEST_F(GridStateTest, RestoreCopesWithColumnsAddedOrDroppedSinceSaving) {
    FakeGrid edited = designedGrid();
    edited.moveColumn(0, 3);  // Moein Des Bed Koll
    edited.columns[1].visible = false;
    state.save(edited, key);

    // The form now lacks Des and has a new Tafsily column between Moein and Bed; field names
    // match whatever their case.
    FakeGrid redesigned;
    redesigned.columns = {{"KOLL", true, 60}, {"Moein", true, 70}, {"Tafsily", true, 50}, {"Bed", true, 90}};
    tr::db::Query reader(&table);
    state.restore(redesigned, reader, key);
    EXPECT_EQ(redesigned.order(), QStringList({"Moein", "Bed", "KOLL", "Tafsily"}));
    EXPECT_TRUE(std::all_of(redesigned.columns.begin(), redesigned.columns.end(),
                            [](const GridColumn& c) { return c.visible; }));
}

TEST_F(GridStateTest, ResetDeletesTheLayoutAndExplainsWhenItReturns) {
    state.save(designedGrid(), key);
    messages.clear();
    state.reset(key);
    EXPECT_EQ(db.rowCount(), 0);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].text,
              QStringLiteral("ستونها به وضعيت اوليه بازگشت. \nلطفا براي مشاهده ستونهاي اوليه\nاز فرم خارج شده و "
                             "دوباره وارد شويد."));
    EXPECT_EQ(messages[0].code, QStringLiteral("1ER"));
}

TEST_F(GridStateTest, KeyTextsAreQuotedThroughTheLiteralHelper) {
    FakeGrid grid;
    grid.columns = {{"O'Name", true, 10}};
    state.save(grid, GridKey{"P'1", "I", "F", "S"});
    EXPECT_TRUE(table.statements[0].contains("sProg = 'P''1'"));
    EXPECT_TRUE(table.statements[1].contains("'O''Name', 10, 0)"));
    FakeGrid reopened;
    reopened.columns = {{"O'Name", true, 99}};
    tr::db::Query reader(&table);
    state.restore(reopened, reader, GridKey{"P'1", "I", "F", "S"});
    EXPECT_EQ(reopened.columns[0].width, 10);
}

TEST(ColumnIndexByFieldName, IgnoresCaseAndAnswersMinusOneForUnknownFields) {
    FakeGrid grid = designedGrid();
    EXPECT_EQ(columnIndexByFieldName(grid, "koll"), 0);
    EXPECT_EQ(columnIndexByFieldName(grid, "DES"), 2);
    EXPECT_EQ(columnIndexByFieldName(grid, "Tafsily"), -1);
    grid.columns.push_back({"des", true, 5});
    EXPECT_EQ(columnIndexByFieldName(grid, "Des"), 2);  // the first match wins
}

TEST(SortByTitle, SameTitleTogglesAndAnotherTitleStartsAscending) {
    // First click: nothing sorted yet.
    TitleSort s = sortByTitle("", -1, 2, "Des", "sOrder, ");
    EXPECT_EQ(s.sortText, "sOrder, Des ASC ");
    EXPECT_EQ(s.highlight, TitleColour::Red);
    // Second click on the same title.
    s = sortByTitle(s.sortText, 2, 2, "Des", "sOrder, ");
    EXPECT_EQ(s.sortText, "sOrder, Des DESC ");
    EXPECT_EQ(s.highlight, TitleColour::Blue);
    // Third click: back to ascending.
    s = sortByTitle(s.sortText, 2, 2, "Des", "sOrder, ");
    EXPECT_EQ(s.sortText, "sOrder, Des ASC ");
    // Another title, while the last one was ascending.
    s = sortByTitle(s.sortText, 2, 0, "Koll", "");
    EXPECT_EQ(s.sortText, "Koll ASC ");
    EXPECT_EQ(s.highlight, TitleColour::Red);
    // The dataset's sort text is compared upper-cased.
    s = sortByTitle("koll asc ", 0, 0, "Koll", "");
    EXPECT_EQ(s.highlight, TitleColour::Blue);
}
