// The TSQL collation's order: Persian alphabetical, with equality exactly as it was (blanks at
// both ends, ASCII case, yeh and kaf forms), and a consistent total order over awkward text.
#include "common/text/tsql_collation.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QStringList>
#include <algorithm>
#include <random>
#include <vector>

namespace tr::text {
namespace {

int compare(const QByteArray& a, const QByteArray& b) {
    return tsqlCompareUtf8(a.constData(), int(a.size()), b.constData(), int(b.size()));
}

int compare(const QString& a, const QString& b) {
    return tsqlCompare(a, b);
}

// Equality as the collation has always had it: blanks at both ends dropped, then character by
// character after folding case, yeh and kaf. Written out here so a change to it shows.
bool equalAsBefore(const QByteArray& a, const QByteArray& b) {
    const auto folded = [](QByteArray s) {
        while (s.startsWith(' ')) s.remove(0, 1);
        while (s.endsWith(' ')) s.chop(1);
        const QString text = QString::fromUtf8(s);
        std::u32string out;
        for (const char32_t c : text.toUcs4()) {
            char32_t f = c;
            if (c >= U'A' && c <= U'Z') f = c + 32;
            if (c == U'\u064A' || c == U'\u0649') f = U'\u06CC';
            if (c == U'\u0643') f = U'\u06A9';
            out += f;
        }
        return QString::fromStdU32String(out).toUtf8();
    };
    return folded(a) == folded(b);
}

const QString kAlphabet =
    QStringLiteral("آ ا ب پ ت ث ج چ ح خ د ذ ر ز ژ س ش ص ض ط ظ ع غ ف ق ک گ ل م ن و ه ی");

TEST(PersianOrder, LettersFollowTheAlphabet) {
    const QStringList letters = kAlphabet.split(u' ');
    ASSERT_EQ(letters.size(), 33);
    for (qsizetype i = 0; i + 1 < letters.size(); ++i) {
        EXPECT_LT(compare(letters[i], letters[i + 1]), 0)
            << letters[i].toStdString() << " before " << letters[i + 1].toStdString();
        // A longer word never jumps over the next letter.
        EXPECT_LT(compare(letters[i] + QStringLiteral("یی"), letters[i + 1]), 0);
    }
}

TEST(PersianOrder, NamesSortAlphabeticallyWhateverTheKeyboard) {
    // Each list is in the expected order; Arabic yeh and kaf are typed into some of them.
    const QList<QStringList> lists = {
        {QStringLiteral("بانک ملت"), QStringLiteral("پرداختني ها"), QStringLiteral("تنخواه"),
         QStringLiteral("چک ها"), QStringLiteral("حسابهاي دريافتني"), QStringLiteral("ژاله"),
         QStringLiteral("سرمايه"), QStringLiteral("کالا"), QStringLiteral("گروه"),
         QStringLiteral("يزد")},
        // Hamza forms of alef sort as alef; the non-joiner does not separate words.
        {QStringLiteral("آبادان"), QStringLiteral("آب‌انبار"), QStringLiteral("أحمد"),
         QStringLiteral("اراک"), QStringLiteral("إسلام"), QStringLiteral("اسناد")},
        {QStringLiteral("ك"), QStringLiteral("کا"), QStringLiteral("كب"), QStringLiteral("گ")},
        {QStringLiteral("مـحمد"), QStringLiteral("مَریم"), QStringLiteral("مهدی")},
    };
    for (const QStringList& expected : lists) {
        QStringList sorted = expected;
        std::reverse(sorted.begin(), sorted.end());
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const QString& a, const QString& b) { return compare(a, b) < 0; });
        EXPECT_EQ(sorted, expected) << sorted.join(u" | ").toStdString();
    }
}

TEST(PersianOrder, DigitsLatinAndMarksHaveTheirPlaces) {
    // Latin text first, then Persian letters.
    EXPECT_LT(compare(QStringLiteral("Zebra"), QStringLiteral("آب")), 0);
    EXPECT_LT(compare(QStringLiteral("zebra"), QStringLiteral("é")), 0);
    EXPECT_LT(compare(QStringLiteral("é"), QStringLiteral("آ")), 0);
    // Digits of every script sort together by value, before letters.
    EXPECT_LT(compare(QStringLiteral("۱۲"), QStringLiteral("2")), 0);
    EXPECT_LT(compare(QStringLiteral("12"), QStringLiteral("۱۲")), 0);  // alike; told apart after
    EXPECT_LT(compare(QStringLiteral("۹"), QStringLiteral("a")), 0);
    // Marks, the elongation and the zero-width non-joiner count only to tell alike words apart.
    EXPECT_GT(compare(QStringLiteral("مُحمد"), QStringLiteral("مثلا")), 0);
    EXPECT_NE(compare(QStringLiteral("میخواهم"), QStringLiteral("می‌خواهم")), 0);
    // Equality is unchanged.
    EXPECT_EQ(compare(QStringLiteral("  علي  "), QStringLiteral("علی")), 0);
    EXPECT_EQ(compare(QStringLiteral("Bank كرج"), QStringLiteral("bank کرج")), 0);
    EXPECT_NE(compare(QStringLiteral("آب"), QStringLiteral("اب")), 0);
}

// Random strings of the characters that make ordering hard: every pair compares antisymmetrically,
// equal exactly as before, and a sort by the collation is consistent over every pair (which a
// non-transitive order fails).
TEST(PersianOrder, IsAConsistentTotalOrderOverAwkwardText) {
    const std::vector<QByteArray> pieces = [] {
        std::vector<QByteArray> p;
        for (const char* s :
             {" ", "a", "A", "z", "0", "9", "-", ",", "۰", "٠", "۹", "٩",      "ي",      "ی",
              "ى", "ك", "ک", "ا", "آ", "أ", "إ", "ء", "ئ", "ؤ", "ـ", "\u200C", "\u200F", "َ",
              "ّ",  "ه", "ة", "ۀ", "چ", "ژ", "گ", "پ", "،", "٬", "é", "ڤ",      "😀"})
            p.emplace_back(s);
        return p;
    }();
    std::mt19937 random(20240611);
    std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> length(0, 5);
    std::vector<QByteArray> strings;
    for (int i = 0; i < 400; ++i) {
        QByteArray s;
        for (int n = length(random); n > 0; --n) s += pieces[pick(random)];
        strings.push_back(s);
    }
    for (const QByteArray& a : strings) {
        for (const QByteArray& b : strings) {
            const int ab = compare(a, b), ba = compare(b, a);
            ASSERT_EQ(ab<0, ba> 0) << a.toHex().constData() << " / " << b.toHex().constData();
            ASSERT_EQ(ab == 0, equalAsBefore(a, b))
                << a.toHex().constData() << " / " << b.toHex().constData();
        }
    }
    std::sort(strings.begin(), strings.end(),
              [](const QByteArray& a, const QByteArray& b) { return compare(a, b) < 0; });
    for (size_t i = 0; i < strings.size(); ++i) {
        for (size_t j = i + 1; j < strings.size(); ++j)
            ASSERT_LE(compare(strings[i], strings[j]), 0)
                << strings[i].toHex().constData() << " / " << strings[j].toHex().constData();
    }
}

}  // namespace
}  // namespace tr::text
