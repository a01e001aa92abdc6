#pragma once
// The TSQL collation shared by the embedded engine and in-memory sorting: leading and trailing
// blanks are ignored (codes are always compared trimmed), ASCII letters compare case-insensitively,
// and Arabic and Persian yeh (ي/ی) and kaf (ك/ک) are equal, so a keyboard layout hides no record.
// Persian text sorts in alphabetical order (docs/decisions/persian-alphabetical-order.md).
#include <QStringView>
#include <QVariant>

namespace tr::text {

char32_t foldForCompare(char32_t c);
int tsqlCompare(QStringView a, QStringView b);
int tsqlCompareUtf8(const char* a, int aLength, const char* b, int bLength);
// Books whose indexes were built under an earlier order of this collation are reindexed once
// when opened; raise this whenever the order changes.
inline constexpr int kTsqlCollationVersion = 1;
// Nulls first, numbers numerically, numbers before text, text by the collation above.
int compareValues(const QVariant& a, const QVariant& b);

}  // namespace tr::text
