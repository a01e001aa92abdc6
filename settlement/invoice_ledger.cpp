#include "settlement/invoice_ledger.h"

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"

namespace tr::settlement {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::withoutHashes;

}  // namespace

QStringList InvoiceLedger::openPeriods(const QStringList& extraPeriodsSql) const {
    tr::db::Connection& c = connection();
    QStringList periods;
    const auto add = [&](const QString& sql) {
        const tr::db::Query rows = openQuery(c, sql);
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const QString period = rows.value(row, 0).toString().trimmed();
            if (!period.isEmpty() && !periods.contains(period)) periods << period;
        }
    };
    add(QStringLiteral("select Distinct DorehMali From R_OldFactor WHERE MandehFactor <> 0"));
    for (const QString& sql : extraPeriodsSql) add(sql);
    periods.sort();
    return periods;
}

QString InvoiceLedger::remainingExpression(const SettlementKind& kind, const QString& prefix,
                                           const QString& others) const {
    if (kind.remaining == RemainingRule::OldFactor)
        return QStringLiteral("O.FactorValue - O.NaghdValue1 - ") + others;
    // The sales module's own figures: the invoice's total, what the till took in cash and the
    // gift vouchers redeemed against it.
    return QStringLiteral("IsNull(S.TotalSale, O.FactorValue) - IsNull((Select Sum(P.PayValue) From ") + prefix +
           QStringLiteral("R_NaghdPay As P Where P.SanadNoForosh = O.SanadNoForosh And P.TypeAction = '3'), 0) - "
                          "IsNull((Select Sum(B.BonPrice) From ") +
           prefix + QStringLiteral("R_Bon_Tran As B Inner Join ") + prefix +
           QStringLiteral("R_Bon_Serial As BS On BS.BonSerial = B.BonSerial Where B.SanadNoForosh = O.SanadNoForosh "
                          "And BS.Status = 'B' And BS.DocType = 'F'), 0) - ") +
           others;
}

void InvoiceLedger::fillOpenInvoices(const SettlementKind& kind, const QString& table, const OwnAllocations& own,
                                     const QStringList& extraPeriodsSql) const {
    tr::db::Connection& c = connection();
    tr::db::MyDatabase& database = *services_.database;
    tr::db::dropTempTable(database, withoutHashes(table));
    tr::db::execute(database, QStringLiteral("Create Table ") + table +
                                  QStringLiteral(" (sSelect Varchar(1), DorehMali Varchar(10), SanadNoForosh "
                                                 "Varchar(20), FactorDate Varchar(10), FactorValue Float, GetValue "
                                                 "Float, NaghdValue Float, CustomerNam NVarchar(100), ChqValue Float, "
                                                 "ChqNo Varchar(20), CustomerCod Varchar(10), ID Int Identity(1, 1))"));
    // What every other payer pays the invoice: the saved links of every kind but the payer's own,
    // and what other payers of the document wait to write.
    QString others = QStringLiteral("IsNull((Select Sum(R.NaghdValue) From R_ForoshRelatedNaghd As R Where "
                                    "R.SanadNoForosh = O.SanadNoForosh And R.DorehMali = O.MainDorehMali And Not (") +
                     (own.replacedLinks.isEmpty() ? own.savedLinks : own.replacedLinks) + QStringLiteral(")), 0)");
    if (!own.othersPending.isEmpty())
        others += QStringLiteral(" - IsNull((Select Sum(W.NaghdValue) From (") + own.othersPending +
                  QStringLiteral(") As W Where W.SanadNoForosh = O.SanadNoForosh And W.DorehMali = O.MainDorehMali), 0)");
    tr::db::ScopedTempTable totals(database, table + QStringLiteral("Sale"));
    for (const QString& period : openPeriods(extraPeriodsSql)) {
        const QString name = tr::db::companyDatabaseName(c, services_.global->sCode.trimmed(), period);
        if (name.isEmpty()) continue;
        // The current period's tables are read without a database prefix.
        const bool current = name.compare(c.databaseName(), Qt::CaseInsensitive) == 0;
        const QString prefix = current ? QString() : name + QStringLiteral("..");
        QString join;
        if (kind.remaining == RemainingRule::SalesSummary) {
            // Another period's database is opened on its first use, which may not fall inside
            // the procedure's transaction.
            if (!current) firstColumn(c, QStringLiteral("Select Count(*) From ") + prefix + QStringLiteral("R_FactorForosh"));
            c.execute(QStringLiteral("Exec sp_R_Report_TotalSale 'FACT', 'SUMMARY', ") + c.text(totals.name()) +
                      QStringLiteral(", ") + c.text(current ? QString() : name));
            join = QStringLiteral(" Left Join ") + totals.name() + QStringLiteral(" As S On S.SanadNoForosh = O.SanadNoForosh");
        }
        QString sql = QStringLiteral("Insert Into ") + table +
                      QStringLiteral(" (sSelect, DorehMali, SanadNoForosh, FactorDate, FactorValue, GetValue, NaghdValue, "
                                     "CustomerNam, CustomerCod) Select '', O.MainDorehMali, O.SanadNoForosh, F.SanadDate, "
                                     "O.FactorValue, ") +
                      remainingExpression(kind, prefix, others) +
                      QStringLiteral(", 0, C.CustomerNam, F.CustomerCod From R_OldFactor As O Inner Join ") + prefix +
                      QStringLiteral("R_FactorForosh As F On F.SanadNoForosh = O.SanadNoForosh Left Join ") + prefix +
                      QStringLiteral("R_Customer As C On C.CustomerCod = F.CustomerCod") + join +
                      QStringLiteral(" Where O.MainDorehMali = ") + c.text(period);
        tr::db::execute(database, sql);
    }
    totals.drop();
    // The payer's own allocations: those waiting for the save, else the saved ones.
    const tr::db::Query mine = openQuery(
        c, !own.pendingSelect.isEmpty()
               ? QStringLiteral("Select SanadNoForosh, DorehMali, Sum(NaghdValue) From (") + own.pendingSelect +
                     QStringLiteral(") As W Group By SanadNoForosh, DorehMali")
               : QStringLiteral("Select SanadNoForosh, DorehMali, Sum(NaghdValue) From R_ForoshRelatedNaghd As R Where ") +
                     own.savedLinks + QStringLiteral(" Group By SanadNoForosh, DorehMali"));
    for (int row = 0; row < mine.RecordCount(); ++row) {
        tr::db::execute(database, QStringLiteral("Update ") + table + QStringLiteral(" Set sSelect = 'P', NaghdValue = ") +
                                      tr::db::sqlNumber(mine.value(row, 2).toDouble()) +
                                      QStringLiteral(" Where SanadNoForosh = ") +
                                      c.text(mine.value(row, 0).toString().trimmed()) +
                                      QStringLiteral(" And DorehMali = ") + c.text(mine.value(row, 1).toString().trimmed()));
    }
    tr::db::execute(database, QStringLiteral("Delete From ") + table +
                                  QStringLiteral(" Where sSelect <> 'P' And GetValue < 0.005"));
}

QString InvoiceLedger::paymentsTitle(const QString& invoice) {
    return QStringLiteral("وجوه پرداختي صورتحساب شماره : ") + invoice.trimmed();
}

void InvoiceLedger::showPayments(const QString& scratch, const QString& invoice, const QString& period) const {
    if (!services_.pickList) return;
    tr::db::Connection& c = connection();
    tr::db::MyDatabase& database = *services_.database;
    tr::db::ScopedTempTable table(database, scratch);
    tr::db::dropTempTable(database, withoutHashes(table.name()));
    QString sql = QStringLiteral("SELECT N.NDocNam,Serial,AtfCh,SanadNoForosh,NaghdValue Into ") + table.name() +
                  QStringLiteral(" FROM R_ForoshRelatedNaghd D JOIN N_AsnadNaghd N ON N.WhatDoc = "
                                 "D.WhatDoc WHERE LTRIM(RTRIM(D.SanadNoForosh)) = ") +
                  c.text(invoice.trimmed()) + QStringLiteral(" AND D.NaghdValue <>0");
    if (!period.trimmed().isEmpty()) sql += QStringLiteral(" AND DorehMali = ") + c.text(period.trimmed());
    tr::db::execute(database, sql);
    const QList<tr::dialog::PickColumn> columns = {
        {QStringLiteral("NDocNam"), QStringLiteral("نوع پرداخت"), 140},
        {QStringLiteral("Serial"), QStringLiteral("سريال"), 70},
        {QStringLiteral("AtfCh"), QStringLiteral("شناسه"), 90},
        {QStringLiteral("SanadNoForosh"), QStringLiteral("صورتحساب"), 90},
        {QStringLiteral("NaghdValue"), QStringLiteral("مبلغ پرداختي"), 120},
    };
    services_.pickList->pick(paymentsTitle(invoice),
                             QStringLiteral("Select * From ") + table.name() + QStringLiteral(" Order By SanadNoForosh"),
                             columns, 0);
    table.drop();
}

QString InvoiceLedger::customerOf(const QString& code, const QString& koll, const QString& moein,
                                  const QString& tafsily) const {
    tr::db::Connection& c = connection();
    return tr::db::firstValueWhere(c, QStringLiteral("CustomerCod"), QStringLiteral("R_Customer"),
                                   QStringLiteral("CustomerCod = ") + c.text(code.trimmed()) +
                                       QStringLiteral(" Or (Koll = ") + c.text(koll.trimmed()) +
                                       QStringLiteral(" And Moein = ") + c.text(moein.trimmed()) +
                                       QStringLiteral(" And Tafsily = ") + c.text(tafsily.trimmed()) +
                                       QStringLiteral(")"))
        .toString()
        .trimmed();
}

QString InvoiceLedger::invoicePeriod(const QString& invoice) const {
    tr::db::Connection& c = connection();
    const QString year = services_.global->sYear.trimmed();
    const QVariant here = tr::db::firstColumn(
        c, QStringLiteral("Select Count(*) From R_FactorForosh Where LTrim(RTrim(SanadNoForosh)) = ") + c.text(invoice.trimmed()));
    if (here.toInt() > 0) return year;
    // An earlier period's invoice is known here only through R_OldFactor.
    const QVariant period = tr::db::firstColumn(
        c, QStringLiteral("Select Top 1 MainDorehMali From R_OldFactor Where SanadNoForosh = ") + c.text(invoice.trimmed()) +
               QStringLiteral(" Order By MainDorehMali Desc"));
    return period.isNull() ? year : period.toString().trimmed();
}

QList<InvoiceKey> InvoiceLedger::linkedInvoices(const QString& condition) const {
    const tr::db::Query rows = openQuery(
        connection(), QStringLiteral("Select Distinct SanadNoForosh, DorehMali From R_ForoshRelatedNaghd As R Where ") +
                          condition);
    QList<InvoiceKey> invoices;
    for (int row = 0; row < rows.RecordCount(); ++row)
        invoices << InvoiceKey{rows.value(row, 0).toString().trimmed(), rows.value(row, 1).toString().trimmed()};
    return invoices;
}

void InvoiceLedger::recomputeInvoices(tr::db::MyDatabase& database, const QString& kind) {
    tr::db::Connection& c = *database.Connection;
    tr::db::execute(database, QStringLiteral("UPDATE R_OldFactor SET  NaghdValue = NaghdValue1 "));
    tr::db::execute(database,
                    QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue + IsNull((Select "
                                   "Sum(R.NaghdValue) From R_ForoshRelatedNaghd As R Where R.WhatDoc = ") +
                        c.text(kind) +
                        QStringLiteral(" And R.SanadNoForosh + '_' + R.DorehMali = R_OldFactor.SanadNoForosh "
                                       "+ '_' + R_OldFactor.MainDorehMali), 0)"));
    tr::db::execute(database, QStringLiteral("UPDATE R_OldFactor SET MandehFactor = FactorValue - NaghdValue "));
}

void InvoiceLedger::recomputeInvoicesOf(tr::db::MyDatabase& database, const QList<InvoiceKey>& invoices) {
    tr::db::Connection& c = *database.Connection;
    for (const InvoiceKey& invoice : invoices) {
        const QString which = QStringLiteral(" Where SanadNoForosh = ") + c.text(invoice.number) +
                              QStringLiteral(" And MainDorehMali = ") + c.text(invoice.period);
        tr::db::execute(database,
                        QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1 + IsNull((Select "
                                       "Sum(R.NaghdValue) From R_ForoshRelatedNaghd As R Where "
                                       "R.SanadNoForosh = R_OldFactor.SanadNoForosh And R.DorehMali = "
                                       "R_OldFactor.MainDorehMali), 0)") +
                            which);
        tr::db::execute(database, QStringLiteral("Update R_OldFactor Set MandehFactor = FactorValue - NaghdValue") + which);
    }
}

}  // namespace tr::settlement
