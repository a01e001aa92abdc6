#include "cashbank/search/search_families.h"

#include <array>

namespace tr::cashbank {

namespace {

// Bank accounts are stored on the document by their identity; the name is bank and branch.
const QString kBankJoin = QStringLiteral(
    " Inner Join N_BankHesab As BH On (LTrim(NT.CodWhatDoc) = Cast(BH.AcountId As Varchar(50)))"
    " Inner Join N_Shoab As SH On ((BH.BankCod = SH.BankCod) And (BH.ShobehCod = SH.ShobehCod))"
    " Inner Join N_Bank As BK On (BH.BankCod = BK.BankCod)");
const QString kBankColumns = QStringLiteral("BH.AcountCod, BK.BankNam + '-' + SH.ShobehNam");
const QString kBankLookup = QStringLiteral(
    "Select BH.AcountCod + ' ' + BK.BankNam + '-' + SH.ShobehNam From N_BankHesab As BH"
    " Inner Join N_Shoab As SH On ((BH.BankCod = SH.BankCod) And (BH.ShobehCod = SH.ShobehCod))"
    " Inner Join N_Bank As BK On (BH.BankCod = BK.BankCod) Where Cast(BH.AcountId As Varchar(50)) "
    "= ");
const QString kCancelledSign =
    QStringLiteral("Sign = Case When (A.DocToDate = '1') Then -1 Else 1 End");

SearchFamilyRow bankRow(SearchFamily family, const QString& caption, const QString& key,
                        const QString& kind) {
    SearchFamilyRow row;
    row.family = family;
    row.caption = caption;
    row.gridKey = key;
    row.kindList = QStringLiteral("('") + kind + QStringLiteral("')");
    row.accountColumns = kBankColumns;
    row.accountJoin = kBankJoin;
    row.signRule = kCancelledSign;
    row.codeCaption = QStringLiteral("شماره حساب");
    row.nameCaption = QStringLiteral("نام حساب");
    row.rangeNoun = QStringLiteral("حساب");
    row.nameLookup = kBankLookup;
    return row;
}

std::array<SearchFamilyRow, 5> makeRows() {
    SearchFamilyRow cash;
    cash.family = SearchFamily::Cash;
    cash.caption = QStringLiteral("جستجوي صندوق");
    cash.gridKey = QStringLiteral("CashSearch");
    cash.kindList = QStringLiteral("('10', '11', '20', '21')");
    cash.accountColumns = QStringLiteral("NC.CashCod, NC.CashNam");
    cash.accountJoin = QStringLiteral(" Inner Join N_Cash As NC On (NT.CodWhatDoc = NC.CashCod)");
    cash.signRule = QStringLiteral(
        "Sign = Case When((A.DocToDate = '1') Or (A.WhatDoc = 20)) Then -1 Else 1 End");
    cash.receiptKinds = {QStringLiteral("10")};
    cash.paymentKinds = {QStringLiteral("20")};
    cash.codeCaption = QStringLiteral("صندوق");
    cash.nameCaption = QStringLiteral("نام صندوق");
    cash.rangeNoun = QStringLiteral("صندوق");
    cash.nameLookup = QStringLiteral("Select CashNam From N_Cash Where CashCod = ");

    SearchFamilyRow petty;
    petty.family = SearchFamily::PettyCash;
    petty.caption = QStringLiteral("جستجوي تنخواه گردان");
    petty.gridKey = QStringLiteral("TankhahSearch");
    petty.kindList = QStringLiteral("('40', '41', '45', '46')");
    petty.accountColumns =
        QStringLiteral("NK.PersonCod, IsNull(P.[Name], '') + '-' + IsNull(P.Family, '')");
    petty.accountJoin = QStringLiteral(
        " Inner Join N_Tankhah As NK On (NT.CodWhatDoc = NK.PersonCod)"
        " Left Join Person As P On (NK.PersonCod = P.Code)");
    petty.signRule = QStringLiteral(
        "Sign = Case When((A.DocToDate = '1') Or (A.WhatDoc = '45')) Then -1 Else 1 End");
    // The returned advance is the one kind that takes money back out of the holder's hands.
    petty.receiptKinds = {QStringLiteral("40"), QStringLiteral("41"), QStringLiteral("46")};
    petty.paymentKinds = {QStringLiteral("45")};
    petty.codeCaption = QStringLiteral("تنخواه گردان");
    petty.nameCaption = QStringLiteral("نام تنخواه گردان");
    petty.rangeNoun = QStringLiteral("تنخواه گردان");
    petty.nameLookup = QStringLiteral(
        "Select IsNull(P.[Name], '') + '-' + IsNull(P.Family, '') From N_Tankhah As NK"
        " Left Join Person As P On (NK.PersonCod = P.Code) Where NK.PersonCod = ");

    SearchFamilyRow deposit = bankRow(SearchFamily::Deposit, QStringLiteral("جستجوي واريز بانک"),
                                      QStringLiteral("VarizSearch"), QStringLiteral("50"));
    deposit.receiptKinds = {QStringLiteral("50")};

    SearchFamilyRow withdrawal =
        bankRow(SearchFamily::Withdrawal, QStringLiteral("جستجوي برداشت بانک"),
                QStringLiteral("BardashtSearch"), QStringLiteral("90"));
    withdrawal.extraWhere = QStringLiteral(" And (NT.Des1 = 'A')");
    withdrawal.paymentKinds = {QStringLiteral("90")};

    SearchFamilyRow transfer = bankRow(SearchFamily::Transfer, QStringLiteral("جستجوي حواله بانكي"),
                                       QStringLiteral("HavalehSearch"), QStringLiteral("60"));
    transfer.receiptKinds = {QStringLiteral("60")};
    transfer.remitterColumns = true;

    return {cash, petty, deposit, withdrawal, transfer};
}

}  // namespace

const SearchFamilyRow& searchFamily(SearchFamily family) {
    static const std::array<SearchFamilyRow, 5> rows = makeRows();
    return rows[static_cast<int>(family)];
}

}  // namespace tr::cashbank
