// The received and issued cheque searches driven as their screens drive them, over cheques that
// went through the documents and the actions screen: one row per cheque at its latest state, the
// state boxes, the totals, spent cheques on both sides, opening cheques and the replacement.
#include "cheques/search/cheque_search.h"

#include <gtest/gtest.h>

#include <QMap>

#include "cheques/issued_actions.h"
#include "cheques/received_actions.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

struct Stopper : tr::dialog::ProgressWindow {
    bool stop = false;
    void showState(const QString&) override {}
    void setStateText(const QString&) override {}
    bool stopRequested() override { return stop; }
    void closeState() override {}
};

class ChequeSearchTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        session->services.progress = &progress;
        received = std::make_unique<ReceivedChequeActions>(session->services);
    }
    void TearDown() override {
        received.reset();
        session.reset();
    }

    // Takes `number` through the received tab's action `name` on `date`.
    void act(const QString& number, const QString& name, const QString& date) {
        received->fill();
        tr::db::Query& rows = received->rows();
        bool found = false;
        for (rows.First(); !rows.Eof() && !found; )
            if (rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number) found = true;
            else rows.Next();
        ASSERT_TRUE(found) << number.toStdString();
        ASSERT_TRUE(received->chooseAction(name)) << session->dialog.last().text.toStdString();
        ASSERT_TRUE(received->setActionDate(date)) << session->dialog.last().text.toStdString();
        if (name == QStringLiteral("در جريان وصول")) received->setBankAccount(1);
        ASSERT_TRUE(received->apply()) << session->dialog.last().text.toStdString();
    }

    struct Listed {
        QMap<QString, QString> stateOf;     // cheque number -> NDocNam
        QMap<QString, double> valueOf;      // cheque number -> SValue
        QMap<QString, QString> bankOf;      // cheque number -> BankCod
        QMap<QString, double> totalOf;      // state name -> its total
        double grand = 0;
        int rows = 0, chequeRows = 0;
        bool totalsLast = true;
    };
    static Listed listed(ChequeSearch& search) {
        Listed l;
        tr::db::Query& q = search.result();
        bool seenTotal = false;
        for (q.First(); !q.Eof(); q.Next()) {
            ++l.rows;
            const QString order = q.FieldByName(QStringLiteral("sOrder")).AsString().trimmed();
            const QString name = q.FieldByName(QStringLiteral("NDocNam")).AsString().trimmed();
            const double value = q.FieldByName(QStringLiteral("SValue")).AsFloat();
            if (order.isEmpty()) {
                if (seenTotal) l.totalsLast = false;
                ++l.chequeRows;
                const QString number = q.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed();
                EXPECT_FALSE(l.stateOf.contains(number)) << "listed twice: " << number.toStdString();
                l.stateOf[number] = name;
                l.valueOf[number] = value;
                l.bankOf[number] = q.FieldByName(QStringLiteral("BankCod")).AsString().trimmed();
            } else if (order == QLatin1String("X")) {
                seenTotal = true;
                EXPECT_EQ(q.FieldByName(QStringLiteral("Des")).AsString(),
                          QStringLiteral("جمع ") + name + QStringLiteral(" : "));
                l.totalOf[name] = value;
            } else {
                seenTotal = true;
                EXPECT_EQ(q.FieldByName(QStringLiteral("Des")).AsString(), QStringLiteral("جمع کل "));
                l.grand = value;
            }
        }
        return l;
    }

    static QString des(const char* where) {
        return tr::db::firstColumn(company(), QStringLiteral("Select Max(Des) From Asnad Where ") +
                                                  QString::fromUtf8(where))
            .toString();
    }

    Stopper progress;
    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeActions> received;
};

TEST_F(ChequeSearchTest, EachChequeIsListedOnceAtItsLatestStateWithTotalsPerState) {
    receiveCheques({{QStringLiteral("501"), QStringLiteral("S"), 1000000},
                    {QStringLiteral("502"), QStringLiteral("S"), 2000000},
                    {QStringLiteral("503"), QStringLiteral("S"), 3000000}},
                   1);
    receiveCheques({{QStringLiteral("504"), QStringLiteral("S"), 400000}}, 2, QStringLiteral("1404/01/01"), true);
    // Five actions on 501: received, to collection, back, to collection again, collected.
    act(QStringLiteral("501"), QStringLiteral("در جريان وصول"), QStringLiteral("1404/03/01"));
    act(QStringLiteral("501"), QStringLiteral("برگشت از در جريان وصول"), QStringLiteral("1404/03/02"));
    act(QStringLiteral("501"), QStringLiteral("در جريان وصول"), QStringLiteral("1404/03/03"));
    act(QStringLiteral("501"), QStringLiteral("وصول چک"), QStringLiteral("1404/05/02"));
    // 503 is passed on to a supplier; the same payment issues our own leaf 100001.
    DocumentCheque leaf{QStringLiteral("100001"), QStringLiteral("12"), 5000000};
    leaf.bankAccount = 1;
    payCheques({{QStringLiteral("503"), QStringLiteral("S"), 3000000}, leaf}, 1);

    ChequeSearch search(session->services, ChequeSide::Received);
    ASSERT_TRUE(search.mnuSearchClick());
    Listed l = listed(search);
    EXPECT_EQ(l.stateOf.value(QStringLiteral("501")), QStringLiteral("وصول چک"));
    EXPECT_EQ(l.stateOf.value(QStringLiteral("502")), QStringLiteral("دريافت چک"));
    EXPECT_EQ(l.stateOf.value(QStringLiteral("503")), ChequeSearch::kSpentName);
    EXPECT_EQ(l.stateOf.value(QStringLiteral("504")), QStringLiteral("دريافت چک"));  // opening
    EXPECT_FALSE(l.stateOf.contains(QStringLiteral("100001")));
    EXPECT_EQ(l.chequeRows, 4);
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("501")), 1000000);
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("504")), 400000);
    EXPECT_EQ(l.bankOf.value(QStringLiteral("502")), QStringLiteral("01"));  // from its receipt row
    double direct = 0, perState = 0;
    for (double v : l.valueOf) direct += v;
    for (double v : l.totalOf) perState += v;
    EXPECT_DOUBLE_EQ(l.totalOf.value(QStringLiteral("دريافت چک")), 2400000);
    EXPECT_DOUBLE_EQ(perState, l.grand);
    EXPECT_DOUBLE_EQ(direct, l.grand);
    EXPECT_TRUE(l.totalsLast);

    // A cleared box leaves its state out; the opening box leaves opening cheques out.
    search.filters().states[2] = false;  // وصول چک
    search.filters().opening = false;
    ASSERT_TRUE(search.mnuSearchClick());
    l = listed(search);
    EXPECT_EQ(l.stateOf.keys(), QStringList({QStringLiteral("502"), QStringLiteral("503")}));
    EXPECT_DOUBLE_EQ(l.grand, 5000000);
    // Every box cleared: nothing, not even a total.
    for (auto&& on : search.filters().states) on = false;
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).rows, 0);

    // The issued side: our leaf and the received cheque spent, named as such.
    ChequeSearch issued(session->services, ChequeSide::Issued);
    ASSERT_TRUE(issued.mnuSearchClick());
    l = listed(issued);
    EXPECT_EQ(l.stateOf.keys(), QStringList({QStringLiteral("100001"), QStringLiteral("503")}));
    EXPECT_EQ(l.stateOf.value(QStringLiteral("503")), ChequeSearch::kSpentName);
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("100001")), 5000000);
    EXPECT_FALSE(l.bankOf.value(QStringLiteral("100001")).isEmpty());  // the bank account it is drawn on
    EXPECT_DOUBLE_EQ(l.grand, 8000000);
}

TEST_F(ChequeSearchTest, FiltersNarrowTheListAndAStoppedSearchShowsNothing) {
    receiveCheques({{QStringLiteral("601"), QStringLiteral("S"), 1000000},
                    {QStringLiteral("602"), QStringLiteral("S"), 2000000, QStringLiteral("1404/07/01")},
                    {QStringLiteral("603"), QStringLiteral("T"), 3000000}},
                   1);
    ChequeSearch search(session->services, ChequeSide::Received);
    ChequeSearchFilters& f = search.filters();
    f.fromAmount = QStringLiteral("1,500,000");
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).stateOf.keys(), QStringList({QStringLiteral("602"), QStringLiteral("603")}));
    f.fromAmount.clear();
    f.fromDue = {QStringLiteral("1"), QStringLiteral("6"), QStringLiteral("1404")};
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).stateOf.keys(), QStringList{QStringLiteral("602")});
    f.fromDue = {};
    f.fromSeries = f.toSeries = QStringLiteral("T");
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).stateOf.keys(), QStringList{QStringLiteral("603")});
    f.fromSeries = f.toSeries = QString();
    f.fromAmount = QStringLiteral("12a");
    EXPECT_FALSE(search.mnuSearchClick());
    f.fromAmount.clear();

    progress.stop = true;
    EXPECT_FALSE(search.mnuSearchClick());
    EXPECT_TRUE(search.stopped());
    EXPECT_EQ(listed(search).rows, 0);
    EXPECT_EQ(session->dialog.last().text, tr::search::SearchResultTable::kStoppedMessage);
}

// The due date and amount of a cheque whose receipt wrote no voucher line (an opening cheque)
// come from the payment that passed it on, else from its opening row, and are filtered as the
// others'; a series kept as Null on some of a cheque's rows is the empty series.
TEST_F(ChequeSearchTest, OpeningChequesAndNullSeriesAreFilteredAndListedOnce) {
    receiveCheques({{QStringLiteral("701"), QStringLiteral("S"), 1000000, QStringLiteral("1404/08/01")},
                    {QStringLiteral("702"), QStringLiteral("S"), 2000000, QStringLiteral("1404/10/01")}},
                   1);
    receiveCheques({{QStringLiteral("703"), QStringLiteral("S"), 3000000, QStringLiteral("1404/09/15")},
                    {QStringLiteral("704"), QStringLiteral("S"), 4000000, QStringLiteral("1404/11/15")},
                    {QStringLiteral("705"), QStringLiteral("S"), 5000000, QStringLiteral("1404/03/01")}},
                   2, QStringLiteral("1404/01/01"), true);
    payCheques({{QStringLiteral("704"), QStringLiteral("S"), 4000000, QStringLiteral("1404/11/15")}}, 1);
    receiveCheques({{QStringLiteral("706"), QStringLiteral("N"), 6000000, QStringLiteral("1404/09/20")}}, 3);
    act(QStringLiteral("706"), QStringLiteral("در جريان وصول"), QStringLiteral("1404/03/01"));
    // 706 as an older book may keep it: its receipt's rows with a Null series, its collection's
    // with the empty one.
    company().execute(QStringLiteral("Update N_ChqLastTrans Set Joz = Case When WhatDoc = '71' Then Null Else '' End "
                                     "Where ChqNo = '706'"));
    company().execute(QStringLiteral("Update Asnad Set DocToDate = Case When WhatDoc = '71' Then Null Else '' End "
                                     "Where AtfCh = '706'"));

    ChequeSearch search(session->services, ChequeSide::Received);
    ASSERT_TRUE(search.mnuSearchClick());
    Listed l = listed(search);
    EXPECT_EQ(l.chequeRows, 6);
    EXPECT_EQ(l.stateOf.value(QStringLiteral("704")), ChequeSearch::kSpentName);
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("704")), 4000000);  // the payment's line
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("703")), 3000000);  // its opening row
    EXPECT_EQ(l.stateOf.value(QStringLiteral("706")), QStringLiteral("در جريان وصول"));
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("706")), 6000000);

    ChequeSearchFilters& f = search.filters();
    f.fromDue = {QStringLiteral("01"), QStringLiteral("09"), QStringLiteral("1404")};
    f.toDue = {QStringLiteral("29"), QStringLiteral("12"), QStringLiteral("1404")};
    ASSERT_TRUE(search.mnuSearchClick());
    l = listed(search);
    EXPECT_EQ(l.stateOf.keys(), QStringList({QStringLiteral("702"), QStringLiteral("703"), QStringLiteral("704"),
                                             QStringLiteral("706")}));
    EXPECT_DOUBLE_EQ(l.grand, 15000000);
    f.fromAmount = QStringLiteral("3,500,000");
    f.toAmount = QStringLiteral("5,000,000");
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).stateOf.keys(), QStringList{QStringLiteral("704")});
    // The in-collection box alone: 706 by its latest row, whatever its series is kept as.
    f = ChequeSearchFilters{};
    f.states = QList<bool>(ChequeSearch::stateBoxes(ChequeSide::Received).size(), false);
    f.states[1] = true;
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).stateOf.keys(), QStringList{QStringLiteral("706")});
}

TEST_F(ChequeSearchTest, AChequeReceivedAgainAfterItsReturnIsListedOnceFromItsLatestReceipt) {
    receiveCheques({{QStringLiteral("707"), QStringLiteral("S"), 7000000, QStringLiteral("1404/05/01")}}, 1);
    act(QStringLiteral("707"), QStringLiteral("برگشت چک"), QStringLiteral("1404/03/02"));
    receiveCheques({{QStringLiteral("707"), QStringLiteral("S"), 7500000, QStringLiteral("1404/10/01")}}, 2,
                   QStringLiteral("1404/04/01"));
    ChequeSearch search(session->services, ChequeSide::Received);
    ASSERT_TRUE(search.mnuSearchClick());
    Listed l = listed(search);
    EXPECT_EQ(l.chequeRows, 1);
    EXPECT_EQ(l.stateOf.value(QStringLiteral("707")), QStringLiteral("دريافت چک"));
    EXPECT_DOUBLE_EQ(l.valueOf.value(QStringLiteral("707")), 7500000);
    search.filters().fromDue = {QStringLiteral("01"), QStringLiteral("09"), QStringLiteral("1404")};
    ASSERT_TRUE(search.mnuSearchClick());
    EXPECT_EQ(listed(search).chequeRows, 1);
}

TEST_F(ChequeSearchTest, ReplacementRewritesEveryLineOfTheFoundChequesVouchersOnly) {
    receiveCheques({{QStringLiteral("801"), QStringLiteral("S"), 1000000}}, 1);
    receiveCheques({{QStringLiteral("802"), QStringLiteral("S"), 2000000}}, 2);
    act(QStringLiteral("801"), QStringLiteral("در جريان وصول"), QStringLiteral("1404/03/01"));
    act(QStringLiteral("802"), QStringLiteral("در جريان وصول"), QStringLiteral("1404/03/01"));
    const auto lines = [](const char* number, const QString& des) {
        return tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad Where AtfCh = '%1' And "
                                                             "WhatDoc = '72' And Des = %2")
                                                  .arg(QLatin1String(number), company().text(des)))
            .toInt();
    };
    ChequeSearch search(session->services, ChequeSide::Received);
    ChequeSearchFilters& f = search.filters();
    f.fromNumber = f.toNumber = QStringLiteral("801");
    f.words[0] = QStringLiteral("وصول");
    f.replacements[0] = QStringLiteral("وصول بانکي");
    session->dialog.answer(tr::dialog::ResultYes);
    ASSERT_TRUE(search.mnuReplaceClick());
    // Both lines of 801's collection voucher changed; 802's, also a match for the word, did not.
    EXPECT_EQ(lines("801", QStringLiteral("در جريان وصول بانکي چك 801")), 2);
    EXPECT_EQ(lines("802", QStringLiteral("در جريان وصول چك 802")), 2);
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad Where AtfCh = '801' And "
                                                            "WhatDoc = '71' And Des Like '%بانکي%'"))
                  .toInt(),
              0);
}

}  // namespace
}  // namespace tr::cheques
