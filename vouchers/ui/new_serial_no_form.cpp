#include "vouchers/ui/new_serial_no_form.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "host/sdk/modal_runner.h"

namespace tr::vouchers {

TNewSerialNoForm::TNewSerialNoForm(NewSerialDialog& logic, QWidget* owner)
    : QDialog(owner), logic_(logic) {
    setObjectName(QStringLiteral("NewSerialNoForm"));
    setWindowTitle(NewSerialDialog::caption());
    setLayoutDirection(Qt::RightToLeft);

    group_ = new QGroupBox(logic_.groupCaption(), this);
    group_->setAlignment(Qt::AlignRight);
    serial_ = new QLineEdit(group_);
    serial_->setObjectName(QStringLiteral("txtSerialNo"));
    serial_->setMaxLength(6);  // the serial box of every document header
    auto* groupLayout = new QVBoxLayout(group_);
    groupLayout->addWidget(serial_);

    ok_ = new QPushButton(QStringLiteral("تاييد"), this);
    ok_->setObjectName(QStringLiteral("cmdOk"));
    ok_->setDefault(true);
    cancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    cancel_->setObjectName(QStringLiteral("cmdCancel"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    buttons->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group_);
    layout->addLayout(buttons);

    connect(ok_, &QPushButton::clicked, this, &TNewSerialNoForm::cmdOkClick);
    connect(cancel_, &QPushButton::clicked, this, &TNewSerialNoForm::reject);
}

bool TNewSerialNoForm::execute(NewSerialDialog& logic, QWidget* owner) {
    TNewSerialNoForm form(logic, owner);
    tr::sdk::ModalRunner::current().exec(form);
    return logic.accepted();
}

void TNewSerialNoForm::showEvent(QShowEvent* event) {
    serial_->setText(logic_.propose());
    serial_->selectAll();
    serial_->setFocus();
    if (QWidget* owner = parentWidget()) {
        adjustSize();
        const QPoint centre = owner->mapToGlobal(owner->rect().center());
        move(centre - rect().center());
    }
    QDialog::showEvent(event);
}

void TNewSerialNoForm::reject() {
    logic_.cancel();
    QDialog::reject();
}

void TNewSerialNoForm::cmdOkClick() {
    // A refused serial keeps the window open; the logic has shown why.
    if (logic_.confirm(serial_->text())) accept();
}

}  // namespace tr::vouchers
