#include "vouchers/account_checks.h"

#include <optional>

#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"

namespace tr::vouchers {

using tr::db::Connection;
using tr::db::Query;

namespace {

const QString kErrorCode = QStringLiteral("1ER");

std::optional<QVariantMap> firstRow(Connection& connection, const QString& sql) {
    Query query = tr::db::openQuery(connection, sql);
    if (query.IsEmpty()) return std::nullopt;
    QVariantMap row;
    for (const QString& field : query.fieldNames())
        row.insert(field, query.FieldByName(field).Value());
    return row;
}

QString textOf(const QVariantMap& row, const QString& field) {
    for (auto it = row.constBegin(); it != row.constEnd(); ++it) {
        if (it.key().compare(field, Qt::CaseInsensitive) == 0)
            return it.value().toString().trimmed();
    }
    return {};
}

bool isActive(const QVariantMap& row) {
    return textOf(row, QStringLiteral("IsActive")) == kActive;
}

bool filled(const QString& text) {
    return !text.trimmed().isEmpty();
}

AccountCheck refuse(AccountLevel level, const QString& message) {
    return {level, message};
}

// The group-only restriction the fixed-descriptions screen puts on its own look-ups.
QString groupCondition(const Connection& connection, const QString& column, int groupLength,
                       const QString& groups) {
    if (!filled(groups)) return {};
    return QStringLiteral(" And PatIndex('%'+SubString(") + column + QStringLiteral(", 1, ") +
           tr::db::sqlNumber(groupLength) + QStringLiteral(")+'%', ") + connection.text(groups) +
           QStringLiteral(") > 0");
}

// Existence, allowance and activity of one lower level, with that level's three messages.
AccountCheck checkLowerLevel(Connection& connection, AccountLevel level, const QString& code,
                             const QString& lookup, const QString& emptyMessage,
                             const QString& missingMessage, const QString& inactive) {
    if (!filled(code)) return refuse(level, emptyMessage);
    const std::optional<QVariantMap> row = firstRow(connection, lookup);
    if (!row) return refuse(level, missingMessage);
    if (!isActive(*row)) return refuse(level, inactive);
    return {};
}

}  // namespace

QString accountField(AccountLevel level) {
    switch (level) {
        case AccountLevel::Koll:
            return QStringLiteral("Koll");
        case AccountLevel::Moein:
            return QStringLiteral("Moein");
        case AccountLevel::Tafsily:
            return QStringLiteral("Tafsily");
        case AccountLevel::Tafsily2:
            return QStringLiteral("Tafsily2");
        case AccountLevel::Project:
            return QStringLiteral("ProjectCod");
        case AccountLevel::None:
            break;
    }
    return {};
}

AccountLevel accountLevelOfField(const QString& field) {
    for (AccountLevel level : {AccountLevel::Koll, AccountLevel::Moein, AccountLevel::Tafsily,
                               AccountLevel::Tafsily2, AccountLevel::Project}) {
        if (accountField(level).compare(field, Qt::CaseInsensitive) == 0) return level;
    }
    return AccountLevel::None;
}

LineAccount LineAccount::fromRow(Query& row) {
    auto read = [&](AccountLevel level) {
        const QString field = accountField(level);
        return row.fieldIndex(field) < 0 ? QString() : row.FieldByName(field).AsString().trimmed();
    };
    return {read(AccountLevel::Koll), read(AccountLevel::Moein), read(AccountLevel::Tafsily),
            read(AccountLevel::Tafsily2), read(AccountLevel::Project)};
}

QString LineAccount::code(AccountLevel level) const {
    switch (level) {
        case AccountLevel::Koll:
            return koll;
        case AccountLevel::Moein:
            return moein;
        case AccountLevel::Tafsily:
            return tafsily;
        case AccountLevel::Tafsily2:
            return tafsily2;
        case AccountLevel::Project:
            return projectCod;
        case AccountLevel::None:
            break;
    }
    return {};
}

Subsidiary readSubsidiary(Connection& connection, const QString& koll, const QString& moein) {
    Subsidiary result;
    const std::optional<QVariantMap> row = firstRow(
        connection, QStringLiteral("Select * From Moein Where Koll+Moein = ") +
                        connection.text(koll.trimmed() + moein.trimmed()) + QStringLiteral(" "));
    if (!row) return result;
    result.found = true;
    result.active = isActive(*row);
    result.hasTafsily = textOf(*row, QStringLiteral("IsTafsily1")) == kHas;
    result.hasTafsily2 = textOf(*row, QStringLiteral("IsTafsily2")) == kHas;
    result.hasProject = textOf(*row, QStringLiteral("IsProject")) == kHas;
    result.tafsily = {textOf(*row, QStringLiteral("GrohTafsily")),
                      textOf(*row, QStringLiteral("TafsilyJoz"))};
    result.tafsily2 = {textOf(*row, QStringLiteral("GrohTafsily2")),
                       textOf(*row, QStringLiteral("Tafsily2Joz"))};
    result.project = {textOf(*row, QStringLiteral("GrohProject")),
                      textOf(*row, QStringLiteral("ProjectJoz"))};
    return result;
}

Allowance tafsily2Allowance(Connection& connection, const Subsidiary& subsidiary,
                            const LineAccount& line) {
    const std::optional<QVariantMap> own = firstRow(
        connection, QStringLiteral(" Select * from Tafsily where Tafsily = ") +
                        connection.text(line.tafsily) +
                        QStringLiteral(" And ((GrohTafsily2 Is Not Null And GrohTafsily2 <> '') Or "
                                       "(Tafsily2Joz Is Not Null And Tafsily2Joz <> '')) "));
    if (own) {
        return {textOf(*own, QStringLiteral("GrohTafsily2")),
                textOf(*own, QStringLiteral("Tafsily2Joz"))};
    }
    return subsidiary.tafsily2;
}

Allowance projectAllowance(Connection& connection, const Subsidiary& subsidiary,
                           const LineAccount& line) {
    const QString hasLists = QStringLiteral(
        " And ((GrohProject Is Not Null And GrohProject <> '') Or "
        "(ProjectJoz Is Not Null And ProjectJoz <> '')) ");
    for (const auto& [table, code] : {std::pair{QStringLiteral("Tafsily2"), line.tafsily2},
                                      std::pair{QStringLiteral("Tafsily"), line.tafsily}}) {
        const std::optional<QVariantMap> own = firstRow(
            connection, QStringLiteral(" Select * from ") + table + QStringLiteral(" where ") +
                            table + QStringLiteral(" = ") + connection.text(code) + hasLists);
        if (own) {
            return {textOf(*own, QStringLiteral("GrohProject")),
                    textOf(*own, QStringLiteral("ProjectJoz"))};
        }
    }
    return subsidiary.project;
}

QString allowanceCondition(const Connection& connection, const QString& column, int groupLength,
                           const Allowance& allowance) {
    const QString byGroup = QStringLiteral("PatIndex('%'+SubString(") + column +
                            QStringLiteral(", 1, ") + tr::db::sqlNumber(groupLength) +
                            QStringLiteral(")+'%', ") + connection.text(allowance.groups) +
                            QStringLiteral(") > 0");
    const QString byCode = QStringLiteral("PatIndex('%'+") + column + QStringLiteral("+'%', ") +
                           connection.text(allowance.codes) + QStringLiteral(") > 0");
    const bool groups = filled(allowance.groups), codes = filled(allowance.codes);
    if (groups && codes)
        return QStringLiteral(" And ( ") + byGroup + QStringLiteral(" Or ") + byCode +
               QStringLiteral(" ) ");
    if (groups) return QStringLiteral(" And ( ") + byGroup + QStringLiteral(" ) ");
    if (codes) return QStringLiteral(" And ( ") + byCode + QStringLiteral(" ) ");
    return {};
}

QString inactiveMessage(AccountLevel level, const tr::Global& global) {
    switch (level) {
        case AccountLevel::Koll:
            return QStringLiteral("كد حساب کل غيرفعال مي باشد.");
        case AccountLevel::Moein:
            return QStringLiteral("كد حساب معين غيرفعال مي باشد.");
        case AccountLevel::Tafsily:
            return QStringLiteral("كد حساب تفصيلي غيرفعال مي باشد.");
        case AccountLevel::Tafsily2:
            return QStringLiteral("كد حساب ") + global.tafsily2LevelName +
                   QStringLiteral(" غيرفعال مي باشد.");
        case AccountLevel::Project:
            return QStringLiteral("كد ") + global.projectLevelName +
                   QStringLiteral(" غيرفعال مي باشد.");
        case AccountLevel::None:
            break;
    }
    return {};
}

AccountCheck checkLineAccount(Connection& connection, const tr::Global& global,
                              const LineAccount& line, LookupStyle style) {
    if (!filled(line.koll)) {
        return refuse(AccountLevel::Koll, QStringLiteral("سرفصل حساب کل خالي مي باشد"));
    }
    const std::optional<QVariantMap> koll =
        firstRow(connection,
                 QStringLiteral("Select * From Koll Where Koll = ") + connection.text(line.koll));
    if (!koll) return refuse(AccountLevel::Koll, QStringLiteral("كد حساب كل موجود نمي باشد."));
    if (!isActive(*koll))
        return refuse(AccountLevel::Koll, inactiveMessage(AccountLevel::Koll, global));

    const Subsidiary subsidiary = readSubsidiary(connection, line.koll, line.moein);
    if (!subsidiary.found) {
        return refuse(AccountLevel::Moein, QStringLiteral("كد حساب معين موجود نمي باشد."));
    }
    if (!subsidiary.active) {
        return refuse(AccountLevel::Moein, inactiveMessage(AccountLevel::Moein, global));
    }

    if (subsidiary.hasTafsily) {
        const AccountCheck result = checkLowerLevel(
            connection, AccountLevel::Tafsily, line.tafsily,
            QStringLiteral("Select Tafsily, IsActive From Tafsily Where Tafsily = ") +
                connection.text(line.tafsily) + QStringLiteral(" ") +
                allowanceCondition(connection, QStringLiteral("Tafsily"), global.tafsilyGroupLength,
                                   subsidiary.tafsily),
            QStringLiteral("کد حساب تفصيلي خالي مي باشد."),
            QStringLiteral("كد حساب تفصيلي موجود نمي باشد."),
            inactiveMessage(AccountLevel::Tafsily, global));
        if (!result.accepted()) return result;
    }

    if (subsidiary.hasTafsily2) {
        const QString name = global.tafsily2LevelName;
        const QString column = QStringLiteral("Tafsily2");
        QString lookup;
        if (filled(line.tafsily2)) {
            const Allowance allowance = tafsily2Allowance(connection, subsidiary, line);
            const int g = global.tafsily2GroupLength;
            lookup =
                style == LookupStyle::FixedDescriptions
                    ? QStringLiteral("Select Tafsily2, IsActive From Tafsily2 Where Tafsily2 = ") +
                          connection.text(line.tafsily2) +
                          groupCondition(connection, column, g, allowance.groups)
                    : QStringLiteral(
                          "Select Tafsily2, NamHesab, RecogName, IsActive, IsPosHesab, "
                          "DesChar From Tafsily2 Where Tafsily2 = ") +
                          connection.text(line.tafsily2) +
                          allowanceCondition(connection, column, g, allowance);
        }
        const AccountCheck result =
            checkLowerLevel(connection, AccountLevel::Tafsily2, line.tafsily2, lookup,
                            QStringLiteral("کد حساب ") + name + QStringLiteral(" خالي مي باشد."),
                            QStringLiteral("كد حساب ") + name + QStringLiteral(" موجود نمي باشد."),
                            inactiveMessage(AccountLevel::Tafsily2, global));
        if (!result.accepted()) return result;
    }

    if (subsidiary.hasProject) {
        const QString name = global.projectLevelName;
        const QString column = QStringLiteral("ProjectCod");
        QString lookup;
        if (filled(line.projectCod)) {
            const Allowance allowance = projectAllowance(connection, subsidiary, line);
            const int g = global.projectGroupLength;
            lookup = style == LookupStyle::FixedDescriptions
                         ? QStringLiteral(
                               "Select ProjectCod, IsActive From M_Project Where ProjectCod = ") +
                               connection.text(line.projectCod) +
                               groupCondition(connection, column, g, allowance.groups)
                         : QStringLiteral(
                               "Select ProjectCod, ProjectNam, RecogName, IsActive, "
                               "IsPosHesab, DesChar From M_Project Where ProjectCod = ") +
                               connection.text(line.projectCod) +
                               allowanceCondition(connection, column, g, allowance);
        }
        const AccountCheck result =
            checkLowerLevel(connection, AccountLevel::Project, line.projectCod, lookup,
                            QStringLiteral("کد ") + name + QStringLiteral(" خالي مي باشد."),
                            QStringLiteral("كد ") + name + QStringLiteral(" موجود نمي باشد."),
                            inactiveMessage(AccountLevel::Project, global));
        if (!result.accepted()) return result;
    }
    return {};
}

AccountCheck validateLineAccount(const tr::Services& services, const LineAccount& line,
                                 LookupStyle style) {
    const AccountCheck result =
        checkLineAccount(services.connection(), *services.global, line, style);
    if (!result.accepted()) tr::dialog::Messages(services.dialog).show(result.message, kErrorCode);
    return result;
}

bool pickAccount(AccountLevel level, const QVariantMap& listRow, Query& gridRow,
                 const tr::dialog::Messages& messages, const tr::Global& global) {
    if (!isActive(listRow)) {
        messages.show(inactiveMessage(level, global), kErrorCode);
        return false;
    }
    auto set = [&](const QString& field, const QString& value) {
        if (gridRow.fieldIndex(field) >= 0) gridRow.FieldByName(field).SetValue(value);
    };
    for (AccountLevel l : {AccountLevel::Koll, AccountLevel::Moein, AccountLevel::Tafsily,
                           AccountLevel::Tafsily2, AccountLevel::Project}) {
        const QString field = accountField(l);
        bool carried = false;
        for (auto it = listRow.constBegin(); it != listRow.constEnd(); ++it) {
            carried = carried || it.key().compare(field, Qt::CaseInsensitive) == 0;
        }
        if (carried) set(field, textOf(listRow, field));
        if (l == level) break;
    }
    if (level == AccountLevel::Moein) {
        // The lists expose IsTafsily1 as IsTafsily; a row read straight from Moein has the former.
        QString hasTafsily = textOf(listRow, QStringLiteral("IsTafsily"));
        if (hasTafsily.isEmpty()) hasTafsily = textOf(listRow, QStringLiteral("IsTafsily1"));
        // Deliberately one level per pick: the first the subsidiary does not carry.
        if (hasTafsily == kHasNot) {
            set(accountField(AccountLevel::Tafsily), QString());
        } else if (textOf(listRow, QStringLiteral("IsTafsily2")) == kHasNot) {
            set(accountField(AccountLevel::Tafsily2), QString());
        } else if (textOf(listRow, QStringLiteral("IsProject")) == kHasNot) {
            set(accountField(AccountLevel::Project), QString());
        }
    }
    return true;
}

}  // namespace tr::vouchers
