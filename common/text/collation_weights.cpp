#include "common/text/collation_weights.h"

namespace tr::text {

namespace {

// Between the characters before the block (up to 0x15FF) and those after it (from 0x10700):
// the Persian letters, then the rest of the block.
constexpr uint32_t kAscii = 0x100;
constexpr uint32_t kLetters = 0x2000;
constexpr uint32_t kArabicOther = 0x3000;

// The Persian alphabet in order; each later entry of a row sorts as the first at the first
// comparison and is told apart only by the second.
constexpr const char16_t* kAlphabet[] = {
    u"\u0622",                          // آ
    u"\u0627\u0623\u0625\u0671\u0621",  // ا أ إ ٱ ء
    u"\u0628",                          // ب
    u"\u067E",                          // پ
    u"\u062A",                          // ت
    u"\u062B",                          // ث
    u"\u062C",                          // ج
    u"\u0686",                          // چ
    u"\u062D",                          // ح
    u"\u062E",                          // خ
    u"\u062F",                          // د
    u"\u0630",                          // ذ
    u"\u0631",                          // ر
    u"\u0632",                          // ز
    u"\u0698",                          // ژ
    u"\u0633",                          // س
    u"\u0634",                          // ش
    u"\u0635",                          // ص
    u"\u0636",                          // ض
    u"\u0637",                          // ط
    u"\u0638",                          // ظ
    u"\u0639",                          // ع
    u"\u063A",                          // غ
    u"\u0641",                          // ف
    u"\u0642",                          // ق
    u"\u06A9",                          // ک (ك folds to it)
    u"\u06AF",                          // گ
    u"\u0644",                          // ل
    u"\u0645",                          // م
    u"\u0646",                          // ن
    u"\u0648\u0624",                    // و ؤ
    u"\u0647\u06C0\u0629\u06BE",        // ه ۀ ة ھ
    u"\u06CC\u0626",                    // ی ئ (ي and ى fold to ی)
};

// Arabic punctuation sorts with its Latin counterpart.
constexpr struct {
    char16_t arabic;
    char latin;
} kPunctuation[] = {{u'\u060C', ','}, {u'\u066C', ','}, {u'\u061B', ';'}, {u'\u061F', '?'},
                    {u'\u066A', '%'}, {u'\u066B', '.'}, {u'\u06D4', '.'}};

constexpr bool ignorable(char32_t c) {
    return (c >= 0x064B && c <= 0x065F) || c == 0x0670 || c == 0x0640 || c == 0x061C ||
           (c >= 0x06D6 && c <= 0x06ED);
}

using ArabicTable = std::array<CollationWeight, 256>;

constexpr ArabicTable buildArabicTable() {
    ArabicTable table{};
    for (char32_t c = 0x0600; c <= 0x06FF; ++c)
        table[c - 0x0600] =
            ignorable(c) ? CollationWeight{0, true} : CollationWeight{kArabicOther + c, false};
    for (uint32_t rank = 0; rank < std::size(kAlphabet); ++rank) {
        for (const char16_t* p = kAlphabet[rank]; *p; ++p)
            table[*p - 0x0600] = {kLetters + rank + 1, p != kAlphabet[rank]};
    }
    // Arabic-Indic and Persian digits sort with the Latin digit of the same value.
    for (char32_t d = 0; d < 10; ++d) {
        table[0x0660 + d - 0x0600] = {kAscii + '0' + d, true};
        table[0x06F0 + d - 0x0600] = {kAscii + '0' + d, true};
    }
    for (const auto& p : kPunctuation)
        table[p.arabic - 0x0600] = {kAscii + static_cast<uint32_t>(p.latin), true};
    // The Arabic forms fold to the Persian ones before they are weighed; weighing them alike
    // here lets a comparison read the table without folding first.
    table[0x064A - 0x0600] = table[0x06CC - 0x0600];
    table[0x0649 - 0x0600] = table[0x06CC - 0x0600];
    table[0x0643 - 0x0600] = table[0x06A9 - 0x0600];
    return table;
}

}  // namespace

// Built at compile time, so it is ready before any comparison.
constinit const std::array<CollationWeight, 256> kArabicBlockWeights = buildArabicTable();

}  // namespace tr::text
