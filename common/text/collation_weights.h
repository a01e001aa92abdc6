#pragma once
// The weights behind the TSQL collation's order: a primary weight that puts Persian letters in
// alphabetical order (0 for marks the first comparison ignores) and whether a character needs
// the tie-breaking second comparison (docs/decisions/persian-alphabetical-order.md).
#include <array>
#include <cstdint>

namespace tr::text {

struct CollationWeight {
    uint32_t primary;  // 0: ignored by the first comparison
    bool special;      // shares its primary weight with another character, or is ignored
};

// The Arabic block, U+0600 to U+06FF, looked up rather than computed.
extern const std::array<CollationWeight, 256> kArabicBlockWeights;

// For a character folded by foldForCompare (the Arabic block's table weighs the unfolded yeh
// and kaf forms as the folded ones, so it may be read without folding). ASCII first, other scripts
// before the Arabic block next, the block's own weights, then everything else by code point.
inline CollationWeight collationWeight(char32_t c) {
    if (c < 0x80) return {0x100 + c, false};
    if (c < 0x0600) return {0x1000 + c, false};
    if (c <= 0x06FF) return kArabicBlockWeights[c - 0x0600];
    // Joiners, direction marks and the byte-order mark are invisible in a name.
    if ((c >= 0x200C && c <= 0x200F) || c == 0xFEFF) return {0, true};
    return {0x10000 + c, false};
}

}  // namespace tr::text
