#pragma once
// What every treasury kind that pays sales invoices shares: the kind's texts, the open invoices
// of every fiscal period with their remaining amounts, the invoices' paid and open balances
// recomputed from R_ForoshRelatedNaghd, and the payments list of one invoice.
#include <QList>
#include <QString>
#include <QStringList>

#include "common/session/services.h"

namespace tr::settlement {

// An invoice of one fiscal period, as R_OldFactor keys it.
struct InvoiceKey {
    QString number;  // SanadNoForosh
    QString period;  // MainDorehMali / DorehMali
    bool operator==(const InvoiceKey&) const = default;
};

// How an invoice's remaining amount is read for the list.
enum class RemainingRule {
    // FactorValue - NaghdValue1 of R_OldFactor, less the links of every kind.
    OldFactor,
    // The sales summary's invoice total less the till's cash payments and redeemed vouchers, less
    // the links of every kind.
    SalesSummary,
};

// The texts, code and rules of one settling kind.
struct SettlementKind {
    QString code;            // WhatDoc: "10", "50" or "71"
    QString titleBar;        // the dialog's title bar
    QString numberCaption;   // the label before the document's serial
    QString documentName;    // in the dialog's refusals: "... از مبلغ <name> بيشتر باشد"
    QString amountCaption;   // the label before the amount shared out
    QString remainingCaption;
    RemainingRule remaining = RemainingRule::OldFactor;
    // One row may take the whole amount (the sum is checked on "تاييد"); otherwise only what the
    // other rows leave.
    bool rowTakesWholeAmount = false;
    bool chequeColumns = false;  // "مبلغ چک" and "شماره چک" shown
    bool filterBySelection = false;  // "پالايش" narrows to the chosen invoices' customer
    QString filterCaption;       // the filter's check box
    // The list's report: its key, the settings' caption and the printed title; no key, no report.
    QString reportKey, reportProperties, reportTitle;
};

// What pays the invoices: a receipt or deposit line, or one received cheque. The dialog asks it
// for the amount to share out and hands it the confirmed allocations.
class InvoicePayer {
  public:
    virtual ~InvoicePayer() = default;
    virtual const SettlementKind& kind() const = 0;
    virtual const tr::Services& services() const = 0;
    virtual QString serial() const = 0;
    virtual double amount() const = 0;
    // The customer whose invoices the filter shows first; empty: unknown.
    virtual QString customer() const = 0;
    // The cheque's number for the cheque columns; empty for the other kinds.
    virtual QString chequeNumber() const { return {}; }
    // The ## table of the dialog's list, filled here.
    virtual QString listTable() const = 0;
    virtual void fillOpenInvoices(const QString& table) const = 0;
    virtual void showPayments(const QString& invoice, const QString& period) = 0;
    // "تاييد": the chosen rows of `listTable` wait for the document's save.
    virtual void keepAllocations(const QString& listTable) = 0;
};

// Where a payer's allocations stand when the list is filled.
struct OwnAllocations {
    QString savedLinks;      // condition on R_ForoshRelatedNaghd As R: the payer's saved links
    QString pendingSelect;   // SanadNoForosh, DorehMali, NaghdValue waiting for the save; empty: none
    QString othersPending;   // the same of other payers of the document, counted as paid
    // Links not counted as paid by others (the payer's own and those other waiting allocations
    // replace); empty: savedLinks.
    QString replacedLinks;
};

class InvoiceLedger {
  public:
    explicit InvoiceLedger(const tr::Services& services) : services_(services) {}

    // Periods (sYear values) with open invoices, plus those of `extraPeriodsSql` (a select of one
    // column) when given.
    QStringList openPeriods(const QStringList& extraPeriodsSql = {}) const;
    // Rebuilds the dialog's list of open invoices into `table`: the remaining amount of each
    // invoice by `kind`'s rule, the payer's own allocations chosen, rows with nothing left and
    // not chosen dropped.
    void fillOpenInvoices(const SettlementKind& kind, const QString& table, const OwnAllocations& own,
                          const QStringList& extraPeriodsSql = {}) const;
    // "وجوه پرداختي صورتحساب شماره : " + invoice through the host's pick list; `scratch` names
    // the ## table it is read through.
    void showPayments(const QString& scratch, const QString& invoice, const QString& period = {}) const;
    static QString paymentsTitle(const QString& invoice);

    // The R_Customer code of a counter line: by its code, else by its accounts.
    QString customerOf(const QString& code, const QString& koll, const QString& moein,
                       const QString& tafsily) const;
    // The period an invoice's links name: this one when the invoice is in this period's sales,
    // else its latest in R_OldFactor.
    QString invoicePeriod(const QString& invoice) const;
    // The invoices the links matching `condition` (on R_ForoshRelatedNaghd) pay.
    QList<InvoiceKey> linkedInvoices(const QString& condition) const;

    // Recomputes every invoice's paid and open amounts from this kind's links only: the cash
    // dialogs' way, kept as it is.
    static void recomputeInvoices(tr::db::MyDatabase& database, const QString& kind);
    // Paid and open amounts of `invoices` from their base and every kind's links.
    static void recomputeInvoicesOf(tr::db::MyDatabase& database, const QList<InvoiceKey>& invoices);

  private:
    tr::db::Connection& connection() const { return services_.connection(); }
    QString remainingExpression(const SettlementKind& kind, const QString& prefix, const QString& others) const;

    tr::Services services_;
};

}  // namespace tr::settlement
