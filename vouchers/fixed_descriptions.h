#pragma once
// Ready-made line descriptions kept per account in FixDes: the pick offered on a line (the
// line's account plus every description stored without an account) and the look-up that fills
// a line's description when its account is set.
#include <QString>
#include <optional>

#include "common/db/connection.h"
#include "common/db/query.h"
#include "common/session/services.h"
#include "vouchers/account_checks.h"

namespace tr::vouchers {

inline constexpr int kFixedDescriptionListKind = 3;

// The candidates copied into `table` for the pick.
QString fixedDescriptionPickStatement(const tr::db::Connection& connection, const QString& table,
                                      const LineAccount& line);
// Shows the candidates under "انتخاب شرح ثابت"; the chosen description, or nothing on cancel.
std::optional<QString> pickFixedDescription(const tr::Services& services, const LineAccount& line);
// Picks for the grid row and writes the choice into its `descriptionField`.
bool pickFixedDescriptionInto(const tr::Services& services, tr::db::Query& row,
                              const QString& descriptionField = QStringLiteral("Des"));

QString fixedDescriptionLookupStatement(const tr::db::Connection& connection,
                                        const LineAccount& line);
// The description of the first stored row for the account, unless that row names a level the
// line lacks.
std::optional<QString> lookupFixedDescription(tr::db::Connection& connection,
                                              const LineAccount& line);
// Writes the looked-up description into the row; whether one was found.
bool fillFixedDescription(tr::db::Connection& connection, tr::db::Query& row,
                          const QString& descriptionField = QStringLiteral("Des"));

}  // namespace tr::vouchers
