#include <gtest/gtest.h>

#include <QSignalSpy>

#include "common/ui/dataset_model.h"

using tr::db::Query;
using tr::ui::DatasetModel;

namespace {

// Answers every Select with a fixed result and every other statement with one affected row
// (or none when told to), recording what was sent.
class RowsConnection : public tr::db::Connection {
public:
    tr::db::ResultSet result;
    QStringList statements;
    qint64 affected = 1;

    tr::db::ExecResult execute(const QString& sql) override {
        statements << sql;
        tr::db::ExecResult r;
        if (sql.startsWith(QLatin1String("Select"))) r.resultSets.push_back(result);
        else r.rowsAffected = affected;
        return r;
    }
    tr::db::SqlDialect dialect() const override { return tr::db::SqlDialect::Embedded; }
    QString databaseName() const override { return QStringLiteral("Corvask_1_1403"); }
};

class DatasetModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        connection.result.columns = QStringList{"Koll", "Des", "Bed"};
        connection.result.rows = {
            {QVariant("111"), QVariant("صندوق"), QVariant(2500000.0)},
            {QVariant("222"), QVariant("بانك"), QVariant(0.5)},
            {QVariant("333"), QVariant(), QVariant(1000.0)},
        };
        query.setSql("Select * From ##Trans");
        query.Open();
    }
    QVariant display(DatasetModel& model, int row, int column) {
        return model.data(model.index(row, column), Qt::DisplayRole);
    }

    RowsConnection connection;
    Query query{&connection};
};

}  // namespace

TEST_F(DatasetModelTest, ShowsTheQueryRowsFieldsAndTitles) {
    DatasetModel model(&query);
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.columnCount(), 3);
    EXPECT_EQ(display(model, 0, 1).toString(), QStringLiteral("صندوق"));
    EXPECT_EQ(display(model, 0, 2).toString(), "2,500,000");  // no exponent for amounts
    EXPECT_EQ(display(model, 2, 1).toString(), "");
    EXPECT_FALSE(model.data(model.index(2, 1), Qt::EditRole).isValid());  // null stays null

    model.setTitle("des", QStringLiteral("شرح"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("شرح"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, DatasetModel::FieldNameRole).toString(), "Des");
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), "Koll");

    model.setFieldFormat("Bed", [](const QVariant& v) { return "[" + v.toString() + "]"; });
    EXPECT_EQ(display(model, 0, 2).toString(), "[2500000]");
}

TEST_F(DatasetModelTest, EditsArePostedToTheTableThroughTheQuery) {
    DatasetModel model(&query);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    ASSERT_TRUE(model.setData(model.index(1, 1), QStringLiteral("بانك ملت")));
    EXPECT_EQ(query.state(), Query::State::Browse);
    EXPECT_EQ(connection.statements.last(),
              "Update ##Trans Set [Des] = 'بانك ملت' Where [Koll] = '222' And [Des] = 'بانك' And [Bed] = 0.5");
    EXPECT_EQ(display(model, 1, 1).toString(), QStringLiteral("بانك ملت"));
    EXPECT_GE(changed.count(), 1);

    model.setFieldReadOnly("Koll");
    EXPECT_FALSE(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.setData(model.index(0, 0), "999"));
    EXPECT_TRUE(model.flags(model.index(0, 1)) & Qt::ItemIsEditable);
}

// An amount opens in its editor as its full text (a grid would give a number a number box, which
// refuses group separators); given back unchanged it stays the number it was, typed over it is
// the text for the row's checks to read.
TEST_F(DatasetModelTest, AnAmountIsEditedAsItsFullText) {
    DatasetModel model(&query);
    const QVariant big = model.data(model.index(0, 2), Qt::EditRole);
    EXPECT_EQ(big.typeId(), QMetaType::QString);
    EXPECT_EQ(big.toString(), "2500000");
    EXPECT_EQ(model.data(model.index(1, 2), Qt::EditRole).toString(), "0.5");
    EXPECT_EQ(model.data(model.index(0, 1), Qt::EditRole).toString(), QStringLiteral("صندوق"));

    const qsizetype sent = connection.statements.size();
    ASSERT_TRUE(model.setData(model.index(1, 2), QStringLiteral("0.5")));
    EXPECT_EQ(connection.statements.size(), sent);
    EXPECT_EQ(query.value(1, 2).typeId(), QMetaType::Double);

    ASSERT_TRUE(model.setData(model.index(0, 2), QStringLiteral("2,600,000")));
    EXPECT_EQ(query.value(0, 2), QVariant(QStringLiteral("2,600,000")));
}

TEST_F(DatasetModelTest, RefusedPostKeepsTheRowInEditAndOtherRowsUntouched) {
    DatasetModel model(&query);
    query.BeforePost = [](Query&) { return false; };
    EXPECT_TRUE(model.setData(model.index(0, 1), "x"));
    EXPECT_EQ(query.state(), Query::State::Edit);
    EXPECT_EQ(display(model, 0, 1).toString(), "x");
    // Another row cannot be edited while the refused one is pending.
    EXPECT_FALSE(model.setData(model.index(2, 1), "y"));
    EXPECT_EQ(display(model, 2, 1).toString(), "");
    EXPECT_EQ(model.currentRow(), 0);
}

TEST_F(DatasetModelTest, DatabaseErrorsGoToTheHandlerOrPropagate) {
    DatasetModel model(&query);
    connection.affected = 0;  // the row vanished meanwhile
    EXPECT_THROW(model.setData(model.index(0, 1), "x"), tr::db::DatabaseError);
    query.Cancel();
    QString reported;
    model.setErrorHandler([&](const tr::db::DatabaseError& e) { reported = e.message(); });
    EXPECT_FALSE(model.setData(model.index(0, 1), "x"));
    EXPECT_TRUE(reported.contains("cannot be located"));
}

TEST_F(DatasetModelTest, FollowsInsertsAppendsDeletesSortsAndReopening) {
    DatasetModel model(&query);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);

    query.MoveTo(1);
    query.Insert();  // before the second row
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.currentRow(), 1);
    EXPECT_EQ(display(model, 2, 0).toString(), "222");
    ASSERT_TRUE(model.setData(model.index(1, 0), "150"));  // posts the new row
    EXPECT_TRUE(connection.statements.last().startsWith("Insert Into ##Trans([Koll]) Values('150')"));
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(display(model, 1, 0).toString(), "150");

    query.Append();
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_EQ(model.currentRow(), 4);
    ASSERT_TRUE(model.setData(model.index(4, 0), "444"));
    EXPECT_EQ(display(model, 4, 0).toString(), "444");

    query.Append();
    query.Cancel();
    EXPECT_EQ(model.rowCount(), 5);

    query.setSort("Koll DESC");
    EXPECT_EQ(display(model, 0, 0).toString(), "444");
    EXPECT_EQ(display(model, 4, 0).toString(), "111");

    query.MoveTo(0);
    query.Delete();
    EXPECT_EQ(model.rowCount(), 4);

    query.Close();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
    query.Open();
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_GE(resets.count(), 5);
}

TEST_F(DatasetModelTest, KeepsTheScreensOwnChangeHookAndOutlivesIt) {
    int screenCalls = 0;
    query.DataChanged = [&](Query&) { ++screenCalls; };
    {
        DatasetModel model(&query);
        query.setSort("Koll DESC");
        EXPECT_EQ(screenCalls, 1);
        EXPECT_EQ(display(model, 0, 0).toString(), "333");
    }
    // The model is gone; the query still reports to the screen.
    query.setSort("Koll ASC");
    EXPECT_EQ(screenCalls, 2);
}
