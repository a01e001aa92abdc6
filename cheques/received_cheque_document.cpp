#include "cheques/received_cheque_document.h"

#include "common/db/query_helpers.h"
#include "common/persian/amount.h"
#include "common/persian/persian_date.h"
#include "instruments/cheque_receipt_rule.h"
#include "instruments/cheque_work_tables.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

}  // namespace

const QString ReceivedChequeDocument::kTitle = tr::vouchers::receivedChequeKind().title;
const QString ReceivedChequeDocument::kFormKey = tr::vouchers::receivedChequeKind().formKey;
const QString ReceivedChequeDocument::kKind = tr::vouchers::receivedChequeKind().code;

const ChequeDocumentSide& ReceivedChequeDocument::receivedSide() {
    static const ChequeDocumentSide side{tr::vouchers::receivedChequeKind(),
                                         QStringLiteral("_Chq"),
                                         tr::instruments::chequeWorkTableColumns(),
                                         tr::currency::Screen::ReceivedCheque,
                                         QStringLiteral("دريافت چك"),
                                         QStringLiteral("دريافت چک - چک اول دوره"),
                                         QStringLiteral("اين شماره دريافت چک در دسترس نمي باشد"),
                                         QStringLiteral("دريافتي"),
                                         /*invoices=*/true,
                                         /*payment=*/false};
    return side;
}

ReceivedChequeDocument::ReceivedChequeDocument(const tr::Services& services)
    : ChequeDocument(services, receivedSide()), settlement_(std::make_unique<ChequeSettlement>(*this)) {}

ReceivedChequeDocument::~ReceivedChequeDocument() = default;

void ReceivedChequeDocument::alsoOnSave(bool /*opening*/) {
    settlement_->writeOnSave();
}

void ReceivedChequeDocument::started() {
    settlement_->discardPending();
}

void ReceivedChequeDocument::opened() {
    settlement_->discardPending();
}

void ReceivedChequeDocument::alsoOnDelete() {
    // The procedure has cut the document's links and given their invoices back what they paid.
    settlement_->discardPending();
}

bool ReceivedChequeDocument::checkCheque(tr::db::Query& row) {
    tr::db::Connection& c = connection();
    const QString number = row.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
    const QString series = row.FieldByName(QStringLiteral("Joz")).AsString().trimmed();
    valueCurrencyCheque(row);
    const double value = row.FieldByName(QStringLiteral("ChqValue")).AsFloat();
    const QString due = tr::persian::latinDigits(row.FieldByName(QStringLiteral("SarResidDate")).AsString().trimmed());
    if (number.isEmpty()) return refuse(QStringLiteral("شماره چك وارد نشده است."));
    if (!(value > 0)) return refuse(QStringLiteral("مبلغ چك وارد نشده است."));
    if (due.isEmpty() || due == QLatin1String("//")) return refuse(QStringLiteral("تاريخ سررسيد وارد نشده است."));
    if (!tr::persian::isValidDate(due)) return refuse(QStringLiteral("تاريخ سررسيد معتبر نميباشد."));
    // The same cheque twice in the document.
    if (twiceInDocument(row, number, series)) return refuse(QStringLiteral("شماره چك تكراري ميباشد."));
    // Received before (outside this document), as the procedure refuses it.
    const QString refusal = tr::instruments::chequeReceiptRefusal(
        c, number, series, header_.date, mode_ == DocumentMode::Edit ? header_.serial.toLongLong() : 0);
    if (!refusal.isEmpty()) return refuse(refusal);
    if (!checkInvoiceAllocation(row, number, series)) return false;
    // A drawer whose cheque came back before: a warning, the row still posts.
    const QString account = row.FieldByName(QStringLiteral("AcountCod")).AsString().trimmed();
    if (!account.isEmpty()) {
        const QVariant bounced = firstColumn(
            c, QStringLiteral("Select Top 1 N.CodWhatDoc From N_NaghdTrans As N Where N.WhatDoc = ") + kindSql_ + QStringLiteral(" And N.Des2 = ") +
                   c.text(account) +
                   QStringLiteral(" And Exists (Select * From N_ChqLastTrans As L Where L.WhatDoc = '78' And L.ChqNo = "
                                  "N.CodWhatDoc And IsNull(L.Joz, '') = IsNull(N.Joz, ''))"));
        if (!bounced.isNull()) {
            messages_.show(QStringLiteral(" اين حساب جاري با شماره چک  ") + trimmed(bounced) +
                               QStringLiteral(" قبلا برگشت داده شده است. "),
                           QStringLiteral("1ER"));
        }
    }
    completeCheque(row);
    return true;
}

// A cheque assigned to sales invoices stays an ordinary cheque worth at least what it pays.
bool ReceivedChequeDocument::checkInvoiceAllocation(tr::db::Query& row, const QString& number, const QString& series) {
    const ChequeAllocation assigned = settlement_->allocationOf(number, series);
    if (assigned.invoices == 0) return true;
    if (row.FieldByName(QStringLiteral("Tazmin")).AsString().trimmed() == QStringLiteral("ض")) {
        messages_.show(QStringLiteral("چک به صورتحساب اختصاص داده شده و نميتوان آن را تبديل به چک تضميني کرد"),
                       QStringLiteral("1ER"), QStringLiteral("   خطا..."));
        return false;
    }
    if (row.FieldByName(QStringLiteral("ChqValue")).AsFloat() < assigned.total - 0.005) {
        return refuse(QStringLiteral("مبلغ چک نميتواند کوچکتر از مجموع مبالغ اختصاص داده شده به صورتحساب ها ( ") +
                      tr::persian::formatAmount(assigned.total) + QStringLiteral(") باشد "));
    }
    return true;
}

}  // namespace tr::cheques
