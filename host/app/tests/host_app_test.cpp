// The demo host on the offscreen platform: login choices, the screen tree against the exports of
// the loaded library, and a screen opened from the tree docked into the content area.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include "host/app/host_session.h"
#include "host/app/login_dialog.h"
#include "host/app/main_window.h"
#include "host/app/treasury_library.h"
#include "host/sdk/persian_font.h"

namespace tr::host {
namespace {

const QString kFixDes = QStringLiteral("ثبت شرح ثابت اسناد");

class HostApp : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        data_ = new DataDirectory(dir_->path());
    }
    static DataDirectory& data() { return *data_; }

    HostSession session{data(), data().activeUsers().front(), data().companies().front()};

    QTreeWidgetItem* treeItem(MainWindow& window, const QString& title) {
        const auto items =
            window.screenTree()->findItems(title, Qt::MatchExactly | Qt::MatchRecursive);
        return items.isEmpty() ? nullptr : items.front();
    }

    void saveScreen(QWidget& window, const QString& name) {
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
        window.grab().save(QStringLiteral(TR_SCREENS_DIR "/%1.png").arg(name));
    }

    // Clicks the tree entry and answers the newest form of the content area (each test opens a
    // screen once).
    QWidget* openFromTree(MainWindow& window, const QString& title) {
        QTreeWidgetItem* item = treeItem(window, title);
        if (!item) return nullptr;
        QTreeWidget* tree = window.screenTree();
        tree->scrollToItem(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(item).center());
        const auto forms = window.contentArea()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        return forms.isEmpty() ? nullptr : forms.back();
    }

    static QTemporaryDir* dir_;
    static DataDirectory* data_;
};

QTemporaryDir* HostApp::dir_ = nullptr;
DataDirectory* HostApp::data_ = nullptr;

TEST_F(HostApp, LoginPreselectsTheDemoCompanyInItsCurrentYear) {
    EXPECT_TRUE(data().demoCreated());
    LoginDialog login(data());
    EXPECT_EQ(login.companyBox()->currentData().toString(), QStringLiteral("1"));
    EXPECT_EQ(login.yearBox()->currentText(), QStringLiteral("1404"));
    EXPECT_EQ(login.yearBox()->count(), 2);
    EXPECT_EQ(login.user().name, QStringLiteral("admin"));
    const CompanyYear chosen = login.companyYear();
    EXPECT_EQ(chosen.start, QStringLiteral("1404/01/01"));
    EXPECT_EQ(chosen.end, QStringLiteral("1404/12/29"));
    login.show();
    saveScreen(login, QStringLiteral("login"));
}

TEST_F(HostApp, TheSessionCarriesTheLoginAndTheCompanyDatabase) {
    EXPECT_EQ(session.global().userName, QStringLiteral("admin"));
    EXPECT_EQ(session.global().sYear, QStringLiteral("1404"));
    EXPECT_TRUE(session.global().rights.contains(QStringLiteral("_SABT(Y)")));
    EXPECT_EQ(session.myDatabase().Connection->databaseName(), QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(session.myDatabase().CommandQuery->connection(), session.myDatabase().Connection);
}

TEST_F(HostApp, AScreenOpenedFromTheTreeIsDockedMaximizedInTheContentArea) {
    TreasuryLibrary library;
    ASSERT_TRUE(library.load(QStringLiteral(TR_PROBE_LIBRARY)))
        << library.errorString().toStdString();
    MainWindow window(session, library);
    window.show();
    EXPECT_EQ(window.layoutDirection(), Qt::RightToLeft);
    EXPECT_NE(window.contentArea()->objectName(), QStringLiteral("pnlContent"));
    // The probe library exports the fixed descriptions but not the revaluation.
    EXPECT_FALSE(treeItem(window, kFixDes)->isDisabled());
    EXPECT_TRUE(treeItem(window, QStringLiteral("تسعير ارز"))->isDisabled());
    QStringList status;
    for (auto* label : window.statusBar()->findChildren<QLabel*>()) status << label->text();
    EXPECT_TRUE(status.join('|').contains(QStringLiteral("1404")))
        << status.join('|').toStdString();
    // The user as people call them, not the login.
    EXPECT_TRUE(status.join('|').contains(QStringLiteral("مدير سيستم"))) << status.join('|').toStdString();
    EXPECT_FALSE(status.join('|').contains(QStringLiteral("admin")));

    QWidget* form = openFromTree(window, kFixDes);
    ASSERT_NE(form, nullptr);
    QApplication::processEvents();
    EXPECT_EQ(form->geometry(), window.contentArea()->rect());
    EXPECT_TRUE(form->windowState() & Qt::WindowMaximized);
    EXPECT_TRUE(form->isVisible());
    saveScreen(window, QStringLiteral("host_probe_screen"));
}

TEST_F(HostApp, ScreensOfTheBuiltLibraryOpenFromTheTreeDockedAndMaximized) {
    TreasuryLibrary library;
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    MainWindow window(session, library);
    window.resize(1366, 768);  // the document screens are laid out for a desktop-sized window
    window.show();
    QApplication::processEvents();
    saveScreen(window, QStringLiteral("host_start"));
    struct Screen {
        QString title, exportName, shot;
    };
    const Screen screens[] = {
        {kFixDes, QStringLiteral("FixDes_Naghd"), QStringLiteral("host_fixdes")},
        {QStringLiteral("دريافت صندوق"), QStringLiteral("CashGet_Naghd"), QStringLiteral("host_cash_get")},
        {QStringLiteral("جستجوي اسناد نقدينگي"), QStringLiteral("Search_Naghd"), QStringLiteral("host_search")},
    };
    for (const Screen& screen : screens) {
        SCOPED_TRACE(screen.exportName.toStdString());
        ASSERT_TRUE(library.has(screen.exportName));
        QWidget* form = openFromTree(window, screen.title);
        ASSERT_NE(form, nullptr);
        QApplication::processEvents();
        EXPECT_EQ(form->geometry(), window.contentArea()->rect());
        EXPECT_TRUE(form->windowState() & Qt::WindowMaximized);
        EXPECT_TRUE(form->isVisible());
        saveScreen(window, screen.shot);
    }
}

TEST_F(HostApp, EveryItemOfTheChequeMenuOpensItsScreenDocked) {
    TreasuryLibrary library;
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    MainWindow window(session, library);
    window.resize(1366, 768);
    window.show();
    QApplication::processEvents();
    for (const char* title : {"دريافت چک", "پرداخت چك", "عمليات چك", "ارسال چک به بانک", "صدور مجوز پرداخت چك",
                              "تاييد صدور مجوز پرداخت چك"}) {
        SCOPED_TRACE(title);
        QWidget* form = openFromTree(window, QString::fromUtf8(title));
        ASSERT_NE(form, nullptr);
        QApplication::processEvents();
        EXPECT_EQ(form->parentWidget(), window.contentArea());
        EXPECT_EQ(form->geometry(), window.contentArea()->rect());
        EXPECT_TRUE(form->isVisible());
    }
    saveScreen(window, QStringLiteral("host_cheque_menu"));
}

TEST_F(HostApp, TheTwoLeafVoidingItemsOpenTheVoidFormInTheirModes) {
    TreasuryLibrary library;
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    MainWindow window(session, library);
    window.resize(1366, 768);
    window.show();
    const struct {
        QString item, button;
    } modes[] = {{QStringLiteral("ابطال برگه چك"), QStringLiteral("تاييد ابطال چك")},
                 {QStringLiteral("برگشت ابطال برگه چك"), QStringLiteral("تاييد برگشت ابطال")}};
    for (const auto& mode : modes) {
        SCOPED_TRACE(mode.item.toStdString());
        ASSERT_FALSE(treeItem(window, mode.item)->isDisabled());
        QWidget* form = openFromTree(window, mode.item);
        ASSERT_NE(form, nullptr);
        QApplication::processEvents();
        auto* confirm = form->findChild<QPushButton*>(QStringLiteral("cmdOk"));
        ASSERT_NE(confirm, nullptr);
        EXPECT_EQ(confirm->text(), mode.button);
        // Shown at its own size over the content area, not docked into it.
        EXPECT_TRUE(form->isVisible());
        EXPECT_LT(form->width(), window.contentArea()->width());
    }
    // The other mode rebuilt the window rather than adding one.
    EXPECT_EQ(window.contentArea()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
    saveScreen(window, QStringLiteral("host_ebtal_barge_check"));
}

}  // namespace
}  // namespace tr::host

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QApplication::setFont(tr::sdk::persianFont(13));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
