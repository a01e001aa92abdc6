#include "cashbank/printing/document_print.h"

#include <QStringList>
#include <cmath>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "printing/account_names.h"
#include "printing/print_values.h"
#include "printing/printed_kinds.h"
#include "vouchers/document_kinds.h"

namespace tr::cashbank {

namespace {

using tr::db::Connection;
using tr::db::Query;
using tr::vouchers::TreasuryDocumentKind;
using tr::vouchers::TreasuryObject;

using tr::db::openQuery;
using tr::printing::accountLastName;
using tr::printing::textField;

// The document's rows of N_NaghdTrans with their own voucher lines (not the cancellation's).
QString documentRows(Connection& c, const QString& kind, const QString& serial) {
    return QStringLiteral(
               " From N_NaghdTrans As N Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc "
               "= N.WhatDoc And A.DocToDate = '0' And A.Document = Cast(N.IDX As Varchar(20)))") +
           QStringLiteral("%1 Where N.WhatDoc = ") + c.text(kind) +
           QStringLiteral(" And LTrim(N.Serial) = ") + c.text(serial);
}

QString treasuryLookup(Connection& c, TreasuryObject object, const QString& code) {
    switch (object) {
        case TreasuryObject::CashBox:
            return QStringLiteral(
                       "Select CashCod, CashNam From N_Cash Where LTrim(RTrim(CashCod)) "
                       "= ") +
                   c.text(code);
        case TreasuryObject::PettyCashHolder:
            return QStringLiteral(
                       "Select Code As CashCod, IsNull([Name], '') + ' ' + "
                       "IsNull(Family, '') As CashNam From Person Where "
                       "LTrim(RTrim(Code)) = ") +
                   c.text(code);
        case TreasuryObject::BankAccount:
            break;
    }
    // The document keeps the account's identity; people know it by its number.
    return QStringLiteral(
               "Select H.AcountCod As CashCod, IsNull(B.BankNam, '') + '-' + IsNull(S.ShobehNam, "
               "'') As CashNam From N_BankHesab As H Left Join N_Bank As B On (B.BankCod = "
               "H.BankCod) Left Join N_Shoab As S On (S.BankCod = H.BankCod And S.ShobehCod = "
               "H.ShobehCod) Where Cast(H.AcountID As Varchar(20)) = ") +
           c.text(code);
}

QString kindName(Connection& c, const TreasuryDocumentKind& kind) {
    const tr::printing::PrintedKind* printed = tr::printing::findPrintedKind(kind.code);
    return printed ? tr::printing::printedKindName(c, *printed) : kind.title;
}

struct Header {
    QString reference, date, description, user, code, namWhatDoc2, part;
    qint64 voucherNo = 0;
    double amount = 0;
};

std::optional<Header> readHeader(Connection& c, const QString& kind, const QString& serial) {
    // Line 1 carries the treasury side whichever ledger column it stands in.
    Query q = openQuery(
        c, QStringLiteral("Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, A.Bed, "
                          "A.Bes, A.User_Name, N.CodWhatDoc, N.NamWhatDoc2, N.Joz") +
               documentRows(c, kind, serial).arg(QString()) + QStringLiteral(" And N.Raj = 1"));
    if (q.IsEmpty()) return std::nullopt;
    Header h;
    h.reference = textField(q, "AtfCh");
    h.voucherNo = q.FieldByName(QStringLiteral("SanadNo")).AsInteger();
    h.date = textField(q, "SanadDate");
    h.description = textField(q, "Des");
    h.amount = std::fabs(q.FieldByName(QStringLiteral("Bed")).AsFloat() +
                         q.FieldByName(QStringLiteral("Bes")).AsFloat());
    h.user = textField(q, "User_Name");
    h.code = textField(q, "CodWhatDoc");
    h.namWhatDoc2 = textField(q, "NamWhatDoc2");
    h.part = textField(q, "Joz");
    return h;
}

bool isCancelled(Connection& c, const QString& kind, const QString& serial) {
    Query q = openQuery(
        c, QStringLiteral("Select Count(*) As Cnt From Asnad Where TypeSys = 'N' And WhatDoc = ") +
               c.text(kind) +
               QStringLiteral(" And DocToDate = '1' And Document In (Select Cast(IDX As "
                              "Varchar(20)) From N_NaghdTrans Where WhatDoc = ") +
               c.text(kind) + QStringLiteral(" And LTrim(Serial) = ") + c.text(serial) +
               QStringLiteral(")"));
    return q.FieldByName(QStringLiteral("Cnt")).AsInteger() > 0;
}

void readLines(Connection& c, const TreasuryDocumentKind& kind, const QString& serial,
               DocumentPrint& document) {
    const bool withdrawal = kind.code == QLatin1String("90");
    // A withdrawal that funds a petty-cash holder posts to the holder's account.
    const QString extraColumns = withdrawal ? QStringLiteral(
                                                  ", MB.ManabehNam, IsNull(PS.[Name], '') + ' ' + "
                                                  "IsNull(PS.Family, '') As TankhahNam")
                                            : QString();
    const QString extraJoins =
        withdrawal ? QStringLiteral(
                         " Left Join N_Manabeh As MB On (MB.ManabehCod = N.ManabehCod) Left Join "
                         "N_Tankhah As TK On (TK.Koll = A.Koll And TK.Moein = A.Moein And "
                         "TK.Tafsily = A.Tafsily) Left Join Person As PS On (PS.Code = "
                         "TK.PersonCod)")
                   : QString();
    Query q = openQuery(
        c,
        QStringLiteral("Select N.Raj, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, "
                       "A.Des, A.Bed, A.Bes, N.WhatDoc2, N.CodWhatDoc2, N.NamWhatDoc2, "
                       "N.ManabehCod") +
            tr::printing::accountNameColumns() + extraColumns +
            documentRows(c, kind.code, serial).arg(tr::printing::accountNameJoins() + extraJoins) +
            QStringLiteral(" And N.Raj > 1 Order By N.Raj"));
    int lastRaj = -1;
    for (q.First(); !q.Eof(); q.Next()) {
        const int raj = int(q.FieldByName(QStringLiteral("Raj")).AsInteger());
        if (raj == lastRaj) continue;  // two holders on one account would repeat the line
        lastRaj = raj;
        DocumentPrintLine line;
        line.raj = raj - 1;
        line.koll = textField(q, "Koll");
        line.moein = textField(q, "Moein");
        line.tafsily = textField(q, "Tafsily");
        line.tafsily2 = textField(q, "Tafsily2");
        line.projectCod = textField(q, "ProjectCod");
        line.des = textField(q, "Des");
        line.amount = std::fabs(q.FieldByName(QStringLiteral("Bed")).AsFloat() +
                                q.FieldByName(QStringLiteral("Bes")).AsFloat());
        line.whatDoc2 = textField(q, "WhatDoc2");
        line.codWhatDoc2 = textField(q, "CodWhatDoc2");
        line.namWhatDoc2 = textField(q, "NamWhatDoc2");
        line.manabehCod = textField(q, "ManabehCod");
        line.lastNam = accountLastName(q);
        if (withdrawal) {
            if (document.fundsName.isEmpty()) document.fundsName = textField(q, "ManabehNam");
            if (document.pettyCashName.isEmpty())
                document.pettyCashName = textField(q, "TankhahNam");
        }
        document.lines.push_back(line);
    }
}

}  // namespace

namespace {

// A saved document of a known kind: its kind, trimmed serial and treasury-side header line.
struct SavedDocument {
    const TreasuryDocumentKind* kind;
    QString serial;
    Header header;
};

std::optional<SavedDocument> findSavedDocument(Connection& c, const QString& kind,
                                               const QString& serial) {
    const TreasuryDocumentKind* k = tr::vouchers::findTreasuryDocumentKind(kind);
    const std::optional<QString> s = tr::printing::documentSerial(serial);
    if (!k || !s) return std::nullopt;
    std::optional<Header> h = readHeader(c, k->code, *s);
    if (!h) return std::nullopt;
    return SavedDocument{k, *s, std::move(*h)};
}

}  // namespace

double DocumentPrint::linesTotal() const {
    double total = 0;
    for (const DocumentPrintLine& line : lines) total += line.amount;
    return total;
}

std::optional<DocumentPrint> loadDocumentPrint(const tr::Services& services, const QString& kind,
                                               const QString& serial) {
    Connection& c = services.connection();
    const std::optional<SavedDocument> saved = findSavedDocument(c, kind, serial);
    if (!saved) return std::nullopt;
    const TreasuryDocumentKind* k = saved->kind;
    const QString* s = &saved->serial;
    const Header* h = &saved->header;

    DocumentPrint d;
    d.kind = k->code;
    d.kindName = kindName(c, *k);
    d.serial = *s;
    d.companyName = companyName(services);
    d.userName = h->user.isEmpty() ? services.global->userName : h->user;
    d.userFullName = userFullName(services, d.userName);
    d.voucherNo = h->voucherNo;
    d.reference = h->reference;
    d.part = h->part;
    d.date = h->date;
    d.description = h->description;
    d.amount = h->amount;
    d.treasuryCode = h->code;
    // The document row keeps the name the object had when saved; the master may have gone since.
    d.treasuryName = h->namWhatDoc2;
    Query object = openQuery(c, treasuryLookup(c, k->treasuryObject, h->code));
    if (!object.IsEmpty()) {
        d.treasuryCode = textField(object, "CashCod");
        if (!textField(object, "CashNam").isEmpty()) d.treasuryName = textField(object, "CashNam");
    }
    d.cancelled = isCancelled(c, k->code, *s);
    readLines(c, *k, *s, d);
    return d;
}

DocumentPrint emptyDocumentPrint(const tr::Services& services, const QString& kind) {
    DocumentPrint d;
    d.kind = kind.trimmed();
    if (const TreasuryDocumentKind* k = tr::vouchers::findTreasuryDocumentKind(kind))
        d.kindName = kindName(services.connection(), *k);
    d.companyName = companyName(services);
    d.userName = services.global->userName;
    d.userFullName = userFullName(services, d.userName);
    return d;
}

PrintTables createPrintTables(const tr::Services& services, const DocumentPrint& d) {
    Connection& c = services.connection();
    const bool withdrawal = d.kind == QLatin1String("90");
    const PrintTables t = tr::printing::makePrintTables(
        services,
        QStringLiteral("NDocNam NVarchar(100), CashCod Varchar(20), CashNam NVarchar(100), "
                       "SerialNoCash Varchar(10), CompanyNam NVarchar(100), UserNam NVarchar(50), "
                       "SanadNo Int, NumWhatDoc2 Varchar(20), SanadDate Varchar(10), NaghdDes "
                       "NVarchar(200), Amount Float") +
            (withdrawal ? QStringLiteral(", TankhahNam NVarchar(100), ManNam NVarchar(100)")
                        : QString()),
        QStringLiteral("CashCod Varchar(20), SerialNoCash Varchar(10), NaghdDes NVarchar(200), Raj "
                       "Int, Koll Varchar(3), Moein Varchar(4), Tafsily Varchar(5), Tafsily2 "
                       "Varchar(5), ProjectCod Varchar(10), Des NVarchar(200), Bed Float, Bes "
                       "Float, WhatDoc2 Varchar(10), NamWhatDoc2 NVarchar(100), CodWhatDoc2 "
                       "Varchar(50), ManabehCod Varchar(5), LastNam NVarchar(100)"));

    QStringList head = {c.text(d.kindName),
                        c.text(d.treasuryCode),
                        c.text(d.treasuryName),
                        c.text(d.serial),
                        c.text(d.companyName),
                        c.text(d.userName),
                        tr::db::sqlNumber(d.voucherNo),
                        c.text(d.reference),
                        c.text(d.date),
                        c.text(d.description),
                        tr::db::sqlNumber(d.amount)};
    if (withdrawal) head << c.text(d.pettyCashName) << c.text(d.fundsName);
    tr::printing::insertPrintRow(services, t.header, head);

    // Lines keep the grid's amount column: the side opposite the treasury line.
    const auto* kind = tr::vouchers::findTreasuryDocumentKind(d.kind);
    const bool bed = kind && kind->gridSide() == tr::vouchers::Side::Bed;
    for (const DocumentPrintLine& l : d.lines) {
        tr::printing::insertPrintRow(
            services, t.lines,
            {c.text(d.treasuryCode), c.text(d.serial), c.text(d.description),
             tr::db::sqlNumber(l.raj), c.text(l.koll), c.text(l.moein), c.text(l.tafsily),
             c.text(l.tafsily2), c.text(l.projectCod), c.text(l.des),
             tr::db::sqlNumber(bed ? l.amount : 0.0), tr::db::sqlNumber(bed ? 0.0 : l.amount),
             c.text(l.whatDoc2), c.text(l.namWhatDoc2), c.text(l.codWhatDoc2), c.text(l.manabehCod),
             c.text(l.lastNam)});
    }
    return t;
}

}  // namespace tr::cashbank
