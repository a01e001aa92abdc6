#include "cashbank/search/document_pickers.h"

#include <array>

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"

namespace tr::cashbank {

namespace {

using tr::dialog::PickColumn;

const QString kLineJoin = QStringLiteral(
    "From N_NaghdTrans As NT Inner Join Asnad As A On (Cast(NT.IDX As Varchar(50)) = "
    "LTrim(A.Document))");
const QString kBankJoin = QStringLiteral(
    " Inner Join N_BankHesab As BH On (LTrim(NT.CodWhatDoc) = Cast(BH.AcountId As Varchar(50)))"
    " Inner Join N_Shoab As SH On ((BH.BankCod = SH.BankCod) And (BH.ShobehCod = SH.ShobehCod))"
    " Inner Join N_Bank As BK On (BH.BankCod = BK.BankCod)");
const QString kBankAccount =
    QStringLiteral("BH.AcountCod, BK.BankNam + '-' + SH.ShobehNam As AcountNam, BH.AcountID");

// The treasury-side lines of the kind's own vouchers (`ownOnly`) or of every voucher.
QString rows(const QString& kind, const QString& side, bool ownOnly = true) {
    return QStringLiteral(" Where (A.TypeSys = 'N') And (A.WhatDoc = '") + kind +
           QStringLiteral("')") +
           (ownOnly ? QStringLiteral(" And (A.DocToDate = '0')") : QString()) +
           QStringLiteral(" And (A.") + side + QStringLiteral(" > 0)");
}

PickColumn col(const char* field, const QString& caption = {}) {
    return PickColumn{QString::fromLatin1(field), caption, 0};
}

DocumentPicker cashPicker(const QString& kind, const QString& title, const QString& side) {
    return {kind,
            title,
            QStringLiteral("NT.Serial, A.AtfCh As CashNo, A.SanadDate, (A.Bed + A.Bes) As sValue, "
                           "A.Des, NC.CashCod, NC.CashNam"),
            kLineJoin + QStringLiteral(" Inner Join N_Cash As NC On (NT.CodWhatDoc = NC.CashCod)") +
                rows(kind, side),
            {col("Serial", QStringLiteral("سريال")), col("CashNo", QStringLiteral("شماره")),
             col("SanadDate", QStringLiteral("تاريخ")), col("sValue", QStringLiteral("مبلغ")),
             col("Des", QStringLiteral("شرح")), col("CashCod", QStringLiteral("صندوق")),
             col("CashNam", QStringLiteral("نام صندوق"))}};
}

std::array<DocumentPicker, 6> makePickers() {
    const PickColumn serial = col("Serial", QStringLiteral("سريال"));
    const PickColumn joz = col("Joz", QStringLiteral("جزء"));
    const PickColumn date = col("SanadDate", QStringLiteral("تاريخ"));
    const PickColumn value = col("sValue", QStringLiteral("مبلغ"));
    const PickColumn des = col("Des", QStringLiteral("شرح"));
    const PickColumn accountCod = col("AcountCod", QStringLiteral("شماره حساب"));
    const PickColumn accountNam = col("AcountNam", QStringLiteral("نام حساب"));
    const PickColumn accountId = col("AcountID", QStringLiteral("كد حساب"));
    const QString number = QStringLiteral("شماره");

    DocumentPicker petty{
        QStringLiteral("40"),
        QStringLiteral("انتخاب تنخواه"),
        QStringLiteral("NT.Serial, A.AtfCh As TankhahNo, A.SanadDate, (A.Bed + A.Bes) As sValue, "
                       "A.Des, NK.PersonCod As TankhahCod, IsNull(P.[Name], '') + '-' + "
                       "IsNull(P.Family, '') As TankhahNam"),
        // The petty-cash list has always shown cancellation lines too.
        kLineJoin +
            QStringLiteral(" Inner Join N_Tankhah As NK On (NT.CodWhatDoc = NK.PersonCod) Left "
                           "Join Person As P On (NK.PersonCod = P.Code)") +
            rows(QStringLiteral("40"), QStringLiteral("Bes"), false),
        {serial, col("TankhahNo", number), date, value, des,
         col("TankhahCod", QStringLiteral("تنخواه گردان")),
         col("TankhahNam", QStringLiteral("نام تنخواه گردان"))}};

    DocumentPicker transfer{
        QStringLiteral("60"),
        QStringLiteral("انتخاب حواله بانكي"),
        QStringLiteral("NT.Serial, NT.Joz, A.AtfCh As HavalehNo, A.SanadDate, (A.Bed + A.Bes) As "
                       "sValue, NT.Des2 As BankNam, NT.Des3 As ShobehCod, NT.Des4 As ShobehNam, "
                       "NT.Des1 As Havaleh, A.Des, ") +
            kBankAccount,
        kLineJoin + kBankJoin + rows(QStringLiteral("60"), QStringLiteral("Bed")),
        {serial, joz, col("HavalehNo", number), date, value,
         col("BankNam", QStringLiteral("بانك حواله كننده")),
         col("ShobehCod", QStringLiteral("كد شعبه")), col("ShobehNam", QStringLiteral("نام شعبه")),
         col("Havaleh", QStringLiteral("حواله")), des, accountCod, accountNam, accountId}};

    DocumentPicker deposit{
        QStringLiteral("50"),
        QStringLiteral("انتخاب واريز نقدي"),
        QStringLiteral("NT.Serial, NT.Joz, A.AtfCh As VarizNo, A.SanadDate, (A.Bed + A.Bes) As "
                       "sValue, NT.Des1, A.Des, ") +
            kBankAccount,
        kLineJoin + kBankJoin + rows(QStringLiteral("50"), QStringLiteral("Bed")),
        {serial, joz, col("VarizNo", number), date, value,
         col("Des1", QStringLiteral("واريز كننده")), des, accountCod, accountNam, accountId}};

    DocumentPicker withdrawal{
        QStringLiteral("90"),
        QStringLiteral("انتخاب برداشت بانک"),
        QStringLiteral("NT.Serial, NT.Joz, A.AtfCh As BardashtNo, A.SanadDate, (A.Bed + A.Bes) As "
                       "sValue, A.Des, ") +
            kBankAccount,
        kLineJoin + kBankJoin + rows(QStringLiteral("90"), QStringLiteral("Bes")),
        {serial, joz, col("BardashtNo", number), date, value, des, accountCod, accountNam,
         accountId}};

    return {cashPicker(QStringLiteral("10"), QStringLiteral("انتخاب دريافت صندوق"),
                       QStringLiteral("Bed")),
            cashPicker(QStringLiteral("20"), QStringLiteral("انتخاب پرداخت صندوق"),
                       QStringLiteral("Bes")),
            petty,
            deposit,
            transfer,
            withdrawal};
}

}  // namespace

const DocumentPicker* documentPicker(const QString& kind) {
    static const std::array<DocumentPicker, 6> pickers = makePickers();
    for (const DocumentPicker& p : pickers)
        if (p.kind == kind.trimmed()) return &p;
    return nullptr;
}

QString copyStatement(const DocumentPicker& picker, const QString& table) {
    return QStringLiteral("Select ") + picker.columns + QStringLiteral(" Into ") + table +
           QStringLiteral(" ") + picker.fromWhere;
}

std::optional<QString> pickDocument(const tr::Services& services, const QString& kind) {
    const DocumentPicker* picker = documentPicker(kind);
    if (!picker || !services.pickList) return std::nullopt;
    tr::db::MyDatabase& db = *services.database;
    const QString table =
        tr::db::globalTempTableName(services.global->sessionText + QStringLiteral("Pick_"));
    tr::db::execute(db, copyStatement(*picker, table));
    tr::db::ScopedTempTable copy(db, table);
    const std::optional<QVariantMap> chosen = services.pickList->pick(
        picker->title,
        QStringLiteral("Select * From ") + table + QStringLiteral(" Order By SanadDate, Serial"),
        picker->captions, 0);
    copy.drop();
    if (!chosen) return std::nullopt;
    return chosen->value(QStringLiteral("Serial")).toString().trimmed();
}

}  // namespace tr::cashbank
