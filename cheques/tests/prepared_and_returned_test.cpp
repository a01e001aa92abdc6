// The received-cheque window's "انتخاب چک" (prepared cheques into the receipt) and the report of
// a counterparty's returned cheques; screenshots of the prepared list and of the report are left
// in screens/.
#include <gtest/gtest.h>

#include <QDir>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTest>

#include "cheques/prepared_cheques.h"
#include "cheques/received_actions.h"
#include "cheques/ui/chq_get_form.h"
#include "cheques/ui/returned_cheques_form.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "host/sdk/temp_grid_form.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class PreparedAndReturnedTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"),
            tr::fullRights({QStringLiteral("N_A_CHQGET_"), QStringLiteral("N_A_CHQACTION_")}));
        QDir().mkpath(QStringLiteral(TR_SCREENS_DIR));
    }
    void TearDown() override { session.reset(); }
    QString cell(tr::db::Query& q, const char* field) {
        return q.FieldByName(QString::fromLatin1(field)).AsString().trimmed();
    }
    std::unique_ptr<tr::test::TestSession> session;
};

TEST_F(PreparedAndReturnedTest, APreparedGuaranteeChequeArrivesFlaggedAndAReceivedOneIsNoLongerOffered) {
    // The book holds two prepared cheques, 552201 plain and 552202 a guarantee one.
    tr::sdk::TTempGridForm list;
    list.setConnection(&company());
    list.setTitle(kPreparedChequesTitle);
    list.setSql(preparedChequesSql());
    QList<tr::sdk::TTempGridForm::Column> columns;
    for (const auto& c : preparedChequeColumns()) columns << tr::sdk::TTempGridForm::Column{c.field, c.caption, c.width};
    list.setColumns(columns);
    list.load();
    EXPECT_EQ(list.rowCount(), 2);
    list.resize(1000, 300);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    EXPECT_TRUE(list.grab().save(QStringLiteral(TR_SCREENS_DIR "/prepared_cheques.png")));
    list.hide();

    QWidget container;
    container.resize(1100, 600);
    TChqGetForm form(session->services, &container);
    form.resize(1100, 600);
    container.show();
    form.show();
    auto* button = form.findChild<QPushButton*>(QStringLiteral("btnPreparedCheques"));
    ASSERT_NE(button, nullptr);
    session->pickList.chooseWhere(QStringLiteral("ChqNo"), QStringLiteral("552202"));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(session->pickList.last().title, kPreparedChequesTitle);
    tr::db::Query& row = form.document().cheques();
    EXPECT_EQ(cell(row, "ChqNo"), QStringLiteral("552202"));
    EXPECT_EQ(cell(row, "Joz"), QStringLiteral("45"));
    EXPECT_EQ(cell(row, "Tazmin"), QStringLiteral("ض"));
    EXPECT_EQ(cell(row, "Havaleh"), QString());
    EXPECT_DOUBLE_EQ(row.FieldByName(QStringLiteral("ChqValue")).AsFloat(), 5000000);
    EXPECT_EQ(cell(row, "BankCod"), QStringLiteral("02"));
    EXPECT_EQ(cell(row, "AcountCod"), QStringLiteral("8800112233"));

    // Once a receipt holds 552201, only 552202 is offered.
    receiveCheques({{QStringLiteral("552201"), QStringLiteral("45"), 15000000}}, 1);
    EXPECT_EQ(tr::db::openQuery(company(), preparedChequesSql()).RecordCount(), 1);
}

TEST_F(PreparedAndReturnedTest, TheReturnedChequesReportListsTheCounterpartysReturnedChequesOnly) {
    receiveCheques({{QStringLiteral("701"), QStringLiteral("S"), 1200000},
                    {QStringLiteral("702"), QStringLiteral("S"), 800000}},
                   1);
    ReceivedChequeActions actions(session->services);
    actions.fill();
    tr::db::Query& rows = actions.rows();
    for (rows.First(); !rows.Eof(); rows.Next())
        if (cell(rows, "ChqNo") == QLatin1String("701")) break;
    ASSERT_TRUE(actions.chooseAction(QStringLiteral("برگشت چک"))) << session->dialog.last().text.toStdString();
    ASSERT_TRUE(actions.setActionDate(QStringLiteral("1404/03/01")));
    ASSERT_TRUE(actions.apply()) << session->dialog.last().text.toStdString();

    tr::vouchers::LineAccount customer{QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    TChqGetReturnedForm report(session->services, customer);
    report.resize(1150, 360);
    report.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&report));
    EXPECT_TRUE(report.windowTitle().startsWith(QStringLiteral("چکهاي برگشتي  (تفصيلي : '")));
    ASSERT_EQ(report.rows().RecordCount(), 1);
    report.rows().First();
    EXPECT_EQ(cell(report.rows(), "ChqNo"), QStringLiteral("701"));
    EXPECT_DOUBLE_EQ(report.rows().FieldByName(QStringLiteral("ChqValue")).AsFloat(), 1200000);
    EXPECT_EQ(cell(report.rows(), "BankCod"), QStringLiteral("01"));
    EXPECT_EQ(cell(report.rows(), "SarResidDate"), QStringLiteral("1404/05/01"));
    EXPECT_TRUE(report.grab().save(QStringLiteral(TR_SCREENS_DIR "/returned_cheques.png")));
    const QString pdf = QDir(QStringLiteral(TR_SCREENS_DIR)).filePath(QStringLiteral("returned_cheques.pdf"));
    EXPECT_TRUE(report.printClick(pdf));

    // Another account has none.
    TChqGetReturnedForm other(session->services, {QStringLiteral("202"), QStringLiteral("0001"), {}, {}, {}});
    EXPECT_EQ(other.rows().RecordCount(), 0);
}

}  // namespace
}  // namespace tr::cheques
