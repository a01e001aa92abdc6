// The cheques-to-bank list and its deposit slips, over cheques sent to collection through the
// actions screen's received tab.
#include "cheques/cheques_to_bank.h"

#include <gtest/gtest.h>

#include <QScopeGuard>

#include "cheques/bank_slips.h"
#include "cheques/tests/received_action_steps.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

const QString& kCollect = testing::kCollectAction;
const QString kCollected = QStringLiteral("وصول چک");
const QString kUndo = QStringLiteral("حذف عمليات قبلي");

class ChequesToBankTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        list = std::make_unique<ChequesToBank>(session->services);
    }
    void TearDown() override {
        list.reset();
        session.reset();
    }

    // Cheques numbered from `first`, one receipt; the amounts 1,000,000 × (1, 2, ...).
    static void receive(int first, int count, qint64 serial, const QString& series = QString()) {
        std::vector<DocumentCheque> cheques;
        for (int i = 0; i < count; ++i) {
            DocumentCheque ch;
            ch.number = QString::number(first + i);
            ch.series = series;
            ch.value = 1000000.0 * (i + 1);
            ch.due = QStringLiteral("1404/05/%1").arg(10 + i, 2, 10, QLatin1Char('0'));
            cheques.push_back(ch);
        }
        receiveCheques(cheques, serial);
    }
    void act(const QStringList& numbers, const QString& name, const QString& date, qint64 bankAccount = 1) {
        testing::actOnReceived(*session, numbers, name, date, bankAccount);
    }
    static QStringList range(int first, int count) {
        QStringList out;
        for (int i = 0; i < count; ++i) out << QString::number(first + i);
        return out;
    }
    QStringList listed() {
        QStringList out;
        for (list->rows().First(); !list->rows().Eof(); list->rows().Next())
            out << list->rows().FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
        return out;
    }
    void tickAll() {
        for (list->rows().First(); !list->rows().Eof(); list->rows().Next()) list->toggleTick();
    }
    int printRows(const BankSlips& slips, bool fillers) {
        return tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From ") + slips.printTable() +
                                                  (fillers ? QStringLiteral(" Where ChqNo = ''")
                                                           : QStringLiteral(" Where ChqNo <> ''")))
            .toInt();
    }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ChequesToBank> list;
};

TEST_F(ChequesToBankTest, ListsEveryStandingCollectionOfTheAccountInTheRangeWhateverTheStateNow) {
    receive(701, 5, 1, QStringLiteral("ب"));
    act({QStringLiteral("701"), QStringLiteral("702"), QStringLiteral("703")}, kCollect, QStringLiteral("1404/03/05"), 1);
    act({QStringLiteral("704")}, kCollect, QStringLiteral("1404/03/20"), 2);
    act({QStringLiteral("705")}, kCollect, QStringLiteral("1404/04/02"), 1);
    // Collected afterwards: still listed, so its slip can be printed again. Undone: gone.
    act({QStringLiteral("701")}, kCollected, QStringLiteral("1404/05/10"));
    act({QStringLiteral("702")}, kUndo, QString());

    const auto month = ChequesToBank::monthRange(QStringLiteral("1404/03"));
    EXPECT_EQ(month.first, QStringLiteral("1404/03/01"));
    EXPECT_EQ(month.second, QStringLiteral("1404/03/31"));
    list->filters().fromDate = month.first;
    list->filters().toDate = month.second;
    list->fill();
    EXPECT_EQ(listed(), (QStringList{QStringLiteral("701"), QStringLiteral("703"), QStringLiteral("704")}));

    list->filters().account = QStringLiteral("0101234567");
    list->fill();
    ASSERT_EQ(listed(), (QStringList{QStringLiteral("701"), QStringLiteral("703")}));
    tr::db::Query& rows = list->rows();
    rows.First();
    EXPECT_EQ(rows.FieldByName(QStringLiteral("HesabVago")).AsString().trimmed(), QStringLiteral("0101234567"));
    EXPECT_EQ(rows.FieldByName(QStringLiteral("ActionDate")).AsString().trimmed(), QStringLiteral("1404/03/05"));
    EXPECT_EQ(rows.FieldByName(QStringLiteral("SarResidDate")).AsString().trimmed(), QStringLiteral("1404/05/10"));
    EXPECT_EQ(rows.FieldByName(QStringLiteral("Joz")).AsString().trimmed(), QStringLiteral("ب"));
    EXPECT_DOUBLE_EQ(rows.FieldByName(QStringLiteral("ChqValue")).AsFloat(), 1000000);
    EXPECT_EQ(rows.FieldByName(QStringLiteral("BankName")).AsString().trimmed(), QStringLiteral("بانک ملي"));
    EXPECT_FALSE(rows.FieldByName(QStringLiteral("SanadNo")).AsString().trimmed().isEmpty());

    // The drawee bank's range: every cheque here is on bank 01.
    list->filters().fromBank = QStringLiteral("02");
    list->fill();
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(list->workTableColumns().contains(QStringLiteral("BankCod Varchar(10)")));
}

TEST_F(ChequesToBankTest, TicksCountAndTitleSortingThenByNumber) {
    receive(801, 3, 1);
    act({QStringLiteral("803")}, kCollect, QStringLiteral("1404/03/01"));
    act({QStringLiteral("801"), QStringLiteral("802")}, kCollect, QStringLiteral("1404/03/02"));
    // A bank name wider than the list's column is cut to it, not refused.
    company().execute(QStringLiteral("Update N_Bank Set BankNam = 'بانک ملي ايران - مديريت شعب استان تهران' "
                                     "Where BankCod = '01'"));
    // The demo's name again for the tests that follow in this process.
    const auto restoreName = qScopeGuard(
        [] { company().execute(QStringLiteral("Update N_Bank Set BankNam = 'بانک ملي' Where BankCod = '01'")); });
    list->fill();
    EXPECT_EQ(list->rows().FieldByName(QStringLiteral("BankName")).AsString().trimmed(),
              QStringLiteral("بانک ملي ايران - مديريت").left(20).trimmed());
    EXPECT_EQ(listed(), (QStringList{QStringLiteral("803"), QStringLiteral("801"), QStringLiteral("802")}));
    list->rows().First();
    EXPECT_EQ(list->toggleTick(), 1);
    EXPECT_EQ(list->rows().FieldByName(QStringLiteral("sSelect")).AsString(), ChequesToBank::kTicked);
    list->rows().Next();
    EXPECT_EQ(list->toggleTick(), 2);
    list->rows().First();
    EXPECT_EQ(list->toggleTick(), 1);
    EXPECT_EQ(list->tickedCount(), 1);
    list->sortBy(QStringLiteral("HesabVago"));  // one account: by number then
    EXPECT_EQ(listed(), (QStringList{QStringLiteral("801"), QStringLiteral("802"), QStringLiteral("803")}));
    list->sortBy(QStringLiteral("ChqValue"));
    EXPECT_EQ(listed(), (QStringList{QStringLiteral("801"), QStringLiteral("802"), QStringLiteral("803")}));
    EXPECT_EQ(list->tickedCount(), 1);  // sorting keeps the ticks
}

TEST_F(ChequesToBankTest, SevenChequesAtFiveRowsMakeTwoSlipsTheSecondFilledAndAReprintAddsNothing) {
    receive(901, 7, 1, QStringLiteral("12"));
    act(range(901, 7), kCollect, QStringLiteral("1404/03/01"));
    list->fill();
    BankSlips slips(session->services);
    EXPECT_FALSE(slips.build(*list, {}));
    EXPECT_EQ(session->dialog.last().text, BankSlips::kNothingTicked);
    EXPECT_EQ(session->dialog.last().code, QStringLiteral("1WR"));

    tickAll();
    ASSERT_TRUE(slips.build(*list, {true, 5}));
    const SlipSet set = slips.slips();
    ASSERT_EQ(set.slips.size(), 2);
    EXPECT_EQ(set.slips[0].lines.size(), 5);
    EXPECT_EQ(set.slips[0].count, 5);
    EXPECT_DOUBLE_EQ(set.slips[0].sum, 15000000);
    EXPECT_EQ(set.slips[0].lines[0].number, QStringLiteral("12_901"));
    EXPECT_EQ(set.slips[0].account, QStringLiteral("0101234567"));
    EXPECT_EQ(set.slips[0].bankName, QStringLiteral("بانک ملي"));
    ASSERT_EQ(set.slips[1].lines.size(), 5);
    EXPECT_EQ(set.slips[1].count, 2);
    EXPECT_DOUBLE_EQ(set.slips[1].sum, 13000000);
    EXPECT_EQ(set.slips[1].sumInWords, QStringLiteral("سيزده ميليون ريال"));
    EXPECT_TRUE(set.slips[1].lines[2].filler);
    EXPECT_TRUE(set.slips[1].lines[4].filler);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Max(Idx) From ") + slips.printTable() +
                                                 QStringLiteral(" Where ChqNo = ''"))
                  .toString()
                  .trimmed(),
              QStringLiteral("0101234567_1"));

    // Printed again: the same seven lines and three fillers, none left over from the first.
    ASSERT_TRUE(slips.build(*list, {true, 5}));
    EXPECT_EQ(printRows(slips, false), 7);
    EXPECT_EQ(printRows(slips, true), 3);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Max(countRaj) From ") + slips.summaryTable())
                  .toInt(),
              7);

    // No limit: one slip, no filler, and neither a failure nor a loop.
    ASSERT_TRUE(slips.build(*list, {true, 0}));
    ASSERT_EQ(slips.slips().slips.size(), 1);
    EXPECT_EQ(slips.slips().slips[0].lines.size(), 7);
    EXPECT_EQ(printRows(slips, true), 0);
}

TEST_F(ChequesToBankTest, AccountsGetSlipsOfTheirOwnUnlessNotSplitAndCountRajCountsPerAccountAndBranch) {
    receive(1001, 4, 1);
    act({QStringLiteral("1001"), QStringLiteral("1002"), QStringLiteral("1003")}, kCollect, QStringLiteral("1404/03/01"), 1);
    act({QStringLiteral("1004")}, kCollect, QStringLiteral("1404/03/01"), 2);
    list->fill();
    tickAll();
    BankSlips slips(session->services);
    ASSERT_TRUE(slips.build(*list, {true, 5}));
    SlipSet set = slips.slips();
    ASSERT_EQ(set.slips.size(), 2);
    EXPECT_EQ(set.slips[0].count, 3);
    EXPECT_EQ(set.slips[1].count, 1);
    EXPECT_EQ(set.slips[1].account, QStringLiteral("2012345678"));
    EXPECT_EQ(set.slips[1].bankName, QStringLiteral("بانک تجارت"));
    EXPECT_EQ(printRows(slips, true), 2 + 4);
    const tr::db::Query summary = tr::db::openQuery(
        company(), QStringLiteral("Select HesabVago, countRaj, SanadNo From ") + slips.summaryTable() +
                       QStringLiteral(" Order By HesabVago, ChqNo"));
    ASSERT_EQ(summary.RecordCount(), 4);
    EXPECT_EQ(summary.value(0, 1).toInt(), 3);
    EXPECT_EQ(summary.value(3, 1).toInt(), 1);
    EXPECT_NE(summary.value(0, 2).toString().trimmed(), QStringLiteral("-"));

    ASSERT_TRUE(slips.build(*list, {false, 5}));
    set = slips.slips();
    ASSERT_EQ(set.slips.size(), 1);
    EXPECT_EQ(set.slips[0].count, 4);
    EXPECT_EQ(set.slips[0].lines.size(), 5);
    EXPECT_DOUBLE_EQ(set.slips[0].sum, 10000000);
    EXPECT_EQ(printRows(slips, true), 1);
}

}  // namespace
}  // namespace tr::cheques
