#pragma once
// What a printed cheque document shows, received ("دريافت چک", kind 71) or paid ("پرداخت چك", 81),
// read from the saved document (with a voucher, or an opening-cheque one without), and the two
// "##" tables the print-design library reads. Nothing here draws: the layouts live in cheques/ui.
#include <QString>
#include <optional>
#include <vector>

#include "common/session/services.h"
#include "printing/print_tables.h"

namespace tr::cheques {

// One cheque of the document, in the cheque grid's order.
struct ChequePrintCheque {
    int raj = 0;  // from 1
    QString number, series;
    QString bankName, branchName;  // the drawee bank; our own bank for a payment's own leaf
    QString accountNumber;         // the account the cheque is drawn on
    QString dueDate;
    QString payee;                // "در وجه"
    bool payableToOrder = false;  // "بحواله کرد"
    double amount = 0;
    // A payment's own leaf: the bank account it is written on; 0 for a received cheque, passed
    // on or not.
    qint64 bankAccountId = 0;
    bool ownLeaf() const { return bankAccountId > 0; }
};

// One counterparty line: the account a cheque (or part of one) is credited (or, on a payment,
// debited) to.
struct ChequePrintLine {
    int raj = 0;  // from 1
    QString chequeNumber, chequeSeries;
    QString koll, moein, tafsily, tafsily2, projectCod;
    QString accountName;  // the most detailed level's name
    QString des;
    double amount = 0;
};

struct ChequeDocumentPrint {
    QString kind;      // "71" or "81"
    QString kindName;  // its NDocNam
    QString serial;
    QString date;
    qint64 voucherNo = 0;  // none for an opening-cheque document
    bool opening = false;
    QString companyName;
    QString userName;      // who saved the document (the login)
    QString userFullName;  // printed
    std::vector<ChequePrintCheque> cheques;
    std::vector<ChequePrintLine> lines;

    bool payment() const;
    // The cheques' sum (the counterparty lines sum to it too) and that sum in words.
    double total() const;
    QString totalInWords() const;
};

// Null when no document of `kind` has that serial.
std::optional<ChequeDocumentPrint> loadChequeDocumentPrint(const tr::Services& services,
                                                           const QString& kind,
                                                           const QString& serial);
// Company, user and name only: what the designer shows before the first save.
ChequeDocumentPrint emptyChequeDocumentPrint(const tr::Services& services, const QString& kind);

// The print-design library joins a cheque print's two tables on this field.
inline const QString kChequePrintLinkFields = QStringLiteral("SerialNo");
// The header table with the document's row, the caller fills `linesColumns` (created empty).
tr::printing::PrintTables createChequeHeaderPrintTables(const tr::Services& services,
                                                        const ChequeDocumentPrint& document,
                                                        const QString& linesColumns);
// The header row, and one line row per counterparty line carrying its cheque's values; the
// caller drops both.
tr::printing::PrintTables createChequeDocumentPrintTables(const tr::Services& services,
                                                          const ChequeDocumentPrint& document);

}  // namespace tr::cheques
