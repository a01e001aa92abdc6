// TChqFirstStateForm driven with the keyboard and the mouse: its caption and columns, a locked row
// refusing its state cell, the state cell's drop-down and the space bar on a free row, "تاييد"
// refusing a row left without a state and then storing the list, and the report to PDF. A
// screenshot with locked and free rows is left in screens/.
#include "cheques/ui/chq_first_state_form.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cheques/received_actions.h"
#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "instruments/latest_state.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using tr::instruments::Side;

class ChqFirstStateFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"),
            tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    }
    void TearDown() override { session.reset(); }

    // Opening cheques 801 to 805 received at the period's start; 802 and 804 go to collection
    // in the new period.
    void openingChequesWithTwoMoved() {
        std::vector<DocumentCheque> cheques;
        for (int i = 1; i <= 5; ++i) {
            DocumentCheque ch;
            ch.number = QString::number(800 + i);
            ch.series = QStringLiteral("S");
            ch.value = 100000.0 * i;
            ch.guarantee = i == 5;
            cheques.push_back(ch);
        }
        receiveCheques(cheques, 1, QStringLiteral("1404/01/01"), /*opening=*/true);
        ReceivedChequeActions actions(session->services);
        actions.fill();
        tr::db::Query& rows = actions.rows();
        for (rows.First(); !rows.Eof(); rows.Next()) {
            const QString number = rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
            if (number != QLatin1String("802") && number != QLatin1String("804")) continue;
            ASSERT_TRUE(actions.chooseAction(QStringLiteral("در جريان وصول")));
            ASSERT_TRUE(actions.setActionDate(QStringLiteral("1404/02/01")));
            actions.setBankAccount(1);
        }
        ASSERT_TRUE(actions.apply()) << session->dialog.last().text.toStdString();
    }
    QModelIndex stateCell(TChqFirstStateForm& form, int row) {
        return form.model()->index(row, form.model()->fieldColumn(QStringLiteral("WhatDocNam")));
    }
    static QString state(const char* number) {
        return tr::instruments::latestRow(company(), tr::instruments::chequeHistory(),
                                          QString::fromLatin1(number), QStringLiteral("S"))
            ->kind;
    }

    std::unique_ptr<tr::test::TestSession> session;
};

TEST_F(ChqFirstStateFormTest, LockedRowsRefuseTheirStateAndFreeRowsArePickedSteppedAndStored) {
    openingChequesWithTwoMoved();
    QWidget owner;
    TChqFirstStateForm* form = showOpeningChequeStates(session->services, Side::Received, &owner);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("مقداردهي وضعيت چكهاي اول دوره"));
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("lblCaption"))->text(),
              QStringLiteral("        تعيين وضعيت چكهاي اول دوره (دريافت چک)"));
    EXPECT_EQ(form->layoutDirection(), Qt::RightToLeft);
    QTableView* grid = form->grid();
    ASSERT_EQ(form->model()->rowCount(), 5);
    // The four columns in their order, the rest hidden.
    QStringList shown;
    for (int visual = 0; visual < form->model()->columnCount(); ++visual) {
        const int c = grid->horizontalHeader()->logicalIndex(visual);
        if (!grid->isColumnHidden(c))
            shown << form->model()->headerData(c, Qt::Horizontal).toString();
    }
    EXPECT_EQ(shown, (QStringList{QStringLiteral("سري"), QStringLiteral("چك"),
                                  QStringLiteral("سررسيد"), QStringLiteral("آخرين وضعيت چك")}));

    // 802 (second row) is locked: its state cell does not open.
    grid->setFocus();
    grid->setCurrentIndex(stateCell(*form, 1));
    form->model()->setCurrentRow(1);
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("چك گردش دارد."));
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(grid->findChild<QComboBox*>(), nullptr);
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(form->model()
                  ->index(1, form->model()->fieldColumn(QStringLiteral("WhatDoc")))
                  .data()
                  .toString(),
              QStringLiteral("71"));

    // 801: the drop-down offers the received side's states; "در جريان وصول" picked.
    grid->setCurrentIndex(stateCell(*form, 0));
    grid->edit(stateCell(*form, 0));
    auto* combo = grid->findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);

    EXPECT_EQ(combo->count(), 6);
    const int collection = combo->findText(QStringLiteral("در جريان وصول"));
    combo->setCurrentIndex(collection);
    emit combo->activated(collection);
    EXPECT_EQ(stateCell(*form, 0).data().toString(), QStringLiteral("در جريان وصول"));
    // 805, a guarantee cheque, is stepped with the space bar to its only other state.
    grid->setCurrentIndex(stateCell(*form, 4));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(stateCell(*form, 4).data().toString(), QStringLiteral("برگشت چک"));
    // 803 cleared: "تاييد" refuses the list.
    grid->setCurrentIndex(stateCell(*form, 2));
    QTest::keyClick(grid, Qt::Key_Delete);
    QTest::mouseClick(form->okButton(), Qt::LeftButton);
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("آخرين وضعيت چك وارد نشده است."));
    EXPECT_EQ(state("801"), QStringLiteral("71"));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(stateCell(*form, 2).data().toString(), QStringLiteral("دريافت چک"));

    grid->setCurrentIndex(stateCell(*form, 0));
    grid->resize(grid->size());
    form->resize(640, 330);
    QTest::qWait(20);
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_first_state.png")));

    QTest::mouseClick(form->okButton(), Qt::LeftButton);
    EXPECT_EQ(state("801"), QStringLiteral("72"));
    EXPECT_EQ(state("805"), QStringLiteral("78"));
    EXPECT_EQ(state("802"), QStringLiteral("72"));  // moved in the period, as before
    EXPECT_EQ(form->model()->rowCount(), 5);
    EXPECT_EQ(stateCell(*form, 0).data().toString(), QStringLiteral("در جريان وصول"));

    const QString pdf =
        QDir(QStringLiteral(TR_SCREENS_DIR)).filePath(QStringLiteral("chq_first_state.pdf"));
    QFile::remove(pdf);
    EXPECT_TRUE(form->printClick(pdf));
    EXPECT_GT(QFile(pdf).size(), 1000);
    form->close();
}

}  // namespace
}  // namespace tr::cheques
