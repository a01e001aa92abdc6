#pragma once
// The received-cheque document ("دريافت چک", kind 71): the cheque document with the receiving
// side's rules: cheques on ##<prefix>_Chq, a cheque the book received before refused unless it
// went back to its drawer, a drawer with a returned cheque warned of, cheques paying invoices.
#include <memory>

#include "cheques/cheque_document.h"
#include "cheques/cheque_settlement.h"

namespace tr::cheques {

class ReceivedChequeDocument : public ChequeDocument {
  public:
    static const QString kTitle;    // "دريافت چک"
    static const QString kFormKey;  // "N_A_CHQGET_"
    static const QString kKind;     // "71"
    static const ChequeDocumentSide& receivedSide();

    explicit ReceivedChequeDocument(const tr::Services& services);
    ~ReceivedChequeDocument() override;

    // The cheques' payments of sales invoices ("ثبت چک در صورتحساب").
    ChequeSettlement& settlement() { return *settlement_; }

  protected:
    bool checkCheque(tr::db::Query& row) override;
    void alsoOnSave(bool opening) override;
    void alsoOnDelete() override;
    // Choices made for the document that was on the screen are forgotten.
    void started() override;
    void opened() override;

  private:
    bool checkInvoiceAllocation(tr::db::Query& row, const QString& number, const QString& series);

    std::unique_ptr<ChequeSettlement> settlement_;
};

}  // namespace tr::cheques
