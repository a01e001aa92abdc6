#pragma once
// The suite's user-interface font: Tahoma where it is installed, otherwise the first Persian
// font found, so Persian text is shaped and digits and Latin letters still have glyphs.
#include <QFont>

#include "host/sdk/sdk_export.h"

namespace tr::sdk {

// `pixelSize` is the em size in pixels.
TR_SDK_EXPORT QFont persianFont(int pixelSize = 11);

}  // namespace tr::sdk
