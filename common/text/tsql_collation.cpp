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

// The next primary weight of a string, 0 at its end; ignored marks are skipped. `special` is set
// when a character is met whose primary weight does not tell it apart.
uint32_t nextPrimary(const unsigned char*& p, const unsigned char* end, bool& special) {
    while (p < end) {
        const CollationWeight w = collationWeight(foldForCompare(decode(p, end)));
        special = special || w.special;
        if (w.primary != 0) return w.primary;
    }
    return 0;
}

// Every character counts: the primary weight, then the folded character itself.
uint64_t nextFull(const unsigned char*& p, const unsigned char* end) {
    const char32_t c = foldForCompare(decode(p, end));
    return (uint64_t(collationWeight(c).primary) << 32) | c;
}

unsigned char asciiLower(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? c + 32 : c;
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
    bool special = false;
    for (;;) {
        // ASCII weighs in its own (case-folded) order.
        while (pa < ea && pb < eb && *pa < 0x80 && *pb < 0x80) {
            if (*pa != *pb) {
                const unsigned char la = asciiLower(*pa), lb = asciiLower(*pb);
                if (la != lb) return la < lb ? -1 : 1;
            }
            ++pa;
            ++pb;
        }
        const uint32_t wa = nextPrimary(pa, ea, special);
        const uint32_t wb = nextPrimary(pb, eb, special);
        if (wa != wb) return wa < wb ? -1 : 1;
        if (wa == 0) break;
    }
    if (!special) return 0;
    pa = startA;
    pb = startB;
    while (pa < ea && pb < eb) {
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
