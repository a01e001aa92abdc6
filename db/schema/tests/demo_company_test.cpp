// The demo company as the screens will meet it: both years registered, every account that a
// cash box, holder, bank account or invoice names passes the chart checks, rates and open
// invoices add up, and cheque leaves belong to their books.
#include <gtest/gtest.h>

#include "common/db/query_helpers.h"
#include "db/schema/tests/demo_fixture.h"

namespace tr::schema {
namespace {

using testing::DemoCompanyTest;
using testing::rowCount;
using testing::scalar;

TEST_F(DemoCompanyTest, BothFiscalYearsAreRegisteredWithTheirPeriods) {
    EXPECT_EQ(tr::db::companyDatabaseName(company(), QStringLiteral("1"), QStringLiteral("1403")),
              QStringLiteral("Corvask_1_1403"));
    EXPECT_EQ(tr::db::companyDatabaseName(company(), QStringLiteral("1"), QStringLiteral("1404")),
              QStringLiteral("Corvask_1_1404"));
    const tr::db::ResultSet current =
        suite()
            .execute(
                QStringLiteral("Select StartDate, EndDate From SDC_Company Where sYear='1404'"))
            .resultSets.at(0);
    ASSERT_EQ(current.rows.size(), 1u);
    EXPECT_EQ(current.rows[0][0].toString(), QString::fromUtf8(demo::kPeriodStart));
    EXPECT_EQ(current.rows[0][1].toString(), QString::fromUtf8(demo::kPeriodEnd));
}

TEST_F(DemoCompanyTest, UsersCarryTheirRightsPerYear) {
    const auto rights = [&](int user) {
        return scalar(suite(),
                      QStringLiteral("Select Rights From UserSdcDetail Where sCode='1' And "
                                     "sYear='1404' And ProgNam='N' And UserId=") +
                          tr::db::sqlNumber(user))
            .toString();
    };
    const QString admin = rights(demo::kAdminUserId);
    EXPECT_TRUE(admin.contains(QStringLiteral("N_A_CASHGET__DEL(Y)")));
    EXPECT_TRUE(admin.contains(QStringLiteral("N_A_SEARCH_CHQGET(Y)")));
    const QString clerk = rights(demo::kClerkUserId);
    EXPECT_TRUE(clerk.contains(QStringLiteral("N_A_CASHGET__SABT(Y)")));
    EXPECT_FALSE(clerk.contains(QStringLiteral("_DEL(Y)")));
    EXPECT_EQ(rowCount(suite(), QStringLiteral("Select * From UserSdcDetail Where sYear='1403'")),
              2);
}

// Names sorted by the database come out in Persian alphabetical order. The reference order is
// written out here: blank, '-' and the comma before the letters, Arabic yeh read as Persian yeh.
TEST_F(DemoCompanyTest, NamesSortInPersianAlphabeticalOrder) {
    const QString alphabet =
        QStringLiteral("آابپتثجچحخدذرزژسشصضطظعغفقکگلمنوهی");
    const auto key = [&](const QString& name) {
        QList<int> k;
        for (QChar c : name) {
            if (c == u'\u064A') c = u'\u06CC';
            if (c == u'\u0643') c = u'\u06A9';
            if (c == u'\u060C') c = u',';
            if (c.unicode() < 0x80) {
                k << c.unicode();
            } else {
                EXPECT_GE(alphabet.indexOf(c), 0) << QString(c).toStdString();
                k << 1000 + int(alphabet.indexOf(c));
            }
        }
        return k;
    };
    bool codePointOrderDiffers = false;
    const QList<QPair<QString, QString>> lists = {
        {"Koll", "NamHesab"},      {"Moein", "NamHesab"},     {"Tafsily", "NamHesab"},
        {"Tafsily2", "NamHesab"},  {"M_Project", "ProjectNam"}, {"N_Bank", "BankNam"},
        {"N_Manabeh", "ManabehNam"}, {"N_Shoab", "ShobehNam"}};
    for (const auto& [table, column] : lists) {
        SCOPED_TRACE(table.toStdString());
        const tr::db::ExecResult result = company().execute(
            QStringLiteral("Select %1 From %2 Order By %1").arg(column, table));
        QStringList names;
        for (const tr::db::Row& row : result.resultSets.at(0).rows) names << row[0].toString().trimmed();
        ASSERT_GT(names.size(), 1);
        for (qsizetype i = 0; i + 1 < names.size(); ++i) {
            EXPECT_LE(key(names[i]), key(names[i + 1]))
                << names[i].toStdString() << " / " << names[i + 1].toStdString();
            codePointOrderDiffers = codePointOrderDiffers || names[i] > names[i + 1];
        }
    }
    EXPECT_TRUE(codePointOrderDiffers) << "the demo names do not tell the orders apart";
}

// The account checks of the document screens, applied to an account code the demo stores:
// empty when accepted, else the reason.
QString accountProblem(tr::db::Connection& c, const tr::db::Row& a) {
    const QString koll = a[0].toString(), moein = a[1].toString(), tafsily = a[2].toString(),
                  tafsily2 = a[3].toString(), project = a[4].toString();
    const QString active = QStringLiteral("فعال");
    if (scalar(c, QStringLiteral("Select IsActive From Koll Where Koll = ") + c.text(koll))
            .toString() != active) {
        return QStringLiteral("Koll");
    }
    const tr::db::ExecResult m = c.execute(
        QStringLiteral(
            "Select IsActive, IsTafsily1, IsTafsily2, IsProject, GrohTafsily, TafsilyJoz, "
            "GrohTafsily2, Tafsily2Joz, GrohProject, ProjectJoz From Moein Where Koll+Moein = ") +
        c.text(koll + moein));
    if (m.resultSets.at(0).rows.empty()) return QStringLiteral("Moein missing");
    const tr::db::Row& row = m.resultSets.at(0).rows.at(0);
    if (row[0].toString() != active) return QStringLiteral("Moein inactive");
    const QString has = QStringLiteral("دارد");
    // Allowed when either list holds the code's group prefix or the code itself.
    const auto allowed = [&](const QString& column, const QString& table, const QString& code,
                             const QString& groups, const QString& codes) {
        QString sql = QStringLiteral("Select IsActive From ") + table + QStringLiteral(" Where ") +
                      column + QStringLiteral(" = ") + c.text(code);
        if (!groups.isEmpty() || !codes.isEmpty()) {
            sql += QStringLiteral(" And (PatIndex('%'+SubString(") + column +
                   QStringLiteral(", 1, 2)+'%', ") + c.text(groups) +
                   QStringLiteral(") > 0 Or PatIndex('%'+") + column + QStringLiteral("+'%', ") +
                   c.text(codes) + QStringLiteral(") > 0)");
        }
        return scalar(c, sql).toString() == active;
    };
    if (row[1].toString() == has && !allowed(QStringLiteral("Tafsily"), QStringLiteral("Tafsily"),
                                             tafsily, row[4].toString(), row[5].toString())) {
        return QStringLiteral("Tafsily");
    }
    // Lower levels take their allowance lists from the most detailed level above that has any.
    const auto ownLists = [&](const QString& table, const QString& column, const QString& code,
                              const QString& groupColumn, const QString& codeColumn) {
        const tr::db::ExecResult own =
            c.execute(QStringLiteral("Select ") + groupColumn + QStringLiteral(", ") + codeColumn +
                      QStringLiteral(" From ") + table + QStringLiteral(" Where ") + column +
                      QStringLiteral(" = ") + c.text(code));
        if (own.resultSets.at(0).rows.empty()) return QStringList();
        const tr::db::Row& lists = own.resultSets.at(0).rows.at(0);
        if (lists[0].toString().isEmpty() && lists[1].toString().isEmpty()) return QStringList();
        return QStringList{lists[0].toString(), lists[1].toString()};
    };
    if (row[2].toString() == has) {
        QStringList lists = ownLists(QStringLiteral("Tafsily"), QStringLiteral("Tafsily"), tafsily,
                                     QStringLiteral("GrohTafsily2"), QStringLiteral("Tafsily2Joz"));
        if (lists.isEmpty()) lists = {row[6].toString(), row[7].toString()};
        if (!allowed(QStringLiteral("Tafsily2"), QStringLiteral("Tafsily2"), tafsily2, lists[0],
                     lists[1])) {
            return QStringLiteral("Tafsily2");
        }
    }
    if (row[3].toString() == has) {
        QStringList lists =
            ownLists(QStringLiteral("Tafsily2"), QStringLiteral("Tafsily2"), tafsily2,
                     QStringLiteral("GrohProject"), QStringLiteral("ProjectJoz"));
        if (lists.isEmpty()) {
            lists = ownLists(QStringLiteral("Tafsily"), QStringLiteral("Tafsily"), tafsily,
                             QStringLiteral("GrohProject"), QStringLiteral("ProjectJoz"));
        }
        if (lists.isEmpty()) lists = {row[8].toString(), row[9].toString()};
        if (!allowed(QStringLiteral("ProjectCod"), QStringLiteral("M_Project"), project, lists[0],
                     lists[1])) {
            return QStringLiteral("ProjectCod");
        }
    }
    return {};
}

TEST_F(DemoCompanyTest, EveryStoredAccountPassesTheChartChecks) {
    const char* sources[] = {
        "Select Koll, Moein, Tafsily, Tafsily2, ProjectCod, CashCod From N_Cash",
        "Select Koll, Moein, Tafsily, Tafsily2, ProjectCod, PersonCod From N_Tankhah",
        "Select JKoll, JMoein, JTafsily, JTafsily2, JProjectCod, AcountCod From N_BankHesab",
        "Select AKoll, AMoein, ATafsily, ATafsily2, AProjectCod, AcountCod From N_BankHesab",
        "Select HKoll, HMoein, HTafsily, HTafsily2, HProjectCod, AcountCod From N_BankHesab",
        "Select Koll, Moein, Tafsily, Tafsily2, ProjectCod, SanadNoForosh From R_FactorForosh",
        "Select Koll, Moein, Tafsily, Tafsily2, ProjectCod, CustomerCod From R_Customer",
    };
    for (const char* sql : sources) {
        const tr::db::ExecResult rows = company().execute(QString::fromUtf8(sql));
        ASSERT_FALSE(rows.resultSets.at(0).rows.empty()) << sql;
        for (const tr::db::Row& row : rows.resultSets.at(0).rows) {
            EXPECT_EQ(accountProblem(company(), row).toStdString(), "")
                << sql << " / " << row[5].toString().toStdString();
        }
    }
}

TEST_F(DemoCompanyTest, ChartOffersRefusalsForEveryLevel) {
    const auto problem = [&](const char* k, const char* m, const char* t, const char* t2,
                             const char* p) {
        return accountProblem(company(),
                              {QString::fromUtf8(k), QString::fromUtf8(m), QString::fromUtf8(t),
                               QString::fromUtf8(t2), QString::fromUtf8(p)})
            .toStdString();
    };
    using namespace demo;
    EXPECT_EQ(problem(kInactiveKoll, "0001", "", "", ""), "Koll");
    EXPECT_EQ(problem(kBlankActiveKoll, "0001", "", "", ""), "Koll");
    EXPECT_EQ(problem(kExpenseKoll, kInactiveMoein, "", "", ""), "Moein inactive");
    EXPECT_EQ(problem(kReceivablesKoll, kReceivablesMoein, kInactiveCustomer, kRegionTehran,
                      kProjectHeadOffice),
              "Tafsily");
    EXPECT_EQ(problem(kExpenseKoll, kSalaryMoein, kBonusDetail, kRegionTehran, ""), "Tafsily");
    EXPECT_EQ(problem(kReceivablesKoll, kReceivablesMoein, kCustomerNegin, kInactiveRegion,
                      kProjectHeadOffice),
              "Tafsily2");
    // The subsidiary allows both projects, but this customer's own list only kProjectSales.
    EXPECT_EQ(problem(kReceivablesKoll, kReceivablesMoein, kCustomerAftab, kRegionTehran,
                      kProjectHeadOffice),
              "ProjectCod");
    EXPECT_EQ(
        problem(kReceivablesKoll, kReceivablesMoein, kCustomerAftab, kRegionTehran, kProjectSales),
        "");
    // This customer's own second-detail group "51" replaces the subsidiary's "50".
    EXPECT_EQ(problem(kReceivablesKoll, kReceivablesMoein, kCustomerAlborz, kRegionTehran,
                      kProjectHeadOffice),
              "Tafsily2");
    EXPECT_EQ(problem(kSalesKoll, kSalesMoein, "", "", kInactiveProject), "ProjectCod");
    EXPECT_EQ(problem(kCapitalKoll, kCapitalMoein, "", "", ""), "");
}

TEST_F(DemoCompanyTest, CurrentRateIsTheLatestQuotationOfTheLatestDay) {
    const QString sql = QStringLiteral(
        "select A.*, NA.Buy, NA.Sell from N_Arz As A Left join N_NerkhArz As NA On LTRIM(A.ArzCod) "
        "= "
        "NA.ArzCod Where A.ArzCod = '%1' And (NA.DateNerkh = (Select Max(DateNerkh) From "
        "N_NerkhArz "
        "Where ArzCod = LTRIM(A.ArzCod)) And NA.HourNerkh = (Select Max(HourNerkh) From N_NerkhArz "
        "Where ArzCod = LTRIM(A.ArzCod) And DateNerkh = NA.DateNerkh))");
    const tr::db::ResultSet usd =
        company().execute(sql.arg(QString::fromUtf8(demo::kUsd))).resultSets.at(0);
    ASSERT_EQ(usd.rows.size(), 1u);
    EXPECT_DOUBLE_EQ(usd.rows[0][usd.columnIndex(QStringLiteral("Buy"))].toDouble(), demo::kUsdBuy);
    EXPECT_DOUBLE_EQ(usd.rows[0][usd.columnIndex(QStringLiteral("Sell"))].toDouble(),
                     demo::kUsdSell);
    EXPECT_EQ(rowCount(company(), sql.arg(QString::fromUtf8(demo::kAed))), 0);
}

TEST_F(DemoCompanyTest, OpenInvoicesBalanceAndTheirPeriodsAreRegistered) {
    EXPECT_EQ(rowCount(company(), QStringLiteral("Select * From R_OldFactor "
                                                 "Where MandehFactor <> FactorValue - NaghdValue")),
              0);
    const tr::db::ResultSet periods =
        company()
            .execute(QStringLiteral(
                "select Distinct DorehMali From R_OldFactor WHERE MandehFactor <> 0"))
            .resultSets.at(0);
    ASSERT_EQ(periods.rows.size(), 2u);
    for (const tr::db::Row& period : periods.rows) {
        EXPECT_FALSE(
            tr::db::companyDatabaseName(company(), QStringLiteral("1"), period[0].toString())
                .isEmpty());
    }
    EXPECT_DOUBLE_EQ(scalar(company(), QStringLiteral("Select MandehFactor From R_OldFactor Where "
                                                      "SanadNoForosh = '1001'"))
                         .toDouble(),
                     20000000.0);
    // The previous year's invoice is listed here and held, with its lines, in its own year.
    EXPECT_DOUBLE_EQ(
        scalar(company(), QStringLiteral("Select FactorValue From R_OldFactor Where "
                                         "SanadNoForosh = '950' And DorehMali = '1403'"))
            .toDouble(),
        scalar(company(), QStringLiteral("Select Sum(TotalPrice) From "
                                         "Corvask_1_1403..R_DetailFactorForosh Where "
                                         "SanadNoForosh = '950'"))
            .toDouble());
}

// Invoice total less till payments and redeemed vouchers is what R_OldFactor keeps open.
TEST_F(DemoCompanyTest, SalesTablesExplainEachOpenBalance) {
    const tr::db::ResultSet mismatches =
        company()
            .execute(QStringLiteral(
                "Select F.SanadNoForosh From R_OldFactor As F Where F.DorehMali = '1404' And "
                "F.MandehFactor <> (Select Sum(D.TotalPrice) From R_DetailFactorForosh As D Where "
                "D.SanadNoForosh = F.SanadNoForosh) - IsNull((Select Sum(P.PayValue) From "
                "R_NaghdPay "
                "As P Where P.SanadNoForosh = F.SanadNoForosh And P.TypeAction = '3'), 0) - "
                "IsNull((Select Sum(T.BonPrice) From R_Bon_Tran As T Inner Join R_Bon_Serial As S "
                "On "
                "(S.BonSerial = T.BonSerial) Where S.Status = 'B' And S.DocType = 'F' And "
                "T.SanadNoForosh = F.SanadNoForosh), 0)"))
            .resultSets.at(0);
    for (const tr::db::Row& row : mismatches.rows) ADD_FAILURE() << row[0].toString().toStdString();
    EXPECT_EQ(
        rowCount(company(), QStringLiteral("Select * From R_OldFactor Where DorehMali = '1404'")),
        3);
}

TEST_F(DemoCompanyTest, ChequeLeavesBelongToTheBookOfTheirAccount) {
    const QString book = QStringLiteral(
        "Select AcountID From N_Cheque Where Cast(%1 As Int) Between Cast(FirstNum As Int) And "
        "Cast(LastNum As Int) And LTrim(RTrim(Joz)) = '%2'");
    EXPECT_EQ(scalar(company(), book.arg(QStringLiteral("100010"), QStringLiteral("12"))).toInt(),
              demo::kMelliAccountId);
    EXPECT_EQ(scalar(company(), book.arg(QStringLiteral("300005"), QString())).toInt(),
              demo::kSaderatAccountId);
    EXPECT_EQ(rowCount(company(), book.arg(QStringLiteral("100010"), QStringLiteral("7"))), 0);
    EXPECT_EQ(rowCount(company(), QStringLiteral("Select * From N_Cheque As C Where Not Exists "
                                                 "(Select * From N_BankHesab As B Where "
                                                 "B.AcountID = C.AcountID)")),
              0);
}

TEST_F(DemoCompanyTest, ForeignCashBoxAndBankAccountCarryTheirCurrency) {
    const QString cash = QStringLiteral(
        "Select C.CashCod From N_Cash As C Where C.ArzCod Is Not Null And "
        "LTRIM(C.ArzCod) <> ''");
    EXPECT_EQ(scalar(company(), cash).toString(), QString::fromUtf8(demo::kForeignCashBox));
    EXPECT_EQ(rowCount(company(), cash), 1);
    EXPECT_EQ(scalar(company(),
                     QStringLiteral("Select AcountID From N_BankHesab Where ArzCod Is Not Null "
                                    "And LTRIM(ArzCod) <> ''"))
                  .toInt(),
              demo::kForeignAccountId);
}

}  // namespace
}  // namespace tr::schema
