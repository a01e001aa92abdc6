#include "db/procedures/cash_bank_documents.h"

#include <QStringList>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "db/procedures/posting.h"

namespace tr::procedures {

namespace {

using tr::db::Connection;
using tr::db::DatabaseError;
using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::Query;
using tr::db::sqlNumber;

// A cash box and a bank account post to their own account; a bank account posts to its J set (the
// account itself), the set that received cheques match too; the A and H sets belong to cheques.
const TreasuryObject kCashBox{
    "صندوق",
    "Select CashNam As Nam, ArzCod, Koll, Moein, Tafsily, Tafsily2, ProjectCod From N_Cash "
    "Where LTrim(RTrim(CashCod)) = %1"};
const TreasuryObject kPettyCashHolder{
    "تنخواه گردان",
    "Select IsNull(P.[Name], '') + ' ' + IsNull(P.Family, '') As Nam, '' As ArzCod, T.Koll, "
    "T.Moein, T.Tafsily, T.Tafsily2, T.ProjectCod From N_Tankhah As T Inner Join Person As P On "
    "(P.Code = T.PersonCod) Where LTrim(RTrim(T.PersonCod)) = %1"};
const TreasuryObject kBankAccount{
    "حساب بانکي",
    "Select IsNull(B.BankNam, '') + '-' + IsNull(S.ShobehNam, '') As Nam, H.ArzCod, "
    "H.JKoll As Koll, H.JMoein As Moein, H.JTafsily As Tafsily, H.JTafsily2 As Tafsily2, "
    "H.JProjectCod As ProjectCod From N_BankHesab As H Left Join N_Bank As B On "
    "(B.BankCod = H.BankCod) Left Join N_Shoab As S On (S.BankCod = H.BankCod And "
    "S.ShobehCod = H.ShobehCod) Where Cast(H.AcountID As Varchar(20)) = %1"};

const std::vector<CashBankKind> kKinds = {
    {"10", "دريافت صندوق", "sp_N_Asnad_Trans_CashGet", LedgerSide::Bed, &kCashBox, true},
    {"20", "پرداخت صندوق", "sp_N_Asnad_Trans_CashPay", LedgerSide::Bes, &kCashBox, true},
    {"40", "تنخواه گردان", "sp_N_Asnad_Trans_Tankhah", LedgerSide::Bes, &kPettyCashHolder, false},
    {"50", "واريز به بانك", "sp_N_Asnad_Trans_VarizBank", LedgerSide::Bed, &kBankAccount, true},
    {"60", "حواله بانكي", "sp_N_Asnad_Trans_HavalehBank", LedgerSide::Bed, &kBankAccount, true},
    {"90", "برداشت بانك", "sp_N_Asnad_Trans_BardashtBank", LedgerSide::Bes, &kBankAccount, true},
};

// Positions after the action word (the _Arzi twin has the rate and currency code before it).
enum Position {
    kTable,
    kSerial,
    kCode,
    kReference,
    kDate,
    kDescription,
    kUser,
    kState,
    kComputer,
    kCount
};
// 'ABTAL' and 'RET_EBTAL' carry the cancellation date and the user one place further on.
constexpr int kCancelDate = 5;
constexpr int kCancelUser = 7;
// WhatDoc2 of a counter line on a plain chart-of-accounts account.
constexpr const char* kAccountLine = "00";

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

struct Document {
    QList<qint64> lines;  // N_NaghdTrans.IDX of every row of the document
    bool exists() const { return !lines.isEmpty(); }
};

class DocumentCall {
  public:
    DocumentCall(const CashBankKind& kind, bool foreign, Connection& c, const Args& args)
        : kind_(kind), foreign_(foreign), c_(c) {
        const int first = foreign ? 2 : 0;
        const int expected = first + 1 + kCount;
        if (static_cast<int>(args.size()) != expected) {
            throw DatabaseError(
                QStringLiteral("%1%2 expects %3 arguments, got %4")
                    .arg(text(kind.procedure), foreign ? QStringLiteral("_Arzi") : QString())
                    .arg(expected)
                    .arg(args.size()));
        }
        if (foreign) {
            bool ok = false;
            rate_ = args[0].toDouble(&ok);
            if (!ok) rate_ = 0;
            currency_ = args[1].toString().trimmed();
        }
        action_ = args[first].toString().trimmed().toUpper();
        for (int i = 0; i < kCount; ++i) values_ << args[first + 1 + i].toString().trimmed();
        table_ = validWorkTable(values_[kTable], QStringLiteral("a transfer table"));
    }

    tr::db::ExecResult run() {
        if (action_ == QLatin1String("DB->TRANS")) {
            loadIntoTransferTable();
        } else if (action_ == QLatin1String("TRANS->DB")) {
            save();
        } else if (action_ == QLatin1String("ABTAL")) {
            cancel();
        } else if (action_ == QLatin1String("RET_EBTAL")) {
            undoCancel();
        } else if (action_ == QLatin1String("DELETE")) {
            remove();
        } else {
            throw DatabaseError(
                QStringLiteral("%1: unknown action '%2'").arg(text(kind_.procedure), action_));
        }
        return {};
    }

  private:
    QString kindLiteral() const { return c_.text(text(kind_.whatDoc)); }
    QString title() const { return text(kind_.title); }

    qint64 serial() const { return validSerial(values_[kSerial], title()); }

    QString documentFilter(qint64 serial) const {
        return QStringLiteral(" WhatDoc = ") + kindLiteral() + QStringLiteral(" And Serial = ") +
               sqlNumber(serial);
    }

    Document findDocument(qint64 serial) {
        Document d;
        const Query r = openQuery(c_, QStringLiteral("Select IDX From N_NaghdTrans Where") +
                                          documentFilter(serial) + QStringLiteral(" Order By Raj"));
        for (int row = 0; row < r.RecordCount(); ++row) d.lines << r.value(row, 0).toLongLong();
        return d;
    }

    Document existingDocument(qint64 serial) {
        Document d = findDocument(serial);
        if (!d.exists()) refuse(title() + QStringLiteral(" با اين شماره وجود ندارد."));
        return d;
    }

    // The voucher lines of the document: Asnad.Document is the text of the line's IDX; the kind
    // keeps other subsystems' lines, whose Document counts in another table, out.
    QString voucherLines(const Document& d, const char* docToDate) const {
        QStringList ids;
        for (qint64 idx : d.lines) ids << c_.text(QString::number(idx));
        return QStringLiteral(" TypeSys = 'N' And WhatDoc = ") + kindLiteral() +
               QStringLiteral(" And DocToDate = '") + QLatin1String(docToDate) +
               QStringLiteral("' And Document In (") + ids.join(QLatin1Char(',')) +
               QStringLiteral(")");
    }

    bool isCancelled(const Document& d) {
        return firstColumn(
                   c_, QStringLiteral("Select Count(*) From Asnad Where") + voucherLines(d, "1"))
                   .toLongLong() > 0;
    }

    // The rows go in this order so that the voucher goes before the lines it points to.
    void deleteDocument(const Document& d, qint64 serial, bool withCancellation) {
        c_.execute(QStringLiteral("Delete From Asnad Where") + voucherLines(d, "0"));
        if (withCancellation) {
            c_.execute(QStringLiteral("Delete From Asnad Where") + voucherLines(d, "1"));
        }
        c_.execute(QStringLiteral("Delete From N_NaghdTrans Where") + documentFilter(serial));
        c_.execute(QStringLiteral("Delete From N_ArzTrans Where") + documentFilter(serial));
    }

    void loadIntoTransferTable() {
        const qint64 s = serial();
        const LedgerSide lineSide = opposite(kind_.treasurySide);
        // A currency document's lines are edited in the currency: their amounts come back from
        // N_ArzTrans, the rial amounts stay in ArzTotalPrice.
        const QString amount = QStringLiteral("A.") + sideColumn(lineSide);
        const QString lineAmount =
            foreign_ ? QStringLiteral("IsNull(AT.ArzCount, %1)").arg(amount) : amount;
        const QString bed = lineSide == LedgerSide::Bed ? lineAmount : QStringLiteral("0");
        const QString bes = lineSide == LedgerSide::Bes ? lineAmount : QStringLiteral("0");
        c_.execute(QStringLiteral("Delete From ") + table_);
        c_.execute(
            QStringLiteral("Insert Into ") + table_ +
            QStringLiteral(
                " (Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, Bes, WhatDoc2, "
                "NamWhatDoc2, CodWhatDoc2, ManabehCod, ArzCod, ArzNam, ArzRate, ArzUnitPrice, "
                "ArzTotalPrice, ArzCount2, ArzNam2, Joz, Des1, Des2, Des3, Des4, IDX) "
                "Select N.Raj - 1, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, A.Des, ") +
            bed + QStringLiteral(", ") + bes +
            QStringLiteral(
                ", N.WhatDoc2, N.NamWhatDoc2, N.CodWhatDoc2, N.ManabehCod, AT.ArzCod, AT.ArzNam, "
                "AT.Nerkh, AT.ArzUnitPrice, AT.ArzTotalPrice, AT.ArzCount2, AT.ArzNam2, N.Joz, "
                "N.Des1, N.Des2, N.Des3, N.Des4, N.IDX From N_NaghdTrans As N Inner Join Asnad As "
                "A On (A.TypeSys = 'N' And A.WhatDoc = N.WhatDoc And A.DocToDate = '0' And "
                "A.Document = Cast(N.IDX As Varchar(20))) Left Join N_ArzTrans As AT On "
                "(AT.IDX = N.IDX) Where N.WhatDoc = ") +
            kindLiteral() + QStringLiteral(" And N.Serial = ") + sqlNumber(s) +
            QStringLiteral(" And N.Raj > 1 Order By N.Raj"));
    }

    struct Line {
        Record in;
        double amount = 0;  // as typed: rials, or the currency for an _Arzi document
        double rials = 0;
    };

    void save() {
        const qint64 s = serial();
        const QString date = validDate(values_[kDate]);
        const QString state = values_[kState].toUpper();
        if (state != QLatin1String("NEW") && state != QLatin1String("EDIT")) {
            throw DatabaseError(QStringLiteral("%1: form state '%2' is not NEW or EDIT")
                                    .arg(text(kind_.procedure), values_[kState]));
        }

        // Everything is checked before the first write: a refused save changes nothing.
        const Query transfer = openQuery(
            c_,
            QStringLiteral("Select Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, Bes, "
                           "WhatDoc2, NamWhatDoc2, CodWhatDoc2, ManabehCod, ArzCod, ArzNam, "
                           "ArzRate, ArzUnitPrice, ArzTotalPrice, ArzCount2, ArzNam2, Joz, Des1, "
                           "Des2, Des3, Des4, IDX From ") +
                table_ + QStringLiteral(" Order By Raj"));
        if (transfer.IsEmpty()) refuse(QStringLiteral("سند هيچ رديفي ندارد."));

        const Query object =
            openQuery(c_, QString::fromUtf8(kind_.object->lookup).arg(c_.text(values_[kCode])));
        if (values_[kCode].isEmpty() || object.IsEmpty()) {
            refuse(text(kind_.object->label) + QStringLiteral(" با کد «") + values_[kCode] +
                   QStringLiteral("» وجود ندارد."));
        }
        const Record treasury{&object, 0};

        QString currencyName;
        if (foreign_) {
            if (!(rate_ > 0)) refuse(QStringLiteral("نرخ ارز نبايد صفر باشد !"));
            if (currency_.isEmpty()) currency_ = trimmedText(treasury["ArzCod"]);
            const Query currency = openQuery(
                c_, QStringLiteral("Select ArzNam From N_Arz Where LTrim(ArzCod) = LTrim(") +
                        c_.text(currency_) + QStringLiteral(")"));
            if (currency_.isEmpty() || currency.IsEmpty()) {
                refuse(QStringLiteral("ارز با کد «") + currency_ + QStringLiteral("» وجود ندارد."));
            }
            currencyName = currency.value(0, 0).toString();
        }

        const LedgerSide lineSide = opposite(kind_.treasurySide);
        std::vector<Line> lines;
        double totalAmount = 0;
        double totalRials = 0;
        for (int row = 0; row < transfer.RecordCount(); ++row) {
            Line line{Record{&transfer, row}};
            const int number = static_cast<int>(lines.size()) + 1;
            if (trimmedText(line.in["Koll"]).isEmpty() || trimmedText(line.in["Moein"]).isEmpty()) {
                refuse(QStringLiteral("حساب رديف %1 وارد نشده است.").arg(number));
            }
            line.amount = line.in[lineSide == LedgerSide::Bed ? "Bed" : "Bes"].toDouble();
            const double wrongSide =
                line.in[lineSide == LedgerSide::Bed ? "Bes" : "Bed"].toDouble();
            if (wrongSide != 0) refuse(QStringLiteral("سند تراز نميباشد."));
            if (!(line.amount > 0)) refuse(QStringLiteral("مبلغ وارد نشده است."));
            line.rials = foreign_ ? round2(line.amount * rate_) : line.amount;
            totalAmount += line.amount;
            totalRials += line.rials;
            lines.push_back(line);
        }

        const Document earlier = findDocument(s);
        qint64 voucherNo = 0;
        if (earlier.exists()) {
            if (state == QLatin1String("NEW")) {
                refuse(title() + QStringLiteral(" با اين شماره ثبت شده است."));
            }
            if (isCancelled(earlier)) refuse(QStringLiteral("سند ابطال شده قابل اصلاح نيست."));
            voucherNo = firstColumn(c_, QStringLiteral("Select IsNull(Max(SanadNo), 0) From Asnad "
                                                       "Where") +
                                            voucherLines(earlier, "0"))
                            .toLongLong();
            deleteDocument(earlier, s, false);
        }
        // A new voucher is written with number 0 and numbered last (below).
        QList<qint64> voucherRecs;

        const Record& first = lines.front().in;
        const QString treasuryCode = values_[kCode];
        // Line 1: the treasury side, from the header.
        const qint64 treasuryIdx = insertDocumentRow(s, 1, date, text(kind_.whatDoc), treasuryCode,
                                                     treasury["Nam"], QVariant(), first);
        voucherRecs << insertVoucherLine(voucherNo, date, 1, treasuryIdx, text(kind_.whatDoc),
                                         treasury, values_[kDescription], kind_.treasurySide,
                                         totalRials);
        if (foreign_) {
            insertCurrencyRow(s, 1, treasuryIdx, currency_, currencyName, totalAmount, totalAmount,
                              totalRials, Record{});
        }
        int raj = 1;
        for (const Line& line : lines) {
            ++raj;
            const QString whatDoc2 = counterKind(line.in["WhatDoc2"]);
            const qint64 idx =
                insertDocumentRow(s, raj, date, whatDoc2, trimmedText(line.in["CodWhatDoc2"]),
                                  line.in["NamWhatDoc2"], line.in["ManabehCod"], line.in);
            voucherRecs << insertVoucherLine(voucherNo, date, raj, idx, whatDoc2, line.in,
                                             trimmedText(line.in["Des"]), lineSide, line.rials);
            if (foreign_) {
                const QString code = trimmedText(line.in["ArzCod"]);
                const QVariant unit = line.in["ArzUnitPrice"];
                insertCurrencyRow(s, raj, idx, code.isEmpty() ? currency_ : code,
                                  code.isEmpty() ? currencyName : trimmedText(line.in["ArzNam"]),
                                  line.amount, unit.isNull() ? line.amount : unit.toDouble(),
                                  line.rials, line.in);
            }
        }

        // The work table holds the document as saved (its lines' IDX, what the ledger keeps), as
        // a load would leave it: the screen shows it without asking again.
        loadIntoTransferTable();

        // From here until the commit, every other writer of the books waits for this save (on a
        // server; the embedded engine has one writer at a time anyway). The lines above need no
        // turn: nobody else sees them before the commit, and the document's hold keeps other
        // users off its serial. What is taken by Max() + 1 is taken last, so that other desks'
        // saves wait only for these few statements.
        c_.takeWritersTurn();
        // A serial typed by hand is nobody's hold: another user may have saved it meanwhile.
        if (!earlier.exists() &&
            firstColumn(c_, QStringLiteral("Select Count(*) From N_NaghdTrans Where") +
                                documentFilter(s))
                    .toLongLong() != raj) {
            refuse(title() + QStringLiteral(" با اين شماره ثبت شده است."));
        }
        if (voucherNo == 0) numberVoucher(c_, voucherRecs);
    }

    // The document's own kind belongs to its treasury line, by which searches list it once; a
    // counter line without a counter-party object (or loaded from an older book) is an account.
    QString counterKind(const QVariant& whatDoc2) const {
        const QString kind = trimmedText(whatDoc2);
        return kind.isEmpty() || kind == text(kind_.whatDoc) ? QString::fromLatin1(kAccountLine)
                                                             : kind;
    }

    qint64 insertDocumentRow(qint64 s, int raj, const QString& date, const QString& whatDoc2,
                             const QString& codWhatDoc2, const QVariant& namWhatDoc2,
                             const QVariant& manabeh, const Record& extras) {
        TreasuryRow row;
        row.whatDoc = text(kind_.whatDoc);
        row.serial = s;
        row.raj = raj;
        row.codWhatDoc = values_[kCode];
        row.whatDoc2 = whatDoc2;
        row.codWhatDoc2 = codWhatDoc2;
        row.namWhatDoc2 = namWhatDoc2;
        row.joz = extras["Joz"];
        row.manabehCod = manabeh;
        row.date = date;
        row.des1 = extras["Des1"];
        row.des2 = extras["Des2"];
        row.des3 = extras["Des3"];
        row.des4 = extras["Des4"];
        return insertTreasuryRow(c_, row);
    }

    qint64 insertVoucherLine(qint64 voucherNo, const QString& date, int raj, qint64 idx,
                           const QString& whatDoc2, const Record& account, const QString& des,
                           LedgerSide side, double rials) {
        VoucherLine line;
        line.whatDoc = text(kind_.whatDoc);
        line.whatDoc2 = whatDoc2;
        line.document = idx;
        line.voucherNo = voucherNo;
        line.date = date;
        line.raj = raj;
        line.koll = trimmedText(account["Koll"]);
        line.moein = trimmedText(account["Moein"]);
        line.tafsily = trimmedText(account["Tafsily"]);
        line.tafsily2 = trimmedText(account["Tafsily2"]);
        line.projectCod = trimmedText(account["ProjectCod"]);
        line.des = des;
        line.side = side;
        line.rials = rials;
        line.atfCh = values_[kReference];
        line.user = values_[kUser];
        return tr::procedures::insertVoucherLine(c_, line);
    }

    void insertCurrencyRow(qint64 s, int raj, qint64 idx, const QString& code, const QString& name,
                           double count, double unitPrice, double rials, const Record& line) {
        CurrencyRow row;
        row.idx = idx;
        row.whatDoc = text(kind_.whatDoc);
        row.serial = s;
        row.raj = raj;
        row.code = code;
        row.name = name;
        row.count = count;
        row.rate = rate_;
        if (line.set) {
            row.count2 = line["ArzCount2"];
            row.name2 = line["ArzNam2"];
        }
        row.unitPrice = unitPrice;
        row.rials = rials;
        tr::procedures::insertCurrencyRow(c_, row);
    }

    void cancel() {
        const qint64 s = serial();
        const Document d = existingDocument(s);
        const QString date = validDate(values_[kCancelDate]);
        if (isCancelled(d)) refuse(title() + QStringLiteral(" قبلا ابطال شده است."));
        const QString voucherDate =
            firstColumn(
                c_, QStringLiteral("Select Max(SanadDate) From Asnad Where") + voucherLines(d, "0"))
                .toString();
        if (date < voucherDate) {
            refuse(QStringLiteral("تاريخ ابطال بايد بزرگتر يا مساوي تاريخ ") + voucherDate +
                   QStringLiteral(" باشد"));
        }
        // The reversal is a voucher of its own: its own number and the cancellation date.
        c_.execute(QStringLiteral("Insert Into Asnad (TypeSys, WhatDoc, WhatDoc2, DocToDate, "
                                  "Document, SanadNo, SanadDate, Raj, Koll, Moein, Tafsily, "
                                  "Tafsily2, ProjectCod, Des, Bed, Bes, AtfCh, User_Name) "
                                  "Select TypeSys, WhatDoc, WhatDoc2, '1', Document, ") +
                   sqlNumber(newVoucherNumber(c_)) + QStringLiteral(", ") + c_.text(date) +
                   QStringLiteral(", Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bes, "
                                  "Bed, AtfCh, ") +
                   c_.text(values_[kCancelUser]) + QStringLiteral(" From Asnad Where") +
                   voucherLines(d, "0") + QStringLiteral(" Order By Raj"));
    }

    void undoCancel() {
        const Document d = existingDocument(serial());
        if (!isCancelled(d)) refuse(title() + QStringLiteral(" ابطال نشده است."));
        c_.execute(QStringLiteral("Delete From Asnad Where") + voucherLines(d, "1"));
    }

    void remove() {
        const qint64 s = serial();
        deleteDocument(existingDocument(s), s, true);
    }

    const CashBankKind& kind_;
    const bool foreign_;
    Connection& c_;
    double rate_ = 0;
    QString currency_;
    QString action_;
    QStringList values_;
    QString table_;
};

}  // namespace

const std::vector<CashBankKind>& cashBankKinds() {
    return kKinds;
}

tr::db::ExecResult runCashBankDocument(const CashBankKind& kind, bool foreignCurrency,
                                       Connection& connection, const Args& args) {
    return DocumentCall(kind, foreignCurrency, connection, args).run();
}

std::vector<ProcedureDefinition> cashBankDocumentProcedures() {
    std::vector<ProcedureDefinition> out;
    for (const CashBankKind& kind : kKinds) {
        const QString name = QString::fromUtf8(kind.procedure);
        out.push_back({name, [&kind](Connection& c, const Args& a) {
                           return runCashBankDocument(kind, false, c, a);
                       }});
        if (kind.currencyTwin) {
            out.push_back({name + QStringLiteral("_Arzi"), [&kind](Connection& c, const Args& a) {
                               return runCashBankDocument(kind, true, c, a);
                           }});
        }
    }
    return out;
}

}  // namespace tr::procedures
