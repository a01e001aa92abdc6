// Qt's own dialogs speak Persian once the translations are installed (Debian's
// qt6-translations-l10n, which the set-up step installs).
#include "host/sdk/qt_translations.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

TEST(QtTranslations, QtsOwnWordsComeOutInPersian) {
    const QString english = QCoreApplication::translate("QPrintDialog", "Print");
    ASSERT_TRUE(tr::sdk::installQtPersianTranslations());
    EXPECT_TRUE(tr::sdk::installQtPersianTranslations());  // once is enough; asking again is harmless
    const QString persian = QCoreApplication::translate("QPrintDialog", "Print");
    EXPECT_NE(persian, english);
    EXPECT_TRUE(persian.contains(QChar(0x0686)) || persian.contains(QChar(0x067E)) ||
                persian.at(0).script() == QChar::Script_Arabic)
        << persian.toStdString();
}
