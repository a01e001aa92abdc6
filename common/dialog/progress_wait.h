#pragma once
// Shows a wait on another user (see tr::db::WaitObserver) in the host's progress window once it
// has lasted past a short bound, with the seconds waited; the window's stop button ends the wait.
#include "common/db/connection.h"
#include "common/dialog/host_windows.h"

namespace tr::dialog {

class ProgressWait final : public tr::db::WaitObserver {
public:
    // A wait shorter than this is not shown: most are over before the user would notice.
    static constexpr int kShownAfterMs = 300;

    explicit ProgressWait(ProgressWindow& window) : window_(window) {}
    bool waiting(int waitedMs) override;
    void waitEnded() override;

    static QString text(int waitedMs);

private:
    ProgressWindow& window_;
    bool shown_ = false;
};

}  // namespace tr::dialog
