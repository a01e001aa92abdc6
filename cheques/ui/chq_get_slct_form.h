#pragma once
// TChqGetSlctFrm, "انتخاب چک دريافتي": the received cheques in hand, chosen with Space or a
// double click ("ض" in the first column) and handed to the payment with "تاييد". Made once by the
// payment window and kept for its later calls; Release_It frees it through its slot.
#include <QDialog>
#include <optional>

#include "cheques/spend_picker.h"

class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class TChqGetSlctFrm : public QDialog {
    Q_OBJECT
  public:
    explicit TChqGetSlctFrm(const tr::Services& services, QWidget* parent = nullptr);

    // Fills the list (less the cheques already on the payment) and shows the window modally:
    // the chosen cheques (number, series), or nothing when the user cancels.
    std::optional<QList<QPair<QString, QString>>> ask(const QStringList& onThePayment);
    // Fills the list without showing the window.
    void load(const QStringList& onThePayment = {});

    SpendPicker& logic() { return picker_; }
    QTableView* grid() const { return grid_; }
    void confirm();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void toggle();

    SpendPicker picker_;
    tr::ui::DatasetModel* model_;
    QTableView* grid_;
    std::optional<QList<QPair<QString, QString>>> result_;
};

// The window kept between calls; Release_It deletes it and clears the pointer.
extern TChqGetSlctFrm* chqGetSlctFrm;

}  // namespace tr::cheques
