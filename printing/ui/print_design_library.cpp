#include "printing/ui/print_design_library.h"

#include <QDir>
#include <QLibrary>

#include "common/ui/settings_libraries.h"

namespace tr::printing::ui {

namespace {

const char16_t* utf16(const QString& text) {
    return reinterpret_cast<const char16_t*>(text.utf16());
}

// An empty host folder would make the path relative to whatever the working folder is.
template <typename Call>
bool withEntry(const QString& hostFolder, Call&& call) {
    if (hostFolder.trimmed().isEmpty()) return false;
    QLibrary library(
        QDir(tr::ui::globalFormsFolder(hostFolder)).filePath(QLatin1String(kPrintDesignLibrary)));
    if (!library.load()) return false;
    const auto entry = reinterpret_cast<PrintDesignFormShow>(library.resolve(kPrintDesignEntry));
    if (entry) call(entry);
    library.unload();
    return entry != nullptr;
}

}  // namespace

bool printDesignAvailable(const QString& hostFolder) {
    return withEntry(hostFolder, [](PrintDesignFormShow) {});
}

bool callPrintDesign(const QString& hostFolder, const PrintDesignCall& call,
                     tr::db::MyDatabase* database, QWidget* parent) {
    return withEntry(hostFolder, [&](PrintDesignFormShow show) {
        show(utf16(call.mode), utf16(call.layoutKey), utf16(call.layoutSelection),
             utf16(call.headerTable), utf16(call.linesTable), utf16(call.linkFields), database,
             parent);
    });
}

}  // namespace tr::printing::ui
