#include "db/procedures/returned_cheques.h"

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "instruments/latest_state.h"
#include "instruments/returned_cheque_table.h"

namespace tr::procedures {

tr::db::ExecResult reportReturnedCheques(tr::db::Connection& c, const Args& args) {
    if (args.size() != 6) {
        throw tr::db::DatabaseError(
            QStringLiteral("sp_N_Report_ChqGetReturned expects 6 arguments, got %1").arg(args.size()));
    }
    const QString table = args[0].toString().trimmed();
    if (!table.startsWith(QLatin1String("##")) || table.contains(QLatin1Char(' ')))
        throw tr::db::DatabaseError(QStringLiteral("sp_N_Report_ChqGetReturned: bad table name ") + table);
    if (tr::db::objectExistsInTempdb(c, table)) c.execute(QStringLiteral("Drop Table ") + table);
    c.execute(QStringLiteral("Create Table ") + table + QStringLiteral(" (") +
              tr::instruments::returnedChequeTableColumns() + QStringLiteral(")"));

    QString account;
    const char* levels[] = {"Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod"};
    for (int i = 0; i < 5; ++i) {
        const QString code = args[1 + i].toString().trimmed();
        if (!code.isEmpty()) account += QStringLiteral(" And A.%1 = ").arg(QLatin1String(levels[i])) + c.text(code);
    }
    // The return's voucher names the treasury row its state row holds; its debit lines are the
    // accounts the cheque went back to.
    c.execute(QStringLiteral("Insert Into ") + table +
              QStringLiteral(" (ChqNo, Joz, Des, SanadNo, SanadDate, ChqValue, HesabDarJaryan, TafNam) ") +
              tr::instruments::latestRowsQuery(
                  tr::instruments::chequeHistory(),
                  QStringLiteral("L.ChqNo, L.Joz, A.Des, Cast(A.SanadNo As Varchar(10)), A.SanadDate, A.Bed, "
                                 "A.Koll + '-' + A.Moein + Case When IsNull(A.Tafsily, '') = '' Then '' Else '-' + A.Tafsily "
                                 "End, T.NamHesab"),
                  QStringLiteral(" And L.WhatDoc = '78'"),
                  QStringLiteral("Inner Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = '78' And A.Bed > 0 And "
                                 "LTrim(A.Document) = LTrim(L.CodWhatDoc)") +
                      account + QStringLiteral(") Left Join Tafsily As T On (T.Tafsily = A.Tafsily)")));
    // The drawee bank, branch, drawer's account and payee from the cheque's receipt row.
    c.execute(QStringLiteral("Update R Set R.BankCod = N.WhatDoc2, R.ShobehCod = N.CodWhatDoc2, R.AcountCod = N.Des2, "
                             "R.ChqGetter = N.Des6, R.AcountNam = N.Des1 From ") +
              table +
              QStringLiteral(" As R Inner Join N_ChqLastTrans As F On (F.WhatDoc = '71' And LTrim(RTrim(F.ChqNo)) = "
                             "LTrim(RTrim(R.ChqNo)) And LTrim(RTrim(IsNull(F.Joz, ''))) = LTrim(RTrim(IsNull(R.Joz, '')))) "
                             "Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20)) = LTrim(F.CodWhatDoc))"));
    c.execute(QStringLiteral("Update R Set R.AcountNam = B.BankNam + '-' + IsNull(R.AcountNam, '') From ") + table +
              QStringLiteral(" As R Inner Join N_Bank As B On (B.BankCod = R.BankCod)"));
    c.execute(QStringLiteral("Update R Set R.SarResidDate = Q.AtfDate From ") + table +
              QStringLiteral(" As R Inner Join Asnad As Q On (Q.TypeSys = 'N' And Q.WhatDoc = '71' And Q.Bed > 0 And "
                             "LTrim(RTrim(Q.AtfCh)) = LTrim(RTrim(R.ChqNo)) And LTrim(RTrim(IsNull(Q.DocToDate, ''))) = "
                             "LTrim(RTrim(IsNull(R.Joz, ''))))"));
    return {};
}

}  // namespace tr::procedures
