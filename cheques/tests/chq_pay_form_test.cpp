// The cheque payment's window: our own leaf typed with the keys (the account from its list), a
// received cheque passed on beside it, Space turning a row from one kind to the other, the save,
// and a screenshot left for a look by eye.
#include "cheques/ui/chq_pay_form.h"

#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"
#include "cheques/tests/grid_keys.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cheques/received_cheque_document.h"
#include "common/db/query_helpers.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "cheques/ui/chq_get_slct_form.h"
#include "tests/support/recording_modal_runner.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class ChqPayFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQPAY_"), QStringLiteral("N_A_CHQGET_")}));
        form = std::make_unique<TChqPayForm>(session->services);
        form->resize(1200, 620);
        form->show();
    }
    void TearDown() override {
        form.reset();
        session.reset();
    }
    void receive(const QString& number, double value, const QString& guarantee = {}) {
        testing::receiveThroughScreen(session->services, {number, value, QStringLiteral("ج"), QStringLiteral("1404/04/01")},
                                      [&](tr::db::Query& g) {
                                          g.FieldByName(QStringLiteral("Tazmin")).SetValue(guarantee);
                                          g.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("چك مشتري ") + number);
                                      });
    }
    tr::ui::DatasetModel* model() { return static_cast<tr::ui::DatasetModel*>(form->chequeGrid()->model()); }
    QModelIndex cell(int row, const char* field) { return model()->index(row, model()->fieldColumn(QString::fromLatin1(field))); }
    void type(int row, const char* field, const QVariant& value) { ASSERT_TRUE(model()->setData(cell(row, field), value)); }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<TChqPayForm> form;
};

TEST_F(ChqPayFormTest, AnOwnLeafAndAChequePassedOnSaveTogether) {
    // A customer's cheque in hand to pass on.
    receive(QStringLiteral("5201"), 800000.0);
    form->document().header().date = QStringLiteral("1404/02/20");
    form->document().lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("20001"), {}, {}};
    QTableView* grid = form->chequeGrid();
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Insert);
    EXPECT_EQ(cell(0, "ChqStateNam").data().toString(), ChequePaymentDocument::kIssue);
    // Space on the state cell: passed on, and back.
    grid->setCurrentIndex(cell(0, "ChqStateNam"));
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(cell(0, "ChqStateNam").data().toString(), ChequePaymentDocument::kSpend);
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(cell(0, "ChqStateNam").data().toString(), ChequePaymentDocument::kIssue);
    // F2 on the account: the first bank account, its payable heads, its balance in the header.
    grid->setCurrentIndex(cell(0, "AcountCod"));
    session->pickList.chooseWhere(QStringLiteral("AcountID"), QStringLiteral("1"));
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_EQ(cell(0, "AcountCod").data().toString().trimmed(), QStringLiteral("0101234567"));
    EXPECT_EQ(cell(0, "Koll").data().toString().trimmed(), QStringLiteral("201"));
    EXPECT_FALSE(form->bankBalanceLabel()->text().isEmpty());
    type(0, "ChqNo", QStringLiteral("100012"));
    type(0, "Joz", QStringLiteral("12"));
    type(0, "ChqValue", QStringLiteral("1,200,000"));  // as the cell's editor gives it back
    type(0, "SarResidDate", QStringLiteral("1404/03/15"));
    type(0, "Des", QStringLiteral("خريد کالا"));
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_TRUE(session->dialog.shown().isEmpty()) << session->dialog.last().text.toStdString();
    // The second row passes the customer's cheque on.
    ASSERT_TRUE(form->payment().spendCheque(QStringLiteral("5201"), QStringLiteral("ج")))
        << session->dialog.last().text.toStdString();
    form->document().cheques().FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("پرداخت به تامين کننده"));
    ASSERT_TRUE(form->document().postCheque()) << session->dialog.last().text.toStdString();
    model()->refresh();
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_pay_form.png")));
    QTest::mouseClick(form->saveButton(), Qt::LeftButton);
    ASSERT_EQ(form->document().mode(), DocumentMode::Edit) << session->dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81'")).toInt(), 2);
    EXPECT_TRUE(form->totalsLabel()->text().contains(QStringLiteral("2,000,000")));
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

// Our leaf typed key by key, as in a real window: each cell's editor opened by the Tab before it;
// the window is then closed with the due date's editor still open.
TEST_F(ChqPayFormTest, ALeafTypedKeyByKeyKeepsItsAmount) {
    form->document().header().date = QStringLiteral("1404/02/20");
    form->document().lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("20001"), {}, {}};
    QTableView* grid = form->chequeGrid();
    const auto typeCell = [grid](const QString& text) { testing::typeInCell(grid, text); };
    testing::startFirstRow(form.get(), grid);
    ASSERT_EQ(model()->fieldName(grid->currentIndex().column()), QStringLiteral("ChqNo"));
    typeCell(QStringLiteral("100012"));
    typeCell(QStringLiteral("12"));
    typeCell(QStringLiteral("1,200,000"));
    EXPECT_EQ(model()->fieldName(grid->currentIndex().column()), QStringLiteral("SarResidDate"));
    EXPECT_EQ(tr::persian::readAmount(cell(0, "ChqValue").data(Qt::EditRole).toString()).value, 1200000)
        << cell(0, "ChqValue").data(Qt::EditRole).toString().toStdString();
}

TEST_F(ChqPayFormTest, TheSpendPickerOffersChequesInHandAndRefusesGuaranteeOnes) {
    receive(QStringLiteral("900"), 300000);
    receive(QStringLiteral("1000"), 500000);
    receive(QStringLiteral("1100"), 700000, QStringLiteral("ض"));
    receive(QStringLiteral("1200"), 900000);
    // One of them is in collection: not in hand.
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('72', '1200', 'ج', '1404/02/15', '1', 0)"));
    form->document().header().date = QStringLiteral("1404/02/20");
    form->document().lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("20001"), {}, {}};
    QTableView* grid = form->chequeGrid();
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Insert);
    grid->setCurrentIndex(cell(0, "ChqStateNam"));
    QTest::keyClick(grid, Qt::Key_Space);
    grid->setCurrentIndex(cell(0, "ChqNo"));
    tr::test::RecordingModalRunner runner;
    QStringList listed;
    QString refusal, none;
    runner.answerBy([&](QDialog& dialog) {
        auto& picker = static_cast<TChqGetSlctFrm&>(dialog);
        QAbstractItemModel* m = picker.grid()->model();
        auto* dm = static_cast<tr::ui::DatasetModel*>(m);
        for (int r = 0; r < m->rowCount(); ++r) listed << m->index(r, dm->fieldColumn(QStringLiteral("ChqNo"))).data().toString().trimmed();
        picker.confirm();  // nothing chosen yet
        none = session->dialog.last().text;
        // The guarantee cheque (third) is refused; the first two are taken.
        for (int r : {2, 0, 1}) {
            picker.grid()->setCurrentIndex(m->index(r, 1));
            QTest::keyClick(picker.grid(), Qt::Key_Space);
            if (r == 2) refusal = session->dialog.last().text;
        }
        picker.resize(900, 300);
        picker.grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_get_slct_form.png"));
        picker.confirm();
    });
    QTest::keyClick(grid, Qt::Key_F2);
    ASSERT_EQ(runner.shown().size(), 1);
    // In hand, in number order (the numbers right-aligned for it); the one in collection left out.
    EXPECT_EQ(listed, (QStringList{QStringLiteral("900"), QStringLiteral("1000"), QStringLiteral("1100")}));
    EXPECT_EQ(none, QStringLiteral("چکي انتخاب نشده است. "));
    EXPECT_EQ(refusal, QStringLiteral("چک هاي تضميني را نمي توان انتخاب کرد"));
    ASSERT_TRUE(form->document().postCheque()) << session->dialog.last().text.toStdString();
    model()->refresh();
    ASSERT_EQ(model()->rowCount(), 2);
    EXPECT_EQ(cell(0, "ChqNo").data().toString().trimmed(), QStringLiteral("900"));
    EXPECT_EQ(cell(1, "ChqStateNam").data().toString(), ChequePaymentDocument::kSpend);
    QTest::mouseClick(form->saveButton(), Qt::LeftButton);
    ASSERT_EQ(form->document().mode(), DocumentMode::Edit) << session->dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc = '81' And "
                                                            "IsNull(CodWhatDoc, '') = ''"))
                  .toInt(),
              2);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
