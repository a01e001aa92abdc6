// The probe library's export table: the real export names over stand-in forms.
#include "entry/screen_entry.h"
#include "entry/tests/probe_forms.h"

namespace tr::entry::probe {

ProbeSelectionForm* selectionForm = nullptr;

void ProbeForm::openSelection() {
    if (!selectionForm) selectionForm = new ProbeSelectionForm(nullptr);
}

}  // namespace tr::entry::probe

using namespace tr::entry::probe;

TR_SCREEN(FixDes_Naghd, FixDesForm, ProbeForm)
TR_INVOICE_SCREEN(CashGet_Naghd, CashGetForm, ProbeInvoiceForm)
TR_SCREEN(CashPay_Naghd, CashPayForm, ProbeForm)
TR_VOID_MODE_SCREEN(EbtalBargeCheck_Naghd, EbtalBargeCheckForm, ProbeVoidModeForm)
TR_RELEASED_FORM(ChqGetSlctFrm, ProbeSelectionForm, selectionForm)
