#pragma once
// What a screen's logic works with: the host's session objects as the core sees them. The entry
// points fill one Services from the six objects the host passes; tests fill it with doubles.
#include <QObject>

#include "common/db/my_database.h"
#include "common/dialog/host_windows.h"
#include "common/dialog/message_dialog.h"
#include "common/session/global.h"

namespace tr {

struct Services {
    Global* global = nullptr;
    tr::db::MyDatabase* database = nullptr;
    tr::dialog::MessageDialog* dialog = nullptr;
    tr::dialog::PickList* pickList = nullptr;
    tr::dialog::ProgressWindow* progress = nullptr;
    // The host's date object, handed on untouched to sibling libraries (e.g. account turnover).
    QObject* myDate = nullptr;

    tr::db::Connection& connection() const { return *database->Connection; }
};

}  // namespace tr
