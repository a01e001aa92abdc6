#pragma once
// The five document search forms over DocumentSearch: the filters, F5 / "نمايش نتيجه جستجو",
// the right-to-left result grid with its totals drawn apart, and title-click sorting that keeps
// the totals last. Each documented class only names its family.
#include <QHash>
#include <QPointer>
#include <QWidget>

#include "common/ui/date_boxes.h"
#include <array>
#include <functional>
#include <memory>

#include "cashbank/search/document_search.h"
#include "common/session/services.h"

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QTableView;

namespace tr::ui {
class DatasetModel;
class TitleSorter;
}  // namespace tr::ui

namespace tr::cashbank {

class TCashBankForm;

class DocumentSearchForm : public QWidget {
    Q_OBJECT
  public:
    DocumentSearchForm(const tr::Services& services, SearchFamily family, QWidget* parent);
    ~DocumentSearchForm() override;

    void setServices(const tr::Services& services);
    DocumentSearch& search() { return *search_; }
    QTableView* grid() const { return grid_; }
    tr::ui::DatasetModel* model() const { return model_; }
    QAction* searchAction() const { return searchAction_; }

    using DateEdits = tr::ui::DateBoxes;
    // The filter boxes, for the form's users and tests.
    QLineEdit *fromCode, *toCode, *fromSerial, *toSerial, *fromAmount, *toAmount;
    QLabel *fromName, *toName;
    DateEdits fromDate, toDate;
    QCheckBox *receipts, *payments, *cancellations;
    std::array<QLineEdit*, 3> words;
    std::array<QLineEdit*, 3> replacements;
    std::array<QComboBox*, 2> joins;

    void mnuSearchClick();
    void mnuReplaceClick();
    // "ذخيره نتيجه در فايل CSV ...", "... Excel ..." and "... PDF ...": ask for a file through
    // askSavePath (a file dialog unless set otherwise; its argument is the file suffix) and
    // save the result there. "چاپ نتيجه جستجو ..." (Ctrl+P) shows it in the print preview.
    void saveCsvClick();
    void saveXlsxClick();
    void savePdfClick();
    void printClick();
    QAction* csvAction() const { return csvAction_; }
    QAction* xlsxAction() const { return xlsxAction_; }
    QAction* pdfAction() const { return pdfAction_; }
    QAction* printAction() const { return printAction_; }
    std::function<QString(const QString& suffix)> askSavePath;

    // Opens a saved document of `kind` in a window of its screen, one window per kind, kept
    // while this form lives; nothing when no screen here saves the kind. The result's rows open
    // this way unless whoever opened the search sets search().openDocument otherwise.
    std::optional<bool> openInWindow(const QString& kind, const QString& serial);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void readFilters();
    // After a refused date: focus on the box at fault.
    void focusDateFault();
    void resultOpened();
    DateEdits dateEdits(QWidget* owner, const QString& name);

    tr::Services services_;  // the document windows keep a reference to it
    std::unique_ptr<DocumentSearch> search_;
    QHash<QString, QPointer<TCashBankForm>> documentWindows_;
    QTableView* grid_;
    tr::ui::DatasetModel* model_;
    tr::ui::TitleSorter* sorter_ = nullptr;
    QAction* searchAction_;
    QAction* csvAction_ = nullptr;
    QAction* xlsxAction_ = nullptr;
    QAction* pdfAction_ = nullptr;
    QAction* printAction_ = nullptr;
};

class TCashSearchForm : public DocumentSearchForm {
    Q_OBJECT
  public:
    explicit TCashSearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : DocumentSearchForm(services, SearchFamily::Cash, parent) {}
};

class TTankhahSearchForm : public DocumentSearchForm {
    Q_OBJECT
  public:
    explicit TTankhahSearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : DocumentSearchForm(services, SearchFamily::PettyCash, parent) {}
};

class TVarizSearchForm : public DocumentSearchForm {
    Q_OBJECT
  public:
    explicit TVarizSearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : DocumentSearchForm(services, SearchFamily::Deposit, parent) {}
};

class TBardashtSearchForm : public DocumentSearchForm {
    Q_OBJECT
  public:
    explicit TBardashtSearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : DocumentSearchForm(services, SearchFamily::Withdrawal, parent) {}
};

class THavalehSearchForm : public DocumentSearchForm {
    Q_OBJECT
  public:
    explicit THavalehSearchForm(const tr::Services& services, QWidget* parent = nullptr)
        : DocumentSearchForm(services, SearchFamily::Transfer, parent) {}
};

// The form of a family, e.g. a TCashSearchForm for SearchFamily::Cash.
DocumentSearchForm* createSearchForm(SearchFamily family, const tr::Services& services,
                                     QWidget* parent);

}  // namespace tr::cashbank
