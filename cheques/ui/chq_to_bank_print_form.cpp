#include "cheques/ui/chq_to_bank_print_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "cheques/ui/bank_slip_printing.h"
#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"

namespace tr::cheques {

const QString TChqToBankPrintForm::kCaption = QStringLiteral("چاپ ارسال به بانك");

TChqToBankPrintForm::TChqToBankPrintForm(ChequesToBank& list, BankSlips& slips, QWidget* parent)
    : QDialog(parent), list_(list), slips_(slips) {
    setObjectName(QStringLiteral("ChqToBankPrintForm"));
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);

    auto* split = new QGroupBox(this);
    byAccount_ = new QRadioButton(QStringLiteral("به تفكيك بانك"), split);
    shared_ = new QRadioButton(QStringLiteral("بدون تفكيك"), split);
    byAccount_->setChecked(true);
    auto* splitLayout = new QHBoxLayout(split);
    splitLayout->addWidget(byAccount_);
    splitLayout->addWidget(shared_);

    rows_ = new QSpinBox(this);
    rows_->setObjectName(QStringLiteral("SERowCount"));
    rows_->setRange(0, 30);
    rows_->setValue(5);
    form_ = new QComboBox(this);
    form_->setObjectName(QStringLiteral("CPrintForm"));
    form_->addItems(ui::slipFormNames());
    dx_ = new QSpinBox(this);
    dx_->setObjectName(QStringLiteral("SEHorizontal"));
    dx_->setRange(-90, 90);
    dy_ = new QSpinBox(this);
    dy_->setObjectName(QStringLiteral("SEVertical"));
    dy_->setRange(-20, 20);
    template_ = new QCheckBox(QStringLiteral("نمايش و چاپ الگو"), this);

    auto* fields = new QFormLayout;
    fields->addRow(QStringLiteral("تعداد رديف در هر صفحه"), rows_);
    fields->addRow(QStringLiteral("چاپ با فرم"), form_);
    fields->addRow(QStringLiteral("جابجاييعرضي"), dx_);
    fields->addRow(QStringLiteral("طولي"), dy_);
    fields->addRow(QString(), template_);

    print_ = new QPushButton(QStringLiteral("چاپ"), this);
    cancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    connect(print_, &QPushButton::clicked, this, [this] {
        if (print(tr::printing::ui::PrintTarget::preview())) accept();
    });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(print_);
    buttons->addWidget(cancel_);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(split);
    layout->addLayout(fields);
    layout->addLayout(buttons);
}

SlipOptions TChqToBankPrintForm::slipOptions() const { return {byAccount_->isChecked(), rows_->value()}; }

ui::SlipPrintOptions TChqToBankPrintForm::printOptions() const {
    return {static_cast<ui::SlipForm>(qBound(0, form_->currentIndex(), 2)), double(dx_->value()),
            double(dy_->value()), template_->isChecked()};
}

bool TChqToBankPrintForm::print(const tr::printing::ui::PrintTarget& target) {
    try {
        if (!slips_.build(list_, slipOptions())) return false;
        return ui::printBankSlips(slips_.slips(), printOptions(), target, this);
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(list_.services().dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

}  // namespace tr::cheques
