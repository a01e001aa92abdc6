// The suite database CORVASK_Sdc: companies and their fiscal years, users, and each user's
// rights text per company, year and program.
#include "db/schema/table_families.h"

namespace tr::schema::detail {

QStringList suiteTables() {
    return {
        QStringLiteral("Create Table SDC_Company ("
                       "sCode Varchar(10) Not Null, "
                       "sYear Varchar(4) Not Null, "
                       "CompanyNam NVarchar(100) Not Null, "
                       "StartDate Varchar(10) Not Null, "
                       "EndDate Varchar(10) Not Null, "
                       "Primary Key (sCode, sYear))"),
        QStringLiteral("Create Table SDC_User ("
                       "UserId Int Not Null Primary Key, "
                       "UserName NVarchar(50) Not Null, "
                       "FullName NVarchar(100) Null, "
                       "IsActive Bit Not Null Default 1)"),
        // Rights: the action markers of every screen key the user may use, e.g.
        // "N_A_CASHGET__SABT(Y)N_A_CASHGET__EDIT(Y)"; ProgNam 'N' is this module.
        QStringLiteral("Create Table UserSdcDetail ("
                       "UserId Int Not Null, "
                       "sCode Varchar(10) Not Null, "
                       "sYear Varchar(4) Not Null, "
                       "ProgNam Varchar(10) Not Null, "
                       "Rights Text Null, "
                       "Primary Key (UserId, sCode, sYear, ProgNam))"),
    };
}

}  // namespace tr::schema::detail
