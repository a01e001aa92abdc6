#pragma once
// TCashGetForm: the cash receipt ("ثبت دريافت صندوق"), kind '10'; it settles sales invoices.
// The family form configured by its row of the screens table; closing it hides it.
#include "cashbank/ui/documents/cash_bank_form.h"

namespace tr::cashbank {

class TCashGetForm : public TCashBankForm {
    Q_OBJECT
  public:
    explicit TCashGetForm(const tr::Services& services, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank
