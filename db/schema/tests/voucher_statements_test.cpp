// The statements that the chart checks, serials and reservations, document posting and fixed
// descriptions send, with sample values filled in, run on the demo company as written.
#include <gtest/gtest.h>

#include "db/schema/tests/demo_fixture.h"

namespace tr::schema {
namespace {

using testing::DemoCompanyTest;

struct Statement {
    const char* text;
    int rows;  // rows of the first result set; -1 when the statement returns none or any count
};

// A saved cash receipt, serial 1, voucher 1: the cash box debited, customer 30001 credited.
const char* const kReceipt[] = {
    "Insert Into N_NaghdTrans (WhatDoc, Serial, Raj, CodWhatDoc, WhatDoc2, CodWhatDoc2, "
    "NamWhatDoc2, SanadDate) Values ('10', 1, 1, '1', '10', '1', 'صندوق مرکزي', '1404/02/01')",
    "Insert Into N_NaghdTrans (WhatDoc, Serial, Raj, CodWhatDoc, WhatDoc2, CodWhatDoc2, "
    "NamWhatDoc2, SanadDate) Values ('10', 1, 2, '1', '01', '30001', 'شرکت پخش البرز', "
    "'1404/02/01')",
    "Insert Into Asnad (TypeSys, WhatDoc, WhatDoc2, DocToDate, Document, SanadNo, SanadDate, Raj, "
    "Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, Bes, AtfCh, User_Name) Values ('N', "
    "'10', '10', '0', '1', 1, '1404/02/01', 1, '101', '0001', '10001', '', '', "
    "'دريافت وجه نقد از مشتري', 5000000, 0, '501', 'admin')",
    "Insert Into Asnad (TypeSys, WhatDoc, WhatDoc2, DocToDate, Document, SanadNo, SanadDate, Raj, "
    "Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, Bes, AtfCh, User_Name) Values ('N', "
    "'10', '01', '0', '2', 1, '1404/02/01', 2, '104', '0001', '30001', '51001', 'P0001', "
    "'بابت تسويه صورتحساب فروش', 0, 5000000, '501', 'admin')",
    "Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, SanadNoForosh, "
    "TypeAction, NaghdValue, DorehMali) Values (2, '10', 1, '2', '0', '1001', '1', 5000000, "
    "'1404')",
};

const Statement kStatements[] = {
    // Chart of accounts and account checks.
    {"Select * From Koll Where Koll = '104'", 1},
    {"Select * From Moein Where Koll+Moein = '1040001' ", 1},
    {"Select Tafsily, IsActive From Tafsily Where Tafsily = '30001'  And ( "
     "PatIndex('%'+SubString(Tafsily, 1, 2)+'%', '30') > 0 Or PatIndex('%'+Tafsily+'%', '') > 0 ) ",
     1},
    {"Select Tafsily, IsActive From Tafsily Where Tafsily = '60003'  And "
     "PatIndex('%'+Tafsily+'%', '60001,60002') > 0 ",
     0},
    {" Select * from Tafsily where Tafsily = '30001' And ((GrohTafsily2 Is Not Null And "
     "GrohTafsily2 <> '') Or (Tafsily2Joz Is Not Null And Tafsily2Joz <> '')) ",
     1},
    {"Select Tafsily2, IsActive From Tafsily2 Where Tafsily2 = '51001'  And "
     "PatIndex('%'+SubString(Tafsily2, 1, 2)+'%', '51') > 0 ",
     1},
    {"Select ProjectCod, ProjectNam, RecogName, IsActive, IsPosHesab, DesChar From M_Project Where "
     "ProjectCod = 'P0001' And PatIndex('%'+ProjectCod+'%', 'P0001,P0002') > 0 ",
     1},

    // Serials and reservations.
    {"Select IsNull(Max(Serial), 0) + 1 As Serial From N_NaghdTrans Where WhatDoc='10'", 1},
    {" Select cast(IsNull(Max(resid2),0) as integer) As MaxRes From Reserveid  Where ProgNam='N' "
     "And Ltrim(Rtrim(WhatDoc)) = '10'",
     1},
    {"Select Count(*) As iCount From N_NaghdTrans Where Serial='1' And WhatDoc='10'", 1},
    {"Select IsNull(Max(Serial), 0) + 1 As SerialNo From N_NaghdTrans Where WhatDoc='10'", 1},
    {"Select Serial From N_NaghdTrans Where Serial='1' And WhatDoc='10'", 2},
    {"Insert Into ReserveId(UserId, ProgNam, WhatDoc, ResId1, ResId2) Select '2', 'N', '10', '', "
     "'1'",
     -1},
    {" Select UserId, Count(*) As iCount From ReserveId Where  LTrim(RTrim(ProgNam))='N'  And "
     "LTrim(RTrim(WhatDoc))='10'  And LTrim(RTrim(ResId1))=''  And LTrim(RTrim(ResId2))='1'  And "
     "LTrim(RTrim(UserId)) != '1'  Group By UserId  Order By UserId ",
     1},
    {"Delete From ReserveId Where ProgNam='N'  And LTrim(WhatDoc)='10'  And LTrim(UserId)='1' ",
     -1},
    {"Delete From ReserveId Where LTrim(ProgNam)='N'  And LTrim(WhatDoc)='10'  And "
     "LTrim(ResId1)=''  And LTrim(ResId2)='1'  And Ltrim(Rtrim(UserId)) = '2'",
     -1},
    {" Delete From N_reserveid Where Whatdoc='10' And Userid='1'", -1},

    // Opening, saving, cancelling and deleting a document.
    {"Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, A.Bed, A.User_Name From Asnad As A Inner Join "
     "N_NaghdTrans As N On (Cast(N.IDX As Varchar(20))=LTrim(A.Document) And A.DocToDate='0') "
     "Where A.TypeSys='N' And A.WhatDoc='10' And A.Bed>0 And LTrim(N.Serial)='1'",
     1},
    {"Select N.CodWhatDoc As CashCod, NC.CashNam From N_NaghdTrans As N Inner Join N_Cash As NC On "
     "(N.CodWhatDoc = NC.CashCod) Where N.WhatDoc='10' And LTrim(N.Serial) = '1' And N.Raj=1",
     1},
    {"Select A.AtfCh, A.SanadNo, A.SanadDate, A.Des, AT.ArzCount As Bed, AT.Nerkh, A.User_Name "
     "From Asnad As A Inner Join N_NaghdTrans As N On (Cast(N.IDX As "
     "Varchar(20))=LTrim(A.Document) "
     "And A.DocToDate='0') Inner Join N_ArzTrans As AT On (AT.IDX = N.IDX) Where A.TypeSys='N' And "
     "A.WhatDoc='10' And A.Bed>0 And LTrim(N.Serial)='1'",
     0},
    {"Select Naghd From Options", 1},
    {"Select Count(*) As iCount From Asnad Where TypeSys='N' And DocToDate='1' And WhatDoc2='10' "
     "And LTrim(Document) In (Select Cast(IDX As Varchar(20)) From N_NaghdTrans Where WhatDoc='10' "
     "And LTrim(Serial)='1')",
     1},
    {"Select Sum(Bes) As SumField From Asnad Where TypeSys='N'", 1},
    {"Create Table ##N_A_CASHGET_T1 (Raj Int, Koll Varchar(3), Moein Varchar(4), Tafsily "
     "Varchar(5), Tafsily2 Varchar(5), ProjectCod Varchar(10), Des NVarchar(200), Bes Float, "
     "WhatDoc2 Varchar(10), NamWhatDoc2 NVarchar(100), CodWhatDoc2 Varchar(10), ManabehCod "
     "Varchar(5), ArzCod Varchar(10), ArzNam NVarchar(50), ArzRate Float, ArzUnitPrice Float, "
     "ArzTotalPrice Float, IDX Int)",
     -1},
    {"Insert Into ##N_A_CASHGET_T1 (Raj, Koll, Moein, Tafsily, Des, Bes, IDX) Values (1, '104', "
     "'0001', '30001', 'بابت تسويه صورتحساب فروش', 5000000, 2)",
     -1},
    {"Select * From ##N_A_CASHGET_T1 Order By Raj", 1},
    {"Select Sum(Bes) As Bes From ##N_A_CASHGET_T1", 1},
    {"If Exists (Select * From Tempdb..SysObjects Where [Name] Like '##N_A_CASHGET_T1History')"
     "Exec('Drop Table ##N_A_CASHGET_T1History')",
     -1},
    {"select * into ##N_A_CASHGET_T1History from Asnad where TypeSys='N' and "
     "ltrim(rtrim(Document)) in( select IDX from n_naghdtrans where ltrim(rtrim(Serial)) ='1' and "
     "WhatDoc = '10') order by Raj",
     -1},
    {"Select * From ##N_A_CASHGET_T1History", 2},
    {"If Exists (Select * From Tempdb..SysObjects Where [Name] Like '##N_A_CASHGET_T1History')"
     "Exec('Drop Table ##N_A_CASHGET_T1History')",
     -1},
    {"select * into ##N_A_CASHGET_T1History from Asnad where TypeSys='N' and ltrim(rtrim(SanadNo)) "
     "= '1' order by Raj",
     -1},
    {"Select Top 1 SanadDate From Asnad Where SanadNo='1'", 1},
    {"Select * From Asnad Where TypeSys='N' And SanadNo=1 Order By Raj", 2},
    {"UPDATE R_OldFactor SET  NaghdValue = NaghdValue1 ", -1},
    {"Update R_OldFactor Set NaghdValue = NaghdValue + IsNull((Select Sum(R.NaghdValue) From "
     "R_ForoshRelatedNaghd As R Where R.WhatDoc = '10' And R.SanadNoForosh + '_' + R.DorehMali = "
     "R_OldFactor.SanadNoForosh + '_' + R_OldFactor.MainDorehMali), 0)",
     -1},
    {"UPDATE R_OldFactor SET MandehFactor = FactorValue - NaghdValue ", -1},
    {"Select * From R_OldFactor Where SanadNoForosh = '1001' And MandehFactor = 15000000", 1},
    {"select * from R_ForoshRelatedNaghd where whatdoc = 10 and Serial = 1 and IDX in (select "
     "distinct IDX from ##N_A_CASHGET_T1)",
     1},
    {"Update R_OldFactor Set NaghdValue = NaghdValue - IsNull((Select Sum(R.NaghdValue) From "
     "R_ForoshRelatedNaghd As R Where R.WhatDoc = '10' And R.Serial = 1 And R.SanadNoForosh = "
     "R_OldFactor.SanadNoForosh And R.DorehMali = R_OldFactor.MainDorehMali), 0)",
     -1},
    {"UPDATE R_OldFactor SET MandehFactor = FactorValue - NaghdValue ", -1},
    {"Delete From R_ForoshRelatedNaghd Where Whatdoc = '10' And Serial = '1'", -1},

    // Fixed descriptions.
    {"Select ProjectCod, Tafsily2, Tafsily, Moein, Koll, FixDes, IDX = Identity(int, 1, 1) Into "
     "##FixDes_T1 From FixDes Where Koll = '104' And Moein = '0001' And Tafsily = '30001'  Or "
     "(Koll='' And Moein='' And Tafsily='' And Tafsily2='' And ProjectCod='') Order By Koll, Moein",
     -1},
    {"Select * From ##FixDes_T1", 2},
    {"Select * From FixDes Where Koll = '104' And Moein = '0001'", 2},
    {"Select Tafsily2, IsActive From Tafsily2 Where Tafsily2 = '51001' And "
     "PatIndex('%'+SubString(Tafsily2, 1, 2)+'%', '51') > 0",
     1},
    {"Select ProjectCod, IsActive From M_Project Where ProjectCod = 'P0001' And "
     "PatIndex('%'+SubString(ProjectCod, 1, 2)+'%', 'P0') > 0",
     1},
    {"Select Count(*) As iCount From FixDes Where Koll = '104' And Moein = '0001' And Tafsily = '' "
     "And Tafsily2 = '' And ProjectCod = '' And FixDes = 'بابت تسويه صورتحساب فروش'",
     1},

    // Grid layouts.
    {"Delete From Grid_State Where UserId='1' And sProg = 'N' And sItem = 'A' And sForm ='CASHGET' "
     "And sPart='GRID'",
     -1},
    {"Insert Into Grid_State(UserId, sVisible, sProg, sItem, sForm, sPart, sColName, iLen, iRaj) "
     "Values('1', 'F', 'N', 'A', 'CASHGET', 'GRID', 'ArzCod', 64, 9)",
     -1},
    {"Select * From Grid_State Where UserId='1' And sProg = 'N' And sItem = 'A' And sForm = "
     "'CASHGET' And sPart='GRID' Order By iRaj ",
     1},
};

TEST_F(DemoCompanyTest, DocumentStatementsRunAsTheScreensWriteThem) {
    for (const char* sql : kReceipt) company().execute(QString::fromUtf8(sql));
    for (const Statement& statement : kStatements) {
        SCOPED_TRACE(statement.text);
        try {
            const tr::db::ExecResult result = company().execute(QString::fromUtf8(statement.text));
            if (statement.rows >= 0) {
                ASSERT_FALSE(result.resultSets.empty());
                EXPECT_EQ(static_cast<int>(result.resultSets.front().rows.size()), statement.rows);
            }
        } catch (const tr::db::DatabaseError& error) {
            ADD_FAILURE() << testing::describe(error);
        }
    }
    // The receipt's settlement was undone: the invoice is back to its balance before it.
    EXPECT_DOUBLE_EQ(
        testing::scalar(company(), QStringLiteral("Select MandehFactor From R_OldFactor "
                                                  "Where SanadNoForosh = '1001'"))
            .toDouble(),
        20000000.0);
}

}  // namespace
}  // namespace tr::schema
