// Cheques: cheque books, the action history of every cheque, opening cheques and their log,
// payment permits and the prepared cheque list that receipts import.
#include "db/schema/account_columns.h"
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList chequeTables() {
    return {
        // FirstNum/LastNum stay text: one screen compares them as integers, another as text.
        QStringLiteral("Create Table N_Cheque ("
                       "ChequeID Int Identity(1,1) Primary Key, "
                       "AcountID Int Not Null, "
                       "Joz Varchar(10) Null Default '', "
                       "FirstNum Varchar(20) Not Null, "
                       "LastNum Varchar(20) Not Null, "
                       "FormCode Varchar(10) Null, "
                       "Des NVarchar(200) Null)"),
        QStringLiteral("Create Index IX_N_Cheque_Acount On N_Cheque (AcountID, Joz)"),
        QStringLiteral("Create Index IX_N_Cheque_Joz On N_Cheque (Joz, FirstNum)"),

        // One row per action of a cheque; the latest row (highest IDX) is its state. The six
        // columns after IDX are in the order a voided leaf is inserted by position, the document
        // serial last (0 for rows written by no document).
        QStringLiteral("Create Table N_ChqLastTrans ("
                       "IDX Int Identity(1,1) Primary Key, "
                       "WhatDoc Varchar(2) Not Null, "
                       "ChqNo Varchar(20) Not Null, "
                       "Joz Varchar(10) Null, "
                       "SanadDate Varchar(10) Null, "
                       "CodWhatDoc Varchar(20) Null, "
                       "Serial Int Not Null Default 0)"),
        QStringLiteral("Create Index IX_N_ChqLastTrans_Chq On N_ChqLastTrans (ChqNo, Joz, IDX)"),
        QStringLiteral("Create Index IX_N_ChqLastTrans_Doc On N_ChqLastTrans (WhatDoc, Serial)"),
        QStringLiteral("Create Index IX_N_ChqLastTrans_Date On N_ChqLastTrans (SanadDate)"),

        // IDX is the N_NaghdTrans row of the opening document line, not an identity.
        QStringLiteral("Create Table N_ChqFirst ("
                       "IDX Int Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "LastWhatDoc Varchar(2) Null, "
                       "ChqOrTaraf Int Not Null, "
                       "Serial Int Not Null, "
                       "Raj Int Null, "
                       "ChqNo Varchar(20) Null, "
                       "Joz Varchar(10) Null, "
                       "sValue Float Null, "
                       "Des NVarchar(200) Null, "
                       "SarResidDate Varchar(10) Null, "
                       "WhatDoc2 Varchar(10) Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "SalMale Varchar(4) Null, "
                           "SherCode Varchar(10) Null, "
                           "User_Name NVarchar(50) Null)"),
        QStringLiteral("Create Index IX_N_ChqFirst_Chq On N_ChqFirst (ChqNo, Joz)"),
        QStringLiteral(
            "Create Index IX_N_ChqFirst_Doc On N_ChqFirst (WhatDoc, Serial, ChqOrTaraf)"),
        QStringLiteral("Create Table N_ChqFirst_Log ("
                       "IDX Int Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "LastWhatDoc Varchar(2) Null, "
                       "ChqOrTaraf Int Not Null, "
                       "Serial Int Not Null, "
                       "Raj Int Null, "
                       "ChqNo Varchar(20) Null, "
                       "Joz Varchar(10) Null, "
                       "sValue Float Null, "
                       "Des NVarchar(200) Null, "
                       "SarResidDate Varchar(10) Null, "
                       "WhatDoc2 Varchar(10) Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "SalMale Varchar(4) Null, "
                           "SherCode Varchar(10) Null, "
                           "User_Name NVarchar(50) Null, "
                           "User_Name_Log NVarchar(50) Null, "
                           "ActDate Varchar(10) Null, "
                           "ActTime Varchar(10) Null)"),

        // One row per permit; empty dates mean "not (yet)"; ChqPaySerial 0 = not used.
        QStringLiteral("Create Table N_MojavezTrans ("
                       "Serial Int Not Null Primary Key, "
                       "SanadDate Varchar(10) Null, "
                       "Des NVarchar(200) Null, "
                       "User_Name NVarchar(50) Null, "
                       "ModirMaleDate Varchar(10) Null Default '', "
                       "ModirAmelDate Varchar(10) Null Default '', "
                       "ModirMaleAbtalDate Varchar(10) Null Default '', "
                       "ModirAmelAbtalDate Varchar(10) Null Default '', "
                       "ChqPaySerial Int Not Null Default 0)"),
        // The permit's rows: cheques (ChqOrTaraf 1) and counterparty lines (2), laid out as the
        // cheque-payment document's grids.
        QStringLiteral("Create Table N_MOJAVEZCHQ ("
                       "IDX Int Identity(1,1) Primary Key, "
                       "Serial Int Not Null, "
                       "ChqOrTaraf Int Not Null Default 1, "
                       "Raj Int Null, "
                       "ChqStateNam NVarchar(50) Null, "
                       "AcountID Int Null, "
                       "Joz Varchar(10) Null, "
                       "ChqNo Varchar(20) Null, "
                       "MojavezValue Float Null, "
                       "FactValue Float Null, "
                       "ChqValue Float Null, "
                       "ChqGetter NVarchar(200) Null, "
                       "Havaleh NVarchar(1) Null, "
                       "Tazmin NVarchar(1) Null, "
                       "SarResidDate Varchar(10) Null, "
                       "Des NVarchar(200) Null, "
                       "WhatDoc2 Varchar(10) Null, "
                       "CodWhatDoc2 Varchar(50) Null, "
                       "NamWhatDoc2 NVarchar(100) Null, "
                       "ManabehCod Varchar(5) Null, ") +
            accountColumns() + QStringLiteral(")"),
        QStringLiteral("Create Index IX_N_MOJAVEZCHQ_Serial On N_MOJAVEZCHQ (Serial, ChqOrTaraf)"),
        QStringLiteral("Create Table N_Mojavez ("
                       "PMojavezCod Varchar(5) Not Null Primary Key, "
                       "PMojavezNam NVarchar(100) Null)"),
        // The components of one permit's amount (Sign is '+' or '-').
        QStringLiteral("Create Table N_MojavezFact ("
                       "Serial Int Not Null, "
                       "PMojavezCod Varchar(5) Not Null, "
                       "PMojavezNam NVarchar(100) Null, "
                       "Sign Varchar(1) Null, "
                       "Nerkh Float Null, "
                       "FactValue Float Null, "
                       "Primary Key (Serial, PMojavezCod))"),

        // Cheques prepared elsewhere (e.g. by a sales counter) waiting to be received;
        // ChqtCod 1 = payable to order, 2 = guarantee.
        QStringLiteral("Create Table BCK_ChqNaghd ("
                       "ID Int Identity(1,1) Primary Key, "
                       "ChqNo Varchar(20) Not Null, "
                       "Joz Varchar(10) Null, "
                       "ChqGetter NVarchar(50) Null, "
                       "mablagh Float Null, "
                       "SarresidDate Varchar(10) Null, "
                       "DesChq NVarchar(200) Null, "
                       "BankCod Varchar(10) Null, "
                       "ShobehCod Varchar(20) Null, "
                       "ShobehNam NVarchar(100) Null, "
                       "ChqHesabCod Varchar(20) Null, "
                       "ChqTel Varchar(50) Null, "
                       "Addres NVarchar(200) Null, "
                       "RelateCod Varchar(20) Null, "
                       "ChqtCod Int Null)"),
        QStringLiteral("Create Index IX_BCK_ChqNaghd_Chq On BCK_ChqNaghd (ChqNo, Joz)"),
    };
}

}  // namespace tr::schema::detail
