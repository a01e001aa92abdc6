// The document controller on the demo company with the real procedures: saving and its refusals,
// opening, cancelling and undoing, deleting, line and header checks, holds and the call texts.
#include "vouchers/n_global.h"

#include <QStringList>

#include "common/db/query_helpers.h"
#include "vouchers/serials.h"
#include "vouchers/tests/voucher_fixture.h"

namespace tr::vouchers {
namespace {

using testing::Session;
using testing::VoucherTest;

const QString kCapitalKoll = QString::fromUtf8(tr::schema::demo::kCapitalKoll);
const QString kCapitalMoein = QString::fromUtf8(tr::schema::demo::kCapitalMoein);

const TreasuryDocumentKind& kindOf(const char* code) {
    return *findTreasuryDocumentKind(QString::fromLatin1(code));
}

class NGlobalTest : public VoucherTest {
  protected:
    void SetUp() override {
        VoucherTest::SetUp();
        receipt = std::make_unique<N_Global>(admin->services, kindOf("10"));
    }
    // A grid line through the grid, as the user enters it.
    static void addLine(N_Global& doc, double amount, const QString& des = QStringLiteral("بابت"),
                        const QString& koll = kCapitalKoll) {
        tr::db::Query& grid = doc.grid();
        grid.Append();
        grid.FieldByName(QStringLiteral("Koll")).SetAsString(koll);
        grid.FieldByName(QStringLiteral("Moein")).SetAsString(kCapitalMoein);
        grid.FieldByName(QStringLiteral("Des")).SetAsString(des);
        if (amount != 0) grid.FieldByName(sideColumn(doc.kind().gridSide())).SetAsFloat(amount);
        grid.FieldByName(QStringLiteral("WhatDoc2")).SetAsString(QStringLiteral("01"));
        grid.Post();
    }

    // A new document of the given header, its serial taken as the serial box does.
    static void prepare(N_Global& doc, const QString& code, double amount,
                        const QString& date = QStringLiteral("1404/02/10")) {
        doc.newDocument();
        doc.fillNextSerial();
        DocumentHeader& h = doc.header();
        h.setDate(date);
        h.referenceNumber = QStringLiteral("501");
        h.treasuryCode = code;
        h.description = QStringLiteral("دريافت وجه");
        h.amount = amount;
        doc.describeTreasurySide();
    }

    QString transferRows(N_Global& doc) {
        const auto result =
            company().execute(QStringLiteral("Select * From ") + doc.transferTable() +
                              QStringLiteral(" Order By Raj"));
        QStringList lines;
        for (const auto& row : result.resultSets.front().rows) {
            QStringList cells;
            for (const QVariant& v : row) cells << v.toString();
            lines << cells.join(QLatin1Char('|'));
        }
        return lines.join(QLatin1Char('\n'));
    }

    int documentLines(const QString& kind, const QString& serial) {
        return rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc=") +
                    tr::db::sqlText(kind) + QStringLiteral(" And Serial=") +
                    tr::db::sqlText(serial));
    }

    QStringList loggedActions() {
        const auto result =
            company().execute(QStringLiteral("Select ActType From ASNADACTIONS Order By ActType"));
        QStringList types;
        for (const auto& row : result.resultSets.front().rows) types << row.front().toString();
        return types;
    }

    static void setUseSerial(bool on) {
        company().execute(QStringLiteral("Update Options Set Naghd = ") +
                          tr::db::sqlText(on ? QString::fromUtf8(tr::schema::demo::kOptionsText)
                                             : QStringLiteral("USE_SERIAL=NO;USE_HISTORY=YES;")));
    }
    void TearDown() override {
        receipt.reset();
        setUseSerial(true);
        VoucherTest::TearDown();
    }

    std::unique_ptr<N_Global> receipt;
};

// ---- Saving -------------------------------------------------------------------------------

TEST_F(NGlobalTest, ABalancedReceiptIsPostedLoggedAndShownAsUpdated) {
    prepare(*receipt, QStringLiteral("1"), 5000000);
    addLine(*receipt, 3000000);
    addLine(*receipt, 2000000);
    ASSERT_TRUE(receipt->save());
    EXPECT_TRUE(admin->dialog.shown().isEmpty());

    const QString serial = receipt->header().serial;
    EXPECT_EQ(documentLines(QStringLiteral("10"), serial), 3);
    EXPECT_TRUE(ledgerBalances());
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From Asnad Where TypeSys='N'")).toDouble(),
              5000000.0);
    EXPECT_EQ(loggedActions(), QStringList{QStringLiteral("I")});
    EXPECT_EQ(value(QStringLiteral("Select TypeDoc From ASNADACTIONS")).toString(),
              QStringLiteral("دريافت صندوق"));

    EXPECT_EQ(receipt->state(), DocumentState::Edit);
    EXPECT_FALSE(receipt->header().voucherNo.isEmpty());
    EXPECT_EQ(receipt->caption(), QStringLiteral("اصلاح دريافت صندوق(به روزآوري شده است)"));
    EXPECT_EQ(receipt->grid().RecordCount(), 2);  // reloaded from the ledger
    EXPECT_FALSE(receipt->grid().FieldByName(QStringLiteral("IDX")).IsNull());
}

TEST_F(NGlobalTest, SerialIsAppendedToTheDescriptionOnceAndTheSecondSaveIsAnEdit) {
    prepare(*receipt, QStringLiteral("1"), 1000);
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    const QString mark = QStringLiteral("( ") + receipt->header().serial + QStringLiteral(" )");
    EXPECT_EQ(receipt->header().description, QStringLiteral("دريافت وجه") + mark);
    const QString voucher = receipt->header().voucherNo;

    ASSERT_TRUE(receipt->save());
    EXPECT_EQ(receipt->header().description.count(mark), 1);
    EXPECT_EQ(receipt->header().voucherNo, voucher);
    EXPECT_EQ(loggedActions(), (QStringList{QStringLiteral("E"), QStringLiteral("I")}));
    EXPECT_EQ(documentLines(QStringLiteral("10"), receipt->header().serial), 2);
    EXPECT_TRUE(ledgerBalances());
}

TEST_F(NGlobalTest, WithUseSerialAnEmptyDescriptionBecomesTheSerial) {
    prepare(*receipt, QStringLiteral("1"), 1000);
    receipt->header().description.clear();
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    EXPECT_EQ(receipt->header().description,
              QStringLiteral("( ") + receipt->header().serial + QStringLiteral(" )"));
}

TEST_F(NGlobalTest, ALongDescriptionIsCutSoTheSerialStillFits) {
    receipt->descriptionMaxLength = 20;
    prepare(*receipt, QStringLiteral("1"), 1000);
    receipt->header().description = QString(20, QChar(u'ش'));
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    const QString serial = receipt->header().serial;
    EXPECT_EQ(receipt->header().description, QString(20 - serial.size() - 5, QChar(u'ش')) +
                                                 QStringLiteral("( ") + serial +
                                                 QStringLiteral(" )"));
}

struct Refusal {
    const char* name;
    double headerAmount;
    const char* description;
    double lineAmount;
    const char* message;
    HeaderField focus;
};

class SaveRefusals : public NGlobalTest, public ::testing::WithParamInterface<Refusal> {};

TEST_P(SaveRefusals, ShowTheMessageAndChangeNothing) {
    const Refusal& r = GetParam();
    // The serial goes into the description before it is checked, so only without USE_SERIAL can
    // the description be found empty.
    setUseSerial(false);
    prepare(*receipt, QStringLiteral("1"), r.headerAmount);
    receipt->header().description = QString::fromUtf8(r.description);
    addLine(*receipt, r.lineAmount);
    const QString before = transferRows(*receipt);
    const int gridRows = receipt->grid().RecordCount();

    EXPECT_FALSE(receipt->save());
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text, QString::fromUtf8(r.message));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(receipt->focus(), r.focus);
    EXPECT_EQ(transferRows(*receipt), before);
    EXPECT_EQ(receipt->grid().RecordCount(), gridRows);
    EXPECT_EQ(receipt->state(), DocumentState::New);
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From ASNADACTIONS")), 0);
}

INSTANTIATE_TEST_SUITE_P(Header, SaveRefusals,
                         ::testing::Values(Refusal{"Unbalanced", 5000000, "دريافت", 4000000,
                                                   "سند تراز نميباشد.", HeaderField::None},
                                           Refusal{"NoDescription", 1000, "  ", 1000,
                                                   "شرح وارد نشده است.", HeaderField::Description},
                                           Refusal{"NoAmount", 0, "دريافت", 1000,
                                                   "مبلغ وارد نشده است.", HeaderField::Amount}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(NGlobalTest, ANewDocumentUnderASavedSerialIsRefusedButAnotherKindMayUseIt) {
    prepare(*receipt, QStringLiteral("1"), 1000);
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    const QString serial = receipt->header().serial;

    N_Global second(admin->services, kindOf("10"));
    prepare(second, QStringLiteral("1"), 700);
    second.header().serial = serial;  // typed over the proposal
    addLine(second, 700);
    const QString before = transferRows(second);
    EXPECT_FALSE(second.save());
    EXPECT_EQ(admin->dialog.last().text, QStringLiteral("دريافت صندوق با اين شماره ثبت شده است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(transferRows(second), before);
    EXPECT_EQ(documentLines(QStringLiteral("10"), serial), 2);

    N_Global payment(admin->services, kindOf("20"));
    prepare(payment, QStringLiteral("1"), 700);
    payment.header().serial = serial;
    addLine(payment, 700);
    EXPECT_TRUE(payment.save());
    EXPECT_EQ(documentLines(QStringLiteral("20"), serial), 2);
    EXPECT_EQ(
        value(QStringLiteral("Select Sum(Bes) From Asnad Where WhatDoc='20' And Raj=1")).toDouble(),
        700.0);
    EXPECT_TRUE(ledgerBalances());
}

TEST_F(NGlobalTest, ASerialSavedByAnotherUserMeanwhileIsRefusedNotThrown) {
    Session clerk(company(), 2, QStringLiteral("sara"));
    N_Global other(clerk.services, kindOf("10"));
    prepare(*receipt, QStringLiteral("1"), 1000);
    prepare(other, QStringLiteral("1"), 400);
    other.header().serial = receipt->header().serial;
    addLine(other, 400);
    addLine(*receipt, 1000);
    // The other user confirms while this user's pending line is being posted (step 3), i.e.
    // after this save's own duplicate check.
    receipt->grid().Edit();
    receipt->grid().FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("بابت ديگر"));
    receipt->accountCheck = [&](tr::db::Query&) {
        receipt->accountCheck = nullptr;
        EXPECT_TRUE(other.save());
        return true;
    };
    EXPECT_FALSE(receipt->save());
    ASSERT_FALSE(admin->dialog.shown().isEmpty());
    EXPECT_EQ(admin->dialog.last().text, QStringLiteral("دريافت صندوق با اين شماره ثبت شده است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(receipt->state(), DocumentState::New);
    // Only the other user's receipt is saved (and logged).
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 2);
    EXPECT_EQ(loggedActions(), QStringList{QStringLiteral("I")});
    EXPECT_TRUE(ledgerBalances());
    EXPECT_FALSE(company().inTransaction());
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From ") + receipt->transferTable() +
                    QStringLiteral(" Where Joz Is Not Null"))
                  .toInt(),
              0);
}

TEST_F(NGlobalTest, TheHistoryTableHoldsTheVoucherAsItStoodBeforeTheSave) {
    prepare(*receipt, QStringLiteral("1"), 1000);
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    EXPECT_TRUE(receipt->historyTable().contains(QStringLiteral("History")));
    EXPECT_EQ(rows(QStringLiteral("Select * From ") + receipt->historyTable()), 0);
    receipt->header().amount = 1500;
    receipt->grid().First();
    receipt->grid().Edit();
    receipt->grid().FieldByName(QStringLiteral("Bes")).SetAsFloat(1500);
    receipt->grid().Post();
    ASSERT_TRUE(receipt->save());
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From ") + receipt->historyTable()).toDouble(),
              1000.0);
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From Asnad Where TypeSys='N'")).toDouble(),
              1500.0);
}

// ---- Opening ------------------------------------------------------------------------------

TEST_F(NGlobalTest, OpeningReadsTheHeaderFromTheTreasuryLine) {
    prepare(*receipt, QStringLiteral("2"), 2500, QStringLiteral("1404/03/05"));
    receipt->header().referenceNumber = QStringLiteral("777");
    addLine(*receipt, 2500);
    ASSERT_TRUE(receipt->save());
    const QString serial = receipt->header().serial;

    N_Global reader(admin->services, kindOf("10"));
    EXPECT_FALSE(reader.openDocument(QStringLiteral("999")));
    ASSERT_TRUE(reader.openDocument(serial));
    const DocumentHeader& h = reader.header();
    EXPECT_EQ(h.serial, serial);
    EXPECT_EQ(h.referenceNumber, QStringLiteral("777"));
    EXPECT_EQ(h.date(), QStringLiteral("1404/03/05"));
    EXPECT_EQ(h.amount, 2500.0);
    EXPECT_EQ(h.treasuryCode, QStringLiteral("2"));
    EXPECT_FALSE(h.treasuryName.isEmpty());
    EXPECT_EQ(h.voucherNo, receipt->header().voucherNo);
    EXPECT_EQ(h.userName, QStringLiteral("admin"));
    EXPECT_EQ(reader.grid().RecordCount(), 1);
    EXPECT_EQ(reader.state(), DocumentState::Edit);
    EXPECT_EQ(reader.caption(), QStringLiteral("اصلاح دريافت صندوق"));
}

TEST_F(NGlobalTest, BankTransferKeepsPartNumberAndRemitterAndDebitsTheAccount) {
    N_Global transfer(admin->services, kindOf("60"));
    prepare(transfer, QString::number(tr::schema::demo::kMelliAccountId), 8000);
    DocumentHeader& h = transfer.header();
    h.joz = QStringLiteral("12");
    h.des1 = QStringLiteral("علي رضايي");
    h.des2 = QStringLiteral("ملت");
    h.des3 = QStringLiteral("0123");
    h.des4 = QStringLiteral("شعبه مرکزي");
    EXPECT_EQ(h.treasuryDisplayCode, QString::fromUtf8(tr::schema::demo::kMelliAccountCod));
    addLine(transfer, 8000);
    ASSERT_TRUE(transfer.save());
    EXPECT_TRUE(ledgerBalances());

    N_Global reader(admin->services, kindOf("60"));
    ASSERT_TRUE(reader.openDocument(h.serial));
    EXPECT_EQ(reader.header().joz, QStringLiteral("12"));
    EXPECT_EQ(reader.header().des1, QStringLiteral("علي رضايي"));
    EXPECT_EQ(reader.header().des4, QStringLiteral("شعبه مرکزي"));
    EXPECT_EQ(reader.header().amount, 8000.0);
    EXPECT_EQ(reader.header().treasuryCode, QString::number(tr::schema::demo::kMelliAccountId));
}

TEST_F(NGlobalTest, AForeignCurrencyReceiptGoesThroughTheTwinAndReadsBackInTheCurrency) {
    prepare(*receipt, QString::fromUtf8(tr::schema::demo::kForeignCashBox), 100);
    EXPECT_TRUE(receipt->currencyDocument());
    receipt->header().rate = 850000;
    addLine(*receipt, 100);
    ASSERT_TRUE(receipt->save());
    EXPECT_TRUE(ledgerBalances());
    EXPECT_EQ(value(QStringLiteral("Select Bed From Asnad Where TypeSys='N' And Raj=1")).toDouble(),
              85000000.0);

    N_Global reader(admin->services, kindOf("10"));
    ASSERT_TRUE(reader.openDocument(receipt->header().serial));
    EXPECT_EQ(reader.header().amount, 100.0);
    EXPECT_EQ(reader.header().rate, 850000.0);
    EXPECT_EQ(reader.header().currency, QString::fromUtf8(tr::schema::demo::kUsd));
    EXPECT_EQ(reader.gridSum(), 100.0);
}

// ---- Cancelling, undoing, deleting -------------------------------------------------------

TEST_F(NGlobalTest, CancellationDatedBeforeTheVoucherIsRefusedOnTheVoucherDateAccepted) {
    prepare(*receipt, QStringLiteral("1"), 1000, QStringLiteral("1404/02/10"));
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    admin->dialog.clearShown();
    const QString before = transferRows(*receipt);

    receipt->header().setDate(QStringLiteral("1404/02/09"));
    EXPECT_FALSE(receipt->cancelDocument());
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text,
              QStringLiteral("تاريخ ابطال بايد بزرگتر يا مساوي تاريخ 1404/02/10 باشد"));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(transferRows(*receipt), before);
    EXPECT_FALSE(receipt->cancelled());

    receipt->header().setDate(QStringLiteral("1404/02/10"));
    admin->dialog.answerNo();
    EXPECT_FALSE(receipt->cancelDocument());
    EXPECT_EQ(admin->dialog.last().text, QStringLiteral("دريافت صندوق ابطال شود؟"));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("3QR"));
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where DocToDate='1'")), 0);

    admin->dialog.answerYes();
    EXPECT_TRUE(receipt->cancelDocument());
    EXPECT_TRUE(receipt->cancelled());
    EXPECT_EQ(receipt->captionSuffix(), QStringLiteral("(ابطال شده است)"));
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where DocToDate='1'")), 2);
    EXPECT_TRUE(ledgerBalances());
    EXPECT_TRUE(N_Global::isCancelled(company(), QStringLiteral("10"), receipt->header().serial));
    EXPECT_FALSE(N_Global::isCancelled(company(), QStringLiteral("20"), receipt->header().serial));

    N_Global reader(admin->services, kindOf("10"));
    ASSERT_TRUE(reader.openDocument(receipt->header().serial));
    EXPECT_EQ(reader.caption(), QStringLiteral("اصلاح دريافت صندوق(ابطال شده است)"));

    admin->dialog.answerYes();
    EXPECT_TRUE(receipt->undoCancel());
    EXPECT_EQ(admin->dialog.last().text, QStringLiteral("آيا مي خواهيد سند ابطالي حذف شود ؟"));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("3QR"));
    EXPECT_FALSE(receipt->cancelled());
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where DocToDate='1'")), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where DocToDate='0'")), 2);
}

TEST_F(NGlobalTest, DeletingWarnsAboutInvoiceLinksAsksLogsAndUndoesTheSettlement) {
    prepare(*receipt, QStringLiteral("1"), 1000);
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    const QString serial = receipt->header().serial;
    const QString voucher = receipt->header().voucherNo;
    receipt->grid().First();
    const QString lineIdx = receipt->grid().FieldByName(QStringLiteral("IDX")).AsString();
    company().execute(QStringLiteral("Insert Into R_ForoshRelatedNaghd (Idx, WhatDoc, Serial, "
                                     "SanadNoForosh, TypeAction, NaghdValue) Values (") +
                      lineIdx + QStringLiteral(", '10', ") + serial +
                      QStringLiteral(", '1001', '1', 1000)"));
    admin->dialog.clearShown();
    int settlementUndone = 0;
    receipt->undoInvoiceSettlement = [&](N_Global&) { ++settlementUndone; };

    admin->dialog.answer(tr::dialog::ResultOk);
    admin->dialog.answerNo();
    EXPECT_FALSE(receipt->deleteDocument());
    EXPECT_EQ(documentLines(QStringLiteral("10"), serial), 2);

    admin->dialog.answer(tr::dialog::ResultOk);
    admin->dialog.answerYes();
    EXPECT_TRUE(receipt->deleteDocument());
    const auto& shown = admin->dialog.shown();
    ASSERT_EQ(shown.size(), 4);
    EXPECT_EQ(shown[2].text,
              QStringLiteral("با حذف اين سريال،  ارتباط آن با صورتحساب هاي فروش قطع خواهد شد."));
    EXPECT_EQ(shown[2].code, QStringLiteral("1ER"));
    EXPECT_EQ(shown[3].text, QStringLiteral("دريافت صندوق حذف شود؟"));
    EXPECT_EQ(shown[3].code, QStringLiteral("3QR"));

    EXPECT_EQ(documentLines(QStringLiteral("10"), serial), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys='N'")), 0);
    EXPECT_EQ(value(QStringLiteral("Select DocNo From ASNADACTIONS Where ActType='D'")).toString(),
              voucher);
    EXPECT_EQ(rows(QStringLiteral("Select * From ") + receipt->historyTable()), 2);
    EXPECT_EQ(settlementUndone, 1);
    EXPECT_EQ(receipt->state(), DocumentState::New);
    EXPECT_EQ(receipt->grid().RecordCount(), 0);
}

// ---- Lines, header, holds -----------------------------------------------------------------

struct LineCase {
    const char* kind;
    const char* des;
    double amount;
    const char* message;
};

class LineChecks : public NGlobalTest, public ::testing::WithParamInterface<LineCase> {};

TEST_P(LineChecks, KeepTheRowInEditWithTheKindsMessage) {
    N_Global doc(admin->services, kindOf(GetParam().kind));
    tr::db::Query& grid = doc.grid();
    grid.Append();
    grid.FieldByName(QStringLiteral("Koll")).SetAsString(kCapitalKoll);
    grid.FieldByName(QStringLiteral("Moein")).SetAsString(kCapitalMoein);
    grid.FieldByName(QStringLiteral("Des")).SetAsString(QString::fromUtf8(GetParam().des));
    if (GetParam().amount != 0)
        grid.FieldByName(sideColumn(doc.kind().gridSide())).SetAsFloat(GetParam().amount);
    grid.Post();
    EXPECT_EQ(grid.state(), tr::db::Query::State::Insert);
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text, QString::fromUtf8(GetParam().message));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(rows(QStringLiteral("Select * From ") + doc.transferTable()), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, LineChecks,
                         ::testing::Values(LineCase{"10", "", 100, "شرح سند وارد نشده است"},
                                           LineCase{"90", " ", 100, "شرح سند وارد نشده است."},
                                           LineCase{"20", "بابت", 0, "مبلغ وارد نشده است."}));

TEST_F(NGlobalTest, AcceptedLinesAreNumberedAndStandOnTheGridSide) {
    int checked = 0;
    receipt->accountCheck = [&](tr::db::Query& line) {
        ++checked;
        return line.FieldByName(QStringLiteral("Koll")).AsString() != QStringLiteral("999");
    };
    addLine(*receipt, 10);
    addLine(*receipt, 20, QStringLiteral("بابت"), QStringLiteral("999"));
    EXPECT_EQ(receipt->grid().state(), tr::db::Query::State::Insert);  // refused by the chart
    receipt->grid().Cancel();
    addLine(*receipt, 30);
    EXPECT_EQ(checked, 3);
    EXPECT_EQ(value(QStringLiteral("Select Max(Raj) From ") + receipt->transferTable()).toInt(), 2);
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From ") + receipt->transferTable()).toDouble(),
              0.0);
    EXPECT_EQ(receipt->gridSum(), 40.0);
    EXPECT_EQ(N_Global::sum(company(), QStringLiteral("Bes"), receipt->transferTable(),
                            QStringLiteral("Raj = 2")),
              30.0);

    receipt->grid().First();
    receipt->grid().Delete();
    EXPECT_EQ(value(QStringLiteral("Select Raj From ") + receipt->transferTable()).toInt(), 1);
}

TEST_F(NGlobalTest, TheChartCheckRunsFirstAndNamesTheCellToFocus) {
    addLine(*receipt, 10, QString(), QString::fromUtf8(tr::schema::demo::kInactiveKoll));
    EXPECT_EQ(receipt->grid().state(), tr::db::Query::State::Insert);
    ASSERT_EQ(admin->dialog.shown().size(), 1);  // the chart's message, not the description's
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(receipt->lineFocus(), AccountLevel::Koll);
}

struct HeaderCase {
    const char* kind;
    const char* serial;
    const char* message;
    HeaderField focus;
};

class HeaderChecks : public NGlobalTest, public ::testing::WithParamInterface<HeaderCase> {};

TEST_P(HeaderChecks, NameTheKind) {
    N_Global doc(admin->services, kindOf(GetParam().kind));
    doc.header().serial = QString::fromUtf8(GetParam().serial);
    EXPECT_FALSE(doc.checkHeader());
    EXPECT_EQ(admin->dialog.last().text, QString::fromUtf8(GetParam().message));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(doc.focus(), GetParam().focus);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, HeaderChecks,
    ::testing::Values(
        HeaderCase{"10", "", "سريال دريافت صندوق وارد نشده است.", HeaderField::Serial},
        HeaderCase{"20", "", "سريال پرداخت صندوق وارد نشده است.", HeaderField::Serial},
        HeaderCase{"10", "1", "شماره دريافت صندوق وارد نشده است.", HeaderField::ReferenceNumber},
        HeaderCase{"40", "1", "شماره تنخواه وارد نشده است.", HeaderField::ReferenceNumber},
        HeaderCase{"50", "1", "شماره برداشت وارد نشده است.", HeaderField::ReferenceNumber},
        HeaderCase{"60", "1", "شماره حواله وارد نشده است.", HeaderField::ReferenceNumber}));

TEST_F(NGlobalTest, ClosingTheScreenReleasesItsHoldsAndTables) {
    receipt->fillNextSerial();
    EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId Where UserId='1'")), 1);
    const QString table = receipt->transferTable();
    EXPECT_TRUE(tr::db::objectExistsInTempdb(company(), table));
    receipt.reset();
    EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId Where UserId='1'")), 0);
    EXPECT_FALSE(tr::db::objectExistsInTempdb(company(), table));
}

TEST_F(NGlobalTest, ADocumentOpenOnAnotherScreenIsNotHeldTwice) {
    prepare(*receipt, QStringLiteral("1"), 1000);
    addLine(*receipt, 1000);
    ASSERT_TRUE(receipt->save());
    Session clerk(company(), 2, QStringLiteral("sara"));
    N_Global other(clerk.services, kindOf("10"));
    ASSERT_TRUE(other.openDocument(receipt->header().serial));
    EXPECT_TRUE(other.heldByAnotherUser());
    EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId Where UserId='2'")), 0);
}

// ---- Call texts ---------------------------------------------------------------------------

TEST_F(NGlobalTest, ProcedureCallsPutTheHeaderValuesWhereTheProceduresReadThem) {
    ProcedureArguments a{
        QStringLiteral("##T"),   QStringLiteral("5"),          QStringLiteral("1"),
        QStringLiteral("501"),   QStringLiteral("1404/02/10"), QStringLiteral("شرح"),
        QStringLiteral("admin"), QStringLiteral("NEW"),        QStringLiteral("PC")};
    const TreasuryDocumentKind& k = kindOf("10");
    EXPECT_EQ(procedureCall(company(), k, DocumentAction::Save, a),
              QStringLiteral("Exec sp_N_Asnad_Trans_CashGet 'TRANS->DB', '##T', '5', '1', '501', "
                             "'1404/02/10', 'شرح', 'admin', 'NEW', 'PC'"));
    EXPECT_EQ(
        procedureCall(company(), k, DocumentAction::Cancel, a, true, 52000.5, QStringLiteral("01")),
        QStringLiteral("Exec sp_N_Asnad_Trans_CashGet_Arzi 52000.5, '01', 'ABTAL', '##T', "
                       "'5', '1', '', '', '1404/02/10', '', 'admin', 'PC'"));
    EXPECT_EQ(
        procedureCall(company(), k, DocumentAction::Load, a, true, 52000.5, QStringLiteral("01")),
        QStringLiteral("Exec sp_N_Asnad_Trans_CashGet_Arzi 0, '', 'DB->TRANS', '##T', '5', "
                       "'', '', '', '', '', '', ''"));
    // Petty cash has no currency twin.
    EXPECT_TRUE(
        procedureCall(company(), kindOf("40"), DocumentAction::Delete, a, true, 1,
                      QStringLiteral("01"))
            .startsWith(QStringLiteral("Exec sp_N_Asnad_Trans_Tankhah 'DELETE', '##T', '5', ''")));
}

}  // namespace
}  // namespace tr::vouchers
