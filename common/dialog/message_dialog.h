#pragma once
// The module's message box: one modal dialog configured by a three-character kind code (buttons,
// icon) and shown with a text and a caption. The dialog itself is behind an interface so that
// logic code and its tests never need a display; the host supplies the real window.
#include <QSize>
#include <QString>

namespace tr::dialog {

// The five buttons, in the order the bottom panel declares them.
enum class Button { OK2, Cancel, OK1, Yes, No };
// The five icon images of the info panel.
enum class Icon { Info, Warning, Question, Error, Stop };

// Modal results of the dialog's buttons.
inline constexpr int ResultOk = 1;
inline constexpr int ResultCancel = 2;
inline constexpr int ResultYes = 6;
inline constexpr int ResultNo = 7;

// The visible state of the dialog that configuring and showing a message touches.
class MessageDialog {
  public:
    virtual ~MessageDialog() = default;

    virtual QSize screenSize() const = 0;
    virtual QSize dialogSize() const = 0;
    virtual void setDialogPosition(int left, int top) = 0;
    virtual void setDialogHeight(int height) = 0;

    // Filled by the host; used when a message comes without a caption.
    virtual QString defaultCaption() const = 0;
    // The caption panel's text (the caption already carries its leading blanks).
    virtual void setCaptionText(const QString& text) = 0;

    virtual void setButtonVisible(Button button, bool visible) = 0;
    virtual void setOk1Caption(const QString& caption) = 0;
    virtual void setIconVisible(Icon icon, bool visible) = 0;
    // What closing the dialog without a button (close button, Escape) answers.
    virtual void setCloseResult(int result) = 0;

    virtual void setMemoHorizontal(int left, int width) = 0;
    virtual void setMemoHeight(int height) = 0;
    // Replaces the memo's lines; line breaks in the text start new lines.
    virtual void setMemoText(const QString& text) = 0;
    // Lines as the memo shows them (long lines wrap, so this may exceed the line breaks + 1).
    virtual int memoLineCount() const = 0;
    virtual void setMemoVerticalScrollBar(bool on) = 0;
    virtual void setInfoPanelEnabled(bool enabled) = 0;

    // The normalised kind code of the message being configured; the dialog need not use it, but a
    // recording dialog or a log can.
    virtual void setKindCode(const QString& code) { (void)code; }

    // Shows the dialog modally and answers its modal result.
    virtual int showModal() = 0;
};

// Upper-cases the code and pads it to three characters ("" -> "1 R", "2" -> "2 R", "1E" -> "1ER").
QString normalizeCode(const QString& code);

// Buttons, close result, icon and memo width for a (normalised) code.
void configure(MessageDialog& dialog, const QString& code);

// Shows a message and answers the modal result: 1 OK, 2 Cancel, 6 Yes, 7 No.
int showMessage(MessageDialog& dialog, const QString& text, const QString& caption,
                const QString& code);

// A plain note: no caption, one OK button, no icon.
int showNote(MessageDialog& dialog, const QString& text);

// The OK word remembered from a message captioned "ادامه"; it stays for the rest of the process.
QString rememberedOkWord();

// Short call sites for screens: `msg.show("...", "1ER")`, `if (msg.ask("آيا حذف شود؟")) ...`.
class Messages {
  public:
    explicit Messages(MessageDialog* dialog = nullptr) : dialog_(dialog) {}
    void setDialog(MessageDialog* dialog) { dialog_ = dialog; }
    MessageDialog* dialog() const { return dialog_; }

    int show(const QString& text, const QString& code, const QString& caption = {}) const;
    // A yes/no question ("3QR"); true only for Yes.
    bool ask(const QString& text, const QString& caption = {}) const;
    int note(const QString& text) const;

  private:
    MessageDialog* dialog_;
};

}  // namespace tr::dialog
