#include "entry/session_context.h"

#include <QCoreApplication>
#include <QWidget>
#include <array>
#include <memory>

#include "common/dialog/progress_wait.h"
#include "host/sdk/dlg_msg.h"
#include "host/sdk/my_date.h"
#include "host/sdk/qt_translations.h"
#include "host/sdk/show_state_form.h"
#include "host/sdk/temp_grid_form.h"

extern "C" {
tr::Global* _Global = nullptr;
tr::sdk::MyDate* _MyDate = nullptr;
tr::db::MyDatabase* _MyDatabase = nullptr;
tr::sdk::TShowStateForm* _ShowStateForm = nullptr;
tr::sdk::TTempGridForm* _TempGridForm = nullptr;
tr::sdk::TDlgMsg* _DlgMsg = nullptr;
}

namespace tr::entry {
namespace {

// Constant-initialised, so the registrars of the export table may fill it during static
// initialisation in any order of translation units.
constinit std::array<SlotHooks, std::size_t(FormSlot::Count)> formSlots{};
constinit tr::Services moduleServices{};

// The session connection's waits on other users, shown in the host's status window.
std::unique_ptr<tr::dialog::ProgressWait> waits;
tr::db::Connection* watchedConnection = nullptr;

void stopWatchingWaits() {
    if (watchedConnection) watchedConnection->setWaitObserver(nullptr);
    watchedConnection = nullptr;
    waits.reset();
}

// Forgets the forms without destroying them: once the application object is gone their windows
// can no longer be torn down safely, and the process is ending anyway.
void forgetAll() {
    for (const auto& hooks : formSlots)
        if (hooks.forget) hooks.forget();
}

// The library's unload hook (process exit or the host unloading the library).
struct UnloadHook {
    ~UnloadHook() {
        if (QCoreApplication::instance())
            Release_It();
        else
            forgetAll();
    }
} unloadHook;

}  // namespace

tr::Services& services() {
    return moduleServices;
}

void storeSession(tr::Global* global, tr::sdk::MyDate* myDate, tr::db::MyDatabase* myDatabase,
                  tr::sdk::TShowStateForm* showStateForm, tr::sdk::TTempGridForm* tempGridForm,
                  tr::sdk::TDlgMsg* dlgMsg) {
    _Global = global;
    _MyDate = myDate;
    _MyDatabase = myDatabase;
    _ShowStateForm = showStateForm;
    _TempGridForm = tempGridForm;
    _DlgMsg = dlgMsg;
    moduleServices.global = global;
    moduleServices.database = myDatabase;
    moduleServices.dialog = dlgMsg;
    moduleServices.pickList = tempGridForm;
    moduleServices.progress = showStateForm;
    moduleServices.myDate = myDate;
    stopWatchingWaits();
    if (myDatabase && myDatabase->Connection && showStateForm) {
        waits = std::make_unique<tr::dialog::ProgressWait>(*showStateForm);
        watchedConnection = myDatabase->Connection;
        watchedConnection->setWaitObserver(waits.get());
    }
    // The module's print previews and file dialogs are Qt's: in Persian, whatever the host loads.
    tr::sdk::installQtPersianTranslations();
}

void registerSlot(FormSlot slot, SlotHooks hooks) {
    formSlots[std::size_t(slot)] = hooks;
}

}  // namespace tr::entry

extern "C" void TR_STDCALL Release_It() {
    tr::entry::stopWatchingWaits();
    for (const auto& hooks : tr::entry::formSlots) {
        if (!hooks.form) continue;
        QWidget* form = hooks.form();
        if (!form) continue;
        // The pointer goes first: a form's destructor may reach other forms through the module.
        hooks.forget();
        delete form;
    }
}
