#include "host/sdk/persian_font.h"

#include <QStringList>

namespace tr::sdk {

QFont persianFont(int pixelSize) {
    static const bool substituted = [] {
        // Widgets that ask for Tahoma by name (the suite's forms do) get the same fallbacks.
        QFont::insertSubstitutions(
            QStringLiteral("Tahoma"),
            {QStringLiteral("Nazli"), QStringLiteral("Noto Naskh Arabic"),
             QStringLiteral("Noto Sans Arabic"), QStringLiteral("DejaVu Sans")});
        return true;
    }();
    (void)substituted;
    QFont font;
    font.setFamilies({QStringLiteral("Tahoma"), QStringLiteral("Nazli"),
                      QStringLiteral("Noto Naskh Arabic"), QStringLiteral("Noto Sans Arabic"),
                      QStringLiteral("DejaVu Sans")});
    font.setPixelSize(pixelSize);
    return font;
}

}  // namespace tr::sdk
