#include "vouchers/new_serial_dialog.h"

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "common/text/single_line_text.h"

namespace tr::vouchers {

NewSerialDialog::NewSerialDialog(tr::db::Connection& connection, tr::dialog::MessageDialog* dialog,
                                 const QString& kind, const QString& title)
    : connection_(connection), messages_(dialog), kind_(kind), title_(title) {}

QString NewSerialDialog::caption() {
    return QStringLiteral("شماره سريال جديد");
}

QString NewSerialDialog::groupCaption() const {
    return QStringLiteral("شماره ") + title_ + QStringLiteral(" جديد");
}

QString NewSerialDialog::propose() {
    tr::db::Query query = tr::db::openQuery(
        connection_, QStringLiteral("Select IsNull(Max(Serial), 0) + 1 As SerialNo From "
                                    "N_NaghdTrans Where WhatDoc=") +
                         connection_.text(kind_));
    serial_ = query.FieldByName(QStringLiteral("SerialNo")).AsString();
    accepted_ = false;
    return serial_;
}

bool NewSerialDialog::confirm(const QString& typed) {
    const QString serial = tr::text::joinLines(typed);
    const QString refusal = tr::text::lineRefusal({QStringLiteral("سريال"), 6, false}, serial);
    if (!refusal.isEmpty()) {
        messages_.show(refusal, QStringLiteral("1ER"));
        accepted_ = false;
        return false;
    }
    const tr::db::Query query = tr::db::openQuery(
        connection_, QStringLiteral("Select Serial From N_NaghdTrans Where Serial=") +
                         connection_.text(serial.trimmed()) + QStringLiteral(" And WhatDoc=") +
                         connection_.text(kind_));
    if (!query.IsEmpty()) {
        messages_.show(groupCaption() + QStringLiteral("ي با اين شماره ثبت شده است."),
                       QStringLiteral("1ER"));
        accepted_ = false;
        return false;
    }
    serial_ = serial.trimmed();
    accepted_ = true;
    return true;
}

}  // namespace tr::vouchers
