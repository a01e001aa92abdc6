#include "common/ui/settings_libraries.h"

#include <QDir>
#include <QLibrary>

namespace tr::ui {

namespace {

const char16_t* noThing() {
    static const QString text = QStringLiteral("NoThing");
    return reinterpret_cast<const char16_t*>(text.utf16());
}

template <typename Entry, typename Call>
bool callEntry(const QString& hostFolder, const char* library, const char* entry, Call&& call) {
    QLibrary settings(QDir(globalFormsFolder(hostFolder)).filePath(QLatin1String(library)));
    if (!settings.load()) return false;
    const auto function = reinterpret_cast<Entry>(settings.resolve(entry));
    if (function) call(function);
    settings.unload();
    return function != nullptr;
}

}  // namespace

QString globalFormsFolder(const QString& hostFolder) {
    return QDir(hostFolder).filePath(QStringLiteral("DLLs/GlobalForms"));
}

bool openColumnSettings(const QString& hostFolder, QTableView* grid) {
    return callEntry<ColSettingFormShow>(hostFolder, kColumnSettingsLibrary, "ColSettingForm_Show",
                                         [&](ColSettingFormShow show) { show(noThing(), grid); });
}

bool openReportSettings(const QString& hostFolder, QObject* report, const QString& caption) {
    return callEntry<RepPropertyFormShow>(
        hostFolder, kReportSettingsLibrary, "RepPropertyForm_Show", [&](RepPropertyFormShow show) {
            show(noThing(), reinterpret_cast<const char16_t*>(caption.utf16()), report);
        });
}

}  // namespace tr::ui
