#pragma once
// What the cash and bank document screens call to print: the document in the chosen layout
// (through the suite's PrintDesign library when installed), its print-form designer, and its
// voucher. Each answers whether something was shown or written.
#include <QString>

#include "cashbank/ui/printing/print_layouts.h"
#include "common/session/services.h"

class QWidget;

namespace tr::cashbank::ui {

// Where a print goes: the print preview (empty path) or a PDF file.
struct PrintTarget {
    QString pdfPath;

    static PrintTarget preview() { return {}; }
    static PrintTarget pdf(const QString& path) { return {path}; }
    bool isPdf() const { return !pdfPath.isEmpty(); }
};

// "چاپ ... …" and "تاييد و چاپ": the saved document `serial` of `kind`. "جديد" hands the document
// to PrintDesign when it is installed (preview mode); "قديم", a PDF target and a host without
// the library use the built-in layouts. False when no such document is saved.
bool printDocument(const tr::Services& services, const QString& kind, const QString& serial,
                   PrintLayout layout, const PrintTarget& target, QWidget* parent);

// "طراحي فرم چاپ ... …": PrintDesign in design mode on the document (or on an empty one when
// `serial` names none). Without the library the user is told so; answers whether it was called.
bool designDocumentPrint(const tr::Services& services, const QString& kind, const QString& serial,
                         QWidget* parent);

// "چاپ ..." (Ctrl+P): the document's voucher. False when no such document is saved.
bool printVoucher(const tr::Services& services, const QString& kind, const QString& serial,
                  const PrintTarget& target, QWidget* parent);

}  // namespace tr::cashbank::ui
