#pragma once
// The cheque payment ("پرداخت چك", kind 81): the cheque document with the paying side's rules.
// Each cheque row (##<prefix>Bed) is our own leaf written on one of our bank accounts ("صدور چك")
// or a received cheque passed on ("خرج چك"); the rules of both are instruments/cheque_issue_rule.h.
#include "cheques/cheque_document.h"

namespace tr::cheques {

class ChequePaymentDocument : public ChequeDocument {
  public:
    static const QString kIssue;  // "صدور چك"
    static const QString kSpend;  // "خرج چك"
    static const ChequeDocumentSide& paymentSide();

    explicit ChequePaymentDocument(const tr::Services& services);

    // The state key on a cheque row: "صدور چك" and "خرج چك" in turn.
    bool toggleChequeState();
    // Our bank account on the current row (its number, name and payable heads); false for an
    // account the book lacks.
    bool setBankAccount(qint64 accountId);
    // The bank accounts' pick list into the current row.
    bool chooseBankAccount();
    // A received cheque passed on, on the current row: its amount, due date, payee and the
    // account it stands on, from the book. False, after the message, when it may not be spent.
    bool spendCheque(const QString& number, const QString& series);
    // "مانده حساب بانكي": the ledger balance of the current row's bank account up to the
    // document date (nothing without an account).
    std::optional<double> bankBalance();
    // "تاييد و برداشت", after the save: our own cheques of the saved document due on its date are
    // withdrawn at once, through the actions screen's issued list and its procedure. True when
    // there was nothing to withdraw or the withdrawal went through; a refusal (shown) leaves the
    // saved document as it is.
    bool withdrawDue();

  protected:
    bool checkCheque(tr::db::Query& row) override;
    bool checkBeforeSave(bool opening) override;
    void alsoOnDelete() override;
    void startCheque(tr::db::Query& row) override;

  private:
    bool spent(tr::db::Query& row) const;
};

}  // namespace tr::cheques
