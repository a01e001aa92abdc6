#pragma once
// TNewSerialNoForm ("شماره سريال جديد"): the modal, right-to-left window over the new-serial
// logic, centred on its owner. It only forwards: the proposal, the check and the accepted flag
// are the logic's.
#include <QDialog>

#include "vouchers/new_serial_dialog.h"

class QGroupBox;
class QLineEdit;
class QPushButton;

namespace tr::vouchers {

class TNewSerialNoForm : public QDialog {
    Q_OBJECT

  public:
    TNewSerialNoForm(NewSerialDialog& logic, QWidget* owner = nullptr);

    // Shows the window modally (through the host's modal runner); answers the accepted flag.
    static bool execute(NewSerialDialog& logic, QWidget* owner = nullptr);

    QGroupBox* groupBox() const { return group_; }
    QLineEdit* serialEdit() const { return serial_; }
    QPushButton* okButton() const { return ok_; }
    QPushButton* cancelButton() const { return cancel_; }

  protected:
    void showEvent(QShowEvent* event) override;
    void reject() override;

  private:
    void cmdOkClick();

    NewSerialDialog& logic_;
    QGroupBox* group_;
    QLineEdit* serial_;
    QPushButton* ok_;
    QPushButton* cancel_;
};

}  // namespace tr::vouchers
