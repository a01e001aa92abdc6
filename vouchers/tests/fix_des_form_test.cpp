// TFixDesForm offscreen: a row typed through the grid is stored, a refused row keeps its place,
// the columns read right to left as designed; a screenshot is kept for a look by eye.
#include "vouchers/ui/fix_des_form.h"

#include <gtest/gtest.h>

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include "common/ui/dataset_model.h"
#include "vouchers/tests/account_test_session.h"

namespace tr::vouchers {
namespace {

class FixDesFormTest : public testing::SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        form = std::make_unique<TFixDesForm>(services);
        form->resize(820, 360);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    }
    void TearDown() override {
        form.reset();
        company().execute(QStringLiteral("Delete From FixDes Where Koll = '301'"));
    }
    void type(const QString& field, const QString& text) {
        QTableView* grid = form->grid();
        const QModelIndex index =
            form->model()->index(form->model()->currentRow(), form->model()->fieldColumn(field));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the last editor
        grid->setCurrentIndex(index);
        grid->edit(index);
        QLineEdit* editor = nullptr;
        for (QLineEdit* e : grid->viewport()->findChildren<QLineEdit*>()) {
            if (e->isVisible()) editor = e;
        }
        ASSERT_NE(editor, nullptr) << field.toStdString();
        // QTest::keyClicks knows only Latin keys; Persian letters arrive as text-only key events.
        for (const QChar c : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QApplication::sendEvent(editor, &press);
        }
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();  // the delegate commits the value queued
    }

    std::unique_ptr<TFixDesForm> form;
};

TEST_F(FixDesFormTest, RowTypedThroughTheGridIsStored) {
    QTableView* grid = form->grid();
    EXPECT_EQ(form->layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(form->windowTitle(), QStringLiteral("ثبت شرح ثابت اسناد"));
    const int before = form->model()->rowCount();

    QTest::keyClick(grid, Qt::Key_Insert);
    type(QStringLiteral("FixDes"), QStringLiteral("بابت افزايش سرمايه"));
    type(QStringLiteral("Koll"), QStringLiteral("301"));
    type(QStringLiteral("Moein"), QStringLiteral("0001"));
    QTest::keyClick(grid, Qt::Key_Down);  // leaving the last row posts it

    EXPECT_TRUE(dialog.shown().isEmpty()) << messages().join(u'|').toStdString();
    EXPECT_EQ(form->model()->rowCount(), before + 1);
    EXPECT_EQ(scalar(QStringLiteral("Select FixDes From FixDes Where Koll = '301'")).toString(),
              QStringLiteral("بابت افزايش سرمايه"));

    // Columns left to right on screen: ProjectCod ... شرح.
    QHeaderView* header = grid->horizontalHeader();
    QStringList leftToRight;
    QList<int> sections;
    for (int i = 0; i < header->count(); ++i) sections << header->logicalIndex(i);
    std::sort(sections.begin(), sections.end(), [&](int a, int b) {
        return header->sectionViewportPosition(a) < header->sectionViewportPosition(b);
    });
    for (int s : sections) leftToRight << form->model()->headerData(s, Qt::Horizontal).toString();
    EXPECT_EQ(leftToRight, (QStringList{"ProjectCod", "تفصيلي 2", "تفصيلي", "معين", "کل", "شرح"}));

    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    EXPECT_TRUE(form->grab().save(QStringLiteral(TR_SCREENS_DIR "/fix_des_form.png")));
}

TEST_F(FixDesFormTest, RefusedRowStaysInEditOnTheCellToFix) {
    QTableView* grid = form->grid();
    QTest::keyClick(grid, Qt::Key_Insert);
    type(QStringLiteral("FixDes"), QStringLiteral("بابت سرمايه"));
    type(QStringLiteral("Koll"), QStringLiteral("301"));
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(messages(), QStringList{"كد حساب معين موجود نمي باشد."});
    EXPECT_EQ(form->screen().grid().state(), tr::db::Query::State::Insert);
    EXPECT_EQ(form->model()->fieldName(grid->currentIndex().column()), QStringLiteral("Moein"));
    type(QStringLiteral("Moein"), QStringLiteral("0001"));
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(form->screen().grid().state(), tr::db::Query::State::Browse);
}

TEST_F(FixDesFormTest, ClosingHidesTheForm) {
    form->close();
    EXPECT_TRUE(form->isHidden());
    form->show();
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FixDesFormTest, ReportPrintsToPdf) {
    const QString file = QStringLiteral(TR_SCREENS_DIR "/fix_des_report.pdf");
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    QFile::remove(file);
    form->printReport(file);
    EXPECT_GT(QFileInfo(file).size(), 1000);
}

}  // namespace
}  // namespace tr::vouchers
