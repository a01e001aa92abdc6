// Invoice settlement on the demo company, documents saved through the real procedures: the
// invoice-bound receipt, allocations from the dialog written on save, the undo on delete, the
// kind-by-kind recomputation, the open-invoice list across periods and the payments list.
#include "cashbank/tests/settlement/settlement_fixture.h"

namespace tr::cashbank {
namespace {

using testing::Screen;
using testing::SettlementTest;
using tr::vouchers::N_Global;
namespace demo = tr::schema::demo;

const QString kOpenInvoice = QString::fromUtf8(demo::kOpenInvoice);              // 25M, 5M paid
const QString kSecondOpenInvoice = QString::fromUtf8(demo::kSecondOpenInvoice);  // 12M, 2M paid
const QString kPreviousYearInvoice = QString::fromUtf8(demo::kPreviousYearInvoice);

class InvoiceBoundTest : public SettlementTest {};

TEST_F(InvoiceBoundTest, NewReceiptTakesTheInvoiceAndOneSaveOrTwoLeaveOneSetOfLinks) {
    auto screen = open("10");
    EXPECT_FALSE(screen->settlement.prepareForInvoice(kOpenInvoice));
    N_Global& doc = screen->document;
    EXPECT_EQ(doc.header().date(), QStringLiteral("1404/02/15"));
    EXPECT_DOUBLE_EQ(doc.header().amount, 25000000);
    ASSERT_EQ(doc.grid().RecordCount(), 1);
    EXPECT_EQ(doc.grid().FieldByName("Tafsily").AsString(),
              QString::fromUtf8(demo::kCustomerAlborz));
    EXPECT_EQ(doc.grid().FieldByName("ProjectCod").AsString(), QStringLiteral("P0001"));

    // The cashier takes only part of it.
    doc.fillNextSerial();
    doc.header().referenceNumber = QStringLiteral("77");
    doc.header().treasuryCode = QString::fromUtf8(demo::kRialCashBox);
    doc.describeTreasurySide();
    doc.header().amount = 12000000;
    doc.grid().Edit();
    doc.grid().FieldByName("Bes").SetAsFloat(12000000);
    doc.grid().Post();
    ASSERT_TRUE(doc.save()) << admin->dialog.last().text.toStdString();
    const QString serial = doc.header().serial.trimmed();
    ASSERT_TRUE(doc.save());

    EXPECT_EQ(links("10", serial), 1);
    EXPECT_EQ(value("Select SanadNoForosh + '/' + DorehMali From R_ForoshRelatedNaghd").toString(),
              kOpenInvoice + QStringLiteral("/1404"));
    EXPECT_EQ(value("Select Count(*) From R_ForoshRelatedNaghd Where Idx = Cast(AtfCh As Int) "
                    "And Idx In (Select IDX From N_NaghdTrans Where WhatDoc = '10')")
                  .toInt(),
              1);
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000 - 12000000);

    // The host opens the receipt form for the same invoice again: the saved receipt comes back.
    auto again = open("10");
    EXPECT_EQ(again->settlement.existingSerial(kOpenInvoice), serial);
    EXPECT_TRUE(again->settlement.prepareForInvoice(kOpenInvoice));
    EXPECT_EQ(again->document.header().serial.trimmed(), serial);
    EXPECT_EQ(again->document.state(), tr::vouchers::DocumentState::Edit);
    EXPECT_TRUE(again->settlement.existingSerial(kSecondOpenInvoice).isEmpty());

    // Deleting it gives the invoice its balance back and drops the links.
    admin->dialog.answer(tr::dialog::ResultOk);  // the warning that the links go
    admin->dialog.answerYes();
    ASSERT_TRUE(again->document.deleteDocument());
    EXPECT_EQ(links("10", serial), 0);
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 20000000);
}

class AllocationTest : public SettlementTest {};

TEST_F(AllocationTest, DialogListsOpenInvoicesOfEveryPeriodAndKeepsEachAllocationInBounds) {
    auto screen = open("10");
    prepare(*screen, 15000000, QString::fromUtf8(demo::kCustomerAlborz));
    InFactorDialog dialog(screen->settlement);

    // Filtered to the line's customer: only 1001 (1003 and 951 are settled).
    EXPECT_EQ(dialog.customer(), QString::fromUtf8(demo::kCustomerAlborz));
    ASSERT_EQ(dialog.list().RecordCount(), 1);
    EXPECT_DOUBLE_EQ(dialog.list().FieldByName("GetValue").AsFloat(), 20000000);

    dialog.setCustomerFilter(false);
    ASSERT_EQ(dialog.list().RecordCount(), 3);
    ASSERT_TRUE(moveToInvoice(dialog, kPreviousYearInvoice));
    EXPECT_EQ(dialog.list().FieldByName("DorehMali").AsString(), QStringLiteral("1403"));
    EXPECT_EQ(dialog.list().FieldByName("FactorDate").AsString(), QStringLiteral("1403/11/10"));
    EXPECT_DOUBLE_EQ(dialog.list().FieldByName("GetValue").AsFloat(), 18000000);
    EXPECT_FALSE(dialog.list().FieldByName("CustomerNam").AsString().isEmpty());

    // Selecting proposes the smaller of the open balance and the remaining amount.
    ASSERT_TRUE(moveToInvoice(dialog, kOpenInvoice));
    ASSERT_TRUE(dialog.toggleSelect());
    EXPECT_DOUBLE_EQ(dialog.list().FieldByName("NaghdValue").AsFloat(), 15000000);
    EXPECT_DOUBLE_EQ(dialog.remaining(), 0);

    ASSERT_TRUE(dialog.setAllocation(10000000));
    ASSERT_TRUE(moveToInvoice(dialog, kSecondOpenInvoice));
    EXPECT_FALSE(dialog.setAllocation(6000000));  // over the receipt's remaining 5,000,000
    EXPECT_EQ(admin->dialog.last().text,
              QStringLiteral("مبلغ تخصيصي نبايد از باقيمانده دريافت صندوق بيشتر باشد"));
    EXPECT_TRUE(dialog.toggleSelect());
    EXPECT_DOUBLE_EQ(dialog.list().FieldByName("NaghdValue").AsFloat(), 5000000);
    ASSERT_TRUE(moveToInvoice(dialog, kOpenInvoice));
    EXPECT_FALSE(dialog.setAllocation(20000001));
    EXPECT_EQ(admin->dialog.last().text,
              QStringLiteral("مبلغ تخصيصي نبايد از مبلغ مانده صورتحساب بيشتر باشد"));
    EXPECT_DOUBLE_EQ(dialog.allocated(), 15000000);

    // Typed allocations: a text that is not an amount is refused and the choices stay as they were.
    for (const char* typed : {"5a000", "1,0000", "-1000", "2.5.0"}) {
        EXPECT_FALSE(dialog.setAllocationText(QString::fromUtf8(typed))) << typed;
        EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
        EXPECT_TRUE(admin->dialog.last().text.contains(QString::fromUtf8(typed))) << typed;
        EXPECT_DOUBLE_EQ(dialog.list().FieldByName("NaghdValue").AsFloat(), 10000000);
        EXPECT_DOUBLE_EQ(dialog.allocated(), 15000000);
    }
    ASSERT_TRUE(dialog.setAllocationText(QStringLiteral("۹٬۰۰۰٬۰۰۰")));
    EXPECT_DOUBLE_EQ(dialog.allocated(), 14000000);
    ASSERT_TRUE(dialog.setAllocationText(QStringLiteral("10,000,000")));

    // Nothing is written before the receipt is saved.
    ASSERT_TRUE(dialog.cmdOkClick());
    EXPECT_EQ(rows("Select * From R_ForoshRelatedNaghd"), 0);
    ASSERT_TRUE(screen->document.save());
    const QString serial = screen->document.header().serial.trimmed();
    EXPECT_EQ(links("10", serial), 2);
    EXPECT_EQ(rows("Select * From R_ForoshRelatedNaghd R Join N_NaghdTrans N On N.IDX = R.Idx "
                   "Where R.AtfCh = Cast(N.IDX As Varchar(20)) And N.WhatDoc = '10'"),
              2);
    // Open balance = FactorValue - NaghdValue1 - every receipt allocation.
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000 - 10000000);
    EXPECT_DOUBLE_EQ(openBalance(kSecondOpenInvoice), 12000000 - 2000000 - 5000000);

    // Reopened, the dialog shows the saved allocations chosen, and the serial is noted as
    // settling several invoices; the payments list shows the receipt against the invoice.
    auto reopened = open("10");
    ASSERT_TRUE(reopened->document.openDocument(serial));
    EXPECT_EQ(reopened->settlement.settledInvoiceCount(serial), 2);
    InFactorDialog second(reopened->settlement);
    second.setCustomerFilter(false);
    EXPECT_DOUBLE_EQ(second.allocated(), 15000000);
    ASSERT_TRUE(moveToInvoice(second, kOpenInvoice));
    EXPECT_DOUBLE_EQ(second.list().FieldByName("GetValue").AsFloat(), 20000000);
    second.showPayments();
    EXPECT_EQ(pickList.last().title,
              QStringLiteral("وجوه پرداختي صورتحساب شماره : ") + kOpenInvoice);
    EXPECT_EQ(pickList.lastColumn("NDocNam"), QStringList{QStringLiteral("دريافت صندوق")});
    EXPECT_DOUBLE_EQ(pickList.last().rows.value(0).value("NaghdValue").toDouble(), 10000000);

    // Deleting the receipt restores both balances.
    admin->dialog.answer(tr::dialog::ResultOk);
    admin->dialog.answerYes();
    ASSERT_TRUE(reopened->document.deleteDocument());
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 20000000);
    EXPECT_DOUBLE_EQ(openBalance(kSecondOpenInvoice), 10000000);
    EXPECT_EQ(rows("Select * From R_ForoshRelatedNaghd"), 0);
}

TEST_F(AllocationTest, AllocationWhoseLineChangedKeepsNoIdx) {
    auto screen = open("10");
    prepare(*screen, 4000000, QString::fromUtf8(demo::kCustomerAftab));
    allocate(*screen, {{kPreviousYearInvoice, 4000000}});
    // The line's description changes after the allocation: nothing matches it any more.
    screen->document.grid().Edit();
    screen->document.grid().FieldByName("Des").SetAsString(QStringLiteral("شرح ديگر"));
    screen->document.grid().Post();
    ASSERT_TRUE(screen->document.save());
    ASSERT_EQ(rows("Select * From R_ForoshRelatedNaghd"), 1);
    EXPECT_TRUE(value("Select Idx From R_ForoshRelatedNaghd").isNull());
    EXPECT_TRUE(value("Select AtfCh From R_ForoshRelatedNaghd").isNull());
    // The allocation still pays the previous year's invoice.
    EXPECT_DOUBLE_EQ(openBalance(kPreviousYearInvoice, demo::kPreviousYear), 14000000);
}

TEST_F(AllocationTest, EachKindRecomputesBalancesFromItsOwnLinksOnly) {
    auto receipt = open("10");
    prepare(*receipt, 3000000, QString::fromUtf8(demo::kCustomerAftab));
    allocate(*receipt, {{kSecondOpenInvoice, 3000000}});
    ASSERT_TRUE(receipt->document.save());
    EXPECT_DOUBLE_EQ(openBalance(kSecondOpenInvoice), 12000000 - 2000000 - 3000000);

    auto deposit = open("50");
    prepare(*deposit, 2000000, QString::fromUtf8(demo::kCustomerAftab));
    {
        InFactorDialog dialog(deposit->settlement);
        ASSERT_TRUE(moveToInvoice(dialog, kSecondOpenInvoice));
        // The dialog's open balance counts every kind's links.
        EXPECT_DOUBLE_EQ(dialog.list().FieldByName("GetValue").AsFloat(), 7000000);
        ASSERT_TRUE(dialog.toggleSelect());
        ASSERT_TRUE(dialog.cmdOkClick());
    }
    ASSERT_TRUE(deposit->document.save()) << admin->dialog.last().text.toStdString();
    EXPECT_EQ(links("50", deposit->document.header().serial.trimmed()), 1);
    // The deposit's recomputation adds the deposits' links only: the receipt's 3,000,000 is out.
    EXPECT_DOUBLE_EQ(openBalance(kSecondOpenInvoice), 12000000 - 2000000 - 2000000);
    EXPECT_EQ(links("10", receipt->document.header().serial.trimmed()), 1);

    // Saving the receipt again, without the dialog, brings its part back and keeps the deposit's:
    // only the dialog's own allocations recompute kind by kind. Its link follows the line's new
    // IDX.
    ASSERT_TRUE(receipt->document.save());
    EXPECT_DOUBLE_EQ(openBalance(kSecondOpenInvoice), 12000000 - 2000000 - 3000000 - 2000000);
    EXPECT_EQ(rows("Select * From R_ForoshRelatedNaghd R Join N_NaghdTrans N On N.IDX = R.Idx "
                   "Where N.WhatDoc = '10'"),
              1);
}

TEST_F(AllocationTest, OpenPeriodsComeFromOpenInvoicesAndTheDocumentsOwnLinks) {
    auto screen = open("10");
    prepare(*screen, 18000000, QString::fromUtf8(demo::kCustomerAftab));
    EXPECT_EQ(screen->settlement.openPeriods(), (QStringList{"1403", "1404"}));
    allocate(*screen, {{kPreviousYearInvoice, 18000000}});
    ASSERT_TRUE(screen->document.save());
    company().execute(
        QStringLiteral("Update R_OldFactor Set MandehFactor = 0 Where "
                       "MainDorehMali = '1404'"));
    // 950 is fully paid by this receipt, yet its period and row stay for it to be edited.
    EXPECT_EQ(screen->settlement.openPeriods(), QStringList{"1403"});
    InFactorDialog dialog(screen->settlement);
    ASSERT_TRUE(moveToInvoice(dialog, kPreviousYearInvoice));
    EXPECT_EQ(dialog.list().FieldByName("sSelect").AsString(), QStringLiteral("P"));
    EXPECT_DOUBLE_EQ(dialog.list().FieldByName("GetValue").AsFloat(), 18000000);
}

}  // namespace
}  // namespace tr::cashbank
