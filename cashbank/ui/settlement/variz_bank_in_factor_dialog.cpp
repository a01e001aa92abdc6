#include "cashbank/ui/settlement/variz_bank_in_factor_dialog.h"

namespace tr::cashbank::ui {

TVarizBankInFactorForm::TVarizBankInFactorForm(InvoiceSettlement& settlement, QWidget* parent)
    : tr::settlement::ui::InFactorWindow(settlement, QStringLiteral("VarizBankInFactorForm"), parent) {}

}  // namespace tr::cashbank::ui
