// The sales tables that treasury settlement reads and writes: invoices and their lines,
// customers, cash payments and redeemed vouchers at the till, the per-period balances of open
// invoices and the links from treasury lines to the invoices they pay.
#include "db/schema/account_columns.h"
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList salesTables() {
    return {
        QStringLiteral("Create Table R_Customer ("
                       "CustomerCod Varchar(10) Not Null Primary Key, "
                       "CustomerNam NVarchar(100) Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "Telephone Varchar(50) Null, "
                           "Address NVarchar(200) Null)"),
        // The accounts are the customer's, the ones a receipt for the invoice credits.
        QStringLiteral("Create Table R_FactorForosh ("
                       "SanadNoForosh Varchar(20) Not Null Primary Key, "
                       "SanadDate Varchar(10) Not Null, "
                       "CustomerCod Varchar(10) Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "SellValue Float Not Null Default 0, "
                           "Des NVarchar(200) Null, "
                           "User_Name NVarchar(50) Null)"),
        QStringLiteral("Create Index IX_R_FactorForosh_Customer On R_FactorForosh (CustomerCod)"),
        QStringLiteral("Create Table R_DetailFactorForosh ("
                       "SanadNoForosh Varchar(20) Not Null, "
                       "Raj Int Not Null, "
                       "KalaCod Varchar(20) Null, "
                       "KalaNam NVarchar(100) Null, "
                       "Tedad Float Null, "
                       "UnitPrice Float Null, "
                       "Takhfif Float Null Default 0, "
                       "Maliat Float Null Default 0, "
                       "TotalPrice Float Null, "
                       "Primary Key (SanadNoForosh, Raj))"),
        // TypeAction '3' = paid in cash at the till.
        QStringLiteral("Create Table R_NaghdPay ("
                       "ID Int Identity(1,1) Primary Key, "
                       "SanadNoForosh Varchar(20) Not Null, "
                       "TypeAction Varchar(1) Not Null, "
                       "PayDate Varchar(10) Null, "
                       "PayValue Float Not Null Default 0)"),
        QStringLiteral("Create Index IX_R_NaghdPay_Factor On R_NaghdPay (SanadNoForosh)"),
        // Gift vouchers: Status 'B' = redeemed, DocType 'F' = against an invoice.
        QStringLiteral("Create Table R_Bon_Serial ("
                       "BonSerial Varchar(20) Not Null Primary Key, "
                       "BonPrice Float Null, "
                       "Status Varchar(1) Null, "
                       "DocType Varchar(1) Null, "
                       "SanadNoForosh Varchar(20) Null)"),
        QStringLiteral("Create Table R_Bon_Tran ("
                       "ID Int Identity(1,1) Primary Key, "
                       "BonSerial Varchar(20) Not Null, "
                       "SanadNoForosh Varchar(20) Null, "
                       "TranDate Varchar(10) Null, "
                       "BonPrice Float Not Null Default 0)"),
        QStringLiteral("Create Index IX_R_Bon_Tran_Factor On R_Bon_Tran (SanadNoForosh)"),

        // Open invoices of this and earlier periods; DorehMali/MainDorehMali are the fiscal year
        // (sYear) whose database holds the invoice. NaghdValue1 is the amount paid outside the
        // treasury, the base that treasury allocations are added to.
        QStringLiteral("Create Table R_OldFactor ("
                       "SanadNoForosh Varchar(20) Not Null, "
                       "MainDorehMali Varchar(10) Not Null, "
                       "DorehMali Varchar(10) Not Null, "
                       "FactorDate Varchar(10) Null, "
                       "CustomerCod Varchar(10) Null, "
                       "FactorValue Float Not Null Default 0, "
                       "NaghdValue Float Not Null Default 0, "
                       "NaghdValue1 Float Not Null Default 0, "
                       "MandehFactor Float Not Null Default 0, "
                       "Primary Key (SanadNoForosh, MainDorehMali))"),
        QStringLiteral(
            "Create Index IX_R_OldFactor_Doreh On R_OldFactor (DorehMali, MandehFactor)"),

        // One row per treasury line and invoice it pays; Idx is the N_NaghdTrans line.
        QStringLiteral("Create Table R_ForoshRelatedNaghd ("
                       "ID Int Identity(1,1) Primary Key, "
                       "Idx Int Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "Serial Int Not Null, "
                       "AtfCh Varchar(20) Null, "
                       "DocToDate Varchar(10) Null, "
                       "SanadNoForosh Varchar(20) Not Null, "
                       "TypeAction Varchar(1) Not Null, "
                       "NaghdValue Float Not Null Default 0, "
                       "DorehMali Varchar(10) Null)"),
        QStringLiteral("Create Index IX_R_ForoshRelatedNaghd_Doc On R_ForoshRelatedNaghd "
                       "(WhatDoc, Serial)"),
        QStringLiteral("Create Index IX_R_ForoshRelatedNaghd_Factor On R_ForoshRelatedNaghd "
                       "(SanadNoForosh, DorehMali)"),
    };
}

}  // namespace tr::schema::detail
