#pragma once
// The demo company on the embedded engine with the shared test session: the services a screen's
// logic receives (recording message dialog, command query, a session text for ## tables).
#include <QStringList>

#include "common/session/services.h"
#include "db/schema/tests/demo_fixture.h"
#include "tests/support/test_session.h"

namespace tr::currency::testing {

class CurrencyTest : public tr::schema::testing::DemoCompanyTest {
  protected:
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

    tr::test::TestSession session{company()};
    tr::test::RecordingMessageDialog& dialog = session.dialog;
    tr::Global& global = session.global;
    tr::db::MyDatabase& database = session.database;
    tr::Services& services = session.services;
};

}  // namespace tr::currency::testing
