#pragma once
// InvoiceSettlement: how one cash receipt ('10') or bank deposit ('50') screen pays sales invoices:
// the invoice it was opened for, the links written on save and undone on delete, the open
// invoices of every fiscal period, the allocations the settlement dialog leaves for the next save.
#include <QList>
#include <QString>
#include <optional>

#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
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

// An invoice of one fiscal period, as R_OldFactor keys it.
struct InvoiceKey {
    QString number;  // SanadNoForosh
    QString period;  // MainDorehMali / DorehMali
    bool operator==(const InvoiceKey&) const = default;
};

// The texts and code of one settling kind.
struct SettlementKind {
    QString code;           // WhatDoc: "10" or "50"
    QString titleBar;       // the dialog's title bar
    QString numberCaption;  // the label before the document's serial
    QString documentName;   // in the dialog's refusals
};

class InvoiceSettlement {
  public:
    // The window caption both dialogs share.
    static QString windowCaption();
    static QString amountCaption();
    static QString remainingCaption();
    static QString customerFilterCaption();
    static const SettlementKind* findKind(const QString& code);

    // Serves `document` (kind '10' or '50'; anything else throws std::invalid_argument) and
    // installs the document's writeInvoiceLinks and undoInvoiceSettlement hooks.
    InvoiceSettlement(const tr::Services& services, tr::vouchers::N_Global& document);
    // Removes the hooks and drops the work tables.
    ~InvoiceSettlement();
    InvoiceSettlement(const InvoiceSettlement&) = delete;
    InvoiceSettlement& operator=(const InvoiceSettlement&) = delete;

    const SettlementKind& kind() const { return kind_; }
    tr::vouchers::N_Global& document() { return document_; }
    const tr::Services& services() const { return services_; }

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
    // Rebuilds the dialog's list of open invoices into `table` (created here); a customer code
    // limits it to that customer.
    void fillOpenInvoices(const QString& table, const QString& customer = {}) const;

    // The dialog's list and the allocations waiting for the next save.
    QString invoiceListTable() const {
        return document_.transferTable() + QStringLiteral("InFact");
    }
    QString pendingTable() const { return document_.transferTable() + QStringLiteral("_Relate"); }
    bool hasPendingAllocations() const;
    // Replaces the pending allocations by the chosen rows of `listTable`, each stamped with the
    // paying line's amount and description (they find the line's IDX on save).
    void keepAllocations(const QString& listTable, double lineAmount, const QString& lineDes);
    void discardPendingAllocations();

    // "وجوه پرداختي صورتحساب شماره : " + invoice through the host's pick list.
    void showPayments(const QString& invoice, const QString& period = {});
    static QString paymentsTitle(const QString& invoice);

    // Recomputes every invoice's paid and open amounts from this kind's links only: the
    // settlement dialog's way, kept as it is.
    static void recomputeInvoices(tr::db::MyDatabase& database, const QString& kind);
    // Paid and open amounts of `invoices` from their base and every kind's links.
    static void recomputeInvoicesOf(tr::db::MyDatabase& database,
                                    const QList<InvoiceKey>& invoices);

  private:
    tr::db::Connection& connection() const { return services_.connection(); }
    tr::db::MyDatabase& database() const { return *services_.database; }
    QString serial() const { return document_.header().serial.trimmed(); }
    QString serialNumber() const;
    QString invoicePeriod(const QString& invoice) const;
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
