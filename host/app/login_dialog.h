#pragma once
// The host's login: user, company and fiscal year from the suite database, the demo company and
// its newest year preselected.
#include <QDialog>

#include "host/app/host_session.h"

class QComboBox;

namespace tr::host {

class LoginDialog : public QDialog {
    Q_OBJECT
  public:
    explicit LoginDialog(DataDirectory& data, QWidget* parent = nullptr);

    User user() const;
    CompanyYear companyYear() const;
    QComboBox* userBox() const { return users_; }
    QComboBox* companyBox() const { return companies_; }
    QComboBox* yearBox() const { return years_; }

  private:
    void fillYears();

    QList<User> userRows_;
    QList<CompanyYear> companyRows_;
    QComboBox* users_;
    QComboBox* companies_;
    QComboBox* years_;
};

}  // namespace tr::host
