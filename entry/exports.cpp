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
#include "cashbank/ui/cash_get_form.h"

TR_INVOICE_SCREEN(CashGet_Naghd, CashGetForm, tr::cashbank::TCashGetForm)
#endif
