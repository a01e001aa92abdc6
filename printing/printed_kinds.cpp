#include "printing/printed_kinds.h"

#include <vector>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "vouchers/document_kinds.h"

namespace tr::printing {

namespace {

// The names of the print items, with the Persian kaf the menus use.
const std::pair<const char*, const char*> kCashLayoutKeys[] = {
    {"10", "دريافت صندوق_"}, {"20", "پرداخت صندوق_"},    {"40", "تنخواه گردان_"},
    {"50", "واريز بانک_"},   {"60", "حواله هاي بانکي_"}, {"90", "برداشت بانک_"}};

std::vector<PrintedKind> makeKinds() {
    // The received cheque's row first: its voucher is found by its rows whatever else lists '71'.
    const auto& cheque = tr::vouchers::receivedChequeKind();
    std::vector<PrintedKind> kinds = {
        {cheque.code, cheque.title, cheque.formKey, cheque.title + QLatin1Char('_'), true}};
    for (const auto& kind : tr::vouchers::treasuryDocumentKinds()) {
        PrintedKind k{kind.code, kind.title, kind.formKey, {}, false};
        for (const auto& [code, key] : kCashLayoutKeys)
            if (kind.code == QLatin1String(code)) k.layoutKey = QString::fromUtf8(key);
        kinds.push_back(k);
    }
    return kinds;
}

}  // namespace

const PrintedKind* findPrintedKind(const QString& code) {
    static const std::vector<PrintedKind> kinds = makeKinds();
    for (const PrintedKind& kind : kinds)
        if (kind.code == code.trimmed()) return &kind;
    return nullptr;
}

QString printedKindName(tr::db::Connection& c, const PrintedKind& kind) {
    tr::db::Query q = tr::db::openQuery(
        c, QStringLiteral("Select NDocNam From N_AsnadNaghd Where LTrim(RTrim(WhatDoc)) = ") +
               c.text(kind.code));
    const QString name =
        q.IsEmpty() ? QString() : q.FieldByName(QStringLiteral("NDocNam")).AsString().trimmed();
    return name.isEmpty() ? kind.title : name;
}

}  // namespace tr::printing
