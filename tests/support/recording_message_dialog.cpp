#include "tests/support/recording_message_dialog.h"

namespace tr::test {

int RecordingMessageDialog::showModal() {
    int result = closeResult;
    if (!answers_.empty()) {
        result = answers_.front();
        answers_.pop_front();
    }
    shown_.append(Shown{memoText, captionText, kindCode, result});
    return result;
}

}  // namespace tr::test
