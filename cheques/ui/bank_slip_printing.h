#pragma once
// The deposit slips printed: every slip of a SlipSet in the chosen built-in form, to the print
// preview or a PDF file; and the print table handed to the PrintDesign library ("طراحي چاپ",
// "چاپ جديد") under "ارسال چک به بانک_".
#include <QString>

#include "cheques/bank_slips.h"
#include "cheques/ui/bank_slip_layouts.h"
#include "common/session/services.h"
#include "printing/ui/print_output.h"

class QWidget;

namespace tr::cheques::ui {

inline const QString kBankSlipLayoutKey = QStringLiteral("ارسال چک به بانک_");

// False when nothing was printed (no slip, or the file could not be written).
bool printBankSlips(const SlipSet& set, const SlipPrintOptions& options,
                    const tr::printing::ui::PrintTarget& target, QWidget* parent);
// `mode` is kDesignMode or kPreviewMode; the summary goes as the header table and the print
// table as the lines, joined on HesabVago. Without the library the user is told so.
bool handBankSlipsToPrintDesign(const tr::Services& services, const BankSlips& slips,
                                const QString& mode, QWidget* parent);

}  // namespace tr::cheques::ui
