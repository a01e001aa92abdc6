#include "host/sdk/global.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace tr::sdk {

Global demoGlobal(const QStringList& formKeys) {
    Global g;
    g.userNumber = 1;
    g.userName = QStringLiteral("مدير");
    g.computerName = QSysInfo::machineHostName();
    g.rights = fullRights(formKeys);
    g.sessionText = QStringLiteral("U1_");
    g.defaultCaption = QStringLiteral("خزانه داري");
    g.fiscalStart = QStringLiteral("1404/01/01");
    g.fiscalEnd = QStringLiteral("1404/12/29");
    g.sCode = QStringLiteral("1");
    g.sYear = QStringLiteral("1404");
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
