#pragma once
// InvoiceSettlement: how one cash receipt ('10') or bank deposit ('50') screen pays sales invoices:
// the invoice it was opened for, the links written on save and undone on delete, and, as the
// settlement dialog's payer, the line under the cursor and the allocations left for the next save.
#include <QList>
#include <QString>
#include <optional>

#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "settlement/invoice_ledger.h"
#include "vouchers/n_global.h"

namespace tr::cashbank {

// An invoice of the current period as the document prepared for it needs it.
struct SalesInvoice {
    QString number;
    QString date;  // SanadDate
    QString customer;
    QString customerName;
    QString koll, moein, tafsily, tafsily2, projectCod;
    double sellValue = 0;
};

using tr::settlement::InvoiceKey;
using tr::settlement::InvoiceLedger;
using tr::settlement::SettlementKind;

class InvoiceSettlement : public tr::settlement::InvoicePayer {
  public:
    static const SettlementKind* findKind(const QString& code);

    // Serves `document` (kind '10' or '50'; anything else throws std::invalid_argument) and
    // installs the document's writeInvoiceLinks and undoInvoiceSettlement hooks.
    InvoiceSettlement(const tr::Services& services, tr::vouchers::N_Global& document);
    // Removes the hooks and drops the work tables.
    ~InvoiceSettlement() override;
    InvoiceSettlement(const InvoiceSettlement&) = delete;
    InvoiceSettlement& operator=(const InvoiceSettlement&) = delete;

    const SettlementKind& kind() const override { return kind_; }
    tr::vouchers::N_Global& document() { return document_; }
    const tr::Services& services() const override { return services_; }
    QString serial() const override { return document_.header().serial.trimmed(); }
    // The dialog shares out the document's amount; the line under the grid's cursor pays, and its
    // amount and description find its IDX again when the document is saved.
    double amount() const override { return document_.header().amount; }
    QString customer() const override;

    // The invoice the host passed; empty outside invoice mode.
    void setInvoiceNumber(const QString& invoice) { invoice_ = invoice.trimmed(); }
    const QString& invoiceNumber() const { return invoice_; }
    bool invoiceMode() const { return !invoice_.isEmpty(); }

    // Serial of the document of this kind that already settles `invoice`; empty when none.
    QString existingSerial(const QString& invoice) const;
    // The invoice in the current period's sales, or nothing.
    std::optional<SalesInvoice> readInvoice(const QString& invoice) const;
    // Header date and amount and one counter line (customer's accounts, amount in the grid's
    // column) of a new document for `invoice`.
    bool prefill(const SalesInvoice& invoice);
    // Invoice mode on showing the screen: opens the document that settles the invoice, or
    // prepares a new one from it. Answers true when an existing document was opened.
    bool prepareForInvoice(const QString& invoice);

    // How many sales invoices the document `serial` of this kind settles, and the note shown
    // after opening one that settles several.
    int settledInvoiceCount(const QString& serial) const;
    void noteMultiInvoice();

    // Saving step 10: invoice-bound links, or the dialog's pending allocations (else the saved
    // links, matched again to the new lines); then the invoices' balances of this kind.
    void writeInvoiceLinks();
    // After the document was deleted: its amounts leave the invoices, its links go.
    void undoInvoiceSettlement();

    // Periods (sYear values) that have open invoices, plus those this document allocates to.
    QStringList openPeriods() const;
    // Rebuilds the dialog's list of open invoices into `table` (created here).
    void fillOpenInvoices(const QString& table) const override;

    // The dialog's list and the allocations waiting for the next save.
    QString listTable() const override { return document_.transferTable() + QStringLiteral("InFact"); }
    QString invoiceListTable() const { return listTable(); }
    QString pendingTable() const { return document_.transferTable() + QStringLiteral("_Relate"); }
    bool hasPendingAllocations() const;
    // Replaces the pending allocations by the chosen rows of `listTable`, each stamped with the
    // amount and description of the line under the grid's cursor (they find the line's IDX on save).
    void keepAllocations(const QString& listTable) override;
    void discardPendingAllocations();

    // "وجوه پرداختي صورتحساب شماره : " + invoice through the host's pick list.
    void showPayments(const QString& invoice, const QString& period = {}) override;

  private:
    tr::db::Connection& connection() const { return services_.connection(); }
    tr::db::MyDatabase& database() const { return *services_.database; }
    QString serialNumber() const;
    // This document's links, as a condition on R_ForoshRelatedNaghd As R.
    QString ownLinks() const;
    // The periods this document's links and waiting allocations name.
    QStringList extraPeriods() const;
    void writeInvoiceBoundLinks();
    // The invoices this document's saved links pay.
    QList<InvoiceKey> linkedInvoices() const;
    // `fromDialog`: the allocations were confirmed in the dialog (not re-linked saved ones).
    void writePendingAllocations(bool fromDialog);
    void createPendingTable();
    void keepSavedAllocations();

    tr::Services services_;
    tr::vouchers::N_Global& document_;
    const SettlementKind& kind_;
    tr::dialog::Messages messages_;
    QString invoice_;
};

}  // namespace tr::cashbank
