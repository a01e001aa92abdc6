#include "cashbank/ui/settlement/cash_in_factor_dialog.h"

#include "cashbank/ui/settlement/variz_bank_in_factor_dialog.h"

namespace tr::cashbank::ui {

TCashInFactorForm::TCashInFactorForm(InvoiceSettlement& settlement, QWidget* parent)
    : tr::settlement::ui::InFactorWindow(settlement, QStringLiteral("CashInFactorForm"), parent) {}

bool openSettlementDialog(InvoiceSettlement& settlement, QWidget* parent) {
    if (settlement.kind().code == QLatin1String("50")) {
        TVarizBankInFactorForm form(settlement, parent);
        return form.ask();
    }
    TCashInFactorForm form(settlement, parent);
    return form.ask();
}

}  // namespace tr::cashbank::ui
