#include "db/tsql/builtin_functions.h"

#include <QString>
#include <array>

namespace tr::tsql {

namespace {

using R = ResultType;

// The PostgreSQL spellings name the same helpers (tsql_...), which that backend's runtime provides
// in SQL; where the server has the T-SQL behaviour itself, its own function.
constexpr std::array kFunctions{
    BuiltinFunction{"ISNULL", 2, 2, R::FirstArgument, "ifnull(%1, %2)", "coalesce(%1, %2)", Rule::IsNull},
    BuiltinFunction{"COALESCE", 2, 64, R::FirstArgument, "coalesce(%*)", "coalesce(%*)"},
    BuiltinFunction{"LTRIM", 1, 1, R::Text, "ltrim(%1, ' ')", "ltrim(%1, ' ')"},
    BuiltinFunction{"RTRIM", 1, 1, R::Text, "rtrim(%1, ' ')", "rtrim(%1, ' ')"},
    BuiltinFunction{"TRIM", 1, 1, R::Text, "trim(%1, ' ')", "btrim(%1, ' ')"},
    BuiltinFunction{"UPPER", 1, 1, R::Text, "upper(%1)", "upper(%1)"},
    BuiltinFunction{"LOWER", 1, 1, R::Text, "lower(%1)", "lower(%1)"},
    BuiltinFunction{"LEN", 1, 1, R::Integer, "length(rtrim(%1, ' '))", "length(rtrim(%1, ' '))"},
    BuiltinFunction{"DATALENGTH", 1, 1, R::Integer, "length(%1)", "length(%1)"},
    // A literal start of 1 or more is SQLite's substr; any other start takes the server's rule.
    BuiltinFunction{"SUBSTRING", 3, 3, R::Text, "tsql_substring(%*)", "tsql_substring(%*)",
                    Rule::Substring, "tsql_substring", 3, 3},
    BuiltinFunction{"LEFT", 2, 2, R::Text, "tsql_substring(%1, 1, %2)", "tsql_substring(%1, 1, %2)",
                    Rule::Spelling, "tsql_substring", 3, 3},
    BuiltinFunction{"RIGHT", 2, 2, R::Text, "tsql_right(%*)", "tsql_right(%*)", Rule::Spelling,
                    "tsql_right", 2, 2},
    BuiltinFunction{"CHARINDEX", 2, 3, R::Integer, "tsql_charindex(%*)", "tsql_charindex(%*)",
                    Rule::Spelling, "tsql_charindex", 2, 3},
    BuiltinFunction{"PATINDEX", 2, 2, R::Integer, "tsql_patindex(%*)", "tsql_patindex(%*)",
                    Rule::Spelling, "tsql_patindex", 2, 2},
    BuiltinFunction{"REPLACE", 3, 3, R::Text, "tsql_replace(%*)", "tsql_replace(%*)",
                    Rule::Spelling, "tsql_replace", 3, 3},
    BuiltinFunction{"REPLICATE", 2, 2, R::Text, "tsql_replicate(%*)", "tsql_replicate(%*)",
                    Rule::Spelling, "tsql_replicate", 2, 2},
    BuiltinFunction{"SPACE", 1, 1, R::Text, "tsql_replicate(' ', %1)", "tsql_replicate(' ', %1)",
                    Rule::Spelling, "tsql_replicate", 2, 2},
    BuiltinFunction{"STR", 1, 3, R::Text, "tsql_varchar(%1, -1)", "tsql_varchar(%1, -1)",
                    Rule::Spelling, "tsql_varchar", 2, 2},
    BuiltinFunction{"ABS", 1, 1, R::FirstArgument, "abs(%1)", "abs(%1)"},
    BuiltinFunction{"ROUND", 2, 3, R::Real, "tsql_round(%*)", "tsql_round(%*)", Rule::Round,
                    "tsql_round", 3, 3},
    BuiltinFunction{"FLOOR", 1, 1, R::FirstArgument, "tsql_floor(%1)", "floor(%1)",
                    Rule::Spelling, "tsql_floor", 1, 1},
    BuiltinFunction{"CEILING", 1, 1, R::FirstArgument, "tsql_ceiling(%1)", "ceiling(%1)",
                    Rule::Spelling, "tsql_ceiling", 1, 1},
    BuiltinFunction{"SIGN", 1, 1, R::FirstArgument, "tsql_sign(%1)", "sign(%1)", Rule::Spelling,
                    "tsql_sign", 1, 1},
    BuiltinFunction{"COUNT", 1, 1, R::Integer, "count(%1)", "count(%1)", Rule::Count},
    BuiltinFunction{"SUM", 1, 1, R::FirstArgument, "sum(%1)", "sum(%1)", Rule::Sum},
    BuiltinFunction{"AVG", 1, 1, R::Real, "avg(%1)", "avg(%1)", Rule::Sum},
    BuiltinFunction{"MIN", 1, 1, R::FirstArgument, "min(%1)", "min(%1)", Rule::Extreme},
    BuiltinFunction{"MAX", 1, 1, R::FirstArgument, "max(%1)", "max(%1)", Rule::Extreme},
    BuiltinFunction{"GETDATE", 0, 0, R::Text, "tsql_getdate()", "tsql_getdate()", Rule::Spelling,
                    "tsql_getdate", 0, 0},
    BuiltinFunction{"CURRENT_TIMESTAMP", 0, 0, R::Text, "tsql_getdate()", "tsql_getdate()",
                    Rule::Spelling, "tsql_getdate", 0, 0},
    // The row key of the connection's last insert; procedures read it right after theirs.
    BuiltinFunction{"SCOPE_IDENTITY", 0, 0, R::Integer, "nullif(last_insert_rowid(), 0)",
                    "tsql_scope_identity()"},
    BuiltinFunction{"COL_LENGTH", 2, 2, R::Integer, "tsql_col_length(%*)", "tsql_col_length(%*)",
                    Rule::Spelling, "tsql_col_length", 2, 2},
    BuiltinFunction{"OBJECT_ID", 1, 2, R::Integer, "tsql_object_id(%1)", "tsql_object_id(%1)",
                    Rule::Spelling, "tsql_object_id", 1, 1},
    BuiltinFunction{"CHAR", 1, 1, R::Text, "char(%1)", "chr(%1)"},
    BuiltinFunction{"NCHAR", 1, 1, R::Text, "char(%1)", "chr(%1)"},
    BuiltinFunction{"ASCII", 1, 1, R::Integer, "unicode(%1)", "ascii(%1)"},
    BuiltinFunction{"UNICODE", 1, 1, R::Integer, "unicode(%1)", "ascii(%1)"},
    BuiltinFunction{"DB_NAME", 0, 0, R::Text, "tsql_db_name()", "tsql_db_name()",
                    Rule::Spelling, "tsql_db_name", 0, 0},
    BuiltinFunction{"ISNUMERIC", 1, 1, R::Integer, "tsql_isnumeric(%1)", "tsql_isnumeric(%1)",
                    Rule::Spelling, "tsql_isnumeric", 1, 1},
};

}  // namespace

std::span<const BuiltinFunction> builtinFunctions() {
    return kFunctions;
}

const BuiltinFunction* findBuiltin(QStringView name) {
    for (const BuiltinFunction& f : kFunctions)
        if (name.compare(QLatin1String(f.name), Qt::CaseInsensitive) == 0) return &f;
    return nullptr;
}

}  // namespace tr::tsql
