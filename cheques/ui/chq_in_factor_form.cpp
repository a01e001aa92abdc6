#include "cheques/ui/chq_in_factor_form.h"

#include "cheques/cheque_settlement.h"

namespace tr::cheques::ui {

TChqInFactorForm::TChqInFactorForm(tr::settlement::InvoicePayer& payer, QWidget* parent)
    : InFactorWindow(payer, QStringLiteral("ChqInFactorForm"), parent) {}

bool assignChequeToInvoices(ChequeSettlement& settlement, QWidget* parent) {
    const std::unique_ptr<tr::settlement::InvoicePayer> payer = settlement.payerForCurrentCheque();
    if (!payer) return false;
    TChqInFactorForm form(*payer, parent);
    return form.ask();
}

}  // namespace tr::cheques::ui
