#pragma once
// Every document and action kind (WhatDoc) the module writes or reads, with its Persian name
// (N_AsnadNaghd.NDocNam). Names are unique within a side (7x received cheques, 8x issued cheques,
// A received notes, B issued notes), so a name-to-kind lookup must be limited to the side.
#include <QString>
#include <vector>

#include "common/db/connection.h"

namespace tr::schema {

struct DocumentKind {
    QString code;  // WhatDoc
    QString name;  // NDocNam
};

const std::vector<DocumentKind>& documentKinds();
// Empty when the code is not a known kind.
QString documentKindName(const QString& code);
// Inserts every kind into N_AsnadNaghd (which must hold none of them yet).
void loadDocumentKinds(tr::db::Connection& company);

}  // namespace tr::schema
