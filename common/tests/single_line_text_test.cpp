// The one-line text rule: which breaks join, what is refused, and widths in characters.
#include "common/text/single_line_text.h"

#include <gtest/gtest.h>

namespace tr::text {
namespace {

const QString kEmoji = QString::fromUtf8("\xF0\x9F\x98\x80");
// Zero-width non-joiner: Persian words need it, it is no control character.
const QString kZwnj = QString(QChar(0x200C));

TEST(SingleLineText, EveryKindOfLineBreakBecomesOneSpace) {
    EXPECT_EQ(joinLines(QStringLiteral("a\r\nb\nc\rd")), QStringLiteral("a b c d"));
    EXPECT_EQ(joinLines(QStringLiteral("a") + QChar(0x2028) + QStringLiteral("b") + QChar(0x2029) +
                        QChar(0x0085)),
              QStringLiteral("a b  "));
    EXPECT_EQ(joinLines(QStringLiteral("\r\n\r\n")), QStringLiteral("  "));
}

TEST(SingleLineText, RefusesControlCharactersAndBrokenPairsButNotPersianJoiners) {
    for (const QString& bad :
         {QStringLiteral("a\tb"), QStringLiteral("a\x0B"), QString(QChar(0x0000)),
          QString(QChar(0x007F)), QString(QChar(0x009B)), QString(QChar(0xD83D)),
          QString(QChar(0xDE00)) + QStringLiteral("a")})
        EXPECT_TRUE(hasForbiddenCharacter(bad)) << bad.toStdString();
    EXPECT_FALSE(hasForbiddenCharacter(QStringLiteral("مي") + kZwnj + QStringLiteral("شود") +
                                       kEmoji + QChar(0x200F)));
}

TEST(SingleLineText, CountsAndCutsByCharacters) {
    const QString text = QStringLiteral("ab") + kEmoji + QStringLiteral("c");
    EXPECT_EQ(characterCount(text), 4);
    EXPECT_EQ(leftCharacters(text, 3), QStringLiteral("ab") + kEmoji);
    EXPECT_EQ(leftCharacters(text, 2), QStringLiteral("ab"));
    EXPECT_EQ(leftCharacters(text, 10), text);

    const LineField description{QStringLiteral("شرح"), 3, true};
    EXPECT_EQ(cleanLine(description, QStringLiteral("a\nb") + kEmoji + kEmoji),
              QStringLiteral("a b"));
    const LineField number{QStringLiteral("شماره"), 3, false};
    EXPECT_EQ(cleanLine(number, QStringLiteral("1234")), QStringLiteral("1234"));
    EXPECT_EQ(lineRefusal(number, QStringLiteral("1234")),
              QStringLiteral("شماره بيش از 3 حرف است."));
    EXPECT_EQ(lineRefusal(number, QStringLiteral("12") + kEmoji), QString());
    EXPECT_EQ(lineRefusal(number, QStringLiteral("1\a")),
              QStringLiteral("شماره داراي حرف غير مجاز است."));
}

}  // namespace
}  // namespace tr::text
