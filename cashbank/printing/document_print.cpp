#include "cashbank/printing/document_print.h"

#include <QRegularExpression>
#include <QStringList>
#include <cmath>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "vouchers/document_kinds.h"

namespace tr::cashbank {

namespace {

using tr::db::Connection;
using tr::db::Query;
using tr::vouchers::TreasuryDocumentKind;
using tr::vouchers::TreasuryObject;

using tr::db::openQuery;

QString field(Query& query, const char* name) {
    return query.FieldByName(QLatin1String(name)).AsString().trimmed();
}

// Serials are digits; anything else cannot name a document (and would not convert in SQL).
std::optional<QString> validSerial(const QString& serial) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    const QString trimmed = serial.trimmed();
    if (!digits.match(trimmed).hasMatch()) return std::nullopt;
    return trimmed;
}

// The document's rows of N_NaghdTrans with their own voucher lines (not the cancellation's).
QString documentRows(Connection& c, const QString& kind, const QString& serial) {
    return QStringLiteral(
               " From N_NaghdTrans As N Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc "
               "= N.WhatDoc And A.DocToDate = '0' And A.Document = Cast(N.IDX As Varchar(20)))") +
           QStringLiteral("%1 Where N.WhatDoc = ") + c.text(kind) +
           QStringLiteral(" And LTrim(N.Serial) = ") + c.text(serial);
}

// Names of every level of the voucher line aliased A; the print shows the most detailed one.
const QString kAccountNames = QStringLiteral(
    ", K.NamHesab As KollNam, M.NamHesab As MoeinNam, T.NamHesab As TafsilyNam, "
    "T2.NamHesab As Tafsily2Nam, P.ProjectNam As ProjectNam");
const QString kAccountJoins = QStringLiteral(
    " Left Join Koll As K On (K.Koll = A.Koll) Left Join Moein As M On (M.Koll = A.Koll And "
    "M.Moein = A.Moein) Left Join Tafsily As T On (T.Tafsily = A.Tafsily) Left Join Tafsily2 As "
    "T2 On (T2.Tafsily2 = A.Tafsily2) Left Join M_Project As P On (P.ProjectCod = A.ProjectCod)");

// A level counts only when the line carries its code and the chart gives it a name.
QString lastName(Query& q) {
    const std::pair<const char*, const char*> levels[] = {{"ProjectCod", "ProjectNam"},
                                                          {"Tafsily2", "Tafsily2Nam"},
                                                          {"Tafsily", "TafsilyNam"},
                                                          {"Moein", "MoeinNam"},
                                                          {"Koll", "KollNam"}};
    for (const auto& [code, name] : levels) {
        const QString text = field(q, name);
        if (!field(q, code).isEmpty() && !text.isEmpty()) return text;
    }
    return {};
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
    Query q = openQuery(c, QStringLiteral("Select NDocNam From N_AsnadNaghd Where "
                                          "LTrim(RTrim(WhatDoc)) = ") +
                               c.text(kind.code));
    const QString name = q.IsEmpty() ? QString() : field(q, "NDocNam");
    return name.isEmpty() ? kind.title : name;
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
    h.reference = field(q, "AtfCh");
    h.voucherNo = q.FieldByName(QStringLiteral("SanadNo")).AsInteger();
    h.date = field(q, "SanadDate");
    h.description = field(q, "Des");
    h.amount = std::fabs(q.FieldByName(QStringLiteral("Bed")).AsFloat() +
                         q.FieldByName(QStringLiteral("Bes")).AsFloat());
    h.user = field(q, "User_Name");
    h.code = field(q, "CodWhatDoc");
    h.namWhatDoc2 = field(q, "NamWhatDoc2");
    h.part = field(q, "Joz");
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
        c, QStringLiteral("Select N.Raj, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, "
                          "A.Des, A.Bed, A.Bes, N.WhatDoc2, N.CodWhatDoc2, N.NamWhatDoc2, "
                          "N.ManabehCod") +
               kAccountNames + extraColumns +
               documentRows(c, kind.code, serial).arg(kAccountJoins + extraJoins) +
               QStringLiteral(" And N.Raj > 1 Order By N.Raj"));
    int lastRaj = -1;
    for (q.First(); !q.Eof(); q.Next()) {
        const int raj = int(q.FieldByName(QStringLiteral("Raj")).AsInteger());
        if (raj == lastRaj) continue;  // two holders on one account would repeat the line
        lastRaj = raj;
        DocumentPrintLine line;
        line.raj = raj - 1;
        line.koll = field(q, "Koll");
        line.moein = field(q, "Moein");
        line.tafsily = field(q, "Tafsily");
        line.tafsily2 = field(q, "Tafsily2");
        line.projectCod = field(q, "ProjectCod");
        line.des = field(q, "Des");
        line.amount = std::fabs(q.FieldByName(QStringLiteral("Bed")).AsFloat() +
                                q.FieldByName(QStringLiteral("Bes")).AsFloat());
        line.whatDoc2 = field(q, "WhatDoc2");
        line.codWhatDoc2 = field(q, "CodWhatDoc2");
        line.namWhatDoc2 = field(q, "NamWhatDoc2");
        line.manabehCod = field(q, "ManabehCod");
        line.lastNam = lastName(q);
        if (withdrawal) {
            if (document.fundsName.isEmpty()) document.fundsName = field(q, "ManabehNam");
            if (document.pettyCashName.isEmpty()) document.pettyCashName = field(q, "TankhahNam");
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

std::optional<SavedDocument> findSavedDocument(Connection& c, const QString& kind, const QString& serial) {
    const TreasuryDocumentKind* k = tr::vouchers::findTreasuryDocumentKind(kind);
    const std::optional<QString> s = validSerial(serial);
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

QString companyName(const tr::Services& services) {
    const tr::Global& g = *services.global;
    if (g.sCode.trimmed().isEmpty()) return {};
    Connection& c = services.connection();
    Query q =
        openQuery(c, QStringLiteral("Select CompanyNam From CORVASK_Sdc..SDC_Company Where "
                                    "LTrim(RTrim(sCode)) = ") +
                         c.text(g.sCode.trimmed()) + QStringLiteral(" And LTrim(RTrim(sYear)) = ") +
                         c.text(g.sYear.trimmed()));
    return q.IsEmpty() ? QString() : field(q, "CompanyNam");
}

QString userFullName(const tr::Services& services, const QString& login) {
    const QString name = login.trimmed();
    if (name.isEmpty()) return {};
    Connection& c = services.connection();
    Query q = openQuery(c, QStringLiteral("Select FullName From CORVASK_Sdc..SDC_User Where "
                                          "LTrim(RTrim(UserName)) = ") +
                               c.text(name));
    const QString full = q.IsEmpty() ? QString() : field(q, "FullName");
    return full.isEmpty() ? name : full;
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
        d.treasuryCode = field(object, "CashCod");
        if (!field(object, "CashNam").isEmpty()) d.treasuryName = field(object, "CashNam");
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

QString printLayoutSelection(Connection& connection, const QString& kind) {
    return QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = ") +
           connection.text(kind.trimmed()) + QStringLiteral(" ");
}

QString printLayoutKey(const QString& kind) {
    // The names of the print items, with the Persian kaf the menus use.
    static const std::pair<const char*, const char*> keys[] = {
        {"10", "دريافت صندوق_"}, {"20", "پرداخت صندوق_"},    {"40", "تنخواه گردان_"},
        {"50", "واريز بانک_"},   {"60", "حواله هاي بانکي_"}, {"90", "برداشت بانک_"}};
    for (const auto& [code, key] : keys)
        if (kind.trimmed() == QLatin1String(code)) return QString::fromUtf8(key);
    return {};
}

PrintTables createPrintTables(const tr::Services& services, const DocumentPrint& d) {
    tr::db::MyDatabase& db = *services.database;
    Connection& c = services.connection();
    const QString session = services.global->sessionText;
    PrintTables t{tr::db::globalTempTableName(session + QStringLiteral("NPrnHead")),
                  tr::db::globalTempTableName(session + QStringLiteral("NPrnLines"))};
    const bool withdrawal = d.kind == QLatin1String("90");
    const QString sep = QStringLiteral(", ");

    tr::db::execute(
        db, QStringLiteral("Create Table ") + t.header +
                QStringLiteral(" (NDocNam NVarchar(100), CashCod Varchar(20), CashNam "
                               "NVarchar(100), SerialNoCash Varchar(10), CompanyNam NVarchar(100), "
                               "UserNam NVarchar(50), SanadNo Int, NumWhatDoc2 Varchar(20), "
                               "SanadDate Varchar(10), NaghdDes NVarchar(200), Amount Float") +
                (withdrawal ? QStringLiteral(", TankhahNam NVarchar(100), ManNam NVarchar(100))")
                            : QStringLiteral(")")));
    tr::db::execute(
        db,
        QStringLiteral("Insert Into ") + t.header + QStringLiteral(" Values (") +
            c.text(d.kindName) + sep + c.text(d.treasuryCode) + sep + c.text(d.treasuryName) + sep +
            c.text(d.serial) + sep + c.text(d.companyName) + sep + c.text(d.userName) + sep +
            tr::db::sqlNumber(d.voucherNo) + sep + c.text(d.reference) + sep + c.text(d.date) +
            sep + c.text(d.description) + sep + tr::db::sqlNumber(d.amount) +
            (withdrawal ? sep + c.text(d.pettyCashName) + sep + c.text(d.fundsName) : QString()) +
            QStringLiteral(")"));

    tr::db::execute(
        db, QStringLiteral("Create Table ") + t.lines +
                QStringLiteral(" (CashCod Varchar(20), SerialNoCash Varchar(10), NaghdDes "
                               "NVarchar(200), Raj Int, Koll Varchar(3), Moein Varchar(4), Tafsily "
                               "Varchar(5), Tafsily2 Varchar(5), ProjectCod Varchar(10), Des "
                               "NVarchar(200), Bed Float, Bes Float, WhatDoc2 Varchar(10), "
                               "NamWhatDoc2 NVarchar(100), CodWhatDoc2 Varchar(50), ManabehCod "
                               "Varchar(5), LastNam NVarchar(100))"));
    // Lines keep the grid's amount column: the side opposite the treasury line.
    const auto* kind = tr::vouchers::findTreasuryDocumentKind(d.kind);
    const bool bed = kind && kind->gridSide() == tr::vouchers::Side::Bed;
    for (const DocumentPrintLine& l : d.lines) {
        tr::db::execute(db, QStringLiteral("Insert Into ") + t.lines + QStringLiteral(" Values (") +
                                c.text(d.treasuryCode) + sep + c.text(d.serial) + sep +
                                c.text(d.description) + sep + tr::db::sqlNumber(l.raj) + sep +
                                c.text(l.koll) + sep + c.text(l.moein) + sep + c.text(l.tafsily) +
                                sep + c.text(l.tafsily2) + sep + c.text(l.projectCod) + sep +
                                c.text(l.des) + sep + tr::db::sqlNumber(bed ? l.amount : 0.0) +
                                sep + tr::db::sqlNumber(bed ? 0.0 : l.amount) + sep +
                                c.text(l.whatDoc2) + sep + c.text(l.namWhatDoc2) + sep +
                                c.text(l.codWhatDoc2) + sep + c.text(l.manabehCod) + sep +
                                c.text(l.lastNam) + QStringLiteral(")"));
    }
    return t;
}

void dropPrintTables(const tr::Services& services, const PrintTables& tables) {
    for (const QString& name : {tables.header, tables.lines})
        if (!name.isEmpty()) tr::db::dropTempTable(*services.database, name.mid(2));
}

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
    const TreasuryDocumentKind* k = tr::vouchers::findTreasuryDocumentKind(kind);
    if (!k) return {};
    // "N_A_CASHGET_" -> "CASHGET"
    QString name = k->formKey.mid(4);
    if (name.endsWith(QLatin1Char('_'))) name.chop(1);
    return QStringLiteral("N_ASNAD_") + name + QLatin1Char('_') + name;
}

std::optional<VoucherPrint> loadVoucherPrint(const tr::Services& services, const QString& kind,
                                             const QString& serial) {
    Connection& c = services.connection();
    const std::optional<SavedDocument> saved = findSavedDocument(c, kind, serial);
    if (!saved) return std::nullopt;
    const TreasuryDocumentKind* k = saved->kind;
    const Header* h = &saved->header;

    VoucherPrint v;
    v.voucherNo = h->voucherNo;
    v.title = QStringLiteral("سند ") + kindName(c, *k) + QStringLiteral(" شماره ") +
              QString::number(h->voucherNo);
    v.reportKey = voucherReportKey(k->code);
    v.date = h->date;
    v.companyName = companyName(services);
    v.userName = h->user.isEmpty() ? services.global->userName : h->user;
    v.userFullName = userFullName(services, v.userName);
    Query q = openQuery(c, QStringLiteral("Select A.Raj, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, "
                                          "A.ProjectCod, A.Des, A.Bed, A.Bes") +
                               kAccountNames + QStringLiteral(" From Asnad As A") + kAccountJoins +
                               QStringLiteral(" Where A.TypeSys = 'N' And A.SanadNo = ") +
                               tr::db::sqlNumber(h->voucherNo) + QStringLiteral(" Order By A.Raj"));
    for (q.First(); !q.Eof(); q.Next()) {
        VoucherPrintLine line;
        line.raj = int(q.FieldByName(QStringLiteral("Raj")).AsInteger());
        line.koll = field(q, "Koll");
        line.moein = field(q, "Moein");
        line.tafsily = field(q, "Tafsily");
        line.tafsily2 = field(q, "Tafsily2");
        line.projectCod = field(q, "ProjectCod");
        line.lastNam = lastName(q);
        line.des = field(q, "Des");
        line.bed = q.FieldByName(QStringLiteral("Bed")).AsFloat();
        line.bes = q.FieldByName(QStringLiteral("Bes")).AsFloat();
        v.lines.push_back(line);
    }
    return v;
}

}  // namespace tr::cashbank
