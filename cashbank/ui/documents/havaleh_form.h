#pragma once
// THavalehForm: the bank transfer ("حواله هاي بانكي"), kind '60'.
// The family form configured by its row of the screens table; closing it hides it.
#include "cashbank/ui/documents/cash_bank_form.h"

namespace tr::cashbank {

class THavalehForm : public TCashBankForm {
    Q_OBJECT
  public:
    explicit THavalehForm(const tr::Services& services, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank
