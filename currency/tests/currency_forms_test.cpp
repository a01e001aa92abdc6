// The two currency windows offscreen: right to left, captions, typing and leaving fields, the
// grid's columns and read-only maximum, confirmation through the modal runner, and screenshots
// saved under the build tree.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFocusEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "common/db/query_helpers.h"
#include "common/ui/dataset_model.h"
#include "currency/tests/currency_fixture.h"
#include "currency/ui/get_nerkh_arz_form.h"
#include "currency/ui/taraf_hesab_arz_form.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::currency::ui {
namespace {

const QString kAboveMaximum = QStringLiteral("مقدار وارد شده از حداكثر مقدار مجاز بيشتر است !");

using Field = RateDialog::Field;

void screenshot(QWidget& w, const QString& name) {
    w.show();
    QApplication::processEvents();
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    ASSERT_TRUE(w.grab().save(QStringLiteral(TR_SCREENS_DIR "/") + name));
}

void leaveField(QLineEdit* edit) {
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(edit, &out);
}

class RateForm : public ::testing::Test {
  protected:
    RateRequest request() const {
        RateRequest r{QStringLiteral("دلار آمريکا"), QStringLiteral("يورو"), {}};
        r.values.mainRate = 52000;
        r.values.factor = 0.9f;
        return r;
    }
    tr::test::RecordingMessageDialog dialog;
    tr::test::RecordingModalRunner runner;
};

TEST_F(RateForm, TypingUpdatesTheOtherFieldsRightToLeft) {
    TGetNerkhArzForm form(tr::dialog::Messages(&dialog), request());
    EXPECT_EQ(form.windowTitle(), QStringLiteral("دريافت نرخ ارز"));
    EXPECT_EQ(form.layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(form.label(Field::SecondAmount)->text(), QStringLiteral("مقدار ارز فرعي يورو"));

    form.edit(Field::MainAmount)->clear();
    QTest::keyClicks(form.edit(Field::MainAmount), "1000");
    EXPECT_EQ(form.edit(Field::RialAmount)->text(), "52,000,000");
    EXPECT_EQ(form.edit(Field::SecondAmount)->text(), "900");
    EXPECT_EQ(form.edit(Field::MainAmount)->text(), "1000");  // the typed text is left alone

    form.edit(Field::RialAmount)->clear();
    QTest::keyClicks(form.edit(Field::RialAmount), "52500000");
    EXPECT_EQ(form.edit(Field::MainRate)->text(), "52,500");
    screenshot(form, "get_nerkh_arz_form.png");

    // A rate field left at zero gets "1" and the message.
    form.edit(Field::MainRate)->clear();
    QTest::keyClicks(form.edit(Field::MainRate), "0");
    leaveField(form.edit(Field::MainRate));
    EXPECT_EQ(form.edit(Field::MainRate)->text(), "1");
    EXPECT_EQ(form.edit(Field::RialAmount)->text(), "1,000");
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QStringLiteral("نرخ ارز نبايد صفر باشد !"));
}

TEST_F(RateForm, ConfirmAnswersTheValuesAndCancelAnswersNothing) {
    TGetNerkhArzForm empty(tr::dialog::Messages(&dialog), request());
    runner.answerBy([](QDialog& d) {
        auto& form = static_cast<TGetNerkhArzForm&>(d);
        form.okButton()->click();  // no amount: refused, the window stays
        form.edit(Field::MainAmount)->clear();
        QTest::keyClicks(form.edit(Field::MainAmount), "250");
        form.okButton()->click();
    });
    const auto values = empty.ask();
    ASSERT_TRUE(values);
    EXPECT_EQ(values->rialAmount, 13000000.0f);
    ASSERT_EQ(dialog.shown().size(), 1);
    EXPECT_EQ(dialog.last().text, QStringLiteral("مبالغ تعيين نشده است !"));

    GetNerkhArzPrompt prompt{tr::dialog::Messages(&dialog)};
    runner.answerBy([](QDialog& d) {
        QTest::keyClicks(static_cast<TGetNerkhArzForm&>(d).edit(Field::MainAmount), "5");
        static_cast<TGetNerkhArzForm&>(d).cancelButton()->click();
    });
    EXPECT_FALSE(prompt.askRate(request()));
}

class GridForm : public testing::CurrencyTest {
  protected:
    void SetUp() override {
        CurrencyTest::SetUp();
        ASSERT_TRUE(tr::db::dropTempTable(database, "U1_88_Chq"));
        company().execute(
            "Create Table ##U1_88_Chq (ArzCod Varchar(2), ArzNam NVarchar(50), ArzCount Float, "
            "Nerkh Float)");
        company().execute(QStringLiteral(
            "Insert Into ##U1_88_Chq Values ('01', 'دلار آمريکا', 1200, 850000), "
            "('02', 'يورو', 300, 930000)"));
    }
    tr::test::RecordingModalRunner runner;
};

TEST_F(GridForm, ShowsTheCurrencyColumnsAndRefusesAboveTheMaximum) {
    TTarafHesabArzForm form(services, "U1_88");
    form.logic().fill("##U1_88_Chq");
    form.load();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("نرخ و ارز چك ها"));
    EXPECT_EQ(form.layoutDirection(), Qt::RightToLeft);

    tr::ui::DatasetModel& model = *form.model();
    QStringList visible;
    for (int c = 0; c < model.columnCount(); ++c) {
        if (!form.grid()->isColumnHidden(c))
            visible << model.headerData(c, Qt::Horizontal).toString();
    }
    EXPECT_EQ(visible, (QStringList{QStringLiteral("ارز"), QStringLiteral("حداكثر مقدار"),
                                    QStringLiteral("مقدار"), QStringLiteral("نرخ")}));
    const int max = model.fieldColumn("ArzMaxCount");
    const int count = model.fieldColumn("ArzCount");
    EXPECT_FALSE(model.flags(model.index(0, max)) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.flags(model.index(0, count)) & Qt::ItemIsEditable);

    model.setData(model.index(1, count), 400.0);
    EXPECT_EQ(dialog.last().text, kAboveMaximum);
    form.logic().query().Cancel();
    model.setData(model.index(0, count), 1000.0);
    EXPECT_EQ(form.logic().query().state(), tr::db::Query::State::Browse);
    screenshot(form, "taraf_hesab_arz_form.png");
}

TEST_F(GridForm, ConfirmThroughThePromptAnswersTheEnteredRows) {
    TarafHesabArzPrompt prompt(services);
    runner.answerBy([](QDialog& d) {
        auto& form = static_cast<TTarafHesabArzForm&>(d);
        form.okButton()->click();  // nothing entered: refused
        tr::ui::DatasetModel& model = *form.model();
        model.setData(model.index(1, model.fieldColumn("ArzCount")), 300.0);
        form.okButton()->click();
    });
    const auto rows = prompt.askCounterCurrencies("U1_88", "##U1_88_Chq");
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 1);
    EXPECT_EQ(rows->front().arzNam, QStringLiteral("يورو"));
    EXPECT_EQ(rows->front().arzCount, 300);
    EXPECT_EQ(dialog.last().text, QStringLiteral("هيچ مقداري وارد نشده است !"));
    EXPECT_FALSE(tr::db::objectExistsInTempdb(company(), "##U1_88_ArzNerkh"));
}

}  // namespace
}  // namespace tr::currency::ui
