#include "common/session/global.h"

namespace tr {

QStringList rightMarkers() {
    return {QStringLiteral("_ABTAL(Y)"),    QStringLiteral("_SABT(Y)"),
            QStringLiteral("_EDIT(Y)"),     QStringLiteral("_DEL(Y)"),
            QStringLiteral("_FIRSTCHQ(Y)"), QStringLiteral("_FIRST(Y)"),
            QStringLiteral("_VIEW(Y)"),     QStringLiteral("_OKPRINT(Y)")};
}

QString fullRights(const QStringList& formKeys) {
    QString rights;
    for (const QString& key : formKeys)
        for (const QString& marker : rightMarkers()) rights += key + marker;
    return rights;
}

}  // namespace tr
