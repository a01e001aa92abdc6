#include "common/text/tsql_collation.h"

#include <QString>

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

}  // namespace

int tsqlCompareUtf8(const char* a, int aLength, const char* b, int bLength) {
    const auto ea = reinterpret_cast<const unsigned char*>(a) + trimmedLength(a, aLength);
    const auto eb = reinterpret_cast<const unsigned char*>(b) + trimmedLength(b, bLength);
    auto pa = reinterpret_cast<const unsigned char*>(a) + leadingBlanks(a, aLength);
    auto pb = reinterpret_cast<const unsigned char*>(b) + leadingBlanks(b, bLength);
    if (pa > ea) pa = ea;
    if (pb > eb) pb = eb;
    while (pa < ea && pb < eb) {
        if (*pa == *pb && *pa < 0x80) {
            ++pa;
            ++pb;
            continue;
        }
        const char32_t ca = foldForCompare(decode(pa, ea));
        const char32_t cb = foldForCompare(decode(pb, eb));
        if (ca != cb) return ca < cb ? -1 : 1;
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
