#include "instruments/cheque_receipt_rule.h"

#include "common/db/query.h"
#include "common/db/query_helpers.h"

namespace tr::instruments {

QString chequeReceiptRefusal(tr::db::Connection& c, const QString& number, const QString& series,
                             const QString& issueDate, qint64 ownSerial) {
    const QString cheque = QStringLiteral(" ChqNo = ") + c.text(number) + QStringLiteral(" And IsNull(Joz, '') = ") +
                           c.text(series) + QStringLiteral(" And Not (WhatDoc = '71' And Serial = ") +
                           tr::db::sqlNumber(ownSerial) + QLatin1Char(')');
    if (tr::db::firstColumn(c, QStringLiteral("Select Count(*) From N_ChqLastTrans Where WhatDoc Like '7%' And") + cheque)
            .toLongLong() == 0)
        return {};
    const tr::db::Query latest = tr::db::openQuery(
        c, QStringLiteral("Select Top 1 WhatDoc, SanadDate From N_ChqLastTrans Where") + cheque +
               QStringLiteral(" Order By IDX Desc"));
    if (!latest.IsEmpty() && latest.value(0, 0).toString().trimmed() == QLatin1String("78")) {
        const QString returned = latest.value(0, 1).toString().trimmed();
        if (issueDate > returned) return {};
        return QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ ") + returned + QStringLiteral(" باشد.");
    }
    return QStringLiteral("چك شماره ") + number + QStringLiteral(" با سري") + series +
           QStringLiteral(" قبلا ثبت شده است !");
}

}  // namespace tr::instruments
