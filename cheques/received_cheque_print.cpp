#include "cheques/received_cheque_print.h"

#include <cmath>

#include "cheques/received_cheque_document.h"
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

const QString& kKind = ReceivedChequeDocument::kKind;

// Where a saved document's amounts, accounts and cheque values stand: on its voucher lines, or
// for an opening-cheque document (which has no voucher) on its N_ChqFirst rows. Both are aliased
// A and joined to the document's N_NaghdTrans rows N.
struct Source {
    QString join;
    QString chequeRows;  // the rest are counterparty lines
    QString amount, number, series, due, date, voucherNo;
};

Source voucherSource() {
    return {QStringLiteral(" Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = '71' And "
                           "A.Document = Cast(N.IDX As Varchar(20)))"),
            QStringLiteral("A.Bed > 0"),
            QStringLiteral("A.Bed + A.Bes"),
            QStringLiteral("A.AtfCh"),
            QStringLiteral("A.DocToDate"),
            QStringLiteral("A.AtfDate"),
            QStringLiteral("A.SanadDate"),
            QStringLiteral("A.SanadNo")};
}

Source openingSource() {
    return {QStringLiteral(" Inner Join N_ChqFirst As A On (A.IDX = N.IDX And A.WhatDoc = '71' And "
                           "A.Serial = N.Serial)"),
            QStringLiteral("A.ChqOrTaraf = 1"),
            QStringLiteral("A.sValue"),
            QStringLiteral("A.ChqNo"),
            QStringLiteral("A.Joz"),
            QStringLiteral("A.SarResidDate"),
            QStringLiteral("N.SanadDate"),
            QStringLiteral("0")};
}

QString documentFilter(const QString& serial) {
    return QStringLiteral(" Where N.WhatDoc = '71' And N.Serial = ") +
           tr::db::sqlNumber(serial.toLongLong());
}

qint64 count(Connection& c, const QString& table, const QString& serial) {
    return tr::db::firstColumn(c, QStringLiteral("Select Count(*) From ") + table +
                                      QStringLiteral(" As N") + documentFilter(serial))
        .toLongLong();
}

double amount(Query& q) {
    return std::fabs(q.FieldByName(QStringLiteral("Amount")).AsFloat());
}

void readCheques(Connection& c, const Source& s, const QString& serial, ReceivedChequePrint& d) {
    Query q = openQuery(
        c, QStringLiteral("Select N.Raj, ") + s.number + QStringLiteral(" As ChqNo, ") + s.series +
               QStringLiteral(" As Joz, ") + s.due + QStringLiteral(" As DueDate, ") + s.amount +
               QStringLiteral(" As Amount, ") + s.date + QStringLiteral(" As DocDate, ") +
               s.voucherNo +
               QStringLiteral(" As VoucherNo, A.User_Name, N.Des6, N.Des1, B.BankNam From "
                              "N_NaghdTrans As N") +
               s.join + QStringLiteral(" Left Join N_Bank As B On (B.BankCod = N.WhatDoc2)") +
               documentFilter(serial) + QStringLiteral(" And ") + s.chequeRows +
               QStringLiteral(" Order By N.Raj"));
    if (!q.IsEmpty()) {
        d.date = textField(q, "DocDate");
        d.voucherNo = q.FieldByName(QStringLiteral("VoucherNo")).AsInteger();
        d.userName = textField(q, "User_Name");
    }
    for (q.First(); !q.Eof(); q.Next()) {
        ReceivedChequePrintCheque cheque;
        cheque.raj = int(d.cheques.size()) + 1;
        cheque.number = textField(q, "ChqNo");
        cheque.series = textField(q, "Joz");
        cheque.bankName = textField(q, "BankNam");
        cheque.branchName = textField(q, "Des1");
        cheque.dueDate = textField(q, "DueDate");
        cheque.payee = textField(q, "Des6");
        cheque.amount = amount(q);
        d.cheques.push_back(cheque);
    }
}

void readLines(Connection& c, const Source& s, const QString& serial, ReceivedChequePrint& d) {
    Query q = openQuery(
        c, QStringLiteral("Select N.Raj, ") + s.number + QStringLiteral(" As ChqNo, ") + s.series +
               QStringLiteral(" As Joz, ") + s.amount +
               QStringLiteral(" As Amount, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, "
                              "A.Des") +
               tr::printing::accountNameColumns() + QStringLiteral(" From N_NaghdTrans As N") +
               s.join + tr::printing::accountNameJoins() + documentFilter(serial) +
               QStringLiteral(" And Not (") + s.chequeRows + QStringLiteral(") Order By N.Raj"));
    for (q.First(); !q.Eof(); q.Next()) {
        ReceivedChequePrintLine line;
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

// The cheque a counterparty line credits (the document's checks tie every line to one).
const ReceivedChequePrintCheque* chequeOf(const ReceivedChequePrint& d,
                                          const ReceivedChequePrintLine& line) {
    for (const ReceivedChequePrintCheque& cheque : d.cheques)
        if (cheque.number == line.chequeNumber && cheque.series == line.chequeSeries)
            return &cheque;
    return nullptr;
}

ReceivedChequePrint named(const tr::Services& services, const QString& login) {
    ReceivedChequePrint d;
    d.kindName =
        tr::printing::printedKindName(services.connection(), *tr::printing::findPrintedKind(kKind));
    d.companyName = tr::printing::companyName(services);
    d.userName = login.isEmpty() ? services.global->userName : login;
    d.userFullName = tr::printing::userFullName(services, d.userName);
    return d;
}

}  // namespace

double ReceivedChequePrint::total() const {
    double sum = 0;
    for (const ReceivedChequePrintCheque& cheque : cheques) sum += cheque.amount;
    return sum;
}

QString ReceivedChequePrint::totalInWords() const {
    return tr::persian::amountInWords(total());
}

ReceivedChequePrint emptyReceivedChequePrint(const tr::Services& services) {
    return named(services, {});
}

std::optional<ReceivedChequePrint> loadReceivedChequePrint(const tr::Services& services,
                                                           const QString& serial) {
    const std::optional<QString> s = tr::printing::documentSerial(serial);
    if (!s) return std::nullopt;
    Connection& c = services.connection();
    if (count(c, QStringLiteral("N_NaghdTrans"), *s) == 0) return std::nullopt;

    const bool opening = count(c, QStringLiteral("N_ChqFirst"), *s) > 0;
    const Source source = opening ? openingSource() : voucherSource();
    ReceivedChequePrint read;
    readCheques(c, source, *s, read);
    readLines(c, source, *s, read);

    ReceivedChequePrint d = named(services, read.userName);
    d.serial = *s;
    d.opening = opening;
    d.date = read.date;
    d.voucherNo = read.voucherNo;
    d.cheques = std::move(read.cheques);
    d.lines = std::move(read.lines);
    return d;
}

PrintTables createReceivedChequePrintTables(const tr::Services& services,
                                            const ReceivedChequePrint& d) {
    Connection& c = services.connection();
    const PrintTables t = tr::printing::makePrintTables(
        services,
        QStringLiteral("NDocNam NVarchar(100), SerialNo Varchar(10), SanadNo Int, SanadDate "
                       "Varchar(10), ChqFirst Int, CompanyNam NVarchar(100), UserNam NVarchar(50), "
                       "Amount Float, AmountWords NVarchar(400)"),
        QStringLiteral("SerialNo Varchar(10), Raj Int, ChqRaj Int, ChqNo Varchar(20), Joz "
                       "Varchar(10), BankNam NVarchar(100), ShobehNam NVarchar(200), SarResidDate "
                       "Varchar(10), ChqGetter NVarchar(200), ChqValue Float, Koll Varchar(3), "
                       "Moein Varchar(4), Tafsily Varchar(5), Tafsily2 Varchar(5), ProjectCod "
                       "Varchar(10), LastNam NVarchar(100), Des NVarchar(200), Bes Float"));
    tr::printing::insertPrintRow(
        services, t.header,
        {c.text(d.kindName), c.text(d.serial), tr::db::sqlNumber(d.voucherNo), c.text(d.date),
         tr::db::sqlNumber(d.opening ? 1 : 0), c.text(d.companyName), c.text(d.userName),
         tr::db::sqlNumber(d.total()), c.text(d.totalInWords())});
    for (const ReceivedChequePrintLine& l : d.lines) {
        const ReceivedChequePrintCheque none;
        const ReceivedChequePrintCheque* cheque = chequeOf(d, l);
        if (!cheque) cheque = &none;
        tr::printing::insertPrintRow(
            services, t.lines,
            {c.text(d.serial), tr::db::sqlNumber(l.raj), tr::db::sqlNumber(cheque->raj),
             c.text(l.chequeNumber), c.text(l.chequeSeries), c.text(cheque->bankName),
             c.text(cheque->branchName), c.text(cheque->dueDate), c.text(cheque->payee),
             tr::db::sqlNumber(cheque->amount), c.text(l.koll), c.text(l.moein), c.text(l.tafsily),
             c.text(l.tafsily2), c.text(l.projectCod), c.text(l.accountName), c.text(l.des),
             tr::db::sqlNumber(l.amount)});
    }
    return t;
}

}  // namespace tr::cheques
