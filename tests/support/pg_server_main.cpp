// The ctest fixture's server: "start DIR" starts a private server in DIR for the whole test run,
// "stop DIR" stops it and removes DIR.
#include <QCoreApplication>
#include <cstdio>

#include "tests/support/private_pg_server.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3 || (args[1] != QLatin1String("start") && args[1] != QLatin1String("stop"))) {
        std::fprintf(stderr, "usage: tr-pg-server start|stop DIR\n");
        return 2;
    }
    if (args[1] == QLatin1String("stop")) {
        tr::test::PrivatePgServer::stopIn(args[2]);
        return 0;
    }
    QString failure;
    if (tr::test::PrivatePgServer::startIn(args[2], &failure)) return 0;
    std::fprintf(stderr, "%s\n", qPrintable(failure));
    return 1;
}
