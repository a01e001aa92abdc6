// The received-cheque window: a cheque typed into the grid with Insert, its counterparty line
// following it, "تاييد" posting the document, a screenshot left for a look by eye.
#include "cheques/ui/chq_get_form.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cheques/tests/grid_keys.h"
#include "common/db/query_helpers.h"
#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/recording_modal_runner.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class ChqGetFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        form = std::make_unique<TChqGetForm>(session->services);
        form->resize(1100, 600);
        form->show();
    }
    void TearDown() override {
        form.reset();
        session.reset();
    }
    void type(int row, const char* field, const QVariant& value) {
        auto* model = static_cast<tr::ui::DatasetModel*>(form->chequeGrid()->model());
        ASSERT_TRUE(model->setData(model->index(row, model->fieldColumn(QString::fromLatin1(field))), value));
    }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<TChqGetForm> form;
};

TEST_F(ChqGetFormTest, AChequeTypedWithInsertBringsItsCounterpartyLineAndSaves) {
    form->setInvoiceNumber(QStringLiteral("7788"));
    form->document().header().date = QStringLiteral("1404/02/10");
    form->document().lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    QTableView* grid = form->chequeGrid();
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Insert);
    // The new row starts at its number.
    EXPECT_EQ(static_cast<tr::ui::DatasetModel*>(grid->model())->fieldName(grid->currentIndex().column()),
              QStringLiteral("ChqNo"));
    type(0, "Koll", QStringLiteral("103"));
    type(0, "Moein", QStringLiteral("0001"));
    type(0, "ChqNo", QStringLiteral("6001"));
    type(0, "Joz", QStringLiteral("د"));
    type(0, "ChqValue", 4200000.0);
    type(0, "SarResidDate", QStringLiteral("1404/06/01"));
    // Down on the last row posts it (its checks run) and starts the next.
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(form->counterpartyGrid()->model()->rowCount(), 1);
    // The new row is simply there, not posted (and refused) as the grid moves onto it.
    EXPECT_TRUE(session->dialog.shown().isEmpty()) << session->dialog.last().text.toStdString();
    EXPECT_EQ(grid->currentIndex().row(), 1);
    // The new row is left empty: the save drops it rather than refusing it.
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_get_form.png")));
    QTest::mouseClick(form->saveButton(), Qt::LeftButton);
    EXPECT_EQ(form->document().mode(), DocumentMode::Edit) << session->dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '71'")).toInt(),
              1);
    EXPECT_TRUE(form->totalsLabel()->text().contains(QStringLiteral("4,200,000")));
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ChqGetFormTest, ACurrencyChequeTakesItsCurrencyFromTheListAndPrintsAfterItsSave) {
    form->document().header().date = QStringLiteral("1404/02/10");
    form->document().lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    QTableView* grid = form->chequeGrid();
    auto* model = static_cast<tr::ui::DatasetModel*>(grid->model());
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Insert);
    type(0, "Koll", QStringLiteral("103"));
    type(0, "Moein", QStringLiteral("0001"));
    type(0, "ChqNo", QStringLiteral("6101"));
    type(0, "SarResidDate", QStringLiteral("1404/06/01"));
    // F2 on the currency cell: the dollar from the list, at its latest buying rate.
    grid->setCurrentIndex(model->index(0, model->fieldColumn(QStringLiteral("ArzNam"))));
    session->pickList.chooseWhere(QStringLiteral("ArzCod"), QStringLiteral("01"));
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_EQ(model->data(model->index(0, model->fieldColumn(QStringLiteral("Nerkh")))).toString().remove(QLatin1Char(',')),
              QStringLiteral("850000"));
    type(0, "ArzCount", 3.0);
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(company(), QStringLiteral("Select ChqValue From ") + form->document().counterpartyTable())
                         .toDouble(),
                     2550000);
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_get_form_currency.png")));
    // "تاييد و چاپ": the save, then the document in the chosen layout through the preview.
    tr::test::RecordingModalRunner runner;
    runner.answer(0);
    QTest::mouseClick(form->savePrintButton(), Qt::LeftButton);
    ASSERT_EQ(form->document().mode(), DocumentMode::Edit) << session->dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ArzTrans")).toInt(), 2);
    ASSERT_EQ(runner.shown().size(), 1);
    EXPECT_TRUE(runner.last().title.contains(form->document().header().serial)) << runner.last().title.toStdString();
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ChqGetFormTest, ChequesTypedKeyByKeyFollowOneAnother) {
    form->document().header().date = QStringLiteral("1404/02/10");
    form->document().lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    QTableView* grid = form->chequeGrid();
    // As a user types: the cell's editor opens on the first key and Tab commits it.
    const auto typeCell = [grid](const QString& text) { testing::typeInCell(grid, text); };
    // Alt+1 starts the first cheque of the empty grid.
    testing::startFirstRow(form.get(), grid);
    ASSERT_EQ(grid->model()->rowCount(), 1);
    for (const char* number : {"7001", "7002"}) {
        typeCell(QString::fromLatin1(number));
        typeCell(QStringLiteral("A"));
        // An amount as users type it, with its group separators.
        typeCell(QString::fromLatin1(number) == QLatin1String("7001") ? QStringLiteral("3,000,000")
                                                                      : QStringLiteral("3000000"));
        // The due date's cell takes the digits alone.
        typeCell(QString::fromLatin1(number) == QLatin1String("7001") ? QStringLiteral("1405/01/20")
                                                                      : QStringLiteral("14050120"));
        QTest::keyClick(grid, Qt::Key_Tab);  // the payee stays "حامل"
        typeCell(QStringLiteral("103"));
        typeCell(QStringLiteral("0001"));
        // The Tab opened the next cell's editor, which has the focus when Down is pressed.
        QWidget* open = QApplication::focusWidget();
        ASSERT_NE(open, grid);
        QTest::keyClick(open, Qt::Key_Down);
        EXPECT_TRUE(session->dialog.shown().isEmpty()) << session->dialog.last().text.toStdString();
        EXPECT_EQ(static_cast<tr::ui::DatasetModel*>(grid->model())->fieldName(grid->currentIndex().column()),
                  QStringLiteral("ChqNo"));
    }
    EXPECT_EQ(form->counterpartyGrid()->model()->rowCount(), 2);
    EXPECT_EQ(grid->currentIndex().row(), 2);
    EXPECT_EQ(form->document().cheques().FieldByName(QStringLiteral("ChqNo")).AsString(), QString());
    // Leaving the new row untouched drops it, without a word.
    QTest::keyClick(grid, Qt::Key_Up);
    EXPECT_TRUE(session->dialog.shown().isEmpty()) << session->dialog.last().text.toStdString();
    EXPECT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(form->document().cheques().state(), tr::db::Query::State::Browse);
    // The first amount typed again over its cell: a line editor, the amount as typed; one that is
    // no amount is refused with its reason and the row stays in edit until it is put right.
    grid->setCurrentIndex(grid->model()->index(0, static_cast<tr::ui::DatasetModel*>(grid->model())->fieldColumn(
                                                      QStringLiteral("ChqValue"))));
    const auto retype = [&](const QString& text) {
        grid->edit(grid->currentIndex());
        QLineEdit* line = nullptr;
        for (QWidget* e : grid->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (e->isVisible()) line = qobject_cast<QLineEdit*>(e);
        ASSERT_NE(line, nullptr) << "an amount is typed in a line editor";
        line->selectAll();
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
        // Leaving the row posts it.
        QTest::keyClick(grid, Qt::Key_Down);
    };
    retype(QStringLiteral("3,50,000"));
    ASSERT_FALSE(session->dialog.shown().isEmpty());
    EXPECT_TRUE(session->dialog.last().text.startsWith(QStringLiteral("جداكننده هاي سه رقمي مبلغ درست نيست.")))
        << session->dialog.last().text.toStdString();
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(form->document().cheques().state(), tr::db::Query::State::Edit);
    EXPECT_EQ(grid->currentIndex().row(), 0);
    retype(QStringLiteral("3,500,000"));
    EXPECT_EQ(form->document().cheques().state(), tr::db::Query::State::Browse);
    EXPECT_EQ(grid->model()->rowCount(), 2);
    EXPECT_DOUBLE_EQ(form->document().debitTotal(), 6500000);
    EXPECT_TRUE(form->document().save()) << session->dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad Where WhatDoc = '71' And Bed > 0 "
                                                            "And AtfDate = '1405/01/20'"))
                  .toInt(),
              2);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Sum(Bed) From Asnad Where WhatDoc = '71' And "
                                                                   "AtfDate = '1405/01/20'"))
                         .toDouble(),
                     6500000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

// Typing is held to the work tables' widths: a cheque number or a description typed too long
// stops at the column's width instead of failing the row with the database's truncation error;
// the counterparty's boxes take no more than an account's codes.
TEST_F(ChqGetFormTest, TypingIsHeldToTheColumnsWidths) {
    form->document().header().date = QStringLiteral("1404/02/10");
    form->document().lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    QTableView* grid = form->chequeGrid();
    testing::startFirstRow(form.get(), grid);
    testing::typeInCell(grid, QStringLiteral("123456789"));
    testing::typeInCell(grid, QStringLiteral("A"));
    testing::typeInCell(grid, QStringLiteral("3,000,000"));
    testing::typeInCell(grid, QStringLiteral("14050120"));
    QTest::keyClick(grid, Qt::Key_Tab);  // the payee stays "حامل"
    testing::typeInCell(grid, QStringLiteral("103"));
    testing::typeInCell(grid, QStringLiteral("0001"));
    auto* model = static_cast<tr::ui::DatasetModel*>(grid->model());
    grid->setCurrentIndex(model->index(0, model->fieldColumn(QStringLiteral("Des"))));
    testing::typeInCell(grid, QString(60, QLatin1Char('x')));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(session->dialog.shown().isEmpty()) << session->dialog.last().text.toStdString();
    tr::db::Query& cheques = form->document().cheques();
    ASSERT_EQ(cheques.RecordCount(), 1);
    EXPECT_EQ(cheques.value(0, cheques.fieldIndex(QStringLiteral("ChqNo"))).toString(), QStringLiteral("123456"));
    EXPECT_EQ(cheques.value(0, cheques.fieldIndex(QStringLiteral("Des"))).toString().size(), 50);
    for (const auto& [name, width] : {std::pair{"EKoll", 3}, {"EMoein", 4}, {"ETafsily", 5}, {"EProject", 10}}) {
        auto* box = form->findChild<QLineEdit*>(QString::fromLatin1(name));
        ASSERT_NE(box, nullptr) << name;
        EXPECT_EQ(box->maxLength(), width) << name;
    }
    EXPECT_TRUE(form->document().save()) << session->dialog.last().text.toStdString();
}

TEST_F(ChqGetFormTest, ButtonsFollowTheUsersRights) {
    EXPECT_TRUE(form->openingButton()->isEnabled());
    EXPECT_FALSE(form->deleteButton()->isEnabled());  // nothing saved to delete
    form.reset();
    session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("clerk"),
                                                      QStringLiteral("N_A_CHQGET__SABT(Y)"));
    form = std::make_unique<TChqGetForm>(session->services);
    form->show();
    EXPECT_TRUE(form->saveButton()->isEnabled());
    EXPECT_FALSE(form->openingButton()->isEnabled());
    EXPECT_FALSE(form->deleteButton()->isEnabled());
}

}  // namespace
}  // namespace tr::cheques
