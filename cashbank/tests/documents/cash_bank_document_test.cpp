// The six document screens' logic on the demo company with the real procedures: the whole life of
// a document per screen, the receipt's own edge cases, header and line entry and the grid menu.
#include "cashbank/documents/cash_bank_document.h"

#include <QThread>

#include "cashbank/tests/documents/documents_fixture.h"
#include "common/persian/amount_words.h"

namespace tr::cashbank {
namespace {

using testing::DocumentsTest;
using testing::s;
using tr::vouchers::DocumentState;
namespace demo = tr::schema::demo;
namespace ledger = tr::procedures::testing;

// A list's ## table is dropped after a test "[Name] Like '%<its name>'", which also matches the
// screen's transfer table when both were named in the same hundredth of a second; a user never
// picks that fast, a test must wait.
void nextTimeStamp() {
    QThread::msleep(12);
}

QString lastText(const tr::test::RecordingMessageDialog& dialog) {
    return dialog.shown().isEmpty() ? QString() : dialog.last().text;
}

// ---- The table of screens -----------------------------------------------------------------------

TEST(CashBankScreens, EachScreenDiffersOnlyWhereItsRowSays) {
    for (const CashBankScreen& screen : cashBankScreens()) {
        SCOPED_TRACE(screen.formClass.toStdString());
        const bool pettyCash = screen.id == ScreenId::Tankhah;
        EXPECT_EQ(screen.menuItem(MenuCommand::ExcelImport) != nullptr, pettyCash);
        EXPECT_EQ(screen.menuItem(MenuCommand::RestoreColumns) == nullptr, pettyCash);
        EXPECT_EQ(screen.menuItem(MenuCommand::Settlement) != nullptr, screen.hasInvoice);
        EXPECT_EQ(screen.menuItem(MenuCommand::CopyRowAbove)->text,
                  screen.id == ScreenId::CashPay ? s("کپي از رديف بالا") : s("کپي رديف بالا"));
        QStringList fields;
        for (const GridColumn& column : screen.gridColumns()) fields << column.field;
        EXPECT_EQ(fields.contains(QStringLiteral("ArzCount2")), screen.secondCurrencyColumns);
        // The counter lines stand opposite the treasury side.
        EXPECT_EQ(fields.at(7), tr::vouchers::sideColumn(screen.kind().gridSide()));
        EXPECT_EQ(screen.gridColumns().at(8).title,
                  screen.id == ScreenId::BardashtBank ? s("مصارف") : s("منابع"));
    }
    EXPECT_EQ(cashBankScreen(ScreenId::BardashtBank).menuItem(MenuCommand::PrintDocument)->text,
              s("چاپ  فرم برداشت بانک..."));
    EXPECT_EQ(cashBankScreen(ScreenId::CashGet).menuItem(MenuCommand::PrintVoucher)->key,
              QKeyCombination(Qt::ControlModifier, Qt::Key_P));
    EXPECT_FALSE(cashBankScreen(ScreenId::Tankhah).rateScreen.has_value());
}

// ---- Every screen through a document's whole life -----------------------------------------------

class EveryScreen : public DocumentsTest, public ::testing::WithParamInterface<ScreenId> {};

TEST_P(EveryScreen, SavesReopensCancelsUndoesAndDeletes) {
    auto screen = open(GetParam());
    const QString kind = screen->screen().kindCode;
    fillHeader(*screen, 5000000);
    if (screen->screen().hasDepositor) screen->setDepositor(QStringLiteral("رضا محمدي"));
    if (screen->screen().hasRemitter)
        screen->setRemitter(QStringLiteral("شرکت آلفا"), s("بانک تجارت"), QStringLiteral("201"),
                            s("شعبه ميرداماد"));
    ASSERT_TRUE(addLine(*screen, 3000000));
    ASSERT_TRUE(addLine(*screen, 2000000));
    EXPECT_EQ(screen->sumText(), QStringLiteral("5,000,000"));
    ASSERT_TRUE(screen->cmdOkClick()) << lastText(admin->dialog).toStdString();
    EXPECT_TRUE(ledgerIsConsistent());
    EXPECT_EQ(screen->state(), DocumentState::Edit);
    EXPECT_TRUE(screen->caption().startsWith(s("اصلاح ")));
    const QString serial = screen->header().serial;
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '") + kind +
                   QStringLiteral("'")),
              3);
    // The status line says what was saved, with the voucher the book gave it.
    const QString voucher = value(QStringLiteral("Select Max(SanadNo) From Asnad Where TypeSys = 'N'")).toString();
    EXPECT_EQ(screen->statusText(), s("سريال ") + serial + s(" ثبت شد - سند حسابداري ") + voucher);
    ASSERT_TRUE(screen->cmdOkClick());
    EXPECT_EQ(screen->statusText(), s("سريال ") + serial + s(" اصلاح شد - سند حسابداري ") + voucher);

    // Reopened on another screen of the same kind, through the serial box.
    auto reader = open(GetParam());
    reader->setSerial(serial);
    ASSERT_TRUE(reader->serialLeave());
    EXPECT_EQ(reader->header().treasuryDisplayCode,
              testing::DocumentsTest::treasuryCode(reader->screen()));
    EXPECT_FALSE(reader->header().treasuryName.isEmpty());
    EXPECT_EQ(reader->header().amount, 5000000.0);
    EXPECT_EQ(reader->header().referenceNumber, QStringLiteral("7001"));
    EXPECT_EQ(reader->grid().RecordCount(), 2);
    if (reader->screen().hasRemitter) {
        EXPECT_EQ(reader->header().des1, QStringLiteral("شرکت آلفا"));
        EXPECT_EQ(reader->header().des4, s("شعبه ميرداماد"));
    }
    if (reader->screen().hasDepositor) {
        EXPECT_EQ(reader->header().des1, QStringLiteral("رضا محمدي"));
    }
    reader.reset();

    admin->dialog.answerYes();
    ASSERT_TRUE(screen->cmdAbtalClick());
    EXPECT_TRUE(screen->cancelled());
    EXPECT_EQ(screen->statusText(), s("سريال ") + serial + s(" ابطال شد"));
    EXPECT_EQ(screen->cancelCaption(), s("برگشت از ابطال"));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("3QR"));
    EXPECT_TRUE(ledgerIsConsistent());

    admin->dialog.answerYes();
    ASSERT_TRUE(screen->cmdAbtalClick());
    EXPECT_FALSE(screen->cancelled());
    EXPECT_EQ(screen->statusText(), s("سريال ") + serial + s(" از ابطال برگشت"));
    EXPECT_EQ(screen->cancelCaption(), s("ابطال"));
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys='N' And DocToDate='1'")), 0);

    const auto lines = ledger::selectRows(
        company(), QStringLiteral("Select IDX From N_NaghdTrans Where WhatDoc = '") + kind +
                       QStringLiteral("'"));
    QList<qint64> former;
    for (const auto& row : lines.rows) former << row[0].toLongLong();
    admin->dialog.answerYes();
    ASSERT_TRUE(screen->cmdDelClick());
    EXPECT_EQ(screen->statusText(), s("سريال ") + serial + s(" حذف شد"));
    EXPECT_TRUE(ledger::documentIsGone(company(), kind, serial.toLongLong(), former));
    EXPECT_TRUE(ledgerIsConsistent());
    EXPECT_EQ(screen->state(), DocumentState::New);
    EXPECT_EQ(screen->grid().RecordCount(), 0);
}

TEST_P(EveryScreen, RefusesAnUnbalancedSaveAndKeepsItsLines) {
    auto screen = open(GetParam());
    fillHeader(*screen, 5000000);
    ASSERT_TRUE(addLine(*screen, 3000000));
    EXPECT_FALSE(screen->cmdOkClick());
    EXPECT_EQ(admin->dialog.last().text, s("سند تراز نميباشد."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(screen->statusText(), s("مبلغ سند 5,000,000 - جمع رديفها 3,000,000 - اختلاف 2,000,000"));
    EXPECT_EQ(screen->state(), DocumentState::New);
    EXPECT_EQ(screen->grid().RecordCount(), 1);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys='N'")), 0);
    // Corrected, the same document is accepted; refused again, the status line no longer
    // claims the save.
    ASSERT_TRUE(addLine(*screen, 2000000));
    EXPECT_TRUE(screen->cmdOkClick());
    EXPECT_TRUE(ledgerIsConsistent());
    EXPECT_TRUE(screen->statusText().contains(s("ثبت شد")));
    ASSERT_TRUE(addLine(*screen, 1000));
    EXPECT_FALSE(screen->cmdOkClick());
    EXPECT_EQ(screen->statusText(), s("مبلغ سند 5,000,000 - جمع رديفها 5,001,000 - اختلاف -1,000"));
    screen->setAmountText(QStringLiteral("0"));
    EXPECT_FALSE(screen->cmdOkClick());
    EXPECT_TRUE(screen->statusText().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Screens, EveryScreen,
                         ::testing::Values(ScreenId::CashGet, ScreenId::CashPay, ScreenId::Tankhah,
                                           ScreenId::VarizBank, ScreenId::BardashtBank,
                                           ScreenId::Havaleh),
                         [](const auto& info) {
                             return cashBankScreen(info.param).formClass.toStdString();
                         });

// ---- The receipt's edge cases -------------------------------------------------------------------

TEST_F(DocumentsTest, ForeignCurrencyLinesCarryTheBoxCurrencyUnitPriceOneAndTheHeaderRate) {
    auto receipt = open(ScreenId::CashGet);
    EXPECT_FALSE(receipt->rateEnabled());
    fillHeader(*receipt, 100, s(demo::kForeignCashBox));
    EXPECT_TRUE(receipt->rateEnabled());
    EXPECT_EQ(receipt->header().rate, demo::kUsdBuy);  // money coming in: the buying rate
    receipt->setRateText(QStringLiteral("851000"));
    ASSERT_TRUE(addLine(*receipt, 60));
    ASSERT_TRUE(addLine(*receipt, 40));
    tr::db::Query& grid = receipt->grid();
    for (int row = 0; row < grid.RecordCount(); ++row) {
        grid.MoveTo(row);
        EXPECT_EQ(grid.FieldByName(QStringLiteral("ArzCod")).AsString().trimmed(), s(demo::kUsd));
        EXPECT_EQ(grid.FieldByName(QStringLiteral("ArzNam")).AsString(), s("دلار آمريکا"));
        EXPECT_EQ(grid.FieldByName(QStringLiteral("ArzUnitPrice")).AsFloat(), 1.0);
        EXPECT_EQ(grid.FieldByName(QStringLiteral("ArzRate")).AsFloat(), 851000.0);
    }
    grid.First();
    EXPECT_EQ(grid.FieldByName(QStringLiteral("ArzTotalPrice")).AsFloat(), 60 * 851000.0);
    ASSERT_TRUE(receipt->cmdOkClick()) << lastText(admin->dialog).toStdString();
    EXPECT_TRUE(ledgerIsConsistent());
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From Asnad Where TypeSys='N'")).toDouble(),
              100 * 851000.0);

    // Money going out is valued at the selling rate.
    auto payment = open(ScreenId::CashPay);
    payment->treasuryCodeEntered(s(demo::kForeignCashBox));
    EXPECT_EQ(payment->header().rate, demo::kUsdSell);
}

TEST_F(DocumentsTest, SavingAnAlreadySavedSerialAgainInNewIsRefused) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 1000);
    ASSERT_TRUE(addLine(*receipt, 1000));
    ASSERT_TRUE(receipt->cmdOkClick());
    const QString serial = receipt->header().serial;

    receipt->newDocumentClick();
    fillHeader(*receipt, 1000);
    receipt->setSerial(serial);  // typed, and saved before the box was left
    ASSERT_TRUE(addLine(*receipt, 1000));
    admin->dialog.clearShown();
    EXPECT_FALSE(receipt->cmdOkClick());
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text, s("دريافت صندوق با اين شماره ثبت شده است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(receipt->state(), DocumentState::New);
    EXPECT_EQ(receipt->focus(), tr::vouchers::HeaderField::Serial);
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 2);
    EXPECT_EQ(receipt->grid().RecordCount(), 1);

    // Entering the serial box again offers the next free serial, and the save goes through.
    receipt->serialEnter();
    EXPECT_EQ(receipt->header().serial, QStringLiteral("2"));
    EXPECT_TRUE(receipt->cmdOkClick());
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_F(DocumentsTest, HeaderChecksUseEachScreensWordingAndTheFiscalPeriod) {
    auto deposit = open(ScreenId::VarizBank);
    EXPECT_FALSE(deposit->headerLeave());
    EXPECT_EQ(lastText(admin->dialog), s("سريال واريز به بانك وارد نشده است."));
    deposit->serialEnter();
    EXPECT_FALSE(deposit->headerLeave());
    // The deposit has always said the withdrawal's sentence.
    EXPECT_EQ(lastText(admin->dialog), s("شماره برداشت وارد نشده است."));
    EXPECT_EQ(deposit->focus(), tr::vouchers::HeaderField::ReferenceNumber);

    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 1000);
    receipt->setYear(QStringLiteral("1403"));
    EXPECT_FALSE(receipt->headerLeave());
    EXPECT_TRUE(lastText(admin->dialog).startsWith(s("تاريخ وارد شده كوچكتر")));
    EXPECT_EQ(receipt->focus(), tr::vouchers::HeaderField::Date);
    receipt->setYear(QStringLiteral("1404"));
    EXPECT_TRUE(receipt->headerLeave());
}

TEST_F(DocumentsTest, SerialBoxFillsNewSerialsOpensSavedOnesAndSteps) {
    auto receipt = open(ScreenId::CashGet);
    QStringList saved;
    for (double amount : {1000.0, 2000.0}) {
        receipt->newDocumentClick();
        fillHeader(*receipt, amount);
        ASSERT_TRUE(addLine(*receipt, amount));
        ASSERT_TRUE(receipt->cmdOkClick());
        saved << receipt->header().serial;
    }
    EXPECT_EQ(saved, (QStringList{QStringLiteral("1"), QStringLiteral("2")}));

    receipt->newDocumentClick();
    receipt->serialEnter();
    EXPECT_EQ(receipt->header().serial, QStringLiteral("3"));
    EXPECT_FALSE(receipt->serialLeave());  // nothing saved under 3 yet
    EXPECT_EQ(receipt->state(), DocumentState::New);

    receipt->setSerial(QStringLiteral("1234567"));
    EXPECT_EQ(receipt->header().serial, QStringLiteral("123456"));

    receipt->setSerial(QStringLiteral("1"));
    ASSERT_TRUE(receipt->serialLeave());
    EXPECT_EQ(receipt->header().amount, 1000.0);
    ASSERT_TRUE(receipt->spinNext());
    EXPECT_EQ(receipt->header().amount, 2000.0);
    EXPECT_FALSE(receipt->spinNext());
    ASSERT_TRUE(receipt->spinPrevious());
    EXPECT_EQ(receipt->header().serial, QStringLiteral("1"));

    // The list button opens what the search part picks.
    receipt->pickDocument = [](CashBankDocument&) { return std::optional<QString>("2"); };
    ASSERT_TRUE(receipt->listButtonClick());
    EXPECT_EQ(receipt->header().amount, 2000.0);
}

TEST_F(DocumentsTest, DateBoxesClampWhileTypingAndPadOnLeaving) {
    auto receipt = open(ScreenId::CashGet);
    EXPECT_EQ(receipt->dayTyped(QStringLiteral("45")), QStringLiteral("31"));
    EXPECT_EQ(receipt->monthTyped(QStringLiteral("13")), QStringLiteral("12"));
    EXPECT_EQ(receipt->dayLeave(QStringLiteral("0")), QStringLiteral("01"));
    EXPECT_EQ(receipt->monthLeave(QStringLiteral("7")), QStringLiteral("07"));
    receipt->setYear(QStringLiteral("1404"));
    EXPECT_EQ(receipt->header().date(), QStringLiteral("1404/07/01"));
    EXPECT_FALSE(CashBankDocument::isDateCharacter(QLatin1Char('a')));
    EXPECT_TRUE(CashBankDocument::isDateCharacter(QChar(0x06F5)));  // Persian five
}

TEST_F(DocumentsTest, AmountInWordsStartsAtZeroAndFollowsTheAmount) {
    auto receipt = open(ScreenId::CashGet);
    EXPECT_EQ(receipt->amountInWords(), s("صفر ريال"));
    receipt->setAmountText(QStringLiteral("۲۵۰۰"));
    EXPECT_EQ(receipt->header().amount, 2500.0);
    EXPECT_EQ(receipt->amountInWords(), tr::persian::amountInWords(2500.0));
}

// A grid cell holding text that is not an amount (what the grid hands over when the user types
// into a new cell) is refused and stays for correction; neither the lines nor the header move.
TEST_F(DocumentsTest, AnAmountThatIsNotANumberIsRefusedAndKeptForCorrection) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 5000000);
    ASSERT_TRUE(addLine(*receipt, 3000000));
    const QString table = receipt->document().transferTable();
    const auto lines = [&] {
        return rows(QStringLiteral("Select * From ") + table);
    };
    const auto total = [&] {
        return value(QStringLiteral("Select Sum(Bes) From ") + table).toDouble();
    };

    receipt->appendLine();
    tr::db::Query& grid = receipt->grid();
    grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kCapitalKoll));
    grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kCapitalMoein));
    grid.FieldByName(QStringLiteral("Des")).SetAsString(s("شرح رديف"));
    grid.FieldByName(QStringLiteral("Bes")).SetValue(QStringLiteral("5a000"));
    admin->dialog.clearShown();
    EXPECT_FALSE(receipt->postLine());
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_TRUE(admin->dialog.last().text.contains(QStringLiteral("5a000")));
    EXPECT_EQ(grid.state(), tr::db::Query::State::Insert);
    EXPECT_EQ(grid.FieldByName(QStringLiteral("Bes")).Value(), QVariant(QStringLiteral("5a000")));
    EXPECT_EQ(receipt->lineFocusField(), QStringLiteral("Bes"));  // the grid returns to the cell
    EXPECT_EQ(lines(), 1);
    EXPECT_EQ(total(), 3000000.0);
    EXPECT_EQ(receipt->sumText(), QStringLiteral("3,000,000"));

    // Corrected in Persian digits with grouping, the same line posts.
    grid.FieldByName(QStringLiteral("Bes")).SetValue(s("۲,۰۰۰,۰۰۰"));
    ASSERT_TRUE(receipt->postLine()) << lastText(admin->dialog).toStdString();
    EXPECT_EQ(lines(), 2);
    EXPECT_EQ(total(), 5000000.0);

    // The header's amount box: the refused text stays as typed and the amount as it was.
    receipt->setAmountText(QStringLiteral("5,000.5.0"));
    EXPECT_EQ(receipt->header().amount, 5000000.0);
    EXPECT_EQ(receipt->amountText(), QStringLiteral("5,000.5.0"));
    admin->dialog.clearShown();
    EXPECT_FALSE(receipt->amountLeave());
    EXPECT_FALSE(receipt->cmdOkClick());
    ASSERT_EQ(admin->dialog.shown().size(), 2);
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 0);

    receipt->setAmountText(QStringLiteral("5,000,000"));
    EXPECT_TRUE(receipt->amountLeave());
    ASSERT_TRUE(receipt->cmdOkClick()) << lastText(admin->dialog).toStdString();
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_F(DocumentsTest, TreasuryListsShowTheDisplayRulesOfEachSide) {
    auto withdrawal = open(ScreenId::BardashtBank);
    nextTimeStamp();
    admin->pickList.chooseWhere(QStringLiteral("Display"), s(demo::kTejaratAccountCod));
    ASSERT_TRUE(withdrawal->pickTreasury());
    EXPECT_EQ(withdrawal->header().treasuryCode, QString::number(demo::kTejaratAccountId));
    EXPECT_EQ(withdrawal->header().treasuryDisplayCode, s(demo::kTejaratAccountCod));
    EXPECT_EQ(withdrawal->header().treasuryName, s("بانک تجارت-شعبه ميرداماد"));

    auto pettyCash = open(ScreenId::Tankhah);
    admin->pickList.chooseRow(1);
    ASSERT_TRUE(pettyCash->pickTreasury());
    EXPECT_EQ(admin->pickList.lastColumn(QStringLiteral("Nam")),
              (QStringList{s("علي رضايي"), s("مريم احمدي")}));
    EXPECT_EQ(pettyCash->header().treasuryName, s("مريم احمدي"));
    EXPECT_FALSE(pettyCash->rateEnabled());
}

TEST_F(DocumentsTest, InvoiceModeOnlyInTheInvoiceContainerOfTheSettlingScreens) {
    QStringList prepared;
    for (ScreenId id : {ScreenId::CashGet, ScreenId::CashPay}) {
        CashBankDocument screen(admin->services, id);
        screen.prepareForInvoice = [&prepared](CashBankDocument&, const QString& number) {
            prepared << number;
        };
        screen.setInvoiceNumber(s(demo::kOpenInvoice));
        screen.show(QStringLiteral("pnlScreens"));
        EXPECT_TRUE(screen.invoiceText().isEmpty());
        screen.show(CashBankDocument::kInvoiceContainer);
        EXPECT_EQ(screen.invoiceMode(), id == ScreenId::CashGet);
    }
    // Shown elsewhere first, the settling screen was told it serves no invoice.
    EXPECT_EQ(prepared, (QStringList{QString(), s(demo::kOpenInvoice)}));
}

// ---- Grid entry and its menu --------------------------------------------------------------------

TEST_F(DocumentsTest, AnAccountPickedFromItsListIsCheckedNamedAndDescribed) {
    auto payment = open(ScreenId::CashPay);
    fillHeader(*payment, 1000);
    payment->appendLine();
    nextTimeStamp();
    admin->pickList.chooseWhere(QStringLiteral("Koll"), s(demo::kBlankActiveKoll));
    EXPECT_FALSE(payment->pickCell(QStringLiteral("Koll")));  // inactive: refused, not copied
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
    EXPECT_TRUE(payment->grid().FieldByName(QStringLiteral("Koll")).IsNull());

    nextTimeStamp();
    admin->pickList.chooseWhere(QStringLiteral("Koll"), s(demo::kCapitalKoll));
    ASSERT_TRUE(payment->pickCell(QStringLiteral("Koll")));
    nextTimeStamp();
    admin->pickList.chooseWhere(QStringLiteral("Moein"), s(demo::kCapitalMoein));
    ASSERT_TRUE(payment->pickCell(QStringLiteral("Moein")));
    nextTimeStamp();
    admin->pickList.chooseWhere(QStringLiteral("ManabehCod"), s(demo::kUseOfFunds));
    ASSERT_TRUE(payment->pickCell(QStringLiteral("ManabehCod")));
    EXPECT_EQ(payment->fundsName(), s("حقوق و دستمزد"));
    const QList<CounterPartyLine> party = payment->counterParty();
    ASSERT_EQ(party.size(), 2);
    EXPECT_EQ(party[0].code, s(demo::kCapitalKoll));

    // Without description or amount the line stays in edit with the line messages.
    payment->grid().FieldByName(QStringLiteral("Des")).Clear();
    EXPECT_FALSE(payment->postLine());
    EXPECT_EQ(admin->dialog.last().text, s("شرح سند وارد نشده است"));
    payment->grid().FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("حقوق"));
    EXPECT_FALSE(payment->postLine());
    EXPECT_EQ(admin->dialog.last().text, s("مبلغ وارد نشده است."));
    payment->grid().FieldByName(QStringLiteral("Bed")).SetAsFloat(1000);
    ASSERT_TRUE(payment->postLine());
    EXPECT_EQ(payment->counterPartyName(), party.last().name);
}

TEST_F(DocumentsTest, RowAndCellMemoriesAndCopyingTheRowAbove) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 3000);
    ASSERT_TRUE(addLine(*receipt, 1000, QStringLiteral("اول")));
    EXPECT_FALSE(receipt->copyRowAbove());  // the first line has nothing above it

    receipt->appendLine();
    ASSERT_TRUE(receipt->copyRowAbove());
    ASSERT_TRUE(receipt->postLine());
    tr::db::Query& grid = receipt->grid();
    grid.Last();
    EXPECT_EQ(grid.FieldByName(QStringLiteral("Des")).AsString(), QStringLiteral("اول"));
    EXPECT_EQ(grid.FieldByName(QStringLiteral("Raj")).AsInteger(), 2);

    grid.First();
    receipt->rememberRow();
    receipt->rememberCell(QStringLiteral("Bes"));
    receipt->appendLine();
    ASSERT_TRUE(receipt->restoreRow());
    grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("سوم"));
    ASSERT_TRUE(receipt->postLine());
    EXPECT_EQ(grid.RecordCount(), 3);
    EXPECT_EQ(grid.FieldByName(QStringLiteral("Raj")).AsInteger(), 3);

    grid.MoveTo(1);
    grid.Edit();
    grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(5);
    ASSERT_TRUE(receipt->restoreCell(QStringLiteral("Bes")));
    EXPECT_FALSE(receipt->restoreCell(QStringLiteral("IDX")));
    ASSERT_TRUE(receipt->postLine());
    EXPECT_EQ(receipt->sum(), 3000.0);
    EXPECT_TRUE(receipt->clipboardText().startsWith(s("طرف حساب\tکل\tمعين")));
    EXPECT_EQ(receipt->clipboardText().count(QLatin1Char('\n')), 3);
    EXPECT_TRUE(receipt->cmdOkClick());
}

TEST_F(DocumentsTest, DeletingALineAsksFirst) {
    auto receipt = open(ScreenId::CashGet);
    fillHeader(*receipt, 3000);
    ASSERT_TRUE(addLine(*receipt, 1000, QStringLiteral("اول")));
    ASSERT_TRUE(addLine(*receipt, 2000, QStringLiteral("دوم")));
    receipt->grid().First();
    admin->dialog.answerNo();
    EXPECT_FALSE(receipt->deleteLine());
    EXPECT_EQ(receipt->grid().RecordCount(), 2);
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("3QR"));
    admin->dialog.answerYes();
    EXPECT_TRUE(receipt->deleteLine());
    EXPECT_EQ(receipt->grid().RecordCount(), 1);
    receipt->grid().First();
    EXPECT_EQ(receipt->grid().FieldByName(QStringLiteral("Raj")).AsInteger(), 1);
    EXPECT_EQ(receipt->sum(), 2000.0);
}

TEST_F(DocumentsTest, CommandsFollowTheUsersRightsAndTheHooks) {
    testing::Session clerk(company(), demo::kClerkUserId, s(demo::kClerkUserName),
                           QStringLiteral("N_A_CASHGET__SABT(Y)N_A_CASHGET__VIEW(Y)"));
    auto receipt = open(ScreenId::CashGet, &clerk);
    EXPECT_TRUE(receipt->canSave());
    EXPECT_FALSE(receipt->canPrint());
    fillHeader(*receipt, 1000);
    ASSERT_TRUE(addLine(*receipt, 1000));
    ASSERT_TRUE(receipt->cmdOkClick());
    EXPECT_FALSE(receipt->canSave());  // no edit right
    EXPECT_FALSE(receipt->canDelete());
    EXPECT_FALSE(receipt->cmdDelClick());
    EXPECT_TRUE(clerk.dialog.shown().isEmpty());

    auto deposit = open(ScreenId::VarizBank);
    QList<PrintLayout> printed;
    deposit->printDocument = [&printed](CashBankDocument&, PrintLayout layout) {
        printed << layout;
    };
    fillHeader(*deposit, 1000);
    ASSERT_TRUE(addLine(*deposit, 1000));
    deposit->printLayout = PrintLayout::Old;
    ASSERT_TRUE(deposit->cmdOkPrintClick());
    EXPECT_EQ(printed, QList<PrintLayout>{PrintLayout::Old});
}

}  // namespace
}  // namespace tr::cashbank
