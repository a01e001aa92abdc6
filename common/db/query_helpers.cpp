#include "common/db/query_helpers.h"

#include "common/clock.h"

namespace tr::db {

namespace {

// The literal's body as it stands between the quotes of a statement the routines build
// around a value (e.g. Like '%<name>'); quoting goes through the one helper.
QString quotedBody(Connection& connection, const QString& value) {
    const QString literal = connection.text(value);
    const int start = literal.indexOf(QLatin1Char('\'')) + 1;
    return literal.mid(start, literal.size() - start - 1);
}

}  // namespace

Query openQuery(Connection& connection, const QString& sql) {
    Query query(&connection);
    query.setSql(sql);
    query.Open();
    return query;
}

QVariant firstColumn(Connection& connection, const QString& sql) {
    const Query query = openQuery(connection, sql);
    return query.IsEmpty() ? QVariant() : query.value(0, 0);
}

bool execute(MyDatabase& db, const QString& statement) {
    if (statement.isEmpty()) return true;
    if (!db.CommandQuery || !db.CommandQuery->connection()) return false;
    db.CommandQuery->Close();
    db.CommandQuery->setSql(statement);
    db.CommandQuery->ExecSQL();
    return true;
}

QString globalTempTableName(const QString& sessionText) {
    return QStringLiteral("##") + sessionText + timeStamp();
}

bool dropTempTable(MyDatabase& db, const QString& name) {
    if (!db.CommandQuery || !db.CommandQuery->connection()) return false;
    Connection& c = *db.CommandQuery->connection();
    // The statement's Like '%<name>' also matches a longer name ending the same way (another
    // screen's table made in the same hundredth of a second); only drop a table that exists.
    if (!objectExistsInTempdb(c, QStringLiteral("##") + name)) return true;
    return execute(db, QStringLiteral("If Exists(Select [Name] From Tempdb..SysObjects Where [Name] Like '%") +
                           quotedBody(c, name) + QStringLiteral("') ") + QStringLiteral("Drop Table ##") + name);
}

QString withoutHashes(const QString& name) {
    return name.startsWith(QLatin1String("##")) ? name.mid(2) : name;
}

bool objectExistsInTempdb(Connection& connection, const QString& name) {
    const QString sql =
        QStringLiteral("Select [Name] From Tempdb..Sysobjects Where (Upper(XType) = 'U' Or Upper(XType) = 'V' "
                       "Or Upper(XType) = 'P' Or Upper(XType) = 'TR') And Upper([Name]) = ") +
        connection.text(name);
    return !openQuery(connection, sql).IsEmpty();
}

bool columnExists(Connection& connection, const QString& table, const QString& column) {
    const QString prefix = table.startsWith(QLatin1String("##")) ? QStringLiteral("TempDB..") : QString();
    const QString sql = QStringLiteral("Select O.[Name] As TableName,C.[Name] As GrohName  ") +
                        QStringLiteral("From ") + prefix + QStringLiteral("syscolumns As C inner join ") + prefix +
                        QStringLiteral("sysobjects As O  ") +
                        QStringLiteral("On(C.[id]=O.[id] And O.XType='U' And O.Type='U') ") +
                        QStringLiteral("where O.[Name]=") + connection.text(table) +
                        QStringLiteral(" And C.[Name]=") + connection.text(column);
    return !openQuery(connection, sql).IsEmpty();
}

bool nameRepeated(Connection& connection, const QString& a, const QString& b, const QString& c) {
    const QString sql = QStringLiteral("sp_Is_Name_Repeated ") + connection.text(a) + QStringLiteral(", ") +
                        connection.text(b) + QStringLiteral(", ") + connection.text(c);
    Query query = openQuery(connection, sql);
    return !query.IsEmpty() && query.value(0, 0).toInt() != 0;
}

QVariant firstValue(Connection& connection, const QString& field, const QString& table, const QString& keyField,
                    const QString& key) {
    const QString sql = QStringLiteral("Select Top 1 ") + field + QStringLiteral(" From ") + table +
                        QStringLiteral(" Where ") + keyField + QStringLiteral(" = ") + connection.text(key);
    return firstColumn(connection, sql);
}

QVariant firstValueWhere(Connection& connection, const QString& field, const QString& table,
                         const QString& condition) {
    const QString sql = QStringLiteral(" SELECT ") + QStringLiteral(" TOP 1 [") + field + QStringLiteral("] ") +
                        QStringLiteral(" AS X ") + QStringLiteral(" FROM ") + table + QStringLiteral(" WHERE ") +
                        QStringLiteral("(") + condition + QStringLiteral(")");
    Query query = openQuery(connection, sql);
    return query.IsEmpty() ? QVariant() : query.FieldByName(QStringLiteral("X")).Value();
}

QString privilegedFields(Connection& connection, const QString& user, const QString& table) {
    return QStringLiteral("(Select FieldCode From UserPrivilege Where ") + QStringLiteral("UserId=") +
           connection.text(user) + QStringLiteral(" And Upper(TableName)=") + connection.text(table) +
           QStringLiteral(") ");
}

bool renumberRows(MyDatabase& db, const QString& table, int from, const QString& action) {
    const QString step = action == QLatin1String("DELETE") ? QStringLiteral(" - 1") : QStringLiteral(" + 1");
    return execute(db, QStringLiteral("Update ") + table + QStringLiteral(" Set Raj = Raj") + step +
                           QStringLiteral(" Where Raj>=") + sqlNumber(from));
}

QString companyDatabaseName(Connection& connection, const QString& code, const QString& year) {
    const QString sql =
        QStringLiteral("SELECT 'Corvask_'+LTRIM(RTRIM(sCode))+'_'+LTRIM(RTRIM(sYear)) sDoreh ") +
        QStringLiteral(" FROM CORVASK_Sdc..SDC_Company Where LTRIM(RTRIM(sCode)) = ") + connection.text(code) +
        QStringLiteral(" and sYear=") + connection.text(year);
    Query query = openQuery(connection, sql);
    return query.IsEmpty() ? QString() : query.FieldByName(QStringLiteral("sDoreh")).AsString();
}

}  // namespace tr::db
