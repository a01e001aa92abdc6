// One user of the demo company in a process of its own: takes and holds a new receipt serial the
// given number of times and prints each, one per line (books address, user number, count).
#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

#include "common/db/query.h"
#include "tests/support/test_books.h"
#include "vouchers/serials.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 4) return 2;
    try {
        auto books = tr::test::openTestBooks(args.at(1));
        auto connection = books->connect(QStringLiteral("Corvask_1_1404"));
        tr::db::Query command(connection.get());
        tr::db::MyDatabase db{&command, connection.get()};
        QTextStream out(stdout);
        for (int i = 0; i < args.at(3).toInt(); ++i)
            out << tr::vouchers::takeNewSerial(db, QStringLiteral("10"), args.at(2)) << '\n';
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
