// The receipt's settlement dialog offscreen: captions as the system words them, right to left,
// Space chooses an invoice and the remaining amount follows, typed allocations keep the rules,
// confirmation through the modal runner; a screenshot is kept for a look by eye.
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "cashbank/tests/settlement/settlement_fixture.h"
#include "cashbank/ui/settlement/cash_in_factor_dialog.h"
#include "cashbank/ui/settlement/variz_bank_in_factor_dialog.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::cashbank::ui {
namespace {

using testing::SettlementTest;
namespace demo = tr::schema::demo;

class InFactorFormTest : public SettlementTest {};

QStringList visibleTitles(QTableView& view) {
    QStringList titles;
    QHeaderView* header = view.horizontalHeader();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int section = header->logicalIndex(visual);
        if (!view.isColumnHidden(section))
            titles << view.model()->headerData(section, Qt::Horizontal).toString();
    }
    return titles;
}

TEST_F(InFactorFormTest, ReceiptDialogShowsItsTextsAndFollowsTheAllocations) {
    auto screen = open("10");
    prepare(*screen, 15000000, QString::fromUtf8(demo::kCustomerAftab));
    TCashInFactorForm form(screen->settlement);
    EXPECT_EQ(form.windowTitle(), QStringLiteral(" ثبت چک در صورتحساب"));
    EXPECT_EQ(form.titleBar()->text(), QStringLiteral("        ثبت دريافت صندوق در صورتحساب"));
    EXPECT_EQ(form.layoutDirection(), Qt::RightToLeft);
    EXPECT_TRUE(form.customerFilter()->isChecked());
    EXPECT_EQ(form.customerFilter()->text(), QStringLiteral("پالايش مشتري"));
    EXPECT_EQ(visibleTitles(*form.grid()),
              (QStringList{"P", "دوره مالي", "شماره صورتحساب", "تاريخ صورتحساب", "مبلغ صورتحساب",
                           "مانده صورتحساب", "مبلغ تخصيصي", "نام مشتري"}));
    EXPECT_EQ(form.amountLabel()->text(), QStringLiteral("15,000,000"));
    // Aftab's invoices of both periods: 950 (1403) and 1002 (1404).
    ASSERT_EQ(form.grid()->model()->rowCount(), 2);

    form.show();
    QApplication::processEvents();
    form.grid()->setCurrentIndex(form.grid()->model()->index(0, 0));
    QTest::keyClick(form.grid(), Qt::Key_Space);
    EXPECT_EQ(form.remainingLabel()->text(), QStringLiteral("0"));
    // Typing more than the invoice's open balance into the second row is refused.
    QAbstractItemModel* model = form.grid()->model();
    const int allocation = 6;  // "مبلغ تخصيصي"
    EXPECT_FALSE(model->setData(model->index(1, allocation), QStringLiteral("1,000")));
    EXPECT_TRUE(model->setData(model->index(0, allocation), QStringLiteral("9,000,000")));
    EXPECT_TRUE(model->setData(model->index(1, allocation), QStringLiteral("6,000,000")));
    EXPECT_EQ(form.remainingLabel()->text(), QStringLiteral("0"));
    EXPECT_EQ(model->data(model->index(1, 0)).toString(), QStringLiteral("P"));

    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form.grab().save(QStringLiteral(TR_SCREENS_DIR "/cash_in_factor_form.png")));

    tr::test::RecordingModalRunner runner;
    runner.answerBy([](QDialog& d) { d.findChild<QPushButton*>("cmdOk")->click(); });
    EXPECT_TRUE(form.ask());
    EXPECT_TRUE(screen->settlement.hasPendingAllocations());
}

TEST_F(InFactorFormTest, DepositDialogNamesItsNumber) {
    auto screen = open("50");
    prepare(*screen, 1000000, QString::fromUtf8(demo::kCustomerNegin));
    TVarizBankInFactorForm form(screen->settlement);
    EXPECT_EQ(form.windowTitle(), QStringLiteral(" ثبت چک در صورتحساب"));
    EXPECT_EQ(form.titleBar()->text(), QStringLiteral("        ثبت واريز بانک در صورتحساب"));
    const QList<QLabel*> labels = form.findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](QLabel* l) {
        return l->text() == QStringLiteral("شماره واريز بانک : ");
    }));
    // Negin has no open invoice; the filter off shows everyone's.
    EXPECT_EQ(form.grid()->model()->rowCount(), 0);
    form.customerFilter()->setChecked(false);
    EXPECT_EQ(form.grid()->model()->rowCount(), 3);
}

}  // namespace
}  // namespace tr::cashbank::ui
