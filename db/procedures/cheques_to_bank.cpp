#include "db/procedures/cheques_to_bank.h"

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"

namespace tr::procedures {

namespace {

QString arg(const Args& args, std::size_t i) { return i < args.size() ? args[i].toString().trimmed() : QString(); }

}  // namespace

tr::db::ExecResult listChequesSentToBank(tr::db::Connection& c, const Args& args) {
    if (args.empty() || args.size() > 6) {
        throw tr::db::DatabaseError(
            QStringLiteral("sp_N_Asnad_Chq_SendToBank expects 1 to 6 arguments, got %1").arg(args.size()));
    }
    const QString table = arg(args, 0);
    if (!table.startsWith(QLatin1String("##"))) throw tr::db::DatabaseError(QStringLiteral("not a work table: ") + table);
    // Texts wider than the list's columns are cut to them (a long bank name, a drawer's account
    // number typed long), as the list's widths are fixed.
    // The collection's own treasury row (A) names the cheque and our bank account; undo deletes
    // it, so an existing row is a collection that stands. The receipt's row (N), reached through
    // the cheque's latest receipt before the collection, names the drawer's bank and account.
    QString where = QStringLiteral(" Where A.WhatDoc = '72'");
    if (!arg(args, 1).isEmpty()) where += QStringLiteral(" And A.SanadDate >= ") + c.text(arg(args, 1));
    if (!arg(args, 2).isEmpty()) where += QStringLiteral(" And A.SanadDate <= ") + c.text(arg(args, 2));
    if (!arg(args, 3).isEmpty()) where += QStringLiteral(" And LTrim(RTrim(H.AcountCod)) = ") + c.text(arg(args, 3));
    if (!arg(args, 4).isEmpty()) where += QStringLiteral(" And LTrim(RTrim(N.WhatDoc2)) >= ") + c.text(arg(args, 4));
    if (!arg(args, 5).isEmpty()) where += QStringLiteral(" And LTrim(RTrim(N.WhatDoc2)) <= ") + c.text(arg(args, 5));
    const QString voucher = QStringLiteral(
        "From Asnad As V Where V.TypeSys = 'N' And V.WhatDoc = '72' And V.Bed > 0 And V.Document = "
        "Cast(A.IDX As Varchar(20))");
    return c.execute(
        QStringLiteral("Insert Into ") + table +
        QStringLiteral(
            " (IDX, sSelect, Serial, AcountID, BankCod, ShobehCod, ShobehNam, AcountCod, SanadNo, Des, Joz, ChqNo, "
            "ChqValue, GetterCheque, SodorDate, SarResidDate, ActionDate, BankName, HesabVago, Havaleh, Tazmin, "
            "sOrder1, sOrder2) "
            "Select A.IDX, '', N.Serial, H.AcountID, N.WhatDoc2, Left(N.CodWhatDoc2, 20), N.Des1, Left(N.Des2, 20), "
            "IsNull((Select Cast(Max(V.SanadNo) As Varchar(20)) ") +
        voucher +
        QStringLiteral("), ''), N.Des5, A.Joz, A.CodWhatDoc, IsNull((Select Max(V.Bed) ") + voucher +
        QStringLiteral("), 0), N.Des6, R.SanadDate, IsNull((Select Max(V.AtfDate) ") + voucher +
        QStringLiteral("), ''), A.SanadDate, Left(IsNull(B.BankNam, ''), 20), LTrim(RTrim(H.AcountCod)), Left(N.Des3, 1), "
                       "Left(N.Des4, 1), "
                       "A.SanadDate, Right('000000000000' + Cast(A.IDX As Varchar(12)), 12) "
                       "From N_NaghdTrans As A Inner Join N_BankHesab As H On (Cast(H.AcountID As Varchar(20)) = "
                       "A.CodWhatDoc2) Inner Join N_ChqLastTrans As S On (S.ChqNo = A.CodWhatDoc And S.WhatDoc = '72' "
                       "And S.CodWhatDoc = Cast(A.IDX As Varchar(20))) Inner Join N_ChqLastTrans As R On "
                       "(R.WhatDoc = '71' And R.IDX = (Select Max(R2.IDX) From N_ChqLastTrans As R2 Where R2.WhatDoc = '71' And R2.ChqNo = "
                       "S.ChqNo And IsNull(R2.Joz, '') = IsNull(S.Joz, '') And R2.IDX < S.IDX)) Inner Join "
                       "N_NaghdTrans As N On (Cast(N.IDX As Varchar(20)) = R.CodWhatDoc) Left Join N_Bank As B On "
                       "(B.BankCod = N.WhatDoc2)") +
        where);
}

}  // namespace tr::procedures
