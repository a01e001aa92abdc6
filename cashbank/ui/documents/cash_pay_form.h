#pragma once
// TCashPayForm: the cash payment ("ثبت پرداخت صندوق"), kind '20'.
// The family form configured by its row of the screens table; closing it hides it.
#include "cashbank/ui/documents/cash_bank_form.h"

namespace tr::cashbank {

class TCashPayForm : public TCashBankForm {
    Q_OBJECT
  public:
    explicit TCashPayForm(const tr::Services& services, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank
