#pragma once
// TChqInFactorForm: "ثبت چک در صورتحساب" for the received cheque under the cursor; the
// allocations it confirms are written when the received-cheque document is saved.
#include "settlement/ui/in_factor_window.h"

namespace tr::cheques {
class ChequeSettlement;
}  // namespace tr::cheques

namespace tr::cheques::ui {

class TChqInFactorForm : public tr::settlement::ui::InFactorWindow {
    Q_OBJECT
  public:
    explicit TChqInFactorForm(tr::settlement::InvoicePayer& payer, QWidget* parent = nullptr);
};

// The dialog for the current cheque of `settlement`'s document: false after a refusal on
// opening or when the user cancels.
bool assignChequeToInvoices(ChequeSettlement& settlement, QWidget* parent = nullptr);

}  // namespace tr::cheques::ui
