#include "tests/support/test_books.h"

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/pg/pg_server.h"
#include "tests/support/private_pg_server.h"

namespace tr::test {

namespace {
const QString kServerMark = QStringLiteral("server:");
}

bool testingOnServer() {
    return qEnvironmentVariable("TR_TEST_BACKEND").compare(QLatin1String("postgres"), Qt::CaseInsensitive) == 0;
}

std::unique_ptr<tr::tsql::Books> makeTestBooks(const QString& directory, const QString& name) {
    if (!testingOnServer()) return std::make_unique<tr::engine::Engine>(directory);
    PrivatePgServer& server = PrivatePgServer::instance();
    if (!server.running()) throw tr::db::DatabaseError(QStringLiteral("No test server: ") + server.failure());
    const QString database = server.createDatabase(name.toLower());
    if (database.isEmpty()) throw tr::db::DatabaseError(QStringLiteral("No test database: ") + server.failure());
    return std::make_unique<tr::pg::PgServer>(server.connectionText(database));
}

QString booksAddress(tr::tsql::Books& books) {
    if (auto* engine = dynamic_cast<tr::engine::Engine*>(&books)) return engine->dataDirectory();
    return kServerMark + static_cast<tr::pg::PgServer&>(books).connectionText();
}

std::unique_ptr<tr::tsql::Books> openTestBooks(const QString& address) {
    if (address.startsWith(kServerMark)) return std::make_unique<tr::pg::PgServer>(address.mid(kServerMark.size()));
    return std::make_unique<tr::engine::Engine>(address);
}

}  // namespace tr::test
