#include "common/dialog/message_dialog.h"

#include <QLocale>

namespace tr::dialog {

namespace {

// The OK word of the one-button dialog, once a message captioned with it has been shown. It is
// never reset: later one-button messages keep showing it, which the suite's users are used to.
QString& okWord() {
    static QString word;
    return word;
}

const QString& continueWord() {
    static const QString word = QStringLiteral("ادامه");
    return word;
}

}  // namespace

QString normalizeCode(const QString& code) {
    QString result = QLocale().toUpper(code);
    switch (result.size()) {
        case 0:
            return QStringLiteral("1 R");
        case 1:
            return result + QStringLiteral(" R");
        case 2:
            return result + QLatin1Char('R');
        default:
            return result;
    }
}

void configure(MessageDialog& dialog, const QString& code) {
    dialog.setKindCode(code);
    for (Button button : {Button::OK2, Button::Cancel, Button::OK1, Button::Yes, Button::No})
        dialog.setButtonVisible(button, false);

    const QChar buttons = code.size() > 0 ? code.at(0) : QChar();
    if (buttons == QLatin1Char('1')) {
        dialog.setButtonVisible(Button::OK1, true);
        dialog.setCloseResult(ResultOk);
    } else if (buttons == QLatin1Char('2')) {
        dialog.setButtonVisible(Button::OK2, true);
        dialog.setButtonVisible(Button::Cancel, true);
        dialog.setCloseResult(ResultCancel);
    } else if (buttons == QLatin1Char('3')) {
        dialog.setButtonVisible(Button::Yes, true);
        dialog.setButtonVisible(Button::No, true);
        dialog.setCloseResult(ResultNo);
    }

    for (Icon icon : {Icon::Info, Icon::Warning, Icon::Question, Icon::Error, Icon::Stop})
        dialog.setIconVisible(icon, false);

    if (okWord() == continueWord()) dialog.setOk1Caption(okWord());

    dialog.setMemoHorizontal(5, 217);
    const QChar icon = code.size() > 1 ? code.at(1) : QChar();
    switch (icon.unicode()) {
        case 'E':
            dialog.setIconVisible(Icon::Error, true);
            break;
        case 'I':
            dialog.setIconVisible(Icon::Info, true);
            break;
        case 'Q':
            dialog.setIconVisible(Icon::Question, true);
            break;
        case 'S':
            dialog.setIconVisible(Icon::Stop, true);
            break;
        case 'W':
            dialog.setIconVisible(Icon::Warning, true);
            break;
        default:
            dialog.setMemoHorizontal(6, 213);
            break;
    }
}

int showMessage(MessageDialog& dialog, const QString& text, const QString& caption,
                const QString& code) {
    const QSize screen = dialog.screenSize();
    const QSize size = dialog.dialogSize();
    dialog.setDialogPosition(screen.width() / 2 - size.width() / 2,
                             screen.height() / 2 - size.height() / 2);

    const QString shownCaption = caption.isEmpty() ? dialog.defaultCaption() : caption;
    const QString kind = normalizeCode(code);
    if (shownCaption == continueWord()) okWord() = continueWord();
    configure(dialog, kind);

    dialog.setMemoText(text);
    if (dialog.memoLineCount() > 4) {
        dialog.setMemoVerticalScrollBar(true);
        dialog.setInfoPanelEnabled(true);
    } else {
        dialog.setDialogHeight(141);
        dialog.setMemoHeight(69);
        dialog.setMemoVerticalScrollBar(false);
        dialog.setInfoPanelEnabled(false);
    }
    dialog.setCaptionText(QStringLiteral("     ") + shownCaption);
    return dialog.showModal();
}

int showNote(MessageDialog& dialog, const QString& text) {
    return showMessage(dialog, text, QString(), QStringLiteral("1 C"));
}

QString rememberedOkWord() {
    return okWord();
}

int Messages::show(const QString& text, const QString& code, const QString& caption) const {
    return showMessage(*dialog_, text, caption, code);
}

bool Messages::ask(const QString& text, const QString& caption) const {
    return showMessage(*dialog_, text, caption, QStringLiteral("3QR")) == ResultYes;
}

int Messages::note(const QString& text) const {
    return showNote(*dialog_, text);
}

}  // namespace tr::dialog
