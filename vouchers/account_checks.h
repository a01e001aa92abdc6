#pragma once
// The chart-of-accounts rules a voucher line must satisfy: the whole-line check run before a row
// is posted (the first failure is reported with "1ER" and names the level to focus), and the
// per-level checks run when a code is picked from a lookup list into a grid row.
#include <QString>
#include <QVariantMap>

#include "common/db/connection.h"
#include "common/db/query.h"
#include "common/dialog/message_dialog.h"
#include "common/session/global.h"
#include "common/session/services.h"

namespace tr::vouchers {

enum class AccountLevel { None, Koll, Moein, Tafsily, Tafsily2, Project };

// The grid field of a level ("Koll", "Moein", "Tafsily", "Tafsily2", "ProjectCod").
QString accountField(AccountLevel level);
// The level a grid field belongs to (case-insensitive); None for any other field.
AccountLevel accountLevelOfField(const QString& field);

// A line's five codes, trimmed.
struct LineAccount {
    QString koll, moein, tafsily, tafsily2, projectCod;

    // Reads the five fields of the row being edited (a missing field reads empty).
    static LineAccount fromRow(tr::db::Query& row);
    QString code(AccountLevel level) const;
};

// How the lower levels are read. Document grids read the chart row and test both allowance
// lists; the fixed-descriptions screen reads code and IsActive of the second detail and the
// project and tests only the group list.
enum class LookupStyle { Document, FixedDescriptions };

// An allowed-group text and an allowed-code text; both are searched as plain substrings.
struct Allowance {
    QString groups;
    QString codes;
    bool isEmpty() const { return groups.trimmed().isEmpty() && codes.trimmed().isEmpty(); }
};

// What a subsidiary account demands of a line, read from its Moein row.
struct Subsidiary {
    bool found = false;
    bool active = false;
    bool hasTafsily = false;
    bool hasTafsily2 = false;
    bool hasProject = false;
    Allowance tafsily, tafsily2, project;
};

Subsidiary readSubsidiary(tr::db::Connection& connection, const QString& koll,
                          const QString& moein);
// Second-detail allowances: the detail account's own lists when it has any, else the subsidiary's.
Allowance tafsily2Allowance(tr::db::Connection& connection, const Subsidiary& subsidiary,
                            const LineAccount& line);
// Project allowances: the second detail's, else the detail's, else the subsidiary's.
Allowance projectAllowance(tr::db::Connection& connection, const Subsidiary& subsidiary,
                           const LineAccount& line);
// " And ( PatIndex(...) > 0 Or PatIndex(...) > 0 ) " over `column`, or empty without lists.
QString allowanceCondition(const tr::db::Connection& connection, const QString& column,
                           int groupLength, const Allowance& allowance);

struct AccountCheck {
    AccountLevel failedLevel = AccountLevel::None;  // the cell the screen focuses
    QString message;
    bool accepted() const { return failedLevel == AccountLevel::None; }
};

// The whole-line rules, without telling the user.
AccountCheck checkLineAccount(tr::db::Connection& connection, const tr::Global& global,
                              const LineAccount& line, LookupStyle style = LookupStyle::Document);
// The same, showing a refusal with "1ER".
AccountCheck validateLineAccount(const tr::Services& services, const LineAccount& line,
                                 LookupStyle style = LookupStyle::Document);

// "كد حساب ... غيرفعال مي باشد." of a level, with the session's level names.
QString inactiveMessage(AccountLevel level, const tr::Global& global);

// A code chosen from a level's lookup list (`listRow`: the list's fields by name) goes into the
// grid row with the codes above it that the list row carries; an inactive account is refused
// with its level's message and nothing is copied. A subsidiary also clears the first lower level
// it does not carry (detail, else second detail, else project: one level per pick).
bool pickAccount(AccountLevel level, const QVariantMap& listRow, tr::db::Query& gridRow,
                 const tr::dialog::Messages& messages, const tr::Global& global);

// The texts of the Moein flags.
inline const QString kHas = QStringLiteral("دارد");
inline const QString kHasNot = QStringLiteral("ندارد");
inline const QString kActive = QStringLiteral("فعال");

}  // namespace tr::vouchers
