#pragma once
// TTankhahPayForm: the petty-cash payment ("ثبت تنخواه گردان"), kind '40'.
// The family form configured by its row of the screens table; closing it hides it.
#include "cashbank/ui/documents/cash_bank_form.h"

namespace tr::cashbank {

class TTankhahPayForm : public TCashBankForm {
    Q_OBJECT
  public:
    explicit TTankhahPayForm(const tr::Services& services, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank
