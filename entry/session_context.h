#pragma once
// The module-wide session: the six host objects of the latest entry call, published as exported
// data, and the Services every form reads them through (refreshed in place, never replaced).
#include "common/session/services.h"
#include "entry/entry_api.h"
#include "entry/form_slots.h"

namespace tr::entry {

// The one Services of the module. Forms keep a reference to it, so a later entry call with other
// session objects reaches forms created by earlier calls.
tr::Services& services();

// Step 1 of every entry point: the six objects, stored as given (null included).
void storeSession(tr::Global* global, tr::sdk::MyDate* myDate, tr::db::MyDatabase* myDatabase,
                  tr::sdk::TShowStateForm* showStateForm, tr::sdk::TTempGridForm* tempGridForm,
                  tr::sdk::TDlgMsg* dlgMsg);

// How Release_It reaches a slot's form: the live form (or null) and a way to null its pointer.
struct SlotHooks {
    QWidget* (*form)() = nullptr;
    void (*forget)() = nullptr;
};
void registerSlot(FormSlot slot, SlotHooks hooks);

}  // namespace tr::entry

extern "C" {
TR_ENTRY_EXPORT extern tr::Global* _Global;
TR_ENTRY_EXPORT extern tr::sdk::MyDate* _MyDate;
TR_ENTRY_EXPORT extern tr::db::MyDatabase* _MyDatabase;
TR_ENTRY_EXPORT extern tr::sdk::TShowStateForm* _ShowStateForm;
TR_ENTRY_EXPORT extern tr::sdk::TTempGridForm* _TempGridForm;
TR_ENTRY_EXPORT extern tr::sdk::TDlgMsg* _DlgMsg;

// Destroys every form the library created, in the fixed slot order; null slots are skipped, so
// a second call does nothing. Objects received from the host are never freed.
TR_ENTRY_EXPORT void TR_STDCALL Release_It();
}
