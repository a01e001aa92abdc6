// Voiding blank cheque leaves and undoing it, through the engine on the demo company: the book a
// leaf is found in (ranges compared as text), the void's checks in their order with their
// messages, the state row it writes, the undo that removes only that row, and the rule the
// issued-cheque document reads.
#include "cheques/leaf_voiding.h"

#include <gtest/gtest.h>

#include "common/db/query_helpers.h"
#include "common/persian/persian_date.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "instruments/cheque_work_tables.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

const QString kVoided = QStringLiteral("برگه چك باطل شد.");
const QString kAlreadyVoided = QStringLiteral("اين شماره چك قبلا ابطال شده است !");
const QString kNoBook = QStringLiteral("اين شماره چك در دسته چك ها تعريف نشده است !");
const QString kHasActions = QStringLiteral("اين برگه چک داراي گردش  مي باشد.\nبه فرم عمليات چک مراجعه کنيد.");
const QString kNotVoided = QStringLiteral("اين چك قبلا ابطال نشده است !");

class LeafVoidingTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        dropTestBooks();
        session = std::make_unique<tr::test::TestSession>(company());
        voiding = std::make_unique<LeafVoiding>(session->services);
    }
    void TearDown() override {
        voiding.reset();
        session.reset();
        dropTestBooks();
    }
    // Books this suite adds to the demo company's four.
    static void dropTestBooks() { db().execute(QStringLiteral("Delete From N_Cheque Where AcountID = 2 And Joz <> '7'")); }
    static void addBook(const char* series, const char* first, const char* last) {
        db().execute(QStringLiteral("Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, FormCode) Values (2, '%1', "
                                    "'%2', '%3', '2')")
                         .arg(QLatin1String(series), QLatin1String(first), QLatin1String(last)));
    }
    // A state row as a document writes one (the leaf issued, or an action on it).
    static void stateRow(const char* kind, const char* number, const char* series, int serial) {
        db().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                    "Values ('%1', '%2', '%3', '1404/02/10', '55', %4)")
                         .arg(QLatin1String(kind), QLatin1String(number), QLatin1String(series))
                         .arg(serial));
    }
    bool run(bool voidMode, const QString& number, const QString& series) {
        voiding->setVoidMode(voidMode);
        voiding->setNumber(number);
        voiding->setSeries(series);
        return voiding->confirm();
    }
    bool find(const QString& number, const QString& series) {
        voiding->setNumber(number);
        voiding->setSeries(series);
        return voiding->findBook();
    }
    // "kind/serial" of the leaf's state rows, in order.
    static QStringList rowsOf(const char* number) {
        QStringList out;
        const auto r = rows(QStringLiteral("Select WhatDoc, Serial From N_ChqLastTrans Where ChqNo = '%1' Order By IDX")
                                .arg(QLatin1String(number)));
        for (const auto& row : r.rows) out << row[0].toString() + QLatin1Char('/') + row[1].toString();
        return out;
    }
    // Leaf `number` of series 12 paid to a supplier by payment `serial` of the cheque-payment
    // procedure: its refusal, or "" when the leaf was issued.
    static QString issue(const QString& number, qint64 serial, const QString& series = QStringLiteral("12"),
                         qint64 account = 1) {
        remake(QStringLiteral("##LV81Bed"), tr::instruments::paymentChequeWorkTableColumns());
        remake(QStringLiteral("##LV81_Taraf"), tr::instruments::counterpartyWorkTableColumns());
        tr::db::Connection& c = db();
        c.execute(QStringLiteral("Insert Into ##LV81Bed (Raj, ChqStateNam, AcountID, Joz, ChqNo, ChqValue, ChqGetter, "
                                 "SarResidDate, Des) Values (0, 'صدور چك', %1, %2, %3, 1000000, 'حامل', '1404/03/01', "
                                 "'خريد')")
                      .arg(tr::db::sqlNumber(account), c.text(series), c.text(number)));
        c.execute(QStringLiteral("Insert Into ##LV81_Taraf (Raj, WhatDoc2, Koll, Moein, Tafsily, Joz, ChqNo, ChqValue, "
                                 "Des) Values (0, '01', '202', '0001', '', %1, %2, 1000000, 'خريد')")
                      .arg(c.text(series), c.text(number)));
        return refusal([&] {
            c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqPay 'TRANS->DB', 'LV81', %1, '1404/02/20', 'admin', 'NEW'")
                          .arg(c.text(QString::number(serial))));
        });
    }
    QString message() const { return session->dialog.shown().isEmpty() ? QString() : session->dialog.last().text; }
    QString code() const { return session->dialog.last().code; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<LeafVoiding> voiding;
};

TEST_F(LeafVoidingTest, ALeafShowsItsBooksBankAccountOrSaysWhyItHasNone) {
    // Typed on a Persian keyboard.
    ASSERT_TRUE(find(QStringLiteral("۱۰۰۰۰۷"), QStringLiteral(" 12 "))) << message().toStdString();
    const LeafBook& book = *voiding->book();
    EXPECT_EQ(book.acountId, 1);
    EXPECT_EQ(book.bank, QStringLiteral("بانک ملي"));
    EXPECT_EQ(book.branch, QStringLiteral("شعبه مرکزي"));
    EXPECT_EQ(book.accountNumber, QStringLiteral("0101234567"));
    EXPECT_EQ(book.accountNames, (QStringList{QStringLiteral("بانک ها"), QStringLiteral("حسابهاي بانکي ريالي"),
                                              QStringLiteral("بانک ملي شعبه مرکزي"), QString(), QString()}));
    EXPECT_TRUE(session->dialog.shown().isEmpty());

    // The number lies in a book, but of another series.
    EXPECT_FALSE(find(QStringLiteral("100007"), QStringLiteral("7")));
    EXPECT_EQ(message(), QStringLiteral("سري چک را صحيح وارد کنيد."));
    EXPECT_EQ(code(), QStringLiteral("1ER"));
    EXPECT_FALSE(voiding->book());
    EXPECT_FALSE(find(QStringLiteral("100051"), QStringLiteral("12")));
    EXPECT_EQ(message(), kNoBook);
    // A book without a series takes a leaf typed without one.
    ASSERT_TRUE(find(QStringLiteral("300005"), QString()));
    EXPECT_EQ(voiding->book()->accountNumber, QStringLiteral("3019876543"));
}

TEST_F(LeafVoidingTest, BookRangesCompareAsTextSoNumbersOfUnequalWidthFallOutside) {
    addBook("", "99998", "100002");
    // As whole numbers 99999 is in the book; as text "99999" sorts after "100002".
    EXPECT_FALSE(find(QStringLiteral("99999"), QString()));
    EXPECT_EQ(message(), kNoBook);
    EXPECT_FALSE(run(true, QStringLiteral("99999"), QString()));
    EXPECT_EQ(message(), kNoBook);
    EXPECT_TRUE(rowsOf("99999").isEmpty());
    // And the other way: "15" sorts between "1000" and "2000".
    addBook("T", "1000", "2000");
    EXPECT_TRUE(find(QStringLiteral("15"), QStringLiteral("T")));
}

TEST_F(LeafVoidingTest, AVoidIsOneStateRowOfKind83WrittenByPositionAndCannotBeRepeated) {
    ASSERT_TRUE(run(true, QStringLiteral("100007"), QStringLiteral("12"))) << message().toStdString();
    EXPECT_EQ(message(), kVoided);
    EXPECT_EQ(code(), QStringLiteral("1IR"));
    const QString today = tr::persian::defaultDocumentDate(session->global.fiscalStart, session->global.fiscalEnd);
    const auto r = rows(QStringLiteral("Select WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial From N_ChqLastTrans"));
    ASSERT_EQ(r.rows.size(), 1u);
    QStringList written;
    for (const QVariant& v : r.rows[0]) written << v.toString().trimmed();
    // Kind, number, series, date, the book's bank account, serial 0.
    EXPECT_EQ(written, (QStringList{"83", "100007", "12", today, "1", "0"}));
    EXPECT_EQ(leafVoidedOn(company(), QStringLiteral("100007"), QStringLiteral("12")), today);

    EXPECT_FALSE(run(true, QStringLiteral("100007"), QStringLiteral("12")));
    EXPECT_EQ(message(), kAlreadyVoided);
    EXPECT_EQ(code(), QStringLiteral("1ER"));
    EXPECT_EQ(rowsOf("100007"), QStringList{"83/0"});
}

TEST_F(LeafVoidingTest, TheVoidsChecksRunInOrderAndAnIssuedLeafIsSentToTheActionsScreen) {
    EXPECT_FALSE(run(true, QString(), QStringLiteral("12")));
    EXPECT_EQ(message(), QStringLiteral("شماره چك را وارد كنيد !"));
    // Voided (by a document) though in no book: "already voided" comes before "no book".
    stateRow("83", "777777", "", 4);
    EXPECT_FALSE(run(true, QStringLiteral("777777"), QString()));
    EXPECT_EQ(message(), kAlreadyVoided);
    // Moved though in no book: "no book" comes before "has actions".
    stateRow("81", "888888", "", 3);
    EXPECT_FALSE(run(true, QStringLiteral("888888"), QString()));
    EXPECT_EQ(message(), kNoBook);
    // An issued leaf still outstanding.
    stateRow("81", "100010", "12", 3);
    EXPECT_FALSE(run(true, QStringLiteral("100010"), QStringLiteral("12")));
    EXPECT_EQ(message(), kHasActions);
    EXPECT_EQ(code(), QStringLiteral("1ER"));
    EXPECT_EQ(rowsOf("100010"), QStringList{"81/3"});
    // A number of a book of another series is in no book of its own.
    EXPECT_FALSE(run(true, QStringLiteral("100011"), QStringLiteral("7")));
    EXPECT_EQ(message(), kNoBook);
    EXPECT_TRUE(rowsOf("100011").isEmpty());
}

TEST_F(LeafVoidingTest, TheUndoRemovesOnlyTheLeafsOwnVoid) {
    EXPECT_FALSE(run(false, QStringLiteral("100020"), QStringLiteral("12")));
    EXPECT_EQ(message(), kNotVoided);
    EXPECT_EQ(code(), QStringLiteral("1ER"));

    ASSERT_TRUE(run(true, QStringLiteral("100020"), QStringLiteral("12")));
    ASSERT_TRUE(run(true, QStringLiteral("100021"), QStringLiteral("12")));
    // An issued cheque voided on the actions screen: a kind-83 action with its document.
    stateRow("81", "100022", "12", 3);
    stateRow("83", "100022", "12", 9);

    ASSERT_TRUE(run(false, QStringLiteral(" 100020 "), QStringLiteral("12"))) << message().toStdString();
    EXPECT_EQ(message(), QStringLiteral("عمليات با موفقيت انجام شد."));
    EXPECT_EQ(code(), QStringLiteral("1IR"));
    EXPECT_TRUE(rowsOf("100020").isEmpty());
    EXPECT_EQ(rowsOf("100021"), QStringList{"83/0"});
    // Shown as the undone leaf's book.
    ASSERT_TRUE(voiding->book());
    EXPECT_EQ(voiding->book()->accountNumber, QStringLiteral("0101234567"));

    EXPECT_FALSE(run(false, QStringLiteral("100020"), QStringLiteral("12")));
    EXPECT_EQ(message(), kNotVoided);
    EXPECT_FALSE(run(false, QStringLiteral("100022"), QStringLiteral("12")));
    EXPECT_EQ(message(), kNotVoided);
    EXPECT_EQ(rowsOf("100022"), (QStringList{"81/3", "83/9"}));
}

// What the issued-cheque document asks before it writes a leaf.
TEST_F(LeafVoidingTest, AVoidedLeafIsRefusedForIssueUntilItsVoidIsUndone) {
    const QString number = QStringLiteral("300007");
    EXPECT_EQ(leafVoidedOn(company(), number, QString()), std::nullopt);
    ASSERT_TRUE(run(true, number, QString()));
    EXPECT_TRUE(leafVoidedOn(company(), number, QString()).has_value());
    // Series compared as the book keeps it: blanks aside, none the same as empty.
    db().execute(QStringLiteral("Update N_ChqLastTrans Set Joz = Null Where ChqNo = '300007'"));
    EXPECT_TRUE(leafVoidedOn(company(), QStringLiteral(" 300007"), QStringLiteral(" ")).has_value());
    EXPECT_EQ(leafVoidedOn(company(), number, QStringLiteral("12")), std::nullopt);
    ASSERT_TRUE(run(false, number, QString()));
    EXPECT_EQ(leafVoidedOn(company(), number, QString()), std::nullopt);
    // A cheque voided as an action of an issued cheque is refused for having moved, not as a leaf.
    stateRow("81", "100030", "12", 3);
    stateRow("83", "100030", "12", 9);
    EXPECT_EQ(leafVoidedOn(company(), QStringLiteral("100030"), QStringLiteral("12")), std::nullopt);
}

// The same, through the cheque-payment document's procedure.
TEST_F(LeafVoidingTest, ThePaymentProcedureRefusesAVoidedLeafAndIssuesItOnceTheVoidIsUndone) {
    ASSERT_TRUE(run(true, QStringLiteral("100040"), QStringLiteral("12"))) << message().toStdString();
    const QString date = *leafVoidedOn(company(), QStringLiteral("100040"), QStringLiteral("12"));
    EXPECT_EQ(issue(QStringLiteral("100040"), 1),
              QStringLiteral("شماره چك 100040در تاريخ '") + date + QStringLiteral("' ابطال شده است."));
    ASSERT_TRUE(run(false, QStringLiteral("100040"), QStringLiteral("12")));
    EXPECT_EQ(issue(QStringLiteral("100040"), 1), QString());
    // Issued and outstanding: no void here.
    EXPECT_FALSE(run(true, QStringLiteral("100040"), QStringLiteral("12")));
    EXPECT_EQ(message(), kHasActions);
    EXPECT_EQ(rowsOf("100040"), QStringList{"81/1"});

    // The two ways of reading a book's range: the payment finds 99999 in a book from 99998 to
    // 100002, this screen in no book.
    addBook("", "99998", "100002");
    EXPECT_EQ(issue(QStringLiteral("99999"), 2, QString(), 2), QString());
    EXPECT_FALSE(find(QStringLiteral("99999"), QString()));
    EXPECT_EQ(message(), kNoBook);
}

}  // namespace
}  // namespace tr::cheques
