#pragma once
// A document's print handed to the suite's PrintDesign library for the session: the two "##"
// tables made just before the call and dropped as soon as it returns; and the word to the user
// when the designer is asked for but not installed.
#include <QString>
#include <functional>

#include "common/session/services.h"
#include "printing/print_tables.h"

class QWidget;

namespace tr::printing::ui {

// The stored layouts a document family's print is kept under and the fields its tables join on.
struct PrintDesignLayout {
    QString key;        // printLayoutKey
    QString selection;  // printLayoutSelection
    QString linkFields;
};

// Whether PrintDesign is installed under the session's host folder.
bool printDesignInstalled(const tr::Services& services);
// `mode` is kPreviewMode or kDesignMode; `makeTables` creates and fills the tables.
void handOffToPrintDesign(const tr::Services& services, const QString& mode,
                          const PrintDesignLayout& layout,
                          const std::function<PrintTables()>& makeTables, QWidget* parent);
// "برنامه طراحي فرم چاپ (PrintDesign) نصب نشده است." ("1WR").
void tellPrintDesignMissing(const tr::Services& services);

}  // namespace tr::printing::ui
