#include "db/schema/document_kinds.h"

#include "common/db/sql_literal.h"

namespace tr::schema {

const std::vector<DocumentKind>& documentKinds() {
    // Where the screens quote a kind's title, it is copied as they spell it (Arabic or Persian
    // kaf included). The related cash and petty-cash kinds (11, 21, 41, 45, 46), the final
    // states 80 and B0, and the issued-cheque states 85-87 have no quoted title.
    static const std::vector<DocumentKind> kinds = {
        {QStringLiteral("10"), QStringLiteral("دريافت صندوق")},
        {QStringLiteral("11"), QStringLiteral("انتقال به صندوق")},
        {QStringLiteral("20"), QStringLiteral("پرداخت صندوق")},
        {QStringLiteral("21"), QStringLiteral("انتقال از صندوق")},
        {QStringLiteral("40"), QStringLiteral("تنخواه گردان")},
        {QStringLiteral("41"), QStringLiteral("دريافت تنخواه گردان")},
        {QStringLiteral("45"), QStringLiteral("برگشت تنخواه گردان")},
        {QStringLiteral("46"), QStringLiteral("تسويه تنخواه گردان")},
        {QStringLiteral("50"), QStringLiteral("واريز به بانك")},
        {QStringLiteral("60"), QStringLiteral("حواله بانكي")},
        {QStringLiteral("90"), QStringLiteral("برداشت بانك")},
        // Received cheques.
        {QStringLiteral("71"), QStringLiteral("دريافت چک")},
        {QStringLiteral("72"), QStringLiteral("در جريان وصول")},
        {QStringLiteral("73"), QStringLiteral("وصول چک")},
        {QStringLiteral("76"), QStringLiteral("کسر موجودي")},
        {QStringLiteral("77"), QStringLiteral("برگشت از در جريان وصول")},
        {QStringLiteral("78"), QStringLiteral("برگشت چک")},
        {QStringLiteral("79"), QStringLiteral("واخواست چک")},
        {QStringLiteral("80"), QStringLiteral("تسويه چک دريافتي")},
        // Issued cheques (88 also ends the life of a spent received cheque that came back).
        {QStringLiteral("81"), QStringLiteral("پرداخت چك")},
        {QStringLiteral("82"), QStringLiteral("برداشت چک")},
        {QStringLiteral("83"), QStringLiteral("ابطال چک")},
        {QStringLiteral("85"), QStringLiteral("واخواست چک")},
        {QStringLiteral("86"), QStringLiteral("کسر موجودي")},
        {QStringLiteral("87"), QStringLiteral("برگشت چک")},
        {QStringLiteral("88"), QStringLiteral("برگشت از خرج چك")},
        // Received notes.
        {QStringLiteral("A1"), QStringLiteral("دريافت سفته")},
        {QStringLiteral("A2"), QStringLiteral("در جريان وصول")},
        {QStringLiteral("A3"), QStringLiteral("وصول سفته")},
        {QStringLiteral("A6"), QStringLiteral("کسر موجودي")},
        {QStringLiteral("A7"), QStringLiteral("برگشت از در جريان وصول")},
        {QStringLiteral("A8"), QStringLiteral("برگشت سفته")},
        {QStringLiteral("A9"), QStringLiteral("واخواست سفته")},
        // Issued notes; B5 keeps the trailing blank of its quoted title.
        {QStringLiteral("B0"), QStringLiteral("تسويه سفته پرداختي")},
        {QStringLiteral("B1"), QStringLiteral("پرداخت سفته")},
        {QStringLiteral("B2"), QStringLiteral("برداشت سفته")},
        {QStringLiteral("B5"), QStringLiteral("واخواست سفته ")},
        {QStringLiteral("B6"), QStringLiteral("کسر موجودي")},
        {QStringLiteral("B7"), QStringLiteral("ابطال سفته")},
        {QStringLiteral("B8"), QStringLiteral("برگشت سفته")},
        // Currency revaluation.
        {QStringLiteral("T1"), QStringLiteral("تسعير ارز")},
    };
    return kinds;
}

QString documentKindName(const QString& code) {
    for (const DocumentKind& kind : documentKinds()) {
        if (kind.code == code) return kind.name;
    }
    return {};
}

void loadDocumentKinds(tr::db::Connection& company) {
    QStringList rows;
    for (const DocumentKind& kind : documentKinds()) {
        rows << QStringLiteral("(") + company.text(kind.code) + QStringLiteral(", ") +
                    company.text(kind.name) + QStringLiteral(")");
    }
    company.execute(QStringLiteral("Insert Into N_AsnadNaghd (WhatDoc, NDocNam) Values ") +
                    rows.join(QStringLiteral(", ")));
}

}  // namespace tr::schema
