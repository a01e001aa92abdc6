#pragma once
// InFactorDialog: the settlement dialog's logic for one receipt or deposit, opened on the
// document's current line. It lists the open invoices, keeps each allocation within the invoice's
// open balance and the document's remaining amount, and on confirmation hands the chosen rows to
// InvoiceSettlement for the next save. QtCore only.
#include <QString>
#include <vector>

#include "cashbank/settlement/invoice_settlement.h"
#include "common/db/query.h"

namespace tr::cashbank {

class InFactorDialog {
  public:
    struct Column {
        QString field;
        QString title;
        bool visible = true;
        bool editable = false;
    };
    // The grid's columns in display order (the cheque columns hidden).
    static const std::vector<Column>& columns();
    // "12,500,000" or "1,250.5": the dialog's amount format.
    static QString amountText(double amount);

    // Builds the invoice list; the customer filter starts on.
    explicit InFactorDialog(InvoiceSettlement& settlement);

    const SettlementKind& kind() const { return settlement_.kind(); }
    QString serial() const;
    double amount() const { return amount_; }
    // Sum of the chosen rows' allocations over the whole list, filtered out or not.
    double allocated() const;
    double remaining() const { return amount_ - allocated(); }
    const QString& customer() const { return customer_; }
    const QString& listTable() const { return table_; }
    tr::db::Query& list() { return list_; }

    bool customerFilter() const { return filter_; }
    // "پالايش مشتري": only the document customer's invoices (all of them when the customer is
    // unknown).
    void setCustomerFilter(bool on);

    // Space or double-click on "P": chooses the current invoice with the smaller of its open
    // balance and the remaining amount, or clears it.
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

    InvoiceSettlement& settlement_;
    tr::dialog::Messages messages_;
    QString table_;
    tr::db::Query list_;
    double amount_ = 0;
    double lineAmount_ = 0;
    QString lineDes_;
    QString customer_;
    bool filter_ = true;
};

}  // namespace tr::cashbank
