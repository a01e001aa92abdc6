// treasury-host: the demo host. Logs a user into a company and fiscal year of the data directory
// (creating the demo company there on first run) and opens libtreasury's screens.
#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>

#include "host/app/host_session.h"
#include "host/app/login_dialog.h"
#include "host/app/main_window.h"
#include "host/app/treasury_library.h"
#include "host/sdk/persian_font.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("treasury-host"));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QApplication::setFont(tr::sdk::persianFont(13));

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Demo host of the treasury module"));
    options.addHelpOption();
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("Data directory (default: demo-data)."),
                                  QStringLiteral("DIR"), QStringLiteral("demo-data"));
    const QCommandLineOption library(
        QStringLiteral("library"), QStringLiteral("Path of libtreasury."), QStringLiteral("PATH"));
    // Without a screen to look at (xvfb, offscreen) the demo proves itself with a picture.
    const QCommandLineOption autoLogin(QStringLiteral("auto-login"),
                                       QStringLiteral("Log in with the preselected choices."));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral(
            "Open the given screen title (or none), save the main window to FILE, quit."),
        QStringLiteral("FILE"));
    const QCommandLineOption screen(QStringLiteral("screen"),
                                    QStringLiteral("Screen to open at start (its Persian title)."),
                                    QStringLiteral("TITLE"));
    options.addOption(data);
    options.addOption(library);
    options.addOption(autoLogin);
    options.addOption(screenshot);
    options.addOption(screen);
    options.process(app);

    tr::host::DataDirectory directory(options.value(data));
    if (directory.demoCreated())
        std::printf("treasury-host: demo company created in %s\n", qPrintable(options.value(data)));

    tr::host::LoginDialog login(directory);
    if (!options.isSet(autoLogin) && login.exec() != QDialog::Accepted) return 0;
    tr::host::HostSession session(directory, login.user(), login.companyYear());

    tr::host::TreasuryLibrary treasury;
    if (!treasury.load(options.value(library)))
        QMessageBox::warning(nullptr, QStringLiteral("خزانه داري"), treasury.errorString());
    tr::host::MainWindow window(session, treasury);
    window.show();
    if (options.isSet(screen)) window.openScreen(options.value(screen));
    if (options.isSet(screenshot)) {
        QTimer::singleShot(500, &window, [&] {
            const bool saved = window.grab().save(options.value(screenshot));
            std::printf("treasury-host: %s %s\n", saved ? "saved" : "could not save",
                        qPrintable(options.value(screenshot)));
            QApplication::exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
