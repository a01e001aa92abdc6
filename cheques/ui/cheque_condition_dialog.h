#pragma once
// "شرايط عمليات چک": the small condition window of the cheque lists, kind CHQACTION1, whose one
// condition is a range of the date field SANADDATE; shown through ModalRunner.
#include <QDialog>

class QLineEdit;

namespace tr::cheques {

class TChequeConditionDialog : public QDialog {
    Q_OBJECT
  public:
    static const QString kCaption;        // "شرايط عمليات چک"
    static const QString kConditionKind;  // "CHQACTION1"
    static const QString kDateField;      // "SANADDATE"

    TChequeConditionDialog(const QString& from, const QString& to, QWidget* parent = nullptr);
    // "yyyy/mm/dd", empty for no bound.
    QString fromDate() const;
    QString toDate() const;
    QLineEdit* fromBox() const { return from_; }
    QLineEdit* toBox() const { return to_; }

  private:
    QLineEdit* from_;
    QLineEdit* to_;
};

}  // namespace tr::cheques
