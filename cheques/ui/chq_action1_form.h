#pragma once
// TChqAction1Form, "عمليات چك": the cheque-actions screen. The received tab lists the received
// cheques by its filters over ReceivedChequeActions, which holds every rule; the space bar on the
// action cell steps through the row's menu, the action, date and bank-account cells edit through
// the logic, and "تاييد" applies the list. The issued tab waits for the issued cheques.
#include <QTextDocument>
#include <QWidget>
#include <memory>

#include "cheques/received_actions.h"
#include "common/session/services.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class TChqAction1Form : public QWidget {
    Q_OBJECT
  public:
    static const QString kCaption;

    explicit TChqAction1Form(const tr::Services& services, QWidget* parent = nullptr);
    ~TChqAction1Form() override;

    void setServices(const tr::Services& services);
    ReceivedChequeActions& received() { return *received_; }
    QTableView* receivedGrid() const { return grid_; }
    tr::ui::DatasetModel* receivedModel() const { return model_; }
    QLineEdit* chequeNumberBox() const { return number_; }
    QPushButton* showButton() const { return show_; }
    QPushButton* applyButton() const { return apply_; }

    // "نمايش": the list by the filters typed.
    void showList();
    // "تاييد".
    void applyList();
    // The list as shown, printed under the report's title (to a PDF file, or a chosen printer).
    bool printList(const QString& pdfFile = {});
    QString reportTitle() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QString currentField() const;
    // A return on a cheque credited to several lines asks how it splits over them.
    void askReturnSplit();
    // Runs a handler of the logic; a database failure is shown as every screen shows one.
    bool guarded(const std::function<bool()>& action);

    tr::Services services_;
    std::unique_ptr<ReceivedChequeActions> received_;
    QTabWidget* tabs_;
    QLineEdit* number_;
    QLineEdit* fromDate_;
    QLineEdit* toDate_;
    QComboBox* state_;
    QPushButton* show_;
    QPushButton* apply_;
    QTableView* grid_;
    tr::ui::DatasetModel* model_;
    QTextDocument report_;  // keeps the user's report settings between prints
};

}  // namespace tr::cheques
