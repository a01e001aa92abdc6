#pragma once
// The state-action mechanism of negotiable instruments (cheques now, promissory notes next): an
// instrument's state is the kind of its latest action; a table gives, for a state and the
// instrument's facts, the ordered menu of action names the user may choose; a name stands for a
// kind within one side (received or issued); undo returns to the state before the latest action.
// Nothing here knows which instrument it serves: each brings its table.
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

namespace tr::instruments {

enum class Side { Received, Issued };

// What a menu may depend on besides the state.
struct InstrumentFacts {
    Side side = Side::Received;
    bool guarantee = false;  // given as a guarantee (Tazmin), never to be cashed
    bool opening = false;    // the state is the one its opening balance set (IsFirst)
    bool own = false;        // issued by us, as against a received one passed on
    bool paidOut = false;    // a received instrument that was passed on to a third party
};

struct MenuRow {
    QString state;
    // The row applies when this holds; empty: always. Rows are tried in order.
    std::function<bool(const InstrumentFacts&)> when;
    QStringList menu;  // in the space bar's stepping order
};

// An action name and the kind it records on one side.
struct ActionKind {
    QString name;
    Side side;
    QString kind;
};

class StateActions {
  public:
    StateActions(QString undoName, std::vector<MenuRow> rows, std::vector<ActionKind> kinds);

    // The names offered in `state`, in order. Undo is left out where the state is the opening
    // balance's: there is no earlier action to return to.
    QStringList menu(const QString& state, const InstrumentFacts& facts) const;
    // The space bar on the action cell: the name after `current` in the menu, nothing after the
    // last, the first after nothing (a name not in the menu starts it again).
    QString step(const QString& state, const InstrumentFacts& facts, const QString& current) const;
    // Whether `name` may be chosen now; an empty name (no action) always may.
    bool allows(const QString& state, const InstrumentFacts& facts, const QString& name) const;

    // The kind a name records on `side`; nothing for undo or an unknown name. Names compare as the
    // book's collation does (Arabic and Persian yeh and kaf alike).
    std::optional<QString> kindOf(const QString& name, Side side) const;
    bool isUndo(const QString& name) const;
    const QString& undoName() const { return undo_; }
    // Every action name of a side, as its drop-down list offers them (undo last).
    QStringList names(Side side) const;

  private:
    QString undo_;
    std::vector<MenuRow> rows_;
    std::vector<ActionKind> kinds_;
};

}  // namespace tr::instruments
