#pragma once
// ChequeSettlement: how the cheques of one received-cheque document pay sales invoices. The
// dialog's allocations of each cheque wait in ##<prefix>_ChqRelate and are written, or the
// document's cheques tied whole to the invoice the screen was opened for, in the save's
// transaction; the invoices' balances follow from every kind's links.
#include <QString>
#include <memory>

#include "settlement/invoice_ledger.h"

namespace tr::cheques {

class ChequeDocument;

// What a cheque of the document pays: its waiting allocations when the dialog confirmed some,
// else its saved links.
struct ChequeAllocation {
    int invoices = 0;
    double total = 0;
};

class ChequeSettlement {
  public:
    // The received cheque's kind: its texts and rules in the settlement dialog.
    static const tr::settlement::SettlementKind& kind();

    explicit ChequeSettlement(ChequeDocument& document);
    // Drops the waiting allocations and the dialog's list.
    ~ChequeSettlement();
    ChequeSettlement(const ChequeSettlement&) = delete;
    ChequeSettlement& operator=(const ChequeSettlement&) = delete;

    // "ثبت چک در صورتحساب" on the cheque under the cursor: the payer the dialog works for, or
    // null after the refusal (a guarantee cheque, one returned to its drawer, a row refused on
    // posting, an empty grid).
    std::unique_ptr<tr::settlement::InvoicePayer> payerForCurrentCheque();

    ChequeAllocation allocationOf(const QString& number, const QString& series) const;
    bool hasPending() const;
    QString pendingTable() const;
    QString listTable() const;

    // Inside the save's transaction, after the procedure: the links of the saved document.
    void writeOnSave();
    // The allocations waiting for a document no longer on the screen are forgotten.
    void discardPending();

  private:
    friend class ChequePayer;
    QString serial() const;
    QString serialNumber() const;
    // The document's saved links, as a condition on R_ForoshRelatedNaghd As R.
    QString documentLinks() const;
    // A cheque of the document, as a condition on the link alias R.
    QString chequeLinks(const QString& number, const QString& series) const;
    QString pendingOf(const QString& number, const QString& series, bool mine) const;
    bool hasPendingFor(const QString& number, const QString& series) const;
    void writeInvoiceBound();
    void writePending();

    ChequeDocument& document_;
};

}  // namespace tr::cheques
