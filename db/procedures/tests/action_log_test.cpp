// The action log and the company's voucher numbering, through the engine on a fresh demo company.
#include <gtest/gtest.h>

#include "db/procedures/tests/procedures_fixture.h"

namespace tr::procedures::testing {
namespace {

class ActionLogTest : public ProceduresTest {};

TEST_F(ActionLogTest, TheLogStatementWritesOneRowInTheLogsColumns) {
    db().execute(QString::fromUtf8(
        "Exec sp_Asnad_Actions '17','N','دريافت صندوق','1404/02/10','admin','E', '10:42:05',"
        "'PC-01','10','' ,'','23'"));
    const auto log = rows(QStringLiteral(
        "Select TypeSys, TypeDoc, ActDate, ActUser, ActType, DocNo, ActTime, REC, ComputerName "
        "From ASNADACTIONS Where DocNo = '17'"));
    ASSERT_EQ(log.rows.size(), 1u);
    QStringList got;
    for (const QVariant& v : log.rows[0]) got << v.toString();
    EXPECT_EQ(got, QStringList({"N", QString::fromUtf8("دريافت صندوق"), "1404/02/10", "admin", "E",
                                "17", "10:42:05", "23", "PC-01"}));

    EXPECT_THROW(db().execute(QStringLiteral(
                     "Exec sp_Asnad_Actions '17','N','x','1404/02/10','admin','X','10:42:05',"
                     "'PC-01','10','','','23'")),
                 tr::db::DatabaseError);
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From ASNADACTIONS")).toInt(), 1);
}

// Voucher numbers are shared with the suite's other subsystems and compared as numbers.
TEST_F(ActionLogTest, VoucherNumbersFollowTheWholeLedgerNumerically) {
    EXPECT_EQ(value(QStringLiteral("Select dbo.sp_M_Asnad_GetMaxSanadNo()")).toLongLong(), 1);
    for (int number : {9, 10}) {
        db().execute(QStringLiteral("Insert Into Asnad (TypeSys, SanadNo, SanadDate, Raj, Koll, "
                                    "Moein, Bed, Bes) Values ('A', ") +
                     tr::db::sqlNumber(number) +
                     QStringLiteral(", '1404/01/05', 1, '301', '0001', 0, 0)"));
    }
    EXPECT_EQ(value(QStringLiteral("Select dbo.sp_M_Asnad_GetMaxSanadNo()")).toLongLong(), 11);

    const QString table = transferTable(QStringLiteral("N_A_NUMBER"));
    fill(table, QStringLiteral("Bes"),
         {accountLine("104", "0001", "30001", "51001", "P0001", QString::fromUtf8("بابت فاکتور"),
                      1000)});
    Header h;
    h.code = QStringLiteral("1");
    save(QStringLiteral("sp_N_Asnad_Trans_CashGet"), table, 1, h);
    EXPECT_EQ(voucherNumber(QStringLiteral("10"), 1), 11);
    call(QStringLiteral("sp_N_Asnad_Trans_CashGet"), QStringLiteral("ABTAL"),
         {table,
          QStringLiteral("1"),
          QStringLiteral("1"),
          {},
          {},
          QStringLiteral("1404/02/11"),
          {},
          QStringLiteral("admin"),
          {}});
    EXPECT_EQ(value(QStringLiteral("Select SanadNo From Asnad Where DocToDate = '1'")).toLongLong(),
              12);
}

}  // namespace
}  // namespace tr::procedures::testing
