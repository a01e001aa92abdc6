#pragma once
// The voucher print of a saved treasury document ("چاپ ...", Ctrl+P), for the cash and bank
// kinds and the received cheque alike: every line of its voucher with the totals, A4 portrait.
#include <QString>

#include "common/session/services.h"
#include "printing/ui/print_output.h"
#include "printing/voucher_print.h"

class QWidget;

namespace tr::printing::ui {

QString voucherHtml(const VoucherPrint& voucher);

// The voucher of document `serial` of `kind`, its preview window named after the report key.
// False when no such document is saved or it has no voucher.
bool printVoucher(const tr::Services& services, const QString& kind, const QString& serial,
                  const PrintTarget& target, QWidget* parent);

}  // namespace tr::printing::ui
