#include "db/schema/schema.h"

#include <QRegularExpression>

#include "common/db/sql_literal.h"
#include "db/schema/document_kinds.h"
#include "db/schema/table_families.h"

namespace tr::schema {

namespace {

QStringList tableNamesIn(const QStringList& statements) {
    static const QRegularExpression createTable(QStringLiteral("^Create Table (\\w+)"));
    QStringList names;
    for (const QString& statement : statements) {
        const QRegularExpressionMatch match = createTable.match(statement);
        if (match.hasMatch()) names << match.captured(1);
    }
    return names;
}

// One statement per call, so a failure names the statement that failed.
void run(tr::db::Connection& connection, const QStringList& statements) {
    for (const QString& statement : statements) connection.execute(statement);
}

}  // namespace

QStringList suiteStatements() {
    return detail::suiteTables();
}

QStringList companyStatements() {
    return detail::chartTables() + detail::treasuryTables() + detail::chequeTables() +
           detail::noteTables() + detail::currencyTables() + detail::salesTables();
}

void createSuiteSchema(tr::db::Connection& suite) {
    run(suite, suiteStatements());
}

void createCompanySchema(tr::db::Connection& company) {
    run(company, companyStatements());
}

QStringList suiteTableNames() {
    return tableNamesIn(suiteStatements());
}

QStringList companyTableNames() {
    return tableNamesIn(companyStatements());
}

QString companyDatabaseName(const QString& code, const QString& year) {
    return QStringLiteral("Corvask_") + code.trimmed() + QLatin1Char('_') + year.trimmed();
}

QString fiscalYearEnd(const QString& year) {
    const int d = year.trimmed().toInt() - 1355;
    const bool leap = d % 4 == 0 && d % 100 != 0;
    return year.trimmed() + (leap ? QStringLiteral("/12/30") : QStringLiteral("/12/29"));
}

void createCompany(tr::db::Connection& suite, tr::db::Connection& company, const QString& code,
                   const QString& year, const QString& name, const QString& optionsText) {
    createCompanySchema(company);
    loadDocumentKinds(company);
    company.execute(QStringLiteral("Insert Into Options (OptionID, Naghd) Values (1, ") +
                    company.text(optionsText) + QStringLiteral(")"));
    suite.execute(
        QStringLiteral("Insert Into SDC_Company (sCode, sYear, CompanyNam, StartDate, EndDate) "
                       "Values (") +
        suite.text(code.trimmed()) + QStringLiteral(", ") + suite.text(year.trimmed()) +
        QStringLiteral(", ") + suite.text(name) + QStringLiteral(", ") +
        suite.text(year.trimmed() + QStringLiteral("/01/01")) + QStringLiteral(", ") +
        suite.text(fiscalYearEnd(year)) + QStringLiteral(")"));
}

}  // namespace tr::schema
