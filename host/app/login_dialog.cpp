#include "host/app/login_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

#include "db/schema/demo_company.h"

namespace tr::host {

LoginDialog::LoginDialog(DataDirectory& data, QWidget* parent)
    : QDialog(parent),
      userRows_(data.activeUsers()),
      companyRows_(data.companies()),
      users_(new QComboBox(this)),
      companies_(new QComboBox(this)),
      years_(new QComboBox(this)) {
    setObjectName(QStringLiteral("LoginDialog"));
    setWindowTitle(QStringLiteral("ورود به خزانه داري"));
    setLayoutDirection(Qt::RightToLeft);
    for (const auto& user : userRows_)
        users_->addItem(user.fullName.isEmpty() ? user.name : user.fullName, user.id);
    for (const auto& row : companyRows_)
        if (companies_->findData(row.code) < 0) companies_->addItem(row.name, row.code);
    const int demo = companies_->findData(QString::fromLatin1(tr::schema::demo::kCompanyCode));
    if (demo >= 0) companies_->setCurrentIndex(demo);
    fillYears();
    connect(companies_, &QComboBox::currentIndexChanged, this, &LoginDialog::fillYears);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("كاربر"), users_);
    form->addRow(QStringLiteral("شرکت"), companies_);
    form->addRow(QStringLiteral("سال مالي"), years_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("ورود"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("انصراف"));
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!userRows_.isEmpty() && years_->count());
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(360);
}

void LoginDialog::fillYears() {
    years_->clear();
    const QString code = companies_->currentData().toString();
    // Rows come newest year first, so the current year is preselected.
    for (int i = 0; i < companyRows_.size(); ++i)
        if (companyRows_[i].code == code) years_->addItem(companyRows_[i].year, i);
}

User LoginDialog::user() const {
    const int i = users_->currentIndex();
    return i < 0 ? User{} : userRows_[i];
}

CompanyYear LoginDialog::companyYear() const {
    const int i = years_->currentData().toInt();
    return years_->currentIndex() < 0 ? CompanyYear{} : companyRows_[i];
}

}  // namespace tr::host
