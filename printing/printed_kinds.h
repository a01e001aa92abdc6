#pragma once
// The treasury kinds whose saved documents print: the six cash and bank kinds and the two cheque
// documents ('71', '81'). Each names its stored layouts, its voucher print's report key and where its
// voucher lines are found.
#include <QString>

#include "common/db/connection.h"

namespace tr::printing {

struct PrintedKind {
    QString code;       // WhatDoc
    QString title;      // the name when N_AsnadNaghd gives none
    QString formKey;    // "N_A_CASHGET_": its middle names the voucher print's report
    QString layoutKey;  // the print item's name and "_"
    // The voucher is the lines of the document's own rows (joined by IDX). A cheque line keeps the
    // cheque's series in Asnad.DocToDate, so the cash kinds' header line ('0' there) has no twin.
    bool voucherOfItsRows = false;
};

// Null for a kind that does not print.
const PrintedKind* findPrintedKind(const QString& code);
// The kind's NDocNam, else its title.
QString printedKindName(tr::db::Connection& connection, const PrintedKind& kind);

}  // namespace tr::printing
