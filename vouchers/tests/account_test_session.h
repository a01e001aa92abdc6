#pragma once
// The demo company on the embedded engine with the shared test session around it (command query,
// recording message dialog and pick list), its session record set up for the demo chart.
#include <QVariantMap>

#include "common/db/query.h"
#include "common/session/services.h"
#include "db/schema/tests/demo_fixture.h"
#include "tests/support/test_session.h"

namespace tr::vouchers::testing {

// User 1 of the demo company as the chart-of-accounts tests need it: the chart's group lengths
// and level names on top of the shared test session.
inline void useDemoChart(tr::Global& g) {
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
}

class SessionTest : public tr::schema::testing::DemoCompanyTest {
  protected:
    SessionTest() { useDemoChart(global); }

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

    tr::test::TestSession session{company()};
    tr::Global& global = session.global;
    tr::db::Query& commandQuery = session.command;
    tr::db::MyDatabase& database = session.database;
    tr::test::RecordingMessageDialog& dialog = session.dialog;
    tr::test::RecordingPickList& pickList = session.pickList;
    tr::Services& services = session.services;
};

}  // namespace tr::vouchers::testing
