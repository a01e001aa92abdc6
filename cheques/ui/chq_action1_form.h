#pragma once
// TChqAction1Form, "عمليات چك": the cheque-actions screen, a ChequeActionTab for the received
// cheques and one for the issued; a return on the received tab of a cheque credited to several
// lines asks how it splits.
#include <QWidget>
#include <memory>

#include "cheques/issued_actions.h"
#include "cheques/received_actions.h"
#include "cheques/ui/cheque_action_tab.h"
#include "common/session/services.h"

class QTabWidget;

namespace tr::cheques {

class TChqAction1Form : public QWidget {
    Q_OBJECT
  public:
    static const QString kCaption;

    explicit TChqAction1Form(const tr::Services& services, QWidget* parent = nullptr);
    ~TChqAction1Form() override;

    void setServices(const tr::Services& services);
    QTabWidget* tabs() const { return tabs_; }

    ReceivedChequeActions& received() { return *received_; }
    ChequeActionTab* receivedTab() const { return receivedTab_; }
    QTableView* receivedGrid() const { return receivedTab_->grid(); }
    tr::ui::DatasetModel* receivedModel() const { return receivedTab_->model(); }
    QLineEdit* chequeNumberBox() const { return receivedTab_->chequeNumberBox(); }
    QPushButton* showButton() const { return receivedTab_->showButton(); }
    QPushButton* applyButton() const { return receivedTab_->applyButton(); }

    IssuedChequeActions& issued() { return *issued_; }
    ChequeActionTab* issuedTab() const { return issuedTab_; }

    // The received tab's "نمايش", "تاييد" and report.
    void showList() { receivedTab_->showList(); }
    void applyList() { receivedTab_->applyList(); }
    bool printList(const QString& pdfFile = {}) { return receivedTab_->printList(pdfFile); }
    QString reportTitle() const { return receivedTab_->reportTitle(); }

  private:
    // A return on a cheque credited to several lines asks how it splits over them.
    void askReturnSplit();

    tr::Services services_;
    std::unique_ptr<ReceivedChequeActions> received_;
    std::unique_ptr<IssuedChequeActions> issued_;
    QTabWidget* tabs_;
    ChequeActionTab* receivedTab_;
    ChequeActionTab* issuedTab_;
};

}  // namespace tr::cheques
