#include "cheques/permit_document.h"

#include <cmath>

#include "common/db/query_helpers.h"
#include "common/persian/amount.h"
#include "instruments/cheque_work_tables.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::Query;

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

const tr::vouchers::TreasuryDocumentKind& permitKind() {
    static const tr::vouchers::TreasuryDocumentKind kind = [] {
        tr::vouchers::TreasuryDocumentKind k;
        // No treasury kind: a permit has no row in the book's treasury tables.
        k.title = QStringLiteral("صدور مجوز پرداخت چك");
        k.procedure = QStringLiteral("sp_N_Asnad_Trans_ChqMojavez");
        k.hasCurrencyTwin = false;
        k.treasurySide = tr::vouchers::Side::Bes;
        k.treasuryObject = tr::vouchers::TreasuryObject::BankAccount;
        k.formKey = QStringLiteral("N_A_CHQMOJAVEZ_");
        return k;
    }();
    return kind;
}

}  // namespace

const QString PermitDocument::kFormKey = QStringLiteral("N_A_CHQMOJAVEZ_");

const ChequeDocumentSide& PermitDocument::permitSide() {
    static const ChequeDocumentSide side{permitKind(),
                                         QStringLiteral("Bed"),
                                         tr::instruments::paymentChequeWorkTableColumns(),
                                         tr::currency::Screen::IssuedCheque,
                                         QStringLiteral("مجوز پرداخت چك"),
                                         QStringLiteral("مجوز پرداخت چك"),
                                         QStringLiteral("اين شماره مجوز پرداخت چك در دسترس نمي باشد"),
                                         QStringLiteral("پرداختي"),
                                         /*invoices=*/false,
                                         /*payment=*/true,
                                         /*ledger=*/false};
    return side;
}

QString PermitDocument::componentColumns() {
    return QStringLiteral("PMojavezCod Varchar(5) Null, PMojavezNam NVarchar(100) Null, Sign Varchar(1) Null, "
                          "Nerkh Float Null, FactValue Float Null");
}

PermitDocument::PermitDocument(const tr::Services& services)
    : ChequePaymentDocument(services, permitSide()),
      components_(*services.database, QStringLiteral("##") + prefix() + QStringLiteral("_Fact")) {
    tr::db::Connection& c = connection();
    if (tr::db::objectExistsInTempdb(c, components_.name())) c.execute(QStringLiteral("Drop Table ") + components_.name());
    c.execute(QStringLiteral("Create Table ") + components_.name() + QStringLiteral(" (") + componentColumns() +
              QLatin1Char(')'));
}

// The payment's refusals as a permit words them.
QString PermitDocument::wordRefusal(const QString& refusal) const {
    if (refusal == QStringLiteral("چک هاي تضميني را نمي توان انتخاب کرد"))
        return QStringLiteral("چك تضميني دريافتي را نميتوانيد خرج كنيد.");
    if (refusal.startsWith(QStringLiteral("تركيب سري و شماره چك")))
        return QStringLiteral("شماره چك متعلق به حساب بانكي انتخاب شده نميباشد.");
    if (refusal.startsWith(QStringLiteral("شماره چك ")) && refusal.endsWith(QStringLiteral("ابطال شده است.")))
        return QStringLiteral("اين چك ابطال شده است !");
    return refusal;
}

bool PermitDocument::savedSerial(qint64 serial) {
    return firstColumn(connection(), QStringLiteral("Select Count(*) From N_MojavezTrans Where Serial = ") +
                                         tr::db::sqlNumber(serial))
               .toLongLong() > 0;
}

// What a new permit shows; the serial it is saved under is taken again inside its save.
QString PermitDocument::newSerial() {
    return trimmed(firstColumn(connection(), QStringLiteral("Select IsNull(Max(Serial), 0) + 1 From N_MojavezTrans")));
}

// Under the save's lock, so two desks saving at once never share a serial; the components are
// spread over the cheques as they now stand.
void PermitDocument::beforeCall(bool isNew) {
    if (isNew) header_.serial = newSerial();
    spreadComponents();
}

void PermitDocument::readSavedHeader() {
    const Query saved = openQuery(
        connection(), QStringLiteral("Select SanadDate, User_Name, IsNull(ModirAmelDate, ''), IsNull(ModirMaleDate, '') From "
                                     "N_MojavezTrans Where Serial = ") +
                          tr::db::sqlNumber(header_.serial.toLongLong()));
    header_.voucherNo.clear();
    approvalNote_.clear();
    if (saved.IsEmpty()) return;
    header_.date = trimmed(saved.value(0, 0));
    header_.userName = trimmed(saved.value(0, 1));
    if (!trimmed(saved.value(0, 2)).isEmpty())
        approvalNote_ = QStringLiteral("(سند توسط مديرعامل تاييد شده است)");
    else if (!trimmed(saved.value(0, 3)).isEmpty())
        approvalNote_ = QStringLiteral("(سند توسط مديرمالي تاييد شده است)");
}

void PermitDocument::started() {
    ChequePaymentDocument::started();
    approvalNote_.clear();
    connection().execute(QStringLiteral("Delete From ") + components_.name());
}

QString PermitDocument::noSaveRightMessage(bool /*opening*/) const {
    return mode() == DocumentMode::New ? QStringLiteral("کاربر مجاز به ثبت مجوز پرداخت چك نميباشد")
                                       : QStringLiteral("کاربر مجاز به ويرايش مجوز پرداخت چك نميباشد");
}

// Why the loaded permit may no longer change, in the order the managers' steps come: a payment
// used it, the managing director or the finance manager approved it, either voided it.
static QString lockedRefusal(tr::db::Connection& c, const QString& serial) {
    const Query p = openQuery(c, QStringLiteral("Select ChqPaySerial, IsNull(ModirAmelDate, ''), IsNull(ModirMaleDate, ''), "
                                                "IsNull(ModirAmelAbtalDate, ''), IsNull(ModirMaleAbtalDate, '') From "
                                                "N_MojavezTrans Where Serial = ") +
                                     tr::db::sqlNumber(serial.toLongLong()));
    if (p.IsEmpty()) return {};
    if (p.value(0, 0).toLongLong() != 0) return QStringLiteral("سريال مجوز دستور پرداخت به سريال پرداخت چك تبديل شده است.");
    if (!trimmed(p.value(0, 1)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير عامل تاييد شده است.");
    if (!trimmed(p.value(0, 2)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي تاييد شده است.");
    if (!trimmed(p.value(0, 3)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير عامل ابطال شده است.");
    if (!trimmed(p.value(0, 4)).isEmpty()) return QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي ابطال شده است.");
    return {};
}

bool PermitDocument::checkBeforeSave(bool opening) {
    if (opening) return false;  // a permit has no opening cheques
    if (mode() == DocumentMode::Edit) {
        const QString locked = lockedRefusal(connection(), header_.serial);
        if (!locked.isEmpty()) return refuse(locked);
    }
    return checkRowsBeforeSave();
}

bool PermitDocument::checkBeforeDelete() {
    const QString locked = lockedRefusal(connection(), header_.serial);
    return locked.isEmpty() || refuse(locked);
}

void PermitDocument::spreadComponents() {
    tr::db::Connection& c = connection();
    const QString table = components_.name();
    if (firstColumn(c, QStringLiteral("Select Count(*) From ") + table + QStringLiteral(" Where IsNull(FactValue, 0) <> 0"))
            .toLongLong() == 0)
        return;
    const double total =
        firstColumn(c, QStringLiteral("Select IsNull(Sum(Case When Sign = '-' Then -FactValue Else FactValue End), 0) From ") +
                           table)
            .toDouble();
    const Query rows =
        openQuery(c, QStringLiteral("Select ChqNo, IsNull(Joz, ''), ChqValue From ") + chequeTable() + QStringLiteral(" Order By Raj"));
    double all = 0;
    for (int i = 0; i < rows.RecordCount(); ++i) all += rows.value(i, 2).toDouble();
    if (!(all > 0)) return;
    double given = 0;
    for (int i = 0; i < rows.RecordCount(); ++i) {
        const bool last = i == rows.RecordCount() - 1;
        const double share = last ? total - given : tr::persian::roundAmount(total * rows.value(i, 2).toDouble() / all);
        given += share;
        c.execute(QStringLiteral("Update ") + chequeTable() + QStringLiteral(" Set FactValue = ") + tr::db::sqlNumber(share) +
                  QStringLiteral(" Where ChqNo = ") + c.text(trimmed(rows.value(i, 0))) +
                  QStringLiteral(" And IsNull(Joz, '') = ") + c.text(trimmed(rows.value(i, 1))));
    }
}

}  // namespace tr::cheques
