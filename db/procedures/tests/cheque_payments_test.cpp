// The cheque payment's procedure on the demo company: our own leaves from the bank accounts'
// cheque books and received cheques passed on, saved, loaded back and deleted; the leaf rules
// (another account's book named before no book at all, issued before, voided, not a number);
// a spent cheque's amount kept exactly and its receipt frozen; the opening save without voucher.
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "instruments/cheque_work_tables.h"

namespace tr::procedures {
namespace {

using testing::ledgerIsConsistent;

struct PaidCheque {
    QString state;  // "صدور چك" or "خرج چك"
    QString number, series;
    double value = 0;
    qint64 accountId = 1;
};

class ChequePaymentTest : public testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        remake(QStringLiteral("##P81Bed"), tr::instruments::paymentChequeWorkTableColumns());
        remake(QStringLiteral("##P81_Taraf"), tr::instruments::counterpartyWorkTableColumns());
        makeDocumentTables(QStringLiteral("R71"));
    }
    static QString issue() { return QStringLiteral("صدور چك"); }
    static QString spend() { return QStringLiteral("خرج چك"); }
    // The payment's tables: each cheque paid to the supplier's account in full.
    static void fill(const std::vector<PaidCheque>& cheques) {
        db().execute(QStringLiteral("Delete From ##P81Bed"));
        db().execute(QStringLiteral("Delete From ##P81_Taraf"));
        int raj = 0;
        for (const PaidCheque& c : cheques) {
            db().execute(QStringLiteral("Insert Into ##P81Bed (Raj, ChqStateNam, AcountID, Joz, ChqNo, ChqValue, "
                                        "ChqGetter, SarResidDate, Des) Values (%1, %2, %3, %4, %5, %6, 'شرکت تامين', "
                                        "'1404/03/01', 'خريد کالا')")
                             .arg(raj)
                             .arg(db().text(c.state), tr::db::sqlNumber(c.accountId), db().text(c.series),
                                  db().text(c.number), tr::db::sqlNumber(c.value)));
            db().execute(QStringLiteral("Insert Into ##P81_Taraf (Raj, WhatDoc2, Koll, Moein, Tafsily, Joz, ChqNo, "
                                        "ChqValue, Des) Values (%1, '01', '202', '0001', '', %2, %3, %4, 'خريد کالا')")
                             .arg(raj++)
                             .arg(db().text(c.series), db().text(c.number), tr::db::sqlNumber(c.value)));
        }
    }
    static QString pay(const QString& mode, qint64 serial, const QString& state = QStringLiteral("NEW"),
                       const QString& date = QStringLiteral("1404/02/20")) {
        try {
            db().execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqPay ") + db().text(mode) + QStringLiteral(", 'P81', ") +
                         db().text(QString::number(serial)) + QStringLiteral(", ") + db().text(date) +
                         QStringLiteral(", 'admin', ") + db().text(state));
        } catch (const tr::db::DatabaseError& e) {
            return e.message();
        }
        return {};
    }
    // A customer's cheque received on 1404/02/10 onto cheques in hand.
    static void receive(const QString& number, double value, qint64 serial, const QString& guarantee = {}) {
        db().execute(QStringLiteral("Delete From ##R71_Chq"));
        db().execute(QStringLiteral("Delete From ##R71_Taraf"));
        db().execute(QStringLiteral("Insert Into ##R71_Chq (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, "
                                    "ChqGetter, BankCod, ShobehCod, AcountCod, Tazmin) Values (0, '103', '0001', 'ج', ") +
                     db().text(number) + QStringLiteral(", ") + tr::db::sqlNumber(value) +
                     QStringLiteral(", '1404/04/01', 'حامل', '02', '201', '2233', ") + db().text(guarantee) +
                     QLatin1Char(')'));
        db().execute(QStringLiteral("Insert Into ##R71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
                                    "(0, '01', '104', '0002', 'ج', ") +
                     db().text(number) + QStringLiteral(", ") + tr::db::sqlNumber(value) + QLatin1Char(')'));
        db().execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'TRANS->DB', 'R71', ") + db().text(QString::number(serial)) +
                     QStringLiteral(", '1404/02/10', 'admin', 'NEW'"));
    }
    static qint64 count(const QString& sql) { return tr::db::firstColumn(db(), sql).toLongLong(); }
    static double amount(const QString& sql) { return tr::db::firstColumn(db(), sql).toDouble(); }
};

TEST_F(ChequePaymentTest, AnOwnLeafIsCreditedToItsBankAccountAndLoadsBack) {
    fill({{issue(), QStringLiteral("100005"), QStringLiteral("12"), 2500000}});
    ASSERT_EQ(pay(QStringLiteral("TRANS->DB"), 1), QString());
    // The leaf on the account's payable (A) heads, the supplier debited; its state names the account.
    EXPECT_DOUBLE_EQ(amount("Select Bes From Asnad Where WhatDoc = '81' And Koll = '201' And Tafsily = '20001'"), 2500000);
    EXPECT_DOUBLE_EQ(amount("Select Bed From Asnad Where WhatDoc = '81' And Koll = '202'"), 2500000);
    EXPECT_EQ(tr::db::firstColumn(db(), "Select CodWhatDoc From N_ChqLastTrans Where WhatDoc = '81'").toString(),
              QStringLiteral("1"));
    EXPECT_TRUE(ledgerIsConsistent(db()));
    db().execute(QStringLiteral("Delete From ##P81Bed"));
    ASSERT_EQ(pay(QStringLiteral("DB->TRANS"), 1), QString());
    const auto rows = db().execute(QStringLiteral("Select ChqStateNam, AcountID, AcountCod, ChqNo, ChqValue, Koll From "
                                                  "##P81Bed"))
                          .resultSets.front()
                          .rows;
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0][0].toString(), issue());
    EXPECT_EQ(rows[0][1].toLongLong(), 1);
    EXPECT_EQ(rows[0][2].toString().trimmed(), QStringLiteral("0101234567"));
    EXPECT_DOUBLE_EQ(rows[0][4].toDouble(), 2500000);
    EXPECT_EQ(rows[0][5].toString().trimmed(), QStringLiteral("201"));
}

TEST_F(ChequePaymentTest, LeavesAreRefusedOutsideTheAccountsBooksAndOnceIssuedOrVoided) {
    const auto refusalFor = [](const QString& number, const QString& series, qint64 account) {
        fill({{issue(), number, series, 1000, account}});
        return pay(QStringLiteral("TRANS->DB"), 9);
    };
    // Account 2's book is series "7"; leaf 100005 of series "12" is account 1's.
    EXPECT_EQ(refusalFor(QStringLiteral("100005"), QStringLiteral("12"), 2),
              QStringLiteral("تركيب سري و شماره چك مربوط به حساب بانكي انتخاب شده نمي باشد !"));
    EXPECT_EQ(refusalFor(QStringLiteral("999999"), QStringLiteral("12"), 1), QStringLiteral("شماره چك ثبت نشده است."));
    EXPECT_EQ(refusalFor(QStringLiteral("10A005"), QStringLiteral("12"), 1), QStringLiteral("شماره چك ثبت نشده است."));
    EXPECT_EQ(refusalFor(QStringLiteral("100005"), QStringLiteral("12"), 77), QStringLiteral("شماره حساب ثبت نشده است."));
    fill({{issue(), QStringLiteral("100006"), QStringLiteral("12"), 1000}});
    ASSERT_EQ(pay(QStringLiteral("TRANS->DB"), 3), QString());
    EXPECT_EQ(refusalFor(QStringLiteral("100006"), QStringLiteral("12"), 1), QStringLiteral("اين چك در سريال 3 صادر شده است."));
    db().execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('83', '100007', '12', '1404/02/01', '1', 0)"));
    EXPECT_EQ(refusalFor(QStringLiteral("100007"), QStringLiteral("12"), 1),
              QStringLiteral("شماره چك 100007در تاريخ '1404/02/01' ابطال شده است."));
    // The same leaf twice in one document.
    fill({{issue(), QStringLiteral("100008"), QStringLiteral("12"), 1000}, {issue(), QStringLiteral("100008"), QStringLiteral("12"), 1000}});
    EXPECT_EQ(pay(QStringLiteral("TRANS->DB"), 9), QStringLiteral("شماره چك تكراري ميباشد."));
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where Serial = 9"), 0);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

TEST_F(ChequePaymentTest, AReceivedChequeIsSpentAtItsAmountFromWhereItStandsAndFreezesItsReceipt) {
    receive(QStringLiteral("5001"), 1000000, 1);
    receive(QStringLiteral("5002"), 400000, 2, QStringLiteral("ض"));
    fill({{spend(), QStringLiteral("5001"), QStringLiteral("ج"), 999999}});
    EXPECT_EQ(pay(QStringLiteral("TRANS->DB"), 1), QStringLiteral("مبلغ چك خرج شده بايد 1,000,000 باشد."));
    fill({{spend(), QStringLiteral("5002"), QStringLiteral("ج"), 400000}});
    EXPECT_EQ(pay(QStringLiteral("TRANS->DB"), 1), QStringLiteral("چک هاي تضميني را نمي توان انتخاب کرد"));
    fill({{spend(), QStringLiteral("5001"), QStringLiteral("ج"), 1000000}});
    EXPECT_EQ(pay(QStringLiteral("TRANS->DB"), 1, QStringLiteral("NEW"), QStringLiteral("1404/02/09")),
              QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ 1404/02/10 باشد."));
    ASSERT_EQ(pay(QStringLiteral("TRANS->DB"), 1), QString());
    // Off cheques in hand, onto the supplier; its state row names no bank account.
    EXPECT_DOUBLE_EQ(amount("Select Bes From Asnad Where WhatDoc = '81' And Koll = '103' And Moein = '0001'"), 1000000);
    EXPECT_EQ(tr::db::firstColumn(db(), "Select CodWhatDoc From N_ChqLastTrans Where WhatDoc = '81'").toString(), QString());
    EXPECT_DOUBLE_EQ(amount("Select Sum(Bed) - Sum(Bes) From Asnad Where Koll = '103' And Moein = '0001' And AtfCh = '5001'"), 0);
    EXPECT_TRUE(ledgerIsConsistent(db()));
    // Spent once; and its receipt, whose received-side row is still the latest there, is frozen.
    EXPECT_EQ(pay(QStringLiteral("TRANS->DB"), 2), QStringLiteral("اين چك قبلا ثبت شده و گردش پيدا كرده است."));
    try {
        db().execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet 'DELETE_DOREH', '', '1', '', '', ''"));
        ADD_FAILURE() << "the receipt of a spent cheque was deleted";
    } catch (const tr::db::DatabaseError& e) {
        EXPECT_TRUE(e.message().startsWith(QStringLiteral("آخرين گردش چك شماره 5001"))) << e.message().toStdString();
    }
    // The payment loads the cheque back as passed on.
    db().execute(QStringLiteral("Delete From ##P81Bed"));
    ASSERT_EQ(pay(QStringLiteral("DB->TRANS"), 1), QString());
    EXPECT_EQ(tr::db::firstColumn(db(), "Select ChqStateNam From ##P81Bed").toString(), spend());
}

TEST_F(ChequePaymentTest, APaymentDeletesUntilACheckMovesAndAnOpeningOneHasNoVoucher) {
    fill({{issue(), QStringLiteral("100010"), QStringLiteral("12"), 700000}});
    ASSERT_EQ(pay(QStringLiteral("TRANS->DB"), 4), QString());
    db().execute(QStringLiteral("Insert Into N_ChqLastTrans Values ('82', '100010', '12', '1404/03/01', '1', 11)"));
    EXPECT_EQ(pay(QStringLiteral("DELETE_DOREH"), 4),
              QStringLiteral("آخرين گردش چك شماره 100010 ") +
                  tr::db::firstColumn(db(), "Select NDocNam From N_AsnadNaghd Where WhatDoc = '82'").toString().trimmed() +
                  QStringLiteral(" ميباشد.\nاين عمليات در سريال 11 انجام گرفته شده است."));
    db().execute(QStringLiteral("Delete From N_ChqLastTrans Where WhatDoc = '82'"));
    ASSERT_EQ(pay(QStringLiteral("DELETE_DOREH"), 4), QString());
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc = '81'"), 0);
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '81'"), 0);

    fill({{issue(), QStringLiteral("100011"), QStringLiteral("12"), 300000}});
    ASSERT_EQ(pay(QStringLiteral("FIRST->DB"), 5), QString());
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '81'"), 0);
    EXPECT_EQ(count("Select Count(*) From N_ChqFirst Where WhatDoc = '81'"), 2);
    // A received cheque spent in an opening payment must itself be an opening one.
    receive(QStringLiteral("5003"), 200000, 3);
    fill({{spend(), QStringLiteral("5003"), QStringLiteral("ج"), 200000}});
    EXPECT_EQ(pay(QStringLiteral("FIRST->DB"), 6),
              QStringLiteral("خرج چك اول دوره بايد از چكهاي دريافتي اول دوره باشد.(چك دريافتي 5003 چك دريافتي اول دوره نميباشد.)"));
    ASSERT_EQ(pay(QStringLiteral("DELETE_FIRST"), 5), QString());
    EXPECT_EQ(count("Select Count(*) From N_ChqFirst Where WhatDoc = '81'"), 0);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

}  // namespace
}  // namespace tr::procedures
