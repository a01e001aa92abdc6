#pragma once
// InFactorWindow: the settlement dialog's window shared by the receipt and deposit dialogs: title
// bar, amounts, customer filter and the invoice grid bound to an InFactorDialog, right to left.
// Shown modally through the SDK's ModalRunner; "تاييد" accepts only what the logic confirms.
#include <QDialog>

#include "cashbank/settlement/in_factor_dialog.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTableView;

namespace tr::cashbank::ui {

class AllocationModel;

class InFactorWindow : public QDialog {
    Q_OBJECT
  public:
    // True when the allocations were confirmed (they wait for the document's save).
    bool ask();

    InFactorDialog& logic() { return logic_; }
    QLabel* titleBar() const { return lblTitle_; }
    QLabel* amountLabel() const { return lblAmount_; }
    QLabel* remainingLabel() const { return lblRemaining_; }
    QLabel* numberLabel() const { return lblNumber_; }
    QCheckBox* customerFilter() const { return chkFilter_; }
    QTableView* grid() const { return dbg_; }
    QPushButton* okButton() const { return cmdOk_; }

  protected:
    InFactorWindow(InvoiceSettlement& settlement, const QString& objectName, QWidget* parent);
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showAmounts();
    void syncCurrentRow();
    void cmdOkClick();

    InFactorDialog logic_;
    AllocationModel* model_;
    QLabel* lblTitle_;
    QLabel* lblAmount_;
    QLabel* lblRemaining_;
    QLabel* lblNumber_;
    QCheckBox* chkFilter_;
    QTableView* dbg_;
    QPushButton* cmdOk_;
};

}  // namespace tr::cashbank::ui
