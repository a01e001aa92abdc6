#include <gtest/gtest.h>

#include <QHash>
#include <QStringList>
#include <limits>
#include <random>

#include "common/persian/amount_words.h"

using tr::persian::amountInWords;

namespace {

struct WordsCase {
    const char* amount;
    const char* words;
};

const WordsCase kCases[] = {
    {"0", "صفر ريال"},
    {"1", "يك ريال"},
    {"10", "ده ريال"},
    {"11", "يازده ريال"},
    {"19", "نوزده ريال"},
    {"20", "بيست ريال"},
    {"21", "بيست و يك ريال"},
    {"99", "نود و نه ريال"},
    {"100", "يكصد ريال"},
    {"101", "يكصد و يك ريال"},
    {"110", "يكصد و ده ريال"},
    {"115", "يكصد و پانزده ريال"},
    {"999", "نهصد و نود و نه ريال"},
    {"1000", "يك هزار ريال"},
    {"1001", "يك هزار و يك ريال"},
    {"12345", "دوازده هزار و سيصد و چهل و پنج ريال"},
    {"100000", "يكصد هزار ريال"},
    {"999999", "نهصد و نود و نه هزار و نهصد و نود و نه ريال"},
    {"1000000", "يك ميليون ريال"},
    {"1000001", "يك ميليون و يك ريال"},
    {"2500000", "دو ميليون و پانصد هزار ريال"},
    {"1000000000", "يك ميليارد ريال"},
    {"1000000000000", "يك بيليون ريال"},
    {"999999999999999",
     "نهصد و نود و نه بيليون و نهصد و نود و نه ميليارد و نهصد و نود و نه ميليون و نهصد و نود و نه "
     "هزار و نهصد و نود و نه ريال"},
    {"1000000000000000", "يك تريليون ريال"},
    {"1000000000000000000", ""},  // past the largest scale word
    {"-1500", "منفي يك هزار و پانصد ريال"},
    {"-0", "صفر ريال"},
    {"1,234,567", "يك ميليون و دويست و سي و چهار هزار و پانصد و شصت و هفت ريال"},
    {"۱۲۳", "يكصد و بيست و سه ريال"},
    {"0012", "دوازده ريال"},
    {"12.5", "دوازده مميز پنج دهم ريال"},
    {"12/5", "دوازده مميز پنج دهم ريال"},
    {"0.25", "صفر مميز بيست و پنج صدم ريال"},
    {".25", "صفر مميز بيست و پنج صدم ريال"},
    {"3.05", "سه مميز پنج صدم ريال"},
    {"3.50", "سه مميز پنج دهم ريال"},
    {"7.000", "هفت ريال"},
    {"1.125", "يك مميز يكصد و بيست و پنج هزارم ريال"},
    {"1.1234567", "يك مميز يكصد و بيست و سه هزار و چهارصد و پنجاه و شش ميليونم ريال"},
    {"-0.5", "منفي صفر مميز پنج دهم ريال"},
    {"", "صفر ريال"},
    {"abc", "صفر ريال"},
    {"1.2.3", "صفر ريال"},
    {"12a", "صفر ريال"},
};

class AmountWords : public ::testing::TestWithParam<WordsCase> {};

TEST_P(AmountWords, ReadsAsOnACheque) {
    const WordsCase& c = GetParam();
    EXPECT_EQ(amountInWords(QString::fromUtf8(c.amount)), QString::fromUtf8(c.words)) << c.amount;
}

INSTANTIATE_TEST_SUITE_P(Table, AmountWords, ::testing::ValuesIn(kCases));

// Reads the words back into a number, so composition faults show up over many amounts.
qint64 wordsToNumber(QString words) {
    static const QHash<QString, qint64> values = [] {
        QHash<QString, qint64> v;
        const QStringList units = QString::fromUtf8("يك دو سه چهار پنج شش هفت هشت نه").split(' ');
        const QStringList teens =
            QString::fromUtf8("يازده دوازده سيزده چهارده پانزده شانزده هفده هجده نوزده").split(' ');
        const QStringList tens = QString::fromUtf8("ده بيست سي چهل پنجاه شصت هفتاد هشتاد نود").split(' ');
        const QStringList hundreds =
            QString::fromUtf8("يكصد دويست سيصد چهارصد پانصد ششصد هفتصد هشتصد نهصد").split(' ');
        for (int i = 0; i < 9; ++i) {
            v[units[i]] = i + 1;
            v[teens[i]] = i + 11;
            v[tens[i]] = (i + 1) * 10;
            v[hundreds[i]] = (i + 1) * 100;
        }
        return v;
    }();
    static const QHash<QString, qint64> scales = {
        {QString::fromUtf8("هزار"), 1000LL},
        {QString::fromUtf8("ميليون"), 1000000LL},
        {QString::fromUtf8("ميليارد"), 1000000000LL},
        {QString::fromUtf8("بيليون"), 1000000000000LL},
        {QString::fromUtf8("تريليون"), 1000000000000000LL},
    };
    EXPECT_TRUE(words.endsWith(QString::fromUtf8(" ريال"))) << words.toStdString();
    words.chop(5);
    qint64 total = 0, group = 0;
    bool expectAnd = false;
    for (const QString& word : words.split(' ')) {
        if (word == QString::fromUtf8("و")) {
            EXPECT_TRUE(expectAnd) << words.toStdString();
            expectAnd = false;
        } else if (scales.contains(word)) {
            EXPECT_GT(group, 0) << words.toStdString();
            total += group * scales[word];
            group = 0;
        } else {
            EXPECT_TRUE(values.contains(word)) << word.toStdString();
            EXPECT_FALSE(expectAnd) << "missing \"و\" in " << words.toStdString();
            group += values[word];
            expectAnd = true;
        }
    }
    return total + group;
}

}  // namespace

TEST(AmountWordsRoundTrip, EveryAmountBelowTwoThousandAndRandomOnesUpToTheLimit) {
    for (qint64 n = 1; n < 2000; ++n) {
        ASSERT_EQ(wordsToNumber(amountInWords(QString::number(n))), n) << n;
    }
    std::mt19937_64 random(1403);
    for (int i = 0; i < 20000; ++i) {
        // Spread over every magnitude, with zero groups in the middle now and then.
        const int digits = 1 + static_cast<int>(random() % 15);
        qint64 n = static_cast<qint64>(random() % 1000000000000000ULL);
        for (int d = 15; d > digits; --d) n /= 10;
        if (i % 3 == 0) n -= n / 1000 % 1000 * 1000;
        if (n == 0) continue;
        ASSERT_EQ(wordsToNumber(amountInWords(QString::number(n))), n) << n;
        ASSERT_EQ(amountInWords(QString::number(-n)),
                  QString::fromUtf8("منفي ") + amountInWords(QString::number(n)));
    }
}

TEST(AmountWordsFromNumber, UsesTheShortestDecimalText) {
    EXPECT_EQ(amountInWords(0.0), QString::fromUtf8("صفر ريال"));
    EXPECT_EQ(amountInWords(1500000.0), QString::fromUtf8("يك ميليون و پانصد هزار ريال"));
    EXPECT_EQ(amountInWords(-2.5), QString::fromUtf8("منفي دو مميز پنج دهم ريال"));
    EXPECT_EQ(amountInWords(0.1), QString::fromUtf8("صفر مميز يك دهم ريال"));
    EXPECT_EQ(amountInWords(1.0 / 3.0),
              QString::fromUtf8("صفر مميز سيصد و سي و سه هزار و سيصد و سي و سه ميليونم ريال"));
    EXPECT_EQ(amountInWords(999999999999999.0), amountInWords(QStringLiteral("999999999999999")));
    EXPECT_EQ(amountInWords(1e20), QString());
    EXPECT_EQ(amountInWords(std::numeric_limits<double>::quiet_NaN()), QString());
}

TEST(AmountWordsFromNumber, WritesArabicYehAndKafOnly) {
    const QString words = amountInWords(QStringLiteral("-987654321012345.5"));
    EXPECT_FALSE(words.contains(QChar(0x06CC)));
    EXPECT_FALSE(words.contains(QChar(0x06A9)));
}
