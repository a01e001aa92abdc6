// The message box's kind codes, memo sizing, captions and the remembered OK word, checked on a
// dialog without a window.
#include "common/dialog/message_dialog.h"

#include <gtest/gtest.h>

#include "tests/support/recording_message_dialog.h"

using tr::dialog::Button;
using tr::dialog::Icon;
using tr::test::RecordingMessageDialog;

namespace {

struct CodeCase {
    const char* code;
    const char* normalised;
    std::vector<Button> buttons;
    int closeResult;  // 0: left as it was
    std::optional<Icon> icon;
};

class KindCode : public testing::TestWithParam<CodeCase> {};

TEST_P(KindCode, SelectsButtonsIconAndMemoWidth) {
    const CodeCase& c = GetParam();
    RecordingMessageDialog dlg;
    dlg.buttons.fill(true);  // left over from an earlier message
    dlg.icons.fill(true);
    tr::dialog::showMessage(dlg, QStringLiteral("متن"), QStringLiteral("عنوان"),
                            QString::fromUtf8(c.code));

    EXPECT_EQ(dlg.kindCode, QString::fromUtf8(c.normalised));
    for (Button b : {Button::OK2, Button::Cancel, Button::OK1, Button::Yes, Button::No}) {
        const bool expected = std::find(c.buttons.begin(), c.buttons.end(), b) != c.buttons.end();
        EXPECT_EQ(dlg.buttonVisible(b), expected) << "button " << int(b);
    }
    EXPECT_EQ(dlg.closeResult, c.closeResult);
    for (Icon i : {Icon::Info, Icon::Warning, Icon::Question, Icon::Error, Icon::Stop})
        EXPECT_EQ(dlg.iconVisible(i), c.icon == i) << "icon " << int(i);
    if (c.icon) {
        EXPECT_EQ(dlg.memoLeft, 5);
        EXPECT_EQ(dlg.memoWidth, 217);
    } else {
        EXPECT_EQ(dlg.memoLeft, 6);
        EXPECT_EQ(dlg.memoWidth, 213);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Codes, KindCode,
    testing::Values(CodeCase{"", "1 R", {Button::OK1}, 1, std::nullopt},
                    CodeCase{"1ER", "1ER", {Button::OK1}, 1, Icon::Error},
                    CodeCase{"3qr", "3QR", {Button::Yes, Button::No}, 7, Icon::Question},
                    CodeCase{"2", "2 R", {Button::OK2, Button::Cancel}, 2, std::nullopt},
                    CodeCase{"2w", "2WR", {Button::OK2, Button::Cancel}, 2, Icon::Warning},
                    CodeCase{"1I", "1IR", {Button::OK1}, 1, Icon::Info},
                    CodeCase{"1SC", "1SC", {Button::OK1}, 1, Icon::Stop},
                    CodeCase{"1 C", "1 C", {Button::OK1}, 1, std::nullopt},
                    CodeCase{"1XR", "1XR", {Button::OK1}, 1, std::nullopt},
                    CodeCase{"9QR", "9QR", {}, 0, Icon::Question},
                    CodeCase{"3QRX", "3QRX", {Button::Yes, Button::No}, 7, Icon::Question}));

TEST(NormalizeCode, PadsShortCodesAndKeepsLongOnes) {
    EXPECT_EQ(tr::dialog::normalizeCode(""), "1 R");
    EXPECT_EQ(tr::dialog::normalizeCode("e"), "E R");
    EXPECT_EQ(tr::dialog::normalizeCode(" "), "  R");
    EXPECT_EQ(tr::dialog::normalizeCode("1e"), "1ER");
    EXPECT_EQ(tr::dialog::normalizeCode("1ec"), "1EC");
    EXPECT_EQ(tr::dialog::normalizeCode("1ecx"), "1ECX");
}

TEST(ShowMessage, CentresWithIntegerHalvesBeforeResizing) {
    RecordingMessageDialog dlg;
    dlg.screen = QSize(1025, 767);
    dlg.size = QSize(299, 135);
    tr::dialog::showMessage(dlg, "x", "t", "1ER");
    EXPECT_EQ(dlg.position, QPoint(512 - 149, 383 - 67));
    EXPECT_EQ(dlg.size.height(), 141);
}

TEST(ShowMessage, FourLinesShrinkTheDialogAndFiveScroll) {
    RecordingMessageDialog dlg;
    dlg.verticalScrollBar = true;
    tr::dialog::showMessage(dlg, "1\n2\n3\n4", "t", "1ER");
    EXPECT_EQ(dlg.memoText, "1\n2\n3\n4");
    EXPECT_EQ(dlg.size.height(), 141);
    EXPECT_EQ(dlg.memoHeight, 69);
    EXPECT_FALSE(dlg.verticalScrollBar);
    EXPECT_FALSE(dlg.infoPanelEnabled);

    RecordingMessageDialog tall;
    tall.memoHeight = 50;
    tr::dialog::showMessage(tall, "1\n2\n3\n4\n5", "t", "1ER");
    EXPECT_TRUE(tall.verticalScrollBar);
    EXPECT_TRUE(tall.infoPanelEnabled);
    EXPECT_EQ(tall.size.height(), 135);
    EXPECT_EQ(tall.memoHeight, 50);
}

TEST(ShowMessage, CaptionGetsFiveBlanksAndFallsBackToTheDefault) {
    RecordingMessageDialog dlg;
    dlg.defaultCaptionText = QStringLiteral("خزانه داري");
    tr::dialog::showMessage(dlg, "x", "", "1ER");
    EXPECT_EQ(dlg.captionText, QStringLiteral("     خزانه داري"));
    tr::dialog::showMessage(dlg, "x", QStringLiteral("پيام"), "1ER");
    EXPECT_EQ(dlg.captionText, QStringLiteral("     پيام"));
}

TEST(ShowMessage, AnswersTheModalResult) {
    RecordingMessageDialog dlg;
    tr::dialog::Messages msg(&dlg);
    dlg.answerYes();
    EXPECT_TRUE(msg.ask(QStringLiteral("آيا حذف شود؟")));
    EXPECT_EQ(dlg.last().code, "3QR");
    EXPECT_FALSE(msg.ask(QStringLiteral("آيا حذف شود؟")));  // closed: the close result, No
    EXPECT_EQ(dlg.last().answer, tr::dialog::ResultNo);
    dlg.answer(tr::dialog::ResultCancel);
    EXPECT_EQ(msg.show("x", "2QR"), tr::dialog::ResultCancel);
}

TEST(ShowNote, HasNoCaptionNoIconAndOneButton) {
    RecordingMessageDialog dlg;
    dlg.defaultCaptionText = QStringLiteral("خزانه");
    EXPECT_EQ(tr::dialog::showNote(dlg, "x"), tr::dialog::ResultOk);
    EXPECT_EQ(dlg.kindCode, "1 C");
    EXPECT_EQ(dlg.captionText, QStringLiteral("     خزانه"));
    EXPECT_EQ(dlg.memoWidth, 213);
}

// Kept last: the remembered word lives for the rest of the process.
TEST(RememberedOkWord, StaysOnEveryLaterMessage) {
    const QString word = QStringLiteral("ادامه");
    RecordingMessageDialog dlg;
    if (tr::dialog::rememberedOkWord().isEmpty()) {
        tr::dialog::showMessage(dlg, "x", QStringLiteral("ادامه دارد"), "1ER");
        EXPECT_TRUE(dlg.ok1Caption.isEmpty());
    }
    tr::dialog::showMessage(dlg, "x", word, "1ER");
    EXPECT_EQ(dlg.ok1Caption, word);

    RecordingMessageDialog later;
    later.defaultCaptionText = QStringLiteral("پيام");
    tr::dialog::showMessage(later, "x", "", "1 C");
    EXPECT_EQ(later.ok1Caption, word);
    EXPECT_EQ(tr::dialog::rememberedOkWord(), word);
}

}  // namespace
