#pragma once
// TChqMojavezTaedForm, "تاييد صدور مجوز پرداخت چك": the managers' approval of payment permits over
// PermitApproval: the approver ("تاييد كننده", a choice only for a user holding both rights), the
// serial and date filters, the list with its ticks (Space or a double click on "تاييد" or
// "ابطال"), the date the approvals and voidings take, and "تاييد".
#include <QWidget>
#include <memory>

#include "cheques/permit_approval.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class TChqMojavezTaedForm : public QWidget {
    Q_OBJECT
  public:
    explicit TChqMojavezTaedForm(const tr::Services& services, QWidget* parent = nullptr);
    ~TChqMojavezTaedForm() override;

    void setServices(const tr::Services& services);
    PermitApproval& approval() { return *approval_; }
    QComboBox* approverBox() const { return approver_; }
    QTableView* grid() const { return grid_; }
    QLineEdit* dateBox() const { return date_; }
    QPushButton* confirmButton() const { return confirm_; }
    // The filters taken from their boxes and the list read again.
    void refill();

  protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool guarded(const std::function<bool()>& action);
    void toggleCurrent();
    void arrange();

    tr::Services services_;
    std::unique_ptr<PermitApproval> approval_;
    tr::ui::DatasetModel* model_ = nullptr;
    QComboBox* approver_ = nullptr;
    QLineEdit* fromSerial_ = nullptr;
    QLineEdit* toSerial_ = nullptr;
    QLineEdit* fromDate_ = nullptr;
    QLineEdit* toDate_ = nullptr;
    QLineEdit* date_ = nullptr;
    QTableView* grid_ = nullptr;
    QPushButton* confirm_ = nullptr;
    bool started_ = false;
};

}  // namespace tr::cheques
