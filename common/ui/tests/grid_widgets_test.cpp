#include <gtest/gtest.h>

#include <QDir>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>
#include <QTemporaryDir>
#include <QFile>
#include <QTest>

#include "common/grid/grid_state.h"
#include "common/grid/tests/grid_test_support.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_menu.h"
#include "common/ui/settings_libraries.h"
#include "common/ui/table_view_columns.h"
#include "common/ui/title_sorter.h"

using tr::db::Query;
using namespace tr::ui;

namespace {

class ListConnection : public tr::db::Connection {
public:
    tr::db::ResultSet result;
    tr::db::ExecResult execute(const QString&) override {
        tr::db::ExecResult r;
        r.resultSets.push_back(result);
        return r;
    }
    tr::db::SqlDialect dialect() const override { return tr::db::SqlDialect::Embedded; }
    QString databaseName() const override { return QStringLiteral("Corvask_1_1403"); }
};

class GridWidgetsTest : public ::testing::Test {
protected:
    void SetUp() override {
        connection.result.columns = QStringList{"Koll", "Moein", "Des", "Bed"};
        connection.result.rows = {{QVariant("2"), QVariant("b"), QVariant("x"), QVariant(1.0)},
                                  {QVariant("1"), QVariant("a"), QVariant("y"), QVariant(2.0)},
                                  {QVariant("3"), QVariant("c"), QVariant("z"), QVariant(3.0)}};
        query.setSql("Select * From ##T");
        query.Open();
        model.setQuery(&query);
        view.setModel(&model);
        view.resize(600, 300);
        view.show();
    }
    QStringList visualOrder() const {
        QStringList names;
        for (int i = 0; i < view.horizontalHeader()->count(); ++i) {
            names << model.fieldName(view.horizontalHeader()->logicalIndex(i));
        }
        return names;
    }
    QColor titleColour(int column) const {
        return model.headerData(column, Qt::Horizontal, Qt::ForegroundRole).value<QBrush>().color();
    }

    ListConnection connection;
    Query query{&connection};
    DatasetModel model;
    QTableView view;
};

}  // namespace

TEST_F(GridWidgetsTest, LayoutRoundTripThroughGridStateKeepsHiddenWidthsAndOrder) {
    QHeaderView* header = view.horizontalHeader();
    header->resizeSection(1, 77);
    header->hideSection(1);           // Moein hidden, remembering 77
    header->moveSection(3, 0);        // Bed first
    TableViewColumns columns(&view);
    ASSERT_EQ(columns.column(2).fieldName, "Moein");
    EXPECT_FALSE(columns.column(2).visible);
    EXPECT_EQ(columns.column(2).width, 77);
    EXPECT_TRUE(header->isSectionHidden(1));

    tr::grid::testing::GridStateDatabase db;
    tr::grid::GridState state(db.database, 3, {});
    const tr::grid::GridKey key{"Naghd", "Cash", "TCashGetForm", "dbg"};
    ASSERT_TRUE(state.save(columns, key));

    // The same form opened again with its designed layout.
    DatasetModel freshModel(&query);
    QTableView fresh;
    fresh.setModel(&freshModel);
    fresh.show();
    TableViewColumns freshColumns(&fresh);
    Query reader(&db.connection);
    ASSERT_TRUE(state.restore(freshColumns, reader, key));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(freshColumns.column(i).fieldName, columns.column(i).fieldName) << i;
        EXPECT_EQ(freshColumns.column(i).visible, columns.column(i).visible) << i;
        EXPECT_EQ(freshColumns.column(i).width, columns.column(i).width) << i;
    }
    EXPECT_TRUE(fresh.horizontalHeader()->isSectionHidden(1));
}

TEST_F(GridWidgetsTest, ClosedDatasetIsNotSaved) {
    TableViewColumns columns(&view);
    EXPECT_TRUE(columns.datasetOpen());
    query.Close();
    EXPECT_FALSE(columns.datasetOpen());
}

TEST_F(GridWidgetsTest, TitleClicksSortInMemoryAndColourTheTitles) {
    TitleSorter sorter(&view, &model, "Moein, ");
    QHeaderView* header = view.horizontalHeader();
    auto click = [&](int column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                                 header->height() / 2));
    };
    click(0);
    EXPECT_EQ(query.sort(), "Moein, Koll ASC ");
    EXPECT_EQ(titleColour(0), QColor(Qt::red));
    EXPECT_EQ(titleColour(2), QColor(Qt::black));
    EXPECT_EQ(model.data(model.index(0, 1)).toString(), "a");

    click(0);
    EXPECT_EQ(query.sort(), "Moein, Koll DESC ");
    EXPECT_EQ(titleColour(0), QColor(Qt::blue));

    click(2);
    EXPECT_EQ(query.sort(), "Moein, Des ASC ");
    EXPECT_EQ(titleColour(2), QColor(Qt::red));
    EXPECT_EQ(titleColour(0), QColor(Qt::black));
    EXPECT_EQ(sorter.lastSortedColumn(), 2);
}

TEST_F(GridWidgetsTest, SettingsLibrariesAreCalledWhenPresentAndSilentlySkippedOtherwise) {
    QTemporaryDir host;
    ASSERT_TRUE(QDir(host.path()).mkpath("DLLs/GlobalForms"));
    EXPECT_FALSE(openColumnSettings(host.path(), &view));
    QObject report;
    EXPECT_FALSE(openReportSettings(host.path(), &report, "x"));

    for (const char* name : {"ColumnSettings.so", "ReportSettings.so"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TR_FAKE_SETTINGS_DIR "/") + name,
                                host.filePath(QStringLiteral("DLLs/GlobalForms/") + name)));
    }
    EXPECT_TRUE(openColumnSettings(host.path(), &view));
    EXPECT_EQ(view.property("settingsMode").toString(), "NoThing");
    const QString caption = QStringLiteral("مشخصات گزارش [رسيد]");
    EXPECT_TRUE(openReportSettings(host.path(), &report, caption));
    EXPECT_EQ(report.property("settingsMode").toString(), "NoThing");
    EXPECT_EQ(report.property("settingsCaption").toString(), caption);
}

TEST_F(GridWidgetsTest, PopupMenuTagsRouteToColumnActionAndColumnSettings) {
    QTemporaryDir host;
    QDir(host.path()).mkpath("DLLs/GlobalForms");
    QFile::copy(QStringLiteral(TR_FAKE_SETTINGS_DIR "/ColumnSettings.so"),
                host.filePath("DLLs/GlobalForms/ColumnSettings.so"));
    int selectedColumn = -1, otherTag = -1;
    QMenu menu;
    QAction* columnAction = addGridMenuItem(&menu, "column", kSelectedColumnTag);
    QAction* settingsAction = addGridMenuItem(&menu, "settings", kColumnSettingsTag);
    QAction* printAction = addGridMenuItem(&menu, "print", 9);
    connectGridMenu(&menu, &view,
                    {host.path(), [&](int column) { selectedColumn = column; },
                     [&](int tag) { otherTag = tag; }});

    view.setCurrentIndex(model.index(1, 2));
    columnAction->trigger();
    EXPECT_EQ(selectedColumn, 2);
    settingsAction->trigger();
    EXPECT_EQ(view.property("settingsMode").toString(), "NoThing");
    printAction->trigger();
    EXPECT_EQ(otherTag, 9);
}
