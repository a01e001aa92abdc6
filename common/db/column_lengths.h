#pragma once
// The widths of the text columns of a table definition ("Des NVarchar(50) Null, ..."), by column
// name: what a screen's editors hold typing to, so that a value never reaches the table too long.
#include <QHash>
#include <QString>

namespace tr::db {

QHash<QString, int> textColumnLengths(const QString& columnsDefinition);

}  // namespace tr::db
