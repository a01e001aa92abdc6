#pragma once
// What the cheque-actions screen's tabs share: the list in a ## work table, the action per row
// (space bar or drop-down) and its date, "تاييد" in one call of the tab's procedure, the history.
// Each tab brings the cheques it lists, where they stand and go, and its own checks.
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "instruments/state_actions.h"

namespace tr::cheques {

struct ActionFilters {
    QString chequeNumber;
    QString fromDate,
        toDate;     // the date the cheque came in or went out, "yyyy/mm/dd"; empty for no bound
    QString state;  // "انتخاب آخرين عمل": a state's kind, empty for all
    qint64 bankAccount = 0;  // our bank account the cheques were drawn on (issued tab); 0 for all
};

// What tells the tabs apart besides their rules.
struct ActionListSide {
    tr::instruments::Side side;
    QString tableStem;   // the work table: stem + session text
    QString columns;     // its columns
    QString procedure;   // the tab's apply procedure
    QString standing;    // the prefix of the columns holding where a cheque stands ("V" or "")
    QString statesLike;  // the kinds the state filter offers, as a Like pattern
};

class ChequeActionList {
  public:
    static const QString kWaitText;  // "لطفا صبر کنيد"

    ChequeActionList(const tr::Services& services, const ActionListSide& side);
    virtual ~ChequeActionList();
    ChequeActionList(const ChequeActionList&) = delete;
    ChequeActionList& operator=(const ChequeActionList&) = delete;

    // The entry point passes the latest session values on every call.
    void setServices(const tr::Services& services);
    const ActionListSide& side() const { return side_; }

    ActionFilters& filters() { return filters_; }
    // Lists the cheques that the filters select, each with its state and where it stands.
    void fill();
    // The grid's dataset over the work table; its current row is the row the handlers act on.
    tr::db::Query& rows() { return rows_; }
    const tr::db::Query& rows() const { return rows_; }
    const QString& workTable() const { return table_.name(); }
    // The grid's columns and their captions, in the grid's order; the other fields are hidden.
    virtual QList<QPair<QString, QString>> columns() const = 0;

    // The drop-down's names: empty first, undo last.
    QStringList dropDownNames() const;
    // The names the current row's state offers, in the space bar's order.
    QStringList menu() const;
    // The space bar on the action cell: the next name of the menu, nothing after the last.
    void spaceOnAction();
    // A name chosen from the drop-down: refused (message, cell cleared) when the state does not
    // offer it. Choosing fills the row's accounts and, when it has none, today's date.
    bool chooseAction(const QString& name);
    // The action date typed on the current row: refused (message, date kept out) when outside the
    // year or before the state's date, or by the tab's own rule.
    bool setActionDate(const QString& date);
    // Our bank accounts as the lists show them: id and "bank - number".
    QList<QPair<qint64, QString>> bankAccounts() const;
    // The states the "انتخاب آخرين عمل" filter offers: kind and name.
    QList<QPair<QString, QString>> stateNames() const;

    // "گردش چک ...": the current row's cheque's actions in order, with their dates and voucher
    // numbers, in the pick list (a received cheque spent and come back names its 88 row
    // "برگشت از خرج چك").
    void showHistory();
    // The rows showHistory lists: name, date, voucher number.
    QList<QStringList> history(const QString& number, const QString& series) const;

    // "تاييد": the tab's checks of the chosen rows and its question, then one call for the whole
    // list and the list read again. False when refused or declined; nothing is written then and
    // the list stays as it was.
    bool apply();

  protected:
    tr::db::Connection& connection() const { return *services_.database->Connection; }
    const tr::Services& services() const { return services_; }
    const QString& splitTable() const { return split_.name(); }
    QString field(const char* name) const;
    void setField(const char* name, const QVariant& value);
    bool refuse(const QString& message);
    tr::dialog::Messages& messages() { return messages_; }
    // The kind the current row's chosen action records on this tab (empty for none or undo).
    QString chosenKind() const;
    // The first row of `sql` as an account's five levels; empty when it has none.
    QStringList accountsWhere(const QString& sql) const;
    // Writes an account's five levels into the columns `prefix`Koll ... `prefix`ProjectCod.
    void setAccounts(const QString& prefix, const QStringList& accounts);
    // The current row's accounts where it stands.
    QStringList standingAccounts() const;

    // The tab's cheques into the (empty) work table, by the filters.
    virtual void listCheques() = 0;
    // Writes where every listed cheque stands (the accounts it is on) into the work table's
    // standing columns, a few statements for the whole list.
    virtual void fillStanding() = 0;
    // "R.<standing>Koll = ..., ..." for an update of the work table as R: each level from the
    // table `from` (trimmed, empty for null), or empty when `from` is empty.
    QString standingSets(const QString& from) const;
    virtual tr::instruments::InstrumentFacts facts() const = 0;
    // The accounts the action of `kind` hands the current row's cheque to.
    virtual void fillAccounts(const QString& kind) = 0;
    // The tab's own refusal of a date typed for the current row's action, or empty.
    virtual QString dateRefusal(const QString& /*kind*/, const QString& /*date*/) const {
        return {};
    }
    // Step 1 of "تاييد": the tab's refusal of a chosen row, or empty.
    virtual QString applyRefusal(const QString& kind, const QString& number, const QString& date,
                                 const QString& due) const = 0;
    // Step 2: what the tab asks before the call; statements to run with it go into `alsoRun`.
    // False when the user declines.
    virtual bool confirmApply(const tr::db::Query& /*chosen*/, QStringList& /*alsoRun*/) {
        return true;
    }

  private:
    const ActionListSide& side_;
    tr::Services services_;
    tr::dialog::Messages messages_;

  protected:
    ActionFilters filters_;

  private:
    tr::db::ScopedTempTable table_;
    tr::db::ScopedTempTable split_;
    tr::db::Query rows_;
};

// The five levels of an account ("Koll" ... "ProjectCod") and their columns under `prefix`.
const QStringList& accountLevels();
QString accountColumns(const QString& prefix);

}  // namespace tr::cheques
