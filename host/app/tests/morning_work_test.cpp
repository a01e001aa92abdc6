// A morning's work at the desk, through the real widgets of the demo host and the built library
// (offscreen): the receipt opened from the tree, typed with the keys, refused for an impossible
// date and a mistyped amount, confirmed, reopened by its serial, edited, cancelled and undone,
// found by the search and opened from its row, and the window closed over unsaved work.
// Screenshots of the steps are left in the screens folder.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include "host/app/host_session.h"
#include "host/app/login_dialog.h"
#include "db/schema/demo_company.h"
#include "host/app/main_window.h"
#include "host/app/treasury_library.h"
#include "tests/support/pdf_text.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::host {
namespace {

// Key clicks carrying any text, Persian included (QTest's own map knows only ASCII keys).
void typeText(QWidget* widget, const QString& text) {
    for (const QChar c : text) {
        const Qt::Key key = c.unicode() < 128 ? Qt::Key(c.toUpper().unicode()) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Press, widget, key, QString(c), Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Release, widget, key, QString(c), Qt::NoModifier);
    }
}

class MorningAtTheDesk : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        logIn();
        ASSERT_NE(session, nullptr);
        window = std::make_unique<MainWindow>(*session, library);
        window->resize(1366, 768);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    // The login as the user meets it: the first user of the list, the demo company's newest year
    // preselected, Enter to log in.
    void logIn() {
        LoginDialog login(data);
        login.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&login));
        login.userBox()->setFocus();
        QTest::keyClick(login.userBox(), Qt::Key_Home);
        EXPECT_EQ(login.userBox()->currentText(), QStringLiteral("مدير سيستم"));
        EXPECT_EQ(login.companyYear().code, QString::fromLatin1(tr::schema::demo::kCompanyCode));
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        login.grab().save(QStringLiteral(TR_SCREENS_DIR "/morning_0_login.png"));
        QTest::keyClick(login.userBox(), Qt::Key_Return);
        ASSERT_EQ(login.result(), QDialog::Accepted);
        session = std::make_unique<HostSession>(data, login.user(), login.companyYear());
    }

    QLineEdit* box(QWidget* form, const char* name) {
        auto* edit = form->findChild<QLineEdit*>(QString::fromLatin1(name));
        EXPECT_NE(edit, nullptr) << name;
        return edit;
    }
    // Types into a box as the user does: into it, then on to the next one.
    void type(QWidget* form, const char* name, const QString& text) {
        QLineEdit* edit = box(form, name);
        edit->setFocus();
        edit->selectAll();
        typeText(edit, text);
        QTest::keyClick(edit, Qt::Key_Tab);
    }
    static QAction* action(QWidget* owner, const QString& text) {
        for (QAction* a : owner->findChildren<QAction*>())
            if (a->text() == text) return a;
        for (QAction* a : owner->actions())
            if (a->text() == text) return a;
        return nullptr;
    }
    static int column(QTableView* grid, const QString& title) {
        for (int c = 0; c < grid->model()->columnCount(); ++c)
            if (grid->model()->headerData(c, Qt::Horizontal).toString() == title) return c;
        return -1;
    }
    // Into a cell of the current line, through the cell's editor.
    static void cell(QTableView* grid, const QString& title, const QString& text) {
        const QModelIndex index = grid->model()->index(grid->currentIndex().row(), column(grid, title));
        grid->setCurrentIndex(index);
        grid->edit(index);
        QWidget* editor = QApplication::focusWidget();
        ASSERT_NE(editor, grid) << title.toStdString();
        typeText(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
    }
    void screenshot(const QString& name) {
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        QApplication::processEvents();
        window->grab().save(QStringLiteral(TR_SCREENS_DIR "/morning_%1.png").arg(name));
    }
    QString status(QWidget* form) { return form->findChild<QLabel*>(QStringLiteral("lblStatus"))->text(); }
    QString lastMessage() { return runner.shown().isEmpty() ? QString() : runner.last().text; }

    QTemporaryDir dir;
    DataDirectory data{dir.path()};
    std::unique_ptr<HostSession> session;
    TreasuryLibrary library;
    std::unique_ptr<MainWindow> window;
    tr::test::RecordingModalRunner runner;
};

TEST_F(MorningAtTheDesk, AReceiptFromTheTreeToTheSearchAndBack) {
    // The receipt, from the tree.
    QTreeWidget* tree = window->screenTree();
    const auto items = tree->findItems(QStringLiteral("دريافت صندوق"), Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_FALSE(items.isEmpty());
    tree->scrollToItem(items.front());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(items.front()).center());
    QWidget* form = window->contentArea()->findChild<QWidget*>(QStringLiteral("CashGetForm"));
    ASSERT_NE(form, nullptr);
    ASSERT_TRUE(form->isVisible());
    EXPECT_TRUE(form->findChild<QLabel*>(QStringLiteral("lblEmptyGrid"))->isVisible());

    // The header, with an impossible date first: refused where it was typed.
    box(form, "edSerial")->setFocus();
    EXPECT_EQ(box(form, "edSerial")->text(), QStringLiteral("1"));
    runner.answer(tr::dialog::ResultOk);
    type(form, "edDay", QStringLiteral("31"));
    type(form, "edMonth", QStringLiteral("07"));
    type(form, "edYear", QStringLiteral("1404"));
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral("تاريخ وارد شده معتبر نمي‏باشد.")))
        << lastMessage().toStdString();
    type(form, "edMonth", QStringLiteral("03"));
    type(form, "edAtfCh", QStringLiteral("88"));
    type(form, "txtCashCod", QStringLiteral("1"));
    type(form, "txtDes", QStringLiteral("دريافت از مشتري"));
    type(form, "txtValue", QStringLiteral("3,000,000"));
    screenshot(QStringLiteral("1_header"));

    // Two lines; a mistyped amount is refused and kept for correction, never read as 0.
    auto* grid = form->findChild<QTableView*>(QStringLiteral("dbg"));
    grid->setFocus();
    const qsizetype shown = runner.shown().size();
    for (const QString& amount : {QStringLiteral("1000000"), QStringLiteral("2000000")}) {
        QTest::keyClick(grid, Qt::Key_Insert);
        cell(grid, QStringLiteral("کل"), QStringLiteral("301"));
        cell(grid, QStringLiteral("معين"), QStringLiteral("0001"));
        cell(grid, QStringLiteral("شرح"), QStringLiteral("سهم شريک"));
        if (amount.startsWith(QLatin1Char('1'))) {
            runner.answer(tr::dialog::ResultOk);
            cell(grid, QStringLiteral("مبلغ"), QStringLiteral("5a000"));
            grid->setFocus();
            QTest::keyClick(grid, Qt::Key_Down);
            ASSERT_EQ(runner.shown().size(), shown + 1);
        }
        cell(grid, QStringLiteral("مبلغ"), amount);
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_Down);
    }
    EXPECT_EQ(box(form, "edSum")->text(), QStringLiteral("3,000,000"));
    EXPECT_FALSE(form->findChild<QLabel*>(QStringLiteral("lblEmptyGrid"))->isVisible());

    // Confirmed: the status line says what was saved.
    QTest::mouseClick(form->findChild<QPushButton*>(QStringLiteral("cmdOk")), Qt::LeftButton);
    EXPECT_TRUE(status(form).startsWith(QStringLiteral("سريال 1 ثبت شد"))) << lastMessage().toStdString();
    screenshot(QStringLiteral("2_saved"));

    // A new document, then serial 1 again by Enter in the serial box; edited and confirmed.
    ASSERT_NE(action(form, QStringLiteral("سند جديد ...")), nullptr);
    action(form, QStringLiteral("سند جديد ..."))->trigger();
    EXPECT_EQ(grid->model()->rowCount(), 0);
    QLineEdit* serial = box(form, "edSerial");
    serial->setFocus();
    serial->selectAll();
    typeText(serial, QStringLiteral("1"));
    QTest::keyClick(serial, Qt::Key_Return);
    EXPECT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(box(form, "edAtfCh")->text(), QStringLiteral("88"));
    type(form, "edAtfCh", QStringLiteral("89"));
    QTest::mouseClick(form->findChild<QPushButton*>(QStringLiteral("cmdOk")), Qt::LeftButton);
    EXPECT_TRUE(status(form).startsWith(QStringLiteral("سريال 1 اصلاح شد"))) << lastMessage().toStdString();

    // Confirmed and printed: the preview's printer is sent to a PDF, whose text is read back.
    const QString pdf = dir.filePath(QStringLiteral("receipt.pdf"));
    runner.answerBy([&pdf](QDialog& d) {
        auto* preview = qobject_cast<QPrintPreviewDialog*>(&d);
        if (!preview) return;
        preview->printer()->setOutputFormat(QPrinter::PdfFormat);
        preview->printer()->setOutputFileName(pdf);
        preview->findChild<QPrintPreviewWidget*>()->print();
    });
    QTest::mouseClick(form->findChild<QPushButton*>(QStringLiteral("cmdOkPrint")), Qt::LeftButton);
    // The PDF holds shaped letters, Arabic-Indic digits and direction marks: read as plain text.
    const QString printed = tr::test::pdfPlainText(pdf);
    EXPECT_TRUE(printed.contains(QStringLiteral("3,000,000"))) << printed.toStdString();
    EXPECT_TRUE(printed.contains(QStringLiteral("1404/03/31"))) << printed.toStdString();
    EXPECT_TRUE(printed.contains(tr::test::pdfFolded(QStringLiteral("سهم شریک")))) << printed.toStdString();

    // Cancelled and the cancellation undone, each after its question.
    auto* cancel = form->findChild<QPushButton*>(QStringLiteral("cmdAbtal"));
    runner.answer(tr::dialog::ResultYes);
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_EQ(status(form), QStringLiteral("سريال 1 ابطال شد"));
    EXPECT_TRUE(form->findChild<QLabel*>(QStringLiteral("lblCancelled"))->isVisible());
    screenshot(QStringLiteral("3_cancelled"));
    runner.answer(tr::dialog::ResultYes);
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_EQ(status(form), QStringLiteral("سريال 1 از ابطال برگشت"));

    // The search finds it; its row opens it on this screen.
    action(form, QStringLiteral("سند جديد ..."))->trigger();
    ASSERT_NE(action(form, QStringLiteral("جستجو ...")), nullptr);
    action(form, QStringLiteral("جستجو ..."))->trigger();
    QWidget* search = form->findChild<QWidget*>(QStringLiteral("CashSearchForm"));
    ASSERT_NE(search, nullptr);
    type(search, "edFromDay", QStringLiteral("1"));
    type(search, "edFromMonth", QStringLiteral("1"));
    type(search, "edFromYear", QStringLiteral("1404"));
    action(search, QStringLiteral("نمايش نتيجه جستجو"))->trigger();
    auto* result = search->findChild<QTableView*>(QStringLiteral("dbg"));
    ASSERT_GT(result->model()->rowCount(), 0);
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    search->grab().save(QStringLiteral(TR_SCREENS_DIR "/morning_4_search.png"));
    const QModelIndex first = result->model()->index(0, column(result, QStringLiteral("سريال")));
    EXPECT_EQ(first.data().toString().trimmed(), QStringLiteral("1"));
    result->setCurrentIndex(first);
    result->setFocus();
    QTest::keyClick(result, Qt::Key_Return);
    EXPECT_EQ(box(form, "edSerial")->text().trimmed(), QStringLiteral("1"));
    EXPECT_EQ(grid->model()->rowCount(), 2);
    search->close();

    // Unsaved work: the window stays while the user stays, and closes once it is discarded.
    type(form, "txtDes", QStringLiteral("دريافت از مشتري - ناتمام"));
    const qsizetype before = runner.shown().size();
    runner.answer(tr::dialog::ResultNo);
    runner.answer(tr::dialog::ResultCancel);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(runner.shown().size(), before + 2);
    EXPECT_EQ(box(form, "txtDes")->text(), QStringLiteral("دريافت از مشتري - ناتمام"));
    runner.answer(tr::dialog::ResultNo);
    runner.answer(tr::dialog::ResultOk);
    EXPECT_TRUE(window->close());
}

}  // namespace
}  // namespace tr::host
