#include "cashbank/ui/documents/variz_bank_form.h"

namespace tr::cashbank {

TVarizBankForm::TVarizBankForm(const tr::Services& services, QWidget* parent)
    : TCashBankForm(services, ScreenId::VarizBank, parent) {}

}  // namespace tr::cashbank
