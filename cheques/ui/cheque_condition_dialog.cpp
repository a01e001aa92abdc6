#include "cheques/ui/cheque_condition_dialog.h"
#include "common/ui/date_boxes.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace tr::cheques {

const QString TChequeConditionDialog::kCaption = QStringLiteral("شرايط عمليات چک");
const QString TChequeConditionDialog::kConditionKind = QStringLiteral("CHQACTION1");
const QString TChequeConditionDialog::kDateField = QStringLiteral("SANADDATE");

namespace {


}  // namespace

TChequeConditionDialog::TChequeConditionDialog(const QString& from, const QString& to, QWidget* parent)
    : QDialog(parent) {
    setObjectName(kConditionKind);
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);
    from_ = tr::ui::maskedDateBox(this);
    to_ = tr::ui::maskedDateBox(this);
    for (QLineEdit* box : {from_, to_}) box->setProperty("field", kDateField);
    from_->setText(from);
    to_->setText(to);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("تاييد"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("انصراف"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("از تاريخ"), from_);
    layout->addRow(QStringLiteral("تا تاريخ"), to_);
    layout->addRow(buttons);
}

QString TChequeConditionDialog::fromDate() const { return tr::ui::maskedDate(from_); }
QString TChequeConditionDialog::toDate() const { return tr::ui::maskedDate(to_); }

}  // namespace tr::cheques
