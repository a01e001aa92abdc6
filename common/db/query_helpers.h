#pragma once
// The shared statement routines every screen uses: execute through the command query, global
// temporary tables, existence checks in the catalogues, one-value look-ups, privileged fields,
// row renumbering and the company database name. Database errors propagate to the caller.
#include <QString>
#include <QVariant>

#include "common/db/my_database.h"

namespace tr::db {

// Opens `sql` on a query of its own (the whole result is read at once); the caller reads it.
Query openQuery(Connection& connection, const QString& sql);
// The first column of the first row; null when no row comes back.
QVariant firstColumn(Connection& connection, const QString& sql);
// True when run or when the text is empty (nothing run); false when CommandQuery has no connection.
bool execute(MyDatabase& db, const QString& statement);
// "##" + the session text + the time stamp.
QString globalTempTableName(const QString& sessionText);
// `name` is the table name without its leading "##".
bool dropTempTable(MyDatabase& db, const QString& name);
// A ## table's name as dropTempTable takes it; a name without "##" is answered as it is.
QString withoutHashes(const QString& name);
bool objectExistsInTempdb(Connection& connection, const QString& name);
bool columnExists(Connection& connection, const QString& table, const QString& column);
// sp_Is_Name_Repeated answers one row whose first column is 1 when the name is taken.
bool nameRepeated(Connection& connection, const QString& a, const QString& b, const QString& c);
QVariant firstValue(Connection& connection, const QString& field, const QString& table,
                    const QString& keyField, const QString& key);
QVariant firstValueWhere(Connection& connection, const QString& field, const QString& table,
                         const QString& condition);
QString privilegedFields(Connection& connection, const QString& user, const QString& table);
bool renumberRows(MyDatabase& db, const QString& table, int from, const QString& action);
// "Corvask_<code>_<year>" as registered in CORVASK_Sdc..SDC_Company; empty when not registered.
QString companyDatabaseName(Connection& connection, const QString& code, const QString& year);

}  // namespace tr::db
