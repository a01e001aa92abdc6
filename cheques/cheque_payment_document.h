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

    // Whether cheques are paid only against an approved payment permit (option CHQ_MOJAVEZ=YES).
    bool permitsRequired() const;
    // "مجوز پرداخت": the permit this payment carries out. Refused, in this order, when it does
    // not exist, another payment used it, the managing director has not approved it or either
    // manager voided it; otherwise the cheque rows are filled from it. Empty: no permit.
    bool setPermit(const QString& serial);
    const QString& permitSerial() const { return permit_; }

  protected:
    // A constructor for a side that keeps the payment's rows elsewhere (the permit).
    ChequePaymentDocument(const tr::Services& services, const ChequeDocumentSide& side);
    bool checkCheque(tr::db::Query& row) override;
    bool checkBeforeSave(bool opening) override;
    void alsoOnSave(bool opening) override;
    void alsoOnDelete() override;
    void startCheque(tr::db::Query& row) override;
    void readSavedHeader() override;
    void started() override;
    QString sideState() const override { return permit_; }
    void restoreSideState(const QString& state) override { permit_ = state; }
    // The payment whose own rows a leaf's checks leave out (0: none).
    virtual qint64 ownSerial() const;
    // A side's own wording of a leaf's or spent cheque's refusal.
    virtual QString wordRefusal(const QString& refusal) const { return refusal; }
    bool spent(tr::db::Query& row) const;
    // Every row has its number and due date.
    bool checkRowsBeforeSave();

  private:
    // The refusal of permit `serial` for this payment, or empty; its approval date in `approved`.
    QString permitRefusal(const QString& serial, QString* approved = nullptr);

    QString permit_;
};

}  // namespace tr::cheques
