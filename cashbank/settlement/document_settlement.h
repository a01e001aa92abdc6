#pragma once
// DocumentSettlement: invoice settlement bound to a receipt or deposit screen's logic. Its
// InvoiceSettlement lives exactly as long as the screen's N_Global and learns, on every show,
// the invoice the screen was opened for, or that there is none.
#include <memory>

#include "cashbank/documents/cash_bank_document.h"
#include "cashbank/settlement/invoice_settlement.h"

namespace tr::cashbank {

class DocumentSettlement {
  public:
    // Sets the logic's settlement hooks when its screen settles invoices; does nothing otherwise.
    explicit DocumentSettlement(CashBankDocument& logic);
    // Removes the hooks it set.
    ~DocumentSettlement();
    DocumentSettlement(const DocumentSettlement&) = delete;
    DocumentSettlement& operator=(const DocumentSettlement&) = delete;

    // Null before the screen's first show and on screens that settle nothing.
    InvoiceSettlement* settlement() { return settlement_.get(); }

  private:
    CashBankDocument& logic_;
    std::unique_ptr<InvoiceSettlement> settlement_;
};

}  // namespace tr::cashbank
