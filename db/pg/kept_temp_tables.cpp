#include "db/pg/kept_temp_tables.h"

#include "db/engine/sql_identifiers.h"

namespace tr::pg {

using tr::engine::Step;
using tr::engine::TableName;

const char KeptTempTables::kHiddenMark[] = "tsql:dropped";

namespace {

// The statements that make a ## table: its CREATE and the comments naming its columns.
bool makesTable(const QString& sql) {
    return (sql.startsWith(QLatin1String("CREATE TABLE \"tempdb\".")) ||
            sql.startsWith(QLatin1String("COMMENT ON COLUMN \"tempdb\"."))) &&
           !sql.contains(QLatin1String("tsql_call("));
}

}  // namespace

KeptTempTables::Plan KeptTempTables::plan(const Step& step) const {
    Plan p;
    p.sql = step.sql;
    while (p.making < step.sql.size() && makesTable(step.sql[p.making])) ++p.making;
    for (const TableName& t : step.changedTables) {
        if (t.schema.compare(QLatin1String("tempdb"), Qt::CaseInsensitive) != 0) continue;
        const QString name = t.table.toLower();
        const QString target = QStringLiteral("\"tempdb\".") + tr::engine::quoteIdent(name);
        const auto found = tables_.constFind(name);
        const std::optional<State> state = found == tables_.constEnd() ? std::nullopt : std::optional(*found);
        switch (t.change) {
            case TableName::Change::Dropped:
                if (state && !state->hidden && !state->definition.isEmpty()) {
                    p.sql = {QStringLiteral("DELETE FROM ") + target,
                             QStringLiteral("COMMENT ON TABLE %1 IS '%2'").arg(target, QLatin1String(kHiddenMark))};
                    p.making = int(p.sql.size());
                    p.replaced = true;
                    p.after.push_back({name, State{state->definition, true}});
                    return p;
                }
                p.after.push_back({name, std::nullopt});
                break;
            case TableName::Change::Created: {
                // An identity would go on counting where the dropped table stopped: such a table
                // is made anew.
                const QStringList making = step.sql.mid(0, p.making);
                const QString definition =
                    making.isEmpty() || making.join(QString()).contains(QLatin1String(" IDENTITY"))
                        ? QString()
                        : making.join(QLatin1Char('\n'));
                if (state && state->hidden) {
                    if (!definition.isEmpty() && state->definition == definition) {
                        p.before << QStringLiteral("COMMENT ON TABLE %1 IS NULL").arg(target);
                        p.sql = step.sql.mid(p.making);
                        p.making = 0;
                    } else {
                        p.before << QStringLiteral("DROP TABLE ") + target;
                    }
                }
                p.after.push_back({name, State{definition, false}});
                break;
            }
            case TableName::Change::Altered:
                // An index made on it would outlive a drop that only empties it.
                if (state) p.after.push_back({name, State{QString(), state->hidden}});
                break;
        }
    }
    return p;
}

QStringList KeptTempTables::apply(const Plan& plan, bool inTransaction) {
    QStringList changed;
    for (const auto& [name, state] : plan.after) {
        set(name, state, inTransaction);
        changed << name;
    }
    return changed;
}

void KeptTempTables::set(const QString& name, std::optional<State> state, bool inTransaction) {
    if (inTransaction) {
        const auto found = tables_.constFind(name);
        journal_.emplace_back(name, found == tables_.constEnd() ? std::nullopt : std::optional(*found));
    }
    if (state) tables_.insert(name, *state);
    else tables_.remove(name);
}

QStringList KeptTempTables::rollBack() {
    QStringList changed;
    for (auto it = journal_.rbegin(); it != journal_.rend(); ++it) {
        if (it->second) tables_.insert(it->first, *it->second);
        else tables_.remove(it->first);
        changed << it->first;
    }
    journal_.clear();
    return changed;
}

bool KeptTempTables::hidden(const QString& table) const {
    const auto found = tables_.constFind(table.toLower());
    return found != tables_.constEnd() && found->hidden;
}

}  // namespace tr::pg
