#include "db/procedures/cheque_documents.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <cmath>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "db/procedures/cheque_permits.h"
#include "db/procedures/posting.h"
#include "instruments/cheque_issue_rule.h"
#include "instruments/cheque_receipt_rule.h"
#include "instruments/latest_state.h"

namespace tr::procedures {

namespace {

using tr::db::Connection;
using tr::db::DatabaseError;
using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::Query;
using tr::db::sqlNumber;

// The two cheque documents share one procedure body: a received-cheque document debits its
// cheques and credits their counterparty lines; a cheque payment credits its cheques (our own
// leaves on the bank account's A heads, received cheques passed on from where they stand) and
// debits the lines.
struct DocumentKind {
    QString code;          // WhatDoc
    QString procedure;     // named in argument errors
    QString title;         // the serial's and the duplicate's refusals
    QString chequeSuffix;  // ##<prefix><suffix> holds the cheques
    QString notThere;      // loading or deleting a serial the book lacks
    bool payment = false;
};

const DocumentKind& receivedDocument() {
    static const DocumentKind k{QStringLiteral("71"), QStringLiteral("sp_N_Asnad_Trans_ChqGet"),
                                QStringLiteral("دريافت چک"), QStringLiteral("_Chq"),
                                QStringLiteral("اين شماره دريافت چک در دسترس نمي باشد"), false};
    return k;
}

const DocumentKind& paymentDocument() {
    static const DocumentKind k{QStringLiteral("81"), QStringLiteral("sp_N_Asnad_Trans_ChqPay"),
                                QStringLiteral("پرداخت چك"), QStringLiteral("Bed"),
                                QStringLiteral("اين شماره پرداخت چک در دسترس نمي باشد"), true};
    return k;
}

// What a payment row holds: our own leaf, or a received cheque passed on.
const QString kIssueName = QStringLiteral("صدور چك");
const QString kSpendName = QStringLiteral("خرج چك");

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

// The arguments after the mode (the _Arzi twin takes the same list).
enum Position { kPrefix, kSerial, kDate, kUser, kState, kCount };

// Flags are kept as "ض" for set and '' for clear, whatever the grid held.
QString flag(const QVariant& value) {
    const QString t = trimmedText(value);
    return t.isEmpty() || t == QLatin1String("0") ? QString() : text("ض");
}

QVariant nullIfEmpty(const QString& value) {
    return value.isEmpty() ? QVariant() : QVariant(value);
}

struct Account {
    QString koll, moein, tafsily, tafsily2, projectCod;
    static Account of(const Record& r) {
        return {trimmedText(r["Koll"]), trimmedText(r["Moein"]), trimmedText(r["Tafsily"]),
                trimmedText(r["Tafsily2"]), trimmedText(r["ProjectCod"])};
    }
};

struct Currency {
    QString code, name;
    double count = 0, rate = 0;
    QVariant code2, name2, count2, rate2;
    static Currency of(const Record& r) {
        return {trimmedText(r["ArzCod"]), trimmedText(r["ArzNam"]), r["ArzCount"].toDouble(),
                r["Nerkh"].toDouble(), r["ArzCod2"], r["ArzNam2"], r["ArzCount2"], r["Nerkh2"]};
    }
};

struct Cheque {
    Account account;
    QString number, series, due, payee, des, bank, branch, branchName, drawerAccount, type;
    QString payableToOrder, guarantee, telephone, address;
    bool spent = false;    // a payment's received cheque passed on
    std::optional<tr::instruments::ChequeInHand> inHand;  // and what the book says of it
    qint64 accountId = 0;  // a payment's own leaf: its bank account
    double value = 0;
    Currency currency;
    QString key() const { return number + QLatin1Char('_') + series; }
};

struct Counterparty {
    Account account;
    QString whatDoc2, name, code, number, series, des, source;
    double value = 0;
    Currency currency;
    QString key() const { return number + QLatin1Char('_') + series; }
};

bool sameAmount(double a, double b) {
    return std::fabs(a - b) < 0.005;
}

class ChequeDocumentCall {
  public:
    ChequeDocumentCall(Connection& c, const Args& args, const DocumentKind& kind) : c_(c), kind_(kind) {
        if (static_cast<int>(args.size()) != 1 + kCount) {
            throw DatabaseError(QStringLiteral("%3 expects %1 arguments, got %2")
                                    .arg(1 + kCount)
                                    .arg(args.size())
                                    .arg(kind_.procedure));
        }
        mode_ = args[0].toString().trimmed().toUpper();
        for (int i = 0; i < kCount; ++i) values_ << args[1 + i].toString().trimmed();
    }

    tr::db::ExecResult run() {
        const qint64 serial = validSerial(values_[kSerial], kind_.title);
        if (mode_ == QLatin1String("DB->TRANS")) {
            load(serial);
        } else if (mode_ == QLatin1String("TRANS->DB")) {
            save(serial, false);
        } else if (mode_ == QLatin1String("FIRST->DB")) {
            save(serial, true);
        } else if (mode_ == QLatin1String("DELETE_DOREH")) {
            remove(serial, false);
        } else if (mode_ == QLatin1String("DELETE_FIRST")) {
            remove(serial, true);
        } else if (mode_ == QLatin1String("MOJAVEZ->TRANS") && kind_.payment) {
            // `serial` names a payment permit: its rows become the payment's.
            if (firstColumn(c_, QStringLiteral("Select Count(*) From N_MojavezTrans Where Serial = ") + sqlNumber(serial))
                    .toLongLong() == 0)
                refuse(QStringLiteral("دستور مجوز پرداختي با اين سريال ثبت نشده است."));
            copyPermitRows(c_, serial, chequeTable(), counterpartyTable(), false);
        } else {
            throw DatabaseError(QStringLiteral("%2: unknown mode '%1'").arg(mode_, kind_.procedure));
        }
        return {};
    }

  private:
    QString chequeTable() const {
        return validWorkTable(QStringLiteral("##") + values_[kPrefix] + kind_.chequeSuffix,
                              QStringLiteral("a cheque work table"));
    }
    QString counterpartyTable() const {
        return validWorkTable(QStringLiteral("##") + values_[kPrefix] + QStringLiteral("_Taraf"),
                              QStringLiteral("a counterparty work table"));
    }
    QString documentFilter(qint64 serial) const {
        return QStringLiteral(" WhatDoc = ") + c_.text(kind_.code) + QStringLiteral(" And Serial = ") + sqlNumber(serial);
    }

    // ---- reading the work tables ------------------------------------------------------------

    std::vector<Cheque> readCheques() {
        const Query q = openQuery(c_, QStringLiteral("Select * From ") + chequeTable() +
                                          QStringLiteral(" Order By Raj"));
        std::vector<Cheque> out;
        for (int row = 0; row < q.RecordCount(); ++row) {
            const Record r{&q, row};
            Cheque ch;
            ch.account = Account::of(r);
            ch.number = trimmedText(r["ChqNo"]);
            ch.series = trimmedText(r["Joz"]);
            ch.value = r["ChqValue"].toDouble();
            ch.due = trimmedText(r["SarResidDate"]);
            ch.payee = trimmedText(r["ChqGetter"]);
            ch.des = trimmedText(r["Des"]);
            ch.payableToOrder = flag(r["Havaleh"]);
            ch.guarantee = flag(r["Tazmin"]);
            if (kind_.payment) {
                readPaymentCheque(r, ch);
            } else {
                ch.bank = trimmedText(r["BankCod"]);
                ch.branch = trimmedText(r["ShobehCod"]);
                ch.branchName = trimmedText(r["ShobehNam"]);
                ch.drawerAccount = trimmedText(r["AcountCod"]);
                ch.type = trimmedText(r["ChqTypeCod"]);
                ch.telephone = trimmedText(r["Telephone"]);
                ch.address = trimmedText(r["Address"]);
                ch.currency = Currency::of(r);
            }
            out.push_back(std::move(ch));
        }
        return out;
    }

    // A payment row: which kind of cheque, and what the book says of it. Our own leaf stands on
    // its bank account's A heads; a received cheque is credited from where it stands now.
    void readPaymentCheque(const Record& r, Cheque& ch) {
        const QString state = trimmedText(r["ChqStateNam"]);
        if (state.isEmpty()) refuse(QStringLiteral("وضعيت چك وارد نشده است."));
        ch.spent = state.contains(QStringLiteral("خرج"));
        ch.currency = {trimmedText(r["ArzCod"]), trimmedText(r["ArzNam"]), r["ArzCount"].toDouble(),
                       r["Nerkh"].toDouble(), {}, {}, {}, {}};
        if (ch.spent) {
            ch.inHand = tr::instruments::chequeInHand(c_, ch.number, ch.series, ownSerial_);
            if (const auto& h = ch.inHand) {
                ch.account = {h->koll, h->moein, h->tafsily, h->tafsily2, h->projectCod};
                ch.bank = h->bank;
                ch.branch = h->branch;
                ch.branchName = h->branchName;
                ch.drawerAccount = h->drawerAccount;
                ch.guarantee = h->guarantee;
            }
            return;
        }
        ch.accountId = r["AcountID"].toLongLong();
        if (ch.accountId <= 0) refuse(QStringLiteral("شماره حساب وارد نشده است."));
        const Query bank = openQuery(
            c_, QStringLiteral("Select BankCod, ShobehCod, AcountCod, AKoll, AMoein, ATafsily, ATafsily2, AProjectCod, "
                               "(Select Max(ShobehNam) From N_Shoab As S Where S.BankCod = H.BankCod And S.ShobehCod = "
                               "H.ShobehCod) From N_BankHesab As H Where AcountID = ") +
                    sqlNumber(ch.accountId));
        if (bank.IsEmpty()) refuse(QStringLiteral("شماره حساب ثبت نشده است."));
        ch.bank = trimmedText(bank.value(0, 0));
        ch.branch = trimmedText(bank.value(0, 1));
        ch.drawerAccount = trimmedText(bank.value(0, 2));
        ch.account = {trimmedText(bank.value(0, 3)), trimmedText(bank.value(0, 4)), trimmedText(bank.value(0, 5)),
                      trimmedText(bank.value(0, 6)), trimmedText(bank.value(0, 7))};
        ch.branchName = trimmedText(bank.value(0, 8));
    }

    std::vector<Counterparty> readCounterparties() {
        const Query q = openQuery(c_, QStringLiteral("Select * From ") + counterpartyTable() +
                                          QStringLiteral(" Order By Raj"));
        std::vector<Counterparty> out;
        for (int row = 0; row < q.RecordCount(); ++row) {
            const Record r{&q, row};
            Counterparty t;
            t.account = Account::of(r);
            t.whatDoc2 = trimmedText(r["WhatDoc2"]);
            t.name = trimmedText(r["NamWhatDoc2"]);
            t.code = trimmedText(r["CodWhatDoc2"]);
            t.number = trimmedText(r["ChqNo"]);
            t.series = trimmedText(r["Joz"]);
            t.value = r["ChqValue"].toDouble();
            t.des = trimmedText(r["Des"]);
            t.source = trimmedText(r["ManabehCod"]);
            t.currency = Currency::of(r);
            out.push_back(std::move(t));
        }
        return out;
    }

    // ---- the book's side ---------------------------------------------------------------------

    struct Saved {
        QList<qint64> lines;  // N_NaghdTrans.IDX of every row
        QStringList chequeKeys;
        qint64 voucherNo = 0;
        bool opening = false;
        bool exists() const { return !lines.isEmpty(); }
    };

    Saved savedDocument(qint64 serial) {
        Saved d;
        const Query rows = openQuery(c_, QStringLiteral("Select IDX From N_NaghdTrans Where") +
                                             documentFilter(serial));
        for (int i = 0; i < rows.RecordCount(); ++i) d.lines << rows.value(i, 0).toLongLong();
        if (!d.exists()) return d;
        const Query cheques = openQuery(
            c_, QStringLiteral("Select ChqNo, Joz From N_ChqLastTrans Where") + documentFilter(serial));
        for (int i = 0; i < cheques.RecordCount(); ++i) {
            d.chequeKeys << cheques.value(i, 0).toString().trimmed() + QLatin1Char('_') +
                                cheques.value(i, 1).toString().trimmed();
        }
        d.voucherNo = firstColumn(c_, QStringLiteral("Select Max(SanadNo) From Asnad Where") + voucherLines(d))
                          .toLongLong();
        d.opening = firstColumn(c_, QStringLiteral("Select Count(*) From N_ChqFirst Where") +
                                        documentFilter(serial))
                        .toLongLong() > 0;
        return d;
    }

    // The document's voucher lines: Asnad.Document is the text of the row's IDX.
    QString voucherLines(const Saved& d) const {
        QStringList ids;
        for (qint64 idx : d.lines) ids << c_.text(QString::number(idx));
        return QStringLiteral(" TypeSys = 'N' And WhatDoc = ") + c_.text(kind_.code) + QStringLiteral(" And Document In (") +
               ids.join(QLatin1Char(',')) + QStringLiteral(")");
    }

    // A cheque of the document that has moved since it was received: its latest action is not
    // this document's receipt.
    void refuseMovedCheques(const Saved& d, bool naming) {
        for (const QString& key : d.chequeKeys) {
            const QString number = key.section(QLatin1Char('_'), 0, 0);
            const QString series = key.section(QLatin1Char('_'), 1);
            const auto latest = tr::instruments::latestRow(c_, tr::instruments::chequeHistory(), number, series);
            if (!latest || latest->kind == kind_.code) continue;
            if (!naming) refuse(QStringLiteral("چك ") + number + QStringLiteral(" گردش پيدا كرده است."));
            const QString name = firstColumn(c_, QStringLiteral("Select NDocNam From N_AsnadNaghd Where WhatDoc = ") +
                                                     c_.text(latest->kind))
                                     .toString()
                                     .trimmed();
            QString message = QStringLiteral("آخرين گردش چك شماره ") + number + QLatin1Char(' ') + name +
                              QStringLiteral(" ميباشد.");
            // A payment also names where the later action was recorded.
            if (kind_.payment) {
                message += QLatin1Char('\n') + QStringLiteral("اين عمليات در سريال ") +
                           firstColumn(c_, QStringLiteral("Select Serial From N_ChqLastTrans Where IDX = ") +
                                               sqlNumber(latest->idx))
                               .toString()
                               .trimmed() +
                           QStringLiteral(" انجام گرفته شده است.");
            }
            refuse(message);
        }
    }

    // A cheque deleted from the screen's grid keeps its sales-invoice links until the document
    // is saved without it: then they go, and their invoices owe again what it paid.
    void cutLinksOfRemovedCheques(qint64 serial, const std::vector<Cheque>& cheques) {
        QStringList kept;
        for (const Cheque& ch : cheques) {
            kept << QStringLiteral("(LTrim(RTrim(AtfCh)) = ") + c_.text(ch.number) +
                        QStringLiteral(" And LTrim(RTrim(IsNull(DocToDate, ''))) = ") + c_.text(ch.series) +
                        QLatin1Char(')');
        }
        QString gone = QStringLiteral(" Where") + documentFilter(serial);
        if (!kept.isEmpty()) gone += QStringLiteral(" And Not (") + kept.join(QStringLiteral(" Or ")) + QLatin1Char(')');
        const Query paid = openQuery(c_, QStringLiteral("Select SanadNoForosh, DorehMali, Sum(NaghdValue) From "
                                                        "R_ForoshRelatedNaghd") +
                                             gone + QStringLiteral(" Group By SanadNoForosh, DorehMali"));
        for (int i = 0; i < paid.RecordCount(); ++i) {
            const QString value = sqlNumber(paid.value(i, 2).toDouble());
            c_.execute(QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue - ") + value +
                       QStringLiteral(", MandehFactor = FactorValue - NaghdValue + ") + value +
                       QStringLiteral(" Where SanadNoForosh = ") + c_.text(paid.value(i, 0).toString()) +
                       QStringLiteral(" And MainDorehMali = ") + c_.text(paid.value(i, 1).toString()));
        }
        if (!paid.IsEmpty()) c_.execute(QStringLiteral("Delete From R_ForoshRelatedNaghd") + gone);
    }

    void deleteSaved(qint64 serial, const Saved& d) {
        if (d.exists()) c_.execute(QStringLiteral("Delete From Asnad Where") + voucherLines(d));
        c_.execute(QStringLiteral("Delete From N_ChqFirst Where") + documentFilter(serial));
        c_.execute(QStringLiteral("Delete From N_ChqLastTrans Where") + documentFilter(serial));
        c_.execute(QStringLiteral("Delete From N_ArzTrans Where") + documentFilter(serial));
        c_.execute(QStringLiteral("Delete From N_NaghdTrans Where") + documentFilter(serial));
    }

    // ---- checks before the first write -------------------------------------------------------

    void check(const std::vector<Cheque>& cheques, const std::vector<Counterparty>& parties,
               const QString& date, qint64 ownSerial) {
        if (cheques.empty()) refuse(QStringLiteral("چكي در سند وارد نشده است."));
        QSet<QString> keys;
        for (const Cheque& ch : cheques) {
            if (ch.number.isEmpty()) refuse(QStringLiteral("شماره چك وارد نشده است."));
            if (!(ch.value > 0)) refuse(QStringLiteral("مبلغ چك وارد نشده است."));
            if (ch.due.isEmpty()) refuse(QStringLiteral("تاريخ سررسيد وارد نشده است."));
            if (validDateOrEmpty(ch.due).isEmpty()) refuse(QStringLiteral("تاريخ سررسيد معتبر نميباشد."));
            if (ch.account.koll.isEmpty()) refuse(QStringLiteral("سرفصل چك ") + ch.number + QStringLiteral(" وارد نشده است."));
            if (keys.contains(ch.key())) refuse(QStringLiteral("شماره چك تكراري ميباشد."));
            keys.insert(ch.key());
        }
        // The save's steps 1, 3, 4 and 5, in that order.
        for (const Counterparty& t : parties)
            if (t.account.koll.isEmpty()) refuse(QStringLiteral("سرفصل در قسمت طرف حساب پر نشده است"));
        double debit = 0, credit = 0;
        for (const Cheque& ch : cheques) debit += ch.value;
        for (const Counterparty& t : parties) credit += t.value;
        if (!sameAmount(debit, credit)) refuse(QStringLiteral("سند تراز نميباشد."));
        QHash<QString, double> perCheque;
        for (const Counterparty& t : parties) perCheque[t.key()] += t.value;
        for (const Cheque& ch : cheques) {
            if (!sameAmount(perCheque.value(ch.key()), ch.value)) {
                refuse(QStringLiteral("جمع مبلغ چك ") + ch.number +
                       QStringLiteral(" در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد."));
            }
        }
        for (const Counterparty& t : parties)
            if (!keys.contains(t.key())) refuse(QStringLiteral("چك ") + t.number + QStringLiteral(" در قسمت بالا ثبت نشده است !"));
        // What the book allows of each cheque, as the screen checks it.
        for (const Cheque& ch : cheques) {
            QString refusal;
            if (!kind_.payment)
                refusal = tr::instruments::chequeReceiptRefusal(c_, ch.number, ch.series, date, ownSerial);
            else if (ch.spent)
                refusal = tr::instruments::spentChequeRefusal(ch.inHand, ch.value, date);
            else
                refusal = tr::instruments::ownLeafRefusal(c_, ch.accountId, ch.number, ch.series, ownSerial);
            if (!refusal.isEmpty()) refuse(refusal);
        }
    }

    static QString validDateOrEmpty(const QString& date) {
        try {
            return validDate(date);
        } catch (const DatabaseError&) {
            return {};
        }
    }

    // ---- modes ----------------------------------------------------------------------------------

    void save(qint64 serial, bool opening) {
        const QString date = validDate(values_[kDate]);
        const QString user = values_[kUser];
        const bool isNew = values_[kState].compare(QLatin1String("EDIT"), Qt::CaseInsensitive) != 0;
        const Saved saved = savedDocument(serial);
        ownSerial_ = saved.exists() ? serial : 0;
        const std::vector<Cheque> cheques = readCheques();
        const std::vector<Counterparty> parties = readCounterparties();
        if (isNew && saved.exists()) refuse(kind_.title + QStringLiteral(" با اين شماره ثبت شده است."));
        if (saved.exists()) refuseMovedCheques(saved, false);
        check(cheques, parties, date, ownSerial_);
        if (kind_.payment && opening) {
            for (const Cheque& ch : cheques) {
                if (ch.spent && !(ch.inHand && ch.inHand->opening)) {
                    refuse(QStringLiteral("خرج چك اول دوره بايد از چكهاي دريافتي اول دوره باشد.(چك دريافتي ") +
                           ch.number + QStringLiteral(" چك دريافتي اول دوره نميباشد.)"));
                }
            }
        }
        const LedgerSide chequeSide = kind_.payment ? LedgerSide::Bes : LedgerSide::Bed;

        const qint64 voucherNo = opening ? 0 : saved.voucherNo > 0 ? saved.voucherNo : newVoucherNumber(c_);
        if (saved.exists() && !kind_.payment) cutLinksOfRemovedCheques(serial, cheques);
        deleteSaved(serial, saved);
        QHash<QString, QString> dueOf;
        for (const Cheque& ch : cheques) dueOf.insert(ch.key(), ch.due);
        int raj = 0;
        for (const Cheque& ch : cheques) {
            ++raj;
            // A payment keeps an own leaf's bank account in Des5 (empty for a cheque passed on).
            TreasuryRow row{kind_.code, serial, raj, ch.number, ch.bank, ch.branch, nullIfEmpty(ch.telephone),
                            ch.series, nullIfEmpty(ch.type), date,
                            ch.branchName, ch.drawerAccount, ch.payableToOrder, ch.guarantee,
                            kind_.payment ? nullIfEmpty(ch.spent ? QString() : QString::number(ch.accountId))
                                          : nullIfEmpty(ch.address),
                            ch.payee};
            const qint64 idx = insertTreasuryRow(c_, row);
            if (opening) {
                insertOpening(idx, serial, raj, 1, ch.number, ch.series, ch.value, ch.des, ch.due, ch.bank,
                              ch.account);
            } else {
                insertVoucherLine(c_, line(idx, voucherNo, date, raj, ch.account, ch.des, ch.bank,
                                           chequeSide, ch.value, ch.number, ch.series, ch.due, user));
            }
            writeCurrency(idx, serial, raj, ch.currency, ch.value);
            // A receipt's state row names its treasury row; a payment's names the bank account of
            // an own leaf and nothing for a cheque passed on, which tells the two apart.
            const QString code = !kind_.payment ? QString::number(idx)
                                 : ch.spent     ? QString()
                                                : QString::number(ch.accountId);
            c_.execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, "
                                      "Serial) Values (") +
                       c_.text(kind_.code) + QStringLiteral(", ") + c_.text(ch.number) + QStringLiteral(", ") +
                       c_.text(ch.series) + QStringLiteral(", ") + c_.text(date) + QStringLiteral(", ") +
                       c_.text(code) + QStringLiteral(", ") + sqlNumber(serial) + QStringLiteral(")"));
        }
        for (const Counterparty& t : parties) {
            ++raj;
            TreasuryRow row{kind_.code, serial, raj, t.number, t.whatDoc2, t.code, nullIfEmpty(t.name),
                            t.series, nullIfEmpty(t.source), date, {}, {}, {}, {}, {}, {}};
            const qint64 idx = insertTreasuryRow(c_, row);
            if (opening) {
                insertOpening(idx, serial, raj, 2, t.number, t.series, t.value, t.des, dueOf.value(t.key()),
                              t.whatDoc2, t.account);
            } else {
                insertVoucherLine(c_, line(idx, voucherNo, date, raj, t.account, t.des, t.whatDoc2,
                                           opposite(chequeSide), t.value, t.number, t.series, dueOf.value(t.key()),
                                           user));
            }
            writeCurrency(idx, serial, raj, t.currency, t.value);
        }
    }

    VoucherLine line(qint64 idx, qint64 voucherNo, const QString& date, int raj, const Account& a,
                     const QString& des, const QString& whatDoc2, LedgerSide side, double value,
                     const QString& number, const QString& series, const QString& due, const QString& user) {
        VoucherLine l;
        l.whatDoc = kind_.code;
        l.whatDoc2 = whatDoc2;
        l.document = idx;
        l.voucherNo = voucherNo;
        l.date = date;
        l.raj = raj;
        l.koll = a.koll;
        l.moein = a.moein;
        l.tafsily = a.tafsily;
        l.tafsily2 = a.tafsily2;
        l.projectCod = a.projectCod;
        l.des = des;
        l.side = side;
        l.rials = round2(value);
        l.atfCh = number;
        l.user = user;
        l.docToDate = series;
        l.atfDate = nullIfEmpty(due);
        return l;
    }

    void insertOpening(qint64 idx, qint64 serial, int raj, int chequeOrCounterparty, const QString& number,
                       const QString& series, double value, const QString& des, const QString& due,
                       const QString& whatDoc2, const Account& a) {
        const QString sep = QStringLiteral(", ");
        c_.execute(QStringLiteral("Insert Into N_ChqFirst (IDX, WhatDoc, LastWhatDoc, ChqOrTaraf, Serial, Raj, "
                                  "ChqNo, Joz, sValue, Des, SarResidDate, WhatDoc2, Koll, Moein, Tafsily, "
                                  "Tafsily2, ProjectCod, User_Name) Values (") +
                   sqlNumber(idx) + sep + c_.text(kind_.code) + sep + c_.text(kind_.code) + sep +
                   sqlNumber(chequeOrCounterparty) + sep +
                   sqlNumber(serial) + sep + sqlNumber(raj) + sep + c_.text(number) + sep + c_.text(series) +
                   sep + sqlNumber(round2(value)) + sep + c_.text(des) + sep + c_.text(due) + sep +
                   c_.text(whatDoc2) + sep + c_.text(a.koll) + sep + c_.text(a.moein) + sep +
                   c_.text(a.tafsily) + sep + c_.text(a.tafsily2) + sep + c_.text(a.projectCod) + sep +
                   c_.text(values_[kUser]) + QStringLiteral(")"));
    }

    void writeCurrency(qint64 idx, qint64 serial, int raj, const Currency& cur, double rials) {
        if (cur.code.isEmpty()) return;
        CurrencyRow r;
        r.idx = idx;
        r.whatDoc = kind_.code;
        r.serial = serial;
        r.raj = raj;
        r.code = cur.code;
        r.name = cur.name;
        r.count = cur.count;
        r.rate = cur.rate;
        r.code2 = cur.code2;
        r.name2 = cur.name2;
        r.count2 = cur.count2;
        r.rate2 = cur.rate2;
        r.unitPrice = cur.rate;
        r.rials = round2(rials);
        insertCurrencyRow(c_, r);
    }

    void load(qint64 serial) {
        const QString chq = chequeTable();
        const QString taraf = counterpartyTable();
        c_.execute(QStringLiteral("Delete From ") + chq);
        c_.execute(QStringLiteral("Delete From ") + taraf);
        const Saved d = savedDocument(serial);
        if (!d.exists()) refuse(kind_.notThere);
        // Accounts, amounts and descriptions come from the voucher, or for an opening document
        // (which has none) from N_ChqFirst; the rest from the treasury rows and the currency rows.
        const QString source =
            (d.opening ? QStringLiteral("Inner Join N_ChqFirst As A On (A.IDX = N.IDX And A.WhatDoc = %1 And "
                                        "A.Serial = N.Serial)")
                       : QStringLiteral("Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = %1 And "
                                        "A.Document = Cast(N.IDX As Varchar(20)))"))
                .arg(c_.text(kind_.code));
        const QString amount = d.opening ? QStringLiteral("A.sValue") : QStringLiteral("A.Bed + A.Bes");
        const QString chequeRows = d.opening        ? QStringLiteral("A.ChqOrTaraf = 1")
                                   : kind_.payment ? QStringLiteral("A.Bes > 0")
                                                   : QStringLiteral("A.Bed > 0");
        const QString due = d.opening ? QStringLiteral("A.SarResidDate") : QStringLiteral("A.AtfDate");
        const QString where =
            QStringLiteral(" Where N.WhatDoc = ") + c_.text(kind_.code) + QStringLiteral(" And N.Serial = ") + sqlNumber(serial);
        if (kind_.payment) {
            loadPaymentCheques(chq, amount, due, source, where + QStringLiteral(" And ") + chequeRows);
            // A payment that carried out a permit shows what the permit allowed of each cheque.
            for (const char* column : {"MojavezValue", "FactValue"}) {
                c_.execute(QStringLiteral("Update ") + chq + QStringLiteral(" Set %1 = (Select Max(M.%1) From N_MOJAVEZCHQ As M "
                                                                           "Inner Join N_MojavezTrans As T On (T.Serial = "
                                                                           "M.Serial) Where T.ChqPaySerial = ")
                                                                .arg(QLatin1String(column)) +
                           sqlNumber(serial) + QStringLiteral(" And M.ChqOrTaraf = 1 And M.ChqNo = ") + chq +
                           QStringLiteral(".ChqNo And IsNull(M.Joz, '') = IsNull(") + chq + QStringLiteral(".Joz, ''))"));
            }
        } else {
        c_.execute(QStringLiteral("Insert Into ") + chq +
                   QStringLiteral(" (IsChange, IDX, Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Havaleh, "
                                  "Tazmin, Joz, ChqNo, ChqValue, SarResidDate, ChqGetter, Des, BankCod, BankNam, "
                                  "ShobehCod, ShobehNam, AcountCod, ChqTypeCod, ArzCod, ArzNam, ArzCount, Nerkh, "
                                  "ArzCod2, ArzNam2, ArzCount2, Nerkh2, Telephone, Address) "
                                  "Select '0', N.IDX, N.Raj - 1, A.Koll, A.Moein, A.Tafsily, A.Tafsily2, "
                                  "A.ProjectCod, N.Des3, N.Des4, N.Joz, N.CodWhatDoc, ") +
                   amount + QStringLiteral(", ") + due +
                   QStringLiteral(", N.Des6, A.Des, N.WhatDoc2, B.BankNam, N.CodWhatDoc2, N.Des1, N.Des2, "
                                  "N.ManabehCod, AT.ArzCod, AT.ArzNam, AT.ArzCount, AT.Nerkh, AT.ArzCod2, "
                                  "AT.ArzNam2, AT.ArzCount2, AT.Nerkh2, N.NamWhatDoc2, N.Des5 "
                                  "From N_NaghdTrans As N ") +
                   source +
                   QStringLiteral(" Left Join N_Bank As B On (B.BankCod = N.WhatDoc2) Left Join N_ArzTrans As AT "
                                  "On (AT.IDX = N.IDX)") +
                   where + QStringLiteral(" And ") + chequeRows + QStringLiteral(" Order By N.Raj"));
        }
        c_.execute(QStringLiteral("Insert Into ") + taraf +
                   QStringLiteral(" (IDX, Raj, WhatDoc2, NamWhatDoc2, Koll, CodWhatDoc2, Moein, Tafsily, Tafsily2, "
                                  "ProjectCod, Joz, ChqNo, ChqValue, Des, ManabehCod, ArzCod, ArzCount, ArzNam, "
                                  "ArzCod2, ArzCount2, ArzNam2, Nerkh, Nerkh2) "
                                  "Select N.IDX, N.Raj - 1, N.WhatDoc2, N.NamWhatDoc2, A.Koll, N.CodWhatDoc2, "
                                  "A.Moein, A.Tafsily, A.Tafsily2, A.ProjectCod, N.Joz, N.CodWhatDoc, ") +
                   amount +
                   QStringLiteral(", A.Des, N.ManabehCod, AT.ArzCod, AT.ArzCount, AT.ArzNam, AT.ArzCod2, "
                                  "AT.ArzCount2, AT.ArzNam2, AT.Nerkh, AT.Nerkh2 From N_NaghdTrans As N ") +
                   source + QStringLiteral(" Left Join N_ArzTrans As AT On (AT.IDX = N.IDX)") + where +
                   QStringLiteral(" And Not (") + chequeRows + QStringLiteral(") Order By N.Raj"));
    }

    // A payment's cheque rows: an own leaf (Des5 holds its bank account) or a cheque passed on.
    void loadPaymentCheques(const QString& chq, const QString& amount, const QString& due, const QString& source,
                            const QString& where) {
        c_.execute(QStringLiteral("Insert Into ") + chq +
                   QStringLiteral(" (IsChange, IDX, Raj, ChqStateNam, AcountID, AcountCod, AcountNam, Koll, Moein, "
                                  "Tafsily, Tafsily2, ProjectCod, Joz, ChqNo, ChqValue, ChqGetter, Havaleh, Tazmin, "
                                  "SarResidDate, Des, ArzCod, ArzNam, Nerkh, ArzCount) "
                                  "Select '0', N.IDX, N.Raj - 1, Case When LTrim(RTrim(IsNull(N.Des5, ''))) = '' Then ") +
                   c_.text(kSpendName) + QStringLiteral(" Else ") + c_.text(kIssueName) +
                   QStringLiteral(" End, H.AcountID, Case When H.AcountID Is Null Then N.Des2 Else H.AcountCod End, "
                                  "B.BankNam + ' - ' + IsNull(N.Des1, ''), A.Koll, A.Moein, A.Tafsily, A.Tafsily2, "
                                  "A.ProjectCod, N.Joz, N.CodWhatDoc, ") +
                   amount + QStringLiteral(", N.Des6, N.Des3, N.Des4, ") + due +
                   QStringLiteral(", A.Des, AT.ArzCod, AT.ArzNam, AT.Nerkh, AT.ArzCount From N_NaghdTrans As N ") +
                   source +
                   QStringLiteral(" Left Join N_BankHesab As H On (Cast(H.AcountID As Varchar(20)) = LTrim(RTrim(N.Des5))) "
                                  "Left Join N_Bank As B On (B.BankCod = N.WhatDoc2) Left Join N_ArzTrans As AT On "
                                  "(AT.IDX = N.IDX)") +
                   where + QStringLiteral(" Order By N.Raj"));
    }

    void remove(qint64 serial, bool opening) {
        const Saved d = savedDocument(serial);
        if (!d.exists() || d.opening != opening) refuse(kind_.notThere);
        refuseMovedCheques(d, true);
        // The invoices its cheques paid owe that again.
        if (!kind_.payment) cutLinksOfRemovedCheques(serial, {});
        deleteSaved(serial, d);
    }

    Connection& c_;
    const DocumentKind& kind_;
    QString mode_;
    QStringList values_;
    qint64 ownSerial_ = 0;  // the saved document a save replaces
};

// sp_N_Create_LastChqAction(target, up to date, with opening cheques): the latest action row of
// every cheque into the ## table `target` (made anew): IDX, WhatDoc, ChqNo, Joz, SanadDate,
// CodWhatDoc, Serial. An empty date takes every row; 'FALSE' leaves out the cheques recorded as
// opening cheques (N_ChqFirst, ChqOrTaraf 1).
tr::db::ExecResult createLastChequeAction(Connection& c, const Args& args) {
    if (args.size() != 3) {
        throw DatabaseError(QStringLiteral("sp_N_Create_LastChqAction expects 3 arguments, got %1").arg(args.size()));
    }
    const QString target = validWorkTable(args[0].toString().trimmed(), QStringLiteral("a last-action table"));
    const QString upTo = args[1].toString().trimmed();
    const bool withOpening = args[2].toString().trimmed().compare(QLatin1String("FALSE"), Qt::CaseInsensitive) != 0;
    if (!firstColumn(c, QStringLiteral("Select Object_Id('tempdb..") + target + QStringLiteral("')")).isNull())
        c.execute(QStringLiteral("Drop Table ") + target);
    QString history = tr::instruments::latestRowsQuery(
        tr::instruments::chequeHistory(),
        QStringLiteral("L.IDX, L.WhatDoc, L.ChqNo, L.Joz, L.SanadDate, L.CodWhatDoc, L.Serial Into ") + target, {}, {},
        tr::instruments::Reach::Every);
    if (!upTo.isEmpty()) {
        // The latest row up to the date: the history is read as it stood then.
        history = QStringLiteral("Select L.IDX, L.WhatDoc, L.ChqNo, L.Joz, L.SanadDate, L.CodWhatDoc, L.Serial "
                                 "Into ") +
                  target +
                  QStringLiteral(" From N_ChqLastTrans As L Where L.IDX = (Select Max(M.IDX) From N_ChqLastTrans "
                                 "As M Where M.ChqNo = L.ChqNo And IsNull(M.Joz, '') = IsNull(L.Joz, '') And "
                                 "M.SanadDate <= ") +
                  c.text(validDate(upTo)) + QStringLiteral(")");
    }
    if (!withOpening) {
        history += QStringLiteral(" And Not Exists (Select * From N_ChqFirst As F Where F.ChqOrTaraf = 1 And "
                                  "F.ChqNo = L.ChqNo And IsNull(F.Joz, '') = IsNull(L.Joz, ''))");
    }
    c.execute(history);
    return {};
}

}  // namespace


QString receivedChequeTitle() {
    return receivedDocument().title;
}

std::vector<ProcedureDefinition> chequeDocumentProcedures() {
    const Procedure received = [](Connection& c, const Args& args) {
        return ChequeDocumentCall(c, args, receivedDocument()).run();
    };
    const Procedure payment = [](Connection& c, const Args& args) {
        return ChequeDocumentCall(c, args, paymentDocument()).run();
    };
    return {
        {QStringLiteral("sp_N_Asnad_Trans_ChqGet"), received},
        {QStringLiteral("sp_N_Asnad_Trans_ChqGet_Arzi"), received},
        {QStringLiteral("sp_N_Asnad_Trans_ChqPay"), payment},
        {QStringLiteral("sp_N_Asnad_Trans_ChqPay_Arzi"), payment},
        {QStringLiteral("sp_N_Create_LastChqAction"), createLastChequeAction},
    };
}

}  // namespace tr::procedures
