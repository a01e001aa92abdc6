#include "cheques/cheque_payment_document.h"

#include <QSet>

#include "cheques/issued_actions.h"
#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/persian/persian_date.h"
#include "instruments/cheque_issue_rule.h"
#include "instruments/cheque_work_tables.h"
#include "vouchers/treasury_log.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::Query;

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

QString field(Query& row, const char* name) {
    return row.FieldByName(QString::fromLatin1(name)).AsString().trimmed();
}

// The refusals of the leaf's book and account, which come before a leaf typed twice.
bool bookRefusal(const QString& refusal) {
    return refusal == QStringLiteral("شماره حساب ثبت نشده است.") || refusal == QStringLiteral("شماره چك ثبت نشده است.") ||
           refusal.startsWith(QStringLiteral("تركيب سري و شماره چك"));
}

}  // namespace

const QString ChequePaymentDocument::kIssue = QStringLiteral("صدور چك");
const QString ChequePaymentDocument::kSpend = QStringLiteral("خرج چك");

const ChequeDocumentSide& ChequePaymentDocument::paymentSide() {
    static const ChequeDocumentSide side{tr::vouchers::issuedChequeKind(),
                                         QStringLiteral("Bed"),
                                         tr::instruments::paymentChequeWorkTableColumns(),
                                         tr::currency::Screen::IssuedCheque,
                                         QStringLiteral("پرداخت چك"),
                                         QStringLiteral("پرداخت چک - چک اول دوره"),
                                         QStringLiteral("اين شماره پرداخت چک در دسترس نمي باشد"),
                                         QStringLiteral("پرداختي"),
                                         /*invoices=*/false,
                                         /*payment=*/true};
    return side;
}

ChequePaymentDocument::ChequePaymentDocument(const tr::Services& services) : ChequeDocument(services, paymentSide()) {}

ChequePaymentDocument::ChequePaymentDocument(const tr::Services& services, const ChequeDocumentSide& side)
    : ChequeDocument(services, side) {}

qint64 ChequePaymentDocument::ownSerial() const {
    return mode() == DocumentMode::Edit ? header_.serial.toLongLong() : 0;
}

void ChequePaymentDocument::startCheque(Query& row) {
    row.FieldByName(QStringLiteral("ChqStateNam")).SetValue(kIssue);
}

bool ChequePaymentDocument::spent(Query& row) const {
    return field(row, "ChqStateNam").contains(QStringLiteral("خرج"));
}

bool ChequePaymentDocument::toggleChequeState() {
    Query& row = cheques();
    if (row.state() == Query::State::Browse) {
        if (row.IsEmpty()) return false;
        row.Edit();
    }
    const bool toSpend = !spent(row);
    row.FieldByName(QStringLiteral("ChqStateNam")).SetValue(toSpend ? kSpend : kIssue);
    // What belonged to the other kind of row no longer applies.
    for (const char* name : {"AcountID", "AcountCod", "AcountNam", "Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"})
        row.FieldByName(QString::fromLatin1(name)).SetValue(QVariant());
    return true;
}

bool ChequePaymentDocument::setBankAccount(qint64 accountId) {
    tr::db::Connection& c = connection();
    const Query bank = openQuery(
        c, QStringLiteral("Select H.AcountCod, IsNull(B.BankNam, '') + ' - ' + IsNull(S.ShobehNam, ''), H.AKoll, H.AMoein, "
                          "H.ATafsily, H.ATafsily2, H.AProjectCod From N_BankHesab As H Left Join N_Bank As B On "
                          "(B.BankCod = H.BankCod) Left Join N_Shoab As S On (S.BankCod = H.BankCod And S.ShobehCod = "
                          "H.ShobehCod) Where H.AcountID = ") +
               tr::db::sqlNumber(accountId));
    if (bank.IsEmpty()) return refuse(QStringLiteral("شماره حساب ثبت نشده است."));
    Query& row = cheques();
    if (row.state() == Query::State::Browse) {
        if (row.IsEmpty()) return false;
        row.Edit();
    }
    row.FieldByName(QStringLiteral("AcountID")).SetValue(accountId);
    row.FieldByName(QStringLiteral("AcountCod")).SetValue(trimmed(bank.value(0, 0)));
    row.FieldByName(QStringLiteral("AcountNam")).SetValue(trimmed(bank.value(0, 1)));
    const char* levels[] = {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"};
    for (int i = 0; i < 5; ++i) row.FieldByName(QString::fromLatin1(levels[i])).SetValue(trimmed(bank.value(0, 2 + i)));
    return true;
}

bool ChequePaymentDocument::chooseBankAccount() {
    if (!services().pickList) return false;
    const std::optional<QVariantMap> chosen = services().pickList->pick(
        QStringLiteral("انتخاب حساب بانكي"),
        QStringLiteral("Select H.AcountID, H.AcountCod, IsNull(B.BankNam, '') + ' - ' + IsNull(S.ShobehNam, '') As "
                       "AcountNam From N_BankHesab As H Left Join N_Bank As B On (B.BankCod = H.BankCod) Left Join "
                       "N_Shoab As S On (S.BankCod = H.BankCod And S.ShobehCod = H.ShobehCod) Order By H.AcountID"),
        {{QStringLiteral("AcountCod"), QStringLiteral("شماره حساب"), 120},
         {QStringLiteral("AcountNam"), QStringLiteral("بانك"), 220}},
        0);
    return chosen && setBankAccount(chosen->value(QStringLiteral("AcountID")).toLongLong());
}

bool ChequePaymentDocument::spendCheque(const QString& number, const QString& series) {
    tr::db::Connection& c = connection();
    const std::optional<tr::instruments::ChequeInHand> h = tr::instruments::chequeInHand(c, number, series, ownSerial());
    const QString refusal = wordRefusal(tr::instruments::spentChequeRefusal(h, h ? h->value : 0, header_.date));
    if (!refusal.isEmpty()) return refuse(refusal);
    Query& row = cheques();
    if (row.state() == Query::State::Browse) {
        appendCheque();
        if (row.state() == Query::State::Browse) return false;  // the row before it was refused
    }
    row.FieldByName(QStringLiteral("ChqStateNam")).SetValue(kSpend);
    row.FieldByName(QStringLiteral("ChqNo")).SetValue(number.trimmed());
    row.FieldByName(QStringLiteral("Joz")).SetValue(series.trimmed());
    row.FieldByName(QStringLiteral("ChqValue")).SetValue(h->value);
    row.FieldByName(QStringLiteral("AcountCod")).SetValue(h->drawerAccount);
    row.FieldByName(QStringLiteral("Tazmin")).SetValue(h->guarantee);
    row.FieldByName(QStringLiteral("Havaleh")).SetValue(h->payableToOrder);
    const QString due = trimmed(firstColumn(
        c, QStringLiteral("Select Max(AtfDate) From Asnad Where TypeSys = 'N' And WhatDoc = '71' And LTrim(RTrim(AtfCh)) = ") +
               c.text(number.trimmed()) + QStringLiteral(" And LTrim(RTrim(IsNull(DocToDate, ''))) = ") +
               c.text(series.trimmed())));
    // A cheque carried over from the last period has no receipt voucher: its opening row says.
    const auto fromOpening = [&](const char* column) {
        return trimmed(firstColumn(c, QStringLiteral("Select Max(") + QLatin1String(column) +
                                          QStringLiteral(") From N_ChqFirst Where WhatDoc = '71' And ChqOrTaraf = 1 And "
                                                         "LTrim(RTrim(ChqNo)) = ") +
                                          c.text(number.trimmed()) + QStringLiteral(" And LTrim(RTrim(IsNull(Joz, ''))) = ") +
                                          c.text(series.trimmed())));
    };
    const QString dueDate = due.isEmpty() && h->opening ? fromOpening("SarResidDate") : due;
    if (!dueDate.isEmpty()) row.FieldByName(QStringLiteral("SarResidDate")).SetValue(dueDate);
    // Its receipt's description until the user writes the payment's own.
    if (field(row, "Des").isEmpty()) {
        QString des = trimmed(firstColumn(
            c, QStringLiteral("Select Max(Des) From Asnad Where TypeSys = 'N' And WhatDoc = '71' And Bed > 0 And "
                              "LTrim(RTrim(AtfCh)) = ") +
                   c.text(number.trimmed()) + QStringLiteral(" And LTrim(RTrim(IsNull(DocToDate, ''))) = ") +
                   c.text(series.trimmed())));
        if (des.isEmpty() && h->opening) des = fromOpening("Des");
        row.FieldByName(QStringLiteral("Des")).SetValue(des);
    }
    const QString levels[] = {h->koll, h->moein, h->tafsily, h->tafsily2, h->projectCod};
    const char* names[] = {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"};
    for (int i = 0; i < 5; ++i) row.FieldByName(QString::fromLatin1(names[i])).SetValue(levels[i]);
    return true;
}

std::optional<double> ChequePaymentDocument::bankBalance() {
    Query& row = cheques();
    if (!row.Active() || (row.IsEmpty() && row.state() != Query::State::Insert)) return std::nullopt;
    const qint64 account = row.FieldByName(QStringLiteral("AcountID")).AsString().toLongLong();
    if (account <= 0) return std::nullopt;
    tr::db::Connection& c = connection();
    return firstColumn(c, QStringLiteral("Exec sp_N_Report_Acount ") + tr::db::sqlNumber(account) + QStringLiteral(", ") +
                              c.text(header_.date))
        .toDouble();
}

bool ChequePaymentDocument::checkCheque(Query& row) {
    tr::db::Connection& c = connection();
    valueCurrencyCheque(row);
    const QString number = field(row, "ChqNo");
    const QString series = field(row, "Joz");
    const QString due = tr::persian::latinDigits(field(row, "SarResidDate"));
    const double value = row.FieldByName(QStringLiteral("ChqValue")).AsFloat();
    // 1. Every field a cheque needs.
    if (field(row, "ChqStateNam").isEmpty()) return refuse(QStringLiteral("وضعيت چك وارد نشده است."));
    if (number.isEmpty()) return refuse(QStringLiteral("شماره چك وارد نشده است."));
    if (!(value > 0)) return refuse(QStringLiteral("مبلغ چك وارد نشده است."));
    if (due.isEmpty() || due == QLatin1String("//")) return refuse(QStringLiteral("تاريخ سررسيد وارد نشده است."));
    if (!tr::persian::isValidDate(due)) return refuse(QStringLiteral("تاريخ سررسيد معتبر نميباشد."));
    if (field(row, "Des").isEmpty()) return refuse(QStringLiteral("شرح سند وارد نشده است"));
    if (field(row, "ChqGetter").isEmpty()) return refuse(QStringLiteral("در وجه وارد نشده است."));
    const qint64 own = ownSerial();
    if (spent(row)) {
        // 3. A received cheque passed on, at its amount, after its latest action.
        if (twiceInDocument(row, number, series)) return refuse(QStringLiteral("شماره چك تکراري ميباشد."));
        const auto h = tr::instruments::chequeInHand(c, number, series, own);
        const QString refusal = wordRefusal(tr::instruments::spentChequeRefusal(h, value, header_.date));
        if (!refusal.isEmpty()) return refuse(refusal);
        if (h) {
            const QString levels[] = {h->koll, h->moein, h->tafsily, h->tafsily2, h->projectCod};
            const char* names[] = {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"};
            for (int i = 0; i < 5; ++i) row.FieldByName(QString::fromLatin1(names[i])).SetValue(levels[i]);
        }
    } else {
        // 2. Our own leaf: its account, its book, not typed twice, issued, moved or voided.
        const qint64 account = row.FieldByName(QStringLiteral("AcountID")).AsString().toLongLong();
        if (account <= 0) return refuse(QStringLiteral("شماره حساب وارد نشده است."));
        const QString refusal = tr::instruments::ownLeafRefusal(c, account, number, series, own);
        if (bookRefusal(refusal)) return refuse(wordRefusal(refusal));
        if (twiceInDocument(row, number, series)) return refuse(QStringLiteral("شماره چك تکراري ميباشد."));
        if (!refusal.isEmpty()) return refuse(wordRefusal(refusal));
        if (field(row, "Koll").isEmpty() && !setBankAccount(account)) return false;
    }
    completeCheque(row);
    return true;
}

bool ChequePaymentDocument::checkBeforeSave(bool opening) {
    // The permit first: without it nothing else matters.
    if (opening) {
        if (!permit_.isEmpty()) return refuse(QStringLiteral("چكهاي اول دوره نياز به مجوز پرداخت چك ندارند."));
    } else if (!permit_.isEmpty() || permitsRequired()) {
        if (permit_.isEmpty()) return refuse(QStringLiteral("صدور چك فقط با صدور مجوز امكان پذير ميباشد."));
        QString approved;
        const QString refusal = permitRefusal(permit_, &approved);
        if (!refusal.isEmpty()) return refuse(refusal);
        if (tr::persian::latinDigits(header_.date) <= approved)
            return refuse(QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ تاييد مجوز پرداخت چك (") + approved +
                          QStringLiteral(") باشد."));
    }
    return checkRowsBeforeSave();
}

bool ChequePaymentDocument::checkRowsBeforeSave() {
    const Query& rows = cheques();
    const int numberColumn = rows.fieldIndex(QStringLiteral("ChqNo"));
    const int dueColumn = rows.fieldIndex(QStringLiteral("SarResidDate"));
    for (int i = 0; i < rows.RecordCount(); ++i) {
        if (trimmed(rows.value(i, numberColumn)).isEmpty())
            return refuse(QStringLiteral("شماره چك براي برخي از رديفها وارد نشده است."));
        if (trimmed(rows.value(i, dueColumn)).isEmpty())
            return refuse(QStringLiteral("تاريخ سررسيد براي چك شماره ") + trimmed(rows.value(i, numberColumn)) +
                          QStringLiteral(" وارد نشده است."));
    }
    return true;
}

bool ChequePaymentDocument::withdrawDue() {
    if (mode() != DocumentMode::Edit) return false;
    // Our own leaves of this document due on its date.
    QSet<QString> due;
    const Query& rows = cheques();
    const int number = rows.fieldIndex(QStringLiteral("ChqNo"));
    const int series = rows.fieldIndex(QStringLiteral("Joz"));
    const int dueDate = rows.fieldIndex(QStringLiteral("SarResidDate"));
    const int state = rows.fieldIndex(QStringLiteral("ChqStateNam"));
    for (int i = 0; i < rows.RecordCount(); ++i) {
        if (trimmed(rows.value(i, state)).contains(QStringLiteral("خرج"))) continue;
        if (tr::persian::latinDigits(trimmed(rows.value(i, dueDate))) != header_.date) continue;
        due.insert(trimmed(rows.value(i, number)) + QLatin1Char('_') + trimmed(rows.value(i, series)));
    }
    if (due.isEmpty()) return true;
    // The issued tab's list, its withdrawal chosen on those rows and dated the document's date.
    IssuedChequeActions list(services());
    list.fill();
    Query& listed = list.rows();
    int chosen = 0;
    for (listed.First(); !listed.Eof(); listed.Next()) {
        const QString key = field(listed, "ChqNo") + QLatin1Char('_') + field(listed, "Joz");
        if (!due.contains(key) || field(listed, "LastWhatDoc") != side_.kind.code) continue;
        if (!list.chooseAction(QStringLiteral("برداشت چک")) || !list.setActionDate(header_.date)) return false;
        ++chosen;
    }
    return chosen == 0 || list.apply();
}

bool ChequePaymentDocument::permitsRequired() const {
    return tr::vouchers::treasuryOption(connection(), QStringLiteral("CHQ_MOJAVEZ"))
               .compare(QLatin1String("YES"), Qt::CaseInsensitive) == 0;
}

QString ChequePaymentDocument::permitRefusal(const QString& typed, QString* approved) {
    tr::db::Connection& c = connection();
    bool number = false;
    const qint64 serial = typed.trimmed().toLongLong(&number);
    const Query permit =
        number ? openQuery(c, QStringLiteral("Select ChqPaySerial, IsNull(ModirAmelDate, ''), IsNull(ModirAmelAbtalDate, ''), "
                                             "IsNull(ModirMaleAbtalDate, '') From N_MojavezTrans Where Serial = ") +
                                  tr::db::sqlNumber(serial))
               : Query();
    if (!number || permit.IsEmpty()) return QStringLiteral("دستور مجوز پرداختي با اين سريال ثبت نشده است.");
    const qint64 usedBy = permit.value(0, 0).toLongLong();
    if (usedBy != 0 && usedBy != ownSerial())
        return QStringLiteral("اين دستور مجوز پرداخت در سريال ") + QString::number(usedBy) +
               QStringLiteral(" پرداخت چك صادر شده است.");
    if (trimmed(permit.value(0, 1)).isEmpty()) return QStringLiteral("اين مجوز دستور پرداخت هنوز به تاييد مديرعامل نرسيده است.");
    if (!trimmed(permit.value(0, 2)).isEmpty()) return QStringLiteral("اين مجوز دستور پرداخت توسط مديرعامل ابطال شده است.");
    if (!trimmed(permit.value(0, 3)).isEmpty()) return QStringLiteral("اين مجوز دستور پرداخت توسط مديرمالي ابطال شده است.");
    if (approved) *approved = trimmed(permit.value(0, 1));
    return {};
}

bool ChequePaymentDocument::setPermit(const QString& typed) {
    const QString serial = typed.trimmed();
    if (serial.isEmpty()) {
        permit_.clear();
        return true;
    }
    if (serial == permit_) return true;
    const QString refusal = permitRefusal(serial);
    if (!refusal.isEmpty()) return refuse(refusal);
    // The permit's cheques and counterparty lines replace what the grids held.
    if (cheques().state() != Query::State::Browse) cheques().Cancel();
    if (counterparties().state() != Query::State::Browse) counterparties().Cancel();
    tr::db::Connection& c = connection();
    c.execute(QStringLiteral("Exec ") + side_.kind.procedure + QStringLiteral(" 'MOJAVEZ->TRANS', ") + c.text(prefix()) +
              QStringLiteral(", ") + c.text(QString::number(serial.toLongLong())) + QStringLiteral(", '', '', ''"));
    permit_ = QString::number(serial.toLongLong());
    cheques().Open();
    counterparties().Open();
    return true;
}

void ChequePaymentDocument::readSavedHeader() {
    ChequeDocument::readSavedHeader();
    permit_ = trimmed(firstColumn(connection(), QStringLiteral("Select Min(Serial) From N_MojavezTrans Where ChqPaySerial = ") +
                                                    tr::db::sqlNumber(header_.serial.toLongLong())));
}

void ChequePaymentDocument::started() {
    permit_.clear();
}

void ChequePaymentDocument::alsoOnSave(bool opening) {
    tr::db::Connection& c = connection();
    const QString serial = tr::db::sqlNumber(header_.serial.toLongLong());
    // A permit this payment no longer carries out is free again.
    c.execute(QStringLiteral("Update N_MojavezTrans Set ChqPaySerial = 0 Where ChqPaySerial = ") + serial +
              (permit_.isEmpty() || opening ? QString() : QStringLiteral(" And Serial <> ") + tr::db::sqlNumber(permit_.toLongLong())));
    if (permit_.isEmpty() || opening) return;
    // Another desk may have used it since the checks: read again under the save's lock.
    const QString refusal = permitRefusal(permit_);
    if (!refusal.isEmpty()) throw tr::db::DatabaseError(refusal);
    c.execute(QStringLiteral("Update N_MojavezTrans Set ChqPaySerial = ") + serial + QStringLiteral(" Where Serial = ") +
              tr::db::sqlNumber(permit_.toLongLong()));
}

void ChequePaymentDocument::alsoOnDelete() {
    // The payment permit this document carried out may be carried out again.
    connection().execute(QStringLiteral("update N_MojavezTrans set ChqPaySerial = 0 where ChqPaySerial = ") +
                         tr::db::sqlNumber(header_.serial.trimmed().toLongLong()));
}

}  // namespace tr::cheques
