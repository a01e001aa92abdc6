#include "common/persian/amount_words.h"

#include <QLocale>
#include <QStringList>
#include <array>
#include <cmath>

namespace tr::persian {

namespace {

const std::array<QString, 10> kUnits = {
    QString(), QStringLiteral("يك"), QStringLiteral("دو"), QStringLiteral("سه"),
    QStringLiteral("چهار"), QStringLiteral("پنج"), QStringLiteral("شش"), QStringLiteral("هفت"),
    QStringLiteral("هشت"), QStringLiteral("نه")};
const std::array<QString, 10> kTeens = {
    QString(), QStringLiteral("يازده"), QStringLiteral("دوازده"), QStringLiteral("سيزده"),
    QStringLiteral("چهارده"), QStringLiteral("پانزده"), QStringLiteral("شانزده"),
    QStringLiteral("هفده"), QStringLiteral("هجده"), QStringLiteral("نوزده")};
const std::array<QString, 10> kTens = {
    QString(), QStringLiteral("ده"), QStringLiteral("بيست"), QStringLiteral("سي"),
    QStringLiteral("چهل"), QStringLiteral("پنجاه"), QStringLiteral("شصت"), QStringLiteral("هفتاد"),
    QStringLiteral("هشتاد"), QStringLiteral("نود")};
const std::array<QString, 10> kHundreds = {
    QString(), QStringLiteral("يكصد"), QStringLiteral("دويست"), QStringLiteral("سيصد"),
    QStringLiteral("چهارصد"), QStringLiteral("پانصد"), QStringLiteral("ششصد"),
    QStringLiteral("هفتصد"), QStringLiteral("هشتصد"), QStringLiteral("نهصد")};
// Group k (counted from the right, from 0) takes the k-th word: each is a thousand times the last.
const std::array<QString, 6> kScales = {
    QString(), QStringLiteral("هزار"), QStringLiteral("ميليون"), QStringLiteral("ميليارد"),
    QStringLiteral("بيليون"), QStringLiteral("تريليون")};

const QString kZero = QStringLiteral("صفر ");
const QString kMinus = QStringLiteral("منفي ");
const QString kAnd = QStringLiteral(" و");
const QString kRial = QStringLiteral("ريال");
const QString kPoint = QStringLiteral("مميز");
// Place words of the fraction: tenths, hundredths, then "هزارم" and "ميليونم" built on the scale.
const std::array<QString, 7> kFractionPlaces = {
    QString(), QStringLiteral("دهم"), QStringLiteral("صدم"), QStringLiteral("هزارم"),
    QStringLiteral("ده هزارم"), QStringLiteral("صد هزارم"), QStringLiteral("ميليونم")};
constexpr int kMaxFractionDigits = 6;
constexpr int kMaxIntegerDigits = 3 * static_cast<int>(kScales.size());

QString joined(const QStringList& parts) { return parts.join(kAnd + QLatin1Char(' ')); }

// 1..999 -> hundreds, then tens (or 11-19), then units.
QString groupInWords(int value) {
    QStringList parts;
    if (value / 100 > 0) parts << kHundreds[value / 100];
    const int belowHundred = value % 100;
    if (belowHundred > 10 && belowHundred < 20) {
        parts << kTeens[belowHundred - 10];
    } else {
        if (belowHundred / 10 > 0) parts << kTens[belowHundred / 10];
        if (belowHundred % 10 > 0) parts << kUnits[belowHundred % 10];
    }
    return joined(parts);
}

// A run of decimal digits without leading zeros; empty for zero.
QString digitsInWords(const QString& digits) {
    QStringList parts;
    const int groups = (digits.size() + 2) / 3;
    for (int g = groups - 1; g >= 0; --g) {
        const int end = digits.size() - 3 * g;
        const int value = digits.mid(std::max(0, end - 3), end - std::max(0, end - 3)).toInt();
        if (value == 0) continue;
        QString part = groupInWords(value);
        if (g > 0) part += QLatin1Char(' ') + kScales[g];
        parts << part;
    }
    return joined(parts);
}

struct ParsedAmount {
    bool valid = false;
    bool negative = false;
    QString integerDigits;   // without leading zeros
    QString fractionDigits;  // without trailing zeros, at most kMaxFractionDigits
};

ParsedAmount parse(const QString& text) {
    ParsedAmount result;
    QString s = text.trimmed();
    if (s.startsWith(QLatin1Char('-')) || s.startsWith(QLatin1Char('+'))) {
        result.negative = s.front() == QLatin1Char('-');
        s.remove(0, 1);
    }
    QString integer, fraction;
    bool inFraction = false;
    for (const QChar c : s) {
        const char16_t u = c.unicode();
        int digit = -1;
        if (u >= u'0' && u <= u'9') digit = u - u'0';
        else if (u >= 0x06F0 && u <= 0x06F9) digit = u - 0x06F0;  // Persian digits
        else if (u >= 0x0660 && u <= 0x0669) digit = u - 0x0660;  // Arabic-Indic digits
        if (digit >= 0) {
            (inFraction ? fraction : integer) += QChar(u'0' + digit);
        } else if ((u == u'.' || u == u'/' || u == 0x066B) && !inFraction) {
            inFraction = true;
        } else if ((u == u',' || u == 0x066C) && !inFraction) {
            continue;  // digit grouping
        } else {
            return {};
        }
    }
    if (integer.isEmpty() && fraction.isEmpty()) return {};
    while (integer.startsWith(QLatin1Char('0'))) integer.remove(0, 1);
    fraction.truncate(kMaxFractionDigits);
    while (fraction.endsWith(QLatin1Char('0'))) fraction.chop(1);
    result.valid = true;
    result.integerDigits = integer;
    result.fractionDigits = fraction;
    return result;
}

}  // namespace

QString amountInWords(const QString& amountText) {
    const ParsedAmount amount = parse(amountText);
    if (!amount.valid) return kZero + kRial;
    if (amount.integerDigits.size() > kMaxIntegerDigits) return {};
    if (amount.integerDigits.isEmpty() && amount.fractionDigits.isEmpty()) return kZero + kRial;

    QString words = amount.negative ? kMinus : QString();
    words += amount.integerDigits.isEmpty() ? kZero : digitsInWords(amount.integerDigits) + QLatin1Char(' ');
    if (!amount.fractionDigits.isEmpty()) {
        QString fraction = amount.fractionDigits;
        const int places = fraction.size();
        while (fraction.startsWith(QLatin1Char('0'))) fraction.remove(0, 1);
        words += kPoint + QLatin1Char(' ') + digitsInWords(fraction) + QLatin1Char(' ') +
                 kFractionPlaces[places] + QLatin1Char(' ');
    }
    return words + kRial;
}

QString amountInWords(double amount) {
    if (!std::isfinite(amount)) return {};
    // The shortest text that reads back as the same double avoids binary noise such as
    // 0.1 -> "0.1000000000000000055"; the fraction is cut to the digits the reading supports.
    QString text = QString::number(amount, 'f', QLocale::FloatingPointShortest);
    const int point = text.indexOf(QLatin1Char('.'));
    if (point >= 0 && text.size() - point - 1 > kMaxFractionDigits) {
        text = QString::number(amount, 'f', kMaxFractionDigits);
    }
    return amountInWords(text);
}

}  // namespace tr::persian
