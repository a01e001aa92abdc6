#pragma once
// The received-cheque document ("دريافت چک", kind 71): the cheque document with the receiving
// side's rules: cheques on ##<prefix>_Chq, a cheque the book received before refused unless it
// went back to its drawer, a drawer with a returned cheque warned of, cheques paying invoices.
#include "cheques/cheque_document.h"

namespace tr::cheques {

class ReceivedChequeDocument : public ChequeDocument {
  public:
    static const QString kTitle;    // "دريافت چک"
    static const QString kFormKey;  // "N_A_CHQGET_"
    static const QString kKind;     // "71"
    static const ChequeDocumentSide& receivedSide();

    explicit ReceivedChequeDocument(const tr::Services& services);

  protected:
    bool checkCheque(tr::db::Query& row) override;

  private:
    bool checkInvoiceAllocation(tr::db::Query& row, const QString& number, const QString& series);
};

}  // namespace tr::cheques
