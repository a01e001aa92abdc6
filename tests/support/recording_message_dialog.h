#pragma once
// A message dialog without a window: it keeps the state that configuring set, records every
// message shown (text, caption, kind code) and answers from a queue of scripted results.
#include <QList>
#include <QPoint>
#include <QString>
#include <array>
#include <deque>

#include "common/dialog/message_dialog.h"

namespace tr::test {

class RecordingMessageDialog : public tr::dialog::MessageDialog {
  public:
    struct Shown {
        QString text;
        QString caption;  // the caption panel's text, leading blanks included
        QString code;     // normalised
        int answer = 0;
    };

    // The next showModal() answers `result`; with nothing queued it answers the close result,
    // as if the user closed the dialog.
    void answer(int result) { answers_.push_back(result); }
    void answerYes() { answer(tr::dialog::ResultYes); }
    void answerNo() { answer(tr::dialog::ResultNo); }
    // Drops the answers not yet given (an action that failed before asking).
    void clearAnswers() { answers_.clear(); }

    const QList<Shown>& shown() const { return shown_; }
    const Shown& last() const { return shown_.last(); }
    void clearShown() { shown_.clear(); }

    // Screen and size as the dialog reports them; the fake starts with a 1024 x 768 screen.
    QSize screen{1024, 768};
    QSize size{298, 135};
    QString defaultCaptionText;

    // State as last configured.
    QPoint position;
    std::array<bool, 5> buttons{};
    std::array<bool, 5> icons{};
    QString ok1Caption;
    int closeResult = 0;
    int memoLeft = 0, memoWidth = 0, memoHeight = 0;
    QString memoText;
    bool verticalScrollBar = false;
    bool infoPanelEnabled = true;
    QString captionText;
    QString kindCode;

    bool buttonVisible(tr::dialog::Button b) const { return buttons[static_cast<int>(b)]; }
    bool iconVisible(tr::dialog::Icon i) const { return icons[static_cast<int>(i)]; }

    QSize screenSize() const override { return screen; }
    QSize dialogSize() const override { return size; }
    void setDialogPosition(int left, int top) override { position = QPoint(left, top); }
    void setDialogHeight(int height) override { size.setHeight(height); }
    QString defaultCaption() const override { return defaultCaptionText; }
    void setCaptionText(const QString& text) override { captionText = text; }
    void setButtonVisible(tr::dialog::Button b, bool on) override {
        buttons[static_cast<int>(b)] = on;
    }
    void setOk1Caption(const QString& caption) override { ok1Caption = caption; }
    void setIconVisible(tr::dialog::Icon i, bool on) override { icons[static_cast<int>(i)] = on; }
    void setCloseResult(int result) override { closeResult = result; }
    void setMemoHorizontal(int left, int width) override {
        memoLeft = left;
        memoWidth = width;
    }
    void setMemoHeight(int height) override { memoHeight = height; }
    void setMemoText(const QString& text) override { memoText = text; }
    // Without a window nothing wraps: one line per line break.
    int memoLineCount() const override {
        return memoText.isEmpty() ? 0 : int(memoText.count(QLatin1Char('\n'))) + 1;
    }
    void setMemoVerticalScrollBar(bool on) override { verticalScrollBar = on; }
    void setInfoPanelEnabled(bool enabled) override { infoPanelEnabled = enabled; }
    void setKindCode(const QString& code) override { kindCode = code; }
    int showModal() override;

  private:
    std::deque<int> answers_;
    QList<Shown> shown_;
};

}  // namespace tr::test
