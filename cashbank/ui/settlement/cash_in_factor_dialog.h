#pragma once
// TCashInFactorForm: settles sales invoices with a cash receipt ('10'); the allocations it
// confirms are written when the receipt is saved.
#include "cashbank/settlement/invoice_settlement.h"
#include "settlement/ui/in_factor_window.h"

namespace tr::cashbank::ui {

class TCashInFactorForm : public tr::settlement::ui::InFactorWindow {
    Q_OBJECT
  public:
    explicit TCashInFactorForm(InvoiceSettlement& settlement, QWidget* parent = nullptr);
};

// The receipt or deposit dialog, by the settlement's kind; true when confirmed.
bool openSettlementDialog(InvoiceSettlement& settlement, QWidget* parent = nullptr);

}  // namespace tr::cashbank::ui
