#pragma once
// Reading a saved document for print: a column's text as printed (trimmed), and the serial as
// asked for (digits only, else it names no document).
#include <QString>
#include <optional>

#include "common/db/query.h"

namespace tr::printing {

QString textField(tr::db::Query& query, const char* name);
// The trimmed serial; null for anything but one to nine digits (it could not convert in SQL).
std::optional<QString> documentSerial(const QString& serial);

}  // namespace tr::printing
