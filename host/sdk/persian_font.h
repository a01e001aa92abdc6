#pragma once
// The suite's user-interface font: Tahoma where it is installed, otherwise the first Persian
// font found, so Persian text is shaped and Latin letters still have glyphs. Every digit, Latin
// or Persian, is drawn as a Persian one: screens and prints show one kind of digit.
#include <QFont>

#include "host/sdk/sdk_export.h"

namespace tr::sdk {

// The family, first in persianFont's list, that draws 0-9 as Persian digits.
TR_SDK_EXPORT extern const QString kDigitsFamily;

// `pixelSize` is the em size in pixels.
TR_SDK_EXPORT QFont persianFont(int pixelSize = 11);

}  // namespace tr::sdk
