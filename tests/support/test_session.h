#pragma once
// A logged-in user of the demo company as the logic sees the host: the session record, the
// database pair on a connection, a recording message dialog and pick list, bundled in Services.
#include "common/db/my_database.h"
#include "common/session/global.h"
#include "common/session/services.h"
#include "db/schema/demo_company.h"
#include "tests/support/recording_message_dialog.h"
#include "tests/support/recording_pick_list.h"

namespace tr::test {

struct TestSession {
    TestSession(tr::db::Connection& connection, int user = 1, const QString& name = QStringLiteral("admin"),
                const QString& rights = QString())
        : command(&connection), pickList(&connection) {
        global.userNumber = user;
        global.userName = name;
        global.computerName = QStringLiteral("PC-") + name;
        global.sessionText = QStringLiteral("U") + QString::number(user) + QStringLiteral("_");
        global.rights = rights;
        global.fiscalStart = QString::fromUtf8(tr::schema::demo::kPeriodStart);
        global.fiscalEnd = QString::fromUtf8(tr::schema::demo::kPeriodEnd);
        global.projectLevelName = QStringLiteral("پروژه");
        database.CommandQuery = &command;
        database.Connection = &connection;
        services.global = &global;
        services.database = &database;
        services.dialog = &dialog;
        services.pickList = &pickList;
    }
    TestSession(const TestSession&) = delete;
    TestSession& operator=(const TestSession&) = delete;

    tr::Global global;
    tr::db::Query command;
    tr::db::MyDatabase database;
    RecordingMessageDialog dialog;
    RecordingPickList pickList;
    tr::Services services;
};

}  // namespace tr::test
