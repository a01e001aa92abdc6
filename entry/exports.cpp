// The export table of libtreasury: one row per exported screen, and nothing is exported that is
// not a row here. A new screen is its form's header and its row; entry/CMakeLists.txt links the
// ui target that holds the form, so a missing or renamed form fails the build.
// Rows: TR_SCREEN (seven arguments), TR_INVOICE_SCREEN (eighth: invoice number),
// TR_VOID_MODE_SCREEN (eighth: void mode); Release_It's order is FormSlot's, not this file's.
#include "cashbank/ui/documents/bardasht_bank_form.h"
#include "cashbank/ui/documents/cash_get_form.h"
#include "cashbank/ui/documents/cash_pay_form.h"
#include "cashbank/ui/documents/havaleh_form.h"
#include "cashbank/ui/documents/tankhah_pay_form.h"
#include "cashbank/ui/documents/variz_bank_form.h"
#include "cashbank/ui/search/search_form.h"
#include "cheques/ui/chq_action1_form.h"
#include "cheques/ui/chq_get_form.h"
#include "cheques/ui/chq_get_slct_form.h"
#include "cheques/ui/chq_mojavez_form.h"
#include "cheques/ui/chq_mojavez_taed_form.h"
#include "cheques/ui/chq_pay_form.h"
#include "cheques/ui/chq_to_bank_form.h"
#include "cheques/ui/ebtal_barge_check_form.h"
#include "entry/screen_entry.h"
#include "vouchers/ui/fix_des_form.h"

TR_SCREEN(FixDes_Naghd, FixDesForm, tr::vouchers::TFixDesForm)
TR_INVOICE_SCREEN(CashGet_Naghd, CashGetForm, tr::cashbank::TCashGetForm)
TR_SCREEN(CashPay_Naghd, CashPayForm, tr::cashbank::TCashPayForm)
TR_SCREEN(Tankah_Naghd, TankhahPayForm, tr::cashbank::TTankhahPayForm)
TR_SCREEN(BardashtBank_Naghd, BardashtBankForm, tr::cashbank::TBardashtBankForm)
TR_INVOICE_SCREEN(VarizBank_Naghd, VarizBankForm, tr::cashbank::TVarizBankForm)
TR_SCREEN(Havaleh_Naghd, HavalehForm, tr::cashbank::THavalehForm)
TR_SCREEN(Search_Naghd, SearchForm, tr::cashbank::TSearchForm)
TR_INVOICE_SCREEN(ChqGet_Naghd, ChqGetForm, tr::cheques::TChqGetForm)
TR_SCREEN(ChqPay_Naghd, ChqPayForm, tr::cheques::TChqPayForm)
TR_SCREEN(ChqMojavez_Naghd, ChqMojavezForm, tr::cheques::TChqMojavezForm)
TR_SCREEN(ChqMojavezTaed_Naghd, ChqMojavezTaedForm, tr::cheques::TChqMojavezTaedForm)
TR_SCREEN(Chq_Action_Naghd, ChqAction1Form, tr::cheques::TChqAction1Form)
TR_SCREEN(ChqToBank_Naghd, ChqToBankForm, tr::cheques::TChqToBankForm)
TR_VOID_MODE_SCREEN(EbtalBargeCheck_Naghd, EbtalBargeCheckForm, tr::cheques::TEbtalBargeCheckForm)
TR_RELEASED_FORM(ChqGetSlctFrm, tr::cheques::TChqGetSlctFrm, tr::cheques::chqGetSlctFrm)
