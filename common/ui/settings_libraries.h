#pragma once
// The suite's settings windows, loaded for each call from <host folder>/DLLs/GlobalForms/ and
// unloaded afterwards; a missing library or entry point does nothing. The C signatures are in
// docs/decisions/settings-libraries.md.
#include <QString>

class QObject;
class QTableView;

namespace tr::ui {

extern "C" {
// "NoThing" (UTF-16, NUL-terminated) and the grid; the window is modal and gone on return.
using ColSettingFormShow = void (*)(const char16_t* mode, QTableView* grid);
// "NoThing", the caption "مشخصات گزارش [<report name>]" and the report object.
using RepPropertyFormShow = void (*)(const char16_t* mode, const char16_t* caption, QObject* report);
}

// Library file base names; QLibrary adds the platform's prefix and suffix.
inline constexpr char kColumnSettingsLibrary[] = "ColumnSettings";
inline constexpr char kReportSettingsLibrary[] = "ReportSettings";

QString globalFormsFolder(const QString& hostFolder);
// Both return whether the entry point was found and called.
bool openColumnSettings(const QString& hostFolder, QTableView* grid);
bool openReportSettings(const QString& hostFolder, QObject* report, const QString& caption);

}  // namespace tr::ui
