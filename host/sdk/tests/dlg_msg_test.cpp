// The host's message box driven by the module's showMessage: its widgets after configuring,
// its answers through buttons and Escape, and a picture of a question for review.
#include "host/sdk/dlg_msg.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

#include "tests/support/recording_modal_runner.h"

using tr::dialog::Button;
using tr::dialog::Icon;
using tr::sdk::TDlgMsg;
using tr::test::RecordingModalRunner;

namespace {

std::vector<Button> visibleButtons(const TDlgMsg& dlg) {
    std::vector<Button> shown;
    for (Button b : {Button::OK2, Button::Cancel, Button::OK1, Button::Yes, Button::No})
        if (!dlg.button(b)->isHidden()) shown.push_back(b);
    return shown;
}

std::vector<Icon> visibleIcons(const TDlgMsg& dlg) {
    std::vector<Icon> shown;
    for (Icon i : {Icon::Info, Icon::Warning, Icon::Question, Icon::Error, Icon::Stop})
        if (!dlg.icon(i)->isHidden()) shown.push_back(i);
    return shown;
}

void saveScreen(QWidget& w, const QString& name) {
    w.show();
    QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    w.grab().save(QStringLiteral(TR_SCREENS_DIR "/") + name);
}

TDlgMsg* asMessage(QDialog& d) {
    return qobject_cast<TDlgMsg*>(&d);
}

TEST(TDlgMsg, QuestionShowsYesNoAndTheQuestionIcon) {
    RecordingModalRunner runner;
    TDlgMsg dlg;
    const QString text = QStringLiteral("آيا حذف شود؟\nسند شماره ۱۲ حذف خواهد شد.");
    runner.answerBy([](QDialog& d) {
        saveScreen(d, QStringLiteral("dlg_msg_3qr.png"));
        asMessage(d)->button(Button::Yes)->click();
    });

    EXPECT_EQ(tr::dialog::showMessage(dlg, text, QStringLiteral("حذف سند"), "3qr"),
              tr::dialog::ResultYes);

    EXPECT_EQ(visibleButtons(dlg), (std::vector{Button::Yes, Button::No}));
    EXPECT_EQ(visibleIcons(dlg), std::vector{Icon::Question});
    EXPECT_EQ(dlg.closeResult(), tr::dialog::ResultNo);
    EXPECT_EQ(dlg.memo()->geometry(), QRect(5, 4, 217, 69));
    EXPECT_EQ(dlg.height(), 141);
    EXPECT_EQ(dlg.width(), 298);
    EXPECT_FALSE(dlg.infoPanel()->isEnabled());
    EXPECT_EQ(dlg.memo()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_EQ(dlg.memo()->toPlainText(), text);
    EXPECT_EQ(dlg.captionPanel()->text(), QStringLiteral("     حذف سند"));
    EXPECT_EQ(dlg.button(Button::Yes)->text(), QStringLiteral("&بله"));
    EXPECT_EQ(dlg.button(Button::No)->text(), QStringLiteral("&خير"));

    ASSERT_EQ(runner.shown().size(), 1);
    EXPECT_EQ(runner.last().kind, QStringLiteral("DlgMsg"));
    EXPECT_EQ(runner.last().text, text);
    EXPECT_EQ(runner.last().buttons, (QStringList{QStringLiteral("&بله"), QStringLiteral("&خير")}));
}

// Enter on a question answers "خير"; on a message it confirms.
TEST(TDlgMsg, EnterAnswersNoToAQuestionAndOkToAMessage) {
    RecordingModalRunner runner;
    int answered = -1;  // the result Enter gave, -1 while the box stays open
    const auto pressEnter = [&answered](QDialog& d) {
        d.show();
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&d, &enter);
        answered = d.isVisible() ? -1 : d.result();
    };
    runner.answerBy(pressEnter);
    TDlgMsg question;
    tr::dialog::showMessage(question, QStringLiteral("آيا ابطال شود؟"), QString(), "3qr");
    EXPECT_EQ(answered, tr::dialog::ResultNo);
    runner.answerBy(pressEnter);
    TDlgMsg error;
    tr::dialog::showMessage(error, QStringLiteral("سند تراز نميباشد."), QString(), "1er");
    EXPECT_EQ(answered, tr::dialog::ResultOk);
}

TEST(TDlgMsg, ErrorWithDefaultCaptionClosesWithOk) {
    RecordingModalRunner runner;
    TDlgMsg dlg;
    dlg.DefaultCaption = QStringLiteral("خزانه داري");
    runner.answerBy([](QDialog& d) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&d, &escape);
    });

    EXPECT_EQ(tr::dialog::showMessage(dlg, QStringLiteral("مبلغ وارد نشده است."), {}, "1ER"),
              tr::dialog::ResultOk);
    EXPECT_EQ(visibleButtons(dlg), std::vector{Button::OK1});
    EXPECT_EQ(visibleIcons(dlg), std::vector{Icon::Error});
    EXPECT_EQ(dlg.button(Button::OK1)->text(), QStringLiteral("&تاييد"));
    EXPECT_EQ(runner.last().title, QStringLiteral("     خزانه داري"));
    EXPECT_EQ(dlg.pos(),
              QPoint(dlg.screenSize().width() / 2 - 149, dlg.screenSize().height() / 2 - 67));
}

TEST(TDlgMsg, CloseButtonAndCancelAnswerTheirResults) {
    RecordingModalRunner runner;
    TDlgMsg dlg;
    runner.answerBy([](QDialog& d) { asMessage(d)->closeButton()->click(); });
    EXPECT_EQ(tr::dialog::showMessage(dlg, "x", "t", "2WR"), tr::dialog::ResultCancel);
    runner.answerBy([](QDialog& d) { asMessage(d)->button(Button::OK2)->click(); });
    EXPECT_EQ(tr::dialog::showMessage(dlg, "x", "t", "2WR"), tr::dialog::ResultOk);
    // Nothing scripted: the runner closes the window, which answers the close result.
    EXPECT_EQ(tr::dialog::showMessage(dlg, "x", "t", "3QR"), tr::dialog::ResultNo);
    EXPECT_EQ(runner.shown().size(), 3);
}

TEST(TDlgMsg, LongTextScrollsWhetherByLinesOrByWrapping) {
    RecordingModalRunner runner;
    TDlgMsg dlg;
    tr::dialog::showMessage(dlg, "1\n2\n3\n4\n5", "t", "1ER");
    EXPECT_TRUE(dlg.infoPanel()->isEnabled());
    EXPECT_EQ(dlg.memo()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    EXPECT_EQ(dlg.height(), 135);

    TDlgMsg wrapped;
    const QString sentence = QStringLiteral("اين متن بلند در چند سطر شكسته مي شود ");
    tr::dialog::showMessage(wrapped, sentence.repeated(6), "t", "1ER");
    EXPECT_GT(wrapped.memoLineCount(), 4);
    EXPECT_TRUE(wrapped.infoPanel()->isEnabled());

    TDlgMsg four;
    runner.answerBy([](QDialog& d) { saveScreen(d, QStringLiteral("dlg_msg_four_lines.png")); });
    tr::dialog::showMessage(four,
                            QStringLiteral("سطر اول پيام\nسطر دوم پيام\nسطر سوم\nسطر چهارم 1234"),
                            QStringLiteral("پيام"), "1 C");
    EXPECT_EQ(four.memoLineCount(), 4);
    EXPECT_FALSE(four.infoPanel()->isEnabled());
    EXPECT_EQ(four.memo()->geometry(), QRect(6, 4, 213, 69));
}

}  // namespace
