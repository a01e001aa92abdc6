#pragma once
// The demo company with the document procedures registered and the session of one user (or of
// several, each on a connection of its own), for tests that drive serials and documents.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "common/db/query.h"
#include "common/session/services.h"
#include "db/procedures/procedures.h"
#include "db/schema/tests/demo_fixture.h"
#include "tests/support/recording_message_dialog.h"
#include "tests/support/test_session.h"

namespace tr::vouchers::testing {

using tr::schema::testing::rowCount;
using tr::schema::testing::scalar;

// One logged-in user with every right on the cash receipt.
struct Session : tr::test::TestSession {
    Session(tr::db::Connection& connection, int user, const QString& name)
        : TestSession(connection, user, name, tr::fullRights({QStringLiteral("N_A_CASHGET_")})) {}
};

class VoucherTest : public tr::schema::testing::DemoCompanyTest {
  protected:
    static void SetUpTestSuite() {
        DemoCompanyTest::SetUpTestSuite();
        for (const auto& p : tr::procedures::allProcedures())
            books().procedures().addProcedure(p.name, p.body);
        for (const auto& f : tr::procedures::allFunctions())
            books().procedures().addFunction(f.name, f.body);
    }

    // Every test starts without documents, holds or log rows.
    void SetUp() override {
        DemoCompanyTest::SetUp();
        for (const char* sql :
             {"Delete From Asnad Where TypeSys='N'", "Delete From N_NaghdTrans",
              "Delete From N_ArzTrans", "Delete From Reserveid", "Delete From N_reserveid",
              "Delete From ASNADACTIONS", "Delete From R_ForoshRelatedNaghd"})
            company().execute(QString::fromUtf8(sql));
        admin = std::make_unique<Session>(company(), 1, QStringLiteral("admin"));
    }
    void TearDown() override { admin.reset(); }

    static QVariant value(const QString& sql) { return scalar(company(), sql); }
    static int rows(const QString& sql) { return rowCount(company(), sql); }

    // A saved document line as the procedures would leave it (serial tests need no voucher).
    static void insertDocumentLine(const QString& kind, int serial, int raj = 1) {
        company().execute(
            QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj) Values (") +
            tr::db::sqlText(kind) + QStringLiteral(", ") + tr::db::sqlNumber(serial) +
            QStringLiteral(", ") + tr::db::sqlNumber(raj) + QStringLiteral(")"));
    }

    // Every voucher of the module, and every cancellation voucher, has equal debits and credits.
    static ::testing::AssertionResult ledgerBalances() {
        const auto result = company().execute(QStringLiteral(
            "Select SanadNo, DocToDate, Sum(Bed), Sum(Bes) From Asnad Where TypeSys='N' "
            "Group By SanadNo, DocToDate"));
        for (const auto& row : result.resultSets.front().rows)
            if (std::fabs(row[2].toDouble() - row[3].toDouble()) > 0.005)
                return ::testing::AssertionFailure()
                       << "voucher " << row[0].toLongLong() << " debits " << row[2].toDouble()
                       << " credits " << row[3].toDouble();
        return ::testing::AssertionSuccess();
    }

    std::unique_ptr<Session> admin;
};

}  // namespace tr::vouchers::testing
