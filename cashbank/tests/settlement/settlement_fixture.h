#pragma once
// The demo company with the document procedures, a session logged into company "1", year 1404,
// and receipts and deposits saved through N_Global as the screens save them. Every test starts
// with no links and the demo invoices' balances.
#include <memory>

#include "settlement/in_factor_dialog.h"
#include "cashbank/settlement/invoice_settlement.h"
#include "tests/support/recording_pick_list.h"
#include "vouchers/tests/voucher_fixture.h"

namespace tr::cashbank {
using tr::settlement::InFactorDialog;
}  // namespace tr::cashbank

namespace tr::cashbank::testing {

using tr::vouchers::N_Global;
namespace demo = tr::schema::demo;

struct Screen {
    Screen(const tr::Services& services, const char* kind)
        : document(services, *tr::vouchers::findTreasuryDocumentKind(QString::fromLatin1(kind))),
          settlement(services, document) {}
    N_Global document;
    InvoiceSettlement settlement;
};

class SettlementTest : public tr::vouchers::testing::VoucherTest {
  protected:
    void SetUp() override {
        VoucherTest::SetUp();
        company().execute(QStringLiteral(
            "Update R_OldFactor Set NaghdValue = NaghdValue1, MandehFactor = FactorValue - "
            "NaghdValue1"));
        tr::Global& g = admin->global;
        g.sCode = QString::fromUtf8(demo::kCompanyCode);
        g.sYear = QString::fromUtf8(demo::kCurrentYear);
        g.rights =
            tr::fullRights({QStringLiteral("N_A_CASHGET_"), QStringLiteral("N_A_VARIZBANK_")});
        pickList.setConnection(&company());
        admin->services.pickList = &pickList;
    }

    std::unique_ptr<Screen> open(const char* kind) {
        return std::make_unique<Screen>(admin->services, kind);
    }

    // A new document of one customer line, its serial taken as the serial box does.
    static void prepare(Screen& s, double amount, const QString& customer,
                        const QString& des = QStringLiteral("بابت تسويه صورتحساب فروش")) {
        N_Global& doc = s.document;
        doc.newDocument();
        doc.fillNextSerial();
        auto& h = doc.header();
        h.setDate(QStringLiteral("1404/04/10"));
        h.referenceNumber = QStringLiteral("501");
        h.treasuryCode = doc.kind().code == QLatin1String("10")
                             ? QString::fromUtf8(demo::kRialCashBox)
                             : QString::number(demo::kMelliAccountId);
        h.description = QStringLiteral("دريافت از مشتري");
        h.amount = amount;
        doc.describeTreasurySide();
        const QString region = customer == QLatin1String(demo::kCustomerAlborz)
                                   ? QString::fromUtf8(demo::kRegionShiraz)
                                   : QString::fromUtf8(demo::kRegionTehran);
        const QString project = customer == QLatin1String(demo::kCustomerAlborz)
                                    ? QString::fromUtf8(demo::kProjectHeadOffice)
                                    : QString::fromUtf8(demo::kProjectSales);
        tr::db::Query& grid = doc.grid();
        grid.Append();
        grid.FieldByName(QStringLiteral("Koll"))
            .SetAsString(QString::fromUtf8(demo::kReceivablesKoll));
        grid.FieldByName(QStringLiteral("Moein"))
            .SetAsString(QString::fromUtf8(demo::kReceivablesMoein));
        grid.FieldByName(QStringLiteral("Tafsily")).SetAsString(customer);
        grid.FieldByName(QStringLiteral("Tafsily2")).SetAsString(region);
        grid.FieldByName(QStringLiteral("ProjectCod")).SetAsString(project);
        grid.FieldByName(QStringLiteral("Des")).SetAsString(des);
        grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(amount);
        grid.FieldByName(QStringLiteral("WhatDoc2")).SetAsString(QStringLiteral("01"));
        grid.Post();
    }

    // Allocates through the dialog: `amounts` by invoice number, the filter off.
    static void allocate(Screen& s, const std::vector<std::pair<QString, double>>& amounts) {
        InFactorDialog dialog(s.settlement);
        dialog.setCustomerFilter(false);
        for (const auto& [invoice, amount] : amounts) {
            ASSERT_TRUE(moveToInvoice(dialog, invoice)) << invoice.toStdString();
            ASSERT_TRUE(dialog.setAllocation(amount)) << invoice.toStdString();
        }
        ASSERT_TRUE(dialog.cmdOkClick());
    }

    static bool moveToInvoice(InFactorDialog& dialog, const QString& invoice) { return dialog.moveTo(invoice); }

    static double openBalance(const QString& invoice, const char* period = demo::kCurrentYear) {
        return value(QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = ") +
                     tr::db::sqlText(invoice) + QStringLiteral(" And MainDorehMali = ") +
                     tr::db::sqlText(QString::fromUtf8(period)))
            .toDouble();
    }

    static int links(const QString& kind, const QString& serial) {
        return rows(QStringLiteral("Select * From R_ForoshRelatedNaghd Where WhatDoc = ") +
                    tr::db::sqlText(kind) + QStringLiteral(" And Serial = ") +
                    tr::db::sqlText(serial));
    }

    tr::test::RecordingPickList pickList;
};

}  // namespace tr::cashbank::testing
