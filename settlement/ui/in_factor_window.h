#pragma once
// InFactorWindow: the settlement dialog's window shared by the receipt, deposit and cheque
// dialogs: title bar, amounts, customer filter and the invoice grid bound to an InFactorDialog,
// right to left, with the list's report where the kind has one. Shown modally through the SDK's
// ModalRunner; "تاييد" accepts only what the logic confirms.
#include <QDialog>
#include <QTextDocument>

#include "settlement/in_factor_dialog.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTableView;

namespace tr::settlement::ui {

class AllocationModel;

class InFactorWindow : public QDialog {
    Q_OBJECT
  public:
    ~InFactorWindow() override;
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
    // The list's report to `pdfFile`, or to a printer the user picks; false when cancelled.
    bool printList(const QString& pdfFile = {});

  protected:
    InFactorWindow(InvoicePayer& payer, const QString& objectName, QWidget* parent);
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showAmounts();
    void syncCurrentRow();
    void cmdOkClick();
    void addReportMenu();

    InFactorDialog logic_;
    AllocationModel* model_;
    QLabel* lblTitle_;
    QLabel* lblAmount_;
    QLabel* lblRemaining_;
    QLabel* lblNumber_;
    QCheckBox* chkFilter_;
    QTableView* dbg_;
    QPushButton* cmdOk_;
    QTextDocument report_;
};

}  // namespace tr::settlement::ui
