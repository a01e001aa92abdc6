#include "instruments/state_actions.h"

#include "common/text/tsql_collation.h"

namespace tr::instruments {

namespace {

bool sameName(const QString& a, const QString& b) {
    return tr::text::tsqlCompare(a, b) == 0;
}

}  // namespace

StateActions::StateActions(QString undoName, std::vector<MenuRow> rows, std::vector<ActionKind> kinds)
    : undo_(std::move(undoName)), rows_(std::move(rows)), kinds_(std::move(kinds)) {}

QStringList StateActions::menu(const QString& state, const InstrumentFacts& facts) const {
    const QString s = state.trimmed();
    for (const MenuRow& row : rows_) {
        if (row.state != s || (row.when && !row.when(facts))) continue;
        QStringList names = row.menu;
        if (facts.opening) names.removeIf([this](const QString& n) { return isUndo(n); });
        return names;
    }
    return {};
}

QString StateActions::step(const QString& state, const InstrumentFacts& facts,
                           const QString& current) const {
    const QStringList names = menu(state, facts);
    if (names.isEmpty()) return {};
    if (current.trimmed().isEmpty()) return names.first();
    for (qsizetype i = 0; i < names.size(); ++i)
        if (sameName(names[i], current)) return i + 1 < names.size() ? names[i + 1] : QString();
    return names.first();
}

bool StateActions::allows(const QString& state, const InstrumentFacts& facts,
                          const QString& name) const {
    if (name.trimmed().isEmpty()) return true;
    for (const QString& offered : menu(state, facts))
        if (sameName(offered, name)) return true;
    return false;
}

std::optional<QString> StateActions::kindOf(const QString& name, Side side) const {
    for (const ActionKind& k : kinds_)
        if (k.side == side && sameName(k.name, name)) return k.kind;
    return std::nullopt;
}

bool StateActions::isUndo(const QString& name) const {
    return sameName(name, undo_);
}

QStringList StateActions::names(Side side) const {
    QStringList out;
    for (const ActionKind& k : kinds_)
        if (k.side == side && !out.contains(k.name)) out << k.name;
    out << undo_;
    return out;
}

}  // namespace tr::instruments
