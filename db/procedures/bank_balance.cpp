#include "db/procedures/bank_balance.h"

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "db/procedures/posting.h"

namespace tr::procedures {

tr::db::ExecResult reportBankAccountBalance(tr::db::Connection& c, const Args& args) {
    if (args.size() != 2) {
        throw tr::db::DatabaseError(
            QStringLiteral("sp_N_Report_Acount expects 2 arguments, got %1").arg(args.size()));
    }
    bool number = false;
    const qint64 account = args[0].toString().trimmed().toLongLong(&number);
    if (!number) refuse(QStringLiteral("شماره حساب ثبت نشده است."));
    const QString upTo = args[1].toString().trimmed();
    const tr::db::Query heads = tr::db::openQuery(
        c, QStringLiteral("Select JKoll, JMoein, JTafsily, JTafsily2, JProjectCod From N_BankHesab Where AcountID = ") +
               tr::db::sqlNumber(account));
    if (heads.IsEmpty()) refuse(QStringLiteral("شماره حساب ثبت نشده است."));
    QString where = QStringLiteral(" Where Koll = ") + c.text(trimmedText(heads.value(0, 0))) +
                    QStringLiteral(" And Moein = ") + c.text(trimmedText(heads.value(0, 1)));
    // A level the account leaves empty takes every line of the levels above it.
    const char* levels[] = {"Tafsily", "Tafsily2", "ProjectCod"};
    for (int i = 0; i < 3; ++i) {
        const QString code = trimmedText(heads.value(0, 2 + i));
        if (!code.isEmpty()) where += QStringLiteral(" And %1 = ").arg(QLatin1String(levels[i])) + c.text(code);
    }
    if (!upTo.isEmpty()) where += QStringLiteral(" And SanadDate <= ") + c.text(validDate(upTo));
    return c.execute(QStringLiteral("Select IsNull(Sum(Bed), 0) - IsNull(Sum(Bes), 0) As Mandeh From Asnad") + where);
}

}  // namespace tr::procedures
