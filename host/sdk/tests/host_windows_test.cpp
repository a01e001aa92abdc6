// The pick-list window over a ## table (choosing, cancelling, keys, column layout), the status
// window's stop button, and the demo session's rights text.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include "common/db/connection.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "host/sdk/global.h"
#include "host/sdk/show_state_form.h"
#include "host/sdk/temp_grid_form.h"
#include "tests/support/recording_modal_runner.h"

using tr::sdk::TTempGridForm;
using tr::test::RecordingModalRunner;

namespace {

// Answers every statement with the same fixed rows and remembers what it was asked.
class FixedConnection : public tr::db::Connection {
  public:
    tr::db::ResultSet rows;
    QStringList statements;

    tr::db::ExecResult execute(const QString& sql) override {
        statements << sql;
        tr::db::ExecResult result;
        result.resultSets.push_back(rows);
        return result;
    }
    tr::db::SqlDialect dialect() const override { return tr::db::SqlDialect::Embedded; }
    QString databaseName() const override { return QStringLiteral("Corvask_1_1403"); }
};

class PickList : public testing::Test {
  protected:
    void SetUp() override {
        db.rows.columns = {"FixDes", "Koll", "Moein", "Tafsily", "IDX"};
        db.rows.rows = {{QStringLiteral("بابت اجاره"), "111", "0001", "", 1},
                        {QStringLiteral("پرداخت حقوق"), "211", "0002", "00012", 2},
                        {QStringLiteral("دريافت وجه"), "111", "0003", "", 3}};
        form.setConnection(&db);
        form.setTitle(QStringLiteral("انتخاب شرح ثابت"));
        form.setSql(QStringLiteral("Select * From ##U1_4521337 Order By Koll, Moein"));
        form.setColumns({{"FixDes", QStringLiteral("شرح"), 200},
                         {"Koll", QStringLiteral("کل"), 50},
                         {"Moein", QStringLiteral("معين"), 60},
                         {"Tafsily", QStringLiteral("تفصيلي"), 70}});
    }

    FixedConnection db;
    TTempGridForm form;
    RecordingModalRunner runner;
};

TEST_F(PickList, AnswersEveryFieldOfTheChosenRow) {
    runner.chooseRow(1);
    const auto chosen = form.choose();
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(chosen->value("FixDes").toString(), QStringLiteral("پرداخت حقوق"));
    EXPECT_EQ(chosen->value("Tafsily").toString(), "00012");
    EXPECT_EQ(chosen->value("IDX").toInt(), 2);  // not shown, still answered
    EXPECT_EQ(db.statements, QStringList{form.sql()});
    EXPECT_EQ(runner.last().title, QStringLiteral("انتخاب شرح ثابت"));
    EXPECT_TRUE(runner.last().text.startsWith(QStringLiteral("بابت اجاره\t111\t0001\t\n")));
}

TEST_F(PickList, ShowsTheCallersColumnsInOrderWithTheirWidths) {
    form.load();
    QTableWidget* grid = form.grid();
    ASSERT_EQ(grid->columnCount(), 4);
    EXPECT_EQ(grid->horizontalHeaderItem(0)->text(), QStringLiteral("شرح"));
    EXPECT_EQ(grid->horizontalHeaderItem(3)->text(), QStringLiteral("تفصيلي"));
    EXPECT_EQ(grid->columnWidth(1), 50);
    EXPECT_EQ(grid->item(2, 2)->text(), "0003");
    EXPECT_EQ(form.layoutDirection(), Qt::RightToLeft);

    form.setColumns({});
    form.load();
    EXPECT_EQ(form.grid()->columnCount(), 5);
    EXPECT_EQ(form.grid()->horizontalHeaderItem(4)->text(), "IDX");
}

// An amount in a list reads as on every screen: grouped, never in exponent form.
TEST_F(PickList, ShowsAmountsGrouped) {
    db.rows.columns = {"FixDes", "Koll", "Moein", "Tafsily", "IDX", "Mablagh"};
    for (auto& row : db.rows.rows) row.push_back(5000000.0);
    form.setColumns({{"FixDes", QStringLiteral("شرح"), 200}, {"Mablagh", QStringLiteral("مبلغ"), 90}});
    form.load();
    EXPECT_EQ(form.grid()->item(0, 1)->text(), QStringLiteral("5,000,000"));
    runner.chooseRow(0);
    EXPECT_EQ(form.choose()->value("Mablagh").toDouble(), 5000000.0);  // the value itself is kept
}

TEST_F(PickList, EscapeAndAnEmptyListAnswerNothing) {
    runner.answerBy([](QDialog& d) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&d, &escape);
    });
    EXPECT_FALSE(form.choose().has_value());

    db.rows.rows.clear();
    runner.answer(QDialog::Accepted);
    EXPECT_FALSE(form.choose().has_value());
}

TEST_F(PickList, EnterDoubleClickAndTypingChoose) {
    auto press = [](QWidget* w, int key) {
        QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &e);
    };
    runner.answerBy([&](QDialog&) {
        form.grid()->keyboardSearch(QStringLiteral("د"));
        press(form.grid(), Qt::Key_Return);
    });
    auto chosen = form.choose();
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(chosen->value("IDX").toInt(), 3);

    runner.answerBy([&](QDialog&) {
        form.setCurrentRow(1);
        emit form.grid()->cellDoubleClicked(1, 0);
    });
    chosen = form.choose();
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(chosen->value("IDX").toInt(), 2);
}

TEST_F(PickList, Screenshot) {
    bool saved = false;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    runner.answerBy([&](QDialog& d) {
        d.show();
        direction = d.layoutDirection();
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        saved = d.grab().save(QStringLiteral(TR_SCREENS_DIR "/temp_grid_form.png"));
    });
    form.choose();
    EXPECT_TRUE(saved);
    EXPECT_EQ(direction, Qt::RightToLeft);
}

TEST(PickListOverEngine, ChoosesFromAGlobalTemporaryTable) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    tr::engine::Engine engine(dir.path());
    auto connection = engine.open(QStringLiteral("Corvask_1_1403"));
    connection->execute(
        QStringLiteral("Create Table Bank (BankCod Varchar(5), BankNam Varchar(50))"));
    const QStringList names = {QStringLiteral("ملت"), QStringLiteral("صادرات"),
                               QStringLiteral("كشاورزي")};
    for (int i = 0; i < names.size(); ++i)
        connection->execute(
            QStringLiteral("Insert Into Bank Values(%1, %2)")
                .arg(connection->text(QString::number(i + 1)), connection->text(names[i])));
    connection->execute(
        QStringLiteral("Select BankCod, BankNam, IDX = Identity(int, 1, 1) Into ##U1_4521337 "
                       "From Bank Order By BankNam"));

    TTempGridForm form;
    form.setConnection(connection.get());
    form.setTitle(QStringLiteral("انتخاب بانك"));
    form.setSql(QStringLiteral("Select * From ##U1_4521337 Order By IDX"));
    form.setColumns(
        {{"BankCod", QStringLiteral("كد"), 50}, {"BankNam", QStringLiteral("نام بانك"), 200}});
    RecordingModalRunner runner;
    runner.chooseRow(2);
    const auto chosen = form.choose();
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(form.rowCount(), 3);
    EXPECT_EQ(chosen->value("BankNam").toString(), form.grid()->item(2, 1)->text());
    EXPECT_EQ(chosen->value("IDX").toInt(), 3);
}

TEST(TShowStateForm, StopButtonIsSeenByPollingAndForgottenOnTheNextShow) {
    tr::sdk::TShowStateForm state;
    state.showState(QStringLiteral("در حال ثبت سند ..."));
    EXPECT_TRUE(state.isVisible());
    EXPECT_FALSE(state.stopRequested());
    state.stopButton()->click();
    EXPECT_TRUE(state.stopRequested());
    EXPECT_EQ(state.stopButton()->text(), QStringLiteral("توقف"));
    state.closeState();
    EXPECT_FALSE(state.isVisible());
    state.showState(QStringLiteral("مرحله دوم"));
    EXPECT_FALSE(state.stopRequested());
    state.closeState();
}

TEST(Global, DemoSessionGrantsEveryMarkerOnTheGivenKeys) {
    const tr::sdk::Global g = tr::sdk::demoGlobal({QStringLiteral("N_A_CASHGET_")});
    EXPECT_TRUE(g.rights.contains(QStringLiteral("N_A_CASHGET__SABT(Y)")));
    EXPECT_TRUE(g.rights.contains(QStringLiteral("N_A_CASHGET__OKPRINT(Y)")));
    EXPECT_FALSE(g.rights.contains(QStringLiteral("N_A_CASHPAY_")));
    EXPECT_LE(g.fiscalStart, g.fiscalEnd);
}

}  // namespace
