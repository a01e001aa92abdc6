// Leaving a screen with work not yet saved asks first: Yes saves (a refused save stays), No then
// OK discards into a new document, No then Cancel stays with everything as it was.
#include "cashbank/tests/documents/documents_fixture.h"

namespace tr::cashbank::testing {
namespace {

using tr::dialog::ResultCancel;
using tr::dialog::ResultNo;
using tr::dialog::ResultOk;
using tr::dialog::ResultYes;

class UnsavedChangesTest : public DocumentsTest {};

TEST_F(UnsavedChangesTest, WhatCountsAsUnsavedWork) {
    auto receipt = open(ScreenId::CashGet);
    EXPECT_FALSE(receipt->hasUnsavedChanges());
    receipt->serialEnter();  // the serial handed to a new document is not the user's work
    EXPECT_FALSE(receipt->hasUnsavedChanges());
    EXPECT_TRUE(receipt->confirmLeave());
    EXPECT_TRUE(admin->dialog.shown().isEmpty());

    fillHeader(*receipt, 3000);
    EXPECT_TRUE(receipt->hasUnsavedChanges());
    ASSERT_TRUE(addLine(*receipt, 3000));
    ASSERT_TRUE(receipt->cmdOkClick());
    EXPECT_FALSE(receipt->hasUnsavedChanges());

    // Each kind of edit on the saved document: a header box, a line, a refused amount text.
    const std::function<void(CashBankDocument&)> edits[] = {
        [](CashBankDocument& d) { d.setDescription(QStringLiteral("شرح ديگر")); },
        [](CashBankDocument& d) { d.dayLeave(QStringLiteral("6")); },
        [](CashBankDocument& d) {
            d.grid().First();
            d.grid().Edit();
            d.grid().FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("رديف ديگر"));
            d.postLine();
        },
        [this](CashBankDocument& d) {
            d.grid().First();
            admin->dialog.answerYes();
            d.deleteLine();
        },
        [](CashBankDocument& d) { d.setAmountText(QStringLiteral("12x")); },
    };
    const QString serial = receipt->header().serial;
    for (const auto& edit : edits) {
        ASSERT_TRUE(receipt->openSerial(serial));
        EXPECT_FALSE(receipt->hasUnsavedChanges());
        edit(*receipt);
        EXPECT_TRUE(receipt->hasUnsavedChanges());
    }
    // A cancellation, dated by the boxes, leaves nothing unsaved behind.
    ASSERT_TRUE(receipt->openSerial(serial));
    receipt->dayLeave(QStringLiteral("20"));
    admin->dialog.answerYes();
    ASSERT_TRUE(receipt->cmdAbtalClick());
    EXPECT_FALSE(receipt->hasUnsavedChanges());
}

TEST_F(UnsavedChangesTest, LeavingAsksToSaveDiscardOrStay) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 3000);
    ASSERT_TRUE(addLine(*receipt, 2000));  // out of balance: a save is refused

    // No, then Cancel: the user stays and nothing moved.
    admin->dialog.answer(ResultNo);
    admin->dialog.answer(ResultCancel);
    EXPECT_FALSE(receipt->confirmLeave());
    EXPECT_EQ(admin->dialog.shown().at(0).text, CashBankDocument::kUnsavedQuestion);
    EXPECT_EQ(admin->dialog.shown().at(0).code, s("3QR"));
    EXPECT_EQ(admin->dialog.shown().at(1).text, CashBankDocument::kDiscardWarning);
    EXPECT_EQ(receipt->grid().RecordCount(), 1);
    EXPECT_EQ(receipt->header().amount, 3000.0);

    // Yes, but the save is refused: the user stays with his work.
    admin->dialog.clearShown();
    admin->dialog.answer(ResultYes);
    EXPECT_FALSE(receipt->confirmLeave());
    EXPECT_EQ(admin->dialog.last().text, s("سند تراز نميباشد."));
    EXPECT_TRUE(receipt->hasUnsavedChanges());
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 0);

    // Yes on a balanced document saves it.
    ASSERT_TRUE(addLine(*receipt, 1000));
    admin->dialog.answer(ResultYes);
    EXPECT_TRUE(receipt->confirmLeave());
    EXPECT_GT(rows(QStringLiteral("Select * From N_NaghdTrans")), 0);
    EXPECT_TRUE(ledgerIsConsistent());

    // No, then OK: the edits go, the book keeps the saved document.
    receipt->setDescription(QStringLiteral("شرح دور انداختني"));
    admin->dialog.answer(ResultNo);
    admin->dialog.answer(ResultOk);
    EXPECT_TRUE(receipt->confirmLeave());
    EXPECT_FALSE(receipt->hasUnsavedChanges());
    EXPECT_EQ(receipt->state(), tr::vouchers::DocumentState::New);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where Des = 'شرح دور انداختني'")), 0);
}

}  // namespace
}  // namespace tr::cashbank::testing
