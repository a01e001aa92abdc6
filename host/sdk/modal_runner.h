#pragma once
// Every modal show of the SDK's windows goes through ModalRunner::current().exec(dialog), so a
// test host can install its own runner and answer without a display. One runner per process.
#include "host/sdk/sdk_export.h"

class QDialog;

namespace tr::sdk {

class TR_SDK_EXPORT ModalRunner {
  public:
    virtual ~ModalRunner();
    // Runs the dialog modally and answers its result; the default is QDialog::exec().
    virtual int exec(QDialog& dialog);

    static ModalRunner& current();
    // Makes `runner` the process's runner (nullptr: the default one); answers the previous one.
    static ModalRunner* install(ModalRunner* runner);
};

}  // namespace tr::sdk
