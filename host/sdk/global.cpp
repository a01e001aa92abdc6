#include "host/sdk/global.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace tr::sdk {

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

Global demoGlobal(const QStringList& formKeys) {
    Global g;
    g.userNumber = 1;
    g.userName = QStringLiteral("مدير");
    g.computerName = QSysInfo::machineHostName();
    g.rights = fullRights(formKeys);
    g.sessionText = QStringLiteral("U1_");
    g.defaultCaption = QStringLiteral("خزانه داري");
    g.fiscalStart = QStringLiteral("1403/01/01");
    g.fiscalEnd = QStringLiteral("1403/12/30");
    g.sCode = QStringLiteral("1");
    g.sYear = QStringLiteral("1403");
    g.tafsilyGroupLength = 2;
    g.tafsily2GroupLength = 2;
    g.projectGroupLength = 2;
    g.tafsily2LevelName = QStringLiteral("تفصيلي دو");
    g.projectLevelName = QStringLiteral("پروژه");
    g.hostFolder =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    return g;
}

}  // namespace tr::sdk
