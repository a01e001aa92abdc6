#pragma once
// TVarizBankInFactorForm: settles sales invoices with a bank deposit ('50'); the allocations it
// confirms are written when the deposit is saved.
#include "cashbank/settlement/invoice_settlement.h"
#include "settlement/ui/in_factor_window.h"

namespace tr::cashbank::ui {

class TVarizBankInFactorForm : public tr::settlement::ui::InFactorWindow {
    Q_OBJECT
  public:
    explicit TVarizBankInFactorForm(InvoiceSettlement& settlement, QWidget* parent = nullptr);
};

}  // namespace tr::cashbank::ui
