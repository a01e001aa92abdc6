#include "tools/shell_setup.h"

#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"

namespace tr::tools {

void registerProcedures(tr::engine::Engine& engine) {
    for (const auto& p : tr::procedures::allProcedures()) engine.procedures().addProcedure(p.name, p.body);
    for (const auto& f : tr::procedures::allFunctions()) engine.procedures().addFunction(f.name, f.body);
}

QString defaultDatabase(tr::engine::Engine& engine) {
    const QString suite = QStringLiteral("CORVASK_Sdc");
    if (!engine.databaseExists(suite)) return QStringLiteral("master");
    auto db = engine.open(suite);
    const auto r = db->execute(QStringLiteral(
        "Select Top 1 'Corvask_' + LTrim(RTrim(sCode)) + '_' + LTrim(RTrim(sYear)) As Name From SDC_Company "
        "Order By sYear Desc, sCode"));
    if (r.resultSets.empty() || r.resultSets.front().rows.empty()) return suite;
    return r.resultSets.front().rows.front().front().toString();
}

QString createDemo(const QString& dataDirectory) {
    tr::engine::Engine engine(dataDirectory);
    registerProcedures(engine);
    auto suite = engine.open(QStringLiteral("CORVASK_Sdc"));
    tr::schema::loadDemoCompany(*suite, [&](const QString& name) -> std::unique_ptr<tr::db::Connection> {
        return engine.open(name);
    });
    return QStringLiteral("demo company created in %1 (databases CORVASK_Sdc, %2, %3)")
        .arg(engine.dataDirectory(), QLatin1String(tr::schema::demo::kPreviousDatabase),
             QLatin1String(tr::schema::demo::kCurrentDatabase));
}

}  // namespace tr::tools
