#include "db/procedures/procedures.h"

#include "db/procedures/name_repeated.h"

namespace tr::procedures {

std::vector<ProcedureDefinition> allProcedures() {
    return {
        {QStringLiteral("sp_Is_Name_Repeated"), isNameRepeated},
    };
}

std::vector<FunctionDefinition> allFunctions() { return {}; }

}  // namespace tr::procedures
