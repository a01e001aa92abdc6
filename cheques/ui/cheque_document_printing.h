#pragma once
// A saved cheque document of `kind` ("71" received, "81" paid) printed in the chosen layout,
// through the suite's PrintDesign library when installed, and its print-form designer. What the
// received and payment screens call through their own entry points.
#include <QString>

#include "common/session/services.h"
#include "printing/print_layout.h"
#include "printing/ui/print_output.h"

class QWidget;

namespace tr::cheques::ui {

using tr::printing::PrintLayout;
using tr::printing::ui::PrintTarget;

// "جديد" hands the document to PrintDesign when installed (preview mode, the kind's stored
// layouts); "قديم", a PDF target and a host without the library use the built-in layouts. False
// when no document of the kind has that serial.
bool printChequeDocument(const tr::Services& services, const QString& kind, const QString& serial,
                         PrintLayout layout, const PrintTarget& target, QWidget* parent);

// PrintDesign in design mode on the document (or an empty one when `serial` names none). Without
// the library the user is told so; answers whether it was called.
bool designChequeDocumentPrint(const tr::Services& services, const QString& kind,
                               const QString& serial, QWidget* parent);

}  // namespace tr::cheques::ui
