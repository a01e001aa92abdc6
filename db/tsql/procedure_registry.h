#pragma once
// Stored procedures and dbo scalar functions written in C++, registered by name (case-insensitive).
// A procedure gets the calling connection and its arguments; it issues T-SQL through that connection
// and the backend runs the whole call in one transaction. Every backend runs the same registry.
#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

#include "common/db/result_set.h"

namespace tr::db {
class Connection;
}

namespace tr::tsql {

using ProcedureArgs = std::vector<QVariant>;
using Procedure = std::function<tr::db::ExecResult(tr::db::Connection&, const ProcedureArgs&)>;
using ScalarFunction = std::function<QVariant(tr::db::Connection&, const ProcedureArgs&)>;

class ProcedureRegistry {
public:
    void addProcedure(const QString& name, Procedure procedure);
    // Upkeep that must not wait for another writer (gathering statistics): outside a transaction
    // the engine runs it without opening one, and it gives way when the book is busy.
    void addUpkeep(const QString& name, Procedure procedure);
    bool isUpkeep(const QString& name) const { return upkeep_.contains(name.toLower()); }
    void addFunction(const QString& name, ScalarFunction function);  // called as dbo.name(...)
    const Procedure* procedure(const QString& name) const;
    const ScalarFunction* function(const QString& name) const;

private:
    QHash<QString, Procedure> procedures_;
    QHash<QString, ScalarFunction> functions_;
    QSet<QString> upkeep_;
};

}  // namespace tr::tsql
