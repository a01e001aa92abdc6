// Print data of saved received-cheque documents: the header, the cheques with their bank, due
// date and payee, the counterparty lines named after their most detailed account, the total and
// its words; an opening-cheque document without a voucher; the voucher print of kind 71; and the
// two "##" tables the print-design library reads.
#include "cheques/received_cheque_print.h"

#include "cheques/tests/received_cheque_print_fixture.h"
#include "common/db/query_helpers.h"
#include "printing/voucher_print.h"

namespace tr::cheques::testing {
namespace {

TEST_F(ReceivedChequePrintTest, SavedDocumentPrintsItsChequesLinesAndTotal) {
    const QString serial = saveTwoCheques();
    const auto d = loadReceivedChequePrint(services(), QStringLiteral(" ") + serial);
    ASSERT_TRUE(d);
    EXPECT_EQ(d->kindName, u("دريافت چک"));
    EXPECT_EQ(d->serial, serial);
    EXPECT_EQ(d->date, QStringLiteral("1404/02/10"));
    EXPECT_EQ(d->voucherNo, doc->header().voucherNo.toLongLong());
    EXPECT_GT(d->voucherNo, 0);
    EXPECT_FALSE(d->opening);
    EXPECT_EQ(d->companyName, u(tr::schema::demo::kCompanyName));
    EXPECT_EQ(d->userName, QStringLiteral("admin"));
    EXPECT_EQ(d->userFullName, u("مدير سيستم"));

    ASSERT_EQ(d->cheques.size(), 2u);
    const ReceivedChequePrintCheque& first = d->cheques[0];
    EXPECT_EQ(first.raj, 1);
    EXPECT_EQ(first.number, QStringLiteral("7001"));
    EXPECT_EQ(first.series, u("ج"));
    EXPECT_EQ(first.bankName, u("بانک ملي"));
    EXPECT_EQ(first.branchName, u("شعبه مرکزي"));
    EXPECT_EQ(first.dueDate, QStringLiteral("1404/05/10"));
    EXPECT_EQ(first.payee, u("شرکت پخش البرز"));
    EXPECT_DOUBLE_EQ(first.amount, 3000000);
    EXPECT_EQ(d->cheques[1].payee, u("حامل"));
    EXPECT_EQ(d->cheques[1].dueDate, QStringLiteral("1404/06/31"));

    // One line per counterparty row in the grid's order, the split cheque's two parts apart.
    struct Line {
        const char* cheque;
        const char* account;
        const char* name;
        double amount;
    };
    const Line expected[] = {{"7001", "104-0002", "ساير بدهکاران", 3000000},
                             {"7002", "104-0002", "ساير بدهکاران", 1200000},
                             {"7002", "104-0001-30002", "فروشگاه زنجيره اي آفتاب", 800000}};
    ASSERT_EQ(d->lines.size(), std::size(expected));
    for (size_t i = 0; i < d->lines.size(); ++i) {
        const ReceivedChequePrintLine& l = d->lines[i];
        QStringList code{l.koll, l.moein};
        if (!l.tafsily.isEmpty()) code << l.tafsily;
        EXPECT_EQ(l.raj, int(i) + 1);
        EXPECT_EQ(l.chequeNumber, u(expected[i].cheque)) << i;
        EXPECT_EQ(l.chequeSeries, u("ج")) << i;
        EXPECT_EQ(code.join(QLatin1Char('-')), u(expected[i].account)) << i;
        EXPECT_EQ(l.accountName, u(expected[i].name)) << i;
        EXPECT_DOUBLE_EQ(l.amount, expected[i].amount) << i;
    }
    EXPECT_EQ(d->lines[2].des, u("سهم فروشگاه از چک 7002"));
    EXPECT_DOUBLE_EQ(d->total(), 5000000);
    EXPECT_EQ(d->totalInWords(), u("پنج ميليون ريال"));
}

TEST_F(ReceivedChequePrintTest, OpeningDocumentPrintsWithoutAVoucher) {
    const QString serial = saveTwoCheques(/*opening=*/true);
    const auto d = loadReceivedChequePrint(services(), serial);
    ASSERT_TRUE(d);
    EXPECT_TRUE(d->opening);
    EXPECT_EQ(d->voucherNo, 0);
    EXPECT_EQ(d->date, QStringLiteral("1404/02/10"));
    EXPECT_EQ(d->userName, QStringLiteral("admin"));
    ASSERT_EQ(d->cheques.size(), 2u);
    EXPECT_EQ(d->cheques[0].number, QStringLiteral("7001"));
    EXPECT_EQ(d->cheques[0].dueDate, QStringLiteral("1404/05/10"));
    EXPECT_EQ(d->cheques[0].bankName, u("بانک ملي"));
    ASSERT_EQ(d->lines.size(), 3u);
    EXPECT_EQ(d->lines[2].accountName, u("فروشگاه زنجيره اي آفتاب"));
    EXPECT_DOUBLE_EQ(d->total(), 5000000);
    EXPECT_FALSE(tr::printing::loadVoucherPrint(services(), QStringLiteral("71"), serial));
}

TEST_F(ReceivedChequePrintTest, NoDocumentNoPrint) {
    const QString serial = saveTwoCheques();
    EXPECT_FALSE(loadReceivedChequePrint(services(), QString::number(serial.toInt() + 1)));
    EXPECT_FALSE(loadReceivedChequePrint(services(), serial + QStringLiteral("'--")));
    EXPECT_FALSE(loadReceivedChequePrint(services(), QString()));
    // A cash receipt under the same serial is another document.
    company().execute(QStringLiteral("Update N_NaghdTrans Set WhatDoc = '10'"));
    EXPECT_FALSE(loadReceivedChequePrint(services(), serial));
}

// The voucher is the document's own lines, cheques debited and counterparty lines credited;
// another cheque document's voucher is not part of it.
TEST_F(ReceivedChequePrintTest, VoucherPrintListsTheDocumentsOwnLines) {
    const QString serial = saveTwoCheques();
    const qint64 voucher = doc->header().voucherNo.toLongLong();
    doc->newDocument();
    doc->header().date = QStringLiteral("1404/02/11");
    doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    typeCheque(QStringLiteral("7101"), 900000, QStringLiteral("1404/05/01"), QString());
    ASSERT_TRUE(doc->save());

    const auto v = tr::printing::loadVoucherPrint(services(), QStringLiteral("71"), serial);
    ASSERT_TRUE(v);
    EXPECT_EQ(v->voucherNo, voucher);
    EXPECT_EQ(v->title, u("سند دريافت چک شماره ") + QString::number(voucher));
    EXPECT_EQ(v->reportKey, QStringLiteral("N_ASNAD_CHQGET_CHQGET"));
    EXPECT_EQ(v->date, QStringLiteral("1404/02/10"));
    EXPECT_EQ(v->userFullName, u("مدير سيستم"));
    ASSERT_EQ(v->lines.size(), 5u);
    EXPECT_EQ(v->lines[0].lastNam, u("چکهاي دريافتني"));
    EXPECT_DOUBLE_EQ(v->lines[0].bed, 3000000);
    EXPECT_DOUBLE_EQ(v->lines[4].bes, 800000);
    EXPECT_EQ(v->lines[4].lastNam, u("فروشگاه زنجيره اي آفتاب"));
    EXPECT_DOUBLE_EQ(v->totalBed(), 5000000);
    EXPECT_DOUBLE_EQ(v->totalBes(), 5000000);
}

TEST_F(ReceivedChequePrintTest, PrintTablesHoldTheHeaderAndOneRowPerCounterpartyLine) {
    const QString serial = saveTwoCheques();
    const auto d = loadReceivedChequePrint(services(), serial);
    ASSERT_TRUE(d);
    const tr::printing::PrintTables t = createReceivedChequePrintTables(services(), *d);
    EXPECT_TRUE(t.header.startsWith(QStringLiteral("##U1_")));
    EXPECT_NE(t.header, t.lines);
    const tr::db::Query head = tr::db::openQuery(
        company(),
        QStringLiteral("Select NDocNam, SerialNo, SanadNo, ChqFirst, Amount, AmountWords From ") +
            t.header);
    ASSERT_EQ(head.RecordCount(), 1);
    EXPECT_EQ(head.value(0, 0).toString(), u("دريافت چک"));
    EXPECT_EQ(head.value(0, 1).toString(), serial);
    EXPECT_EQ(head.value(0, 2).toLongLong(), d->voucherNo);
    EXPECT_EQ(head.value(0, 3).toInt(), 0);
    EXPECT_DOUBLE_EQ(head.value(0, 4).toDouble(), 5000000);
    EXPECT_EQ(head.value(0, 5).toString(), u("پنج ميليون ريال"));

    // Each line carries the link field and its cheque's values beside its own account.
    const tr::db::Query lines = tr::db::openQuery(
        company(), QStringLiteral("Select SerialNo, ChqRaj, ChqNo, BankNam, ChqGetter, ChqValue, "
                                  "LastNam, Bes From ") +
                       t.lines + QStringLiteral(" Order By Raj"));
    ASSERT_EQ(lines.RecordCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(lines.value(i, 0).toString(), serial);
        EXPECT_EQ(lines.value(i, 3).toString(), u("بانک ملي"));
    }
    EXPECT_EQ(lines.value(2, 1).toInt(), 2);
    EXPECT_EQ(lines.value(2, 2).toString(), QStringLiteral("7002"));
    EXPECT_EQ(lines.value(2, 4).toString(), u("حامل"));
    EXPECT_DOUBLE_EQ(lines.value(2, 5).toDouble(), 2000000);
    EXPECT_EQ(lines.value(2, 6).toString(), u("فروشگاه زنجيره اي آفتاب"));
    EXPECT_DOUBLE_EQ(lines.value(2, 7).toDouble(), 800000);

    tr::printing::dropPrintTables(services(), t);
    EXPECT_FALSE(tr::db::objectExistsInTempdb(company(), t.header.mid(2)));
    EXPECT_FALSE(tr::db::objectExistsInTempdb(company(), t.lines.mid(2)));
}

}  // namespace
}  // namespace tr::cheques::testing
