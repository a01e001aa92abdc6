// Chart of accounts: four account levels, projects, people, and the sources and uses of funds.
// Allowance lists (Groh*, *Joz) are free texts searched with PatIndex, hence wide Varchars.
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList chartTables() {
    return {
        QStringLiteral("Create Table Koll ("
                       "Koll Varchar(3) Not Null Primary Key, "
                       "NamHesab NVarchar(100) Null, "
                       "RecogName NVarchar(100) Null, "
                       "IsActive NVarchar(10) Null)"),
        QStringLiteral("Create Table Moein ("
                       "Koll Varchar(3) Not Null, "
                       "Moein Varchar(4) Not Null, "
                       "NamHesab NVarchar(100) Null, "
                       "RecogName NVarchar(100) Null, "
                       "IsActive NVarchar(10) Null, "
                       "IsTafsily1 NVarchar(10) Null, "
                       "IsTafsily2 NVarchar(10) Null, "
                       "IsProject NVarchar(10) Null, "
                       "GrohTafsily Varchar(200) Null, "
                       "GrohTafsily2 Varchar(200) Null, "
                       "GrohProject Varchar(200) Null, "
                       "TafsilyJoz Varchar(1000) Null, "
                       "Tafsily2Joz Varchar(1000) Null, "
                       "ProjectJoz Varchar(1000) Null, "
                       "Primary Key (Koll, Moein))"),
        QStringLiteral("Create Table Tafsily ("
                       "Tafsily Varchar(5) Not Null Primary Key, "
                       "NamHesab NVarchar(100) Null, "
                       "RecogName NVarchar(100) Null, "
                       "IsActive NVarchar(10) Null, "
                       "IsPosHesab NVarchar(10) Null, "
                       "DesChar NVarchar(50) Null, "
                       "GrohTafsily2 Varchar(200) Null, "
                       "Tafsily2Joz Varchar(1000) Null, "
                       "GrohProject Varchar(200) Null, "
                       "ProjectJoz Varchar(1000) Null)"),
        QStringLiteral("Create Table Tafsily2 ("
                       "Tafsily2 Varchar(5) Not Null Primary Key, "
                       "NamHesab NVarchar(100) Null, "
                       "RecogName NVarchar(100) Null, "
                       "IsActive NVarchar(10) Null, "
                       "IsPosHesab NVarchar(10) Null, "
                       "DesChar NVarchar(50) Null, "
                       "GrohProject Varchar(200) Null, "
                       "ProjectJoz Varchar(1000) Null)"),
        QStringLiteral("Create Table M_Project ("
                       "ProjectCod Varchar(10) Not Null Primary Key, "
                       "ProjectNam NVarchar(100) Null, "
                       "RecogName NVarchar(100) Null, "
                       "IsActive NVarchar(10) Null, "
                       "IsPosHesab NVarchar(10) Null, "
                       "DesChar NVarchar(50) Null)"),
        QStringLiteral("Create Table Person ("
                       "Code Varchar(10) Not Null Primary Key, "
                       "[Name] NVarchar(50) Null, "
                       "Family NVarchar(50) Null, "
                       "Tafsily Varchar(5) Null, "
                       "Telephone Varchar(50) Null, "
                       "Address NVarchar(200) Null)"),
        QStringLiteral("Create Table N_ManabehG ("
                       "ManabehGCod Varchar(2) Not Null Primary Key, "
                       "ManabehGNam NVarchar(100) Null)"),
        QStringLiteral("Create Table N_ManabehZG ("
                       "ManabehGCod Varchar(2) Not Null, "
                       "ManabehZGCod Varchar(3) Not Null, "
                       "ManabehZGNam NVarchar(100) Null, "
                       "Primary Key (ManabehGCod, ManabehZGCod))"),
        // ManabehType: "MANABEH" (sources, offered on receipts) or "MASAREF" (uses, on payments).
        QStringLiteral("Create Table N_Manabeh ("
                       "ManabehCod Varchar(5) Not Null Primary Key, "
                       "ManabehNam NVarchar(100) Null, "
                       "ManabehGCod Varchar(2) Null, "
                       "ManabehZGCod Varchar(3) Null, "
                       "ManabehType Varchar(10) Not Null Default 'MANABEH', "
                       "IsActive NVarchar(10) Null)"),
        QStringLiteral("Create Index IX_N_Manabeh_Type On N_Manabeh (ManabehType, ManabehCod)"),
    };
}

}  // namespace tr::schema::detail
