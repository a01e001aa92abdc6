// Test worker: N read-modify-write transactions on one counter row of a shared database.
// Exits 0 when all succeeded; prints the first error otherwise.
#include <QCoreApplication>
#include <iostream>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 3) return 2;
    const int rounds = QString::fromLocal8Bit(argv[2]).toInt();
    try {
        tr::engine::Engine engine(QString::fromLocal8Bit(argv[1]));
        auto db = engine.open(QStringLiteral("Corvask_1_1404"));
        for (int i = 0; i < rounds; ++i) {
            db->execute(QStringLiteral("Begin Tran"));
            const auto r = db->execute(QStringLiteral("Select n From Counter"));
            const qint64 n = r.resultSets.front().rows.front().front().toLongLong();
            db->execute(QStringLiteral("Update Counter Set n = ") + tr::db::sqlNumber(n + 1));
            db->execute(QStringLiteral("Commit Tran"));
        }
    } catch (const tr::db::DatabaseError& e) {
        std::cerr << e.what() << std::endl;
        return 1;
    }
    return 0;
}
