#include "printing/printed_kinds.h"

#include <vector>

#include "common/db/query.h"
#include "common/db/query_helpers.h"
#include "vouchers/document_kinds.h"

namespace tr::printing {

namespace {

// The names of the print items, with the Persian kaf the menus use (the payment's kind name
// has the Arabic one).
const std::pair<const char*, const char*> kLayoutKeys[] = {
    {"10", "دريافت صندوق_"}, {"20", "پرداخت صندوق_"},    {"40", "تنخواه گردان_"},
    {"50", "واريز بانک_"},   {"60", "حواله هاي بانکي_"}, {"90", "برداشت بانک_"},
    {"81", "پرداخت چک_"}};

QString layoutKey(const QString& code, const QString& otherwise) {
    for (const auto& [kind, key] : kLayoutKeys)
        if (code == QLatin1String(kind)) return QString::fromUtf8(key);
    return otherwise;
}

std::vector<PrintedKind> makeKinds() {
    // The cheque documents' rows first: their vouchers are found by their rows.
    std::vector<PrintedKind> kinds;
    for (const auto& cheque : tr::vouchers::chequeDocumentKinds())
        kinds.push_back({cheque.code, cheque.title, cheque.formKey,
                         layoutKey(cheque.code, cheque.title + QLatin1Char('_')), true});
    for (const auto& kind : tr::vouchers::treasuryDocumentKinds())
        kinds.push_back({kind.code, kind.title, kind.formKey, layoutKey(kind.code, {}), false});
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
