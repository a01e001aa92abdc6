#pragma once
// "ابطال برگه چك": voids one blank leaf of our cheque books (a kind-83 state row of serial 0) or
// undoes such a void, in the mode the form was opened with; and the rule the issued-cheque
// document asks before it writes a leaf: whether and when that leaf was voided here.
#include <QString>
#include <QStringList>
#include <optional>

#include "common/db/connection.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"
#include "instruments/cheque_issue_rule.h"

namespace tr::cheques {

// The date of a leaf's void: one rule with the payment's (instruments/cheque_issue_rule.h).
using tr::instruments::leafVoidedOn;

// What the form shows for the book that holds a leaf: its bank account and the names of the
// account's ledger levels (كل، معين، تفصيلي، مركز هزينه، پروژه; empty where the level is unset).
struct LeafBook {
    qint64 acountId = 0;
    QString bank, branch, accountNumber;
    QStringList accountNames;
};

// The book of leaf `number`/`series`: its range holds the number compared as text (not as a
// whole number, unlike the issued-cheque document) and its trimmed series equals the series.
// `refusal` says why there is none: no range holds the number, or only books of another series.
struct BookLookup {
    std::optional<LeafBook> book;
    QString refusal;
};
BookLookup findLeafBook(tr::db::Connection& c, const QString& number, const QString& series);

class LeafVoiding {
  public:
    // Captions of the two modes; the titles' leading blanks are part of them.
    static const QString kVoidTitle, kVoidButton, kUndoTitle, kUndoButton;

    explicit LeafVoiding(const tr::Services& services, bool voidMode = true);

    // The entry point passes the latest session values on every call.
    void setServices(const tr::Services& services);
    bool voidMode() const { return voidMode_; }
    void setVoidMode(bool voidMode) { voidMode_ = voidMode; }
    QString title() const { return voidMode_ ? kVoidTitle : kUndoTitle; }
    QString confirmCaption() const { return voidMode_ ? kVoidButton : kUndoButton; }

    // The widest number both the state rows and the voucher lines' cheque column hold, and the
    // widest series, as the book declares them.
    int numberWidth() const;
    int seriesWidth() const;

    // The typed values; Persian digits read as Latin ones, blanks around dropped.
    void setNumber(const QString& number);
    void setSeries(const QString& series);
    const QString& number() const { return number_; }
    const QString& series() const { return series_; }

    // The number or series was left: the leaf's book is looked up and shown, or refused with its
    // message ("1ER") and nothing shown. An empty number looks nothing up.
    bool findBook();
    const std::optional<LeafBook>& book() const { return book_; }

    // The confirm button: a void or its undo, as the mode says. Each check refuses with its
    // message ("1ER"); the write is one transaction, and success is told with "1IR". The book
    // shown is then the confirmed leaf's.
    bool confirm();
    bool voidLeaf();
    bool undoVoid();

  private:
    tr::db::Connection& connection() const { return *services_.database->Connection; }
    int columnWidth(const char* table, const char* column) const;
    QString voidRefusal(const BookLookup& lookup) const;

    tr::Services services_;
    tr::dialog::Messages messages_;
    bool voidMode_;
    QString number_, series_;
    std::optional<LeafBook> book_;
};

}  // namespace tr::cheques
