#include "instruments/cheque_work_tables.h"

namespace tr::instruments {

QString chequeWorkTableColumns() {
    return QStringLiteral(
        "IsChange Varchar(1) Null, IDX Int Null, Raj Int Null, Koll Varchar(3) Null, Moein Varchar(4) Null, "
        "Tafsily Varchar(5) Null, Tafsily2 Varchar(5) Null, ProjectCod Varchar(10) Null, Havaleh NVarchar(1) Null, "
        "Tazmin NVarchar(1) Null, Joz Varchar(5) Null, ChqNo Varchar(6) Null, ChqValue Float Null, "
        "SarResidDate Varchar(10) Null, ChqGetter NVarchar(50) Null, Des NVarchar(50) Null, "
        "BankCod Varchar(10) Null, BankNam NVarchar(100) Null, ShobehCod Varchar(100) Null, "
        "ShobehNam NVarchar(100) Null, AcountCod Varchar(13) Null, ChqTypeCod Varchar(2) Null, "
        "ArzCod Varchar(2) Null, ArzNam NVarchar(50) Null, ArzCount Float Null, Nerkh Float Null, "
        "ArzCod2 Varchar(2) Null, ArzNam2 NVarchar(50) Null, ArzCount2 Float Null, Nerkh2 Float Null, "
        "Telephone NVarchar(50) Null, Address NVarchar(200) Null");
}

QString paymentChequeWorkTableColumns() {
    return QStringLiteral(
        "IsChange Varchar(1) Null, IDX Int Null, Raj Int Null, ChqStateNam NVarchar(500) Null, AcountID Int Null, "
        "AcountCod NVarchar(500) Null, AcountNam NVarchar(500) Null, Koll Varchar(10) Null, Moein Varchar(10) Null, "
        "Tafsily Varchar(10) Null, Tafsily2 Varchar(10) Null, ProjectCod Varchar(10) Null, Joz Varchar(10) Null, "
        "ChqNo Varchar(20) Null, MojavezValue Float Null, FactValue Float Null, ChqValue Float Null, "
        "ChqGetter NVarchar(500) Null, Havaleh NVarchar(1) Null, Tazmin NVarchar(1) Null, "
        "SarResidDate Varchar(10) Null, Des NVarchar(500) Null, ArzCod Varchar(2) Null, ArzNam NVarchar(50) Null, "
        "Nerkh Float Null, ArzCount Float Null");
}

QString counterpartyWorkTableColumns() {
    return QStringLiteral(
        "IDX Int Null, Raj Int Null, WhatDoc2 Varchar(2) Null, NamWhatDoc2 NVarchar(100) Null, "
        "Koll Varchar(3) Null, CodWhatDoc2 Varchar(50) Null, Moein Varchar(4) Null, Tafsily Varchar(5) Null, "
        "Tafsily2 Varchar(5) Null, ProjectCod Varchar(10) Null, Joz Varchar(5) Null, ChqNo Varchar(6) Null, "
        "ChqValue Float Null, Des NVarchar(50) Null, ManabehCod Varchar(5) Null, ArzCod Varchar(2) Null, "
        "ArzCount Float Null, ArzNam NVarchar(50) Null, ArzCod2 Varchar(2) Null, ArzCount2 Float Null, "
        "ArzNam2 NVarchar(50) Null, Nerkh Float Null, Nerkh2 Float Null");
}

namespace {

// The actions screen's list: the received tab keeps where a cheque stands in V-accounts of width
// 10, the issued tab in Koll ... ProjectCod of width 20 (`standing` is the prefix, `width` its
// columns' width); both hand it on to Va-accounts.
QString actionWorkTableColumns(const char* standing, int width) {
    QString accounts;
    for (const char* level : {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"})
        accounts += QStringLiteral(", %1%2 Varchar(%3) Null").arg(QLatin1String(standing), QLatin1String(level)).arg(width);
    for (const char* level : {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"})
        accounts += QStringLiteral(", Va%1 Varchar(10) Null").arg(QLatin1String(level));
    for (const char* level : {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"})
        accounts += QStringLiteral(", T%1 Varchar(50) Null").arg(QLatin1String(level));
    for (const char* name : {"K", "M", "T", "T2", "P"})
        accounts += QStringLiteral(", %1NamHesab NVarchar(150) Null").arg(QLatin1String(name));
    return QStringLiteral(
               "IDX Int Null, IsFirst Varchar(1) Null, Serial Int Null, OldAcountID Int Null, AcountID Int Null, "
               "BankCod Varchar(20) Null, ShobehCod Varchar(20) Null, ShobehNam NVarchar(500) Null, "
               "AcountCod Varchar(250) Null, Des NVarchar(500) Null, Joz Varchar(20) Null, ChqNo Varchar(30) Null, "
               "ChqValue Float Null, SanadNo Varchar(20) Null, GetterCheque NVarchar(500) Null, "
               "SodorDate Varchar(10) Null, SarResidDate Varchar(10) Null, ActionDate Varchar(10) Null, "
               "LastActionDate Varchar(10) Null, WhatDocNam NVarchar(500) Null, LastWhatDoc Varchar(2) Null, "
               "LastWhatDocNam NVarchar(500) Null, Havaleh NVarchar(1) Null, Tazmin NVarchar(1) Null, "
               "sOrder Varchar(100) Null") +
           accounts;
}

}  // namespace

QString chequeActionWorkTableColumns() {
    return actionWorkTableColumns("V", 10);
}

QString issuedChequeActionWorkTableColumns() {
    return actionWorkTableColumns("", 20);
}

QString returnSplitWorkTableColumns() {
    return QStringLiteral(
        "IDX Int Null, Serial Int Null, Raj Int Null, Status Varchar(5) Null, WhatDoc Varchar(2) Null, "
        "WhatDoc2 Varchar(2) Null, ChqNo Varchar(30) Null, Joz Varchar(20) Null, ChqValue Float Null, "
        "NewValue Float Null, Des NVarchar(500) Null, Koll Varchar(20) Null, Moein Varchar(20) Null, "
        "Tafsily Varchar(20) Null, Tafsily2 Varchar(20) Null, ProjectCod Varchar(20) Null, ArzCod Varchar(2) Null, "
        "ArzNam NVarchar(50) Null, Nerkh Float Null, ArzCount Float Null");
}

}  // namespace tr::instruments
