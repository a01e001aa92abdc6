#include "tools/shell_setup.h"

#include "db/engine/engine.h"
#include "db/pg/pg_server.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"

namespace tr::tools {

std::unique_ptr<tr::tsql::Books> openBooks(const QString& dataDirectory, const QString& server) {
    std::unique_ptr<tr::tsql::Books> books;
    if (server.isEmpty()) books = std::make_unique<tr::engine::Engine>(dataDirectory);
    else books = std::make_unique<tr::pg::PgServer>(server);
    registerProcedures(*books);
    return books;
}

void registerProcedures(tr::tsql::Books& books) {
    for (const auto& p : tr::procedures::allProcedures()) books.procedures().addProcedure(p.name, p.body);
    for (const auto& f : tr::procedures::allFunctions()) books.procedures().addFunction(f.name, f.body);
}

QString defaultDatabase(tr::tsql::Books& books) {
    const QString suite = QStringLiteral("CORVASK_Sdc");
    if (!books.databaseExists(suite)) return QStringLiteral("master");
    auto db = books.connect(suite);
    const auto r = db->execute(QStringLiteral(
        "Select Top 1 'Corvask_' + LTrim(RTrim(sCode)) + '_' + LTrim(RTrim(sYear)) As Name From SDC_Company "
        "Order By sYear Desc, sCode"));
    if (r.resultSets.empty() || r.resultSets.front().rows.empty()) return suite;
    return r.resultSets.front().rows.front().front().toString();
}

QString createDemo(tr::tsql::Books& books, const QString& where) {
    auto suite = books.connect(QStringLiteral("CORVASK_Sdc"));
    tr::schema::loadDemoCompany(*suite, [&](const QString& name) -> std::unique_ptr<tr::db::Connection> {
        return books.connect(name);
    });
    return QStringLiteral("demo company created in %1 (databases CORVASK_Sdc, %2, %3)")
        .arg(where, QLatin1String(tr::schema::demo::kPreviousDatabase),
             QLatin1String(tr::schema::demo::kCurrentDatabase));
}

}  // namespace tr::tools
