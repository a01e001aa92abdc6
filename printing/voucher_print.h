#pragma once
// What the voucher print of a saved treasury document shows: its own voucher (not a cancellation
// voucher), every line in Raj order, for a cash or bank kind and for the received cheque alike.
#include <QString>
#include <optional>
#include <vector>

#include "common/session/services.h"

namespace tr::printing {

struct VoucherPrintLine {
    int raj = 0;
    QString koll, moein, tafsily, tafsily2, projectCod;
    QString lastNam;  // the most detailed level's name (account_names.h)
    QString des;
    double bed = 0, bes = 0;
};

struct VoucherPrint {
    QString title;      // "سند " + kind name + " شماره " + voucher number
    QString reportKey;  // "N_ASNAD_CASHGET_CASHGET" for a receipt
    qint64 voucherNo = 0;
    QString date;
    QString companyName;
    QString userName;      // who saved the document (the login)
    QString userFullName;  // printed
    std::vector<VoucherPrintLine> lines;

    double totalBed() const;
    double totalBes() const;
};

// Null when the kind does not print, no document has that serial, or it has no voucher (an
// opening-cheque document).
std::optional<VoucherPrint> loadVoucherPrint(const tr::Services& services, const QString& kind,
                                             const QString& serial);
// "N_ASNAD_" + the form key's name twice; "" for a kind that does not print.
QString voucherReportKey(const QString& kind);

}  // namespace tr::printing
