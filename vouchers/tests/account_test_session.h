#pragma once
// The demo company on the embedded engine with a session around it: the command query, a
// recording message dialog and a recording pick list, and the session record of user 1.
#include <QVariantMap>

#include "common/db/query.h"
#include "common/session/services.h"
#include "db/schema/tests/demo_fixture.h"
#include "tests/support/recording_message_dialog.h"
#include "tests/support/recording_pick_list.h"

namespace tr::vouchers::testing {

inline tr::Global demoSession() {
    tr::Global g;
    g.userNumber = 1;
    g.sessionText = QStringLiteral("T1_");
    g.sCode = QStringLiteral("1");
    g.sYear = QStringLiteral("1404");
    g.fiscalStart = QStringLiteral("1404/01/01");
    g.fiscalEnd = QStringLiteral("1404/12/29");
    g.tafsilyGroupLength = tr::schema::demo::kDetailGroupLength;
    g.tafsily2GroupLength = tr::schema::demo::kTafsily2GroupLength;
    g.projectGroupLength = tr::schema::demo::kProjectGroupLength;
    g.tafsily2LevelName = QStringLiteral("تفصيلي دو");
    g.projectLevelName = QStringLiteral("پروژه");
    return g;
}

class SessionTest : public tr::schema::testing::DemoCompanyTest {
  protected:
    void SetUp() override {
        DemoCompanyTest::SetUp();
        commandQuery.setConnection(&company());
        database.CommandQuery = &commandQuery;
        database.Connection = &company();
        pickList.setConnection(&company());
        services.global = &global;
        services.database = &database;
        services.dialog = &dialog;
        services.pickList = &pickList;
    }

    QStringList messages() const {
        QStringList texts;
        for (const auto& shown : dialog.shown()) texts << shown.text;
        return texts;
    }
    QVariant scalar(const QString& sql) { return tr::schema::testing::scalar(company(), sql); }
    // A ## table shaped like a document line, with one empty row open for editing.
    void openLine(tr::db::Query& line, const QString& table) {
        company().execute(QStringLiteral("Create Table ") + table +
                          QStringLiteral(" (Koll Varchar(3), Moein Varchar(4), Tafsily Varchar(5), "
                                         "Tafsily2 Varchar(5), ProjectCod Varchar(10), "
                                         "Des NVarchar(200), ManabehCod Varchar(5))"));
        line.setConnection(&company());
        line.setSql(QStringLiteral("Select * From ") + table);
        line.Open();
        line.Append();
    }

    tr::Global global = demoSession();
    tr::db::Query commandQuery;
    tr::db::MyDatabase database;
    tr::test::RecordingMessageDialog dialog;
    tr::test::RecordingPickList pickList;
    tr::Services services;
};

}  // namespace tr::vouchers::testing
