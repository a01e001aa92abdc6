// treasury-host: the demo host. Logs a user into a company and fiscal year of the data directory
// (creating the demo company there on first run) and opens libtreasury's screens.
#include <QApplication>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "common/db/database_error.h"
#include "host/app/host_options.h"
#include "host/app/host_session.h"
#include "host/app/login_dialog.h"
#include "host/app/main_window.h"
#include "host/app/treasury_library.h"
#include "host/sdk/persian_font.h"
#include "host/sdk/qt_translations.h"

int main(int argc, char** argv) {
    // Read before the GUI application exists: help and refusals need no display.
    QStringList arguments;
    for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
    const tr::host::HostCommandLine command = tr::host::readHostCommandLine(arguments);
    if (command.exit) {
        std::fputs(qPrintable(command.output), command.exitCode == 0 ? stdout : stderr);
        return command.exitCode;
    }
    const tr::host::HostOptions& options = command.options;

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("treasury-host"));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QApplication::setFont(tr::sdk::persianFont(13));
    tr::sdk::installQtPersianTranslations();

    std::unique_ptr<tr::host::DataDirectory> books;
    try {
        books = std::make_unique<tr::host::DataDirectory>(options.data, options.server,
                                                          options.server.isEmpty() || options.createDemo);
    } catch (const tr::db::DatabaseError& error) {
        std::fprintf(stderr, "treasury-host: %s\n", qPrintable(error.message()));
        return 1;
    }
    tr::host::DataDirectory& directory = *books;
    if (directory.demoCreated())
        std::printf("treasury-host: demo company created in %s\n",
                    qPrintable(options.server.isEmpty() ? options.data : QStringLiteral("the server")));

    tr::host::LoginDialog login(directory);
    if (!options.autoLogin && login.exec() != QDialog::Accepted) return 0;
    tr::host::HostSession session(directory, login.user(), login.companyYear());

    tr::host::TreasuryLibrary treasury;
    if (!treasury.load(options.library))
        QMessageBox::warning(nullptr, QStringLiteral("خزانه داري"), treasury.errorString());
    tr::host::MainWindow window(session, treasury);
    // The desk uses the whole screen, as the suite's own window does; without a window manager
    // to maximize it, it takes the screen's free area itself.
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        window.setGeometry(screen->availableGeometry());
    window.showMaximized();
    if (!options.screen.isEmpty() && !window.openScreen(options.screen))
        std::fprintf(stderr, "treasury-host: no screen of the loaded library is titled %s\n",
                     qPrintable(options.screen));
    if (!options.screenshot.isEmpty()) {
        QTimer::singleShot(500, &window, [&] {
            const bool saved = window.grab().save(options.screenshot);
            std::printf("treasury-host: %s %s\n", saved ? "saved" : "could not save",
                        qPrintable(options.screenshot));
            QApplication::exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
