// Invoice settlement driven through the receipt and deposit screens' logic as their forms drive it:
// the invoice-bound receipt among other kinds' payments, the screen docked again for plain
// documents, and the links' voucher fields.
#include "cashbank/settlement/document_settlement.h"
#include "settlement/in_factor_dialog.h"
#include "cashbank/tests/documents/documents_fixture.h"

namespace tr::cashbank {
using tr::settlement::InFactorDialog;
}  // namespace tr::cashbank

namespace tr::cashbank {
namespace {

using testing::s;
namespace demo = tr::schema::demo;

const QString kOpenInvoice = s(demo::kOpenInvoice);              // 25M, 5M paid before
const QString kSecondOpenInvoice = s(demo::kSecondOpenInvoice);  // 12M, 2M paid before

// A receipt or deposit screen's logic with the settlement its form binds to it.
struct BoundScreen {
    BoundScreen(const tr::Services& services, ScreenId id)
        : logic(std::make_unique<CashBankDocument>(services, id)),
          settlement(std::make_unique<DocumentSettlement>(*logic)) {}
    ~BoundScreen() { settlement.reset(); }
    InvoiceSettlement& invoices() { return *settlement->settlement(); }
    std::unique_ptr<CashBankDocument> logic;
    std::unique_ptr<DocumentSettlement> settlement;
};

class ScreenSettlement : public testing::DocumentsTest {
  protected:
    void SetUp() override {
        DocumentsTest::SetUp();
        company().execute(
            QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1, "
                           "MandehFactor = FactorValue - NaghdValue1"));
        admin->global.sCode = s(demo::kCompanyCode);
        admin->global.sYear = s(demo::kCurrentYear);
    }

    std::unique_ptr<BoundScreen> show(ScreenId id, const QString& container,
                                      const QString& invoice = {}) {
        auto screen = std::make_unique<BoundScreen>(admin->services, id);
        screen->logic->setInvoiceNumber(invoice);
        screen->logic->show(container);
        return screen;
    }

    // A line paid by the Aftab company, typed as the user types it.
    static bool addCustomerLine(CashBankDocument& screen, double amount) {
        screen.appendLine();
        tr::db::Query& grid = screen.grid();
        grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kReceivablesKoll));
        grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kReceivablesMoein));
        grid.FieldByName(QStringLiteral("Tafsily")).SetAsString(s(demo::kCustomerAftab));
        grid.FieldByName(QStringLiteral("Tafsily2")).SetAsString(s(demo::kRegionTehran));
        grid.FieldByName(QStringLiteral("ProjectCod")).SetAsString(s(demo::kProjectSales));
        grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("بابت صورتحساب"));
        grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(amount);
        return screen.postLine();
    }

    // "ثبت ... در صورتحساب" on the current line: `amount` to `invoice`, confirmed.
    static void allocate(BoundScreen& screen, const QString& invoice, double amount) {
        InFactorDialog dialog(screen.invoices());
        dialog.setCustomerFilter(false);
        tr::db::Query& list = dialog.list();
        for (list.First(); !list.Eof(); list.Next())
            if (list.FieldByName(QStringLiteral("SanadNoForosh")).AsString().trimmed() == invoice)
                break;
        ASSERT_FALSE(list.Eof()) << invoice.toStdString();
        ASSERT_TRUE(dialog.setAllocation(amount));
        ASSERT_TRUE(dialog.cmdOkClick());
    }

    static double openBalance(const QString& invoice) {
        return value(QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = ") +
                     tr::db::sqlText(invoice) + QStringLiteral(" And MainDorehMali = '1404'"))
            .toDouble();
    }

    static int linksTo(const QString& invoice) {
        return rows(QStringLiteral("Select * From R_ForoshRelatedNaghd Where SanadNoForosh = ") +
                    tr::db::sqlText(invoice));
    }

    // Every link of a paying line carries that voucher line's DocToDate.
    static int linksOffTheirVoucherLine() {
        return value(QStringLiteral(
                         "Select Count(*) From R_ForoshRelatedNaghd As R Inner Join Asnad As A On "
                         "(A.TypeSys = 'N' And A.WhatDoc = R.WhatDoc And LTrim(A.Document) = "
                         "Cast(R.Idx As Varchar(20))) Where IsNull(R.DocToDate, '') <> "
                         "A.DocToDate"))
            .toInt();
    }
};

TEST_F(ScreenSettlement, AnInvoicePaidByADepositKeepsItsBalanceWhenItsReceiptIsSavedAgain) {
    // A deposit pays 3,000,000 of the invoice through the settlement dialog.
    auto deposit = show(ScreenId::VarizBank, QStringLiteral("pnlScreens"));
    fillHeader(*deposit->logic, 3000000);
    ASSERT_TRUE(addCustomerLine(*deposit->logic, 3000000));
    allocate(*deposit, kOpenInvoice, 3000000);
    ASSERT_TRUE(deposit->logic->cmdOkClick()) << admin->dialog.last().text.toStdString();
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000 - 3000000);
    EXPECT_EQ(linksOffTheirVoucherLine(), 0);

    // The host opens the receipt for the invoice; the customer stays the line's counter-party.
    auto receipt = show(ScreenId::CashGet, CashBankDocument::kInvoiceContainer, kOpenInvoice);
    ASSERT_EQ(receipt->logic->grid().RecordCount(), 1);
    const QString customerName =
        value(QStringLiteral("Select CustomerNam From R_Customer Where CustomerCod = ") +
              tr::db::sqlText(s(demo::kCustomerAlborz)))
            .toString();
    ASSERT_FALSE(customerName.isEmpty());
    EXPECT_EQ(receipt->logic->counterPartyName(), customerName);
    // The cashier takes 12,000,000 of it.
    CashBankDocument& r = *receipt->logic;
    r.serialEnter();
    r.setReferenceNumber(QStringLiteral("77"));
    r.treasuryCodeEntered(s(demo::kRialCashBox));
    r.setAmountText(QStringLiteral("12000000"));
    r.grid().Edit();
    r.grid().FieldByName(QStringLiteral("Bes")).SetAsFloat(12000000);
    ASSERT_TRUE(r.postLine());
    EXPECT_EQ(r.counterPartyName(), customerName);
    EXPECT_EQ(r.grid().FieldByName(QStringLiteral("CodWhatDoc2")).AsString().trimmed(),
              s(demo::kCustomerAlborz));

    ASSERT_TRUE(r.cmdOkClick()) << admin->dialog.last().text.toStdString();
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000 - 3000000 - 12000000);
    ASSERT_TRUE(r.cmdOkClick());
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000 - 3000000 - 12000000);
    EXPECT_EQ(linksTo(kOpenInvoice), 2);
    EXPECT_EQ(linksOffTheirVoucherLine(), 0);
    EXPECT_EQ(r.counterPartyName(), customerName);
    EXPECT_TRUE(ledgerIsConsistent());

    // A plain save of the deposit leaves the receipt's part in place too.
    ASSERT_TRUE(deposit->logic->cmdOkClick());
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000 - 3000000 - 12000000);
}

// Opened by its serial, a receipt that pays two invoices says so once; one paying a single
// invoice, or a deposit's link to another invoice with the same serial, says nothing.
TEST_F(ScreenSettlement, OpeningAReceiptThatPaysSeveralInvoicesSaysSo) {
    auto receipt = show(ScreenId::CashGet, QStringLiteral("pnlScreens"));
    fillHeader(*receipt->logic, 8000000);
    ASSERT_TRUE(addCustomerLine(*receipt->logic, 5000000));
    allocate(*receipt, kOpenInvoice, 5000000);
    ASSERT_TRUE(addCustomerLine(*receipt->logic, 3000000));
    allocate(*receipt, kSecondOpenInvoice, 3000000);
    ASSERT_TRUE(receipt->logic->cmdOkClick());
    const QString serial = receipt->logic->header().serial.trimmed();
    receipt->logic->newDocumentClick();
    fillHeader(*receipt->logic, 1000000);
    ASSERT_TRUE(addCustomerLine(*receipt->logic, 1000000));
    allocate(*receipt, kOpenInvoice, 1000000);
    ASSERT_TRUE(receipt->logic->cmdOkClick());
    const QString single = receipt->logic->header().serial.trimmed();

    const QString note = QStringLiteral("اين شماره سريال چند فاکتوري است");
    auto reader = show(ScreenId::CashGet, QStringLiteral("pnlScreens"));
    const int shown = admin->dialog.shown().size();
    ASSERT_TRUE(reader->logic->openSerial(single));
    EXPECT_EQ(admin->dialog.shown().size(), shown);
    ASSERT_TRUE(reader->logic->openSerial(serial));
    ASSERT_EQ(admin->dialog.shown().size(), shown + 1);
    EXPECT_EQ(admin->dialog.last().text, note);
}

TEST_F(ScreenSettlement, AScreenDockedAgainForPlainDocumentsForgetsTheInvoice) {
    auto receipt = show(ScreenId::CashGet, CashBankDocument::kInvoiceContainer, kOpenInvoice);
    EXPECT_TRUE(receipt->invoices().invoiceMode());

    // The host opens the same screen for an ordinary receipt, elsewhere.
    receipt->logic->setInvoiceNumber(QString());
    receipt->logic->show(QStringLiteral("pnlScreens"));
    EXPECT_FALSE(receipt->invoices().invoiceMode());
    CashBankDocument& r = *receipt->logic;
    r.newDocumentClick();
    fillHeader(r, 4000000);
    ASSERT_TRUE(addCustomerLine(r, 4000000));
    allocate(*receipt, kSecondOpenInvoice, 4000000);
    ASSERT_TRUE(r.cmdOkClick()) << admin->dialog.last().text.toStdString();

    EXPECT_EQ(linksTo(kSecondOpenInvoice), 1);
    EXPECT_EQ(linksTo(kOpenInvoice), 0);
    EXPECT_DOUBLE_EQ(openBalance(kSecondOpenInvoice), 12000000 - 2000000 - 4000000);
    EXPECT_DOUBLE_EQ(openBalance(kOpenInvoice), 25000000 - 5000000);
    EXPECT_EQ(linksOffTheirVoucherLine(), 0);
    EXPECT_TRUE(ledgerIsConsistent());
}

}  // namespace
}  // namespace tr::cashbank
