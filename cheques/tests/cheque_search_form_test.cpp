// The cheque search windows as the user works them: the state boxes and F5, totals kept last when
// a title is clicked, the result printed to a PDF; screenshots of both sides are left in screens/.
#include "cheques/ui/search/cheque_search_form.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QTableView>
#include <QTest>

#include "common/ui/dataset_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class ChequeSearchFormTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_SEARCH_")}));
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    }
    void TearDown() override { session.reset(); }

    static QStringList column(ChequeSearchForm& form, const char* field) {
        QStringList values;
        tr::db::Query& q = form.search().result();
        for (q.First(); !q.Eof(); q.Next()) values << q.FieldByName(QString::fromLatin1(field)).AsString().trimmed();
        return values;
    }

    std::unique_ptr<tr::test::TestSession> session;
};

TEST_F(ChequeSearchFormTest, BothSidesListTheirChequesWithTotalsKeptLastAndPrint) {
    receiveCheques({{QStringLiteral("901"), QStringLiteral("S"), 1500000},
                    {QStringLiteral("902"), QStringLiteral("S"), 2500000},
                    {QStringLiteral("903"), QStringLiteral("S"), 700000}},
                   1);
    DocumentCheque leaf{QStringLiteral("100001"), QStringLiteral("12"), 4000000};
    leaf.bankAccount = 1;
    payCheques({{QStringLiteral("903"), QStringLiteral("S"), 700000}, leaf}, 1);

    TChqGetSearchForm received(session->services);
    received.resize(1200, 720);
    received.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&received));
    EXPECT_EQ(received.layoutDirection(), Qt::RightToLeft);
    QTest::keyClick(&received, Qt::Key_F5);
    EXPECT_EQ(column(received, "sOrder"), QStringList({"", "", "", "X", "X", "Y"}));
    // A click on the amount's title sorts the cheques; the totals stay last.
    const int amount = static_cast<tr::ui::DatasetModel*>(received.grid()->model())->fieldColumn(QStringLiteral("SValue"));
    ASSERT_GE(amount, 0);
    emit received.grid()->horizontalHeader()->sectionClicked(amount);
    EXPECT_EQ(column(received, "ChqNo").mid(0, 3), QStringList({"903", "901", "902"}));
    EXPECT_EQ(column(received, "sOrder").mid(3), QStringList({"X", "X", "Y"}));
    EXPECT_TRUE(received.grab().save(QStringLiteral(TR_SCREENS_DIR "/cheque_search_received.png")));

    const QString pdf = QDir(QStringLiteral(TR_SCREENS_DIR)).filePath(QStringLiteral("cheque_search_received.pdf"));
    QFile::remove(pdf);
    EXPECT_TRUE(received.printClick(pdf));
    EXPECT_GT(QFile(pdf).size(), 0);

    // The spent cheque's box cleared leaves it out.
    received.stateBoxes[3]->setChecked(false);
    EXPECT_TRUE(received.searchClick());
    EXPECT_FALSE(column(received, "ChqNo").contains(QStringLiteral("903")));

    TChqPaySearchForm issued(session->services);
    issued.resize(1200, 720);
    issued.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&issued));
    EXPECT_TRUE(issued.searchClick());
    EXPECT_EQ(column(issued, "NDocNam").mid(0, 2).contains(ChequeSearch::kSpentName), true);
    EXPECT_EQ(issued.reportKey(), QStringLiteral("CHEQUE_PAY"));
    EXPECT_TRUE(issued.grab().save(QStringLiteral(TR_SCREENS_DIR "/cheque_search_issued.png")));
}

}  // namespace
}  // namespace tr::cheques
