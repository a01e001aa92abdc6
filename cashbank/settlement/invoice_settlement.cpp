#include "cashbank/settlement/invoice_settlement.h"

#include <stdexcept>

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/db/transaction.h"

namespace tr::cashbank {

namespace {

using tr::db::openQuery;
using tr::db::sqlNumber;
using tr::db::withoutHashes;

}  // namespace

QString InvoiceSettlement::windowCaption() {
    return QStringLiteral(" ثبت چک در صورتحساب");
}
QString InvoiceSettlement::amountCaption() {
    return QStringLiteral("مبلغ دريافت صندوق : ");
}
QString InvoiceSettlement::remainingCaption() {
    return QStringLiteral("باقيمانده دريافت صندوق :");
}
QString InvoiceSettlement::customerFilterCaption() {
    return QStringLiteral("پالايش مشتري");
}

const SettlementKind* InvoiceSettlement::findKind(const QString& code) {
    static const SettlementKind receipt{
        QStringLiteral("10"), QStringLiteral("        ثبت دريافت صندوق در صورتحساب"),
        QStringLiteral("شماره دريافت صندوق : "), QStringLiteral("دريافت صندوق")};
    static const SettlementKind deposit{
        QStringLiteral("50"), QStringLiteral("        ثبت واريز بانک در صورتحساب"),
        QStringLiteral("شماره واريز بانک : "), QStringLiteral("واريز بانک")};
    const QString c = code.trimmed();
    if (c == receipt.code) return &receipt;
    if (c == deposit.code) return &deposit;
    return nullptr;
}

namespace {
const SettlementKind& kindOf(const tr::vouchers::N_Global& document) {
    const SettlementKind* kind = InvoiceSettlement::findKind(document.kind().code);
    if (!kind)
        throw std::invalid_argument("invoice settlement serves cash receipts and bank deposits");
    return *kind;
}
}  // namespace

InvoiceSettlement::InvoiceSettlement(const tr::Services& services, tr::vouchers::N_Global& document)
    : services_(services),
      document_(document),
      kind_(kindOf(document)),
      messages_(services.dialog) {
    document_.writeInvoiceLinks = [this](tr::vouchers::N_Global&) { writeInvoiceLinks(); };
    document_.undoInvoiceSettlement = [this](tr::vouchers::N_Global&) { undoInvoiceSettlement(); };
}

InvoiceSettlement::~InvoiceSettlement() {
    document_.writeInvoiceLinks = nullptr;
    document_.undoInvoiceSettlement = nullptr;
    tr::db::dropTempTableQuietly(database(), withoutHashes(invoiceListTable()));
    tr::db::dropTempTableQuietly(database(), withoutHashes(pendingTable()));
}

QString InvoiceSettlement::serialNumber() const {
    return sqlNumber(serial().toLongLong());
}

QString InvoiceSettlement::existingSerial(const QString& invoice) const {
    tr::db::Connection& c = connection();
    tr::db::Query link = openQuery(
        c, QStringLiteral("Select Top 1 * From R_ForoshRelatedNaghd Where SanadNoForosh = ") +
               c.text(invoice.trimmed()) + QStringLiteral(" And TypeAction = '1' And Whatdoc = ") +
               c.text(kind_.code) + QStringLiteral(" "));
    if (link.IsEmpty()) return {};
    return link.FieldByName(QStringLiteral("Serial")).AsString().trimmed();
}

std::optional<SalesInvoice> InvoiceSettlement::readInvoice(const QString& invoice) const {
    tr::db::Connection& c = connection();
    const tr::db::Query rows = openQuery(
        c, QStringLiteral("Select F.SanadNoForosh, F.SanadDate, F.CustomerCod, C.CustomerNam, "
                          "F.Koll, F.Moein, F.Tafsily, F.Tafsily2, F.ProjectCod, F.SellValue "
                          "From R_FactorForosh As F Left Join R_Customer As C On C.CustomerCod = "
                          "F.CustomerCod Where LTrim(RTrim(F.SanadNoForosh)) = ") +
               c.text(invoice.trimmed()));
    if (rows.IsEmpty()) return std::nullopt;
    const auto text = [&](int i) { return rows.value(0, i).toString().trimmed(); };
    SalesInvoice found;
    found.number = text(0);
    found.date = text(1);
    found.customer = text(2);
    found.customerName = text(3);
    found.koll = text(4);
    found.moein = text(5);
    found.tafsily = text(6);
    found.tafsily2 = text(7);
    found.projectCod = text(8);
    found.sellValue = rows.value(0, 9).toDouble();
    return found;
}

bool InvoiceSettlement::prefill(const SalesInvoice& invoice) {
    tr::vouchers::DocumentHeader& header = document_.header();
    header.setDate(invoice.date);
    header.amount = invoice.sellValue;
    // Both the header and the line need a description before the save accepts them.
    const QString description = QStringLiteral("بابت صورتحساب فروش شماره ") + invoice.number;
    if (header.description.trimmed().isEmpty()) header.description = description;
    tr::db::Query& grid = document_.grid();
    grid.Append();
    grid.FieldByName(QStringLiteral("Koll")).SetAsString(invoice.koll);
    grid.FieldByName(QStringLiteral("Moein")).SetAsString(invoice.moein);
    grid.FieldByName(QStringLiteral("Tafsily")).SetAsString(invoice.tafsily);
    grid.FieldByName(QStringLiteral("Tafsily2")).SetAsString(invoice.tafsily2);
    grid.FieldByName(QStringLiteral("ProjectCod")).SetAsString(invoice.projectCod);
    grid.FieldByName(QStringLiteral("Des")).SetAsString(description);
    grid.FieldByName(tr::vouchers::sideColumn(document_.kind().gridSide()))
        .SetAsFloat(invoice.sellValue);
    // '01' is the customer counter-party: the links of an invoice-bound save are its lines.
    grid.FieldByName(QStringLiteral("WhatDoc2")).SetAsString(QStringLiteral("01"));
    grid.FieldByName(QStringLiteral("CodWhatDoc2")).SetAsString(invoice.customer);
    grid.FieldByName(QStringLiteral("NamWhatDoc2")).SetAsString(invoice.customerName);
    grid.Post();
    return grid.state() == tr::db::Query::State::Browse;
}

bool InvoiceSettlement::prepareForInvoice(const QString& invoice) {
    // The settlement takes the invoice only with the document: after a failure the next save
    // must not bind the document still shown to it.
    const QString number = invoice.trimmed();
    const QString existing = existingSerial(number);
    // The count is read in the open's transaction; the note waits until the open has committed.
    int invoices = 0;
    if (!existing.isEmpty() &&
        document_.openDocument(existing, [&] { invoices = settledInvoiceCount(existing); })) {
        setInvoiceNumber(number);
        if (invoices > 1) noteMultiInvoice();
        return true;
    }
    // The new document and its line from the invoice come together or not at all.
    const std::optional<SalesInvoice> found = readInvoice(number);
    document_.newDocument([&] {
        if (found) prefill(*found);
    });
    setInvoiceNumber(number);
    return false;
}

int InvoiceSettlement::settledInvoiceCount(const QString& serial) const {
    return tr::db::openQuery(connection(), QStringLiteral("Select Distinct SanadNoForosh From "
                                                          "R_ForoshRelatedNaghd Where WhatDoc = ") +
                                               connection().text(kind_.code) +
                                               QStringLiteral(" And Serial = ") +
                                               sqlNumber(serial.trimmed().toLongLong()) +
                                               QStringLiteral(" And TypeAction = '1'"))
        .RecordCount();
}

void InvoiceSettlement::noteMultiInvoice() {
    messages_.note(QStringLiteral("اين شماره سريال چند فاکتوري است"));
}


QString InvoiceSettlement::invoicePeriod(const QString& invoice) const {
    tr::db::Connection& c = connection();
    const QString year = services_.global->sYear.trimmed();
    if (readInvoice(invoice)) return year;
    // An earlier period's invoice is known here only through R_OldFactor.
    const QVariant period = tr::db::firstColumn(
        c, QStringLiteral("Select Top 1 MainDorehMali From R_OldFactor Where SanadNoForosh = ") +
               c.text(invoice) + QStringLiteral(" Order By MainDorehMali Desc"));
    return period.isNull() ? year : period.toString().trimmed();
}

void InvoiceSettlement::recomputeInvoices(tr::db::MyDatabase& database, const QString& kind) {
    tr::db::Connection& c = *database.Connection;
    tr::db::execute(database, QStringLiteral("UPDATE R_OldFactor SET  NaghdValue = NaghdValue1 "));
    tr::db::execute(
        database,
        QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue + IsNull((Select "
                       "Sum(R.NaghdValue) From R_ForoshRelatedNaghd As R Where R.WhatDoc = ") +
            c.text(kind) +
            QStringLiteral(" And R.SanadNoForosh + '_' + R.DorehMali = R_OldFactor.SanadNoForosh "
                           "+ '_' + R_OldFactor.MainDorehMali), 0)"));
    tr::db::execute(
        database,
        QStringLiteral("UPDATE R_OldFactor SET MandehFactor = FactorValue - NaghdValue "));
}

void InvoiceSettlement::recomputeInvoicesOf(tr::db::MyDatabase& database,
                                            const QList<InvoiceKey>& invoices) {
    tr::db::Connection& c = *database.Connection;
    for (const InvoiceKey& invoice : invoices) {
        const QString which = QStringLiteral(" Where SanadNoForosh = ") + c.text(invoice.number) +
                              QStringLiteral(" And MainDorehMali = ") + c.text(invoice.period);
        tr::db::execute(
            database,
            QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1 + IsNull((Select "
                           "Sum(R.NaghdValue) From R_ForoshRelatedNaghd As R Where "
                           "R.SanadNoForosh = R_OldFactor.SanadNoForosh And R.DorehMali = "
                           "R_OldFactor.MainDorehMali), 0)") +
                which);
        tr::db::execute(database,
                        QStringLiteral("Update R_OldFactor Set MandehFactor = FactorValue - "
                                       "NaghdValue") +
                            which);
    }
}

QList<InvoiceKey> InvoiceSettlement::linkedInvoices() const {
    tr::db::Connection& c = connection();
    const tr::db::Query rows =
        openQuery(c, QStringLiteral("Select Distinct SanadNoForosh, DorehMali From "
                                    "R_ForoshRelatedNaghd Where TypeAction = '1' And WhatDoc = ") +
                         c.text(kind_.code) + QStringLiteral(" And Serial = ") + serialNumber());
    QList<InvoiceKey> invoices;
    for (int row = 0; row < rows.RecordCount(); ++row)
        invoices << InvoiceKey{rows.value(row, 0).toString().trimmed(),
                               rows.value(row, 1).toString().trimmed()};
    return invoices;
}

void InvoiceSettlement::writeInvoiceLinks() {
    if (serial().isEmpty()) return;
    if (invoiceMode()) {
        writeInvoiceBoundLinks();
        return;
    }
    // The save gave the lines new IDX values: the saved links find their lines again through
    // the amount and description their old lines had (the voucher copied aside by the save).
    const bool fromDialog = hasPendingAllocations();
    if (!fromDialog) keepSavedAllocations();
    writePendingAllocations(fromDialog);
}

void InvoiceSettlement::keepSavedAllocations() {
    tr::db::Connection& c = connection();
    createPendingTable();
    const QString history = document_.historyTable();
    const bool hasHistory = tr::db::objectExistsInTempdb(c, history);
    tr::db::execute(
        database(),
        QStringLiteral("Insert Into ") + pendingTable() +
            QStringLiteral(" (sSelect, DorehMali, SanadNoForosh, NaghdValue, CashValue, Des) "
                           "Select 'P', R.DorehMali, R.SanadNoForosh, R.NaghdValue, ") +
            (hasHistory ? QStringLiteral("H.Bes, H.Des From R_ForoshRelatedNaghd As R Left Join ") +
                              history +
                              QStringLiteral(" As H On (H.Document = Cast(R.Idx As Varchar(20)) "
                                             "And H.TypeSys = 'N' And H.DocToDate = '0')")
                        : QStringLiteral("Null, Null From R_ForoshRelatedNaghd As R")) +
            QStringLiteral(" Where R.TypeAction = '1' And R.WhatDoc = ") + c.text(kind_.code) +
            QStringLiteral(" And R.Serial = ") + serialNumber());
}

void InvoiceSettlement::writeInvoiceBoundLinks() {
    tr::db::Connection& c = connection();
    const QString period = invoicePeriod(invoice_);
    // The links and the balances they make are all or nothing, the dropped allocations too.
    tr::db::Transaction transaction(c);
    QList<InvoiceKey> affected = linkedInvoices();
    tr::db::execute(database(),
                    QStringLiteral("Delete From R_ForoshRelatedNaghd Where Whatdoc = ") +
                        c.text(kind_.code) + QStringLiteral(" And Serial = ") +
                        c.text(serial()));
    tr::db::execute(
        database(),
        QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx , WhatDoc ,Serial , AtfCh , "
                       "DocToDate , SanadNoForosh , TypeAction, NaghdValue,DorehMali) Select "
                       "N.Idx, N.WhatDoc, N.Serial, N.Idx, A.DocToDate, ") +
            c.text(invoice_) + QStringLiteral(", '1' , A.Bes,") + c.text(period) +
            QStringLiteral(" From N_NaghdTrans as N Inner Join Asnad As A On (N.Idx = "
                           "Cast(A.Document As Integer) And A.WhatDoc = N.WhatDoc) Where "
                           "N.Whatdoc = ") +
            c.text(kind_.code) + QStringLiteral(" And N.Serial = ") + c.text(serial()) +
            QStringLiteral(" And A.WhatDoc2 = '01'  And A.Typesys = 'N'"));
    // The invoices this document paid and pays follow at once, with what the other kinds
    // (deposits, cheques) pay them.
    for (const InvoiceKey& invoice : linkedInvoices())
        if (!affected.contains(invoice)) affected << invoice;
    recomputeInvoicesOf(database(), affected);
    // Allocations made in the dialog give way to the invoice the document was opened for.
    discardPendingAllocations();
    transaction.commit();
}

void InvoiceSettlement::writePendingAllocations(bool fromDialog) {
    tr::db::Connection& c = connection();
    const QString pending = pendingTable();
    tr::db::Transaction transaction(c);
    // 1. Each allocation finds its line by equal amount and description, and carries that voucher
    // line's DocToDate; one that finds none stays on the document's own voucher ('0').
    tr::db::execute(database(),
                    QStringLiteral("Update ") + pending +
                        QStringLiteral(" Set IDX = Null, AtfCh = Null, DocToDate = '0'"));
    const tr::db::Query lines = openQuery(
        c, QStringLiteral("SELECT N.IDX,A.Bes,A.Des,A.DocToDate FROM N_NaghdTrans N JOIN asnad A "
                          "ON N.IDX = A.[Document] WHERE A.TypeSys = 'N' AND N.Serial = ") +
               serialNumber() + QStringLiteral(" AND N.WhatDoc = ") +
               sqlNumber(kind_.code.toLongLong()) + QStringLiteral(" AND bes <> 0"));
    for (int line = 0; line < lines.RecordCount(); ++line) {
        const qint64 idx = lines.value(line, 0).toLongLong();
        tr::db::execute(database(),
                        QStringLiteral("Update ") + pending + QStringLiteral(" Set IDX = ") +
                            sqlNumber(idx) + QStringLiteral(", AtfCh = ") +
                            c.text(QString::number(idx)) + QStringLiteral(", DocToDate = ") +
                            c.text(lines.value(line, 3).toString().trimmed()) +
                            QStringLiteral(" Where IDX Is Null And CashValue = ") +
                            sqlNumber(lines.value(line, 1).toDouble()) +
                            QStringLiteral(" And Des = ") +
                            c.text(lines.value(line, 2).toString()));
    }
    QList<InvoiceKey> affected = fromDialog ? QList<InvoiceKey>{} : linkedInvoices();
    // 2. The document's links are replaced by the chosen rows.
    tr::db::execute(
        database(),
        QStringLiteral(" DELETE FROM R_ForoshRelatedNaghd WHERE TypeAction = '1' ") +
            QStringLiteral("AND WhatDoc = ") + c.text(kind_.code) +
            QStringLiteral(" AND Serial = ") + serialNumber());
    tr::db::execute(
        database(),
        QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, "
                       "DocToDate, SanadNoForosh, TypeAction, NaghdValue, DorehMali) Select "
                       "IDX, ") +
            c.text(kind_.code) + QStringLiteral(", ") + serialNumber() +
            QStringLiteral(
                ", AtfCh, DocToDate, SanadNoForosh, '1', NaghdValue, DorehMali From ") +
            pending + QStringLiteral(" Where sSelect = 'P' And NaghdValue <> 0"));
    // 3. Balances: the dialog's allocations recompute every invoice from this kind's links;
    // a save that only re-links its saved allocations leaves the other invoices alone.
    if (fromDialog) {
        recomputeInvoices(database(), kind_.code);
    } else {
        for (const InvoiceKey& invoice : linkedInvoices())
            if (!affected.contains(invoice)) affected << invoice;
        recomputeInvoicesOf(database(), affected);
    }
    discardPendingAllocations();
    transaction.commit();
}

void InvoiceSettlement::undoInvoiceSettlement() {
    tr::db::Connection& c = connection();
    if (serial().isEmpty()) return;
    tr::db::Transaction transaction(c);
    tr::db::execute(
        database(),
        QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue - IsNull((Select "
                       "Sum(R.NaghdValue) From R_ForoshRelatedNaghd As R Where R.WhatDoc = ") +
            c.text(kind_.code) + QStringLiteral(" And R.Serial = ") + serialNumber() +
            QStringLiteral(" And R.SanadNoForosh = R_OldFactor.SanadNoForosh And R.DorehMali "
                           "= R_OldFactor.MainDorehMali), 0)"));
    tr::db::execute(
        database(),
        QStringLiteral("UPDATE R_OldFactor SET MandehFactor = FactorValue - NaghdValue "));
    tr::db::execute(database(),
                    QStringLiteral("Delete From R_ForoshRelatedNaghd Where Whatdoc = ") +
                        c.text(kind_.code) + QStringLiteral(" And Serial = ") + c.text(serial()));
    discardPendingAllocations();
    transaction.commit();
}

QStringList InvoiceSettlement::openPeriods() const {
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
    // A fully paid invoice stays in the list while this document is what pays it.
    if (!serial().isEmpty())
        add(QStringLiteral("Select Distinct DorehMali From R_ForoshRelatedNaghd Where WhatDoc = ") +
            c.text(kind_.code) + QStringLiteral(" And Serial = ") + serialNumber());
    if (hasPendingAllocations())
        add(QStringLiteral("Select Distinct DorehMali From ") + pendingTable());
    periods.sort();
    return periods;
}

void InvoiceSettlement::fillOpenInvoices(const QString& table, const QString& customer) const {
    tr::db::Connection& c = connection();
    tr::db::dropTempTable(database(), withoutHashes(table));
    tr::db::execute(
        database(),
        QStringLiteral("Create Table ") + table +
            QStringLiteral(" (sSelect Varchar(1), DorehMali Varchar(10), SanadNoForosh "
                           "Varchar(20), FactorDate Varchar(10), FactorValue Float, GetValue "
                           "Float, NaghdValue Float, CustomerNam NVarchar(100), ChqValue Float, "
                           "ChqNo Varchar(20), CustomerCod Varchar(10), ID Int Identity(1, 1))"));
    const QString serialValue = serial().isEmpty() ? QStringLiteral("0") : serialNumber();
    for (const QString& period : openPeriods()) {
        const QString name =
            tr::db::companyDatabaseName(c, services_.global->sCode.trimmed(), period);
        if (name.isEmpty()) continue;
        // The current period's tables are read without a database prefix.
        const QString prefix = name.compare(c.databaseName(), Qt::CaseInsensitive) == 0
                                   ? QString()
                                   : name + QStringLiteral("..");
        QString sql = QStringLiteral("Insert Into ") + table +
                      QStringLiteral(
                          " (sSelect, DorehMali, SanadNoForosh, FactorDate, FactorValue, "
                          "GetValue, NaghdValue, CustomerNam, CustomerCod) Select '', "
                          "O.MainDorehMali, O.SanadNoForosh, F.SanadDate, O.FactorValue, "
                          "O.FactorValue - O.NaghdValue1 - IsNull((Select Sum(R.NaghdValue) From "
                          "R_ForoshRelatedNaghd As R Where R.SanadNoForosh = O.SanadNoForosh And "
                          "R.DorehMali = O.MainDorehMali And Not (R.WhatDoc = ") +
                      c.text(kind_.code) + QStringLiteral(" And R.Serial = ") + serialValue +
                      QStringLiteral(
                          ")), 0), 0, C.CustomerNam, F.CustomerCod From R_OldFactor As O Inner "
                          "Join ") +
                      prefix +
                      QStringLiteral(
                          "R_FactorForosh As F On F.SanadNoForosh = O.SanadNoForosh "
                          "Left Join ") +
                      prefix +
                      QStringLiteral(
                          "R_Customer As C On C.CustomerCod = F.CustomerCod Where "
                          "O.MainDorehMali = ") +
                      c.text(period);
        if (!customer.trimmed().isEmpty())
            sql += QStringLiteral(" And F.CustomerCod = ") + c.text(customer.trimmed());
        tr::db::execute(database(), sql);
    }
    // This document's own allocations: those waiting for the save, else the saved ones.
    const tr::db::Query own = openQuery(
        c, hasPendingAllocations()
               ? QStringLiteral("Select SanadNoForosh, DorehMali, Sum(NaghdValue) From ") +
                     pendingTable() +
                     QStringLiteral(" Where sSelect = 'P' Group By SanadNoForosh, DorehMali")
               : QStringLiteral("Select SanadNoForosh, DorehMali, Sum(NaghdValue) From "
                                "R_ForoshRelatedNaghd Where TypeAction = '1' And WhatDoc = ") +
                     c.text(kind_.code) + QStringLiteral(" And Serial = ") + serialValue +
                     QStringLiteral(" Group By SanadNoForosh, DorehMali"));
    for (int row = 0; row < own.RecordCount(); ++row) {
        tr::db::execute(database(), QStringLiteral("Update ") + table +
                                        QStringLiteral(" Set sSelect = 'P', NaghdValue = ") +
                                        sqlNumber(own.value(row, 2).toDouble()) +
                                        QStringLiteral(" Where SanadNoForosh = ") +
                                        c.text(own.value(row, 0).toString().trimmed()) +
                                        QStringLiteral(" And DorehMali = ") +
                                        c.text(own.value(row, 1).toString().trimmed()));
    }
    tr::db::execute(database(), QStringLiteral("Delete From ") + table +
                                    QStringLiteral(" Where sSelect <> 'P' And GetValue < 0.005"));
}

bool InvoiceSettlement::hasPendingAllocations() const {
    return tr::db::objectExistsInTempdb(connection(), pendingTable());
}

void InvoiceSettlement::createPendingTable() {
    tr::db::dropTempTable(database(), withoutHashes(pendingTable()));
    tr::db::execute(database(),
                    QStringLiteral("Create Table ") + pendingTable() +
                        QStringLiteral(" (sSelect Varchar(1), DorehMali Varchar(10), SanadNoForosh "
                                       "Varchar(20), NaghdValue Float, CashValue Float, Des "
                                       "NVarchar(200), IDX Int, AtfCh Varchar(20), DocToDate "
                                       "Varchar(10))"));
}

void InvoiceSettlement::keepAllocations(const QString& listTable, double lineAmount,
                                        const QString& lineDes) {
    tr::db::Connection& c = connection();
    // The earlier allocations give way only to the whole of the new ones.
    tr::db::Transaction transaction(c);
    createPendingTable();
    tr::db::execute(
        database(),
        QStringLiteral("Insert Into ") + pendingTable() +
            QStringLiteral(" (sSelect, DorehMali, SanadNoForosh, NaghdValue, CashValue, "
                           "Des) Select sSelect, DorehMali, SanadNoForosh, NaghdValue, ") +
            sqlNumber(lineAmount) + QStringLiteral(", ") + c.text(lineDes) +
            QStringLiteral(" From ") + listTable +
            QStringLiteral(" Where sSelect = 'P' And NaghdValue <> 0"));
    transaction.commit();
}

void InvoiceSettlement::discardPendingAllocations() {
    tr::db::dropTempTable(database(), withoutHashes(pendingTable()));
}

QString InvoiceSettlement::paymentsTitle(const QString& invoice) {
    return QStringLiteral("وجوه پرداختي صورتحساب شماره : ") + invoice.trimmed();
}

void InvoiceSettlement::showPayments(const QString& invoice, const QString& period) {
    if (!services_.pickList) return;
    tr::db::Connection& c = connection();
    tr::db::ScopedTempTable table(database(), document_.transferTable() + QStringLiteral("Pay"));
    tr::db::dropTempTable(database(), withoutHashes(table.name()));
    QString sql = QStringLiteral("SELECT N.NDocNam,Serial,AtfCh,SanadNoForosh,NaghdValue Into ") +
                  table.name() +
                  QStringLiteral(
                      " FROM R_ForoshRelatedNaghd D JOIN N_AsnadNaghd N ON N.WhatDoc = "
                      "D.WhatDoc WHERE LTRIM(RTRIM(D.SanadNoForosh)) = ") +
                  c.text(invoice.trimmed()) + QStringLiteral(" AND D.NaghdValue <>0");
    if (!period.trimmed().isEmpty())
        sql += QStringLiteral(" AND DorehMali = ") + c.text(period.trimmed());
    tr::db::execute(database(), sql);
    const QList<tr::dialog::PickColumn> columns = {
        {QStringLiteral("NDocNam"), QStringLiteral("نوع پرداخت"), 140},
        {QStringLiteral("Serial"), QStringLiteral("سريال"), 70},
        {QStringLiteral("AtfCh"), QStringLiteral("شناسه"), 90},
        {QStringLiteral("SanadNoForosh"), QStringLiteral("صورتحساب"), 90},
        {QStringLiteral("NaghdValue"), QStringLiteral("مبلغ پرداختي"), 120},
    };
    services_.pickList->pick(
        paymentsTitle(invoice),
        QStringLiteral("Select * From ") + table.name() + QStringLiteral(" Order By SanadNoForosh"),
        columns, 0);
    table.drop();
}

}  // namespace tr::cashbank
