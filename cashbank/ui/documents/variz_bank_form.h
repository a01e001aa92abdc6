#pragma once
// TVarizBankForm: the cash deposit to a bank account ("واريز نقدي به بانک"), kind '50'; it settles
// sales invoices. The family form configured by its row of the screens table; closing it hides it.
#include "cashbank/ui/documents/cash_bank_form.h"

namespace tr::cashbank {

class TVarizBankForm : public TCashBankForm {
    Q_OBJECT
  public:
    explicit TVarizBankForm(const tr::Services& services, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank
