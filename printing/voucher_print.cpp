#include "printing/voucher_print.h"

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "printing/account_names.h"
#include "printing/print_names.h"
#include "printing/print_values.h"
#include "printing/printed_kinds.h"

namespace tr::printing {

namespace {

using tr::db::Connection;
using tr::db::openQuery;
using tr::db::Query;

const QString kLineColumns = QStringLiteral(
    "Select A.SanadNo, A.SanadDate, A.User_Name, A.Raj, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, "
    "A.ProjectCod, A.Des, A.Bed, A.Bes");

// A cash or bank document's voucher: every line under the number its treasury line (Raj 1, its
// own voucher's line, DocToDate '0') carries.
QString numberedVoucherLines(Connection& c, const PrintedKind& kind, const QString& serial) {
    Query head = openQuery(
        c, QStringLiteral("Select A.SanadNo From N_NaghdTrans As N Inner Join Asnad As A On "
                          "(A.TypeSys = 'N' And A.WhatDoc = N.WhatDoc And A.DocToDate = '0' And "
                          "A.Document = Cast(N.IDX As Varchar(20))) Where N.WhatDoc = ") +
               c.text(kind.code) + QStringLiteral(" And LTrim(N.Serial) = ") + c.text(serial) +
               QStringLiteral(" And N.Raj = 1"));
    if (head.IsEmpty()) return {};
    return kLineColumns + accountNameColumns() + QStringLiteral(" From Asnad As A") +
           accountNameJoins() + QStringLiteral(" Where A.TypeSys = 'N' And A.SanadNo = ") +
           tr::db::sqlNumber(head.FieldByName(QStringLiteral("SanadNo")).AsInteger()) +
           QStringLiteral(" Order By A.Raj");
}

// A cheque document's voucher: the lines of the document's own rows.
QString documentRowLines(Connection& c, const PrintedKind& kind, const QString& serial) {
    return kLineColumns + accountNameColumns() +
           QStringLiteral(
               " From N_NaghdTrans As N Inner Join Asnad As A On (A.TypeSys = 'N' And "
               "A.WhatDoc = N.WhatDoc And A.Document = Cast(N.IDX As Varchar(20)))") +
           accountNameJoins() + QStringLiteral(" Where N.WhatDoc = ") + c.text(kind.code) +
           QStringLiteral(" And N.Serial = ") + tr::db::sqlNumber(serial.toLongLong()) +
           QStringLiteral(" Order By A.Raj");
}

}  // namespace

double VoucherPrint::totalBed() const {
    double total = 0;
    for (const VoucherPrintLine& line : lines) total += line.bed;
    return total;
}

double VoucherPrint::totalBes() const {
    double total = 0;
    for (const VoucherPrintLine& line : lines) total += line.bes;
    return total;
}

QString voucherReportKey(const QString& kind) {
    const PrintedKind* k = findPrintedKind(kind);
    if (!k) return {};
    // "N_A_CASHGET_" -> "CASHGET"
    QString name = k->formKey.mid(4);
    if (name.endsWith(QLatin1Char('_'))) name.chop(1);
    return QStringLiteral("N_ASNAD_") + name + QLatin1Char('_') + name;
}

std::optional<VoucherPrint> loadVoucherPrint(const tr::Services& services, const QString& kind,
                                             const QString& serial) {
    const PrintedKind* k = findPrintedKind(kind);
    const std::optional<QString> s = documentSerial(serial);
    if (!k || !s) return std::nullopt;
    Connection& c = services.connection();
    const QString sql =
        k->voucherOfItsRows ? documentRowLines(c, *k, *s) : numberedVoucherLines(c, *k, *s);
    if (sql.isEmpty()) return std::nullopt;
    Query q = openQuery(c, sql);
    if (q.IsEmpty()) return std::nullopt;

    VoucherPrint v;
    v.voucherNo = q.FieldByName(QStringLiteral("SanadNo")).AsInteger();
    v.title = QStringLiteral("سند ") + printedKindName(c, *k) + QStringLiteral(" شماره ") +
              QString::number(v.voucherNo);
    v.reportKey = voucherReportKey(k->code);
    v.companyName = companyName(services);
    // Date and user as the first line (the treasury line, or the first cheque) carries them.
    v.date = textField(q, "SanadDate");
    v.userName = textField(q, "User_Name");
    if (v.userName.isEmpty()) v.userName = services.global->userName;
    v.userFullName = userFullName(services, v.userName);
    for (q.First(); !q.Eof(); q.Next()) {
        VoucherPrintLine line;
        line.raj = int(q.FieldByName(QStringLiteral("Raj")).AsInteger());
        line.koll = textField(q, "Koll");
        line.moein = textField(q, "Moein");
        line.tafsily = textField(q, "Tafsily");
        line.tafsily2 = textField(q, "Tafsily2");
        line.projectCod = textField(q, "ProjectCod");
        line.lastNam = accountLastName(q);
        line.des = textField(q, "Des");
        line.bed = q.FieldByName(QStringLiteral("Bed")).AsFloat();
        line.bes = q.FieldByName(QStringLiteral("Bes")).AsFloat();
        v.lines.push_back(line);
    }
    return v;
}

}  // namespace tr::printing
