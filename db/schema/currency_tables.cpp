// Currencies, their buy/sell rate history and the currency details of saved document lines.
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList currencyTables() {
    return {
        QStringLiteral("Create Table N_Arz ("
                       "ArzCod Varchar(2) Not Null Primary Key, "
                       "ArzNam NVarchar(50) Null)"),
        // HourNerkh is "HH:MM" zero-padded so that Max() is the latest time of the day.
        QStringLiteral("Create Table N_NerkhArz ("
                       "ArzCod Varchar(2) Not Null, "
                       "DateNerkh Varchar(10) Not Null, "
                       "HourNerkh Varchar(8) Not Null, "
                       "Buy Float Null, "
                       "Sell Float Null, "
                       "Primary Key (ArzCod, DateNerkh, HourNerkh))"),
        // IDX is the N_NaghdTrans line the amounts belong to.
        QStringLiteral("Create Table N_ArzTrans ("
                       "ID Int Identity(1,1) Primary Key, "
                       "IDX Int Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "Serial Int Not Null, "
                       "Raj Int Null, "
                       "ArzCod Varchar(2) Null, "
                       "ArzNam NVarchar(50) Null, "
                       "ArzCount Float Null, "
                       "Nerkh Float Null, "
                       "ArzCod2 Varchar(2) Null, "
                       "ArzNam2 NVarchar(50) Null, "
                       "ArzCount2 Float Null, "
                       "Nerkh2 Float Null, "
                       "ArzUnitPrice Float Null, "
                       "ArzTotalPrice Float Null)"),
        QStringLiteral("Create Index IX_N_ArzTrans_Doc On N_ArzTrans (WhatDoc, Serial)"),
        QStringLiteral("Create Index IX_N_ArzTrans_Line On N_ArzTrans (IDX)"),
    };
}

}  // namespace tr::schema::detail
