#include "common/text/tsql_collation.h"

#include <QString>

#include "common/text/collation_weights.h"

namespace tr::text {

char32_t foldForCompare(char32_t c) {
    if (c >= U'A' && c <= U'Z') return c + 32;
    if (c == U'\u064A' || c == U'\u0649') return U'\u06CC';  // Arabic yeh, alef maksura -> Persian yeh
    if (c == U'\u0643') return U'\u06A9';                   // Arabic kaf -> Persian keheh
    return c;
}

namespace {

// Decodes one UTF-8 code point; malformed bytes stand for themselves so ordering stays total.
char32_t decode(const unsigned char*& p, const unsigned char* end) {
    const unsigned char c = *p++;
    if (c < 0x80) return c;
    int extra = (c >= 0xF0) ? 3 : (c >= 0xE0) ? 2 : (c >= 0xC0) ? 1 : 0;
    char32_t value = c & (0x3F >> extra);
    if (extra == 0 || end - p < extra) return 0xDC00 + c;
    for (int i = 0; i < extra; ++i) value = (value << 6) | (*p++ & 0x3F);
    return value;
}

int trimmedLength(const char* s, int n) {
    while (n > 0 && s[n - 1] == ' ') --n;
    return n;
}

int leadingBlanks(const char* s, int n) {
    int i = 0;
    while (i < n && s[i] == ' ') ++i;
    return i;
}

unsigned char asciiLower(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? c + 32 : c;
}

// The next primary weight of a string, 0 at its end; ignored marks are skipped. `special` is set
// when a character is met whose primary weight does not tell it apart. The Arabic block's two-byte
// characters are looked up straight from their bytes; its table already weighs the Arabic forms
// of yeh and kaf as the Persian ones.
inline uint32_t nextPrimary(const unsigned char*& p, const unsigned char* end, bool& special) {
    while (p < end) {
        const unsigned char lead = *p;
        if (lead < 0x80) {
            ++p;
            return 0x100 + asciiLower(lead);
        }
        CollationWeight w;
        if ((lead & 0xFC) == 0xD8 && end - p >= 2) {
            w = kArabicBlockWeights[((lead & 0x03) << 6) | (p[1] & 0x3F)];
            p += 2;
        } else {
            w = collationWeight(foldForCompare(decode(p, end)));
        }
        if (w.special) special = true;
        if (w.primary != 0) return w.primary;
    }
    return 0;
}

// Every character counts: the primary weight, then the folded character itself.
uint64_t nextFull(const unsigned char*& p, const unsigned char* end) {
    const char32_t c = foldForCompare(decode(p, end));
    return (uint64_t(collationWeight(c).primary) << 32) | c;
}

// Steps both strings over the characters they share byte for byte, comparing ASCII by its
// folded byte on the way. A shared character weighs the same in both, so skipping it changes
// neither comparison. Answers the ASCII difference met, or 0.
int skipAlike(const unsigned char*& pa, const unsigned char* ea, const unsigned char*& pb,
              const unsigned char* eb) {
    while (pa < ea && pb < eb) {
        const unsigned char ca = *pa, cb = *pb;
        if (ca < 0x80 && cb < 0x80) {
            if (ca != cb) {
                const unsigned char la = asciiLower(ca), lb = asciiLower(cb);
                if (la != lb) return la < lb ? -1 : 1;
            }
            ++pa;
            ++pb;
            continue;
        }
        if (ca != cb || ca < 0xC0) return 0;
        const long n = (ca >= 0xF0) ? 4 : (ca >= 0xE0) ? 3 : 2;
        if (ea - pa < n || eb - pb < n) return 0;
        for (long i = 1; i < n; ++i)
            if (pa[i] != pb[i]) return 0;
        pa += n;
        pb += n;
    }
    return 0;
}

}  // namespace

// Two comparisons: the first by primary weights with marks ignored and letter variants alike,
// the second, only when the first finds the strings alike and one of them holds such a
// character, by every character. Equal exactly when the folded texts are equal, so indexes and
// `=` agree with the order.
int tsqlCompareUtf8(const char* a, int aLength, const char* b, int bLength) {
    const auto ea = reinterpret_cast<const unsigned char*>(a) + trimmedLength(a, aLength);
    const auto eb = reinterpret_cast<const unsigned char*>(b) + trimmedLength(b, bLength);
    auto pa = reinterpret_cast<const unsigned char*>(a) + leadingBlanks(a, aLength);
    auto pb = reinterpret_cast<const unsigned char*>(b) + leadingBlanks(b, bLength);
    if (pa > ea) pa = ea;
    if (pb > eb) pb = eb;
    const auto startA = pa, startB = pb;
    bool specialA = false, specialB = false;
    for (;;) {
        if (const int ascii = skipAlike(pa, ea, pb, eb)) return ascii;
        const uint32_t wa = nextPrimary(pa, ea, specialA);
        const uint32_t wb = nextPrimary(pb, eb, specialB);
        if (wa != wb) return wa < wb ? -1 : 1;
        if (wa == 0) break;
    }
    if (!specialA && !specialB) return 0;
    pa = startA;
    pb = startB;
    for (;;) {
        // Case differences in ASCII made no difference to the first comparison either.
        if (const int ascii = skipAlike(pa, ea, pb, eb)) return ascii;
        if (pa == ea || pb == eb) break;
        const uint64_t ka = nextFull(pa, ea), kb = nextFull(pb, eb);
        if (ka != kb) return ka < kb ? -1 : 1;
    }
    if (pa < ea) return 1;
    if (pb < eb) return -1;
    return 0;
}

int tsqlCompare(QStringView a, QStringView b) {
    const QByteArray ua = a.toUtf8();
    const QByteArray ub = b.toUtf8();
    return tsqlCompareUtf8(ua.constData(), ua.size(), ub.constData(), ub.size());
}

static bool isNumber(const QVariant& v) {
    switch (v.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
        case QMetaType::Double:
        case QMetaType::Float:
        case QMetaType::Bool:
            return true;
        default:
            return false;
    }
}

int compareValues(const QVariant& a, const QVariant& b) {
    const bool na = a.isNull(), nb = b.isNull();
    if (na || nb) return na == nb ? 0 : (na ? -1 : 1);
    const bool da = isNumber(a), db = isNumber(b);
    if (da && db) {
        const double x = a.toDouble(), y = b.toDouble();
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    if (da != db) return da ? -1 : 1;
    return tsqlCompare(a.toString(), b.toString());
}

}  // namespace tr::text
