#pragma once
// The weights behind the TSQL collation's order: a primary weight that puts Persian letters in
// alphabetical order (0 for marks the first comparison ignores) and whether a character needs
// the tie-breaking second comparison (docs/decisions/persian-alphabetical-order.md).
#include <cstdint>

namespace tr::text {

struct CollationWeight {
    uint32_t primary;  // 0: ignored by the first comparison
    bool special;      // shares its primary weight with another character, or is ignored
};

// For a character already folded by foldForCompare.
CollationWeight collationWeight(char32_t folded);

}  // namespace tr::text
