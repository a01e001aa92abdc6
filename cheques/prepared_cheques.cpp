#include "cheques/prepared_cheques.h"

#include "cheques/cheque_document.h"
#include "common/dialog/host_windows.h"

namespace tr::cheques {

namespace {

const QString kSet = QStringLiteral("ض");

QString text(const QVariantMap& row, const char* field) {
    return row.value(QString::fromLatin1(field)).toString().trimmed();
}

}  // namespace

QString preparedChequesSql() {
    // A cheque is taken in once it has a receipt row (71) of its number and series.
    return QStringLiteral(
        "Select P.ID, P.ChqNo, P.Joz, P.mablagh, P.SarresidDate, P.ChqGetter, P.DesChq, P.BankCod, "
        "B.BankNam, P.ShobehCod, P.ShobehNam, P.ChqHesabCod, P.ChqTel, P.Addres, P.RelateCod, P.ChqtCod "
        "From BCK_ChqNaghd As P Left Join N_Bank As B On (B.BankCod = P.BankCod) Where Not Exists "
        "(Select L.IDX From N_ChqLastTrans As L Where L.WhatDoc = '71' And LTrim(RTrim(L.ChqNo)) = "
        "LTrim(RTrim(P.ChqNo)) And LTrim(RTrim(IsNull(L.Joz, ''))) = LTrim(RTrim(IsNull(P.Joz, '')))) "
        "Order By P.ID");
}

void takePreparedCheque(ChequeDocument& document, const QVariantMap& chosen) {
    tr::db::Query& row = document.cheques();
    if (row.state() == tr::db::Query::State::Browse) document.appendCheque();
    const auto set = [&](const char* field, const QVariant& value) {
        row.FieldByName(QString::fromLatin1(field)).SetValue(value);
    };
    set("ChqNo", text(chosen, "ChqNo"));
    set("Joz", text(chosen, "Joz"));
    set("ChqValue", chosen.value(QStringLiteral("mablagh")).toDouble());
    set("SarResidDate", text(chosen, "SarresidDate"));
    if (!text(chosen, "ChqGetter").isEmpty()) set("ChqGetter", text(chosen, "ChqGetter"));
    set("Des", text(chosen, "DesChq"));
    set("BankCod", text(chosen, "BankCod"));
    set("BankNam", text(chosen, "BankNam"));
    set("ShobehCod", text(chosen, "ShobehCod"));
    set("ShobehNam", text(chosen, "ShobehNam"));
    set("AcountCod", text(chosen, "ChqHesabCod"));
    set("Telephone", text(chosen, "ChqTel"));
    set("Address", text(chosen, "Addres"));
    const int type = chosen.value(QStringLiteral("ChqtCod")).toInt();
    set("Havaleh", type == 1 ? kSet : QString());
    set("Tazmin", type == 2 ? kSet : QString());
}

QList<tr::dialog::PickColumn> preparedChequeColumns() {
    return {
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چک"), 90},
        {QStringLiteral("Joz"), QStringLiteral("سري"), 50},
        {QStringLiteral("mablagh"), QStringLiteral("مبلغ"), 110},
        {QStringLiteral("SarresidDate"), QStringLiteral("سررسيد"), 80},
        {QStringLiteral("ChqGetter"), QStringLiteral("در وجه"), 90},
        {QStringLiteral("BankNam"), QStringLiteral("بانک"), 90},
        {QStringLiteral("ShobehNam"), QStringLiteral("شعبه"), 110},
        {QStringLiteral("ChqHesabCod"), QStringLiteral("شماره حساب"), 100},
        {QStringLiteral("DesChq"), QStringLiteral("شرح"), 160},
    };
}

bool pickPreparedCheque(const tr::Services& services, ChequeDocument& document) {
    if (!services.pickList) return false;
    const std::optional<QVariantMap> chosen =
        services.pickList->pick(kPreparedChequesTitle, preparedChequesSql(), preparedChequeColumns(), 0);
    if (!chosen) return false;
    takePreparedCheque(document, *chosen);
    return true;
}

}  // namespace tr::cheques
