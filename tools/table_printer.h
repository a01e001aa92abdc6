#pragma once
// Formats result sets as aligned text tables for a terminal: column widths count what a terminal
// shows (Persian joining and combining marks, ZWNJ and direction marks take no column), numbers
// are right-aligned, NULL is shown as NULL.
#include <QString>

#include "common/db/result_set.h"

namespace tr::tools {

int displayWidth(const QString& text);
QString formatTable(const tr::db::ResultSet& set);

}  // namespace tr::tools
