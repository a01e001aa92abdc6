#pragma once
// What a printed received-cheque document ("دريافت چک", kind 71) shows, read from the saved
// document (with a voucher, or an opening-cheque one without), and the two "##" tables the
// print-design library reads. Nothing here draws: the layouts live in cheques/ui.
#include <QString>
#include <optional>
#include <vector>

#include "common/session/services.h"
#include "printing/print_tables.h"

namespace tr::cheques {

// One cheque of the document, in the cheque grid's order.
struct ReceivedChequePrintCheque {
    int raj = 0;  // from 1
    QString number, series;
    QString bankName, branchName;
    QString dueDate;
    QString payee;  // "در وجه"
    double amount = 0;
};

// One counterparty line: the account a cheque (or part of one) is credited to.
struct ReceivedChequePrintLine {
    int raj = 0;  // from 1
    QString chequeNumber, chequeSeries;
    QString koll, moein, tafsily, tafsily2, projectCod;
    QString accountName;  // the most detailed level's name
    QString des;
    double amount = 0;
};

struct ReceivedChequePrint {
    QString kindName;  // NDocNam of '71'
    QString serial;
    QString date;
    qint64 voucherNo = 0;  // none for an opening-cheque document
    bool opening = false;
    QString companyName;
    QString userName;      // who saved the document (the login)
    QString userFullName;  // printed
    std::vector<ReceivedChequePrintCheque> cheques;
    std::vector<ReceivedChequePrintLine> lines;

    // The cheques' sum (the counterparty lines sum to it too) and that sum in words.
    double total() const;
    QString totalInWords() const;
};

// Null when no received-cheque document has that serial.
std::optional<ReceivedChequePrint> loadReceivedChequePrint(const tr::Services& services,
                                                           const QString& serial);
// Company, user and name only: what the designer shows before the first save.
ReceivedChequePrint emptyReceivedChequePrint(const tr::Services& services);

// The print-design library joins the two tables on this field.
inline const QString kReceivedChequeLinkFields = QStringLiteral("SerialNo");
// The header row, and one line row per counterparty line carrying its cheque's values; the
// caller drops both.
tr::printing::PrintTables createReceivedChequePrintTables(const tr::Services& services,
                                                          const ReceivedChequePrint& document);

}  // namespace tr::cheques
