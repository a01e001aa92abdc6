#pragma once
// TTarafHesabArzForm, the counter-account currency grid's window: a right-to-left grid over the
// working table of a CounterCurrencyGrid ("ارز", "حداكثر مقدار" read-only, "مقدار", "نرخ") and
// "تاييد" / "انصراف". Shown modally through the SDK's ModalRunner.
#include <QDialog>
#include <memory>
#include <optional>

#include "currency/counter_currency_grid.h"

class QPushButton;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::currency::ui {

class TTarafHesabArzForm : public QDialog {
    Q_OBJECT
  public:
    // The working table is filled through logic().fill() before the window is shown, and is
    // dropped with the window.
    TTarafHesabArzForm(const tr::Services& services, const QString& base,
                       QWidget* parent = nullptr);
    ~TTarafHesabArzForm() override;

    // Opens the grid and shows the window modally: the confirmed rows, or nothing.
    std::optional<QList<CounterCurrency>> ask();
    // Opens the grid's dataset without showing the window.
    void load();

    CounterCurrencyGrid& logic() { return logic_; }
    QTableView* grid() const { return grid_; }
    tr::ui::DatasetModel* model() const { return model_.get(); }
    QPushButton* okButton() const { return cmdOk_; }

  private:
    void cmdOkClick();
    void layoutColumns();

    CounterCurrencyGrid logic_;
    std::unique_ptr<tr::ui::DatasetModel> model_;
    QTableView* grid_;
    QPushButton* cmdOk_;
    QPushButton* cmdCancel_;
    std::optional<QList<CounterCurrency>> result_;
};

// The window behind a cheque screen's CounterCurrencyPrompt.
class TarafHesabArzPrompt : public CounterCurrencyPrompt {
  public:
    explicit TarafHesabArzPrompt(const tr::Services& services, QWidget* parent = nullptr)
        : services_(services), parent_(parent) {}
    std::optional<QList<CounterCurrency>> askCounterCurrencies(
        const QString& base, const QString& chequeTable) override;

  private:
    tr::Services services_;
    QWidget* parent_;
};

}  // namespace tr::currency::ui
