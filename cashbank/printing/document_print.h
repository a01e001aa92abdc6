#pragma once
// What a printed cash or bank document and its voucher show, read from the saved document, and
// the two "##" tables the print-design library reads (header row, lines). Nothing here draws:
// the built-in layouts and the library hand-off live in cashbank/ui/printing.
#include <QString>
#include <optional>
#include <vector>

#include "common/session/services.h"

namespace tr::cashbank {

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

// The company of the session's company year, as the suite names it ("" when unknown).
QString companyName(const tr::Services& services);
// A user as people call them: the suite's full name for `login`, else the login itself.
QString userFullName(const tr::Services& services, const QString& login);

// Null when the kind is not a cash or bank kind or no document has that serial.
std::optional<DocumentPrint> loadDocumentPrint(const tr::Services& services, const QString& kind,
                                               const QString& serial);
// Kind, company and user only: what the designer shows for a document not yet saved.
DocumentPrint emptyDocumentPrint(const tr::Services& services, const QString& kind);

// The print-design library joins the two tables on these fields.
inline const QString kPrintLinkFields = QStringLiteral("CashCod;SerialNoCash");
// The stored-layout filter for a kind; the layout table keeps the subsystem letter in WhatDoc and
// the kind in TypeSys, the reverse of Asnad.
QString printLayoutSelection(tr::db::Connection& connection, const QString& kind);
// The name the kind's layouts are stored under ("برداشت بانک_" for a withdrawal).
QString printLayoutKey(const QString& kind);

struct PrintTables {
    QString header;  // "##..." with one row
    QString lines;
};
// Creates and fills both tables under names of this session; the caller drops them.
PrintTables createPrintTables(const tr::Services& services, const DocumentPrint& document);
void dropPrintTables(const tr::Services& services, const PrintTables& tables);

struct VoucherPrintLine {
    int raj = 0;
    QString koll, moein, tafsily, tafsily2, projectCod;
    QString lastNam;
    QString des;
    double bed = 0, bes = 0;
};

// The document's own voucher (not its cancellation voucher), every line in Raj order.
struct VoucherPrint {
    QString title;      // "سند " + kind name + " شماره " + voucher number
    QString reportKey;  // "N_ASNAD_CASHGET_CASHGET" for a receipt
    qint64 voucherNo = 0;
    QString date;
    QString companyName;
    QString userName;
    QString userFullName;
    std::vector<VoucherPrintLine> lines;

    double totalBed() const;
    double totalBes() const;
};

std::optional<VoucherPrint> loadVoucherPrint(const tr::Services& services, const QString& kind,
                                             const QString& serial);
QString voucherReportKey(const QString& kind);

}  // namespace tr::cashbank
