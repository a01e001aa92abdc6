#pragma once
// "ارسال چک به بانک": the cheques sent to collection in a date range, listed through
// sp_N_Asnad_Chq_SendToBank into a ## work table, ticked ("ض") for the deposit slips, sorted by
// a column then by number.
#include <QList>
#include <QPair>
#include <QString>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"

namespace tr::cheques {

struct ToBankFilters {
    QString fromDate, toDate;  // "تاريخ ارسال", "yyyy/mm/dd"; empty for no bound
    QString account;           // "واگذار به بانك :" our account number (AcountCod); empty for all
    QString fromBank, toBank;  // the drawee bank's code range; empty for no bound
};

class ChequesToBank {
  public:
    static const QString kWaitText;  // "لطفا صبر کنيد"
    static const QString kTicked;    // "ض"

    explicit ChequesToBank(const tr::Services& services);
    ChequesToBank(const ChequesToBank&) = delete;
    ChequesToBank& operator=(const ChequesToBank&) = delete;

    void setServices(const tr::Services& services) { services_ = services; }
    const tr::Services& services() const { return services_; }
    ToBankFilters& filters() { return filters_; }
    // A month as the date filters take it: its first and last day ("/01", "/31").
    static QPair<QString, QString> monthRange(const QString& yearMonth);

    // The work table made anew and filled by the filters; the list opened on it.
    void fill();
    tr::db::Query& rows() { return rows_; }
    const QString& workTable() const { return table_.name(); }
    // Visible columns and captions, in the grid's order.
    static QList<QPair<QString, QString>> columns();
    // The work table's columns; BankCod as wide as N_BankHesab's.
    QString workTableColumns() const;

    // The tick of the current row turned over; answers the number of ticked rows after it.
    int toggleTick();
    int tickedCount() const;
    // A click on a column's title: the list by that column, then by ChqNo.
    void sortBy(const QString& field);

    // Our bank accounts for "واگذار به بانك :": account number and "bank - branch - number".
    QList<QPair<QString, QString>> bankAccounts() const;

  private:
    tr::db::Connection& connection() const { return *services_.database->Connection; }

    tr::Services services_;
    ToBankFilters filters_;
    tr::db::ScopedTempTable table_;
    tr::db::Query rows_;
};

}  // namespace tr::cheques
