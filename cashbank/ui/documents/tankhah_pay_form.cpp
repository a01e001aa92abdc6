#include "cashbank/ui/documents/tankhah_pay_form.h"

namespace tr::cashbank {

TTankhahPayForm::TTankhahPayForm(const tr::Services& services, QWidget* parent)
    : TCashBankForm(services, ScreenId::Tankhah, parent) {}

}  // namespace tr::cashbank
