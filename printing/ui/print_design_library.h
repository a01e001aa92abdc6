#pragma once
// The suite's print-design library (PrintDesign under <host folder>/DLLs/GlobalForms/), loaded for
// one call and unloaded afterwards; a missing library or entry point does nothing. The C signature
// is in docs/decisions/print-design-library.md.
#include <QString>

class QWidget;

namespace tr::db {
struct MyDatabase;
}

namespace tr::printing::ui {

extern "C" {
// Mode "PreviewPrn" or "DesignPrn"; texts UTF-16, NUL-terminated, valid during the call only.
using PrintDesignFormShow = void (*)(const char16_t* mode, const char16_t* layoutKey,
                                     const char16_t* layoutSelection, const char16_t* headerTable,
                                     const char16_t* linesTable, const char16_t* linkFields,
                                     tr::db::MyDatabase* database, QWidget* parent);
}

inline constexpr char kPrintDesignLibrary[] = "PrintDesign";
inline constexpr char kPrintDesignEntry[] = "PrintDesignForm_Show";
inline const QString kPreviewMode = QStringLiteral("PreviewPrn");
inline const QString kDesignMode = QStringLiteral("DesignPrn");

struct PrintDesignCall {
    QString mode;
    QString layoutKey;
    QString layoutSelection;
    QString headerTable;
    QString linesTable;
    QString linkFields;
};

// Whether the library with its entry point is installed under the host folder.
bool printDesignAvailable(const QString& hostFolder);
// Answers whether the entry point was found and called.
bool callPrintDesign(const QString& hostFolder, const PrintDesignCall& call,
                     tr::db::MyDatabase* database, QWidget* parent);

}  // namespace tr::printing::ui
