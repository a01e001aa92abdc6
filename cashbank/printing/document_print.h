#pragma once
// What a printed cash or bank document shows, read from the saved document, and the two "##"
// tables the print-design library reads (header row, lines). Nothing here draws: the built-in
// layouts live in cashbank/ui/printing; names, voucher and tables come from the shared printing/.
#include <QString>
#include <optional>
#include <vector>

#include "common/session/services.h"
#include "printing/print_layout.h"
#include "printing/print_names.h"
#include "printing/print_tables.h"
#include "printing/voucher_print.h"

namespace tr::cashbank {

// The cash documents print on the shared pieces under their own names.
using tr::printing::companyName;
using tr::printing::dropPrintTables;
using tr::printing::loadVoucherPrint;
using tr::printing::PrintLayout;
using tr::printing::printLayoutKey;
using tr::printing::printLayoutSelection;
using tr::printing::PrintTables;
using tr::printing::userFullName;
using tr::printing::VoucherPrint;
using tr::printing::VoucherPrintLine;
using tr::printing::voucherReportKey;

// One counter line of the document (the treasury-side line is the header).
struct DocumentPrintLine {
    int raj = 0;  // from 1, as the document grid numbers it
    QString koll, moein, tafsily, tafsily2, projectCod;
    QString des;
    double amount = 0;  // rials, never negative
    QString whatDoc2, codWhatDoc2, namWhatDoc2, manabehCod;
    // Name of the most detailed account level that has one.
    QString lastNam;
};

// The header row; the comment after each member is its column in the header table.
struct DocumentPrint {
    QString kind;           // the document kind (WhatDoc)
    QString kindName;       // NDocNam
    QString treasuryCode;   // CashCod: cash box, petty-cash holder or bank account number
    QString treasuryName;   // CashNam
    QString serial;         // SerialNoCash
    QString companyName;    // CompanyNam
    QString userName;       // UserNam: who saved the document (the login)
    QString userFullName;   // printed: that user as people call them
    qint64 voucherNo = 0;   // SanadNo
    QString reference;      // NumWhatDoc2: the reference number typed in the header (AtfCh)
    QString part;           // the bank forms' part number (Joz); printed, not a column
    QString date;           // SanadDate
    QString description;    // NaghdDes
    double amount = 0;      // Amount, absolute
    QString pettyCashName;  // TankhahNam (withdrawal only)
    QString fundsName;      // ManNam (withdrawal only)
    bool cancelled = false;
    std::vector<DocumentPrintLine> lines;

    double linesTotal() const;
};

// Null when the kind is not a cash or bank kind or no document has that serial.
std::optional<DocumentPrint> loadDocumentPrint(const tr::Services& services, const QString& kind,
                                               const QString& serial);
// Kind, company and user only: what the designer shows for a document not yet saved.
DocumentPrint emptyDocumentPrint(const tr::Services& services, const QString& kind);

// The print-design library joins the two tables on these fields.
inline const QString kPrintLinkFields = QStringLiteral("CashCod;SerialNoCash");
// Creates and fills both tables under names of this session; the caller drops them.
PrintTables createPrintTables(const tr::Services& services, const DocumentPrint& document);

}  // namespace tr::cashbank
