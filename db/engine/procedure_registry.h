#pragma once
// Stored procedures and dbo scalar functions written in C++, registered by name (case-insensitive).
// A procedure gets the calling connection and its arguments; it issues T-SQL through that connection
// and the engine runs the whole call in one transaction.
#include <QHash>
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

#include "common/db/result_set.h"

namespace tr::db {
class Connection;
}

namespace tr::engine {

using ProcedureArgs = std::vector<QVariant>;
using Procedure = std::function<tr::db::ExecResult(tr::db::Connection&, const ProcedureArgs&)>;
using ScalarFunction = std::function<QVariant(tr::db::Connection&, const ProcedureArgs&)>;

class ProcedureRegistry {
public:
    void addProcedure(const QString& name, Procedure procedure);
    void addFunction(const QString& name, ScalarFunction function);  // called as dbo.name(...)
    const Procedure* procedure(const QString& name) const;
    const ScalarFunction* function(const QString& name) const;

private:
    QHash<QString, Procedure> procedures_;
    QHash<QString, ScalarFunction> functions_;
};

}  // namespace tr::engine
