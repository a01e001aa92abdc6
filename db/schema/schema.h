#pragma once
// The tables and indexes of the suite database and of a company database, as constant T-SQL DDL
// run through a connection on an empty database; and company creation (schema, document kinds,
// options row) with its registration in CORVASK_Sdc..SDC_Company. Database errors propagate.
#include <QString>
#include <QStringList>

#include "common/db/connection.h"

namespace tr::schema {

inline constexpr const char* kSuiteDatabase = "CORVASK_Sdc";

// The statements, in the order they run (tables before their indexes).
QStringList suiteStatements();
QStringList companyStatements();

// Creates every table and index; the database must not hold them yet.
void createSuiteSchema(tr::db::Connection& suite);
void createCompanySchema(tr::db::Connection& company);

QStringList suiteTableNames();
QStringList companyTableNames();

// "Corvask_" + trimmed code + "_" + trimmed year, the name SDC_Company gives the database.
QString companyDatabaseName(const QString& code, const QString& year);

// The last day of a Persian year by the module's leap rule (counted from 1355): "YYYY/12/30" or
// "YYYY/12/29".
QString fiscalYearEnd(const QString& year);

// Creates the company schema on the empty `company` database, loads the document kinds and the
// options row (`optionsText` into Options.Naghd), and registers the company and year in the suite.
void createCompany(tr::db::Connection& suite, tr::db::Connection& company, const QString& code,
                   const QString& year, const QString& name,
                   const QString& optionsText = QStringLiteral("USE_SERIAL=YES;"));

}  // namespace tr::schema
