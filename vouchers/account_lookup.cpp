#include "vouchers/account_lookup.h"

#include "common/db/query_helpers.h"
#include "common/db/scoped_temp_table.h"

namespace tr::vouchers {

using tr::dialog::PickColumn;

namespace {

const QString kInto = QStringLiteral(" Into ");

}  // namespace

QString AccountLookup::accountListStatement(AccountLevel level, const LineAccount& line,
                                            const QString& table) const {
    tr::db::Connection& c = services_.connection();
    const tr::Global& global = *services_.global;
    switch (level) {
        case AccountLevel::Koll:
            return QStringLiteral("Select Koll, NamHesab, IsActive") + kInto + table +
                   QStringLiteral(" From Koll Order By Koll");
        case AccountLevel::Moein:
            return QStringLiteral(
                       "Select Koll, Moein, NamHesab, IsActive, IsTafsily1 As IsTafsily, "
                       "IsTafsily2, IsProject") +
                   kInto + table + QStringLiteral(" From Moein") +
                   (line.koll.isEmpty() ? QString()
                                        : QStringLiteral(" Where Koll = ") + c.text(line.koll)) +
                   QStringLiteral(" Order By Koll, Moein");
        case AccountLevel::Tafsily: {
            const Subsidiary subsidiary = readSubsidiary(c, line.koll, line.moein);
            return QStringLiteral("Select Tafsily, NamHesab, IsActive") + kInto + table +
                   QStringLiteral(" From Tafsily Where 1 = 1") +
                   allowanceCondition(c, QStringLiteral("Tafsily"), global.tafsilyGroupLength,
                                      subsidiary.tafsily) +
                   QStringLiteral(" Order By Tafsily");
        }
        case AccountLevel::Tafsily2: {
            const Subsidiary subsidiary = readSubsidiary(c, line.koll, line.moein);
            return QStringLiteral("Select Tafsily2, NamHesab, RecogName, IsActive") + kInto +
                   table + QStringLiteral(" From Tafsily2 Where 1 = 1") +
                   allowanceCondition(c, QStringLiteral("Tafsily2"), global.tafsily2GroupLength,
                                      tafsily2Allowance(c, subsidiary, line)) +
                   QStringLiteral(" Order By Tafsily2");
        }
        case AccountLevel::Project: {
            const Subsidiary subsidiary = readSubsidiary(c, line.koll, line.moein);
            return QStringLiteral("Select ProjectCod, ProjectNam, RecogName, IsActive") + kInto +
                   table + QStringLiteral(" From M_Project Where 1 = 1") +
                   allowanceCondition(c, QStringLiteral("ProjectCod"), global.projectGroupLength,
                                      projectAllowance(c, subsidiary, line)) +
                   QStringLiteral(" Order By ProjectCod");
        }
        case AccountLevel::None:
            break;
    }
    return {};
}

QString AccountLookup::listTitle(AccountLevel level) const {
    switch (level) {
        case AccountLevel::Koll:
            return QStringLiteral("انتخاب حساب کل");
        case AccountLevel::Moein:
            return QStringLiteral("انتخاب حساب معين");
        case AccountLevel::Tafsily:
            return QStringLiteral("انتخاب حساب تفصيلي");
        case AccountLevel::Tafsily2:
            return QStringLiteral("انتخاب حساب ") + services_.global->tafsily2LevelName;
        case AccountLevel::Project:
            return QStringLiteral("انتخاب ") + services_.global->projectLevelName;
        case AccountLevel::None:
            break;
    }
    return {};
}

QList<PickColumn> AccountLookup::listColumns(AccountLevel level) const {
    const PickColumn name{QStringLiteral("NamHesab"), QStringLiteral("نام حساب"), 220};
    const PickColumn active{QStringLiteral("IsActive"), QStringLiteral("وضعيت"), 60};
    switch (level) {
        case AccountLevel::Koll:
            return {{QStringLiteral("Koll"), QStringLiteral("کل"), 50}, name, active};
        case AccountLevel::Moein:
            return {{QStringLiteral("Koll"), QStringLiteral("کل"), 50},
                    {QStringLiteral("Moein"), QStringLiteral("معين"), 60},
                    name,
                    active};
        case AccountLevel::Tafsily:
            return {{QStringLiteral("Tafsily"), QStringLiteral("تفصيلي"), 70}, name, active};
        case AccountLevel::Tafsily2:
            return {{QStringLiteral("Tafsily2"), services_.global->tafsily2LevelName, 70},
                    name,
                    active};
        case AccountLevel::Project:
            return {{QStringLiteral("ProjectCod"), services_.global->projectLevelName, 90},
                    {QStringLiteral("ProjectNam"), QStringLiteral("نام حساب"), 220},
                    active};
        case AccountLevel::None:
            break;
    }
    return {};
}

std::optional<QVariantMap> AccountLookup::showList(const QString& title, const QString& selectInto,
                                                   const QString& table,
                                                   const QList<PickColumn>& columns, int kind) {
    tr::db::MyDatabase& db = *services_.database;
    const QString bare = table.mid(2);  // without "##"
    tr::db::dropTempTable(db, bare);
    tr::db::execute(db, selectInto);
    tr::db::ScopedTempTable list(db, table);
    const std::optional<QVariantMap> chosen =
        services_.pickList->pick(title, QStringLiteral("Select * From ") + table, columns, kind);
    list.drop();
    return chosen;
}

std::optional<QVariantMap> AccountLookup::chooseAccount(AccountLevel level,
                                                        const LineAccount& line) {
    if (level == AccountLevel::None) return std::nullopt;
    const QString table = tr::db::globalTempTableName(services_.global->sessionText);
    return showList(listTitle(level), accountListStatement(level, line, table), table,
                    listColumns(level), kAccountListKind);
}

bool AccountLookup::pickInto(AccountLevel level, tr::db::Query& gridRow) {
    const std::optional<QVariantMap> chosen = chooseAccount(level, LineAccount::fromRow(gridRow));
    if (!chosen) return false;
    return pickAccount(level, *chosen, gridRow, tr::dialog::Messages(services_.dialog),
                       *services_.global);
}

std::optional<QVariantMap> AccountLookup::chooseFunds(const QString& type) {
    tr::db::Connection& c = services_.connection();
    const QString table = tr::db::globalTempTableName(services_.global->sessionText);
    const QString sql =
        QStringLiteral(
            "Select M.ManabehCod, M.ManabehNam, M.ManabehGCod, G.ManabehGNam, "
            "M.ManabehZGCod, Z.ManabehZGNam") +
        kInto + table +
        QStringLiteral(
            " From N_Manabeh M Left Join N_ManabehG G On G.ManabehGCod = M.ManabehGCod "
            "Left Join N_ManabehZG Z On Z.ManabehGCod = M.ManabehGCod And "
            "Z.ManabehZGCod = M.ManabehZGCod") +
        (type.isEmpty() ? QString() : QStringLiteral(" Where M.ManabehType = ") + c.text(type)) +
        QStringLiteral(" Order By M.ManabehCod");
    return showList(QStringLiteral("انتخاب منابع"), sql, table,
                    {{QStringLiteral("ManabehCod"), QStringLiteral("كد منابع"), 60},
                     {QStringLiteral("ManabehNam"), QStringLiteral("نام منابع"), 160},
                     {QStringLiteral("ManabehGCod"), QStringLiteral("كد گروه"), 50},
                     {QStringLiteral("ManabehGNam"), QStringLiteral("نام گروه"), 120},
                     {QStringLiteral("ManabehZGCod"), QStringLiteral("كد زير گروه"), 60},
                     {QStringLiteral("ManabehZGNam"), QStringLiteral("نام زير گروه"), 120}},
                    kFundsListKind);
}

bool AccountLookup::pickFundsInto(tr::db::Query& gridRow, const QString& type) {
    const std::optional<QVariantMap> chosen = chooseFunds(type);
    if (!chosen || gridRow.fieldIndex(QStringLiteral("ManabehCod")) < 0) return false;
    gridRow.FieldByName(QStringLiteral("ManabehCod"))
        .SetValue(chosen->value(QStringLiteral("ManabehCod")).toString().trimmed());
    return true;
}

std::optional<QVariantMap> AccountLookup::chooseFundsGroup() {
    const QString table = tr::db::globalTempTableName(services_.global->sessionText);
    return showList(QStringLiteral("انتخاب گروه منابع"),
                    QStringLiteral("Select ManabehGCod, ManabehGNam") + kInto + table +
                        QStringLiteral(" From N_ManabehG Order By ManabehGCod"),
                    table,
                    {{QStringLiteral("ManabehGCod"), QStringLiteral("كد گروه"), 50},
                     {QStringLiteral("ManabehGNam"), QStringLiteral("نام گروه"), 160}},
                    kFundsListKind);
}

std::optional<QVariantMap> AccountLookup::chooseFundsSubGroup(const QString& groupCode) {
    tr::db::Connection& c = services_.connection();
    const QString table = tr::db::globalTempTableName(services_.global->sessionText);
    return showList(
        QStringLiteral("انتخاب زير گروه منابع"),
        QStringLiteral("Select Z.ManabehGCod, G.ManabehGNam, Z.ManabehZGCod, Z.ManabehZGNam") +
            kInto + table +
            QStringLiteral(" From N_ManabehZG Z Left Join N_ManabehG G On G.ManabehGCod = "
                           "Z.ManabehGCod") +
            (groupCode.isEmpty() ? QString()
                                 : QStringLiteral(" Where Z.ManabehGCod = ") + c.text(groupCode)) +
            QStringLiteral(" Order By Z.ManabehGCod, Z.ManabehZGCod"),
        table,
        {{QStringLiteral("ManabehGCod"), QStringLiteral("كد گروه"), 50},
         {QStringLiteral("ManabehGNam"), QStringLiteral("نام گروه"), 120},
         {QStringLiteral("ManabehZGCod"), QStringLiteral("كد زير گروه"), 60},
         {QStringLiteral("ManabehZGNam"), QStringLiteral("نام زير گروه"), 140}},
        kFundsListKind);
}

}  // namespace tr::vouchers
