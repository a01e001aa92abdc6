#pragma once
// The stored procedures and scalar functions of the company database, written in C++ over a
// tr::db::Connection so the same code can serve a server database that lacks them. The engine
// registers them by name and runs each call in one transaction.
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

#include "common/db/connection.h"

namespace tr::procedures {

using Args = std::vector<QVariant>;
using Procedure = std::function<tr::db::ExecResult(tr::db::Connection&, const Args&)>;
using Function = std::function<QVariant(tr::db::Connection&, const Args&)>;

struct ProcedureDefinition {
    QString name;
    Procedure body;
};
struct FunctionDefinition {
    QString name;
    Function body;
};

std::vector<ProcedureDefinition> allProcedures();
std::vector<FunctionDefinition> allFunctions();

}  // namespace tr::procedures
