// The received-cheque document's row commands, driven as its grids' menus drive them: a cheque
// deleted with its counterparty lines (and only its own), a cheque tied to sales invoices that
// keeps its links until the document is saved without it, and the account head copied down,
// with the lines numbered 0,1,2,... after every change.
#include "cheques/received_cheque_rows.h"

#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

class ReceivedChequeRowsTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        doc = std::make_unique<ReceivedChequeDocument>(session->services);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/10");
        doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    }
    void TearDown() override {
        doc.reset();
        session.reset();
    }

    bool typeCheque(const QString& number, double value) {
        return testing::typeReceivedCheque(doc->cheques(), {number, value});
    }
    void execute(const QString& sql) {
        company().execute(
            QString(sql).replace(QStringLiteral("<taraf>"),
                                 QStringLiteral("##") + doc->prefix() + QStringLiteral("_Taraf")));
    }
    // A field of every counterparty line, in the grid's order.
    QStringList lines(const char* field) {
        tr::db::Query& q = doc->counterparties();
        QStringList values;
        for (int row = 0; row < q.RecordCount(); ++row)
            values << q.value(row, q.fieldIndex(QString::fromLatin1(field))).toString().trimmed();
        return values;
    }
    static qint64 count(const QString& sql) {
        return tr::db::firstColumn(company(), sql).toLongLong();
    }
    const QString& lastMessage() { return session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeDocument> doc;
};

TEST_F(ReceivedChequeRowsTest, ADeletedChequeTakesItsOwnLinesAndTheRestAreRenumbered) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5001"), 3000));
    ASSERT_TRUE(typeCheque(QStringLiteral("5002"), 2000));
    // Both split in two; the second half of 5001 was typed with blanks around its number.
    execute(QStringLiteral("Update <taraf> Set ChqValue = ChqValue - 1000"));
    execute(QStringLiteral(
        "Insert Into <taraf> (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
        "(2, '01', '202', '0001', ' ج ', ' 5001 ', 1000)"));
    execute(QStringLiteral(
        "Insert Into <taraf> (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
        "(3, '01', '202', '0001', 'ج', '5002', 1000)"));
    doc->counterparties().Open();

    // A new row typed with 5002's number is only dropped: 5002's lines stay.
    doc->cheques().Append();
    doc->cheques().FieldByName(QStringLiteral("ChqNo")).SetValue(QStringLiteral("5002"));
    session->dialog.answerYes();
    ASSERT_TRUE(deleteChequeRow(*doc));
    EXPECT_EQ(lines("ChqNo"), (QStringList{"5001", "5002", "5001", "5002"}));

    // "No" while the user is typing over 5001 gives the typing back.
    doc->cheques().First();
    doc->cheques().Edit();
    doc->cheques().FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("تايپ شده"));
    session->dialog.answerNo();
    EXPECT_FALSE(deleteChequeRow(*doc));
    EXPECT_EQ(lastMessage(), QStringLiteral("آيا حذف شود؟"));
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("3QR"));
    ASSERT_EQ(doc->cheques().state(), tr::db::Query::State::Edit);
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("Des")).AsString(),
              QStringLiteral("تايپ شده"));
    EXPECT_EQ(lines("ChqNo").size(), 4);

    session->dialog.answerYes();
    ASSERT_TRUE(deleteChequeRow(*doc));
    ASSERT_EQ(doc->cheques().RecordCount(), 1);
    EXPECT_EQ(doc->cheques().FieldByName(QStringLiteral("ChqNo")).AsString(),
              QStringLiteral("5002"));
    EXPECT_EQ(lines("ChqNo"), (QStringList{"5002", "5002"}));
    EXPECT_EQ(lines("Raj"), (QStringList{"0", "1"}));
    EXPECT_EQ(doc->debitTotal(), doc->creditTotal());
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedChequeRowsTest,
       AChequeAssignedToInvoicesAsksItsOwnQuestionAndLosesItsLinksOnlyWithTheSave) {
    ASSERT_TRUE(typeCheque(QStringLiteral("5101"), 1000));
    ASSERT_TRUE(typeCheque(QStringLiteral("5102"), 2000));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    const QString serial = doc->header().serial;
    company().execute(QStringLiteral("Delete From R_OldFactor Where SanadNoForosh = '99001'"));
    company().execute(QStringLiteral(
        "Insert Into R_OldFactor (SanadNoForosh, MainDorehMali, DorehMali, FactorValue, "
        "NaghdValue, MandehFactor) Values ('99001', '1404', '1404', 5000, 1900, 3100)"));
    for (const auto& [number, value] : {std::pair{"5101", "400"}, std::pair{"5102", "1500"}}) {
        company().execute(
            QStringLiteral(
                "Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, AtfCh, DocToDate, "
                "SanadNoForosh, TypeAction, NaghdValue, DorehMali) Values (0, '71', ") +
            serial + QStringLiteral(", '") + QLatin1String(number) +
            QStringLiteral("', 'ج', '99001', '1', ") + QLatin1String(value) +
            QStringLiteral(", '1404')"));
    }
    const QString links =
        QStringLiteral("Select Count(*) From R_ForoshRelatedNaghd Where WhatDoc = '71'");
    const QString question =
        QStringLiteral("با حذف چک  ارتباط آن با صورتحساب هاي فروش قطع خواهد شد.آيا حذف شود؟");

    doc->cheques().Last();
    session->dialog.answerNo();
    EXPECT_FALSE(deleteChequeRow(*doc));
    EXPECT_EQ(lastMessage(), question);
    session->dialog.answerYes();
    ASSERT_TRUE(deleteChequeRow(*doc));
    EXPECT_EQ(count(links), 2);  // the book is untouched until the save
    // "انصراف" brings the cheque back, links and all.
    doc->cancelEdits();
    EXPECT_EQ(doc->cheques().RecordCount(), 2);

    doc->cheques().Last();
    session->dialog.answerYes();
    ASSERT_TRUE(deleteChequeRow(*doc));
    ASSERT_TRUE(doc->save()) << lastMessage().toStdString();
    EXPECT_EQ(
        tr::db::firstColumn(company(), QStringLiteral("Select AtfCh From R_ForoshRelatedNaghd"))
            .toString(),
        QStringLiteral("5101"));
    EXPECT_EQ(count(links), 1);
    // The invoice owes again what the deleted cheque paid.
    EXPECT_EQ(
        count(QStringLiteral("Select NaghdValue From R_OldFactor Where SanadNoForosh = '99001'")),
        400);
    EXPECT_EQ(
        count(QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = '99001'")),
        4600);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(ReceivedChequeRowsTest, TheHeadIsCopiedToTheLinesBelowAndADeletedLineLeavesTheRestNumbered) {
    for (const char* number : {"5201", "5202", "5203"})
        ASSERT_TRUE(typeCheque(QString::fromLatin1(number), 1000));
    execute(
        QStringLiteral("Update <taraf> Set Koll = '202', Moein = '0001', Tafsily = '20001', "
                       "CodWhatDoc2 = '20001', "
                       "NamWhatDoc2 = 'طرف دوم', WhatDoc2 = '02' Where Raj = 1"));
    tr::db::Query& q = doc->counterparties();
    q.Open();
    q.MoveTo(1);
    ASSERT_TRUE(copyAccountHeadDown(*doc));
    EXPECT_EQ(lines("Koll"), (QStringList{"104", "202", "202"}));
    EXPECT_EQ(lines("NamWhatDoc2"), (QStringList{"", "طرف دوم", "طرف دوم"}));
    EXPECT_EQ(lines("WhatDoc2"), (QStringList{"01", "02", "02"}));
    EXPECT_EQ(lines("ChqNo"), (QStringList{"5201", "5202", "5203"}));  // each line keeps its cheque
    EXPECT_EQ(q.RecNo(), 2);
    q.Last();
    EXPECT_FALSE(copyAccountHeadDown(*doc));  // nothing below the last line

    q.First();
    session->dialog.answerYes();
    ASSERT_TRUE(deleteCounterpartyRow(*doc));
    EXPECT_EQ(lines("ChqNo"), (QStringList{"5202", "5203"}));
    EXPECT_EQ(lines("Raj"), (QStringList{"0", "1"}));
}

}  // namespace
}  // namespace tr::cheques
