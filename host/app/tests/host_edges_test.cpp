// The host's own edges: its command line (help and refusals before any window), screen titles
// whatever the yeh and kaf, and closing the window over a screen with unsaved work.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "host/app/host_options.h"
#include "host/app/host_session.h"
#include "host/app/main_window.h"
#include "host/app/screen_catalogue.h"
#include "host/app/treasury_library.h"
#include "tests/support/recording_modal_runner.h"

namespace tr::host {
namespace {

HostCommandLine read(QStringList arguments) {
    arguments.prepend(QStringLiteral("treasury-host"));
    return readHostCommandLine(arguments);
}

TEST(HostCommandLine, HelpRefusalsAndTheDataFolder) {
    QTemporaryDir dir;
    const HostCommandLine help = read({QStringLiteral("--help")});
    EXPECT_TRUE(help.exit);
    EXPECT_EQ(help.exitCode, 0);
    for (const char* option : {"--data", "--create-demo", "--screen", "--library"})
        EXPECT_TRUE(help.output.contains(QLatin1String(option))) << option;

    const HostCommandLine unknown = read({QStringLiteral("--colour")});
    EXPECT_TRUE(unknown.exit);
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_TRUE(unknown.output.contains(QStringLiteral("colour")));

    const QString missing = dir.path() + QStringLiteral("/no-such-company");
    const HostCommandLine refused = read({QStringLiteral("--data"), missing});
    EXPECT_TRUE(refused.exit);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.output.contains(missing));
    EXPECT_TRUE(refused.output.contains(QStringLiteral("--create-demo")));

    const HostCommandLine create =
        read({QStringLiteral("--data"), missing, QStringLiteral("--create-demo")});
    EXPECT_FALSE(create.exit);
    EXPECT_TRUE(create.options.createDemo);
    EXPECT_EQ(create.options.data, missing);

    const HostCommandLine existing =
        read({QStringLiteral("--data"), dir.path(), QStringLiteral("--screen"),
              QStringLiteral("دريافت صندوق"), QStringLiteral("--auto-login")});
    EXPECT_FALSE(existing.exit);
    EXPECT_TRUE(existing.options.autoLogin);
    EXPECT_EQ(existing.options.screen, QStringLiteral("دريافت صندوق"));
}

// Help must not need a display: the GUI application is never made for it.
TEST(HostCommandLine, TheProgramAnswersHelpAndRefusesAMissingFolderWithoutADisplay) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("DISPLAY"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    QTemporaryDir dir;
    const auto run = [&](const QStringList& arguments, QByteArray* out, QByteArray* err) {
        QProcess host;
        host.setProcessEnvironment(env);
        host.start(QStringLiteral(TR_HOST_PROGRAM), arguments);
        EXPECT_TRUE(host.waitForFinished(20000));
        *out = host.readAllStandardOutput();
        *err = host.readAllStandardError();
        return host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1;
    };
    QByteArray out, err;
    EXPECT_EQ(run({QStringLiteral("--help")}, &out, &err), 0) << err.toStdString();
    EXPECT_TRUE(out.startsWith("Usage: treasury-host")) << out.toStdString();
    const QString missing = dir.path() + QStringLiteral("/missing");
    EXPECT_EQ(run({QStringLiteral("--data"), missing}, &out, &err), 1);
    EXPECT_TRUE(err.contains("does not exist")) << err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(missing));
}

TEST(ScreenCatalogue, TitlesMatchWhateverTheYehAndKaf) {
    const ScreenInfo* receipt = findScreen(QStringLiteral("دريافت صندوق"));
    ASSERT_NE(receipt, nullptr);
    EXPECT_EQ(findScreen(QStringLiteral("دریافت صندوق")), receipt);  // Persian yeh
    EXPECT_EQ(findScreen(QStringLiteral(" دريافت صندوق ")), receipt);
    const ScreenInfo* transfers = findScreen(QStringLiteral("حواله بانكي"));
    ASSERT_NE(transfers, nullptr);
    EXPECT_EQ(findScreen(QStringLiteral("حواله بانکی")), transfers);  // Persian yeh and kaf
    EXPECT_EQ(findScreen(QStringLiteral("دريافت صندوقها")), nullptr);
}

// The window does not close over a receipt with unsaved work until the user saves or discards
// it; staying keeps the window, the screen and its text.
TEST(HostWindow, ClosingOverUnsavedWorkAsksFirst) {
    QTemporaryDir dir;
    DataDirectory data(dir.path());
    HostSession session(data, data.activeUsers().front(), data.companies().front());
    TreasuryLibrary library;
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    MainWindow window(session, library);
    window.show();
    ASSERT_TRUE(window.openScreen(QStringLiteral("دريافت صندوق")));
    QLineEdit* description = window.contentArea()->findChild<QLineEdit*>(QStringLiteral("txtDes"));
    ASSERT_NE(description, nullptr);
    EXPECT_TRUE(window.screensMayClose());  // nothing typed yet

    QTest::keyClicks(description, QStringLiteral("Rent 7"));
    tr::test::RecordingModalRunner runner;
    runner.answer(tr::dialog::ResultNo);
    runner.answer(tr::dialog::ResultCancel);
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(runner.shown().size(), 2);
    EXPECT_EQ(description->text(), QStringLiteral("Rent 7"));

    runner.answer(tr::dialog::ResultNo);
    runner.answer(tr::dialog::ResultOk);
    EXPECT_TRUE(window.close());
    EXPECT_EQ(runner.shown().size(), 4);
}

}  // namespace
}  // namespace tr::host
