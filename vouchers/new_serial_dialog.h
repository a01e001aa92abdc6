#pragma once
// The logic of the new-serial dialog ("شماره سريال جديد"): it proposes the kind's next saved
// serial (holds are not consulted here), refuses a serial already saved for the kind and stays
// open, and sets the accepted flag only on a free serial.
#include <QString>

#include "common/db/connection.h"
#include "common/dialog/message_dialog.h"

namespace tr::vouchers {

class NewSerialDialog {
  public:
    NewSerialDialog(tr::db::Connection& connection, tr::dialog::MessageDialog* dialog,
                    const QString& kind, const QString& title);

    static QString caption();
    // "شماره " + title + " جديد"; the refusal message continues this text.
    QString groupCaption() const;

    // On show: the proposal goes into the serial box.
    QString propose();
    // "تاييد": answers true (accepted, the window closes) when the serial is not yet saved.
    bool confirm(const QString& serial);
    // "انصراف" or the close button.
    void cancel() { accepted_ = false; }

    bool accepted() const { return accepted_; }
    const QString& serial() const { return serial_; }

  private:
    tr::db::Connection& connection_;
    tr::dialog::Messages messages_;
    QString kind_;
    QString title_;
    QString serial_;
    bool accepted_ = false;
};

}  // namespace tr::vouchers
