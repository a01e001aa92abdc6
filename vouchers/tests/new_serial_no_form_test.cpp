// The new-serial window: right to left, its captions, the proposal on show, a refused serial
// keeping it open and "انصراف" closing it without accepting.
#include "vouchers/ui/new_serial_no_form.h"

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include "tests/support/recording_modal_runner.h"
#include "vouchers/tests/voucher_fixture.h"

namespace tr::vouchers {
namespace {

class NewSerialNoFormTest : public testing::VoucherTest {
  protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "tr_vouchers_tests";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance()) new QApplication(argc, argv);
        VoucherTest::SetUpTestSuite();
    }
};

TEST_F(NewSerialNoFormTest, ProposesAndAcceptsAFreeSerial) {
    insertDocumentLine(QStringLiteral("10"), 5);
    NewSerialDialog logic(company(), &admin->dialog, QStringLiteral("10"),
                          QStringLiteral("دريافت صندوق"));
    tr::test::RecordingModalRunner runner;
    QString proposed, groupTitle;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    runner.answerBy([&](QDialog& window) {
        window.show();
        auto& form = static_cast<TNewSerialNoForm&>(window);
        proposed = form.serialEdit()->text();
        groupTitle = form.groupBox()->title();
        direction = form.layoutDirection();
        form.okButton()->click();
    });
    EXPECT_TRUE(TNewSerialNoForm::execute(logic));
    EXPECT_EQ(runner.last().title, QStringLiteral("شماره سريال جديد"));
    EXPECT_EQ(proposed, QStringLiteral("6"));
    EXPECT_EQ(groupTitle, QStringLiteral("شماره دريافت صندوق جديد"));
    EXPECT_EQ(direction, Qt::RightToLeft);
    EXPECT_EQ(logic.serial(), QStringLiteral("6"));
}

TEST_F(NewSerialNoFormTest, ASavedSerialKeepsTheWindowOpenAndCancelLeavesUnaccepted) {
    insertDocumentLine(QStringLiteral("10"), 5);
    NewSerialDialog logic(company(), &admin->dialog, QStringLiteral("10"),
                          QStringLiteral("دريافت صندوق"));
    tr::test::RecordingModalRunner runner;
    bool openAfterRefusal = false;
    runner.answerBy([&](QDialog& window) {
        window.show();
        auto& form = static_cast<TNewSerialNoForm&>(window);
        EXPECT_EQ(form.okButton()->text(), QStringLiteral("تاييد"));
        EXPECT_EQ(form.cancelButton()->text(), QStringLiteral("انصراف"));
        form.serialEdit()->setText(QStringLiteral("5"));
        form.okButton()->click();
        openAfterRefusal = form.isVisible() && form.result() == 0;
        form.cancelButton()->click();
    });
    EXPECT_FALSE(TNewSerialNoForm::execute(logic));
    EXPECT_TRUE(openAfterRefusal);
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
}

TEST_F(NewSerialNoFormTest, APastedSerialWithAControlCharacterIsRefusedInWords) {
    NewSerialDialog logic(company(), &admin->dialog, QStringLiteral("10"),
                          QStringLiteral("دريافت صندوق"));
    EXPECT_FALSE(logic.confirm(QStringLiteral("7\x0B")));
    EXPECT_FALSE(logic.accepted());
    EXPECT_EQ(admin->dialog.last().text, QStringLiteral("سريال داراي حرف غير مجاز است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_TRUE(logic.confirm(QStringLiteral("7\n")));
    EXPECT_EQ(logic.serial(), QStringLiteral("7"));
}

}  // namespace
}  // namespace tr::vouchers
