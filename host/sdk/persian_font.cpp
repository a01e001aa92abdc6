#include "host/sdk/persian_font.h"

#include <QFontDatabase>
#include <QStringList>

namespace tr::sdk {

namespace {

// Loaded once from the library's resources; Qt takes each character from the first family of
// the list that has it, so the digits come from here and everything else from the text fonts.
bool loadDigitsFont() {
    // A bold face of its own: a synthesised one would differ between screen, preview and PDF.
    bool loaded = true;
    for (const char* file : {":/fonts/TreasuryDigits.ttf", ":/fonts/TreasuryDigits-Bold.ttf"})
        loaded = QFontDatabase::addApplicationFont(QString::fromLatin1(file)) >= 0 && loaded;
    return loaded;
}

QStringList textFamilies() {
    return {QStringLiteral("Nazli"), QStringLiteral("Noto Naskh Arabic"),
            QStringLiteral("Noto Sans Arabic"), QStringLiteral("DejaVu Sans")};
}

}  // namespace

const QString kDigitsFamily = QStringLiteral("Treasury Digits");

QFont persianFont(int pixelSize) {
    static const bool prepared = [] {
        const bool loaded = loadDigitsFont();
        // Widgets that ask for Tahoma by name (the suite's forms do) get the same fallbacks.
        QFont::insertSubstitutions(QStringLiteral("Tahoma"), textFamilies());
        return loaded;
    }();
    QFont font;
    QStringList families = {QStringLiteral("Tahoma")};
    families += textFamilies();
    if (prepared) families.prepend(kDigitsFamily);
    font.setFamilies(families);
    font.setPixelSize(pixelSize);
    return font;
}

}  // namespace tr::sdk
