#include "cheques/permit_approval.h"

#include <algorithm>

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/transaction.h"
#include "common/persian/persian_date.h"
#include "vouchers/document_session.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::Query;

QString trimmed(const QVariant& v) {
    return v.isNull() ? QString() : v.toString().trimmed();
}

const QString kUsed = QStringLiteral("چك/چكهاي مجوز پرداخت صادر شده است.");
const QString kDirectorApproved = QStringLiteral("مجوز پرداخت چك توسط مديرعامل تاييد شده است.");

}  // namespace

const QString PermitApproval::kFinanceManagerRight = QStringLiteral("N_A_MOJAVEZ_TAED_MALY(Y)");
const QString PermitApproval::kManagingDirectorRight = QStringLiteral("N_A_MOJAVEZ_TAED_AMEL(Y)");
const QString PermitApproval::kTicked = QStringLiteral("ض");

PermitApproval::PermitApproval(const tr::Services& services)
    : services_(services),
      messages_(services.dialog),
      table_(*services.database, tr::vouchers::freeWorkTableName(*services.database->Connection, QStringLiteral("MOJAVEZTAED"),
                                                                 services.global->sessionText)),
      rows_(services.database->Connection) {
    tr::db::Connection& c = *services_.database->Connection;
    // OwnDate and OwnAbtalDate keep the approver's dates as read, so a permit approved before
    // keeps its date when "تاييد" runs again.
    c.execute(QStringLiteral("Create Table ") + table_.name() +
              QStringLiteral(" (Serial Int Null, SanadDate Varchar(10) Null, sSelect NVarchar(1) Null, Abtal NVarchar(1) Null, "
                             "AbtalDate Varchar(10) Null, ModirMale NVarchar(1) Null, ModirMaleDate Varchar(10) Null, "
                             "ModirAmel NVarchar(1) Null, ModirAmelDate Varchar(10) Null, IsChqSodor NVarchar(1) Null, "
                             "ChqSerial Int Null, ChqDate Varchar(10) Null, sValue Float Null, OwnDate Varchar(10) Null, "
                             "OwnAbtalDate Varchar(10) Null)"));
    rows_.setSql(QStringLiteral("Select * From ") + table_.name() + QStringLiteral(" Order By Serial"));
    const QList<Approver> granted = roles();
    if (!granted.isEmpty()) approver_ = granted.first();
    date_ = tr::persian::defaultDocumentDate(services_.global->fiscalStart, services_.global->fiscalEnd);
}

QList<Approver> PermitApproval::roles() const {
    QList<Approver> out;
    if (services_.global->rights.contains(kFinanceManagerRight)) out << Approver::FinanceManager;
    if (services_.global->rights.contains(kManagingDirectorRight)) out << Approver::ManagingDirector;
    return out;
}

QString PermitApproval::roleName(Approver role) {
    return role == Approver::FinanceManager ? QStringLiteral("مدير مالي") : QStringLiteral("مدير عامل");
}

bool PermitApproval::setApprover(Approver role) {
    if (!roles().contains(role)) return false;
    approver_ = role;
    return true;
}

QString PermitApproval::approvalColumn() const {
    return approver_ == Approver::FinanceManager ? QStringLiteral("ModirMaleDate") : QStringLiteral("ModirAmelDate");
}

QString PermitApproval::voidColumn() const {
    return approver_ == Approver::FinanceManager ? QStringLiteral("ModirMaleAbtalDate") : QStringLiteral("ModirAmelAbtalDate");
}

bool PermitApproval::refuse(const QString& message) {
    messages_.show(message, QStringLiteral("1ER"));
    return false;
}

void PermitApproval::fill() {
    tr::db::Connection& c = *services_.database->Connection;
    c.execute(QStringLiteral("Delete From ") + table_.name());
    if (!mayApprove()) {
        rows_.Open();
        return;
    }
    const QString tick = c.text(kTicked);
    const auto flag = [&](const QString& column) {
        return QStringLiteral("Case When IsNull(T.") + column + QStringLiteral(", '') <> '' Then ") + tick +
               QStringLiteral(" Else '' End");
    };
    QString where = QStringLiteral(" Where 1 = 1");
    bool number = false;
    const qint64 from = filter_.fromSerial.trimmed().toLongLong(&number);
    if (number) where += QStringLiteral(" And T.Serial >= ") + tr::db::sqlNumber(from);
    const qint64 to = filter_.toSerial.trimmed().toLongLong(&number);
    if (number) where += QStringLiteral(" And T.Serial <= ") + tr::db::sqlNumber(to);
    if (!filter_.fromDate.trimmed().isEmpty())
        where += QStringLiteral(" And T.SanadDate >= ") + c.text(tr::persian::latinDigits(filter_.fromDate.trimmed()));
    if (!filter_.toDate.trimmed().isEmpty())
        where += QStringLiteral(" And T.SanadDate <= ") + c.text(tr::persian::latinDigits(filter_.toDate.trimmed()));
    // The managing director sees what the finance manager let through.
    if (approver_ == Approver::ManagingDirector) where += QStringLiteral(" And IsNull(T.ModirMaleDate, '') <> ''");
    c.execute(QStringLiteral("Insert Into ") + table_.name() +
              QStringLiteral(" (Serial, SanadDate, sSelect, Abtal, AbtalDate, ModirMale, ModirMaleDate, ModirAmel, "
                             "ModirAmelDate, IsChqSodor, ChqSerial, ChqDate, sValue, OwnDate, OwnAbtalDate) Select T.Serial, "
                             "T.SanadDate, ") +
              flag(approvalColumn()) + QStringLiteral(", ") + flag(voidColumn()) +
              QStringLiteral(", Case When IsNull(T.ModirAmelAbtalDate, '') <> '' Then T.ModirAmelAbtalDate Else "
                             "IsNull(T.ModirMaleAbtalDate, '') End, ") +
              flag(QStringLiteral("ModirMaleDate")) + QStringLiteral(", IsNull(T.ModirMaleDate, ''), ") +
              flag(QStringLiteral("ModirAmelDate")) +
              QStringLiteral(", IsNull(T.ModirAmelDate, ''), Case When T.ChqPaySerial <> 0 Then ") + tick +
              QStringLiteral(" Else '' End, T.ChqPaySerial, (Select Max(L.SanadDate) From N_ChqLastTrans As L Where "
                             "L.WhatDoc = '81' And L.Serial = T.ChqPaySerial And T.ChqPaySerial <> 0), (Select "
                             "IsNull(Sum(M.ChqValue), 0) From N_MOJAVEZCHQ As M Where M.Serial = T.Serial And M.ChqOrTaraf "
                             "= 1), IsNull(T.") +
              approvalColumn() + QStringLiteral(", ''), IsNull(T.") + voidColumn() +
              QStringLiteral(", '') From N_MojavezTrans As T") + where);
    rows_.Open();
}

bool PermitApproval::toggle(const QString& field) {
    if (rows_.IsEmpty() || (field != QLatin1String("sSelect") && field != QLatin1String("Abtal"))) return false;
    if (trimmed(rows_.FieldByName(QStringLiteral("IsChqSodor")).Value()) == kTicked) return refuse(kUsed);
    if (approver_ == Approver::FinanceManager &&
        trimmed(rows_.FieldByName(QStringLiteral("ModirAmel")).Value()) == kTicked)
        return refuse(kDirectorApproved);
    if (rows_.state() == Query::State::Browse) rows_.Edit();
    const bool ticked = trimmed(rows_.FieldByName(field).Value()) == kTicked;
    rows_.FieldByName(field).SetValue(ticked ? QString() : kTicked);
    rows_.Post();
    return true;
}

bool PermitApproval::apply() {
    if (!mayApprove()) return false;
    try {
        return write();
    } catch (const tr::db::DatabaseError& e) {
        return refuse(e.message());
    }
}

bool PermitApproval::write() {
    if (rows_.state() != Query::State::Browse) rows_.Post();
    tr::db::Connection& c = *services_.database->Connection;
    const QString date = tr::persian::latinDigits(date_.trimmed());
    if (!tr::persian::isValidDate(date)) return refuse(QStringLiteral("تاريخ وارد شده اشکال دارد."));
    // Later than every listed permit's date and finance-manager approval.
    const QString latestDate = trimmed(firstColumn(c, QStringLiteral("Select Max(SanadDate) From ") + table_.name()));
    const QString latestApproval = trimmed(firstColumn(
        c, QStringLiteral("Select Max(ModirMaleDate) From ") + table_.name() + QStringLiteral(" Where IsNull(ModirMaleDate, '') <> ''")));
    const QString latest = std::max(latestDate, latestApproval);
    if (!latest.isEmpty() && date <= latest)
        return refuse(QStringLiteral("تاريخ تاييد/ابطال صدور مجوز بايد بزرگتر از تاريخ ") + latest);
    const Query listed = tr::db::openQuery(
        c, QStringLiteral("Select Serial, sSelect, Abtal, OwnDate, OwnAbtalDate From ") + table_.name() +
               QStringLiteral(" Order By Serial"));
    {
        tr::db::Transaction transaction(c);
        for (int i = 0; i < listed.RecordCount(); ++i) {
            const QString own = trimmed(listed.value(i, 3)), ownVoid = trimmed(listed.value(i, 4));
            // A permit approved (or voided) before keeps its date; one unticked loses it.
            const QString approval = trimmed(listed.value(i, 1)) == kTicked ? (own.isEmpty() ? date : own) : QString();
            const QString voiding = trimmed(listed.value(i, 2)) == kTicked ? (ownVoid.isEmpty() ? date : ownVoid) : QString();
            if (approval == own && voiding == ownVoid) continue;
            const QString serial = tr::db::sqlNumber(listed.value(i, 0).toLongLong());
            // What another desk did since the list was read still stops the change.
            const Query now = tr::db::openQuery(
                c, QStringLiteral("Select ChqPaySerial, IsNull(ModirAmelDate, '') From N_MojavezTrans Where Serial = ") + serial);
            if (now.IsEmpty()) continue;
            if (now.value(0, 0).toLongLong() != 0) throw tr::db::DatabaseError(kUsed);
            if (approver_ == Approver::FinanceManager && !trimmed(now.value(0, 1)).isEmpty())
                throw tr::db::DatabaseError(kDirectorApproved);
            c.execute(QStringLiteral("Update N_MojavezTrans Set ") + approvalColumn() + QStringLiteral(" = ") + c.text(approval) +
                      QStringLiteral(", ") + voidColumn() + QStringLiteral(" = ") + c.text(voiding) +
                      QStringLiteral(" Where Serial = ") + serial);
        }
        transaction.commit();
    }
    messages_.show(QStringLiteral("تغييرات ثبت شد."), QStringLiteral("1I"));
    try {
        fill();
    } catch (const tr::db::DatabaseError& e) {
        // Written all the same; the list is only shown as it was.
        messages_.show(e.message(), QStringLiteral("1ER"));
    }
    return true;
}

}  // namespace tr::cheques
