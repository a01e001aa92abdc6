#pragma once
// The T-SQL built-in functions the dialect knows, as one table: argument counts, the type of the
// result, how each target writes the call, and the runtime helper a target must provide for it.
// The translator reads it to translate a call; each backend's runtime registration reads it to
// provide the helpers.
#include <QStringView>
#include <span>

namespace tr::tsql {

enum class ResultType { Text, Integer, Real, FirstArgument };

// Calls whose translation is more than a spelling (types of the arguments, DISTINCT, a literal
// argument's value); the translator handles these by name.
// Sum: Sum and Avg, whose text arguments are read as numbers; Extreme: Min and Max, which compare
// texts under the TSQL collation.
enum class Rule { Spelling, IsNull, Substring, Round, Count, Sum, Extreme };

struct BuiltinFunction {
    const char* name;  // upper case
    int minArgs, maxArgs;
    ResultType result;
    // The call as each target writes it: %1 ... %9 the arguments, %* all of them joined by ", ".
    const char* sqlite;
    const char* postgres;
    Rule rule = Rule::Spelling;
    // The helper the spellings call, and the argument counts it takes (none: nullptr).
    const char* runtime = nullptr;
    int runtimeMinArgs = 0, runtimeMaxArgs = 0;
};

std::span<const BuiltinFunction> builtinFunctions();
// By name, whatever its case; nullptr for a name that is no built-in.
const BuiltinFunction* findBuiltin(QStringView name);

}  // namespace tr::tsql
