// The export table of libtreasury: one row per screen whose subsystem is part of this build.
// Adding a screen: its form header and its row, in a block guarded by TR_HAS_<FORM SOURCE>,
// which entry/CMakeLists.txt defines for every *_form.cpp / *_frm.cpp of the ui targets.
// Rows: TR_SCREEN (seven arguments), TR_INVOICE_SCREEN (eighth: invoice number),
// TR_VOID_MODE_SCREEN (eighth: void mode); Release_It's order is FormSlot's, not this file's.
#include "entry/screen_entry.h"

#if TR_HAS_FIX_DES_FORM
#include "vouchers/ui/fix_des_form.h"

TR_SCREEN(FixDes_Naghd, FixDesForm, tr::vouchers::TFixDesForm)
#endif

#if TR_HAS_CASH_GET_FORM
#include "cashbank/ui/documents/cash_get_form.h"

TR_INVOICE_SCREEN(CashGet_Naghd, CashGetForm, tr::cashbank::TCashGetForm)
#endif

#if TR_HAS_CASH_PAY_FORM
#include "cashbank/ui/documents/cash_pay_form.h"

TR_SCREEN(CashPay_Naghd, CashPayForm, tr::cashbank::TCashPayForm)
#endif

#if TR_HAS_TANKHAH_PAY_FORM
#include "cashbank/ui/documents/tankhah_pay_form.h"

TR_SCREEN(Tankah_Naghd, TankhahPayForm, tr::cashbank::TTankhahPayForm)
#endif

#if TR_HAS_BARDASHT_BANK_FORM
#include "cashbank/ui/documents/bardasht_bank_form.h"

TR_SCREEN(BardashtBank_Naghd, BardashtBankForm, tr::cashbank::TBardashtBankForm)
#endif

#if TR_HAS_VARIZ_BANK_FORM
#include "cashbank/ui/documents/variz_bank_form.h"

TR_INVOICE_SCREEN(VarizBank_Naghd, VarizBankForm, tr::cashbank::TVarizBankForm)
#endif

#if TR_HAS_HAVALEH_FORM
#include "cashbank/ui/documents/havaleh_form.h"

TR_SCREEN(Havaleh_Naghd, HavalehForm, tr::cashbank::THavalehForm)
#endif

#if TR_HAS_SEARCH_FORM
#include "cashbank/ui/search/search_form.h"

TR_SCREEN(Search_Naghd, SearchForm, tr::cashbank::TSearchForm)
#endif
