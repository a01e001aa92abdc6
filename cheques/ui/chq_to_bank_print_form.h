#pragma once
// "چاپ ارسال به بانك": how the ticked cheques go on deposit slips (split by account or not, rows
// per slip, the built-in form, the printer's offsets, the template) and the print itself.
#include <QDialog>

#include "cheques/bank_slips.h"
#include "cheques/cheques_to_bank.h"
#include "cheques/ui/bank_slip_layouts.h"
#include "printing/ui/print_output.h"

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace tr::cheques {

class TChqToBankPrintForm : public QDialog {
    Q_OBJECT
  public:
    static const QString kCaption;  // "چاپ ارسال به بانك"

    TChqToBankPrintForm(ChequesToBank& list, BankSlips& slips, QWidget* parent = nullptr);

    SlipOptions slipOptions() const;
    ui::SlipPrintOptions printOptions() const;
    // Builds the slips from the ticked rows and prints them; false when nothing is ticked or
    // nothing was printed.
    bool print(const tr::printing::ui::PrintTarget& target);

    QRadioButton* byAccountButton() const { return byAccount_; }
    QRadioButton* sharedButton() const { return shared_; }
    QSpinBox* rowsBox() const { return rows_; }
    QComboBox* formBox() const { return form_; }
    QSpinBox* horizontalBox() const { return dx_; }
    QSpinBox* verticalBox() const { return dy_; }
    QCheckBox* templateBox() const { return template_; }

  private:
    ChequesToBank& list_;
    BankSlips& slips_;
    QRadioButton* byAccount_;
    QRadioButton* shared_;
    QSpinBox* rows_;
    QComboBox* form_;
    QSpinBox* dx_;
    QSpinBox* dy_;
    QCheckBox* template_;
    QPushButton* print_;
    QPushButton* cancel_;
};

}  // namespace tr::cheques
