#pragma once
// The demo company with the real document procedures and one logged-in user whose message box
// and pick list record; helpers that fill a screen's header and lines the way a user does.
#include <gtest/gtest.h>

#include <memory>

#include "cashbank/documents/cash_bank_document.h"
#include "common/db/query.h"
#include "common/session/services.h"
#include "db/procedures/procedures.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "db/schema/tests/demo_fixture.h"
#include "tests/support/recording_message_dialog.h"
#include "tests/support/test_session.h"
#include "tests/support/recording_pick_list.h"

namespace tr::cashbank::testing {

using tr::schema::testing::rowCount;
using tr::schema::testing::scalar;
namespace demo = tr::schema::demo;

inline QString s(const char* utf8) {
    return QString::fromUtf8(utf8);
}

using Session = tr::test::TestSession;

// Every right on the six screens.
inline QString allRights() {
    QStringList keys;
    for (const CashBankScreen& screen : cashBankScreens()) keys << screen.kind().formKey;
    return tr::fullRights(keys);
}

class DocumentsTest : public tr::schema::testing::DemoCompanyTest {
  protected:
    static void SetUpTestSuite() {
        DemoCompanyTest::SetUpTestSuite();
        for (const auto& p : tr::procedures::allProcedures())
            books().procedures().addProcedure(p.name, p.body);
        for (const auto& f : tr::procedures::allFunctions())
            books().procedures().addFunction(f.name, f.body);
    }

    void SetUp() override {
        DemoCompanyTest::SetUp();
        for (const char* sql : {"Delete From Asnad Where TypeSys='N'", "Delete From N_NaghdTrans",
                                "Delete From N_ArzTrans", "Delete From Reserveid",
                                "Delete From N_reserveid", "Delete From ASNADACTIONS",
                                "Delete From R_ForoshRelatedNaghd", "Delete From Grid_State"})
            company().execute(QString::fromUtf8(sql));
        admin = std::make_unique<Session>(company(), demo::kAdminUserId, s(demo::kAdminUserName),
                                          allRights());
    }
    void TearDown() override { admin.reset(); }

    static QVariant value(const QString& sql) { return scalar(company(), sql); }
    static int rows(const QString& sql) { return rowCount(company(), sql); }
    static ::testing::AssertionResult ledgerIsConsistent() {
        return tr::procedures::testing::ledgerIsConsistent(company());
    }

    // A shown screen of the given kind for the admin.
    std::unique_ptr<CashBankDocument> open(ScreenId id, Session* session = nullptr) {
        auto screen =
            std::make_unique<CashBankDocument>((session ? session : admin.get())->services, id);
        screen->show(QStringLiteral("pnlScreens"));
        return screen;
    }

    // The treasury side a screen of each kind is tested with (bank accounts by their number).
    static QString treasuryCode(const CashBankScreen& screen) {
        switch (screen.kind().treasuryObject) {
            case tr::vouchers::TreasuryObject::CashBox:
                return s(demo::kRialCashBox);
            case tr::vouchers::TreasuryObject::PettyCashHolder:
                return s(demo::kPettyCashHolder);
            case tr::vouchers::TreasuryObject::BankAccount:
                return s(demo::kMelliAccountCod);
        }
        return {};
    }

    // The header as the user types it: serial box entered, date, number, treasury side, amount.
    static void fillHeader(CashBankDocument& screen, double amount, const QString& code = {}) {
        screen.serialEnter();
        screen.dayLeave(QStringLiteral("5"));
        screen.monthLeave(QStringLiteral("3"));
        screen.setYear(QStringLiteral("1404"));
        screen.setReferenceNumber(QStringLiteral("7001"));
        if (screen.screen().hasJoz) screen.setJoz(QStringLiteral("2"));
        screen.treasuryCodeEntered(code.isEmpty() ? treasuryCode(screen.screen()) : code);
        screen.setDescription(QStringLiteral("بابت فروش"));
        screen.setAmountText(QString::number(amount, 'f', 0));
    }

    // A counter line on the capital account, typed into a new grid row and posted.
    static bool addLine(CashBankDocument& screen, double amount,
                        const QString& des = QStringLiteral("شرح رديف")) {
        screen.appendLine();
        tr::db::Query& grid = screen.grid();
        grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kCapitalKoll));
        grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kCapitalMoein));
        grid.FieldByName(QStringLiteral("Des")).SetAsString(des);
        grid.FieldByName(tr::vouchers::sideColumn(screen.screen().kind().gridSide()))
            .SetAsFloat(amount);
        return screen.postLine();
    }

    std::unique_ptr<Session> admin;
};

}  // namespace tr::cashbank::testing
