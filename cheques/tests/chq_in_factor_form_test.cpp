// "ثبت چک در صورتحساب" as the user reaches it: the received-cheque window's menu item on the
// cheque under the cursor, two invoices chosen in the window, "تاييد", the document saved; the
// window's screenshot and its report's PDF are left in screens/.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionViewItem>
#include <QAbstractItemDelegate>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cheques/tests/cheque_typing.h"

#include "cheques/received_cheque_document.h"
#include "cheques/ui/chq_in_factor_form.h"
#include "common/db/query_helpers.h"
#include "common/persian/amount.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "db/schema/demo_company.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

namespace demo = tr::schema::demo;

class ChqInFactorFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        company().execute(QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1, MandehFactor = FactorValue - "
                                         "NaghdValue1"));
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        session->global.sCode = QString::fromUtf8(demo::kCompanyCode);
        session->global.sYear = QString::fromUtf8(demo::kCurrentYear);
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    }
    void TearDown() override { session.reset(); }
    std::unique_ptr<tr::test::TestSession> session;
};

// Types `value` into the allocation cell of `invoice`'s row as the user does: in the editor the
// grid opens on the cell, committed by the grid's delegate.
void typeAllocation(QTableView& grid, const QString& invoice, const QString& value, double expected) {
    QAbstractItemModel* model = grid.model();
    int invoiceColumn = -1, amountColumn = -1;
    for (int c = 0; c < model->columnCount(); ++c) {
        const QString title = model->headerData(c, Qt::Horizontal).toString();
        if (title == QStringLiteral("شماره صورتحساب")) invoiceColumn = c;
        if (title == QStringLiteral("مبلغ تخصيصي")) amountColumn = c;
    }
    ASSERT_GE(invoiceColumn, 0);
    ASSERT_GE(amountColumn, 0);
    for (int r = 0; r < model->rowCount(); ++r) {
        if (model->index(r, invoiceColumn).data().toString().trimmed() != invoice) continue;
        const QModelIndex cell = model->index(r, amountColumn);
        grid.setCurrentIndex(cell);
        QAbstractItemDelegate* delegate = grid.itemDelegateForIndex(cell);
        QStyleOptionViewItem option;
        std::unique_ptr<QWidget> editor(delegate->createEditor(grid.viewport(), option, cell));
        auto* line = qobject_cast<QLineEdit*>(editor.get());
        ASSERT_NE(line, nullptr) << "the allocation is typed as text";
        delegate->setEditorData(line, cell);
        line->selectAll();
        QTest::keyClicks(line, value);
        delegate->setModelData(line, model, cell);
        const QString shown = model->index(r, amountColumn).data(Qt::EditRole).toString();
        EXPECT_EQ(tr::persian::readAmount(shown).value, expected) << shown.toStdString();
        return;
    }
    ADD_FAILURE() << "invoice not listed: " << invoice.toStdString();
}

TEST_F(ChqInFactorFormTest, TwoAllocationsTypedInTheWindowAreSavedWithTheDocument) {
    ReceivedChequeDocument doc(session->services);
    doc.newDocument();
    doc.header().date = QStringLiteral("1404/04/01");
    doc.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0001"), QString::fromUtf8(demo::kCustomerAftab), {}, {}};
    ASSERT_TRUE(testing::typeReceivedCheque(doc.cheques(), {QStringLiteral("8101"), 10000000}));

    const auto payer = doc.settlement().payerForCurrentCheque();
    ASSERT_TRUE(payer);
    ui::TChqInFactorForm form(*payer);
    EXPECT_EQ(form.windowTitle(), QStringLiteral(" ثبت چک در صورتحساب"));
    EXPECT_EQ(form.titleBar()->text(), QStringLiteral("        ثبت چک در صورتحساب"));
    EXPECT_EQ(form.customerFilter()->text(), QStringLiteral("پالايش"));
    EXPECT_FALSE(form.customerFilter()->isChecked());
    typeAllocation(*form.grid(), QStringLiteral("950"), QStringLiteral("6,000,000"), 6000000);
    typeAllocation(*form.grid(), QStringLiteral("1002"), QStringLiteral("4000000"), 4000000);
    EXPECT_EQ(form.remainingLabel()->text(), QStringLiteral("0"));
    // The cheque columns are shown.
    QStringList titles;
    for (int c = 0; c < form.grid()->model()->columnCount(); ++c)
        if (!form.grid()->isColumnHidden(c)) titles << form.grid()->model()->headerData(c, Qt::Horizontal).toString();
    EXPECT_TRUE(titles.contains(QStringLiteral("مبلغ چک")));
    EXPECT_TRUE(titles.contains(QStringLiteral("شماره چک")));

    form.resize(1000, 420);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    EXPECT_TRUE(form.grab().save(QStringLiteral(TR_SCREENS_DIR "/chq_in_factor.png")));
    const QString pdf = QStringLiteral(TR_SCREENS_DIR "/chq_in_factor_report.pdf");
    QFile::remove(pdf);
    EXPECT_TRUE(form.printList(pdf));
    EXPECT_GT(QFileInfo(pdf).size(), 1000);
    // The report's items are on the grid's menu.
    QStringList items;
    for (QAction* a : form.grid()->actions()) items << a->text();
    EXPECT_EQ(items, (QStringList{QStringLiteral("مشخصات گزارش [مشخصات ثبت چک در فاکتور]"), QStringLiteral("چاپ")}));

    QTest::mouseClick(form.okButton(), Qt::LeftButton);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    ASSERT_TRUE(doc.save()) << session->dialog.last().text.toStdString();
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Sum(NaghdValue) From R_ForoshRelatedNaghd Where "
                                                            "WhatDoc = '71'"))
                  .toDouble(),
              10000000);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
