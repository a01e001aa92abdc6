#pragma once
// "انتخاب طرف حساب جهت برگشت چک": the lines a returned cheque was credited to, with their credit
// ("بدهكار") and the part typed for each (NewValue); "تاييد" hands the parts to the actions logic,
// which refuses a part above its line's credit or parts that do not make the cheque's amount.
#include <QDialog>

#include "cheques/received_actions.h"

class QTableWidget;

namespace tr::cheques {

class ReturnSplitDialog : public QDialog {
    Q_OBJECT
  public:
    static const QString kCaption;

    ReturnSplitDialog(ReceivedChequeActions& actions, QWidget* parent = nullptr);
    QTableWidget* table() const { return table_; }
    // "تاييد": closes the dialog only when the logic takes the parts.
    void confirm();

  private:
    ReceivedChequeActions& actions_;
    QTableWidget* table_;
};

}  // namespace tr::cheques
