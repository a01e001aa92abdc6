// Print data of saved documents: header values per kind, the account name of each line, the
// two "##" tables the print-design library reads, and the voucher print.
#include "cashbank/printing/document_print.h"

#include "cashbank/tests/printing/print_fixture.h"
#include "common/db/query_helpers.h"

namespace tr::cashbank::testing {
namespace {

QString u(const char* text) {
    return QString::fromUtf8(text);
}

class DocumentPrintTest : public PrintTest {};

TEST_F(DocumentPrintTest, ReceiptHeaderCarriesTheSavedValues) {
    saveDocument(QStringLiteral("10"), 7, QStringLiteral("1"),
                 {accountLine("104", "0001", "30003", "", "", u("بابت فاکتور 1001"), 1250000),
                  accountLine("301", "0001", "", "", "", u("افزايش سرمايه"), 750000)});
    const auto d = loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral(" 7 "));
    ASSERT_TRUE(d);
    EXPECT_EQ(d->kindName, u("دريافت صندوق"));
    EXPECT_EQ(d->treasuryCode, QStringLiteral("1"));
    EXPECT_EQ(d->treasuryName, u("صندوق مرکزي"));
    EXPECT_EQ(d->serial, QStringLiteral("7"));
    EXPECT_EQ(d->companyName, u(tr::schema::demo::kCompanyName));
    EXPECT_EQ(d->userName, QStringLiteral("admin"));
    EXPECT_EQ(d->voucherNo, voucherNumber(QStringLiteral("10"), 7));
    EXPECT_EQ(d->reference, QStringLiteral("501"));
    EXPECT_EQ(d->date, QStringLiteral("1404/02/10"));
    EXPECT_EQ(d->description, u("دريافت وجه از مشتري"));
    EXPECT_DOUBLE_EQ(d->amount, 2000000);
    EXPECT_FALSE(d->cancelled);
    ASSERT_EQ(d->lines.size(), 2u);
    EXPECT_EQ(d->lines[0].raj, 1);
    EXPECT_EQ(d->lines[1].des, u("افزايش سرمايه"));
    EXPECT_DOUBLE_EQ(d->lines[1].amount, 750000);
    EXPECT_DOUBLE_EQ(d->linesTotal(), d->amount);
}

TEST_F(DocumentPrintTest, NoDocumentNoPrint) {
    saveDocument(QStringLiteral("10"), 1, QStringLiteral("1"),
                 {accountLine("301", "0001", "", "", "", u("سرمايه"), 10)});
    EXPECT_FALSE(loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral("2")));
    // The same serial under another kind is another document.
    EXPECT_FALSE(loadDocumentPrint(services, QStringLiteral("20"), QStringLiteral("1")));
    EXPECT_FALSE(loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral("1'--")));
    EXPECT_FALSE(loadDocumentPrint(services, QStringLiteral("71"), QStringLiteral("1")));
}

// Each line is named after its most detailed level that both is filled and has a name.
TEST_F(DocumentPrintTest, LineNameFallsBackToTheNextNamedLevel) {
    struct Case {
        TransferLine line;
        const char* expected;
    };
    const std::vector<Case> cases = {
        {accountLine("104", "0001", "30001", "51001", "P0001", "a", 1), "پروژه ساختمان مرکزي"},
        {accountLine("104", "0001", "30001", "51001", "P7777", "b", 1), "شيراز"},
        {accountLine("104", "0001", "30002", "", "", "c", 1), "فروشگاه زنجيره اي آفتاب"},
        {accountLine("104", "0001", "39999", "59999", "", "d", 1), "بدهکاران تجاري"},
        {accountLine("301", "0001", "", "", "", "e", 1), "سرمايه ثبت شده"},
        {accountLine("104", "0777", "", "", "", "f", 1), "حسابهاي دريافتني"},
        {accountLine("777", "0777", "", "", "", "g", 1), ""},
    };
    std::vector<TransferLine> lines;
    for (const Case& c : cases) lines.push_back(c.line);
    saveDocument(QStringLiteral("10"), 3, QStringLiteral("1"), lines);

    const auto d = loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral("3"));
    ASSERT_TRUE(d);
    ASSERT_EQ(d->lines.size(), cases.size());
    for (size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(d->lines[i].lastNam, u(cases[i].expected)) << "line " << i + 1;
}

TEST_F(DocumentPrintTest, TreasurySideIsTheKindsObject) {
    struct Case {
        const char* kind;
        const char* code;
        const char* printedCode;
        const char* name;
    };
    const Case cases[] = {
        {"20", "2", "2", "صندوق فروشگاه"},
        {"40", "1001", "1001", "علي رضايي"},
        {"50", "1", "0101234567", "بانک ملي-شعبه مرکزي"},
        {"60", "3", "3019876543", "بانک صادرات-شعبه انقلاب"},
    };
    qint64 serial = 20;
    for (const Case& c : cases) {
        saveDocument(u(c.kind), ++serial, u(c.code),
                     {accountLine("202", "0001", "40001", "", "", u("شرح"), 5000)});
        const auto d = loadDocumentPrint(services, u(c.kind), QString::number(serial));
        ASSERT_TRUE(d) << c.kind;
        EXPECT_EQ(d->treasuryCode, u(c.printedCode)) << c.kind;
        EXPECT_EQ(d->treasuryName, u(c.name)) << c.kind;
        EXPECT_DOUBLE_EQ(d->amount, 5000) << c.kind;
    }
}

TEST_F(DocumentPrintTest, CancelledDocumentPrintsItsOwnVoucherWithAPositiveAmount) {
    saveDocument(QStringLiteral("10"), 4, QStringLiteral("1"),
                 {accountLine("301", "0001", "", "", "", u("سرمايه"), 300000)});
    const qint64 voucher = voucherNumber(QStringLiteral("10"), 4);
    cancelDocument(QStringLiteral("10"), 4, QStringLiteral("1"), QStringLiteral("1404/02/20"));

    const auto d = loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral("4"));
    ASSERT_TRUE(d);
    EXPECT_TRUE(d->cancelled);
    EXPECT_EQ(d->voucherNo, voucher);
    EXPECT_EQ(d->date, QStringLiteral("1404/02/10"));
    EXPECT_DOUBLE_EQ(d->amount, 300000);

    // A treasury line kept with a negative amount (older data) still prints as an amount.
    db().execute(
        QStringLiteral("Update Asnad Set Bed = -Bed Where TypeSys = 'N' And Raj = 1 And "
                       "DocToDate = '0'"));
    EXPECT_DOUBLE_EQ(loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral("4"))->amount,
                     300000);
}

TEST_F(DocumentPrintTest, WithdrawalNamesThePettyCashHolderAndTheUseOfFunds) {
    TransferLine toHolder = accountLine("105", "0001", "40001", "", "", u("تنخواه"), 900000);
    toHolder.manabehCod = QStringLiteral("20101");
    saveDocument(QStringLiteral("90"), 2, QStringLiteral("1"),
                 {accountLine("501", "0001", "60001", "", "", u("حقوق"), 100000), toHolder});
    const auto d = loadDocumentPrint(services, QStringLiteral("90"), QStringLiteral("2"));
    ASSERT_TRUE(d);
    EXPECT_EQ(d->pettyCashName, u("علي رضايي"));
    EXPECT_EQ(d->fundsName, u("حقوق و دستمزد"));

    // Other kinds carry neither, even on the same accounts.
    saveDocument(QStringLiteral("20"), 2, QStringLiteral("1"), {toHolder});
    const auto payment = loadDocumentPrint(services, QStringLiteral("20"), QStringLiteral("2"));
    EXPECT_TRUE(payment->pettyCashName.isEmpty());
    EXPECT_TRUE(payment->fundsName.isEmpty());
}

TEST_F(DocumentPrintTest, PrintTablesHoldTheHeaderRowAndTheLinkedLines) {
    saveDocument(QStringLiteral("10"), 9, QStringLiteral("1"),
                 {accountLine("104", "0001", "30002", "", "", u("وصول"), 400000),
                  accountLine("301", "0001", "", "", "", u("سرمايه"), 100000)});
    const auto d = loadDocumentPrint(services, QStringLiteral("10"), QStringLiteral("9"));
    ASSERT_TRUE(d);
    const PrintTables t = createPrintTables(services, *d);
    EXPECT_TRUE(t.header.startsWith(QStringLiteral("##U1_")));
    EXPECT_TRUE(t.lines.startsWith(QStringLiteral("##U1_")));
    EXPECT_NE(t.header, t.lines);

    const auto head = rows(QStringLiteral("Select * From ") + t.header);
    EXPECT_EQ(head.columns,
              (QStringList{"NDocNam", "CashCod", "CashNam", "SerialNoCash", "CompanyNam", "UserNam",
                           "SanadNo", "NumWhatDoc2", "SanadDate", "NaghdDes", "Amount"}));
    ASSERT_EQ(head.rows.size(), 1u);
    const auto& h = head.rows.front();
    EXPECT_EQ(h[0].toString(), u("دريافت صندوق"));
    EXPECT_EQ(h[2].toString(), u("صندوق مرکزي"));
    EXPECT_EQ(h[7].toString(), QStringLiteral("501"));
    EXPECT_DOUBLE_EQ(h[10].toDouble(), 500000);

    // Every line carries the link fields and the header description; a receipt's lines credit.
    const auto lines = rows(QStringLiteral("Select CashCod, SerialNoCash, NaghdDes, Bed, Bes, "
                                           "LastNam From ") +
                            t.lines + QStringLiteral(" Order By Raj"));
    ASSERT_EQ(lines.rows.size(), 2u);
    for (const auto& l : lines.rows) {
        EXPECT_EQ(l[0].toString(), QStringLiteral("1"));
        EXPECT_EQ(l[1].toString(), QStringLiteral("9"));
        EXPECT_EQ(l[2].toString(), u("دريافت وجه از مشتري"));
        EXPECT_DOUBLE_EQ(l[3].toDouble(), 0);
    }
    EXPECT_DOUBLE_EQ(lines.rows[0][4].toDouble(), 400000);
    EXPECT_EQ(lines.rows[0][5].toString(), u("فروشگاه زنجيره اي آفتاب"));

    dropPrintTables(services, t);
    EXPECT_FALSE(tr::db::objectExistsInTempdb(db(), t.header.mid(2)));
    EXPECT_FALSE(tr::db::objectExistsInTempdb(db(), t.lines.mid(2)));
}

TEST_F(DocumentPrintTest, WithdrawalHeaderTableHasItsTwoExtraColumns) {
    TransferLine line = accountLine("105", "0001", "40002", "", "", u("تنخواه"), 1000);
    saveDocument(QStringLiteral("90"), 5, QStringLiteral("2"), {line});
    const auto d = loadDocumentPrint(services, QStringLiteral("90"), QStringLiteral("5"));
    const PrintTables t = createPrintTables(services, *d);
    const auto head =
        rows(QStringLiteral("Select TankhahNam, ManNam, CashCod, Amount From ") + t.header);
    EXPECT_EQ(head.rows.front()[0].toString(), u("مريم احمدي"));
    EXPECT_EQ(head.rows.front()[1].toString(), QString());
    EXPECT_EQ(head.rows.front()[2].toString(), QStringLiteral("2012345678"));
    // Lines of a withdrawal debit.
    EXPECT_DOUBLE_EQ(value(QStringLiteral("Select Bed From ") + t.lines).toDouble(), 1000);
    dropPrintTables(services, t);
}

TEST_F(DocumentPrintTest, LayoutSelectionAndKeys) {
    EXPECT_EQ(printLayoutSelection(db(), QStringLiteral("10")),
              QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = '10' "));
    EXPECT_EQ(printLayoutSelection(db(), QStringLiteral("90")),
              QStringLiteral(" LTrim(RTrim(WhatDoc)) = 'N' and LTrim(RTrim(TypeSys)) = '90' "));
    EXPECT_EQ(printLayoutKey(QStringLiteral("90")), u("برداشت بانک_"));
    EXPECT_EQ(kPrintLinkFields, QStringLiteral("CashCod;SerialNoCash"));
    EXPECT_EQ(voucherReportKey(QStringLiteral("10")), QStringLiteral("N_ASNAD_CASHGET_CASHGET"));
    EXPECT_EQ(voucherReportKey(QStringLiteral("90")),
              QStringLiteral("N_ASNAD_BARDASHTBANK_BARDASHTBANK"));
}

TEST_F(DocumentPrintTest, VoucherPrintListsEveryLineUnderItsTitle) {
    saveDocument(QStringLiteral("10"), 6, QStringLiteral("1"),
                 {accountLine("104", "0001", "30003", "", "", u("وصول"), 400000),
                  accountLine("301", "0001", "", "", "", u("سرمايه"), 100000)});
    const qint64 voucher = voucherNumber(QStringLiteral("10"), 6);
    cancelDocument(QStringLiteral("10"), 6, QStringLiteral("1"), QStringLiteral("1404/02/11"));

    const auto v = loadVoucherPrint(services, QStringLiteral("10"), QStringLiteral("6"));
    ASSERT_TRUE(v);
    EXPECT_EQ(v->title, u("سند دريافت صندوق شماره ") + QString::number(voucher));
    EXPECT_EQ(v->reportKey, QStringLiteral("N_ASNAD_CASHGET_CASHGET"));
    // The treasury line first, then the counter lines; the cancellation voucher is not this one.
    ASSERT_EQ(v->lines.size(), 3u);
    EXPECT_EQ(v->lines[0].lastNam, u("صندوق مرکزي"));
    EXPECT_DOUBLE_EQ(v->lines[0].bed, 500000);
    EXPECT_EQ(v->lines[1].lastNam, u("بازرگاني نگين"));
    EXPECT_DOUBLE_EQ(v->totalBed(), 500000);
    EXPECT_DOUBLE_EQ(v->totalBes(), 500000);
}

}  // namespace
}  // namespace tr::cashbank::testing
