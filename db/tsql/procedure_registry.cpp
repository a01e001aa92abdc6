#include "db/tsql/procedure_registry.h"

namespace tr::tsql {

void ProcedureRegistry::addProcedure(const QString& name, Procedure procedure) {
    procedures_.insert(name.toLower(), std::move(procedure));
}

void ProcedureRegistry::addFunction(const QString& name, ScalarFunction function) {
    functions_.insert(name.toLower(), std::move(function));
}

void ProcedureRegistry::addUpkeep(const QString& name, Procedure procedure) {
    addProcedure(name, std::move(procedure));
    upkeep_.insert(name.toLower());
}

const Procedure* ProcedureRegistry::procedure(const QString& name) const {
    auto it = procedures_.constFind(name.toLower());
    return it == procedures_.constEnd() ? nullptr : &it.value();
}

const ScalarFunction* ProcedureRegistry::function(const QString& name) const {
    auto it = functions_.constFind(name.toLower());
    return it == functions_.constEnd() ? nullptr : &it.value();
}

}  // namespace tr::tsql
