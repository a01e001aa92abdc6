#pragma once
// TChqPayForm, "پرداخت چك": the cheque document's window configured for a payment. Its cheque
// rows are our own leaves or received cheques passed on: Space on the state cell turns one into
// the other, F2/F3 on the account cells lists our bank accounts; the header adds the payment
// permit (leaving its box fills the rows from it) and the chosen account's balance.
#include "cheques/cheque_payment_document.h"
#include "cheques/ui/chq_get_form.h"

class QLineEdit;

namespace tr::cheques {

class TChqPayForm : public TChqGetForm {
    Q_OBJECT
  public:
    explicit TChqPayForm(const tr::Services& services, QWidget* parent = nullptr);

    ChequePaymentDocument& payment() { return static_cast<ChequePaymentDocument&>(document()); }
    QLabel* bankBalanceLabel() const { return balance_; }
    QLineEdit* permitBox() const { return permit_; }
    QLabel* permitLabel() const { return permitLabel_; }
    QPushButton* withdrawButton() const { return withdraw_; }

  protected:
    // Another side on the payment's window (the permit): its document, its cheque columns.
    TChqPayForm(const tr::Services& services, std::unique_ptr<ChequePaymentDocument> document,
                QList<QPair<QString, QString>> chequeColumns, QWidget* parent);
    // The header values the payment adds, after anything that reads the document anew.
    virtual void showPaymentValues();
    void showSideValues() override { showPaymentValues(); }
    bool chequeKey(QTableView* grid, QKeyEvent* key) override;
    void chequeRowShown() override;
    void printDocument() override;

  private:
    // F2/F3 on a passed-on row's number: the cheques in hand, chosen into the payment's rows.
    void pickSpentCheques();

    QLabel* permitLabel_;
    QLineEdit* permit_;
    QPushButton* withdraw_;
    QLabel* balance_;
};

}  // namespace tr::cheques
