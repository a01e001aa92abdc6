// sp_N_Asnad_Trans_ChqMojavez called as a screen calls it, and the payment's 'MOJAVEZ->TRANS': a
// permit written and read back with its components, a missing or duplicate serial refused, a
// locked permit neither rewritten nor deleted (nothing written on a refusal), and a payment's
// work tables filled from a permit.
#include <gtest/gtest.h>

#include "db/procedures/tests/cheque_fixture.h"

namespace tr::procedures::testing {
namespace {

class ChequePermitsTest : public ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        for (const char* sql : {"Delete From N_MojavezTrans", "Delete From N_MOJAVEZCHQ", "Delete From N_MojavezFact"})
            db().execute(QString::fromUtf8(sql));
        remake(QStringLiteral("##PM1Bed"), tr::instruments::paymentChequeWorkTableColumns());
        remake(QStringLiteral("##PM1_Taraf"), tr::instruments::counterpartyWorkTableColumns());
        remake(QStringLiteral("##PM1_Fact"), QStringLiteral("PMojavezCod Varchar(5) Null, PMojavezNam NVarchar(100) Null, "
                                                            "Sign Varchar(1) Null, Nerkh Float Null, FactValue Float Null"));
        db().execute(QStringLiteral("Insert Into ##PM1Bed (Raj, ChqStateNam, AcountID, Joz, ChqNo, ChqValue, SarResidDate, "
                                    "ChqGetter, Des, Koll, Moein) Values (0, 'صدور چك', 1, '12', '100033', 500000, "
                                    "'1404/03/01', 'شرکت تامين', 'پيش پرداخت', '201', '0001')"));
        db().execute(QStringLiteral("Insert Into ##PM1_Taraf (Raj, WhatDoc2, Koll, Moein, Tafsily, Joz, ChqNo, ChqValue, Des) "
                                    "Values (1, '01', '202', '0001', '30001', '12', '100033', 500000, 'بابت')"));
        db().execute(QStringLiteral("Insert Into ##PM1_Fact Values ('01', 'مبلغ قرارداد', '+', 0, 500000), "
                                    "('02', 'کسر حسن انجام کار', '+', 0, 0)"));
    }
    static void permit(const QString& mode, const QString& serial, const QString& state = QStringLiteral("NEW")) {
        db().execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqMojavez ") + db().text(mode) + QStringLiteral(", 'PM1', ") +
                     db().text(serial) + QStringLiteral(", '1404/02/10', 'admin', ") + db().text(state));
    }
    static qint64 count(const QString& sql) { return value(sql).toLongLong(); }
};

TEST_F(ChequePermitsTest, APermitIsWrittenReadBackAndRefusedWhereItMayNotChange) {
    permit(QStringLiteral("TRANS->DB"), QStringLiteral("3"));
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ Where Serial = 3"), 2);
    EXPECT_EQ(count("Select Count(*) From N_MojavezFact Where Serial = 3"), 1);  // the nil component left out
    EXPECT_EQ(value("Select MojavezValue From N_MOJAVEZCHQ Where ChqOrTaraf = 1").toDouble(), 500000);
    EXPECT_EQ(refusal([] { permit(QStringLiteral("TRANS->DB"), QStringLiteral("3")); }),
              QStringLiteral("مجوز پرداخت چك با اين شماره ثبت شده است."));
    EXPECT_EQ(refusal([] { permit(QStringLiteral("DB->TRANS"), QStringLiteral("4")); }),
              QStringLiteral("اين شماره مجوز پرداخت چك در دسترس نمي باشد"));
    permit(QStringLiteral("DB->TRANS"), QStringLiteral("3"));
    EXPECT_EQ(count("Select Count(*) From ##PM1Bed Where AcountCod = '0101234567' And IsChange = '0'"), 1);
    EXPECT_EQ(count("Select Count(*) From ##PM1_Fact"), 1);
    // Approved: an edit and a delete are refused and write nothing.
    db().execute(QStringLiteral("Update N_MojavezTrans Set ModirMaleDate = '1404/02/11'"));
    const QString before = snapshot({"N_MojavezTrans", "N_MOJAVEZCHQ", "N_MojavezFact"});
    for (const char* mode : {"TRANS->DB", "DELETE"}) {
        EXPECT_EQ(refusal([&] { permit(QString::fromLatin1(mode), QStringLiteral("3"), QStringLiteral("EDIT")); }),
                  QStringLiteral("سريال مجوز دستور پرداخت توسط مدير مالي تاييد شده است."));
    }
    EXPECT_EQ(snapshot({"N_MojavezTrans", "N_MOJAVEZCHQ", "N_MojavezFact"}), before);
    db().execute(QStringLiteral("Update N_MojavezTrans Set ModirMaleDate = ''"));
    permit(QStringLiteral("DELETE"), QStringLiteral("3"));
    EXPECT_EQ(count("Select Count(*) From N_MOJAVEZCHQ"), 0);
}

TEST_F(ChequePermitsTest, APaymentTakesAPermitsRowsAsNewRows) {
    permit(QStringLiteral("TRANS->DB"), QStringLiteral("5"));
    const QString pay = QStringLiteral("Exec sp_N_Asnad_Trans_ChqPay 'MOJAVEZ->TRANS', 'PM1', '%1', '', '', ''");
    EXPECT_EQ(refusal([&] { db().execute(pay.arg(6)); }), QStringLiteral("دستور مجوز پرداختي با اين سريال ثبت نشده است."));
    db().execute(pay.arg(5));
    EXPECT_EQ(count("Select Count(*) From ##PM1Bed Where IDX Is Null And IsChange = '1' And MojavezValue = 500000"), 1);
    EXPECT_EQ(count("Select Count(*) From ##PM1_Taraf Where Koll = '202' And ChqValue = 500000"), 1);
}

}  // namespace
}  // namespace tr::procedures::testing
