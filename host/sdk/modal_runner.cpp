#include "host/sdk/modal_runner.h"

#include <QDialog>

namespace tr::sdk {

namespace {

ModalRunner& defaultRunner() {
    static ModalRunner runner;
    return runner;
}

ModalRunner* installed = nullptr;

}  // namespace

ModalRunner::~ModalRunner() = default;

int ModalRunner::exec(QDialog& dialog) {
    return dialog.exec();
}

ModalRunner& ModalRunner::current() {
    return installed ? *installed : defaultRunner();
}

ModalRunner* ModalRunner::install(ModalRunner* runner) {
    ModalRunner* previous = installed;
    installed = runner;
    return previous;
}

}  // namespace tr::sdk
