#pragma once
// The TSQL collation and the runtime functions the translated SQL calls (T-SQL LIKE, `+` with
// unknown operand types, conversions with the server's conversion errors, string functions).
#include <QString>

struct sqlite3;

namespace tr::engine {

class SqliteConnection;

void registerTsqlFunctions(sqlite3* db, SqliteConnection* connection);
// Text on its way into a column of `width` characters: false when it does not fit; blanks past
// the width are cut from `text`, as the server drops them.
bool tsqlFitText(QString& text, int width);
// T-SQL LIKE on UTF-16 text: % _ [set] [^set] [a-z], the TSQL collation's folding.
bool tsqlLike(const QString& pattern, const QString& text, QChar escape = QChar());

}  // namespace tr::engine
