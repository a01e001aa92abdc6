#pragma once
// TChqToBankForm, "ارسال چک به بانک": the cheques sent to collection listed by date, our account
// and the drawee bank, ticked with "ض" for the deposit slips, the list's report and the slips'
// print form, designer and stored-layout print.
#include <QWidget>
#include <memory>

#include "cheques/bank_slips.h"
#include "cheques/cheques_to_bank.h"
#include "common/session/services.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTextDocument;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class TChqToBankForm : public QWidget {
    Q_OBJECT
  public:
    static const QString kCaption;  // "ارسال چک به بانک"

    explicit TChqToBankForm(const tr::Services& services, QWidget* parent = nullptr);
    ~TChqToBankForm() override;

    void setServices(const tr::Services& services);
    ChequesToBank& list() { return *list_; }
    BankSlips& slips() { return *slips_; }
    QTableView* grid() const { return grid_; }
    tr::ui::DatasetModel* model() const { return model_; }
    QLineEdit* monthBox() const { return month_; }
    QLineEdit* fromDateBox() const { return fromDate_; }
    QLineEdit* toDateBox() const { return toDate_; }
    QComboBox* accountBox() const { return account_; }
    QLineEdit* fromBankBox() const { return fromBank_; }
    QLineEdit* toBankBox() const { return toBank_; }
    QLabel* countLabel() const { return count_; }

    // "نمايش": the list by the filters typed.
    void showList();
    // The tick of a row turned over, the count shown again.
    void toggleRow(int row);
    // "شرايط ...": the condition window's dates into the date filters.
    void askConditions();
    QString reportTitle() const;
    bool printList(const QString& pdfFile = {});
    // "چاپ": the print form, modal through ModalRunner.
    void openPrintForm();
    // "طراحي چاپ" (design) and "چاپ جديد" (stored layout) through PrintDesign.
    void designPrint(bool design);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void arrangeColumns();
    void showCount(int count);
    bool guarded(const std::function<bool()>& action);

    tr::Services services_;
    std::unique_ptr<ChequesToBank> list_;
    std::unique_ptr<BankSlips> slips_;
    QLineEdit* month_;
    QLineEdit* fromDate_;
    QLineEdit* toDate_;
    QComboBox* account_;
    QLineEdit* fromBank_;
    QLineEdit* toBank_;
    QPushButton* conditions_;
    QPushButton* show_;
    QPushButton* print_;
    QPushButton* close_;
    QLabel* count_;
    QTableView* grid_;
    tr::ui::DatasetModel* model_;
    std::unique_ptr<QTextDocument> report_;  // keeps the user's report settings between prints
};

}  // namespace tr::cheques
