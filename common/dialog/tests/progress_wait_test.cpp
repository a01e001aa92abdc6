// The status window over a wait on another user: nothing for a short wait, then the window with
// the seconds waited, the stop button ending the wait, and the window closed only if it was shown.
#include "common/dialog/progress_wait.h"

#include <gtest/gtest.h>

namespace tr::dialog {
namespace {

struct Window : ProgressWindow {
    QStringList calls;
    bool stop = false;
    void showState(const QString& text) override { calls << QStringLiteral("show ") + text; }
    void setStateText(const QString& text) override { calls << QStringLiteral("text ") + text; }
    bool stopRequested() override {
        calls << QStringLiteral("poll");
        return stop;
    }
    void closeState() override { calls << QStringLiteral("close"); }
};

TEST(ProgressWait, AShortWaitShowsNothingALongOneCountsItsSecondsUntilStopped) {
    Window window;
    ProgressWait wait(window);
    EXPECT_TRUE(wait.waiting(0));
    EXPECT_TRUE(wait.waiting(ProgressWait::kShownAfterMs - 1));
    wait.waitEnded();
    EXPECT_TRUE(window.calls.isEmpty()) << window.calls.join(QLatin1Char('|')).toStdString();

    EXPECT_TRUE(wait.waiting(ProgressWait::kShownAfterMs));
    EXPECT_TRUE(wait.waiting(2400));
    window.stop = true;
    EXPECT_FALSE(wait.waiting(2500));
    wait.waitEnded();
    const QStringList expected = {QStringLiteral("show ") + ProgressWait::text(ProgressWait::kShownAfterMs),
                                  QStringLiteral("poll"),
                                  QStringLiteral("text ") + ProgressWait::text(2400),
                                  QStringLiteral("poll"),
                                  QStringLiteral("text ") + ProgressWait::text(2500),
                                  QStringLiteral("poll"),
                                  QStringLiteral("close")};
    EXPECT_EQ(window.calls, expected);
    EXPECT_TRUE(ProgressWait::text(2400).contains(QStringLiteral(" 2 ثانيه")));

    // The next wait starts afresh: shown again rather than updated.
    window.calls.clear();
    window.stop = false;
    EXPECT_TRUE(wait.waiting(1000));
    EXPECT_TRUE(window.calls.front().startsWith(QStringLiteral("show ")));
}

}  // namespace
}  // namespace tr::dialog
