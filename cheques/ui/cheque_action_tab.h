#pragma once
// One tab of the cheque-actions screen over its ChequeActionList: filters, the grid whose action,
// date (and bank-account) cells edit through the logic, the space bar, "تاييد", and the grid's
// menu (history, report settings, the report on the shared grid-report printer).
#include <QTextDocument>
#include <QWidget>
#include <functional>

#include "cheques/cheque_action_list.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QStyledItemDelegate;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

struct ActionTabOptions {
    QString gridName;                 // the grid's object name
    QString reportItem;               // the menu item that prints the list
    bool filtersBankAccount = false;  // "حساب بانکي": the list limited to one of our accounts
    std::function<void()> afterAction;  // after an action is chosen on the current row
    // Where set, the bank-account cell is edited and its choice goes here (a collection's bank).
    std::function<void(qint64)> chooseBankAccount;
};

class ChequeActionTab : public QWidget {
    Q_OBJECT
  public:
    ChequeActionTab(ChequeActionList& logic, const tr::Services& services, ActionTabOptions options,
                    QWidget* parent = nullptr);

    void setServices(const tr::Services& services) { services_ = services; }
    QTableView* grid() const { return grid_; }
    tr::ui::DatasetModel* model() const { return model_; }
    QLineEdit* chequeNumberBox() const { return number_; }
    QComboBox* bankAccountBox() const { return bank_; }
    QPushButton* showButton() const { return show_; }
    QPushButton* applyButton() const { return apply_; }

    // "نمايش": the list by the filters typed.
    void showList();
    // "تاييد".
    void applyList();
    // The list as shown, printed under the report's title (to a PDF file, or a chosen printer).
    bool printList(const QString& pdfFile = {});
    QString reportTitle() const;

    // Runs a handler of the logic; a database failure is shown as every screen shows one.
    bool guarded(const std::function<bool()>& action);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QString currentField() const;
    void arrangeColumns();

    ChequeActionList& logic_;
    tr::Services services_;
    ActionTabOptions options_;
    QLineEdit* number_;
    QLineEdit* fromDate_;
    QLineEdit* toDate_;
    QComboBox* state_;
    QComboBox* bank_ = nullptr;
    QPushButton* show_;
    QPushButton* apply_;
    QTableView* grid_;
    tr::ui::DatasetModel* model_;
    QStyledItemDelegate* actionEditor_;
    QStyledItemDelegate* dateEditor_;
    QStyledItemDelegate* bankEditor_ = nullptr;
    QTextDocument report_;  // keeps the user's report settings between prints
};

}  // namespace tr::cheques
