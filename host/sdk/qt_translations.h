#pragma once
// Qt's own dialogs (print, page setup, files, colours) in Persian: Debian's Qt translations
// (package qt6-translations-l10n) loaded into the running application once.
#include "host/sdk/sdk_export.h"

namespace tr::sdk {

// Whether Qt's Persian translations are installed in the application (now or before); false
// when the translation files are missing.
TR_SDK_EXPORT bool installQtPersianTranslations();

}  // namespace tr::sdk
