#include "db/engine/target_writer.h"

#include <initializer_list>

namespace tr::engine {

ColumnKind columnKind(const ast::TypeName& t) {
    const auto is = [&t](std::initializer_list<const char*> names) {
        for (const char* name : names)
            if (t.name == QLatin1String(name)) return true;
        return false;
    };
    if (is({"VARCHAR", "NVARCHAR", "CHAR", "NCHAR", "SYSNAME"})) return ColumnKind::Text;
    if (is({"TEXT", "NTEXT"})) return ColumnKind::LongText;
    if (is({"DATETIME", "SMALLDATETIME", "DATE"})) return ColumnKind::Date;
    if (is({"INT", "INTEGER", "BIGINT", "SMALLINT", "TINYINT", "BIT"})) return ColumnKind::Integer;
    if (is({"FLOAT", "REAL", "MONEY", "SMALLMONEY"})) return ColumnKind::Float;
    if (is({"DECIMAL", "NUMERIC"})) return ColumnKind::Decimal;
    if (is({"VARBINARY", "BINARY", "IMAGE"})) return ColumnKind::Binary;
    if (is({"UNIQUEIDENTIFIER"})) return ColumnKind::Guid;
    return ColumnKind::None;
}

}  // namespace tr::engine
