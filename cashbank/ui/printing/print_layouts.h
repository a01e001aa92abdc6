#pragma once
// The built-in print layouts of a cash or bank document ("جديد" and "قديم"): right-to-left rich
// text that printing/ui lays out on an A4 page, to a PDF file or a print preview.
#include <QString>

#include "cashbank/printing/document_print.h"
#include "printing/ui/print_output.h"

namespace tr::cashbank::ui {

using tr::printing::PrintLayout;
using tr::printing::ui::PrintTarget;

QString documentHtml(const DocumentPrint& document, PrintLayout layout);

}  // namespace tr::cashbank::ui
