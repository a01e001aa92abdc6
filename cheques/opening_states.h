#pragma once
// "مقداردهي وضعيت چكهاي اول دوره": the state each opening cheque of one side (received, kind 71, or
// issued, kind 81) enters the period in. One row per opening cheque, its state picked from the
// side's opening states (docs/decisions/opening-cheque-states.md); a cheque that has moved since
// its opening is locked. "تاييد" stores the states in N_ChqFirst and as the cheque's state row in
// N_ChqLastTrans, in one transaction, so that the actions screen reads them as any state.
#include <QList>
#include <QPair>
#include <QString>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "instruments/state_actions.h"
#include "instruments/opening_state.h"

namespace tr::cheques {

class OpeningChequeStates {
  public:
    static const QString kScreenName;  // "مقداردهي وضعيت چكهاي اول دوره"
    static const QString kCaption;     // "        تعيين وضعيت چكهاي اول دوره"
    static const QString kReportKey;   // "CHQFIRST"
    static const QString kReportProperties;  // "مشخصات گزارش [ثبت وضعيت چكهاي اول دوره]"
    static const QString kReportTitle;  // "گزارش ثبت وضعيت چكهاي اول دوره "
    static const QString kMoved;        // "چك گردش دارد."
    static const QString kNoState;      // "آخرين وضعيت چك وارد نشده است."

    OpeningChequeStates(const tr::Services& services, tr::instruments::Side side);
    ~OpeningChequeStates();
    OpeningChequeStates(const OpeningChequeStates&) = delete;
    OpeningChequeStates& operator=(const OpeningChequeStates&) = delete;

    void setServices(const tr::Services& services);
    tr::instruments::Side side() const { return side_; }
    // The side's document kind ("71" or "81") and its name ("دريافت چک" or "پرداخت چک").
    QString kind() const;
    QString sideName() const;

    // The side's opening cheques into the list, each with its state and whether it is locked.
    void fill();
    // The grid's dataset; its current row is the row the handlers act on.
    tr::db::Query& rows() { return rows_; }
    const QString& workTable() const { return table_.name(); }
    // The grid's columns and captions, in order; the other fields are hidden.
    static QList<QPair<QString, QString>> columns();

    // Whether row `row` (0-based) of the list, or the current row, has moved since its opening.
    bool lockedAt(int row) const;
    bool locked() const;
    // The states the current row may be given: kind and name, in the order offered.
    QList<QPair<QString, QString>> choices() const;
    // Before the state cell opens for editing: a locked row is refused ("چك گردش دارد.").
    bool beginChange();
    // The state of kind `kind` for the current row; a locked row is refused ("چك گردش دارد."),
    // a kind the row is not offered leaves it as it was.
    bool chooseState(const QString& kind);
    // The same by the name shown in the choices.
    bool chooseStateNamed(const QString& name);
    // The space bar on the state cell: the next state offered, the first after the last.
    void spaceOnState();
    // The state cell emptied: refused for a locked row.
    bool clearState();

    // "تاييد": every row needs a state; then the changed states are written in one transaction
    // and the list read again. False when refused; nothing is written then.
    bool cmdOkClick();

  private:
    QString field(const char* name) const;
    void setField(const char* name, const QVariant& value);
    bool refuse(const QString& message);
    // The kinds offered to a cheque of this side, by its guarantee flag and whether it is a
    // received cheque passed on (issued side, no bank account).
    QStringList offeredKinds(bool guarantee, bool passedOn) const;
    QString nameOf(const QString& kind, bool passedOn) const;
    // The SQL condition of "a row of N_ChqLastTrans (alias M) that moved the cheque of opening
    // row O after it": any later row but the opening state row itself.
    static QString movedAfterOpening();

    tr::instruments::Side side_;
    tr::Services services_;
    tr::dialog::Messages messages_;
    tr::db::ScopedTempTable table_;
    tr::db::Query rows_;
};

// Whether the cheque stands in the state its opening set (instruments/opening_state.h).
using tr::instruments::atOpeningState;

}  // namespace tr::cheques
