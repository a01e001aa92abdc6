#include "cashbank/ui/documents/cash_get_form.h"

namespace tr::cashbank {

TCashGetForm::TCashGetForm(const tr::Services& services, QWidget* parent)
    : TCashBankForm(services, ScreenId::CashGet, parent) {}

}  // namespace tr::cashbank
