#include "host/sdk/qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace tr::sdk {

bool installQtPersianTranslations() {
    // One translator for the process, whichever of the host and the module asks first.
    static QTranslator* installed = nullptr;
    if (installed) return true;
    if (!QCoreApplication::instance()) return false;
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(QStringLiteral("qtbase_fa"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        !QCoreApplication::installTranslator(translator)) {
        delete translator;
        return false;
    }
    installed = translator;
    return true;
}

}  // namespace tr::sdk
