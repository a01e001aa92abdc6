// The leaf-voiding window over a host's content area: both modes' captions, the number box that
// takes only digits and no more than the book keeps, the book shown when a box is left, and the
// confirm button voiding a leaf and then undoing it; a screenshot of each mode is left for a look.
#include "cheques/ui/ebtal_barge_check_form.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class EbtalBargeCheckFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(company());
        area = std::make_unique<QWidget>();
        area->resize(1000, 650);
        area->show();
        // As the entry point opens it: parented, given its mode, shown.
        form = new TEbtalBargeCheckForm(session->services, area.get());
        form->setVoidMode(true);
        form->show();
    }
    void TearDown() override {
        area.reset();
        session.reset();
    }
    // Typed into a box and left with Return.
    static void type(QLineEdit* box, const QString& text) {
        box->clear();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    }
    QStringList shown() const {
        QStringList out;
        for (QLineEdit* box : form->shownBoxes()) out << box->text();
        return out;
    }
    void saveScreen(const char* name) {
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/%1.png").arg(QLatin1String(name))));
    }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<QWidget> area;
    TEbtalBargeCheckForm* form = nullptr;
};

TEST_F(EbtalBargeCheckFormTest, VoidsALeafAndUndoesItInTheOtherMode) {
    EXPECT_EQ(form->titleLabel()->text(), QStringLiteral("       ابطال برگه چك"));
    EXPECT_EQ(form->confirmButton()->text(), QStringLiteral("تاييد ابطال چك"));
    EXPECT_EQ(form->layoutDirection(), Qt::RightToLeft);
    // Its designed size, over the middle of the area.
    EXPECT_LT(form->width(), area->width());
    EXPECT_GT(form->x(), 0);
    // As wide as both the state rows' and the voucher lines' cheque number.
    EXPECT_EQ(form->numberBox()->maxLength(), 20);
    EXPECT_EQ(form->seriesBox()->maxLength(), 10);

    type(form->seriesBox(), QStringLiteral("12"));
    type(form->numberBox(), QStringLiteral("10x0007"));
    EXPECT_EQ(form->numberBox()->text(), QStringLiteral("100007"));
    EXPECT_EQ(shown(), (QStringList{QStringLiteral("بانک ملي"), QStringLiteral("شعبه مرکزي"),
                                    QStringLiteral("0101234567"), QStringLiteral("بانک ها"),
                                    QStringLiteral("حسابهاي بانکي ريالي"), QStringLiteral("بانک ملي شعبه مرکزي"),
                                    QString(), QString()}));
    EXPECT_TRUE(session->dialog.shown().isEmpty()) << session->dialog.last().text.toStdString();
    saveScreen("ebtal_barge_check_void");

    QTest::mouseClick(form->confirmButton(), Qt::LeftButton);
    ASSERT_FALSE(session->dialog.shown().isEmpty());
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("برگه چك باطل شد."));
    EXPECT_TRUE(leafVoidedOn(company(), QStringLiteral("100007"), QStringLiteral("12")).has_value());

    form->setVoidMode(false);
    EXPECT_EQ(form->titleLabel()->text(), QStringLiteral("       برگشت ابطال برگه چك"));
    EXPECT_EQ(form->confirmButton()->text(), QStringLiteral("تاييد برگشت ابطال"));
    saveScreen("ebtal_barge_check_undo");
    QTest::mouseClick(form->confirmButton(), Qt::LeftButton);
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("عمليات با موفقيت انجام شد."));
    EXPECT_FALSE(leafVoidedOn(company(), QStringLiteral("100007"), QStringLiteral("12")).has_value());
}

TEST_F(EbtalBargeCheckFormTest, ALeafOfAnotherSeriesIsToldOnceAndShowsNoBook) {
    type(form->seriesBox(), QStringLiteral("12"));
    type(form->numberBox(), QStringLiteral("100007"));
    ASSERT_FALSE(shown().front().isEmpty());
    type(form->seriesBox(), QStringLiteral("7"));
    ASSERT_EQ(session->dialog.shown().size(), 1);
    EXPECT_EQ(session->dialog.last().text, QStringLiteral("سري چک را صحيح وارد کنيد."));
    EXPECT_EQ(shown(), QStringList(8, QString()));
    // Leaving the boxes again, unchanged, asks nothing more.
    QTest::keyClick(form->seriesBox(), Qt::Key_Return);
    QTest::keyClick(form->numberBox(), Qt::Key_Return);
    EXPECT_EQ(session->dialog.shown().size(), 1);
}

}  // namespace
}  // namespace tr::cheques
