// The company and suite schemas on an empty data directory: every table is created and
// registered, serials order numerically, lookups use their indexes, and every kind has a name.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>

#include "common/db/query_helpers.h"
#include "db/schema/document_kinds.h"
#include "db/schema/tests/demo_fixture.h"

namespace tr::schema {
namespace {

using testing::rowCount;
using testing::scalar;

class EmptyCompanyTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        try {
            books_ = tr::test::makeTestBooks(dir_.path(), QStringLiteral("empty"));
            suite_ = books_->connect(QStringLiteral("CORVASK_Sdc"));
            company_ = books_->connect(QStringLiteral("Corvask_7_1404"));
            createSuiteSchema(*suite_);
            createCompany(*suite_, *company_, QStringLiteral(" 7 "), QStringLiteral("1404"),
                          QStringLiteral("آزمايشي"));
        } catch (const tr::db::DatabaseError& error) {
            FAIL() << testing::describe(error);
        }
    }

    void addDocumentLine(const QString& kind, int serial) {
        company_->execute(
            QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj) Values (") +
            company_->text(kind) + QStringLiteral(", ") + tr::db::sqlNumber(serial) +
            QStringLiteral(", 1)"));
    }

    QTemporaryDir dir_;
    std::unique_ptr<tr::tsql::Books> books_;
    std::unique_ptr<tr::tsql::TsqlConnection> suite_;
    std::unique_ptr<tr::tsql::TsqlConnection> company_;
};

TEST_F(EmptyCompanyTest, EveryTableExistsAndStartsEmptyExceptKindsAndOptions) {
    for (const QString& table : companyTableNames()) {
        SCOPED_TRACE(table.toStdString());
        const int expected = table == QLatin1String("N_AsnadNaghd")
                                 ? static_cast<int>(documentKinds().size())
                                 : (table == QLatin1String("Options") ? 1 : 0);
        EXPECT_EQ(scalar(*company_, QStringLiteral("Select Count(*) From ") + table).toInt(),
                  expected);
    }
    for (const QString& table : suiteTableNames()) {
        EXPECT_NO_THROW(suite_->execute(QStringLiteral("Select Count(*) From ") + table))
            << table.toStdString();
    }
}

TEST_F(EmptyCompanyTest, CompanyIsRegisteredUnderItsTrimmedCodeWithItsPeriod) {
    EXPECT_EQ(tr::db::companyDatabaseName(*company_, QStringLiteral("7"), QStringLiteral("1404")),
              QStringLiteral("Corvask_7_1404"));
    const tr::db::ResultSet period =
        suite_->execute(QStringLiteral("Select StartDate, EndDate From SDC_Company"))
            .resultSets.at(0);
    ASSERT_EQ(period.rows.size(), 1u);
    EXPECT_EQ(period.rows[0][0].toString(), QStringLiteral("1404/01/01"));
    EXPECT_EQ(period.rows[0][1].toString(), QStringLiteral("1404/12/29"));
    EXPECT_EQ(scalar(*company_, QStringLiteral("Select Naghd From Options")).toString(),
              QStringLiteral("USE_SERIAL=YES;"));
}

TEST(FiscalYearEnd, FollowsTheModulesLeapRuleCountedFrom1355) {
    EXPECT_EQ(fiscalYearEnd(QStringLiteral("1403")), QStringLiteral("1403/12/30"));
    EXPECT_EQ(fiscalYearEnd(QStringLiteral("1404")), QStringLiteral("1404/12/29"));
    EXPECT_EQ(fiscalYearEnd(QStringLiteral("1355")), QStringLiteral("1355/12/29"));
    EXPECT_EQ(fiscalYearEnd(QStringLiteral("1387")), QStringLiteral("1387/12/30"));
}

TEST_F(EmptyCompanyTest, NextSerialIsNumericPastNineAndTextComparisonsStillMatch) {
    const QString next = QStringLiteral(
        "Select IsNull(Max(Serial), 0) + 1 As Serial From N_NaghdTrans Where WhatDoc='10'");
    EXPECT_EQ(scalar(*company_, next).toInt(), 1);
    for (int serial = 1; serial <= 9; ++serial) addDocumentLine(QStringLiteral("10"), serial);
    addDocumentLine(QStringLiteral("20"), 40);  // another kind does not count
    EXPECT_EQ(scalar(*company_, next).toInt(), 10);
    addDocumentLine(QStringLiteral("10"), 10);
    EXPECT_EQ(scalar(*company_, next).toInt(), 11);

    EXPECT_EQ(rowCount(*company_,
                       QStringLiteral(
                           "Select Serial From N_NaghdTrans Where Serial='5' And WhatDoc='10'")),
              1);
    EXPECT_EQ(rowCount(*company_, QStringLiteral("Select Serial From N_NaghdTrans "
                                                 "Where LTrim(Serial)='10' And WhatDoc='10'")),
              1);
    EXPECT_EQ(
        rowCount(*company_, QStringLiteral("Select Serial From N_NaghdTrans "
                                           "Where LTrim(RTrim(Serial))='1' And WhatDoc='10'")),
        1);
}

TEST_F(EmptyCompanyTest, HighestHeldSerialIsTakenNumerically) {
    company_->execute(
        QStringLiteral("Insert Into ReserveId(UserId, ProgNam, WhatDoc, ResId1, ResId2) Select "
                       "'2', 'N', '81', '', '42'"));
    company_->execute(
        QStringLiteral("Insert Into ReserveId(UserId, ProgNam, WhatDoc, ResId1, ResId2) Select "
                       "'3', 'N', '81', '', '9'"));
    EXPECT_EQ(
        scalar(*company_, QStringLiteral(" Select IsNull(Max(resid2),0) As MaxRes From Reserveid  "
                                         "Where ProgNam='N' And Ltrim(Rtrim(WhatDoc)) = '81'"))
            .toInt(),
        42);
}

// A voided leaf is written by position: kind, four texts, then 0 as the serial.
TEST_F(EmptyCompanyTest, ChequeActionRowsAcceptThePositionalInsertOfAVoidedLeaf) {
    company_->execute(QStringLiteral(
        "Insert Into N_ChqLastTrans Values ('83', '100007', '12', '1404/03/01', '1', 0)"));
    const tr::db::ResultSet row =
        company_
            ->execute(QStringLiteral("Select IDX, WhatDoc, ChqNo, Joz, Serial From N_ChqLastTrans"))
            .resultSets.at(0);
    ASSERT_EQ(row.rows.size(), 1u);
    EXPECT_EQ(row.rows[0][0].toInt(), 1);
    EXPECT_EQ(row.rows[0][1].toString(), QStringLiteral("83"));
    EXPECT_EQ(row.rows[0][2].toString(), QStringLiteral("100007"));
    EXPECT_EQ(row.rows[0][3].toString(), QStringLiteral("12"));
    EXPECT_EQ(row.rows[0][4].toInt(), 0);
}

TEST_F(EmptyCompanyTest, OpeningCheckSaveLogsOneActionRowByPosition) {
    company_->execute(QStringLiteral(
        "Insert Into ASNADACTIONS Values ('N', 'دريافت چک - چک اول دوره', '1404/01/01', 'admin', "
        "'I', '3', '9:05:07', Null, 'PC-1')"));
    EXPECT_EQ(scalar(*company_, QStringLiteral("Select ComputerName From ASNADACTIONS")).toString(),
              QStringLiteral("PC-1"));
}

// Every lookup the screens make by key reads its table through an index, not by a scan.
struct PlanCase {
    const char* name;
    const char* table;
    const char* sql;
};

class LookupPlanTest : public EmptyCompanyTest, public ::testing::WithParamInterface<PlanCase> {};

TEST_P(LookupPlanTest, UsesAnIndex) {
    const PlanCase& c = GetParam();
    QString plan;
    try {
        plan = company_->explainQueryPlan(QString::fromUtf8(c.sql));
    } catch (const tr::db::DatabaseError& error) {
        FAIL() << testing::describe(error);
    }
    SCOPED_TRACE(plan.toStdString());
    if (tr::test::testingOnServer()) {
        EXPECT_TRUE(plan.contains(QStringLiteral("Index")));
        EXPECT_FALSE(plan.contains(QStringLiteral("Seq Scan on ") + QString::fromLatin1(c.table).toLower()));
        return;
    }
    EXPECT_TRUE(plan.contains(QStringLiteral("USING INDEX")) ||
                plan.contains(QStringLiteral("USING COVERING INDEX")) ||
                plan.contains(QStringLiteral("USING INTEGER PRIMARY KEY")) ||
                plan.contains(QStringLiteral("USING PRIMARY KEY")));
    EXPECT_FALSE(plan.contains(QStringLiteral("SCAN ") + QLatin1String(c.table)));
}

INSTANTIATE_TEST_SUITE_P(
    Schema, LookupPlanTest,
    ::testing::Values(
        PlanCase{"DocumentByKindAndSerial", "N_NaghdTrans",
                 "Select * From N_NaghdTrans Where WhatDoc='10' And Serial=5 Order By Raj"},
        PlanCase{"DocumentByQuotedSerial", "N_NaghdTrans",
                 "Select Count(*) As iCount From N_NaghdTrans Where Serial='5' And WhatDoc='10'"},
        PlanCase{
            "NextSerialOfKind", "N_NaghdTrans",
            "Select IsNull(Max(Serial), 0) + 1 As Serial From N_NaghdTrans Where WhatDoc='10'"},
        PlanCase{"VoucherLinesByDocument", "Asnad", "Select * From Asnad Where Document = '12'"},
        // The header of a document opened by serial: no scan of either side of the join.
        PlanCase{"OpenedHeaderDocumentSide", "N",
                 "Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, A.Bed, A.User_Name From Asnad As A "
                 "Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20))=LTrim(A.Document) And "
                 "A.DocToDate='0') Where A.TypeSys='N' And A.WhatDoc='10' And A.Bed>0 And "
                 "LTrim(N.Serial)='5'"},
        PlanCase{"OpenedHeaderVoucherSide", "A",
                 "Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, A.Bed, A.User_Name From Asnad As A "
                 "Inner Join N_NaghdTrans As N On (Cast(N.IDX As Varchar(20))=LTrim(A.Document) And "
                 "A.DocToDate='0') Where A.TypeSys='N' And A.WhatDoc='10' And A.Bed>0 And "
                 "LTrim(N.Serial)='5'"},
        PlanCase{"VoucherLinesByNumber", "Asnad",
                 "Select * From Asnad Where SanadNo = 7 Order By Raj"},
        PlanCase{"ChequeVoucherLines", "Asnad",
                 "Select Count(*) As iCount From Asnad Where AtfCh='100007' And DocToDate='12' "
                 "And WhatDoc='72'"},
        PlanCase{
            "ChequeHistory", "N_ChqLastTrans",
            "Select * From N_ChqLastTrans Where ChqNo='100007' And Joz='12' Order By IDX Desc"},
        PlanCase{"LatestActionOfCheque", "N_ChqLastTrans",
                 "Select Max(IDX) From N_ChqLastTrans Where ChqNo='100007' And Joz='12'"},
        PlanCase{
            "NoteHistory", "N_SoftehLastTrans",
            "Select * From N_SoftehLastTrans Where SoftehNo='55' And Joz='3' Order By IDX Desc"},
        PlanCase{"ReservedSerials", "Reserveid",
                 "Select Max(ResId2) From Reserveid Where ProgNam='N' And WhatDoc='10'"},
        PlanCase{"UserReservations", "N_reserveid",
                 "Delete From N_reserveid Where Whatdoc='10' And Userid='1'"},
        PlanCase{"GridLayout", "Grid_State",
                 "Select * From Grid_State Where UserId='1' And sProg = 'N' And sItem = 'A' "
                 "And sForm = 'CASHGET' And sPart='GRID' Order By iRaj "},
        PlanCase{"CurrencyDetailsOfDocument", "N_ArzTrans",
                 "select * from N_ArzTrans Where WhatDoc = '81' And Serial = 3"},
        PlanCase{"InvoiceLinksOfDocument", "R_ForoshRelatedNaghd",
                 "Select * From R_ForoshRelatedNaghd Where WhatDoc = '10' And Serial = 4"},
        PlanCase{"ActionsOfDocument", "ASNADACTIONS",
                 "Select Count(*) From ASNADACTIONS Where TypeSys='N' And TypeDoc='دريافت' And REC=5"},
        PlanCase{"CancelledCheck", "Asnad",
                 "Select Count(*) As Cnt From Asnad Where TypeSys = 'N' And WhatDoc = '10' And DocToDate = '1' "
                 "And Document In (Select Cast(IDX As Varchar(20)) From N_NaghdTrans Where WhatDoc = '10' "
                 "And LTrim(Serial) = '5')"},
        PlanCase{"KindName", "N_AsnadNaghd",
                 "Select NDocNam From N_AsnadNaghd Where WhatDoc = '72'"}),
    [](const ::testing::TestParamInfo<PlanCase>& info) { return std::string(info.param.name); });

// Kinds the screens post or read; each must have a name in N_AsnadNaghd.
TEST_F(EmptyCompanyTest, EveryKindTheScreensUseHasAPersianName) {
    const QStringList used = {"10", "11", "20", "21", "40", "41", "45", "46", "50", "60", "90",
                              "71", "72", "73", "76", "77", "78", "79", "80", "81", "82", "83",
                              "85", "86", "87", "88", "A1", "A2", "A3", "A6", "A7", "A8", "A9",
                              "B0", "B1", "B2", "B5", "B6", "B7", "B8", "T1"};
    for (const QString& kind : used) {
        const QString name = scalar(*company_, QStringLiteral("Select NDocNam From N_AsnadNaghd "
                                                              "Where WhatDoc = ") +
                                                   company_->text(kind))
                                 .toString()
                                 .trimmed();
        EXPECT_FALSE(name.isEmpty()) << kind.toStdString();
        const bool arabicScript = std::any_of(name.begin(), name.end(), [](QChar ch) {
            return ch.unicode() >= 0x0600 && ch.unicode() <= 0x06FF;
        });
        EXPECT_TRUE(arabicScript) << kind.toStdString();
    }
}

TEST_F(EmptyCompanyTest, QuotedKindTitlesAreStoredAsTheScreensSpellThem) {
    const std::pair<const char*, const char*> titles[] = {
        {"10", "دريافت صندوق"},  {"20", "پرداخت صندوق"}, {"40", "تنخواه گردان"},
        {"50", "واريز به بانك"}, {"60", "حواله بانكي"},  {"90", "برداشت بانك"},
        {"71", "دريافت چک"},     {"81", "پرداخت چك"},    {"A1", "دريافت سفته"},
        {"B1", "پرداخت سفته"},   {"T1", "تسعير ارز"},
    };
    for (const auto& [kind, title] : titles) {
        EXPECT_EQ(
            scalar(*company_, QStringLiteral("Select NDocNam From N_AsnadNaghd Where WhatDoc = ") +
                                  company_->text(QString::fromUtf8(kind)))
                .toString(),
            QString::fromUtf8(title))
            << kind;
    }
}

// An action chosen by name is turned into its kind within its side; two kinds of one side must
// never share a name (Arabic and Persian kaf and yeh compare equal).
TEST_F(EmptyCompanyTest, KindNamesAreUniqueWithinEachSide) {
    const tr::db::ResultSet duplicates =
        company_
            ->execute(QStringLiteral(
                "Select SubString(WhatDoc, 1, 1) As Side, NDocNam, Count(*) As n From N_AsnadNaghd "
                "Group By SubString(WhatDoc, 1, 1), NDocNam Having Count(*) > 1"))
            .resultSets.at(0);
    for (const tr::db::Row& row : duplicates.rows) {
        ADD_FAILURE() << row[0].toString().toStdString() << ": " << row[1].toString().toStdString();
    }
}

}  // namespace
}  // namespace tr::schema
