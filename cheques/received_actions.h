#pragma once
// The logic of the cheque-actions screen's received tab ("چكهاي دريافتي"): the list of received
// cheques in ##TT<session> with their state, the action chosen per row (space bar through the
// state's menu, or the drop-down), its date and accounts, and "تاييد", which hands the whole list
// to sp_N_Asnad_ChqGetAction_Apply in one call and reads the list again.
#include <QString>
#include <QList>
#include <QPair>
#include <QStringList>
#include <optional>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "instruments/state_actions.h"

namespace tr::cheques {

// A line a returned cheque may go back to: one the cheque was credited to, and its part.
struct ReturnLine {
    QStringList account;  // Koll, Moein, Tafsily, Tafsily2, ProjectCod
    QString des;
    double credited = 0;  // shown as "بدهكار"
    double newValue = 0;
};

struct ReceivedFilters {
    QString chequeNumber;
    QString fromDate, toDate;  // the receipt date, "yyyy/mm/dd"; empty for no bound
    QString state;             // "انتخاب آخرين عمل": a state's kind, empty for all
};

class ReceivedChequeActions {
  public:
    static const QString kWaitText;      // "لطفا صبر کنيد"
    static const QString kUnlinkQuestion;

    explicit ReceivedChequeActions(const tr::Services& services);
    ReceivedChequeActions(const ReceivedChequeActions&) = delete;
    ReceivedChequeActions& operator=(const ReceivedChequeActions&) = delete;

    // The entry point passes the latest session values on every call.
    void setServices(const tr::Services& services);

    ReceivedFilters& filters() { return filters_; }
    // Lists the received cheques that the filters select, each with its state, in receipt order.
    void fill();
    // The grid's dataset over the work table; its current row is the row the handlers act on.
    tr::db::Query& rows() { return rows_; }
    const QString& workTable() const { return table_.name(); }

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
    // year, before the state's date, or a second collection that day.
    bool setActionDate(const QString& date);
    // The bank account a collection goes to (N_BankHesab.AcountID): its collection accounts
    // become the row's Va-accounts.
    void setBankAccount(qint64 acountId);
    // The bank accounts a collection may go to, as the list shows them: id and "bank - number".
    QList<QPair<qint64, QString>> bankAccounts() const;
    // The grid's columns and their captions, in the grid's order; the other fields are hidden.
    static QList<QPair<QString, QString>> gridColumns();
    // The states the "انتخاب آخرين عمل" filter offers: kind and name.
    QList<QPair<QString, QString>> stateNames() const;

    // "انتخاب طرف حساب جهت برگشت چک": the lines the current row's cheque was credited to, with
    // the parts typed so far.
    QList<ReturnLine> returnLines() const;
    // The current row is a return of a cheque credited to more than one line.
    bool returnNeedsSplit() const;
    // The parts typed for those lines, in their order: each no more than its line's credit, all
    // together the cheque's amount; refused with the message otherwise. The return then debits
    // each line its part.
    bool splitReturn(const QList<double>& parts);
    // The parts as typed in the dialog: a text that is no amount is refused with its reason.
    bool splitReturnTyped(const QStringList& typed);

    // "گردش چک ...": the current row's cheque's actions in order, with their dates and voucher
    // numbers, in the pick list (a received cheque spent and come back names its 88 row
    // "برگشت از خرج چك").
    void showHistory();
    // The rows showHistory lists: name, date, voucher number.
    QList<QStringList> history(const QString& number, const QString& series) const;

    // "تاييد": the due-date checks, the question for returned cheques tied to invoices, then one
    // call for the whole list and the list read again. False when refused or declined; nothing
    // is written then and the list stays as it was.
    bool apply();

  private:
    tr::db::Connection& connection() const { return *services_.database->Connection; }
    tr::instruments::InstrumentFacts facts() const;
    QString field(const char* name) const;
    void setField(const char* name, const QVariant& value);
    void fillAccounts(const QString& kind);
    void setAccounts(const char* prefix, const QStringList& accounts);
    QStringList accountsWhere(const QString& sql) const;
    bool refuse(const QString& message);

    tr::Services services_;
    tr::dialog::Messages messages_;
    ReceivedFilters filters_;
    tr::db::ScopedTempTable table_;
    tr::db::ScopedTempTable split_;
    tr::db::Query rows_;
};

}  // namespace tr::cheques
