#pragma once
// The lookup lists the grids open on their account and funds cells: each list is copied into a
// "##" table of the session, shown through the host's pick-list window and dropped again. Chart
// lists are narrowed by the line's upper levels and by the subsidiary's allowances.
#include <QString>
#include <QVariantMap>
#include <optional>

#include "common/db/query.h"
#include "common/dialog/host_windows.h"
#include "common/session/services.h"
#include "vouchers/account_checks.h"

namespace tr::vouchers {

// Browse kinds the lists pass to the pick-list window.
inline constexpr int kAccountListKind = 1;
inline constexpr int kFundsListKind = 2;

// Sources of funds are offered on receipts, uses on payments (N_Manabeh.ManabehType).
inline const QString kSourcesOfFunds = QStringLiteral("MANABEH");
inline const QString kUsesOfFunds = QStringLiteral("MASAREF");

class AccountLookup {
  public:
    explicit AccountLookup(const tr::Services& services) : services_(services) {}

    // The chooser of one chart level for a line; the chosen row's fields by name.
    std::optional<QVariantMap> chooseAccount(AccountLevel level, const LineAccount& line);
    // Chooser and pick check together: the chosen code lands in the grid row (true), or the
    // user cancelled or the account was refused (false).
    bool pickInto(AccountLevel level, tr::db::Query& gridRow);

    // Sources (or uses) of funds with their group and sub-group; empty type lists both.
    std::optional<QVariantMap> chooseFunds(const QString& type = {});
    // Copies the chosen ManabehCod into the grid row.
    bool pickFundsInto(tr::db::Query& gridRow, const QString& type = {});
    std::optional<QVariantMap> chooseFundsGroup();
    std::optional<QVariantMap> chooseFundsSubGroup(const QString& groupCode);

    // The Select ... Into <table> statement of a level's list.
    QString accountListStatement(AccountLevel level, const LineAccount& line,
                                 const QString& table) const;
    QString listTitle(AccountLevel level) const;
    QList<tr::dialog::PickColumn> listColumns(AccountLevel level) const;

  private:
    std::optional<QVariantMap> showList(const QString& title, const QString& selectInto,
                                        const QString& table,
                                        const QList<tr::dialog::PickColumn>& columns, int kind);

    tr::Services services_;
};

}  // namespace tr::vouchers
