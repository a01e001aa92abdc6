#include "cashbank/ui/documents/cash_pay_form.h"

namespace tr::cashbank {

TCashPayForm::TCashPayForm(const tr::Services& services, QWidget* parent)
    : TCashBankForm(services, ScreenId::CashPay, parent) {}

}  // namespace tr::cashbank
