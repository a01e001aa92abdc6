#pragma once
// The cheque screens' fault rounds: an action run again and again with its commit, then its 1st,
// 2nd, ... statement failing, until it runs through; after every failure what `image` shows (the
// book, the work tables, the grids) must be as it was before the action.
#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "common/db/database_error.h"
#include "tests/support/failing_connection.h"

namespace tr::cheques::testing {

// The first line of `after` that `before` does not have, or the reverse.
inline QString firstDifference(const QString& before, const QString& after) {
    const QStringList a = before.split(QLatin1Char('\n')), b = after.split(QLatin1Char('\n'));
    for (const QString& line : b)
        if (!a.contains(line)) return QStringLiteral("added ") + line;
    for (const QString& line : a)
        if (!b.contains(line)) return QStringLiteral("lost ") + line;
    return {};
}

// Answers how many rounds failed; the last round runs through and must succeed.
inline int failInTurn(tr::test::FailingConnection& failing, const std::function<bool()>& action,
                      const std::function<QString()>& image, const std::function<QString()>& lastMessage) {
    const QString before = image();
    int failures = 0;
    // One round: nothing when the armed failure fired (and was checked), else whether it succeeded.
    const auto round = [&](const std::string& what) -> std::optional<bool> {
        bool done = false;
        try {
            done = action();
        } catch (const tr::db::DatabaseError&) {
            done = false;
        }
        const bool fired = failing.fired();
        failing.disarm();
        if (!fired) return done;
        ++failures;
        EXPECT_FALSE(done) << what;
        const QString after = image();
        EXPECT_EQ(after, before) << "after " << what << " failed: " << firstDifference(before, after).toStdString();
        return std::nullopt;
    };
    failing.failCommit(1);
    if (const auto ran = round("the commit")) {
        ADD_FAILURE() << "the action ran through without committing: " << lastMessage().toStdString();
        return failures;
    }
    for (int n = 1; n < 200; ++n) {
        failing.failStatement(n);
        if (const auto ran = round("statement " + std::to_string(n))) {
            EXPECT_TRUE(*ran) << lastMessage().toStdString();
            return failures;
        }
    }
    ADD_FAILURE() << "the action still failed after 200 statements";
    return failures;
}

}  // namespace tr::cheques::testing
