#pragma once
// Amounts as users type them and as screens and prints show them: one reading (Latin, Persian and
// Arabic-Indic digits, grouping, one decimal point; anything else refused with its reason), one
// display format ("###,##0.###") and one rounding (docs/decisions/amount-reading-and-format.md).
#include <QString>
#include <QStringView>

namespace tr::persian {

enum class AmountProblem {
    None,
    Empty,            // nothing typed where an amount is required
    NotANumber,       // a character that is neither a digit, a separator nor a leading minus
    Grouping,         // separators not between groups of three digits
    TwoPoints,        // more than one decimal point
    Negative,         // a minus where the field takes no negative amount
    TooManyDecimals,  // more decimals than the field keeps
    TooLarge,         // more digits than a double holds exactly
};

struct AmountRules {
    bool required = false;  // empty text is refused instead of reading as "no amount"
    bool negativeAllowed = false;
    int decimals = 3;  // the display keeps three; currency dialogs keep two
};

struct AmountReading {
    AmountProblem problem = AmountProblem::None;
    double value = 0;    // 0 for empty text and for every refusal
    bool empty = false;  // the text held no amount at all (blanks only)
    bool ok() const { return problem == AmountProblem::None; }
};

AmountReading readAmount(QStringView text, const AmountRules& rules = {});
// The message a screen shows (kind kAmountMessageKind) when `text` was refused as `reading`.
QString amountRefusal(const AmountReading& reading, QStringView text,
                      const AmountRules& rules = {});
inline const QString kAmountMessageKind = QStringLiteral("1ER");

// To `decimals` places, ties to even: the one rounding of amounts, rates and rial equivalents.
double roundAmount(double value, int decimals = 2);

// "12,500,000", "1,250.5", "-3": grouped by thousands, at most `decimals` decimals, no trailing
// zeros; an amount that is not finite shows as empty text.
QString formatAmount(double value, int decimals = 3);
// The same without grouping and empty for zero: the text an amount edit box starts from.
QString amountEditText(double value, int decimals = 3);
// As printed documents show it: Persian digits and the Persian decimal mark "/".
QString printAmount(double value);
// Latin digits turned into Persian ones; other characters kept.
QString persianDigits(const QString& text);

}  // namespace tr::persian
