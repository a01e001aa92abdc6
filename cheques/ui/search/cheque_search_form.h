#pragma once
// The cheque search windows, TChqGetSearchForm ("جستجوي دريافت چک") and TChqPaySearchForm
// ("جستجوي چک هاي پرداختي"): the filters and state boxes over ChequeSearch, its result with the
// totals kept last under title sorting, and the result printed as the grid shows it.
#include <QList>
#include <QPointer>
#include <QTextDocument>
#include <QWidget>

#include "common/ui/date_boxes.h"
#include <array>
#include <memory>

#include "cheques/search/cheque_search.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QTableView;

namespace tr::ui {
class TotalRowsModel;
class TitleSorter;
}  // namespace tr::ui

namespace tr::cheques {

class ChequeSearchForm : public QWidget {
    Q_OBJECT
  public:
    ChequeSearchForm(const tr::Services& services, ChequeSide side, QWidget* parent = nullptr);
    ~ChequeSearchForm() override;

    void setServices(const tr::Services& services);
    ChequeSearch& search() { return *search_; }
    QString reportKey() const { return ChequeSearch::reportKey(search_->side()); }

    // The menu's items: F5, the replacement, and print to the preview (or `pdfFile`).
    bool searchClick();
    bool replaceClick();
    bool printClick(const QString& pdfFile = {});

    using DateEdits = tr::ui::DateBoxes;
    QLineEdit *fromSeries, *toSeries, *fromNumber, *toNumber, *fromAccount, *toAccount;
    DateEdits fromDate, toDate, fromDue, toDue;
    QLineEdit *fromAmount, *toAmount;
    std::array<QLineEdit*, 3> words{}, replacements{};
    std::array<QComboBox*, 2> joins{};
    QList<QCheckBox*> stateBoxes;
    QCheckBox* openingBox = nullptr;
    QTableView* grid() const { return grid_; }

  private:
    void readFilters();
    void resultOpened();
    int columnWidth(const QString& table, const QString& column, int fallback) const;

    tr::Services services_;
    std::unique_ptr<ChequeSearch> search_;
    tr::ui::TotalRowsModel* model_ = nullptr;
    QTableView* grid_ = nullptr;
    QPointer<tr::ui::TitleSorter> sorter_;
    QTextDocument report_;
};

class TChqGetSearchForm : public ChequeSearchForm {
    Q_OBJECT
  public:
    explicit TChqGetSearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : ChequeSearchForm(services, ChequeSide::Received, parent) {}
};

class TChqPaySearchForm : public ChequeSearchForm {
    Q_OBJECT
  public:
    explicit TChqPaySearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : ChequeSearchForm(services, ChequeSide::Issued, parent) {}
};

// Opens (once per owner) the search of a side as a window of its own and answers it.
ChequeSearchForm* openChequeSearch(ChequeSide side, const tr::Services& services, QWidget* owner);

}  // namespace tr::cheques
