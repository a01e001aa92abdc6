#pragma once
// TCashInFactorForm: settles sales invoices with a cash receipt ('10'); the allocations it
// confirms are written when the receipt is saved.
#include "cashbank/ui/settlement/in_factor_window.h"

namespace tr::cashbank::ui {

class TCashInFactorForm : public InFactorWindow {
    Q_OBJECT
  public:
    explicit TCashInFactorForm(InvoiceSettlement& settlement, QWidget* parent = nullptr);
};

// The receipt or deposit dialog, by the settlement's kind; true when confirmed.
bool openSettlementDialog(InvoiceSettlement& settlement, QWidget* parent = nullptr);

}  // namespace tr::cashbank::ui
