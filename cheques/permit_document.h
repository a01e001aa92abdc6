#pragma once
// The cheque payment permit ("صدور مجوز پرداخت چك"): a cheque payment written up for approval
// before it is paid. Its grids and row rules are the payment's, a few refusals worded its own
// way; it posts no voucher. It is kept in N_MojavezTrans / N_MOJAVEZCHQ / N_MojavezFact through
// sp_N_Asnad_Trans_ChqMojavez, and a new permit takes the next serial only inside its save.
// A permit a payment used, or a manager approved or voided, can be neither changed nor deleted.
#include "cheques/cheque_payment_document.h"

namespace tr::cheques {

class PermitDocument : public ChequePaymentDocument {
  public:
    static const QString kFormKey;  // "N_A_CHQMOJAVEZ_"
    static const ChequeDocumentSide& permitSide();
    // The work table of the permit's components (PMojavezCod, PMojavezNam, Sign, Nerkh, FactValue).
    static QString componentColumns();

    explicit PermitDocument(const tr::Services& services);

    // "(سند توسط مديرعامل تاييد شده است)" or "(سند توسط مديرمالي تاييد شده است)" for a loaded
    // permit a manager approved; empty otherwise.
    const QString& approvalNote() const { return approvalNote_; }
    QString componentTable() const { return components_.name(); }
    // The components' signed total spread over the cheques' work table as their FactValue, in
    // proportion to their amounts (the last takes what rounding leaves); nothing when there are
    // no components. The grid shows it once read again.
    void spreadComponents();

  protected:
    QString wordRefusal(const QString& refusal) const override;
    qint64 ownSerial() const override { return 0; }
    bool savedSerial(qint64 serial) override;
    QString newSerial() override;
    void holdSerial(const QString& /*serial*/) override {}
    void readSavedHeader() override;
    void started() override;
    QString sideState() const override { return approvalNote_; }
    void restoreSideState(const QString& state) override { approvalNote_ = state; }
    void beforeCall(bool isNew) override;
    bool checkBeforeSave(bool opening) override;
    void alsoOnSave(bool /*opening*/) override {}
    void alsoOnDelete() override {}
    bool checkBeforeDelete() override;
    QString deleteMode() const override { return QStringLiteral("DELETE"); }
    QString noSaveRightMessage(bool opening) const override;

  private:
    tr::db::ScopedTempTable components_;
    QString approvalNote_;
};

}  // namespace tr::cheques
