#include "cashbank/ui/documents/havaleh_form.h"

namespace tr::cashbank {

THavalehForm::THavalehForm(const tr::Services& services, QWidget* parent)
    : TCashBankForm(services, ScreenId::Havaleh, parent) {}

}  // namespace tr::cashbank
