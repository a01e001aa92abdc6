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

const SettlementKind* InvoiceSettlement::findKind(const QString& code) {
    // Both dialogs keep the receipt's amount captions and customer filter.
    const auto cash = [](const char* code, const char* title, const char* number, const char* name) {
        SettlementKind kind;
        kind.code = QLatin1String(code);
        kind.titleBar = QString::fromUtf8(title);
        kind.numberCaption = QString::fromUtf8(number);
        kind.documentName = QString::fromUtf8(name);
        kind.amountCaption = QStringLiteral("مبلغ دريافت صندوق : ");
        kind.remainingCaption = QStringLiteral("باقيمانده دريافت صندوق :");
        kind.filterCaption = QStringLiteral("پالايش مشتري");
        return kind;
    };
    static const SettlementKind receipt = cash("10", "        ثبت دريافت صندوق در صورتحساب", "شماره دريافت صندوق : ",
                                               "دريافت صندوق");
    static const SettlementKind deposit = cash("50", "        ثبت واريز بانک در صورتحساب", "شماره واريز بانک : ",
                                               "واريز بانک");
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

QString InvoiceSettlement::ownLinks() const {
    return QStringLiteral("R.WhatDoc = ") + connection().text(kind_.code) + QStringLiteral(" And R.Serial = ") +
           (serial().isEmpty() ? QStringLiteral("0") : serialNumber());
}

QString InvoiceSettlement::customer() const {
    tr::db::Query& grid = document_.grid();
    if (!grid.Active() || grid.IsEmpty()) return {};
    return InvoiceLedger(services_).customerOf(grid.FieldByName(QStringLiteral("CodWhatDoc2")).AsString(),
                                               grid.FieldByName(QStringLiteral("Koll")).AsString(),
                                               grid.FieldByName(QStringLiteral("Moein")).AsString(),
                                               grid.FieldByName(QStringLiteral("Tafsily")).AsString());
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


QList<InvoiceKey> InvoiceSettlement::linkedInvoices() const {
    return InvoiceLedger(services_).linkedInvoices(QStringLiteral("R.TypeAction = '1' And ") + ownLinks());
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
    const QString period = InvoiceLedger(services_).invoicePeriod(invoice_);
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
    InvoiceLedger::recomputeInvoicesOf(database(), affected);
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
        InvoiceLedger::recomputeInvoices(database(), kind_.code);
    } else {
        for (const InvoiceKey& invoice : linkedInvoices())
            if (!affected.contains(invoice)) affected << invoice;
        InvoiceLedger::recomputeInvoicesOf(database(), affected);
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
    return InvoiceLedger(services_).openPeriods(extraPeriods());
}

QStringList InvoiceSettlement::extraPeriods() const {
    tr::db::Connection& c = connection();
    QStringList extra;
    // A fully paid invoice stays in the list while this document is what pays it.
    if (!serial().isEmpty())
        extra << QStringLiteral("Select Distinct DorehMali From R_ForoshRelatedNaghd Where WhatDoc = ") +
                     c.text(kind_.code) + QStringLiteral(" And Serial = ") + serialNumber();
    if (hasPendingAllocations()) extra << QStringLiteral("Select Distinct DorehMali From ") + pendingTable();
    return extra;
}

void InvoiceSettlement::fillOpenInvoices(const QString& table) const {
    tr::settlement::OwnAllocations own;
    own.savedLinks = ownLinks();
    if (hasPendingAllocations())
        own.pendingSelect = QStringLiteral("Select SanadNoForosh, DorehMali, NaghdValue From ") + pendingTable() +
                            QStringLiteral(" Where sSelect = 'P'");
    InvoiceLedger(services_).fillOpenInvoices(kind_, table, own, extraPeriods());
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

void InvoiceSettlement::keepAllocations(const QString& listTable) {
    tr::db::Connection& c = connection();
    double lineAmount = 0;
    QString lineDes;
    tr::db::Query& grid = document_.grid();
    if (grid.Active() && !grid.IsEmpty()) {
        lineAmount = grid.FieldByName(tr::vouchers::sideColumn(document_.kind().gridSide())).AsFloat();
        lineDes = grid.FieldByName(QStringLiteral("Des")).AsString();
    }
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

void InvoiceSettlement::showPayments(const QString& invoice, const QString& period) {
    InvoiceLedger(services_).showPayments(document_.transferTable() + QStringLiteral("Pay"), invoice, period);
}

}  // namespace tr::cashbank
