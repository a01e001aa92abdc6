// Treasury documents and vouchers, their kinds, cash boxes, petty-cash holders, banks and bank
// accounts, serial reservations, fixed descriptions and the per-user settings tables.
#include "db/schema/account_columns.h"
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList treasuryTables() {
    return {
        // Serial is numeric so that Max(Serial) orders 10 after 9; comparisons with quoted text
        // (Serial='5', LTrim(Serial)='5') convert as on the server.
        QStringLiteral("Create Table N_NaghdTrans ("
                       "IDX Int Identity(1,1) Primary Key, "
                       "WhatDoc Varchar(2) Not Null, "
                       "Serial Int Not Null, "
                       "Raj Int Null, "
                       "CodWhatDoc Varchar(20) Null, "
                       "WhatDoc2 Varchar(10) Null, "
                       "CodWhatDoc2 Varchar(50) Null, "
                       "NamWhatDoc2 NVarchar(100) Null, "
                       "Joz Varchar(10) Null, "
                       "ManabehCod Varchar(5) Null, "
                       "SanadDate Varchar(10) Null, "
                       "Des1 NVarchar(200) Null, "
                       "Des2 NVarchar(200) Null, "
                       "Des3 NVarchar(200) Null, "
                       "Des4 NVarchar(200) Null, "
                       "Des5 NVarchar(200) Null, "
                       "Des6 NVarchar(200) Null)"),
        QStringLiteral("Create Index IX_N_NaghdTrans_Doc On N_NaghdTrans (WhatDoc, Serial, Raj)"),
        QStringLiteral("Create Index IX_N_NaghdTrans_Cod On N_NaghdTrans (CodWhatDoc, WhatDoc)"),
        // The header of an opened document is read by serial alone (joined to its voucher lines).
        QStringLiteral("Create Index IX_N_NaghdTrans_Serial On N_NaghdTrans (Serial)"),

        // Document holds the text of N_NaghdTrans.IDX; DocToDate is '0'/'1' on document lines
        // and the series on cheque and note lines, hence as wide as a series.
        QStringLiteral("Create Table Asnad ("
                       "REC Int Identity(1,1) Primary Key, "
                       "TypeSys Varchar(1) Not Null, "
                       "WhatDoc Varchar(2) Null, "
                       "WhatDoc2 Varchar(10) Null, "
                       "DocToDate Varchar(10) Null, "
                       "Document Varchar(20) Null, "
                       "SanadNo Int Null, "
                       "LastNo Int Null, "
                       "FirstNo Int Null, "
                       "SanadDate Varchar(10) Null, "
                       "Raj Int Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "Des NVarchar(200) Null, "
                           "Bed Float Not Null Default 0, "
                           "Bes Float Not Null Default 0, "
                           "AtfCh Varchar(20) Null, "
                           "AtfNum Int Null, "
                           "AtfDate Varchar(10) Null, "
                           "ChqNo Varchar(20) Null, "
                           "SherCode Varchar(10) Null, "
                           "User_Name NVarchar(50) Null, "
                           "LClose Varchar(1) Null, "
                           "NoBat Int Null)"),
        QStringLiteral("Create Index IX_Asnad_Document On Asnad (Document)"),
        QStringLiteral("Create Index IX_Asnad_SanadNo On Asnad (SanadNo, Raj)"),
        QStringLiteral("Create Index IX_Asnad_AtfCh On Asnad (AtfCh, DocToDate, WhatDoc)"),
        QStringLiteral("Create Index IX_Asnad_Kind On Asnad (TypeSys, WhatDoc, SanadDate)"),
        QStringLiteral("Create Index IX_Asnad_Account On Asnad (Koll, Moein, Tafsily)"),

        QStringLiteral("Create Table N_AsnadNaghd ("
                       "WhatDoc Varchar(2) Not Null Primary Key, "
                       "NDocNam NVarchar(100) Not Null)"),

        // The log of saves, edits and deletes; the nine columns in this order (rows are also
        // written by position).
        QStringLiteral("Create Table ASNADACTIONS ("
                       "TypeSys Varchar(1) Null, "
                       "TypeDoc NVarchar(100) Null, "
                       "ActDate Varchar(10) Null, "
                       "ActUser NVarchar(50) Null, "
                       "ActType Varchar(1) Null, "
                       "DocNo Varchar(20) Null, "
                       "ActTime Varchar(10) Null, "
                       "REC Int Null, "
                       "ComputerName NVarchar(50) Null)"),
        QStringLiteral("Create Index IX_ASNADACTIONS_Doc On ASNADACTIONS (TypeSys, DocNo)"),
        // A document's own rows, which every open and save counts (another user's change shows there).
        QStringLiteral("Create Index IX_ASNADACTIONS_Rec On ASNADACTIONS (REC, TypeDoc)"),

        QStringLiteral("Create Table N_Cash ("
                       "CashCod Varchar(10) Not Null Primary Key, "
                       "CashNam NVarchar(100) Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "ArzCod Varchar(2) Null, "
                           "IsActive NVarchar(10) Null)"),
        QStringLiteral("Create Table N_Tankhah ("
                       "PersonCod Varchar(10) Not Null Primary Key, ") +
            accountColumns() +
            QStringLiteral(", "
                           "IsActive NVarchar(10) Null)"),
        QStringLiteral("Create Table N_Bank ("
                       "BankCod Varchar(10) Not Null Primary Key, "
                       "BankNam NVarchar(100) Null)"),
        QStringLiteral("Create Table N_Shoab ("
                       "BankCod Varchar(10) Not Null, "
                       "ShobehCod Varchar(20) Not Null, "
                       "ShobehNam NVarchar(100) Null, "
                       "Telephone Varchar(50) Null, "
                       "Address NVarchar(200) Null, "
                       "Primary Key (BankCod, ShobehCod))"),
        // Three account sets: J the account itself, A its issued cheques, H its cheques in
        // collection.
        QStringLiteral("Create Table N_BankHesab ("
                       "AcountID Int Identity(1,1) Primary Key, "
                       "BankCod Varchar(10) Not Null, "
                       "ShobehCod Varchar(20) Not Null, "
                       "AcountCod Varchar(20) Not Null, "
                       "AcountType NVarchar(50) Null, "
                       "ArzCod Varchar(2) Null, ") +
            accountColumns(QStringLiteral("J")) + QStringLiteral(", ") +
            accountColumns(QStringLiteral("A")) + QStringLiteral(", ") +
            accountColumns(QStringLiteral("H")) +
            QStringLiteral(", "
                           "IsActive NVarchar(10) Null, "
                           "Des NVarchar(200) Null)"),
        QStringLiteral("Create Index IX_N_BankHesab_Cod On N_BankHesab (AcountCod)"),
        QStringLiteral("Create Index IX_N_BankHesab_Branch On N_BankHesab (BankCod, ShobehCod)"),

        // Accounts that the received-document actions post to, one row per action kind.
        QStringLiteral("Create Table N_AsnadDaryaftani ("
                       "WhatDoc Varchar(2) Not Null Primary Key, ") +
            accountColumns() +
            QStringLiteral(", "
                           "Des NVarchar(200) Null)"),

        // ResId2 is the held serial: numeric for the same reason as Serial, since the next-serial
        // routine takes its Max.
        QStringLiteral("Create Table Reserveid ("
                       "UserId Varchar(10) Not Null, "
                       "ProgNam Varchar(10) Not Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "ResId1 Varchar(20) Null Default '', "
                       "ResId2 Int Null)"),
        QStringLiteral("Create Index IX_Reserveid_Doc On Reserveid (ProgNam, WhatDoc, ResId2)"),
        QStringLiteral("Create Index IX_Reserveid_User On Reserveid (UserId, ProgNam, WhatDoc)"),
        QStringLiteral("Create Table N_reserveid ("
                       "UserId Varchar(10) Not Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "Serial Int Null)"),
        QStringLiteral("Create Index IX_N_reserveid_User On N_reserveid (WhatDoc, UserId)"),

        // Empty codes (not Null) mark a description stored without that level.
        QStringLiteral("Create Table FixDes ("
                       "ID Int Identity(1,1) Primary Key, ") +
            accountColumns(QString(), QStringLiteral(" Default ''")) +
            QStringLiteral(", "
                           "FixDes NVarchar(200) Not Null)"),
        QStringLiteral("Create Index IX_FixDes_Account On FixDes (Koll, Moein, Tafsily)"),

        QStringLiteral("Create Table Grid_State ("
                       "UserId Varchar(10) Not Null, "
                       "sVisible Varchar(1) Null, "
                       "sProg Varchar(50) Not Null, "
                       "sItem Varchar(50) Not Null, "
                       "sForm Varchar(50) Not Null, "
                       "sPart Varchar(50) Not Null, "
                       "sColName Varchar(100) Not Null, "
                       "iLen Int Null, "
                       "iRaj Int Null)"),
        QStringLiteral("Create Index IX_Grid_State_Key On Grid_State "
                       "(UserId, sProg, sItem, sForm, sPart, iRaj)"),

        // One row; Naghd holds the treasury settings as "KEY=VALUE;" pairs.
        QStringLiteral("Create Table Options ("
                       "OptionID Int Not Null Primary Key, "
                       "Naghd Varchar(2000) Null)"),

        QStringLiteral("Create Table UserPrivilege ("
                       "UserId Varchar(10) Not Null, "
                       "TableName Varchar(50) Not Null, "
                       "FieldCode Varchar(50) Not Null)"),
        QStringLiteral("Create Index IX_UserPrivilege_User On UserPrivilege (UserId, TableName)"),

        // Scanned images of vouchers; the picture travels as base64 text (no binary type in the
        // dialect the engine accepts) or as a file path.
        QStringLiteral("Create Table M_AsnadPic ("
                       "ID Int Identity(1,1) Primary Key, "
                       "SanadNo Int Not Null, "
                       "Raj Int Null, "
                       "PicNam NVarchar(100) Null, "
                       "PicFile NVarchar(260) Null, "
                       "PicData Text Null)"),
        QStringLiteral("Create Index IX_M_AsnadPic_Sanad On M_AsnadPic (SanadNo)"),
    };
}

}  // namespace tr::schema::detail
