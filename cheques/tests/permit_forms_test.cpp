// The permit's windows: a permit typed with its components on TChqMojavezForm, the components
// screen, each manager's approval screen, and the payment's permit box; screenshots are left in
// screens/ for a look by eye.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cheques/tests/grid_keys.h"
#include "cheques/tests/permit_fixture.h"
#include "cheques/ui/chq_mojavez_form.h"
#include "cheques/ui/chq_mojavez_taed_form.h"
#include "cheques/ui/chq_pay_form.h"
#include "cheques/ui/permit_components_form.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cheques {
namespace {

using tr::ui::DatasetModel;

void screenshot(QWidget& w, const char* name) {
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(w.grab().save(QStringLiteral(TR_SCREENS_DIR "/") + QString::fromLatin1(name)));
}

class PermitFormsTest : public testing::PermitTest {
  protected:
    static DatasetModel* model(QTableView* grid) { return static_cast<DatasetModel*>(grid->model()); }
    static QModelIndex cell(QTableView* grid, int row, const char* field) {
        return model(grid)->index(row, model(grid)->fieldColumn(QString::fromLatin1(field)));
    }
    static int rowOf(QTableView* grid, const QString& serial) {
        for (int r = 0; r < model(grid)->rowCount(); ++r)
            if (cell(grid, r, "Serial").data().toString().trimmed() == serial) return r;
        return -1;
    }
};

TEST_F(PermitFormsTest, APermitIsTypedWithItsComponentsAndShowsItsApproval) {
    TChqMojavezForm form(session->services);
    form.resize(1200, 620);
    form.show();
    EXPECT_FALSE(form.openingButton()->isVisible());
    EXPECT_FALSE(form.permitBox()->isVisible());
    form.document().header().date = QStringLiteral("1404/02/10");
    form.document().lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("30001"), {}, {}};
    ASSERT_TRUE(typeLeaf(form.permit(), QStringLiteral("100045"), 87000000)) << lastMessage().toStdString();
    // The components: the contract less 10% kept for good work and 3% tax.
    tr::test::RecordingModalRunner runner;
    runner.answerBy([&](QDialog& dialog) {
        auto& components = static_cast<PermitComponentsForm&>(dialog);
        EXPECT_EQ(components.windowTitle(), PermitComponentsForm::kCaption);
        DatasetModel* m = model(components.grid());
        const auto at = [&](int row, const char* field) { return m->index(row, m->fieldColumn(QString::fromLatin1(field))); };
        EXPECT_EQ(m->headerData(m->fieldColumn(QStringLiteral("PMojavezNam")), Qt::Horizontal).toString(),
                  QStringLiteral("عوامل مجوز پرداخت چك"));
        EXPECT_TRUE(m->setData(at(0, "FactValue"), 100000000.0));
        EXPECT_TRUE(m->setData(at(1, "Nerkh"), 10.0));
        EXPECT_TRUE(m->setData(at(2, "Nerkh"), 3.0));
        for (int row : {1, 2}) {
            components.grid()->setCurrentIndex(at(row, "Sign"));
            QTest::keyClick(components.grid(), Qt::Key_Space);
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(at(1, "Sign").data().toString(), QStringLiteral("-"));
        EXPECT_TRUE(components.totalsLabel()->text().contains(QStringLiteral("جمع عوامل 87,000,000")))
            << components.totalsLabel()->text().toStdString();
        components.resize(620, 260);
        screenshot(components, "permit_components_form.png");
        components.confirm();
    });
    QTest::mouseClick(form.componentsButton(), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(cell(form.chequeGrid(), 0, "FactValue").data(Qt::EditRole).toDouble(), 87000000);
    screenshot(form, "chq_mojavez_form.png");
    QTest::mouseClick(form.saveButton(), Qt::LeftButton);
    ASSERT_EQ(form.document().mode(), DocumentMode::Edit) << lastMessage().toStdString();
    EXPECT_EQ(count("Select Count(*) From N_MojavezFact Where Serial = 1"), 3);
    // Approved by the finance manager: the note after the serial once loaded.
    ASSERT_TRUE(decide(QStringLiteral("1"), Approver::FinanceManager, QStringLiteral("1404/02/11")));
    form.serialBox()->setText(QStringLiteral("1"));
    form.document().header().serial.clear();
    emit form.serialBox()->editingFinished();
    EXPECT_EQ(form.approvalNoteLabel()->text(), QStringLiteral("(سند توسط مديرمالي تاييد شده است)"));
    screenshot(form, "chq_mojavez_form_approved.png");
}

// A leaf typed key by key on the permit's window, as in a real window: its amount, grouped as
// users type it, is kept, and the components' column after it (read only) is skipped.
TEST_F(PermitFormsTest, ALeafTypedKeyByKeyKeepsItsAmount) {
    TChqMojavezForm form(session->services);
    form.resize(1200, 620);
    form.show();
    form.document().header().date = QStringLiteral("1404/02/10");
    form.document().lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("30001"), {}, {}};
    QTableView* grid = form.chequeGrid();
    testing::startFirstRow(&form, grid);
    ASSERT_EQ(model(grid)->fieldName(grid->currentIndex().column()), QStringLiteral("ChqNo"));
    testing::typeInCell(grid, QStringLiteral("100045"));
    testing::typeInCell(grid, QStringLiteral("12"));
    testing::typeInCell(grid, QStringLiteral("87,000,000"));
    EXPECT_EQ(tr::persian::readAmount(cell(grid, 0, "ChqValue").data(Qt::EditRole).toString()).value, 87000000)
        << cell(grid, 0, "ChqValue").data(Qt::EditRole).toString().toStdString();
    // Shown as typed until the row posts.
    EXPECT_EQ(cell(grid, 0, "ChqValue").data().toString(), QStringLiteral("87,000,000"));
    EXPECT_EQ(model(grid)->fieldName(grid->currentIndex().column()), QStringLiteral("SarResidDate"));
}

TEST_F(PermitFormsTest, EachManagerApprovesOnHisOwnList) {
    const QString first = writePermit({QStringLiteral("100046")});
    const QString second = writePermit({QStringLiteral("100047"), QStringLiteral("100048")});
    TChqMojavezTaedForm form(session->services);
    form.resize(1200, 420);
    form.show();
    // The administrator holds both rights: the approver is his choice.
    ASSERT_EQ(form.approverBox()->count(), 2);
    EXPECT_TRUE(form.approverBox()->isEnabled());
    QTableView* grid = form.grid();
    ASSERT_EQ(model(grid)->rowCount(), 2);
    EXPECT_EQ(model(grid)->headerData(model(grid)->fieldColumn(QStringLiteral("sValue")), Qt::Horizontal).toString(),
              QStringLiteral("جمع مبلغ"));
    grid->setFocus();
    for (const QString& serial : {first, second}) {
        grid->setCurrentIndex(cell(grid, rowOf(grid, serial), "sSelect"));
        QTest::keyClick(grid, Qt::Key_Space);
    }
    form.dateBox()->setText(QStringLiteral("1404/02/11"));
    screenshot(form, "chq_mojavez_taed_form_finance.png");
    QTest::mouseClick(form.confirmButton(), Qt::LeftButton);
    EXPECT_EQ(lastMessage(), QStringLiteral("تغييرات ثبت شد."));
    EXPECT_EQ(permitValue(second, "ModirMaleDate"), QStringLiteral("1404/02/11"));
    // The managing director: the finance manager's approvals, his own column to tick.
    form.approverBox()->setCurrentIndex(1);
    emit form.approverBox()->activated(1);
    ASSERT_EQ(model(grid)->rowCount(), 2);
    EXPECT_EQ(cell(grid, 0, "ModirMale").data().toString(), PermitApproval::kTicked);
    grid->setCurrentIndex(cell(grid, rowOf(grid, first), "sSelect"));
    QTest::keyClick(grid, Qt::Key_Space);
    form.dateBox()->setText(QStringLiteral("1404/02/12"));
    screenshot(form, "chq_mojavez_taed_form_director.png");
    QTest::mouseClick(form.confirmButton(), Qt::LeftButton);
    EXPECT_EQ(permitValue(first, "ModirAmelDate"), QStringLiteral("1404/02/12"));
    EXPECT_EQ(permitValue(second, "ModirAmelDate"), QString());
    // A user holding one right has no choice.
    tr::test::TestSession director(company(), 3, QStringLiteral("modir"), PermitApproval::kManagingDirectorRight);
    TChqMojavezTaedForm only(director.services);
    EXPECT_EQ(only.approverBox()->count(), 1);
    EXPECT_FALSE(only.approverBox()->isEnabled());

    // The payment's permit box takes the approved permit's rows, and refuses the other.
    TChqPayForm payment(session->services);
    payment.resize(1200, 620);
    payment.show();
    payment.document().header().date = QStringLiteral("1404/02/20");
    payment.permitBox()->setText(second);
    emit payment.permitBox()->editingFinished();
    EXPECT_EQ(lastMessage(), QStringLiteral("اين مجوز دستور پرداخت هنوز به تاييد مديرعامل نرسيده است."));
    EXPECT_TRUE(payment.permitBox()->text().isEmpty());
    payment.permitBox()->setText(first);
    emit payment.permitBox()->editingFinished();
    EXPECT_EQ(model(payment.chequeGrid())->rowCount(), 1);
    QTest::mouseClick(payment.saveButton(), Qt::LeftButton);
    ASSERT_EQ(payment.document().mode(), DocumentMode::Edit) << lastMessage().toStdString();
    EXPECT_EQ(payment.permitBox()->text(), first);
    EXPECT_EQ(permitValue(first, "ChqPaySerial"), payment.document().header().serial);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

}  // namespace
}  // namespace tr::cheques
