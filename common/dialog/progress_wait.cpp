#include "common/dialog/progress_wait.h"

namespace tr::dialog {

QString ProgressWait::text(int waitedMs) {
    return QStringLiteral("در انتظار پايان ثبت كاربر ديگر ... %1 ثانيه").arg(waitedMs / 1000);
}

bool ProgressWait::waiting(int waitedMs) {
    if (waitedMs < kShownAfterMs) return true;
    if (!shown_) {
        window_.showState(text(waitedMs));
        shown_ = true;
    } else {
        window_.setStateText(text(waitedMs));
    }
    return !window_.stopRequested();
}

void ProgressWait::waitEnded() {
    if (!shown_) return;
    window_.closeState();
    shown_ = false;
}

}  // namespace tr::dialog
