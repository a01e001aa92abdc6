#pragma once
// The TSQL collation's order before Persian alphabetical order, kept as the benchmarks' yardstick:
// blanks at both ends ignored, case, yeh and kaf folded, then code point order.
namespace tr::bench {

int compareBefore(const char* a, int aLength, const char* b, int bLength);

}  // namespace tr::bench
