#include "printing/print_layout.h"

#include "printing/printed_kinds.h"

namespace tr::printing {

QString printLayoutSelection(tr::db::Connection& connection, const QString& kind) {
    return QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = ") +
           connection.text(kind.trimmed()) + QStringLiteral(" ");
}

QString printLayoutKey(const QString& kind) {
    const PrintedKind* k = findPrintedKind(kind);
    return k ? k->layoutKey : QString();
}

}  // namespace tr::printing
