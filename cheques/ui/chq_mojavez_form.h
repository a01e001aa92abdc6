#pragma once
// TChqMojavezForm, "صدور مجوز پرداخت چك": the payment's window over a permit. The same grids and
// keys; no opening cheques, withdrawal, printing or permit box of its own; the managers' approval
// noted after the serial, and "عوامل مجوز" opening the permit's components.
#include "cheques/permit_document.h"
#include "cheques/ui/chq_pay_form.h"

namespace tr::cheques {

class TChqMojavezForm : public TChqPayForm {
    Q_OBJECT
  public:
    explicit TChqMojavezForm(const tr::Services& services, QWidget* parent = nullptr);

    PermitDocument& permit() { return static_cast<PermitDocument&>(document()); }
    QLabel* approvalNoteLabel() const { return note_; }
    QPushButton* componentsButton() const { return components_; }
    // "عوامل مجوز": the components screen, modal through the SDK's runner.
    void showComponents();

  protected:
    void showPaymentValues() override;

  private:
    QLabel* note_;
    QPushButton* components_;
};

}  // namespace tr::cheques
