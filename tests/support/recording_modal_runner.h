#pragma once
// A modal runner for tests: while it lives, every modal show of the SDK's windows is recorded
// (kind, title, text, visible buttons) and answered from a queue of scripted answers instead of
// waiting for a user. With nothing queued a window is answered as if closed (Escape).
#include <QDialog>
#include <QList>
#include <QStringList>
#include <deque>
#include <functional>

#include "host/sdk/modal_runner.h"

namespace tr::test {

class RecordingModalRunner : public tr::sdk::ModalRunner {
  public:
    struct Shown {
        QString kind;   // the window's object name: "DlgMsg", "TempGridForm", ...
        QString title;  // message caption (leading blanks included) or window title
        QString text;   // message text; for a pick list its rows, one per line, fields by tabs
        QStringList buttons;  // captions of the visible message buttons, right to left
        int answer = 0;
    };
    // Runs on the window before it answers, e.g. to pick a row of a pick list.
    using Action = std::function<void(QDialog&)>;

    RecordingModalRunner();
    ~RecordingModalRunner() override;
    RecordingModalRunner(const RecordingModalRunner&) = delete;
    RecordingModalRunner& operator=(const RecordingModalRunner&) = delete;

    void answer(int result, Action action = {});
    // Runs `action` (which presses a button, a key...) and answers whatever the window then says.
    void answerBy(Action action);
    // Pick lists: choose the given row (0-based).
    void chooseRow(int row);

    const QList<Shown>& shown() const { return shown_; }
    const Shown& last() const { return shown_.last(); }
    int pending() const { return int(answers_.size()); }

    int exec(QDialog& dialog) override;

  private:
    struct Answer {
        int result;  // kFromDialog: the dialog's own result after the action
        Action action;
    };
    static constexpr int kFromDialog = -1;
    std::deque<Answer> answers_;
    QList<Shown> shown_;
    tr::sdk::ModalRunner* previous_;
};

}  // namespace tr::test
