#pragma once
// TFixDesForm, "ثبت شرح ثابت اسناد": a right-to-left grid over the fixed descriptions, bound to
// FixDesScreen, which holds every rule. Closing the form hides it; the entry point keeps it.
#include <QTextDocument>
#include <QWidget>
#include <memory>

#include "common/session/services.h"
#include "vouchers/fix_des_screen.h"

class QLabel;
class QMenu;
class QTableView;

namespace tr::ui {
class DatasetModel;
class TitleSorter;
}  // namespace tr::ui

namespace tr::vouchers {

class TFixDesForm : public QWidget {
    Q_OBJECT
  public:
    explicit TFixDesForm(const tr::Services& services, QWidget* parent = nullptr);
    ~TFixDesForm() override;

    // The entry point passes the latest session values on every call.
    void setServices(const tr::Services& services);
    FixDesScreen& screen() { return *screen_; }
    QTableView* grid() const { return grid_; }
    tr::ui::DatasetModel* model() const { return model_; }
    QMenu* gridMenu() const { return menu_; }

    // Prints the grid's report to a PDF file (an empty name asks for a printer).
    void printReport(const QString& pdfFile = {});
    void openReportProperties();
    void showTurnover();
    // The account list of the current cell, when it is an account cell.
    void pickAccount();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QString currentField() const;
    void currentRowChanged(int row);
    void postOrAppend();
    void focusRefusedCell();

    std::unique_ptr<FixDesScreen> screen_;
    QLabel* caption_;
    QTableView* grid_;
    tr::ui::DatasetModel* model_;
    tr::ui::TitleSorter* sorter_;
    QMenu* menu_;
    QTextDocument report_;
};

}  // namespace tr::vouchers
