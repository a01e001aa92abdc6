// Promissory notes: the action history of every note and the opening-balance note documents.
#include "db/schema/account_columns.h"
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList noteTables() {
    return {
        // One row per transaction of a note; the latest row (highest IDX) is its state.
        QStringLiteral("Create Table N_SoftehLastTrans ("
                       "IDX Int Identity(1,1) Primary Key, "
                       "WhatDoc Varchar(2) Not Null, "
                       "SoftehNo Varchar(20) Not Null, "
                       "Joz Varchar(10) Null, "
                       "SanadDate Varchar(10) Null, "
                       "CodWhatDoc Varchar(20) Null, "
                       "Serial Int Not Null Default 0)"),
        QStringLiteral("Create Index IX_N_SoftehLastTrans_Note On N_SoftehLastTrans "
                       "(SoftehNo, Joz, IDX)"),
        QStringLiteral(
            "Create Index IX_N_SoftehLastTrans_Doc On N_SoftehLastTrans (WhatDoc, Serial)"),

        // SoftehOrTaraf 1 = note line, 2 = counter-account line; IDX is the N_NaghdTrans row.
        QStringLiteral("Create Table N_SoftehFirst ("
                       "IDX Int Null, "
                       "WhatDoc Varchar(2) Not Null, "
                       "LastWhatDoc Varchar(2) Null, "
                       "SoftehOrTaraf Int Not Null, "
                       "Serial Int Not Null, "
                       "Raj Int Null, "
                       "SoftehNo Varchar(20) Null, "
                       "Joz Varchar(10) Null, "
                       "SoftehValue Float Null, "
                       "TahodValue Float Null, "
                       "Des NVarchar(200) Null, "
                       "SarResidDate Varchar(10) Null, "
                       "WhatDoc2 Varchar(10) Null, ") +
            accountColumns() +
            QStringLiteral(", "
                           "SalMale Varchar(4) Null, "
                           "SherCode Varchar(10) Null, "
                           "User_Name NVarchar(50) Null)"),
        QStringLiteral("Create Index IX_N_SoftehFirst_Note On N_SoftehFirst (SoftehNo, Joz)"),
        QStringLiteral("Create Index IX_N_SoftehFirst_Doc On N_SoftehFirst "
                       "(WhatDoc, Serial, SoftehOrTaraf)"),
    };
}

}  // namespace tr::schema::detail
