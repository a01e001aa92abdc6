#pragma once
// The choice beside "تاييد و چاپ": the built-in "جديد" layout (checked by default) or "قديم"; and
// where the suite's print-design library keeps a kind's stored layouts.
#include <QString>

#include "common/db/connection.h"

namespace tr::printing {

enum class PrintLayout { New, Old };

// The stored-layout filter for a kind; the layout table keeps the subsystem letter in WhatDoc and
// the kind in TypeSys, the reverse of Asnad.
QString printLayoutSelection(tr::db::Connection& connection, const QString& kind);
// The name a kind's layouts are stored under ("برداشت بانک_" for a withdrawal); "" for a kind
// that prints none.
QString printLayoutKey(const QString& kind);

}  // namespace tr::printing
