#include "bench/collation_before.h"

#include "common/text/tsql_collation.h"

namespace tr::bench {

namespace {

char32_t decode(const unsigned char*& p, const unsigned char* end) {
    const unsigned char c = *p++;
    if (c < 0x80) return c;
    const int extra = (c >= 0xF0) ? 3 : (c >= 0xE0) ? 2 : (c >= 0xC0) ? 1 : 0;
    char32_t value = c & (0x3F >> extra);
    if (extra == 0 || end - p < extra) return 0xDC00 + c;
    for (int i = 0; i < extra; ++i) value = (value << 6) | (*p++ & 0x3F);
    return value;
}

}  // namespace

int compareBefore(const char* a, int an, const char* b, int bn) {
    while (an > 0 && a[an - 1] == ' ') --an;
    while (bn > 0 && b[bn - 1] == ' ') --bn;
    int i = 0, j = 0;
    while (i < an && a[i] == ' ') ++i;
    while (j < bn && b[j] == ' ') ++j;
    auto pa = reinterpret_cast<const unsigned char*>(a) + i,
         ea = reinterpret_cast<const unsigned char*>(a) + an;
    auto pb = reinterpret_cast<const unsigned char*>(b) + j,
         eb = reinterpret_cast<const unsigned char*>(b) + bn;
    while (pa < ea && pb < eb) {
        if (*pa == *pb && *pa < 0x80) {
            ++pa;
            ++pb;
            continue;
        }
        const char32_t ca = tr::text::foldForCompare(decode(pa, ea));
        const char32_t cb = tr::text::foldForCompare(decode(pb, eb));
        if (ca != cb) return ca < cb ? -1 : 1;
    }
    return pa < ea ? 1 : (pb < eb ? -1 : 0);
}

}  // namespace tr::bench
