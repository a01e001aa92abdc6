#include "host/app/treasury_library.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "entry/entry_api.h"
#include "host/app/host_session.h"

namespace tr::host {

TreasuryLibrary::~TreasuryLibrary() {
    // The forms live in this host's windows; free them while those windows still exist.
    release();
}

bool TreasuryLibrary::load(const QString& path) {
    QString file = path;
#ifdef TR_DEFAULT_LIBRARY
    if (file.isEmpty() && QFileInfo::exists(QStringLiteral(TR_DEFAULT_LIBRARY)))
        file = QStringLiteral(TR_DEFAULT_LIBRARY);
#endif
    if (file.isEmpty()) file = QStringLiteral("treasury");
    library_.setFileName(file);
    return library_.load();
}

bool TreasuryLibrary::has(const QString& exportName) {
    return library_.isLoaded() && library_.resolve(exportName.toLatin1().constData());
}

bool TreasuryLibrary::open(const ScreenInfo& screen, QWidget* container, HostSession& session,
                           const QString& invoiceNumber) {
    if (!library_.isLoaded()) return false;
    QFunctionPointer entry = library_.resolve(screen.exportName.toLatin1().constData());
    if (!entry) return false;
    auto* global = &session.global();
    auto* date = &session.myDate();
    auto* database = &session.myDatabase();
    auto* state = &session.showStateForm();
    auto* grid = &session.tempGridForm();
    auto* dialog = &session.dlgMsg();
    switch (screen.kind) {
        case EntryKind::Plain:
            reinterpret_cast<tr::entry::ScreenEntry>(entry)(container, global, date, database,
                                                            state, grid, dialog);
            break;
        case EntryKind::Invoice:
            reinterpret_cast<tr::entry::InvoiceScreenEntry>(entry)(
                container, global, date, database, state, grid, dialog,
                reinterpret_cast<const char16_t*>(invoiceNumber.utf16()));
            break;
        case EntryKind::VoidMode:
            reinterpret_cast<tr::entry::VoidModeScreenEntry>(entry)(
                container, global, date, database, state, grid, dialog, screen.voidMode);
            break;
    }
    return true;
}

void TreasuryLibrary::release() {
    if (!library_.isLoaded()) return;
    if (auto releaseIt = reinterpret_cast<tr::entry::ReleaseEntry>(library_.resolve("Release_It")))
        releaseIt();
}

}  // namespace tr::host
