#pragma once
// TVarizBankInFactorForm: settles sales invoices with a bank deposit ('50'); the allocations it
// confirms are written when the deposit is saved.
#include "cashbank/ui/settlement/in_factor_window.h"

namespace tr::cashbank::ui {

class TVarizBankInFactorForm : public InFactorWindow {
    Q_OBJECT
  public:
    explicit TVarizBankInFactorForm(InvoiceSettlement& settlement, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank::ui
