#include "host/app/host_options.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace tr::host {

namespace {

QString usage(const QList<QCommandLineOption>& options) {
    QString text = QStringLiteral(
        "Usage: treasury-host [options]\n"
        "Demo host of the treasury module: logs a user into a company and fiscal year of the "
        "data folder and opens the treasury screens.\n\nOptions:\n");
    for (const QCommandLineOption& option : options) {
        QStringList names;
        for (const QString& name : option.names())
            names << (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
        QString left = QStringLiteral("  ") + names.join(QStringLiteral(", "));
        if (!option.valueName().isEmpty()) left += QStringLiteral(" <") + option.valueName() + '>';
        text +=
            left.leftJustified(28) + QLatin1Char(' ') + option.description() + QLatin1Char('\n');
    }
    return text;
}

}  // namespace

HostCommandLine readHostCommandLine(const QStringList& arguments) {
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help and exit."));
    const QCommandLineOption data(
        QStringLiteral("data"),
        QStringLiteral("Data folder (default: demo-data). It must exist, unless --create-demo."),
        QStringLiteral("DIR"), QStringLiteral("demo-data"));
    const QCommandLineOption server(
        QStringLiteral("server"),
        QStringLiteral("Open the books on a PostgreSQL server instead of a data folder, e.g. "
                       "\"host=books.office dbname=treasury user=ali\"."),
        QStringLiteral("CONNECTION"));
    const QCommandLineOption createDemo(
        QStringLiteral("create-demo"),
        QStringLiteral("Create the data folder with the demo company when it does not exist."));
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
    const QCommandLineOption screen(
        QStringLiteral("screen"),
        QStringLiteral("Screen to open at start (its Persian title; either yeh and kaf)."),
        QStringLiteral("TITLE"));
    const QList<QCommandLineOption> all = {help,      data,       server, createDemo, library,
                                           autoLogin, screenshot, screen};

    QCommandLineParser parser;
    parser.addOptions(all);
    HostCommandLine result;
    if (!parser.parse(arguments)) {
        result.exit = true;
        result.exitCode = 1;
        result.output = QStringLiteral("treasury-host: ") + parser.errorText() +
                        QStringLiteral("\nSee treasury-host --help.\n");
        return result;
    }
    if (parser.isSet(help)) {
        result.exit = true;
        result.output = usage(all);
        return result;
    }
    HostOptions& o = result.options;
    o.data = parser.value(data);
    o.server = parser.value(server);
    o.createDemo = parser.isSet(createDemo);
    o.library = parser.value(library);
    o.autoLogin = parser.isSet(autoLogin);
    o.screenshot = parser.value(screenshot);
    o.screen = parser.value(screen);
    // A mistyped folder would otherwise become a new, empty-looking company.
    const QFileInfo folder(o.data);
    if (!o.server.isEmpty()) {
        // The server answers for its books when the host connects.
    } else if (!folder.exists() && !o.createDemo) {
        result.exit = true;
        result.exitCode = 1;
        result.output = QStringLiteral(
                            "treasury-host: the data folder %1 does not exist.\n"
                            "Give an existing folder with --data, or add --create-demo "
                            "to create it with the demo company.\n")
                            .arg(o.data);
    } else if (folder.exists() && !folder.isDir()) {
        result.exit = true;
        result.exitCode = 1;
        result.output =
            QStringLiteral("treasury-host: %1 is a file, not a data folder.\n").arg(o.data);
    }
    return result;
}

}  // namespace tr::host
