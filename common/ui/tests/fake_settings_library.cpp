// Records each call on the object it is given, so tests can see what the module passed.
#include <QObject>
#include <QTableView>
#include <QString>
#include <QVariant>

#define EXPORT extern "C" __attribute__((visibility("default")))

#ifdef TR_FAKE_COLUMN_SETTINGS
EXPORT void ColSettingForm_Show(const char16_t* mode, QTableView* grid) {
    grid->setProperty("settingsMode", QString::fromUtf16(mode));
}
#else
EXPORT void RepPropertyForm_Show(const char16_t* mode, const char16_t* caption, QObject* report) {
    report->setProperty("settingsMode", QString::fromUtf16(mode));
    report->setProperty("settingsCaption", QString::fromUtf16(caption));
}
#endif
