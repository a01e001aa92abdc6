// The received-cheque document driven as its screen does: cheques typed into the grid, their
// counterparty lines kept in step (and split by hand), the save's refusals in their order, an
// opening-cheque document, loading, deleting and the weighted due date, with the ledger checked
// after every posting.
#include "cheques/received_cheque_document.h"

#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class ReceivedChequeDocumentTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        doc = std::make_unique<ReceivedChequeDocument>(session->services);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/10");
        doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    }
    void TearDown() override {
        doc.reset();
        session.reset();
    }

    // A cheque typed into the grid, its drawer's account number with it; whether the row posted.
    bool typeCheque(const QString& number, double value, const QString& due = QStringLiteral("1404/05/10"),
                    const QString& series = QStringLiteral("ج")) {
        tr::db::Query& g = doc->cheques();
        g.Append();
        testing::typeReceivedFields(g, {number, value, series, due});
        g.FieldByName(QStringLiteral("AcountCod")).SetValue(QStringLiteral("0102030405"));
        g.Post();
        const bool posted = g.state() == tr::db::Query::State::Browse;
        if (!posted) g.Cancel();
        return posted;
    }
    static qint64 count(const QString& sql) { return tr::db::firstColumn(company(), sql).toLongLong(); }
    const QString& lastMessage() { return session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeDocument> doc;
};

TEST_F(ReceivedChequeDocumentTest, TwoChequesOneSplitSaveAndAOneRialDifferenceIsRefused) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5001"), 3000000));
    ASSERT_TRUE(typeCheque(QStringLiteral("5002"), 2000000));
    // Each cheque brought its counterparty line, on the account of the lower box.
    tr::db::Query& lines = doc->counterparties();
    ASSERT_EQ(lines.RecordCount(), 2);
    EXPECT_EQ(lines.FieldByName(QStringLiteral("Koll")).AsString().trimmed(), QStringLiteral("104"));
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("ChqGetter")).AsString(), QStringLiteral("حامل"));
    // The second cheque split: 1,200,000 here and 800,000 to another account, one rial short.
    company().execute(QStringLiteral("Update ##") + doc->prefix() +
                      QStringLiteral("_Taraf Set ChqValue = 1200000 Where ChqNo = '5002'"));
    company().execute(QStringLiteral("Insert Into ##") + doc->prefix() +
                      QStringLiteral("_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values (2, '01', '202', "
                                     "'0001', 'ج', '5002', 799999)"));
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("سند تراز نميباشد."));
    company().execute(QStringLiteral("Update ##") + doc->prefix() +
                      QStringLiteral("_Taraf Set ChqValue = 1800000 Where ChqNo = '5001'"));
    company().execute(QStringLiteral("Insert Into ##") + doc->prefix() +
                      QStringLiteral("_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values (3, '01', '202', "
                                     "'0001', 'ج', '5001', 1200001)"));
    // Balanced in total, but each cheque's lines are a rial off.
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("جمع مبلغ چك 5001 در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد."));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 0);
    company().execute(QStringLiteral("Update ##") + doc->prefix() +
                      QStringLiteral("_Taraf Set ChqValue = 1200000 Where ChqNo = '5001' And Koll = '202'"));
    company().execute(QStringLiteral("Update ##") + doc->prefix() +
                      QStringLiteral("_Taraf Set ChqValue = 800000 Where ChqNo = '5002' And Koll = '202'"));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_EQ(doc->mode(), DocumentMode::Edit);
    EXPECT_EQ(doc->caption(), QStringLiteral("اصلاح (به روزآوري شده است)"));
    EXPECT_FALSE(doc->header().voucherNo.isEmpty());
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Asnad Where WhatDoc = '71' And Bes > 0")), 4);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From ASNADACTIONS Where ActType = 'I'")), 1);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    // Loaded back as saved.
    const QString serial = doc->header().serial;
    doc->newDocument();
    ASSERT_TRUE(doc->open(serial));
    EXPECT_EQ(doc->cheques().RecordCount(), 2);
    EXPECT_EQ(doc->counterparties().RecordCount(), 4);
    EXPECT_FALSE(doc->open(QStringLiteral("999")));
    EXPECT_EQ(lastMessage(), QStringLiteral("اين شماره دريافت چک در دسترس نمي باشد"));
}

TEST_F(ReceivedChequeDocumentTest, TheSaveRefusesInItsOrder) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5101"), 1000));
    const QString taraf = QStringLiteral("##") + doc->prefix() + QStringLiteral("_Taraf");
    company().execute(QStringLiteral("Update ") + taraf + QStringLiteral(" Set Koll = ''"));
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("سرفصل در قسمت طرف حساب پر نشده است"));
    company().execute(QStringLiteral("Update ") + taraf + QStringLiteral(" Set Koll = '104'"));
    company().execute(QStringLiteral("Insert Into ") + taraf +
                      QStringLiteral(" (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values (5, '01', '104', '0002', "
                                     "'ج', '5199', 0)"));
    EXPECT_FALSE(doc->save());
    EXPECT_EQ(lastMessage(), QStringLiteral("چك 5199 در قسمت بالا ثبت نشده است !"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 0);
    // The row checks: empty fields, the same cheque twice.
    EXPECT_FALSE(typeCheque(QString(), 10));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك وارد نشده است."));
    EXPECT_FALSE(typeCheque(QStringLiteral("5102"), 0));
    EXPECT_EQ(lastMessage(), QStringLiteral("مبلغ چك وارد نشده است."));
    EXPECT_FALSE(typeCheque(QStringLiteral("5102"), 10, QStringLiteral("1404/13/01")));
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ سررسيد معتبر نميباشد."));
    EXPECT_FALSE(typeCheque(QStringLiteral("5101"), 10));
    EXPECT_EQ(lastMessage(), QStringLiteral("شماره چك تكراري ميباشد."));
}

TEST_F(ReceivedChequeDocumentTest, AChequeInTheBookIsRefusedUnlessReturnedToItsDrawerBeforeTheIssueDate) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5201"), 1000));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    doc->newDocument();
    doc->header().date = QStringLiteral("1404/03/01");
    EXPECT_FALSE(typeCheque(QStringLiteral("5201"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("چك شماره 5201 با سريج قبلا ثبت شده است !"));
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) Values "
                                     "('78', '5201', 'ج', '1404/03/01', '', 0)"));
    EXPECT_FALSE(typeCheque(QStringLiteral("5201"), 1000));
    EXPECT_EQ(lastMessage(), QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ 1404/03/01 باشد."));
    doc->header().date = QStringLiteral("1404/03/02");
    ASSERT_TRUE(typeCheque(QStringLiteral("5201"), 1000));
    // Its drawer's account had a cheque come back: a warning, and the row is kept.
    EXPECT_TRUE(lastMessage().contains(QStringLiteral("قبلا برگشت داده شده است"))) << lastMessage().toStdString();
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedChequeDocumentTest, ADocumentDeletesWhileItsChequesAreInHandOnly) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5301"), 1000));
    ASSERT_TRUE(typeCheque(QStringLiteral("5302"), 2000));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    company().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) Values "
                                     "('72', '5302', 'ج', '1404/03/01', '', 0)"));
    EXPECT_FALSE(doc->remove());
    EXPECT_EQ(lastMessage(), QStringLiteral("آخرين گردش چك شماره 5302 در جريان وصول ميباشد."));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 4);
    company().execute(QStringLiteral("Delete From N_ChqLastTrans Where WhatDoc = '72'"));
    ASSERT_TRUE(doc->remove()) << lastMessage().toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N'")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From ASNADACTIONS Where ActType = 'D'")), 1);
    EXPECT_EQ(doc->mode(), DocumentMode::New);
}

TEST_F(ReceivedChequeDocumentTest, AnOpeningDocumentKeepsItsLogAndNoVoucherAndDeletesWhole) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5401"), 1000));
    ASSERT_TRUE(doc->save(/*opening=*/true)) << lastMessage().toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N'")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqFirst")), 2);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqFirst_Log")), 2);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select TypeDoc From ASNADACTIONS")).toString(),
              QStringLiteral("دريافت چک - چک اول دوره"));
    ASSERT_TRUE(doc->remove()) << lastMessage().toStdString();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_ChqFirst")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From N_NaghdTrans")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) From ASNADACTIONS Where ActType = 'D'")), 1);
}

TEST_F(ReceivedChequeDocumentTest, TheWeightedDueDateOfAKnownSetAndOfNone) {
    doc->showWeightedDueDate();
    EXPECT_EQ(lastMessage(), QStringLiteral("محاسبه راس چك امكان پذير نيست!"));
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1IR"));  // "1I" as the dialog normalises it
    // 10 days for 1,000 and 40 days for 3,000 from 1404/02/10: (10000 + 120000) / 4000 = 32.5.
    ASSERT_TRUE(typeCheque(QStringLiteral("5501"), 1000, QStringLiteral("1404/02/20")));
    ASSERT_TRUE(typeCheque(QStringLiteral("5502"), 3000, QStringLiteral("1404/03/19")));
    ASSERT_EQ(doc->weightedDueDays(), 33);
    doc->showWeightedDueDate();
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral(" راس چكهاي دريافتي 33 روز "))) << lastMessage().toStdString();
    EXPECT_TRUE(lastMessage().contains(QStringLiteral("4,000")));
}

}  // namespace
}  // namespace tr::cheques
