#include "cashbank/ui/documents/bardasht_bank_form.h"

namespace tr::cashbank {

TBardashtBankForm::TBardashtBankForm(const tr::Services& services, QWidget* parent)
    : TCashBankForm(services, ScreenId::BardashtBank, parent) {}

}  // namespace tr::cashbank
