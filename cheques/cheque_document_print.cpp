#include "cheques/cheque_document_print.h"

#include <cmath>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "common/persian/amount_words.h"
#include "printing/account_names.h"
#include "printing/print_names.h"
#include "printing/print_values.h"
#include "printing/printed_kinds.h"

namespace tr::cheques {

namespace {

using tr::db::Connection;
using tr::db::openQuery;
using tr::db::Query;
using tr::printing::PrintTables;
using tr::printing::textField;

const QString kPaymentKind = QStringLiteral("81");

// Where a saved document's amounts, accounts and cheque values stand: on its voucher lines, or
// for an opening-cheque document (which has no voucher) on its N_ChqFirst rows. Both are aliased
// A and joined to the document's N_NaghdTrans rows N.
struct Source {
    QString join;
    QString chequeRows;  // the rest are counterparty lines
    QString amount, number, series, due, date, voucherNo;
};

// A receipt debits its cheques, a payment credits them.
Source voucherSource(Connection& c, const QString& kind) {
    return {QStringLiteral(" Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = ") +
                c.text(kind) + QStringLiteral(" And A.Document = Cast(N.IDX As Varchar(20)))"),
            kind == kPaymentKind ? QStringLiteral("A.Bes > 0") : QStringLiteral("A.Bed > 0"),
            QStringLiteral("A.Bed + A.Bes"),
            QStringLiteral("A.AtfCh"),
            QStringLiteral("A.DocToDate"),
            QStringLiteral("A.AtfDate"),
            QStringLiteral("A.SanadDate"),
            QStringLiteral("A.SanadNo")};
}

Source openingSource(Connection& c, const QString& kind) {
    return {QStringLiteral(" Inner Join N_ChqFirst As A On (A.IDX = N.IDX And A.WhatDoc = ") +
                c.text(kind) + QStringLiteral(" And A.Serial = N.Serial)"),
            QStringLiteral("A.ChqOrTaraf = 1"),
            QStringLiteral("A.sValue"),
            QStringLiteral("A.ChqNo"),
            QStringLiteral("A.Joz"),
            QStringLiteral("A.SarResidDate"),
            QStringLiteral("N.SanadDate"),
            QStringLiteral("0")};
}

QString documentFilter(Connection& c, const QString& kind, const QString& serial) {
    return QStringLiteral(" Where N.WhatDoc = ") + c.text(kind) +
           QStringLiteral(" And N.Serial = ") + tr::db::sqlNumber(serial.toLongLong());
}

qint64 count(Connection& c, const QString& table, const QString& kind, const QString& serial) {
    return tr::db::firstColumn(c, QStringLiteral("Select Count(*) From ") + table +
                                      QStringLiteral(" As N") + documentFilter(c, kind, serial))
        .toLongLong();
}

double amount(Query& q) {
    return std::fabs(q.FieldByName(QStringLiteral("Amount")).AsFloat());
}

void readCheques(Connection& c, const Source& s, const QString& serial, ChequeDocumentPrint& d) {
    Query q = openQuery(
        c, QStringLiteral("Select N.Raj, ") + s.number + QStringLiteral(" As ChqNo, ") + s.series +
               QStringLiteral(" As Joz, ") + s.due + QStringLiteral(" As DueDate, ") + s.amount +
               QStringLiteral(" As Amount, ") + s.date + QStringLiteral(" As DocDate, ") +
               s.voucherNo +
               QStringLiteral(" As VoucherNo, A.User_Name, N.Des1, N.Des2, N.Des3, N.Des5, N.Des6, "
                              "B.BankNam From N_NaghdTrans As N") +
               s.join + QStringLiteral(" Left Join N_Bank As B On (B.BankCod = N.WhatDoc2)") +
               documentFilter(c, d.kind, serial) + QStringLiteral(" And ") + s.chequeRows +
               QStringLiteral(" Order By N.Raj"));
    if (!q.IsEmpty()) {
        d.date = textField(q, "DocDate");
        d.voucherNo = q.FieldByName(QStringLiteral("VoucherNo")).AsInteger();
        d.userName = textField(q, "User_Name");
    }
    for (q.First(); !q.Eof(); q.Next()) {
        ChequePrintCheque cheque;
        cheque.raj = int(d.cheques.size()) + 1;
        cheque.number = textField(q, "ChqNo");
        cheque.series = textField(q, "Joz");
        cheque.bankName = textField(q, "BankNam");
        cheque.branchName = textField(q, "Des1");
        cheque.accountNumber = textField(q, "Des2");
        cheque.payableToOrder = !textField(q, "Des3").isEmpty();
        cheque.dueDate = textField(q, "DueDate");
        cheque.payee = textField(q, "Des6");
        cheque.amount = amount(q);
        // Des5 names a payment's own leaf's bank account; a receipt keeps the drawer's address
        // there.
        if (d.payment()) cheque.bankAccountId = textField(q, "Des5").toLongLong();
        d.cheques.push_back(cheque);
    }
}

void readLines(Connection& c, const Source& s, const QString& serial, ChequeDocumentPrint& d) {
    Query q = openQuery(
        c, QStringLiteral("Select N.Raj, ") + s.number + QStringLiteral(" As ChqNo, ") + s.series +
               QStringLiteral(" As Joz, ") + s.amount +
               QStringLiteral(" As Amount, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, "
                              "A.Des") +
               tr::printing::accountNameColumns() + QStringLiteral(" From N_NaghdTrans As N") +
               s.join + tr::printing::accountNameJoins() + documentFilter(c, d.kind, serial) +
               QStringLiteral(" And Not (") + s.chequeRows + QStringLiteral(") Order By N.Raj"));
    for (q.First(); !q.Eof(); q.Next()) {
        ChequePrintLine line;
        line.raj = int(d.lines.size()) + 1;
        line.chequeNumber = textField(q, "ChqNo");
        line.chequeSeries = textField(q, "Joz");
        line.koll = textField(q, "Koll");
        line.moein = textField(q, "Moein");
        line.tafsily = textField(q, "Tafsily");
        line.tafsily2 = textField(q, "Tafsily2");
        line.projectCod = textField(q, "ProjectCod");
        line.accountName = tr::printing::accountLastName(q);
        line.des = textField(q, "Des");
        line.amount = amount(q);
        d.lines.push_back(line);
    }
}

// The cheque a counterparty line belongs to (the document's checks tie every line to one).
const ChequePrintCheque* chequeOf(const ChequeDocumentPrint& d, const ChequePrintLine& line) {
    for (const ChequePrintCheque& cheque : d.cheques)
        if (cheque.number == line.chequeNumber && cheque.series == line.chequeSeries)
            return &cheque;
    return nullptr;
}

ChequeDocumentPrint named(const tr::Services& services, const QString& kind, const QString& login) {
    ChequeDocumentPrint d;
    d.kind = kind;
    if (const tr::printing::PrintedKind* printed = tr::printing::findPrintedKind(kind))
        d.kindName = tr::printing::printedKindName(services.connection(), *printed);
    d.companyName = tr::printing::companyName(services);
    d.userName = login.isEmpty() ? services.global->userName : login;
    d.userFullName = tr::printing::userFullName(services, d.userName);
    return d;
}

// A payment's row kind as its grid names it; a receipt's rows have none.
QString rowKind(const ChequeDocumentPrint& d, const ChequePrintCheque& cheque) {
    if (!d.payment()) return {};
    return cheque.ownLeaf() ? QStringLiteral("صدور چك") : QStringLiteral("خرج چك");
}

}  // namespace

bool ChequeDocumentPrint::payment() const {
    return kind == kPaymentKind;
}

double ChequeDocumentPrint::total() const {
    double sum = 0;
    for (const ChequePrintCheque& cheque : cheques) sum += cheque.amount;
    return sum;
}

QString ChequeDocumentPrint::totalInWords() const {
    return tr::persian::amountInWords(total());
}

ChequeDocumentPrint emptyChequeDocumentPrint(const tr::Services& services, const QString& kind) {
    return named(services, kind, {});
}

std::optional<ChequeDocumentPrint> loadChequeDocumentPrint(const tr::Services& services,
                                                           const QString& kind,
                                                           const QString& serial) {
    const std::optional<QString> s = tr::printing::documentSerial(serial);
    if (!s) return std::nullopt;
    Connection& c = services.connection();
    if (count(c, QStringLiteral("N_NaghdTrans"), kind, *s) == 0) return std::nullopt;

    const bool opening = count(c, QStringLiteral("N_ChqFirst"), kind, *s) > 0;
    const Source source = opening ? openingSource(c, kind) : voucherSource(c, kind);
    ChequeDocumentPrint read;
    read.kind = kind;
    readCheques(c, source, *s, read);
    readLines(c, source, *s, read);

    ChequeDocumentPrint d = named(services, kind, read.userName);
    d.serial = *s;
    d.opening = opening;
    d.date = read.date;
    d.voucherNo = read.voucherNo;
    d.cheques = std::move(read.cheques);
    d.lines = std::move(read.lines);
    return d;
}

PrintTables createChequeHeaderPrintTables(const tr::Services& services,
                                          const ChequeDocumentPrint& d,
                                          const QString& linesColumns) {
    Connection& c = services.connection();
    const PrintTables t = tr::printing::makePrintTables(
        services,
        QStringLiteral("NDocNam NVarchar(100), SerialNo Varchar(10), SanadNo Int, SanadDate "
                       "Varchar(10), ChqFirst Int, CompanyNam NVarchar(100), UserNam NVarchar(50), "
                       "Amount Float, AmountWords NVarchar(400)"),
        linesColumns);
    tr::printing::insertPrintRow(
        services, t.header,
        {c.text(d.kindName), c.text(d.serial), tr::db::sqlNumber(d.voucherNo), c.text(d.date),
         tr::db::sqlNumber(d.opening ? 1 : 0), c.text(d.companyName), c.text(d.userName),
         tr::db::sqlNumber(d.total()), c.text(d.totalInWords())});
    return t;
}

PrintTables createChequeDocumentPrintTables(const tr::Services& services,
                                            const ChequeDocumentPrint& d) {
    Connection& c = services.connection();
    const PrintTables t = createChequeHeaderPrintTables(
        services, d,
        QStringLiteral("SerialNo Varchar(10), Raj Int, ChqRaj Int, ChqNo Varchar(20), Joz "
                       "Varchar(10), BankNam NVarchar(100), ShobehNam NVarchar(200), SarResidDate "
                       "Varchar(10), ChqGetter NVarchar(200), ChqValue Float, Koll Varchar(3), "
                       "Moein Varchar(4), Tafsily Varchar(5), Tafsily2 Varchar(5), ProjectCod "
                       "Varchar(10), LastNam NVarchar(100), Des NVarchar(200), Bes Float, "
                       "ChqStateNam NVarchar(20), AcountCod NVarchar(200)"));
    for (const ChequePrintLine& l : d.lines) {
        const ChequePrintCheque none;
        const ChequePrintCheque* cheque = chequeOf(d, l);
        if (!cheque) cheque = &none;
        tr::printing::insertPrintRow(services, t.lines,
                                     {c.text(d.serial),
                                      tr::db::sqlNumber(l.raj),
                                      tr::db::sqlNumber(cheque->raj),
                                      c.text(l.chequeNumber),
                                      c.text(l.chequeSeries),
                                      c.text(cheque->bankName),
                                      c.text(cheque->branchName),
                                      c.text(cheque->dueDate),
                                      c.text(cheque->payee),
                                      tr::db::sqlNumber(cheque->amount),
                                      c.text(l.koll),
                                      c.text(l.moein),
                                      c.text(l.tafsily),
                                      c.text(l.tafsily2),
                                      c.text(l.projectCod),
                                      c.text(l.accountName),
                                      c.text(l.des),
                                      tr::db::sqlNumber(l.amount),
                                      c.text(rowKind(d, *cheque)),
                                      c.text(cheque->accountNumber)});
    }
    return t;
}

}  // namespace tr::cheques
