#pragma once
// How deep and how long the engine lets a statement grow. Well inside a thread's stack and inside
// SQLite's own limits (expression depth 1000, 500 terms of a compound select), so hostile text is
// refused with the server's message instead of overflowing the stack or reaching SQLite.
#include <QString>

namespace tr::engine {

// Parentheses, subqueries, function calls, Case, Not, If and Begin blocks inside one another.
constexpr int kMaxNesting = 128;
// An expression's height: the nesting above, plus one per term of a chain `a + b + c ...`.
constexpr int kMaxExpressionDepth = 256;
// Selects joined by Union [All].
constexpr int kMaxUnionTerms = 128;
// Exec('...') texts and procedures running statements inside one another.
constexpr int kMaxCallDepth = 32;
// Longer batch texts are not kept with their translations: a bulk Insert of many rows never comes
// again alike, and keeping thousands of them with their syntax trees would take gigabytes.
constexpr int kMaxCachedTextLength = 8000;
// How long a statement waits for another connection's write lock before it is refused.
constexpr int kBusyTimeoutMs = 30000;

inline QString nestedTooDeeplyMessage() {
    return QStringLiteral(
        "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up "
        "into smaller queries.");
}

}  // namespace tr::engine
