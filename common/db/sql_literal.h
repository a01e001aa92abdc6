#pragma once
// The one quoting helper: every value that goes into SQL text goes through these functions.
// Text is quoted with doubled quotes (N'..' and backslash-newline split for server dialects);
// control characters other than tab, CR and LF are refused; numbers are written locale-free.
#include <QString>

namespace tr::db {

enum class SqlDialect { Embedded, SqlServer, PostgreSql };

QString sqlText(const QString& value, SqlDialect dialect = SqlDialect::Embedded);
QString sqlNumber(double value);
QString sqlNumber(qint64 value);
inline QString sqlNumber(int value) { return sqlNumber(static_cast<qint64>(value)); }

}  // namespace tr::db
