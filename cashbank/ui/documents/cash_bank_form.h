#pragma once
// TCashBankForm: the one right-to-left Qt form of the six cash and bank document screens, built
// from the screen's row of the screens table and bound to its CashBankDocument, which holds every
// rule. The widgets only forward what the user does and show what the logic answers.
#include <QHash>
#include <QWidget>
#include <functional>

#include "cashbank/documents/cash_bank_document.h"
#include "cashbank/ui/documents/screen_wiring.h"

class QAction;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QTableView;
class QTableWidget;
class QToolButton;

namespace tr::ui {
class DatasetModel;
class TitleSorter;
}  // namespace tr::ui

namespace tr::cashbank {

class TCashBankForm : public QWidget {
    Q_OBJECT
    // Readable by name, so a host (or a test) that sees the form only as a QWidget finds it.
    Q_PROPERTY(QString invoiceNumber READ invoiceNumber)
  public:
    TCashBankForm(const tr::Services& services, ScreenId id, QWidget* parent = nullptr);
    ~TCashBankForm() override;

    // The entry point hands in the latest session values and invoice number on every call.
    void setServices(const tr::Services& services);
    void setInvoiceNumber(const QString& number);
    QString invoiceNumber() const { return logic_.invoiceNumber(); }

    // Unsaved work asks first (save, discard or stay); false: the user stays. Invokable by name,
    // so the host asks every docked screen before it closes.
    Q_INVOKABLE bool confirmLeave();
    // Brings the screen to the front and opens a saved document of its kind (a search result's
    // row), after the unsaved-work prompt; false when the user stays or there is none.
    bool openSerial(const QString& serial);

    CashBankDocument& logic() { return logic_; }
    tr::ui::DatasetModel* model() const { return model_; }
    QTableView* grid() const { return grid_; }
    QMenu* gridMenu() const { return menu_; }
    QAction* menuAction(MenuCommand command) const { return actions_.value(command); }
    // Widgets by their designed names (edSerial, edDay, txtCashCod, txtDes, txtValue, cmdOk...).
    template <class W>
    W* widget(const QString& name) const {
        return findChild<W*>(name);
    }

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLineEdit* edit(const QString& name, int maxLength, int width, bool readOnly = false);
    QLabel* label(const QString& text);
    QWidget* buildHeader();
    QWidget* buildLineEditor();
    void buildGrid();
    QWidget* buildBottom();
    void buildMenu();
    void applyColumns();
    void runMenu(MenuCommand command);
    void showValues();
    void focusRefusal();
    // The header box of a field; none for a box this kind of screen lacks.
    QWidget* headerBox(tr::vouchers::HeaderField field) const;
    void focusRefusedCell();
    void currentRowChanged(int row);
    void postOrAppend();
    QString currentField() const;
    // Database failures of a command are shown, not thrown through Qt's event loop.
    bool guarded(const std::function<bool()>& action);

    CashBankDocument logic_;
    ui::ScreenWiring wiring_{logic_, this};  // after logic_: it unhooks before the logic goes
    QLabel* caption_ = nullptr;
    QLabel* status_ = nullptr;  // what the last save, cancel, undo or delete did
    QLabel* emptyGridHint_ = nullptr;
    QLabel* cancelledMark_ = nullptr;
    QLineEdit* serial_ = nullptr;
    QToolButton* spinUp_ = nullptr;
    QToolButton* spinDown_ = nullptr;
    QToolButton* list_ = nullptr;
    QLineEdit* day_ = nullptr;
    QLineEdit* month_ = nullptr;
    QLineEdit* year_ = nullptr;
    QLineEdit* voucher_ = nullptr;
    QLineEdit* number_ = nullptr;
    QLineEdit* joz_ = nullptr;
    QLineEdit* treasuryCode_ = nullptr;
    QLineEdit* treasuryName_ = nullptr;
    QLineEdit* user_ = nullptr;
    QLineEdit* invoice_ = nullptr;
    QLineEdit* depositor_ = nullptr;
    QLineEdit* remitter_ = nullptr;
    QComboBox* remitterBank_ = nullptr;
    QLineEdit* remitterBranchCode_ = nullptr;
    QLineEdit* remitterBranchName_ = nullptr;
    QLineEdit* description_ = nullptr;
    QLineEdit* amount_ = nullptr;
    QLabel* words_ = nullptr;
    QLabel* rateLabel_ = nullptr;
    QLineEdit* rate_ = nullptr;
    QTableView* grid_ = nullptr;
    tr::ui::DatasetModel* model_ = nullptr;
    tr::ui::TitleSorter* sorter_ = nullptr;
    QMenu* menu_ = nullptr;
    QMenu* descriptionMenu_ = nullptr;
    QHash<MenuCommand, QAction*> actions_;
    QLineEdit* sum_ = nullptr;
    QLineEdit* funds_ = nullptr;
    QLineEdit* counterPartyName_ = nullptr;
    QTableWidget* counterParty_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* okPrint_ = nullptr;
    QRadioButton* newLayout_ = nullptr;
    QRadioButton* oldLayout_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* exit_ = nullptr;
    bool showing_ = false;
};

}  // namespace tr::cashbank
