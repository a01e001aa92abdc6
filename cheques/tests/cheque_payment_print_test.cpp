// Print data of saved cheque payments: our own leaves beside a received cheque passed on, each
// with its bank, payee and payable-to-order mark; the counterparty lines; the leaves (our own
// only) with their books' form codes; an opening payment; the printer's offsets; and the
// print-design tables of the document and of its leaves.
#include <cmath>

#include "cheques/cheque_leaf_print.h"
#include "cheques/tests/cheque_payment_print_fixture.h"
#include "common/db/query_helpers.h"
#include "printing/voucher_print.h"

namespace tr::cheques::testing {
namespace {

std::optional<ChequeDocumentPrint> loadPayment(const tr::Services& services, const QString& serial) {
    return loadChequeDocumentPrint(services, QStringLiteral("81"), serial);
}

TEST_F(ChequePaymentPrintTest, PaymentPrintsOurLeavesAndThePassedOnChequeWithTheirLines) {
    const QString serial = savePayment();
    const auto d = loadPayment(services(), serial);
    ASSERT_TRUE(d);
    EXPECT_TRUE(d->payment());
    EXPECT_EQ(d->kindName, text("پرداخت چك"));
    EXPECT_EQ(d->date, QStringLiteral("1404/02/20"));
    EXPECT_EQ(d->voucherNo, doc->header().voucherNo.toLongLong());
    EXPECT_GT(d->voucherNo, 0);
    EXPECT_EQ(d->userFullName, text("مدير سيستم"));

    struct Cheque {
        const char* number;
        const char* bank;
        const char* branch;
        const char* account;
        const char* payee;
        bool toOrder;
        qint64 bankAccount;
        double amount;
    };
    const Cheque expected[] = {
        {"100005", "بانک ملي", "شعبه مرکزي", "0101234567", "شرکت فولاد مبارکه", true, 1, 2500000},
        {"200003", "بانک تجارت", "شعبه ميرداماد", "2012345678", "حامل", false, 2, 1234567000},
        {"5101", "بانک صادرات", "شعبه انقلاب", "", "تعاوني حمل بار", false, 0, 1000000}};
    ASSERT_EQ(d->cheques.size(), std::size(expected));
    for (size_t i = 0; i < d->cheques.size(); ++i) {
        const ChequePrintCheque& c = d->cheques[i];
        EXPECT_EQ(c.raj, int(i) + 1);
        EXPECT_EQ(c.number, text(expected[i].number)) << i;
        EXPECT_EQ(c.bankName, text(expected[i].bank)) << i;
        EXPECT_EQ(c.branchName, text(expected[i].branch)) << i;
        if (c.ownLeaf()) {
            EXPECT_EQ(c.accountNumber, text(expected[i].account)) << i;
        }
        EXPECT_EQ(c.payee, text(expected[i].payee)) << i;
        EXPECT_EQ(c.payableToOrder, expected[i].toOrder) << i;
        EXPECT_EQ(c.bankAccountId, expected[i].bankAccount) << i;
        EXPECT_DOUBLE_EQ(c.amount, expected[i].amount) << i;
    }
    EXPECT_EQ(d->cheques[0].dueDate, QStringLiteral("1404/03/15"));
    EXPECT_EQ(d->cheques[2].dueDate, QStringLiteral("1404/04/01"));

    // The supplier is debited with each cheque in turn.
    ASSERT_EQ(d->lines.size(), 3u);
    for (size_t i = 0; i < d->lines.size(); ++i) {
        EXPECT_EQ(d->lines[i].chequeNumber, d->cheques[i].number) << i;
        EXPECT_EQ(d->lines[i].accountName, text("بازرگاني نگين")) << i;
        EXPECT_DOUBLE_EQ(d->lines[i].amount, d->cheques[i].amount) << i;
    }
    EXPECT_DOUBLE_EQ(d->total(), 1238067000);
    EXPECT_EQ(d->totalInWords(),
              text("يك ميليارد و دويست و سي و هشت ميليون و شصت و هفت هزار ريال"));

    // The voucher print of kind 81 is its own lines: the cheques credited, the supplier debited.
    const auto v = tr::printing::loadVoucherPrint(services(), QStringLiteral("81"), serial);
    ASSERT_TRUE(v);
    EXPECT_EQ(v->reportKey, QStringLiteral("N_ASNAD_CHQPAY_CHQPAY"));
    EXPECT_DOUBLE_EQ(v->totalBed(), 1238067000);
    EXPECT_DOUBLE_EQ(v->totalBes(), 1238067000);
}

TEST_F(ChequePaymentPrintTest, OnlyOurOwnLeavesPrintEachWithItsBooksFormCode) {
    const QString serial = savePayment();
    const auto d = loadPayment(services(), serial);
    ASSERT_TRUE(d);
    std::vector<ChequeLeaf> leaves = chequeLeaves(company(), *d);
    ASSERT_EQ(leaves.size(), 2u);
    const ChequeLeaf& first = leaves[0];
    EXPECT_EQ(first.raj, 1);
    EXPECT_EQ(first.number, QStringLiteral("100005"));
    EXPECT_EQ(first.dueDate, QStringLiteral("1404/03/15"));
    EXPECT_DOUBLE_EQ(first.amount, 2500000);
    EXPECT_EQ(first.amountInWords, text("دو ميليون و پانصد هزار ريال"));
    EXPECT_EQ(first.payee, text("شرکت فولاد مبارکه"));
    EXPECT_TRUE(first.payableToOrder);
    EXPECT_EQ(first.formCode, QStringLiteral("1"));
    EXPECT_EQ(leaves[1].number, QStringLiteral("200003"));
    EXPECT_EQ(leaves[1].formCode, QStringLiteral("2"));
    EXPECT_FALSE(leaves[1].payableToOrder);
    EXPECT_TRUE(leaves[1].amountInWords.endsWith(text(" ريال")));

    // The book is matched as a number range of the leaf's own account and series: a book of
    // another account over the same leaves, or one whose bounds are written wider, changes
    // nothing; a leaf whose book is gone has no code.
    company().execute(QStringLiteral(
        "Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, FormCode) Values (3, '12', "
        "'100001', '100050', '5')"));
    company().execute(QStringLiteral(
        "Update N_Cheque Set FirstNum = '0200001', FormCode = ' 2 ' Where AcountID = 2"));
    leaves = chequeLeaves(company(), *d);
    EXPECT_EQ(leaves[0].formCode, QStringLiteral("1"));
    EXPECT_EQ(leaves[1].formCode, QStringLiteral("2"));
    company().execute(QStringLiteral("Delete From N_Cheque Where AcountID = 2"));
    EXPECT_EQ(chequeLeaves(company(), *d)[1].formCode, QString());
}

TEST_F(ChequePaymentPrintTest, OpeningPaymentPrintsFromItsOpeningRowsWithoutAVoucher) {
    const QString serial = savePayment(/*passOn=*/false, /*opening=*/true);
    const auto d = loadPayment(services(), serial);
    ASSERT_TRUE(d);
    EXPECT_TRUE(d->opening);
    EXPECT_EQ(d->voucherNo, 0);
    EXPECT_EQ(d->date, QStringLiteral("1404/02/20"));
    ASSERT_EQ(d->cheques.size(), 2u);
    ASSERT_EQ(d->lines.size(), 2u);
    const std::vector<ChequeLeaf> leaves = chequeLeaves(company(), *d);
    ASSERT_EQ(leaves.size(), 2u);
    EXPECT_EQ(leaves[1].dueDate, QStringLiteral("1404/03/15"));
    EXPECT_DOUBLE_EQ(leaves[1].amount, 1234567000);
    EXPECT_EQ(leaves[1].formCode, QStringLiteral("2"));
    EXPECT_FALSE(tr::printing::loadVoucherPrint(services(), QStringLiteral("81"), serial));
}

TEST_F(ChequePaymentPrintTest, LeafOffsetsAreTheCompanysOptionsAndZeroOtherwise) {
    const auto offsets = [] { return storedLeafOffsets(company()); };
    const auto setOptions = [](const QString& naghd) {
        company().execute(QStringLiteral("Update Options Set Naghd = ") + company().text(naghd));
    };
    EXPECT_EQ(offsets().horizontal, 0);
    EXPECT_EQ(offsets().vertical, 0);
    setOptions(QStringLiteral("USE_SERIAL=NO;CHQ_LEAF_DX=2.5;chq_leaf_dy= -1 ;"));
    EXPECT_DOUBLE_EQ(offsets().horizontal, 2.5);
    EXPECT_DOUBLE_EQ(offsets().vertical, -1);
    setOptions(QStringLiteral("CHQ_LEAF_DX=;CHQ_LEAF_DY=3mm;"));
    EXPECT_EQ(offsets().horizontal, 0);
    EXPECT_EQ(offsets().vertical, 0);
}

// The document's lines carry their cheque's row kind and account; the leaves' table holds our
// own leaves only, with the figures in words and the form code.
TEST_F(ChequePaymentPrintTest, PrintDesignTablesNameRowKindsAndHoldOnlyOurLeaves) {
    const QString serial = savePayment();
    const auto d = loadPayment(services(), serial);
    ASSERT_TRUE(d);
    tr::printing::PrintTables t = createChequeDocumentPrintTables(services(), *d);
    const tr::db::Query lines = tr::db::openQuery(
        company(), QStringLiteral("Select ChqStateNam, AcountCod, ChqGetter From ") + t.lines +
                       QStringLiteral(" Order By Raj"));
    ASSERT_EQ(lines.RecordCount(), 3);
    EXPECT_EQ(lines.value(0, 0).toString(), text("صدور چك"));
    EXPECT_EQ(lines.value(0, 1).toString(), QStringLiteral("0101234567"));
    EXPECT_EQ(lines.value(2, 0).toString(), text("خرج چك"));
    EXPECT_EQ(lines.value(2, 2).toString(), text("تعاوني حمل بار"));
    tr::printing::dropPrintTables(services(), t);

    t = createChequeLeafPrintTables(services(), *d, chequeLeaves(company(), *d));
    const tr::db::Query head = tr::db::openQuery(
        company(), QStringLiteral("Select SerialNo, NDocNam From ") + t.header);
    ASSERT_EQ(head.RecordCount(), 1);
    EXPECT_EQ(head.value(0, 0).toString(), serial);
    const tr::db::Query leaves = tr::db::openQuery(
        company(), QStringLiteral("Select SerialNo, ChqNo, AmountWords, Havaleh, FormCode From ") +
                       t.lines + QStringLiteral(" Order By Raj"));
    ASSERT_EQ(leaves.RecordCount(), 2);
    EXPECT_EQ(leaves.value(0, 0).toString(), serial);
    EXPECT_EQ(leaves.value(0, 2).toString(), text("دو ميليون و پانصد هزار ريال"));
    EXPECT_EQ(leaves.value(0, 3).toInt(), 1);
    EXPECT_EQ(leaves.value(1, 1).toString(), QStringLiteral("200003"));
    EXPECT_EQ(leaves.value(1, 3).toInt(), 0);
    EXPECT_EQ(leaves.value(1, 4).toString(), QStringLiteral("2"));
    tr::printing::dropPrintTables(services(), t);
}

}  // namespace
}  // namespace tr::cheques::testing
