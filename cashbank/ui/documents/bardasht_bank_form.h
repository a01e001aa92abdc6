#pragma once
// TBardashtBankForm: the withdrawal from a bank account ("ثبت برداشت بانک"), kind '90'.
// The family form configured by its row of the screens table; closing it hides it.
#include "cashbank/ui/documents/cash_bank_form.h"

namespace tr::cashbank {

class TBardashtBankForm : public TCashBankForm {
    Q_OBJECT
  public:
    explicit TBardashtBankForm(const tr::Services& services, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank
