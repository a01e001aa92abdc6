#pragma once
// TGetNerkhArzForm, the rate dialog's window: six right-to-left fields bound to a RateDialog.
// Typing updates the other fields, leaving a field runs its guard, "تاييد" accepts only what the
// logic confirms. Shown modally through the SDK's ModalRunner.
#include <QDialog>
#include <QHash>
#include <optional>

#include "currency/rate_dialog.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tr::currency::ui {

class TGetNerkhArzForm : public QDialog {
    Q_OBJECT
  public:
    using Field = RateDialog::Field;

    TGetNerkhArzForm(tr::dialog::Messages messages, const RateRequest& request,
                     QWidget* parent = nullptr);

    // Shows the dialog modally: the confirmed values, or nothing.
    std::optional<RateValues> ask();

    RateDialog& logic() { return logic_; }
    QLineEdit* edit(Field field) const { return edits_.value(field); }
    QLabel* label(Field field) const { return labels_.value(field); }
    QPushButton* okButton() const { return cmdOk_; }
    QPushButton* cancelButton() const { return cmdCancel_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showValues(Field except);
    void cmdOkClick();

    RateDialog logic_;
    QHash<Field, QLineEdit*> edits_;
    QHash<Field, QLabel*> labels_;
    QPushButton* cmdOk_;
    QPushButton* cmdCancel_;
    std::optional<RateValues> result_;
    bool guarding_ = false;
};

// The window behind a screen's RatePrompt.
class GetNerkhArzPrompt : public RatePrompt {
  public:
    explicit GetNerkhArzPrompt(tr::dialog::Messages messages, QWidget* parent = nullptr)
        : messages_(messages), parent_(parent) {}
    std::optional<RateValues> askRate(const RateRequest& request) override;

  private:
    tr::dialog::Messages messages_;
    QWidget* parent_;
};

}  // namespace tr::currency::ui
