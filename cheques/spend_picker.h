#pragma once
// "انتخاب چک دريافتي": the received cheques in hand (their latest row over both sides 71, 77 or
// 88) that a cheque payment may pass on, in a ## selection table the window's grid edits. A
// guarantee cheque cannot be chosen; "تاييد" hands the chosen cheques to the payment.
#include <QList>
#include <QPair>
#include <QString>
#include <optional>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"

namespace tr::cheques {

class SpendPicker {
  public:
    static const QString kTitle;  // "انتخاب چک دريافتي"

    explicit SpendPicker(const tr::Services& services);

    // The cheques in hand, less those already on the payment (keys "number_series").
    void fill(const QStringList& onThePayment = {});
    tr::db::Query& rows() { return rows_; }
    // Space on a row: chosen or not; a guarantee cheque is refused with the message.
    bool toggle();
    // The chosen cheques (number, series) in the list's order; nothing, after the message, when
    // none is chosen.
    std::optional<QList<QPair<QString, QString>>> confirm();

  private:
    tr::Services services_;
    tr::dialog::Messages messages_;
    tr::db::ScopedTempTable table_;
    tr::db::Query rows_;
};

}  // namespace tr::cheques
