#pragma once
// TChqFirstStateForm, "مقداردهي وضعيت چكهاي اول دوره": the opening cheques of one side over
// OpeningChequeStates, locked rows drawn apart, the state cell picked from the row's states (or
// stepped with the space bar), "تاييد", and the list's report under the key CHQFIRST on the
// shared grid-report printer.
#include <QTextDocument>
#include <QWidget>
#include <functional>
#include <memory>

#include "cheques/opening_states.h"

class QLabel;
class QPushButton;
class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class TChqFirstStateForm : public QWidget {
    Q_OBJECT
  public:
    TChqFirstStateForm(const tr::Services& services, tr::instruments::Side side,
                       QWidget* parent = nullptr);
    ~TChqFirstStateForm() override;

    OpeningChequeStates& logic() { return *logic_; }
    QTableView* grid() const { return grid_; }
    tr::ui::DatasetModel* model() const { return model_; }
    QPushButton* okButton() const { return ok_; }

    // The list read again from the book.
    void showList();
    // "تاييد".
    void cmdOkClick();
    // The list as shown, under the report's title (to a PDF file, or a chosen printer).
    bool printClick(const QString& pdfFile = {});

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void arrangeColumns();
    bool guarded(const std::function<bool()>& action);

    tr::Services services_;
    std::unique_ptr<OpeningChequeStates> logic_;
    QLabel* caption_;
    QTableView* grid_;
    tr::ui::DatasetModel* model_;
    QPushButton* ok_;
    QPushButton* cancel_;
    QTextDocument report_;  // keeps the user's report settings between prints
};

// Opens the screen for the opening cheques of `side` as a window of its own, the list read: what
// the received and paid cheque documents call after an opening save and from their grid menu.
TChqFirstStateForm* showOpeningChequeStates(const tr::Services& services,
                                            tr::instruments::Side side, QWidget* owner);

}  // namespace tr::cheques
