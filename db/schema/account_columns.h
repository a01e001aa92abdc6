#pragma once
// The five account-code columns (Koll Varchar(3), Moein Varchar(4), Tafsily Varchar(5),
// Tafsily2 Varchar(5), ProjectCod Varchar(10)) as DDL text, optionally prefixed (JKoll, VaKoll...).
#include <QString>

namespace tr::schema::detail {

// "<p>Koll Varchar(3) Null, ..., <p>ProjectCod Varchar(10) Null" with the given default clause
// (e.g. " Default ''") after each type; no trailing comma.
inline QString accountColumns(const QString& prefix = QString(),
                              const QString& defaultClause = QString()) {
    const QString tail = QStringLiteral(" Null") + defaultClause;
    return prefix + QStringLiteral("Koll Varchar(3)") + tail + QStringLiteral(", ") + prefix +
           QStringLiteral("Moein Varchar(4)") + tail + QStringLiteral(", ") + prefix +
           QStringLiteral("Tafsily Varchar(5)") + tail + QStringLiteral(", ") + prefix +
           QStringLiteral("Tafsily2 Varchar(5)") + tail + QStringLiteral(", ") + prefix +
           QStringLiteral("ProjectCod Varchar(10)") + tail;
}

}  // namespace tr::schema::detail
