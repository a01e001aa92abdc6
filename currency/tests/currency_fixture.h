#pragma once
// The demo company on the embedded engine with the session services a screen's logic receives:
// a recording message dialog, the command query and a session text for ## tables.
#include <QStringList>

#include "common/session/services.h"
#include "db/schema/tests/demo_fixture.h"
#include "tests/support/recording_message_dialog.h"

namespace tr::currency::testing {

class CurrencyTest : public tr::schema::testing::DemoCompanyTest {
  protected:
    void SetUp() override {
        DemoCompanyTest::SetUp();
        commandQuery.setConnection(&company());
        database.CommandQuery = &commandQuery;
        database.Connection = &company();
        global.sessionText = QStringLiteral("U1_");
        services.global = &global;
        services.database = &database;
        services.dialog = &dialog;
    }

    // Adds a currency with quotations "date hour buy sell"; codes are unique per test.
    void addCurrency(const QString& code, const QStringList& quotations,
                     const QString& name = QStringLiteral("ارز آزمايشي")) {
        company().execute(QStringLiteral("Insert Into N_Arz (ArzCod, ArzNam) Values (") +
                          company().text(code) + QStringLiteral(", ") + company().text(name) +
                          QStringLiteral(")"));
        for (const QString& q : quotations) {
            const QStringList p = q.split(QLatin1Char(' '));
            company().execute(
                QStringLiteral("Insert Into N_NerkhArz (ArzCod, DateNerkh, HourNerkh, Buy, Sell) "
                               "Values (") +
                company().text(code.trimmed()) + QStringLiteral(", ") + company().text(p[0]) +
                QStringLiteral(", ") + company().text(p[1]) + QStringLiteral(", ") + p[2] +
                QStringLiteral(", ") + p[3] + QStringLiteral(")"));
        }
    }

    QStringList messages() const {
        QStringList texts;
        for (const auto& shown : dialog.shown()) texts << shown.text;
        return texts;
    }

    tr::test::RecordingMessageDialog dialog;
    tr::db::Query commandQuery;
    tr::db::MyDatabase database;
    tr::Global global;
    tr::Services services;
};

}  // namespace tr::currency::testing
