#pragma once
// What every treasury document (cash and bank, cheques, later notes) shares around its save: the
// module's options ("KEY=VALUE;" pairs of Options.Naghd) and the action-log row of a save, edit or
// delete (sp_Asnad_Actions, in the caller's transaction).
#include <QString>

#include "common/db/my_database.h"
#include "common/session/global.h"

namespace tr::vouchers {

// The option's value, '' when Options has no row or the key is not there.
QString treasuryOption(tr::db::Connection& connection, const QString& key);
// `options` is the Options.Naghd text.
QString optionValue(const QString& options, const QString& key);

struct LoggedDocument {
    QString voucherNo, title, kind, serial;
};
// One ASNADACTIONS row through sp_Asnad_Actions; `type` is "I", "E" or "D".
void logTreasuryAction(tr::db::MyDatabase& db, const tr::Global& session, const LoggedDocument& document,
                       const QString& type);

}  // namespace tr::vouchers
