#pragma once
// The logic of the counter-account currency grid ("نرخ و ارز چك ها"): one row per currency on a
// document's cheques in the working table "##" + base + "_ArzNerkh", where the user states how
// much of which currency at which rate a counter-account line is settled in.
#include <QList>
#include <QString>
#include <optional>

#include "common/db/query.h"
#include "common/session/services.h"

namespace tr::currency {

// One confirmed row: the amount of a currency and its rate.
struct CounterCurrency {
    QString arzCod;
    QString arzNam;
    double arzCount = 0;
    double arzNerkh = 0;
};

// Lets a cheque screen's logic ask for the counter-account's currencies without the window.
class CounterCurrencyPrompt {
  public:
    virtual ~CounterCurrencyPrompt() = default;
    // `base` names the working table, filled from `chequeTable`; nothing when the user cancels.
    virtual std::optional<QList<CounterCurrency>> askCounterCurrencies(
        const QString& base, const QString& chequeTable) = 0;
};

class CounterCurrencyGrid {
  public:
    // `base` is the calling screen's temporary-table base name (without "##").
    CounterCurrencyGrid(const tr::Services& services, const QString& base);
    // The working table belongs to the grid: it is dropped with it.
    ~CounterCurrencyGrid();
    CounterCurrencyGrid(const CounterCurrencyGrid&) = delete;
    CounterCurrencyGrid& operator=(const CounterCurrencyGrid&) = delete;

    static QString title();
    QString tableName() const { return QStringLiteral("##") + base_ + QStringLiteral("_ArzNerkh"); }

    // Builds the working table from a cheque table (columns ArzCod, ArzNam, ArzCount, Nerkh):
    // one row per currency, its total as the maximum, nothing entered yet, the cheques' rate.
    void fill(const QString& chequeTable);
    // Opens the grid's dataset over the working table.
    void open();
    tr::db::Query& query() { return query_; }

    // "تاييد": the rows with an amount, or nothing (with the message) when none has one.
    std::optional<QList<CounterCurrency>> cmdOkClick();

    // False, with the message, when no cheque of `chequeTable` carries `arzCod`.
    static bool chequesCarry(const tr::Services& services, const QString& chequeTable,
                             const QString& arzCod);

  private:
    bool beforePost(tr::db::Query& query);
    void afterPost(tr::db::Query& query);

    tr::Services services_;
    tr::dialog::Messages messages_;
    QString base_;
    tr::db::Query query_;
};

}  // namespace tr::currency
