// The real receipt form driven through its widgets offscreen, and a screenshot of every form of
// the family for a look by eye (build tree, screens/).
#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedLayout>
#include <QTableView>
#include <QTest>
#include <QThread>

#include "cashbank/tests/documents/documents_fixture.h"
#include "cashbank/ui/documents/bardasht_bank_form.h"
#include "cashbank/ui/documents/cash_get_form.h"
#include "cashbank/ui/documents/cash_pay_form.h"
#include "cashbank/ui/documents/havaleh_form.h"
#include "cashbank/ui/documents/tankhah_pay_form.h"
#include "cashbank/ui/documents/variz_bank_form.h"
#include "common/persian/amount_words.h"
#include "common/ui/dataset_model.h"

namespace tr::cashbank {
namespace {

using testing::DocumentsTest;
using testing::s;
namespace demo = tr::schema::demo;

// Key clicks carrying any text, Persian included (QTest's own map knows only ASCII keys).
void typeText(QWidget* widget, const QString& text) {
    for (const QChar c : text) {
        const Qt::Key key = c.unicode() < 128 ? Qt::Key(c.toUpper().unicode()) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Press, widget, key, QString(c), Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Release, widget, key, QString(c), Qt::NoModifier);
    }
}

class FormTest : public DocumentsTest {
  protected:
    void SetUp() override {
        DocumentsTest::SetUp();
        container = std::make_unique<QWidget>();
        container->setObjectName(QStringLiteral("pnlScreens"));
        new QStackedLayout(container.get());
        container->resize(1280, 720);
    }
    void TearDown() override {
        container.reset();
        DocumentsTest::TearDown();
    }

    template <class Form>
    Form* dock() {
        auto* form = new Form(admin->services, container.get());
        container->layout()->addWidget(form);
        static_cast<QStackedLayout*>(container->layout())->setCurrentWidget(form);
        container->show();
        QApplication::setActiveWindow(container.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(container.get()));
        return form;
    }

    void screenshot(QWidget* form, const QString& name) {
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        QApplication::processEvents();
        EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/") + name + ".png"));
    }

    // Types into a grid cell through the cell's own editor, as the keyboard does.
    static void typeIntoCell(QTableView* grid, const QString& field, const QString& text) {
        auto* model = static_cast<tr::ui::DatasetModel*>(grid->model());
        const QModelIndex index = model->index(model->currentRow(), model->fieldColumn(field));
        grid->setCurrentIndex(index);
        grid->edit(index);
        QWidget* editor = QApplication::focusWidget();
        ASSERT_NE(editor, grid);
        typeText(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
    }

    std::unique_ptr<QWidget> container;
};

TEST_F(FormTest, AReceiptTypedThroughItsWidgetsIsPostedAsAVoucher) {
    auto* form = dock<TCashGetForm>();
    EXPECT_EQ(form->layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(form->widget<QLabel>(QStringLiteral("lblValueWords"))->text(), s("صفر ريال"));
    EXPECT_FALSE(form->widget<QLineEdit>(QStringLiteral("txtNerkh"))->isEnabled());
    screenshot(form, QStringLiteral("cash_get_empty"));

    auto* serial = form->widget<QLineEdit>(QStringLiteral("edSerial"));
    serial->setFocus();
    EXPECT_EQ(serial->text(), QStringLiteral("1"));  // entering a new document's serial box
    const auto type = [form](const char* name, const QString& text) {
        auto* edit = form->widget<QLineEdit>(QString::fromLatin1(name));
        edit->setFocus();
        edit->selectAll();
        typeText(edit, text);
    };
    type("edDay", QStringLiteral("4x5"));  // letters are not taken; 45 is no day
    EXPECT_EQ(form->widget<QLineEdit>(QStringLiteral("edDay"))->text(), QStringLiteral("31"));
    type("edDay", QStringLiteral("7"));
    type("edMonth", QStringLiteral("3"));
    type("edYear", QStringLiteral("1404"));
    EXPECT_EQ(form->widget<QLineEdit>(QStringLiteral("edMonth"))->text(), QStringLiteral("03"));
    type("edAtfCh", QStringLiteral("88"));
    type("txtCashCod", s(demo::kRialCashBox));
    type("txtDes", QStringLiteral("دريافت از مشتري"));
    EXPECT_EQ(form->widget<QLineEdit>(QStringLiteral("txtCashNam"))->text(), s("صندوق مرکزي"));
    type("txtValue", QStringLiteral("3000000"));
    EXPECT_EQ(form->widget<QLabel>(QStringLiteral("lblValueWords"))->text(),
              tr::persian::amountInWords(3000000.0));

    QTableView* grid = form->grid();
    auto* hint = form->widget<QLabel>(QStringLiteral("lblEmptyGrid"));
    EXPECT_TRUE(hint->isVisible());  // how a line is added, while there is none
    grid->setFocus();
    ASSERT_TRUE(admin->dialog.shown().isEmpty()) << admin->dialog.last().text.toStdString();
    for (const char* amount : {"1000000", "2000000"}) {
        QTest::keyClick(grid, Qt::Key_Insert);
        typeIntoCell(grid, QStringLiteral("Koll"), s(demo::kCapitalKoll));
        typeIntoCell(grid, QStringLiteral("Moein"), s(demo::kCapitalMoein));
        typeIntoCell(grid, QStringLiteral("Des"), QStringLiteral("سهم شريک"));
        typeIntoCell(grid, QStringLiteral("Bes"), QString::fromLatin1(amount));
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_Down);  // the last line is posted
    }
    EXPECT_EQ(form->widget<QLineEdit>(QStringLiteral("edSum"))->text(),
              QStringLiteral("3,000,000"));
    EXPECT_EQ(form->model()->rowCount(), 2);
    EXPECT_FALSE(hint->isVisible());

    // Confirmed; every document screen shares the key (tried with the keyboard in a real window:
    // offscreen, key clicks reach the focused widget without passing the shortcut map). The
    // status line says what was done.
    auto* ok = form->widget<QPushButton>(QStringLiteral("cmdOk"));
    EXPECT_EQ(ok->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
    QTest::mouseClick(ok, Qt::LeftButton);
    ASSERT_TRUE(admin->dialog.shown().isEmpty()) << admin->dialog.last().text.toStdString();
    EXPECT_TRUE(form->widget<QLabel>(QStringLiteral("lblStatus"))->text().startsWith(s("سريال 1 ثبت شد")));
    EXPECT_TRUE(ledgerIsConsistent());
    EXPECT_EQ(value(QStringLiteral("Select Bed From Asnad Where TypeSys='N' And WhatDoc='10' And "
                                   "Bed > 0"))
                  .toDouble(),
              3000000.0);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys='N' And Bes > 0 And "
                                  "SanadDate = '1404/03/07' And AtfCh = '88'")),
              2);
    EXPECT_FALSE(form->widget<QLineEdit>(QStringLiteral("edSanadNo"))->text().isEmpty());
    EXPECT_TRUE(form->widget<QPushButton>(QStringLiteral("cmdDel"))->isEnabled());
    screenshot(form, QStringLiteral("cash_get_filled"));

    // A new document, then Enter in the serial box opens serial 1 as leaving the box does.
    form->logic().newDocumentClick();
    EXPECT_EQ(form->model()->rowCount(), 0);
    serial->setFocus();
    serial->selectAll();
    typeText(serial, QStringLiteral("1"));
    QTest::keyClick(serial, Qt::Key_Return);
    EXPECT_EQ(form->model()->rowCount(), 2);
    EXPECT_EQ(form->widget<QLineEdit>(QStringLiteral("edAtfCh"))->text(), QStringLiteral("88"));

    form->close();  // closing hides, the form stays for the next call
    EXPECT_FALSE(form->isVisible());
}

// A cancelled document says so above its lines; undone, the mark goes.
TEST_F(FormTest, ACancelledDocumentIsMarkedAboveItsLines) {
    auto* form = dock<TCashGetForm>();
    CashBankDocument& logic = form->logic();
    fillHeader(logic, 1000);
    ASSERT_TRUE(addLine(logic, 1000));
    ASSERT_TRUE(logic.cmdOkClick());
    auto* mark = form->widget<QLabel>(QStringLiteral("lblCancelled"));
    EXPECT_FALSE(mark->isVisible());
    admin->dialog.answerYes();
    ASSERT_TRUE(logic.cmdAbtalClick());
    EXPECT_TRUE(mark->isVisible());
    EXPECT_EQ(mark->text(), s("(ابطال شده است)"));
    screenshot(form, QStringLiteral("cash_get_cancelled"));
    admin->dialog.answerYes();
    ASSERT_TRUE(logic.cmdAbtalClick());
    EXPECT_FALSE(mark->isVisible());
}

// A long name the program fills in reads from its start and shows whole when pointed at.
TEST_F(FormTest, ALongNameShowsItsStart) {
    const QString name = s("صندوق مرکزي شعبه اصلي خيابان آزادي نبش کوچه شهيد بهشتي طبقه دوم ساختمان شماره دو");
    company().execute(QStringLiteral("Update N_Cash Set CashNam = ") + company().text(name) +
                      QStringLiteral(" Where CashCod = ") + company().text(s(demo::kRialCashBox)));
    auto* form = dock<TCashGetForm>();
    auto* code = form->widget<QLineEdit>(QStringLiteral("txtCashCod"));
    code->setFocus();
    typeText(code, s(demo::kRialCashBox));
    QTest::keyClick(code, Qt::Key_Tab);
    auto* box = form->widget<QLineEdit>(QStringLiteral("txtCashNam"));
    ASSERT_EQ(box->text(), name);
    EXPECT_EQ(box->cursorPosition(), 0);
    EXPECT_EQ(box->toolTip(), name);
    screenshot(form, QStringLiteral("cash_get_long_name"));
}

// Leaving the date with a day its month does not have brings the message and puts the cursor
// back in the day box; moving between the date's own boxes does not.
TEST_F(FormTest, LeavingAnImpossibleDateReturnsToItsBox) {
    auto* form = dock<TCashGetForm>();
    const auto type = [form](const char* name, const QString& text) {
        auto* edit = form->widget<QLineEdit>(QString::fromLatin1(name));
        edit->setFocus();
        edit->selectAll();
        typeText(edit, text);
    };
    type("edDay", QStringLiteral("31"));
    type("edMonth", QStringLiteral("07"));
    type("edYear", QStringLiteral("1404"));
    EXPECT_TRUE(admin->dialog.shown().isEmpty());
    form->widget<QLineEdit>(QStringLiteral("edAtfCh"))->setFocus();
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().code, s("1ER"));
    EXPECT_EQ(QApplication::focusWidget(), form->widget<QLineEdit>(QStringLiteral("edDay")));

    type("edDay", QStringLiteral("30"));
    form->widget<QLineEdit>(QStringLiteral("edAtfCh"))->setFocus();
    EXPECT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(QApplication::focusWidget(), form->widget<QLineEdit>(QStringLiteral("edAtfCh")));
}

TEST_F(FormTest, EveryFormOfTheFamilyForALookByEye) {
    screenshot(dock<TCashPayForm>(), QStringLiteral("cash_pay"));
    screenshot(dock<TTankhahPayForm>(), QStringLiteral("tankhah_pay"));
    auto* deposit = dock<TVarizBankForm>();
    EXPECT_NE(deposit->widget<QLineEdit>(QStringLiteral("edVarizKonandeh")), nullptr);
    screenshot(deposit, QStringLiteral("variz_bank"));
    screenshot(dock<TBardashtBankForm>(), QStringLiteral("bardasht_bank"));
    auto* transfer = dock<THavalehForm>();
    EXPECT_EQ(transfer->menuAction(MenuCommand::PrintDocument)->text(), s("چاپ حواله هاي بانکي"));
    screenshot(transfer, QStringLiteral("havaleh"));
}

}  // namespace
}  // namespace tr::cashbank
