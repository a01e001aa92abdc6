#pragma once
// InFactorDialog: the settlement dialog's logic for one payer (a receipt or deposit line, or a
// received cheque). It lists the open invoices, keeps each allocation within the invoice's
// remaining amount and the payer's amount, and on confirmation hands the chosen rows to the payer
// for the document's next save. QtCore only.
#include <QString>
#include <vector>

#include "common/db/query.h"
#include "common/dialog/message_dialog.h"
#include "settlement/invoice_ledger.h"

namespace tr::settlement {

class InFactorDialog {
  public:
    struct Column {
        QString field;
        QString title;
        bool visible = true;
        bool editable = false;
    };
    // The grid's columns in display order; the cheque columns shown for the kinds that have them.
    static std::vector<Column> columns(const SettlementKind& kind);
    // "12,500,000" or "1,250.5": the dialog's amount format.
    static QString amountText(double amount);

    // Builds the invoice list; the customer filter starts on where the kind filters by the
    // payer's customer.
    explicit InFactorDialog(InvoicePayer& payer);

    const SettlementKind& kind() const { return payer_.kind(); }
    const tr::Services& payerServices() const { return payer_.services(); }
    QString serial() const { return payer_.serial(); }
    double amount() const { return amount_; }
    // Sum of the chosen rows' allocations over the whole list, filtered out or not.
    double allocated() const;
    double remaining() const { return amount_ - allocated(); }
    const QString& customer() const { return customer_; }
    const QString& listTable() const { return table_; }
    tr::db::Query& list() { return list_; }

    bool customerFilter() const { return filter_; }
    // "پالايش مشتري": only the payer customer's invoices (all of them when it is unknown). For
    // the kinds that filter by the choice ("پالايش"): the customer of the chosen invoices, refused
    // when they belong to several. False after a refusal; the filter is then off.
    bool setCustomerFilter(bool on);

    // Moves the list to `invoice` (of `period` when given); false when it is not listed.
    bool moveTo(const QString& invoice, const QString& period = {});
    // Space or double-click on "P": chooses the current invoice with the smaller of its remaining
    // amount and what the payer has left, or clears it.
    bool toggleSelect();
    // Typing in "مبلغ تخصيصي" of the current row; zero clears the choice.
    bool setAllocation(double value);
    // The same as typed; a text that is not an amount is refused with its reason.
    bool setAllocationText(const QString& text);
    // "وجوه پرداختي" of the current invoice.
    void showPayments();

    // "تاييد": the allocations wait for the document's save.
    bool cmdOkClick();

  private:
    void reopen();
    bool refuse(const QString& text);
    bool select(double value);

    InvoicePayer& payer_;
    tr::dialog::Messages messages_;
    QString table_;
    tr::db::Query list_;
    double amount_ = 0;
    QString customer_;
    bool filter_ = false;
};

}  // namespace tr::settlement
