#pragma once
// "مقداردهي عوامل مجوز": the permit's components in a grid ("عوامل مجوز پرداخت چك", "علامت",
// "نرخ", "مبلغ"), their total ("جمع عوامل") beside the cheques' ("مبلغ چك"); Space on the sign
// turns it, "تاييد" hands the components to the permit, "انصراف" leaves them as they were.
#include <QDialog>

#include "cheques/permit_components.h"

class QLabel;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class PermitComponentsForm : public QDialog {
    Q_OBJECT
  public:
    static const QString kCaption;  // "مقداردهي عوامل مجوز"

    PermitComponentsForm(const tr::Services& services, PermitDocument& permit, QWidget* parent = nullptr);

    PermitComponents& components() { return components_; }
    QTableView* grid() const { return grid_; }
    QLabel* totalsLabel() const { return totals_; }
    void confirm();
    void discard();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool guarded(const std::function<bool()>& action);
    void showTotals();

    tr::Services services_;
    PermitComponents components_;
    tr::ui::DatasetModel* model_ = nullptr;
    QTableView* grid_ = nullptr;
    QLabel* totals_ = nullptr;
};

}  // namespace tr::cheques
