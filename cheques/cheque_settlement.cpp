#include "cheques/cheque_settlement.h"

#include "cheques/cheque_document.h"
#include "common/db/database_error.h"
#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"
#include "common/db/transaction.h"

namespace tr::cheques {

namespace {

using tr::db::firstColumn;
using tr::db::openQuery;
using tr::db::sqlNumber;
using tr::db::withoutHashes;
using tr::settlement::InvoiceKey;
using tr::settlement::InvoiceLedger;

const QString kGuarantee = QStringLiteral("ض");

QString text(tr::db::Query& row, const char* field) {
    return row.FieldByName(QLatin1String(field)).AsString().trimmed();
}

}  // namespace

const tr::settlement::SettlementKind& ChequeSettlement::kind() {
    static const tr::settlement::SettlementKind cheque = [] {
        tr::settlement::SettlementKind k;
        k.code = QStringLiteral("71");
        k.titleBar = QStringLiteral("        ثبت چک در صورتحساب");
        k.numberCaption = QStringLiteral("شماره دريافت چک : ");
        k.documentName = QStringLiteral("چک");
        k.amountCaption = QStringLiteral("مبلغ چک : ");
        k.remainingCaption = QStringLiteral("باقيمانده مبلغ چک :");
        k.remaining = tr::settlement::RemainingRule::SalesSummary;
        k.rowTakesWholeAmount = true;
        k.chequeColumns = true;
        k.filterBySelection = true;
        k.filterCaption = QStringLiteral("پالايش");
        k.reportKey = QStringLiteral("CHQINFACTOR");
        k.reportProperties = QStringLiteral("مشخصات گزارش [مشخصات ثبت چک در فاکتور]");
        k.reportTitle = QStringLiteral("گزارش مشخصات ثبت چک در فاکتور");
        return k;
    }();
    return cheque;
}

// One cheque of the document as the settlement dialog's payer.
class ChequePayer : public tr::settlement::InvoicePayer {
  public:
    ChequePayer(ChequeSettlement& settlement, QString number, QString series, double amount, QString customer)
        : settlement_(settlement),
          number_(std::move(number)),
          series_(std::move(series)),
          amount_(amount),
          customer_(std::move(customer)) {}

    const tr::settlement::SettlementKind& kind() const override { return ChequeSettlement::kind(); }
    const tr::Services& services() const override { return settlement_.document_.services(); }
    QString serial() const override { return settlement_.serial(); }
    double amount() const override { return amount_; }
    QString customer() const override { return customer_; }
    QString chequeNumber() const override { return number_; }
    QString listTable() const override { return settlement_.listTable(); }

    void fillOpenInvoices(const QString& table) const override {
        tr::settlement::OwnAllocations own;
        own.savedLinks = settlement_.chequeLinks(number_, series_);
        if (settlement_.hasPendingFor(number_, series_)) own.pendingSelect = settlement_.pendingOf(number_, series_, true);
        if (settlement_.hasPending()) {
            own.othersPending = settlement_.pendingOf(number_, series_, false);
            // Another cheque's waiting allocations stand instead of its saved links.
            own.replacedLinks = QStringLiteral("(") + own.savedLinks + QStringLiteral(") Or (") +
                                settlement_.documentLinks() + QStringLiteral(" And Exists (Select * From ") +
                                settlement_.pendingTable() +
                                QStringLiteral(" As P Where P.ChqNo = LTrim(RTrim(R.AtfCh)) And P.Joz = "
                                               "LTrim(RTrim(IsNull(R.DocToDate, '')))))");
        }
        QStringList periods;
        periods << QStringLiteral("Select Distinct DorehMali From R_ForoshRelatedNaghd As R Where ") + own.savedLinks;
        if (!own.pendingSelect.isEmpty())
            periods << QStringLiteral("Select Distinct DorehMali From (") + own.pendingSelect + QStringLiteral(") As W");
        InvoiceLedger(services()).fillOpenInvoices(kind(), table, own, periods);
    }

    void showPayments(const QString& invoice, const QString& period) override {
        InvoiceLedger(services()).showPayments(settlement_.document_.counterpartyTable() + QStringLiteral("Pay"), invoice,
                                               period);
    }

    // Step 3 of "تاييد", for the document's save: the cheque's earlier choice gives way whole.
    void keepAllocations(const QString& listTable) override {
        tr::db::Connection& c = services().connection();
        tr::db::MyDatabase& database = *services().database;
        const QString pending = settlement_.pendingTable();
        tr::db::Transaction transaction(c);
        if (!settlement_.hasPending())
            tr::db::execute(database, QStringLiteral("Create Table ") + pending +
                                          QStringLiteral(" (ChqNo Varchar(20), Joz Varchar(10), SanadNoForosh Varchar(20), "
                                                         "DorehMali Varchar(10), NaghdValue Float)"));
        const QString cheque = QStringLiteral(" Where ChqNo = ") + c.text(number_) + QStringLiteral(" And Joz = ") + c.text(series_);
        tr::db::execute(database, QStringLiteral("Delete From ") + pending + cheque);
        // An empty invoice marks a cheque whose choice was made, even when it pays nothing now.
        tr::db::execute(database, QStringLiteral("Insert Into ") + pending +
                                      QStringLiteral(" (ChqNo, Joz, SanadNoForosh, DorehMali, NaghdValue) Values (") +
                                      c.text(number_) + QStringLiteral(", ") + c.text(series_) + QStringLiteral(", '', '', 0)"));
        tr::db::execute(database, QStringLiteral("Insert Into ") + pending +
                                      QStringLiteral(" (ChqNo, Joz, SanadNoForosh, DorehMali, NaghdValue) Select ") +
                                      c.text(number_) + QStringLiteral(", ") + c.text(series_) +
                                      QStringLiteral(", SanadNoForosh, DorehMali, NaghdValue From ") + listTable +
                                      QStringLiteral(" Where sSelect = 'P' And NaghdValue <> 0"));
        transaction.commit();
    }

  private:
    ChequeSettlement& settlement_;
    QString number_, series_;
    double amount_;
    QString customer_;
};

ChequeSettlement::ChequeSettlement(ChequeDocument& document) : document_(document) {}

ChequeSettlement::~ChequeSettlement() {
    tr::db::MyDatabase* database = document_.services().database;
    if (!database || !database->CommandQuery) return;
    tr::db::dropTempTableQuietly(*database, withoutHashes(listTable()));
    tr::db::dropTempTableQuietly(*database, withoutHashes(pendingTable()));
}

QString ChequeSettlement::pendingTable() const {
    return document_.counterpartyTable() + QStringLiteral("_ChqRelate");
}

QString ChequeSettlement::listTable() const {
    return document_.counterpartyTable() + QStringLiteral("InFact");
}

QString ChequeSettlement::serial() const {
    return document_.header().serial.trimmed();
}

QString ChequeSettlement::serialNumber() const {
    return sqlNumber(serial().toLongLong());
}

QString ChequeSettlement::documentLinks() const {
    return QStringLiteral("R.WhatDoc = '71' And R.TypeAction = '1' And R.Serial = ") + serialNumber();
}

QString ChequeSettlement::chequeLinks(const QString& number, const QString& series) const {
    tr::db::Connection& c = document_.services().connection();
    return documentLinks() + QStringLiteral(" And LTrim(RTrim(R.AtfCh)) = ") + c.text(number) +
           QStringLiteral(" And LTrim(RTrim(IsNull(R.DocToDate, ''))) = ") + c.text(series);
}

QString ChequeSettlement::pendingOf(const QString& number, const QString& series, bool mine) const {
    tr::db::Connection& c = document_.services().connection();
    const QString cheque = QStringLiteral("(ChqNo = ") + c.text(number) + QStringLiteral(" And Joz = ") + c.text(series) +
                           QStringLiteral(")");
    return QStringLiteral("Select SanadNoForosh, DorehMali, NaghdValue From ") + pendingTable() +
           QStringLiteral(" Where SanadNoForosh <> '' And ") + (mine ? cheque : QStringLiteral("Not ") + cheque);
}

bool ChequeSettlement::hasPending() const {
    return tr::db::objectExistsInTempdb(document_.services().connection(), pendingTable());
}

bool ChequeSettlement::hasPendingFor(const QString& number, const QString& series) const {
    if (!hasPending()) return false;
    tr::db::Connection& c = document_.services().connection();
    return firstColumn(c, QStringLiteral("Select Count(*) From ") + pendingTable() + QStringLiteral(" Where ChqNo = ") +
                              c.text(number) + QStringLiteral(" And Joz = ") + c.text(series))
               .toInt() > 0;
}

ChequeAllocation ChequeSettlement::allocationOf(const QString& number, const QString& series) const {
    tr::db::Connection& c = document_.services().connection();
    const QString sql =
        hasPendingFor(number, series)
            ? QStringLiteral("Select Count(*), IsNull(Sum(NaghdValue), 0) From (") + pendingOf(number, series, true) +
                  QStringLiteral(") As W")
        : serial().isEmpty()
            ? QString()
            : QStringLiteral("Select Count(*), IsNull(Sum(R.NaghdValue), 0) From R_ForoshRelatedNaghd As R Where ") +
                  chequeLinks(number, series);
    if (sql.isEmpty()) return {};
    const tr::db::Query row = openQuery(c, sql);
    return {row.value(0, 0).toInt(), row.value(0, 1).toDouble()};
}

std::unique_ptr<tr::settlement::InvoicePayer> ChequeSettlement::payerForCurrentCheque() {
    tr::db::Query& cheques = document_.cheques();
    if (!cheques.Active()) return nullptr;
    // The cheque is what the grid shows: an edited row is posted (and checked) first, the first
    // row being typed included (the grid holds no posted row yet).
    if (cheques.state() != tr::db::Query::State::Browse && !document_.postCheque()) return nullptr;
    if (cheques.IsEmpty()) return nullptr;
    const QString number = text(cheques, "ChqNo");
    const QString series = text(cheques, "Joz");
    if (number.isEmpty()) return nullptr;
    tr::dialog::Messages messages(document_.services().dialog);
    if (text(cheques, "Tazmin") == kGuarantee) {
        messages.show(QStringLiteral("امکان تخصيص چک هاي تضميني به صورتحساب وجود ندارد"), QStringLiteral("1ER"));
        return nullptr;
    }
    tr::db::Connection& c = document_.services().connection();
    const QString state = firstColumn(c, QStringLiteral("Select Top 1 WhatDoc From N_ChqLastTrans Where WhatDoc Like '7%' "
                                                        "And LTrim(RTrim(ChqNo)) = ") +
                                             c.text(number) +
                                             QStringLiteral(" And LTrim(RTrim(IsNull(Joz, ''))) = ") + c.text(series) +
                                             QStringLiteral(" Order By IDX Desc"))
                              .toString()
                              .trimmed();
    if (state == QLatin1String("78")) {
        messages.show(QStringLiteral("امکان تخصيص چک هاي برگشتي به صورتحساب وجود ندارد"), QStringLiteral("1ER"));
        return nullptr;
    }
    // The customer is the cheque's counterparty: its code, else its accounts.
    QString customer;
    const tr::db::Query party = openQuery(
        c, QStringLiteral("Select Top 1 CodWhatDoc2, Koll, Moein, Tafsily From ") + document_.counterpartyTable() +
               QStringLiteral(" Where LTrim(RTrim(ChqNo)) = ") + c.text(number) +
               QStringLiteral(" And LTrim(RTrim(IsNull(Joz, ''))) = ") + c.text(series) + QStringLiteral(" Order By Raj"));
    if (!party.IsEmpty()) {
        customer = InvoiceLedger(document_.services())
                       .customerOf(party.value(0, 0).toString(), party.value(0, 1).toString(),
                                   party.value(0, 2).toString(), party.value(0, 3).toString());
    }
    return std::make_unique<ChequePayer>(*this, number, series, cheques.FieldByName(QStringLiteral("ChqValue")).AsFloat(),
                                         customer);
}

void ChequeSettlement::writeOnSave() {
    if (serial().isEmpty()) return;
    InvoiceLedger ledger(document_.services());
    // The invoices the document paid before the save (the procedure has cut the links of the
    // cheques it no longer holds) and those it pays after it.
    QList<InvoiceKey> affected = ledger.linkedInvoices(documentLinks());
    if (!document_.invoiceNumber().isEmpty())
        writeInvoiceBound();
    else if (hasPending())
        writePending();
    // The procedure gave the cheques new treasury rows: the links follow them.
    tr::db::execute(*document_.services().database,
                    QStringLiteral("Update R_ForoshRelatedNaghd Set Idx = (Select Max(Cast(L.CodWhatDoc As Int)) From "
                                   "N_ChqLastTrans As L Where L.WhatDoc = '71' And L.Serial = ") +
                        serialNumber() +
                        QStringLiteral(" And LTrim(RTrim(L.ChqNo)) = LTrim(RTrim(R_ForoshRelatedNaghd.AtfCh)) And "
                                       "LTrim(RTrim(IsNull(L.Joz, ''))) = LTrim(RTrim(IsNull(R_ForoshRelatedNaghd.DocToDate, '')))) "
                                       "Where WhatDoc = '71' And Serial = ") +
                        serialNumber());
    for (const InvoiceKey& invoice : ledger.linkedInvoices(documentLinks()))
        if (!affected.contains(invoice)) affected << invoice;
    InvoiceLedger::recomputeInvoicesOf(*document_.services().database, affected);
    discardPending();
}

// The screen was opened for an invoice: every cheque of the document pays it whole.
void ChequeSettlement::writeInvoiceBound() {
    tr::db::Connection& c = document_.services().connection();
    tr::db::MyDatabase& database = *document_.services().database;
    const QString invoice = document_.invoiceNumber();
    const QString period = InvoiceLedger(document_.services()).invoicePeriod(invoice);
    tr::db::execute(database, QStringLiteral("Delete From R_ForoshRelatedNaghd Where WhatDoc = '71' And TypeAction = '1' "
                                             "And Serial = ") +
                                  serialNumber());
    tr::db::execute(database,
                    QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, SanadNoForosh, "
                                   "TypeAction, NaghdValue, DorehMali) Select Cast(L.CodWhatDoc As Int), '71', L.Serial, "
                                   "LTrim(RTrim(L.ChqNo)), LTrim(RTrim(IsNull(L.Joz, ''))), ") +
                        c.text(invoice) + QStringLiteral(", '1', W.ChqValue, ") + c.text(period) +
                        QStringLiteral(" From N_ChqLastTrans As L Inner Join ") + document_.chequeTable() +
                        QStringLiteral(" As W On (LTrim(RTrim(W.ChqNo)) = LTrim(RTrim(L.ChqNo)) And "
                                       "LTrim(RTrim(IsNull(W.Joz, ''))) = LTrim(RTrim(IsNull(L.Joz, '')))) Where "
                                       "L.WhatDoc = '71' And L.Serial = ") +
                        serialNumber() + QStringLiteral(" And IsNull(W.Tazmin, '') <> ") + c.text(kGuarantee));
}

// The dialog's choices, cheque by cheque; a cheque no longer in the document takes none.
void ChequeSettlement::writePending() {
    tr::db::MyDatabase& database = *document_.services().database;
    const QString pending = pendingTable();
    tr::db::execute(database, QStringLiteral("Delete From R_ForoshRelatedNaghd Where WhatDoc = '71' And TypeAction = '1' "
                                             "And Serial = ") +
                                  serialNumber() + QStringLiteral(" And Exists (Select * From ") + pending +
                                  QStringLiteral(" As P Where P.ChqNo = LTrim(RTrim(R_ForoshRelatedNaghd.AtfCh)) And "
                                                 "P.Joz = LTrim(RTrim(IsNull(R_ForoshRelatedNaghd.DocToDate, ''))))"));
    tr::db::execute(database,
                    QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, SanadNoForosh, "
                                   "TypeAction, NaghdValue, DorehMali) Select Cast(L.CodWhatDoc As Int), '71', L.Serial, "
                                   "P.ChqNo, P.Joz, P.SanadNoForosh, '1', P.NaghdValue, P.DorehMali From ") +
                        pending +
                        QStringLiteral(" As P Inner Join N_ChqLastTrans As L On (L.WhatDoc = '71' And L.Serial = ") +
                        serialNumber() +
                        QStringLiteral(" And LTrim(RTrim(L.ChqNo)) = P.ChqNo And LTrim(RTrim(IsNull(L.Joz, ''))) = P.Joz) "
                                       "Where P.SanadNoForosh <> '' And P.NaghdValue <> 0"));
}

void ChequeSettlement::discardPending() {
    tr::db::MyDatabase* database = document_.services().database;
    if (!database) return;
    if (hasPending()) tr::db::dropTempTable(*database, withoutHashes(pendingTable()));
}

}  // namespace tr::cheques
