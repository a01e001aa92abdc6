#include "host/app/host_session.h"

#include <QCoreApplication>
#include <QDir>

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/pg/pg_server.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"
#include "host/sdk/global.h"

namespace tr::host {
namespace {

const QString kSuiteDatabase = QStringLiteral("CORVASK_Sdc");

tr::db::ResultSet firstResult(tr::db::Connection& connection, const QString& sql) {
    auto result = connection.execute(sql);
    return result.resultSets.empty() ? tr::db::ResultSet{} : result.resultSets.front();
}

}  // namespace

DataDirectory::DataDirectory(const QString& path, const QString& server, bool mayCreate) {
    if (server.isEmpty()) {
        QDir().mkpath(path);
        books_ = std::make_unique<tr::engine::Engine>(path);
    } else {
        books_ = std::make_unique<tr::pg::PgServer>(server);
    }
    for (const auto& p : tr::procedures::allProcedures())
        books_->procedures().addProcedure(p.name, p.body);
    for (const auto& f : tr::procedures::allFunctions())
        books_->procedures().addFunction(f.name, f.body);
    const bool fresh = !books_->databaseExists(kSuiteDatabase);
    if (fresh && !mayCreate) {
        throw tr::db::DatabaseError(QStringLiteral("The server holds no books yet. Add --create-demo to create "
                                                   "the demo company there, or copy a data folder onto it."));
    }
    suite_ = books_->connect(kSuiteDatabase);
    if (fresh) {
        tr::schema::loadDemoCompany(*suite_, [this](const QString& name) {
            return std::unique_ptr<tr::db::Connection>(books_->connect(name));
        });
        demoCreated_ = true;
    }
}

DataDirectory::~DataDirectory() = default;

QList<CompanyYear> DataDirectory::companies() {
    QList<CompanyYear> list;
    const auto rows = firstResult(
        *suite_,
        QStringLiteral("Select LTrim(RTrim(sCode)) As sCode, LTrim(RTrim(sYear)) As sYear, "
                       "CompanyNam, StartDate, EndDate From SDC_Company "
                       "Order By sCode, sYear Desc"));
    for (const auto& row : rows.rows)
        list.append({row[0].toString(), row[1].toString(), row[2].toString(), row[3].toString(),
                     row[4].toString()});
    return list;
}

QList<User> DataDirectory::activeUsers() {
    QList<User> list;
    const auto rows =
        firstResult(*suite_, QStringLiteral("Select UserId, UserName, FullName From SDC_User "
                                            "Where IsActive = 1 Order By UserId"));
    for (const auto& row : rows.rows)
        list.append({row[0].toInt(), row[1].toString(), row[2].toString()});
    return list;
}

QString DataDirectory::rights(int userId, const QString& code, const QString& year) {
    const auto rows = firstResult(
        *suite_, QStringLiteral("Select Rights From UserSdcDetail Where UserId = %1 And "
                                "LTrim(RTrim(sCode)) = %2 And LTrim(RTrim(sYear)) = %3 And "
                                "ProgNam = 'N'")
                     .arg(tr::db::sqlNumber(userId), suite_->text(code), suite_->text(year)));
    return rows.rows.empty() ? QString() : rows.rows.front().front().toString();
}

HostSession::HostSession(DataDirectory& data, const User& user, const CompanyYear& company)
    : company_(company),
      userDisplayName_(user.fullName.trimmed().isEmpty() ? user.name : user.fullName.trimmed()),
      connection_(
          data.books().connect(QStringLiteral("Corvask_%1_%2").arg(company.code, company.year))),
      commandQuery_(std::make_unique<tr::db::Query>(connection_.get())),
      myDatabase_{commandQuery_.get(), connection_.get()},
      global_(tr::sdk::demoGlobal()),
      myDate_(&global_, &dlgMsg_) {
    global_.userNumber = user.id;
    global_.userName = user.name;
    global_.rights = data.rights(user.id, company.code, company.year);
    global_.sessionText =
        QStringLiteral("U%1_%2_").arg(user.id).arg(QCoreApplication::applicationPid());
    global_.fiscalStart = company.start;
    global_.fiscalEnd = company.end;
    global_.sCode = company.code;
    global_.sYear = company.year;
    dlgMsg_.DefaultCaption = global_.defaultCaption;
    tempGridForm_.setConnection(connection_.get());
}

HostSession::~HostSession() = default;

}  // namespace tr::host
