#pragma once
// An amount in rials spelled out in Persian as on a cheque: largest group first, "مميز" and the
// fraction read with its place word for decimals, "ريال" at the end (docs/decisions/amount-in-words.md).
// Text that is not a number reads as zero; an amount past 999 تريليون gives an empty text.
#include <QString>

namespace tr::persian {

// Accepts "-", "," grouping, "." or "/" (and the Arabic decimal separator) and Persian digits.
QString amountInWords(const QString& amountText);
QString amountInWords(double amount);

}  // namespace tr::persian
