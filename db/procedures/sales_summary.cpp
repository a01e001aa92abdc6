#include "db/procedures/sales_summary.h"

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"

namespace tr::procedures {

namespace {

// A database name goes into the statement as an identifier: letters, digits and '_' only.
bool plainName(const QString& name) {
    for (const QChar ch : name)
        if (!(ch.isLetterOrNumber() || ch == QLatin1Char('_'))) return false;
    return true;
}

}  // namespace

tr::db::ExecResult reportTotalSale(tr::db::Connection& c, const Args& args) {
    if (args.size() != 4)
        throw tr::db::DatabaseError(QStringLiteral("sp_R_Report_TotalSale expects 4 arguments, got %1").arg(args.size()));
    const QString kind = args[0].toString().trimmed().toUpper();
    const QString layout = args[1].toString().trimmed().toUpper();
    if (kind != QLatin1String("FACT") || layout != QLatin1String("SUMMARY"))
        throw tr::db::DatabaseError(QStringLiteral("sp_R_Report_TotalSale: only 'FACT', 'SUMMARY' is served, not ") +
                                    kind + QStringLiteral(", ") + layout);
    const QString table = args[2].toString().trimmed();
    if (!table.startsWith(QLatin1String("##")) || !plainName(table.mid(2)))
        throw tr::db::DatabaseError(QStringLiteral("sp_R_Report_TotalSale: bad table name ") + table);
    const QString database = args[3].toString().trimmed();
    if (!plainName(database))
        throw tr::db::DatabaseError(QStringLiteral("sp_R_Report_TotalSale: bad database name ") + database);
    const QString prefix = database.isEmpty() ? QString() : database + QStringLiteral("..");
    if (tr::db::objectExistsInTempdb(c, table)) c.execute(QStringLiteral("Drop Table ") + table);
    c.execute(QStringLiteral("Create Table ") + table +
              QStringLiteral(" (SanadNoForosh Varchar(20) Not Null Primary Key, TotalSale Float Not Null)"));
    c.execute(QStringLiteral("Insert Into ") + table + QStringLiteral(" (SanadNoForosh, TotalSale) Select F.SanadNoForosh, "
                                                                     "IsNull(Sum(IsNull(D.TotalPrice, 0) - IsNull(D.Takhfif, 0) + "
                                                                     "IsNull(D.Maliat, 0)), 0) From ") +
              prefix + QStringLiteral("R_FactorForosh As F Left Join ") + prefix +
              QStringLiteral("R_DetailFactorForosh As D On D.SanadNoForosh = F.SanadNoForosh Group By F.SanadNoForosh"));
    return {};
}

}  // namespace tr::procedures
