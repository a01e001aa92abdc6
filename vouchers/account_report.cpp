#include "vouchers/account_report.h"

#include <QDir>
#include <QLibrary>
#include <QObject>

namespace tr::vouchers {

QString accountReportFolder(const QString& hostFolder) {
    return QDir(hostFolder).filePath(QStringLiteral("DLLS/Corvask"));
}

QString turnoverFilter(const LineAccount& line, AccountLevel level) {
    if (level == AccountLevel::None || line.code(level).isEmpty()) {
        level = AccountLevel::None;
        for (AccountLevel l : {AccountLevel::Project, AccountLevel::Tafsily2, AccountLevel::Tafsily,
                               AccountLevel::Moein, AccountLevel::Koll}) {
            if (!line.code(l).isEmpty()) {
                level = l;
                break;
            }
        }
    }
    switch (level) {
        case AccountLevel::Koll:
            return QStringLiteral("K=") + line.koll;
        case AccountLevel::Moein:
            return QStringLiteral("M=(K=") + line.koll + QStringLiteral("),(M=") + line.moein +
                   QStringLiteral(")");
        case AccountLevel::Tafsily:
            return QStringLiteral("T1=") + line.tafsily;
        case AccountLevel::Tafsily2:
            return QStringLiteral("T2=") + line.tafsily2;
        case AccountLevel::Project:
            return QStringLiteral("P=") + line.projectCod;
        case AccountLevel::None:
            break;
    }
    return {};
}

QString periodCondition(const QString& from, const QString& to) {
    return QStringLiteral("COND=SANADDATE;FR=") + from.trimmed() + QStringLiteral(";TO=") +
           to.trimmed() + QStringLiteral(";");
}

QString accountReportFilter(const QString& accountFilter, const QString& condition) {
    if (accountFilter.isEmpty() || condition.isEmpty()) return accountFilter;
    return accountFilter + QLatin1Char(';') + condition;
}

bool showAccountReport(const tr::Services& services, QWidget* parent, const QString& filter,
                       AccountReportKind kind) {
    if (filter.isEmpty()) return false;
    QLibrary library(QDir(accountReportFolder(services.global->hostFolder))
                         .filePath(QLatin1String(kAccountReportLibrary)));
    if (!library.load()) return false;
    const auto report =
        reinterpret_cast<ReportHesabCorvask>(library.resolve("ReportHesab_Corvask"));
    if (!report) return false;
    report(parent, services.global, services.myDate, services.database,
           dynamic_cast<QObject*>(services.pickList), dynamic_cast<QObject*>(services.progress),
           dynamic_cast<QObject*>(services.dialog),
           reinterpret_cast<const char16_t*>(filter.utf16()), static_cast<int>(kind));
    return true;
}

}  // namespace tr::vouchers
