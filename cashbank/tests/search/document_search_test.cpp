// The document searches over documents saved through the real procedures: kinds, signs,
// subtotals, filters, the bank joins, stopping and the replace in descriptions.
#include "cashbank/search/document_search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "cashbank/tests/search/search_fixture.h"

namespace tr::cashbank::testing {
namespace {

QString s(const char* text) {
    return QString::fromUtf8(text);
}

class CashSearch : public SearchTest {
  protected:
    void SetUp() override {
        SearchTest::SetUp();
        search = std::make_unique<DocumentSearch>(session->services, SearchFamily::Cash);
    }
    void TearDown() override {
        search.reset();
        SearchTest::TearDown();
    }
    QList<Row> run() {
        EXPECT_TRUE(search->mnuSearchClick());
        return resultRows(search->result());
    }
    std::unique_ptr<DocumentSearch> search;
};

TEST_F(CashSearch, NoKindCheckedFindsNothingAndAddsNoTotals) {
    save(receipt(1, 1000));
    search->filters().receipts = search->filters().payments = search->filters().cancellations =
        false;
    EXPECT_TRUE(search->condition().endsWith(s("And (0 = 1) ")));
    EXPECT_TRUE(run().isEmpty());
}

TEST_F(CashSearch, CancelledReceiptShowsBothSidesAndNetsToZero) {
    save(receipt(1, 1000));
    cancel(s("10"), 1, s("1"));
    save(receipt(2, 250, s("2")));
    const QList<Row> rows = run();

    const QList<Row> docs = documentRows(rows);
    ASSERT_EQ(docs.size(), 3);
    QList<int> signsOfSerial1;
    for (const Row& r : docs)
        if (r.serial == 1) signsOfSerial1 << (r.docToDate == s("1") ? 10 : 0) + r.sign;
    std::sort(signsOfSerial1.begin(), signsOfSerial1.end());
    // The receipt line counts +1, its cancellation line (DocToDate '1') -1, both for 1000.
    EXPECT_EQ(signsOfSerial1, (QList<int>{1, 9}));

    const Row* central = totalRow(rows, s("جمع دريافت صندوق : صندوق مرکزي"));
    ASSERT_NE(central, nullptr);
    EXPECT_DOUBLE_EQ(central->value, 0);
    EXPECT_EQ(central->sOrder, s("X"));
    EXPECT_EQ(central->sign, 0);
    const Row* shop = totalRow(rows, s("جمع دريافت صندوق : صندوق فروشگاه"));
    ASSERT_NE(shop, nullptr);
    EXPECT_DOUBLE_EQ(shop->value, 250);
    const Row* grand = totalRow(rows, s("جمع کل "));
    ASSERT_NE(grand, nullptr);
    EXPECT_EQ(grand->sOrder, s("Y"));
    EXPECT_DOUBLE_EQ(grand->value, 250);  // the subtotals themselves are not summed again
    EXPECT_EQ(rows.last().sOrder, s("Y"));
}

TEST_F(CashSearch, PaymentsCountNegativeUnderTheirOwnSubtotal) {
    save(receipt(1, 1000));
    Doc pay = receipt(1, 300);
    pay.kind = s("20");
    save(pay);
    const QList<Row> rows = run();
    ASSERT_EQ(documentRows(rows).size(), 2);
    for (const Row& r : documentRows(rows)) EXPECT_EQ(r.sign, r.whatDoc == s("20") ? -1 : 1);
    ASSERT_NE(totalRow(rows, s("جمع پرداخت صندوق : صندوق مرکزي")), nullptr);
    EXPECT_DOUBLE_EQ(totalRow(rows, s("جمع پرداخت صندوق : صندوق مرکزي"))->value, -300);
    EXPECT_DOUBLE_EQ(totalRow(rows, s("جمع کل "))->value, 700);

    search->filters().receipts = false;
    EXPECT_EQ(serials(run()), QList<qint64>{1});
    EXPECT_EQ(documentRows(resultRows(search->result())).front().whatDoc, s("20"));
}

TEST_F(CashSearch, SortingByAnyColumnKeepsTotalsLast) {
    save(receipt(1, 5000));
    save(receipt(2, 10, s("2")));
    Doc pay = receipt(3, 999999);
    pay.kind = s("20");
    save(pay);
    run();
    for (const char* sort : {"sOrder, SValue DESC ", "sOrder, SValue ASC ", "sOrder, CashCod DESC ",
                             "sOrder, Des ASC ", "sOrder, Serial DESC "}) {
        search->result().setSort(s(sort));
        const QList<Row> rows = resultRows(search->result());
        ASSERT_EQ(rows.size(), 3 + 3 + 1) << sort;
        QString orders;
        for (const Row& r : rows) orders += r.sOrder.isEmpty() ? QStringLiteral("-") : r.sOrder;
        EXPECT_EQ(orders, s("---XXXY")) << sort;
    }
}

TEST_F(CashSearch, EachFilledFilterNarrows) {
    Doc a = receipt(1, 1000, s("1"));
    a.date = s("1404/01/15");
    a.description = s("فروش نقدي کالا");
    Doc b = receipt(2, 5000, s("2"));
    b.date = s("1404/02/15");
    b.description = s("فروش اقساطي");
    Doc c = receipt(12, 20000, s("2"));
    c.date = s("1404/03/15");
    c.description = s("اجاره نقدي");
    for (const Doc& d : {a, b, c}) save(d);

    struct Case {
        const char* name;
        std::function<void(SearchFilters&)> set;
        QList<qint64> expected;
    };
    const QList<Case> cases = {
        {"none", [](SearchFilters&) {}, {1, 2, 12}},
        {"from date",
         [](SearchFilters& f) {
             f.fromDate = {s("1"), s("2"), s("1404")};
         },
         {2, 12}},
        {"to date",
         [](SearchFilters& f) {
             f.toDate = {s("15"), s("02"), s("1404")};
         },
         {1, 2}},
        {"half a date",
         [](SearchFilters& f) {
             f.toDate = {{}, s("01"), s("1404")};
         },
         {1, 2, 12}},
        // Serials are numbers: 12 lies above 2, which a text comparison would deny.
        {"from serial", [](SearchFilters& f) { f.fromSerial = 2; }, {2, 12}},
        {"to serial", [](SearchFilters& f) { f.toSerial = 2; }, {1, 2}},
        {"from amount", [](SearchFilters& f) { f.fromAmount = QStringLiteral("5000"); }, {2, 12}},
        {"to amount", [](SearchFilters& f) { f.toAmount = QStringLiteral("4999.5"); }, {1}},
        {"from code", [](SearchFilters& f) { f.fromCode = s("2"); }, {2, 12}},
        {"to code", [](SearchFilters& f) { f.toCode = s(" 1 "); }, {1}},
        {"one word", [](SearchFilters& f) { f.words[0] = s("نقدي"); }, {1, 12}},
        {"and",
         [](SearchFilters& f) {
             f.words[0] = s("فروش");
             f.words[1] = s("نقدي");
         },
         {1}},
        {"or",
         [](SearchFilters& f) {
             f.words[0] = s("اقساطي");
             f.words[1] = s("اجاره");
             f.joins[0] = WordJoin::Or;
         },
         {2, 12}},
        // (فروش Or اجاره) And نقدي: the choosers apply left to right.
        {"or then and",
         [](SearchFilters& f) {
             f.words = {s("فروش"), s("اجاره"), s("نقدي")};
             f.joins = {WordJoin::Or, WordJoin::And};
         },
         {1, 12}},
        {"skipped middle word",
         [](SearchFilters& f) {
             f.words = {s("اقساطي"), {}, s("اجاره")};
             f.joins = {WordJoin::And, WordJoin::Or};
         },
         {2, 12}},
        {"quote in a word", [](SearchFilters& f) { f.words[0] = s("a'b"); }, {}},
    };
    for (const Case& c : cases) {
        search->filters() = SearchFilters{};
        c.set(search->filters());
        EXPECT_EQ(serials(run()), c.expected) << c.name;
    }
}

// An amount box that is not an amount refuses the search (or the replacement) with its reason:
// the last result stays, and no description is touched.
TEST_F(CashSearch, AnAmountThatIsNotANumberRefusesTheSearchAndKeepsTheResult) {
    save(receipt(1, 1000, s("1")));
    save(receipt(2, 5000, s("2")));
    search->filters().fromAmount = s("۲٬۰۰۰");
    EXPECT_EQ(serials(run()), QList<qint64>{2});

    const QString before = rows(s("Select Des From Asnad Where TypeSys = 'N'")).rows.front()[0].toString();
    for (const char* typed : {"5a000", "1,5", "1.2.3", "-100"}) {
        SCOPED_TRACE(typed);
        search->filters() = SearchFilters{};
        search->filters().toAmount = s(typed);
        session->dialog.clearShown();
        EXPECT_FALSE(search->mnuSearchClick());
        EXPECT_FALSE(search->stopped());
        ASSERT_EQ(session->dialog.shown().size(), 1);
        EXPECT_EQ(session->dialog.last().code, s("1ER"));
        EXPECT_EQ(serials(resultRows(search->result())), QList<qint64>{2});

        search->filters().words[0] = s("a");
        search->filters().replacements[0] = s("b");
        EXPECT_FALSE(search->mnuReplaceClick());
        EXPECT_EQ(session->dialog.last().code, s("1ER"));  // no question was asked
    }
    EXPECT_EQ(rows(s("Select Des From Asnad Where TypeSys = 'N'")).rows.front()[0].toString(), before);
}

// A date filter the calendar does not have is refused, with the box at fault named, before a
// search or a replace runs; the last result stays.
TEST_F(CashSearch, AnImpossibleDateFilterIsRefusedAtItsBox) {
    save(receipt(1, 1000, s("1")));
    EXPECT_EQ(serials(run()), QList<qint64>{1});
    struct Case {
        DateBoxes from, to;
        DateFilter filter;
        tr::persian::DatePart part;
    };
    const Case cases[] = {
        {{s("31"), s("07"), s("1404")}, {}, DateFilter::From, tr::persian::DatePart::Day},
        {{}, {s("30"), s("12"), s("1404")}, DateFilter::To, tr::persian::DatePart::Day},
        {{}, {s("1"), s("13"), s("1404")}, DateFilter::To, tr::persian::DatePart::Month},
        {{s("1"), s("1"), s("404")}, {}, DateFilter::From, tr::persian::DatePart::Year},
    };
    for (const Case& c : cases) {
        search->filters() = SearchFilters{};
        search->filters().fromDate = c.from;
        search->filters().toDate = c.to;
        session->dialog.clearShown();
        EXPECT_FALSE(search->datesRead());
        EXPECT_FALSE(search->mnuSearchClick());
        ASSERT_EQ(session->dialog.shown().size(), 2);
        EXPECT_EQ(session->dialog.last().code, s("1ER"));
        EXPECT_EQ(search->dateFault().filter, c.filter);
        EXPECT_EQ(search->dateFault().part, c.part);
        EXPECT_EQ(serials(resultRows(search->result())), QList<qint64>{1});
        search->filters().words[0] = s("a");
        search->filters().replacements[0] = s("b");
        EXPECT_FALSE(search->mnuReplaceClick());
        EXPECT_EQ(session->dialog.last().code, s("1ER"));  // no question was asked
    }
    // The leap day of 1403 is a date: the search runs.
    search->filters() = SearchFilters{};
    search->filters().fromDate = {s("30"), s("12"), s("1403")};
    EXPECT_EQ(serials(run()), QList<qint64>{1});
    EXPECT_EQ(search->dateFault().filter, DateFilter::None);
}

TEST_F(CashSearch, ConditionTextFollowsTheFilledFilters) {
    SearchFilters& f = search->filters();
    f.fromDate = {s("5"), s("1"), s("1404")};
    f.fromSerial = 7;
    f.toAmount = QStringLiteral("1500");
    f.payments = false;
    EXPECT_EQ(
        search->condition(),
        s("And (A.SanadDate >= '1404/01/05') And (NT.Serial >= 7) And ((A.Bes + A.Bed) <= "
          "1500) And (((A.WhatDoc = '10') And (A.DocToDate = '0')) Or (A.DocToDate = '1')) "));
}

TEST_F(CashSearch, AStoppedSearchShowsAnEmptyResultAndSaysSo) {
    save(receipt(1, 1000));
    for (int polls : {0, 1, 2, 3}) {
        session->progress.stopAfter = polls;
        session->progress.polls = 0;
        session->dialog.clearShown();
        EXPECT_FALSE(search->mnuSearchClick()) << polls;
        EXPECT_TRUE(search->stopped());
        EXPECT_TRUE(search->result().IsEmpty()) << polls;
        EXPECT_FALSE(session->progress.open);
        ASSERT_EQ(session->dialog.shown().size(), 1);
        EXPECT_EQ(session->dialog.last().text, DocumentSearch::kStoppedMessage);
    }
    // Polled once per step; a stop asked after the last step is too late to matter.
    session->progress.stopAfter = 4;
    session->progress.polls = 0;
    EXPECT_TRUE(search->mnuSearchClick());
    EXPECT_FALSE(search->stopped());
    EXPECT_EQ(search->result().RecordCount(), 3);
    EXPECT_EQ(session->progress.texts.mid(0, 2),
              (QStringList{s("جستجوي اسناد"), s("لطفا صبر کنيد")}));
}

TEST_F(CashSearch, ReplaceChangesEveryLineOfTheVouchersFoundAndNothingElse) {
    Doc a = receipt(1, 1000);
    a.description = s("فروش نقدي");
    a.lineDescription = s("فروش روزانه");
    Doc b = receipt(2, 2000);
    b.description = s("فروش نقدي");
    b.lineDescription = s("فروش هفتگي");
    Doc outside = receipt(3, 3000, s("2"));
    outside.description = s("فروش نقدي");
    outside.lineDescription = s("فروش ماهانه");
    for (const Doc& d : {a, b, outside}) save(d);
    const auto descriptions = [] {
        QStringList out;
        for (const auto& row :
             rows(s("Select Des From Asnad Where TypeSys = 'N' Order By REC")).rows)
            out << row[0].toString();
        return out;
    };
    const QStringList before = descriptions();

    search->filters().toCode = s("1");
    search->filters().words[0] = s("فروش");
    search->filters().replacements[0] = s("خريد");
    session->dialog.answerNo();
    EXPECT_FALSE(search->mnuReplaceClick());
    EXPECT_EQ(session->dialog.last().code, s("3QR"));
    EXPECT_EQ(session->dialog.last().text, DocumentSearch::kReplaceQuestion);
    EXPECT_EQ(descriptions(), before);

    session->dialog.answerYes();
    EXPECT_TRUE(search->mnuReplaceClick());
    EXPECT_EQ(descriptions(), (QStringList{s("خريد نقدي"), s("خريد روزانه"), s("خريد نقدي"),
                                           s("خريد هفتگي"), s("فروش نقدي"), s("فروش ماهانه")}));
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(db()));
}

TEST_F(CashSearch, ReplaceWithoutAReplacementWordRunsNothing) {
    save(receipt(1, 1000));
    search->filters().words[0] = s("وجه");
    EXPECT_FALSE(search->mnuReplaceClick());
    EXPECT_EQ(session->dialog.last().text, DocumentSearch::kNoReplacementMessage);
    EXPECT_EQ(session->dialog.last().code, s("1ER"));
}

TEST_F(CashSearch, PastedReplacementsJoinTheirLinesAndControlCharactersAreRefused) {
    Doc a = receipt(1, 1000);
    a.description = s("فروش نقدي");
    save(a);
    search->filters().words[0] = s("نقدي");
    search->filters().replacements[0] = s("اعتباري\x0B");
    session->dialog.answerYes();
    EXPECT_FALSE(search->mnuReplaceClick());
    EXPECT_EQ(session->dialog.last().text, s("شرح داراي حرف غير مجاز است."));
    EXPECT_EQ(session->dialog.last().code, s("1ER"));
    EXPECT_EQ(rows(s("Select * From Asnad Where Des = 'فروش نقدي'")).rows.size(), 1u);

    search->filters().replacements[0] = s("نقد\r\nو اعتبار");
    session->dialog.answerYes();
    EXPECT_TRUE(search->mnuReplaceClick());
    EXPECT_EQ(rows(s("Select * From Asnad Where Des = 'فروش نقد و اعتبار'")).rows.size(), 1u);
}

class OtherSearches : public SearchTest {};

TEST_F(OtherSearches, BankSearchesNameTheAccountAndKeepToTheirKind) {
    Doc deposit;
    deposit.kind = s("50");
    deposit.code = s("1");
    deposit.amount = 700;
    save(deposit);
    Doc classA;
    classA.kind = s("90");
    classA.code = s("2");
    classA.amount = 400;
    classA.des1 = s("A");
    save(classA);
    Doc otherClass = classA;
    otherClass.serial = 2;
    otherClass.des1 = s("B");
    save(otherClass);
    Doc transfer;
    transfer.kind = s("60");
    transfer.code = s("3");
    transfer.amount = 900;
    transfer.des1 = s("رضا کريمي");
    transfer.des2 = s("بانک ملت");
    transfer.des3 = s("455");
    transfer.des4 = s("شعبه آزادي");
    save(transfer);

    DocumentSearch variz(session->services, SearchFamily::Deposit);
    ASSERT_TRUE(variz.mnuSearchClick());
    QList<Row> rows = resultRows(variz.result());
    ASSERT_EQ(documentRows(rows).size(), 1);
    EXPECT_EQ(rows[0].cashCod, s("0101234567"));
    EXPECT_EQ(rows[0].cashNam, s("بانک ملي-شعبه مرکزي"));
    EXPECT_NE(totalRow(rows, s("جمع واريز به بانك : بانک ملي-شعبه مرکزي")), nullptr);
    EXPECT_EQ(variz.accountName(s("2")), s("2012345678 بانک تجارت-شعبه ميرداماد"));

    DocumentSearch bardasht(session->services, SearchFamily::Withdrawal);
    ASSERT_TRUE(bardasht.mnuSearchClick());
    rows = resultRows(bardasht.result());
    EXPECT_EQ(serials(rows), QList<qint64>{1});
    EXPECT_EQ(rows[0].sign, 1);
    EXPECT_EQ(rows[0].cashCod, s("2012345678"));

    DocumentSearch havaleh(session->services, SearchFamily::Transfer);
    ASSERT_TRUE(havaleh.mnuSearchClick());
    tr::db::Query& q = havaleh.result();
    q.First();
    EXPECT_EQ(q.FieldByName(s("CashCod")).AsString(), s("3019876543"));
    EXPECT_EQ(q.FieldByName(s("Des1")).AsString(), s("رضا کريمي"));
    EXPECT_EQ(q.FieldByName(s("Des4")).AsString(), s("شعبه آزادي"));
}

TEST_F(OtherSearches, PettyCashNamesTheHolderAndCancellationsCountNegative) {
    Doc petty;
    petty.kind = s("40");
    petty.code = s("1001");
    petty.amount = 120;
    save(petty);
    cancel(s("40"), 1, s("1001"));
    DocumentSearch tankhah(session->services, SearchFamily::PettyCash);
    ASSERT_TRUE(tankhah.mnuSearchClick());
    const QList<Row> rows = resultRows(tankhah.result());
    ASSERT_EQ(documentRows(rows).size(), 2);
    EXPECT_EQ(rows[0].cashNam, s("علي-رضايي"));
    EXPECT_EQ(rows[0].sign + rows[1].sign, 0);
    EXPECT_DOUBLE_EQ(totalRow(rows, s("جمع کل "))->value, 0);
    EXPECT_EQ(tankhah.accountName(s("1002")), s("مريم-احمدي"));
}

}  // namespace
}  // namespace tr::cashbank::testing
