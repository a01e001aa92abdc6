#include "vouchers/fixed_descriptions.h"

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"

namespace tr::vouchers {

namespace {

const AccountLevel kLowerLevels[] = {AccountLevel::Tafsily, AccountLevel::Tafsily2,
                                     AccountLevel::Project};

// "Koll = '..' And Moein = '..'" and each lower level the line carries.
QString accountCondition(const tr::db::Connection& c, const LineAccount& line) {
    QString condition = QStringLiteral("Koll = ") + c.text(line.koll) + QStringLiteral(" ") +
                        QStringLiteral("And Moein = ") + c.text(line.moein);
    for (AccountLevel level : kLowerLevels) {
        const QString code = line.code(level);
        if (!code.isEmpty()) {
            condition += QStringLiteral(" And ") + accountField(level) + QStringLiteral(" = ") +
                         c.text(code);
        }
    }
    return condition;
}

}  // namespace

QString fixedDescriptionPickStatement(const tr::db::Connection& connection, const QString& table,
                                      const LineAccount& line) {
    return QStringLiteral(
               "Select ProjectCod, Tafsily2, Tafsily, Moein, Koll, FixDes, "
               "IDX = Identity(int, 1, 1) Into ") +
           table + QStringLiteral(" From FixDes ") + QStringLiteral("Where ") +
           accountCondition(connection, line) +
           QStringLiteral(
               " Or (Koll='' And Moein='' And Tafsily='' And Tafsily2='' And "
               "ProjectCod='') ") +
           QStringLiteral("Order By Koll, Moein");
}

std::optional<QString> pickFixedDescription(const tr::Services& services, const LineAccount& line) {
    tr::db::MyDatabase& db = *services.database;
    const QString table = tr::db::globalTempTableName(services.global->sessionText);
    const QString bare = table.mid(2);
    tr::db::dropTempTable(db, bare);
    tr::db::execute(db, fixedDescriptionPickStatement(services.connection(), table, line));
    tr::db::ScopedTempTable list(db, table);
    const std::optional<QVariantMap> chosen = services.pickList->pick(
        QStringLiteral("انتخاب شرح ثابت"),
        QStringLiteral("Select * From ") + table + QStringLiteral(" Order By IDX"),
        {{QStringLiteral("FixDes"), QStringLiteral("شرح"), 300},
         {QStringLiteral("Koll"), QStringLiteral("کل"), 50},
         {QStringLiteral("Moein"), QStringLiteral("معين"), 60},
         {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي"), 70}},
        kFixedDescriptionListKind);
    list.drop();
    if (!chosen) return std::nullopt;
    return chosen->value(QStringLiteral("FixDes")).toString();
}

bool pickFixedDescriptionInto(const tr::Services& services, tr::db::Query& row,
                              const QString& descriptionField) {
    const std::optional<QString> text = pickFixedDescription(services, LineAccount::fromRow(row));
    if (!text) return false;
    row.FieldByName(descriptionField).SetValue(*text);
    return true;
}

QString fixedDescriptionLookupStatement(const tr::db::Connection& connection,
                                        const LineAccount& line) {
    return QStringLiteral("Select * From FixDes Where ") + accountCondition(connection, line);
}

std::optional<QString> lookupFixedDescription(tr::db::Connection& connection,
                                              const LineAccount& line) {
    tr::db::Query query =
        tr::db::openQuery(connection, fixedDescriptionLookupStatement(connection, line));
    if (query.IsEmpty()) return std::nullopt;
    for (AccountLevel level : kLowerLevels) {
        if (line.code(level).isEmpty() &&
            !query.FieldByName(accountField(level)).AsString().trimmed().isEmpty()) {
            return std::nullopt;
        }
    }
    return query.FieldByName(QStringLiteral("FixDes")).AsString();
}

bool fillFixedDescription(tr::db::Connection& connection, tr::db::Query& row,
                          const QString& descriptionField) {
    const std::optional<QString> text =
        lookupFixedDescription(connection, LineAccount::fromRow(row));
    if (!text) return false;
    row.FieldByName(descriptionField).SetValue(*text);
    return true;
}

}  // namespace tr::vouchers
