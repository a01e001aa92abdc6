#pragma once
// The fuzzer's bytes as the text a user or a statement would hold (invalid UTF-8 becomes U+FFFD).
#include <QString>
#include <cstddef>
#include <cstdint>

inline QString fuzzText(const uint8_t* data, size_t size) {
    return QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}
