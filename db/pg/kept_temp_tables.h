#pragma once
// The ## tables a server connection made, and those it dropped but kept: a drop empties and hides
// the table, and making it again with the same statements shows it again. Making and dropping a
// table writes the server's catalogue and makes every session forget what it had read of it,
// which a screen doing both at every save paid for on every desk at once.
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "db/engine/translator.h"

namespace tr::pg {

class KeptTempTables {
  public:
    struct State {
        QString definition;  // the statements that made it; empty: not to be kept
        bool hidden = false;
    };
    // What a statement of the translator becomes.
    struct Plan {
        QStringList before;  // run first (a kept table shown again, or dropped for a new one)
        QStringList sql;     // then these: the statement's own, or what stands for them
        // Statements of `sql` that only make a table (no writer need wait for them).
        int making = 0;
        bool replaced = false;  // `sql` stands for the statement's own (takes none of its values)
        std::vector<std::pair<QString, std::optional<State>>> after;  // each table then; none: gone
    };

    // `step` as the server runs it, with the tables it makes, drops or changes in tempdb.
    Plan plan(const tr::engine::Step& step) const;
    // After the plan's statements ran; undone by rollBack() when `inTransaction`. Both answer
    // the tables they changed.
    QStringList apply(const Plan& plan, bool inTransaction);
    void commit() { journal_.clear(); }
    QStringList rollBack();

    // Dropped and kept: absent to every statement.
    bool hidden(const QString& table) const;
    // Every ## table the connection made and has not dropped for good, kept ones included.
    QStringList tables() const { return tables_.keys(); }

    // Marks a kept table for the catalogue views and Object_Id, which leave it out.
    static const char kHiddenMark[];

  private:
    void set(const QString& name, std::optional<State> state, bool inTransaction);

    QHash<QString, State> tables_;
    std::vector<std::pair<QString, std::optional<State>>> journal_;  // what each change replaced
};

}  // namespace tr::pg
