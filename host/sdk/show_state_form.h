#pragma once
// TShowStateForm, the host's status window: a one-line progress text and a stop button, shown
// (not modally) around long work. The work polls stopRequested(), which also keeps the window
// painted and the stop button clickable.
#include <QDialog>

#include "common/dialog/host_windows.h"
#include "host/sdk/sdk_export.h"

class QLabel;
class QPushButton;

namespace tr::sdk {

class TR_SDK_EXPORT TShowStateForm : public QDialog, public tr::dialog::ProgressWindow {
    Q_OBJECT
  public:
    explicit TShowStateForm(QWidget* parent = nullptr);

    // Shows the window with `text`; a stop asked for during earlier work is forgotten.
    void showState(const QString& text) override;
    void setStateText(const QString& text) override;
    QString stateText() const;
    // Processes pending events, then answers whether the user pressed the stop button.
    bool stopRequested() override;
    // Hides the window after the work.
    void closeState() override;

    QPushButton* stopButton() const { return stopButton_; }

  private:
    QLabel* text_;
    QPushButton* stopButton_;
    bool stop_ = false;
};

}  // namespace tr::sdk
