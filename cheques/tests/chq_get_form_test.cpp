// The received-cheque window: a cheque typed into the grid with Insert, its counterparty line
// following it, "تاييد" posting the document, a screenshot left for a look by eye.
#include "cheques/ui/chq_get_form.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "common/db/query_helpers.h"
#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
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

}  // namespace
}  // namespace tr::cheques
