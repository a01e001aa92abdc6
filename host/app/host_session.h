#pragma once
// The demo host's data: a data directory served by the embedded engine, or a database server
// (the demo company created on first use, the stored procedures registered), the login choices read from the suite
// database, and the six session objects of one logged-in user that the host passes to libtreasury.
#include <QList>
#include <QString>
#include <memory>

#include "common/db/my_database.h"
#include "common/db/query.h"
#include "common/session/global.h"
#include "host/sdk/dlg_msg.h"
#include "host/sdk/my_date.h"
#include "host/sdk/show_state_form.h"
#include "host/sdk/temp_grid_form.h"

namespace tr::tsql {
class Books;
class TsqlConnection;
}  // namespace tr::tsql

namespace tr::host {

struct CompanyYear {
    QString code;
    QString year;
    QString name;
    QString start;
    QString end;
};

struct User {
    int id = 0;
    QString name;
    QString fullName;
};

class DataDirectory {
  public:
    // Creates the directory (or, with `server`, a libpq connection text, opens the server's books)
    // and, when they hold no suite database yet, the demo company.
    // Without `mayCreate` an empty server is refused (DatabaseError), as a missing folder is.
    explicit DataDirectory(const QString& path, const QString& server = QString(), bool mayCreate = true);
    ~DataDirectory();

    tr::tsql::Books& books() { return *books_; }
    bool demoCreated() const { return demoCreated_; }
    // Newest fiscal year first.
    QList<CompanyYear> companies();
    QList<User> activeUsers();
    // The module's rights text of a user in a company year ("" when none are granted).
    QString rights(int userId, const QString& code, const QString& year);

  private:
    std::unique_ptr<tr::tsql::Books> books_;
    std::unique_ptr<tr::tsql::TsqlConnection> suite_;
    bool demoCreated_ = false;
};

// One login: the company database connection and the objects the library receives.
class HostSession {
  public:
    HostSession(DataDirectory& data, const User& user, const CompanyYear& company);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    const CompanyYear& company() const { return company_; }
    // The user as people call them: the full name when the suite knows one, else the login.
    const QString& userDisplayName() const { return userDisplayName_; }
    tr::Global& global() { return global_; }
    tr::sdk::MyDate& myDate() { return myDate_; }
    tr::db::MyDatabase& myDatabase() { return myDatabase_; }
    tr::sdk::TShowStateForm& showStateForm() { return showStateForm_; }
    tr::sdk::TTempGridForm& tempGridForm() { return tempGridForm_; }
    tr::sdk::TDlgMsg& dlgMsg() { return dlgMsg_; }

  private:
    CompanyYear company_;
    QString userDisplayName_;
    std::unique_ptr<tr::tsql::TsqlConnection> connection_;
    std::unique_ptr<tr::db::Query> commandQuery_;
    tr::db::MyDatabase myDatabase_;
    tr::Global global_;
    tr::sdk::TDlgMsg dlgMsg_;
    tr::sdk::MyDate myDate_;
    tr::sdk::TShowStateForm showStateForm_;
    tr::sdk::TTempGridForm tempGridForm_;
};

}  // namespace tr::host
