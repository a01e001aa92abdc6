#pragma once
// TChqGetForm, "دريافت چک": the received-cheque document's window over ReceivedChequeDocument,
// which holds every rule: the header, the cheque grid, the lower account box, the counterparty
// grid, the totals and the buttons. A cheque row is checked when the user leaves it; Insert, or
// Down on the last row, starts a new one.
#include <QList>
#include <QPair>
#include <QWidget>
#include <functional>
#include <memory>

#include "cheques/received_cheque_document.h"

class QHBoxLayout;
class QKeyEvent;
#include "common/session/services.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class ChqGetMenus;

class TChqGetForm : public QWidget {
    Q_OBJECT
  public:
    explicit TChqGetForm(const tr::Services& services, QWidget* parent = nullptr);
    ~TChqGetForm() override;

    void setServices(const tr::Services& services);
    // The eighth entry argument: the sales invoice the document is for (shown; its links come
    // with the invoice settlement of cheques).
    void setInvoiceNumber(const QString& number);

    ChequeDocument& document() { return *document_; }
    QTableView* chequeGrid() const { return cheques_; }
    QTableView* counterpartyGrid() const { return counterparties_; }
    QLineEdit* serialBox() const { return serial_; }
    QPushButton* saveButton() const { return save_; }
    QPushButton* openingButton() const { return opening_; }
    QPushButton* savePrintButton() const { return savePrint_; }
    QPushButton* deleteButton() const { return delete_; }
    QLabel* totalsLabel() const { return totals_; }
    // The voucher number and its caption ("سند").
    QLabel* voucherLabel() const { return voucher_; }
    QLabel* voucherCaption() const { return voucherCaption_; }
    // The two grids' pop-up menus and the hooks of their items.
    ChqGetMenus* menus() const { return menus_; }

  protected:
    // Another side's window on the same form: its document and its cheque grid's columns.
    TChqGetForm(const tr::Services& services, std::unique_ptr<ChequeDocument> document,
                QList<QPair<QString, QString>> chequeColumns, QWidget* parent);
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    // A side's own keys in a grid (before the lists of F2/F3); true when taken.
    virtual bool chequeKey(QTableView* /*grid*/, QKeyEvent* /*key*/) { return false; }
    // The cheque grid moved to another row.
    virtual void chequeRowShown() {}
    // "تاييد و چاپ": the saved document printed in the chosen layout.
    virtual void printDocument();
    // What a side shows besides the header, after every showValues().
    virtual void showSideValues() {}
    bool guarded(const std::function<bool()>& action);
    void showValues();
    QHBoxLayout* headerRow() const { return headerRow_; }
    QHBoxLayout* buttonRow() const { return buttonRow_; }
    tr::ui::DatasetModel* chequeModel() const { return chequeModel_; }
    bool newLayoutChosen() const;
    // "تاييد": the row being typed posted, then the save; whether the document was saved.
    bool saveDocument();
    const tr::Services& services() const { return services_; }

  private:
    void takeHeader();
    void postOrAppend();
    // Alt+1: from the cheques to the counterparty lines, else to the cheques (the first one started
    // on an empty grid).
    void switchGrids();
    // "مقداردهي وضعيت چكهاي اول دوره" for the document's side.
    void openOpeningStates();
    void keepCurrentRow(QTableView* grid, tr::ui::DatasetModel* model);
    // F2/F3 in a grid: the list of the cell (account levels, currencies); whether one was taken.
    bool pickList(QTableView* grid);


    tr::Services services_;
    std::unique_ptr<ChequeDocument> document_;
    QLabel* caption_;
    QLineEdit* serial_;
    QLineEdit* day_;
    QLineEdit* month_;
    QLineEdit* year_;
    QLabel* voucher_;
    QLabel* voucherCaption_;
    QLabel* user_;
    QLabel* invoice_;
    QLabel* totals_;
    QLineEdit* lower_[5];
    QTableView* cheques_;
    QTableView* counterparties_;
    tr::ui::DatasetModel* chequeModel_;
    tr::ui::DatasetModel* counterpartyModel_;
    QPushButton* save_;
    QPushButton* opening_;
    QPushButton* delete_;
    QPushButton* cancel_;
    QPushButton* savePrint_;
    QRadioButton* newLayout_;
    QRadioButton* oldLayout_;
    QString invoiceNumber_;
    QList<QPair<QString, QString>> chequeColumns_;
    QHBoxLayout* headerRow_ = nullptr;
    QHBoxLayout* buttonRow_ = nullptr;
    bool started_ = false;
    ChqGetMenus* menus_;
};

}  // namespace tr::cheques
