// The AccountReport library's call, against a stand-in library: the fixed-descriptions screen's
// account filter and kind travel as they always did, and a document screen's period condition
// and detail kind ride along as the library expects them.
#include "vouchers/account_report.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QWidget>

#include "vouchers/fix_des_screen.h"
#include "vouchers/tests/account_test_session.h"

namespace tr::vouchers {
namespace {

class AccountReportTest : public testing::SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        // The stand-in sits in <host>/DLLS/Corvask/.
        global.hostFolder = QDir::cleanPath(QStringLiteral(TR_FAKE_ACCOUNT_REPORT_DIR "/../.."));
    }
    QWidget container;
};

TEST_F(AccountReportTest, TheFixedDescriptionsScreenSendsItsAccountAloneAsATurnover) {
    FixDesScreen screen(services);
    screen.show();
    screen.grid().First();
    const QString koll = screen.grid().FieldByName(QStringLiteral("Koll")).AsString().trimmed();
    ASSERT_TRUE(screen.showTurnover(QStringLiteral("Koll"), &container));
    EXPECT_EQ(container.property("reportFilter").toString(), QStringLiteral("K=") + koll);
    EXPECT_EQ(container.property("reportKind").toInt(), 1);
    EXPECT_EQ(container.property("reportGlobal").value<quintptr>(),
              reinterpret_cast<quintptr>(&global));
    EXPECT_EQ(container.property("reportDatabase").value<quintptr>(),
              reinterpret_cast<quintptr>(&database));
}

TEST_F(AccountReportTest, ADocumentsPeriodFollowsTheAccountAndTheDetailKindIsTwo) {
    const QString filter =
        accountReportFilter(QStringLiteral("M=(K=103),(M=0001)"),
                            periodCondition(global.fiscalStart, global.fiscalEnd));
    EXPECT_EQ(filter,
              QStringLiteral("M=(K=103),(M=0001);COND=SANADDATE;FR=1404/01/01;TO=1404/12/29;"));
    ASSERT_TRUE(showAccountReport(services, &container, filter, AccountReportKind::Detail));
    EXPECT_EQ(container.property("reportFilter").toString(), filter);
    EXPECT_EQ(container.property("reportKind").toInt(), 2);
    // A row without an account asks for nothing.
    EXPECT_EQ(accountReportFilter(QString(), periodCondition(global.fiscalStart, global.fiscalEnd)),
              QString());
    EXPECT_FALSE(showAccountReport(services, &container, QString()));
}

}  // namespace
}  // namespace tr::vouchers
