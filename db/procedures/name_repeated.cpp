#include "db/procedures/name_repeated.h"

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"

namespace tr::procedures {

tr::db::ExecResult isNameRepeated(tr::db::Connection& connection, const Args& args) {
    if (args.size() != 3) {
        throw tr::db::DatabaseError(QStringLiteral("sp_Is_Name_Repeated expects a table, a column and a name"));
    }
    const QString table = args[0].toString().trimmed();
    const QString column = args[1].toString().trimmed();
    // The table and column come as values; they become names only after the catalogue confirms
    // them.
    if (!tr::db::columnExists(connection, table, column)) {
        throw tr::db::DatabaseError(
            QStringLiteral("sp_Is_Name_Repeated: table '%1' has no column '%2'").arg(table, column));
    }
    return connection.execute(QStringLiteral("Select Case When Exists(Select * From [%1] Where LTrim(RTrim([%2])) = ")
                                  .arg(table, column) +
                              connection.text(args[2].toString().trimmed()) +
                              QStringLiteral(") Then 1 Else 0 End As Repeated"));
}

}  // namespace tr::procedures
