#include "db/procedures/name_repeated.h"

#include "common/db/database_error.h"

namespace tr::procedures {

namespace {

// The table and column come as values; they become names only after the catalogue confirms them.
bool columnExists(tr::db::Connection& c, const QString& table, const QString& column) {
    const auto r = c.execute(QStringLiteral("Select Count(*) From syscolumns As C Inner Join sysobjects As O On "
                                            "(C.[id] = O.[id] And O.XType = 'U') Where O.[Name] = ") +
                             c.text(table) + QStringLiteral(" And C.[Name] = ") + c.text(column));
    return r.resultSets.front().rows.front().front().toInt() > 0;
}

}  // namespace

tr::db::ExecResult isNameRepeated(tr::db::Connection& connection, const Args& args) {
    if (args.size() != 3) {
        throw tr::db::DatabaseError(QStringLiteral("sp_Is_Name_Repeated expects a table, a column and a name"));
    }
    const QString table = args[0].toString().trimmed();
    const QString column = args[1].toString().trimmed();
    if (!columnExists(connection, table, column)) {
        throw tr::db::DatabaseError(
            QStringLiteral("sp_Is_Name_Repeated: table '%1' has no column '%2'").arg(table, column));
    }
    return connection.execute(QStringLiteral("Select Case When Exists(Select * From [%1] Where LTrim(RTrim([%2])) = ")
                                  .arg(table, column) +
                              connection.text(args[2].toString().trimmed()) +
                              QStringLiteral(") Then 1 Else 0 End As Repeated"));
}

}  // namespace tr::procedures
