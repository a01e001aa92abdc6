// A cash receipt, a bank deposit and a received cheque paying one invoice, saved in every order:
// each dialog's remaining amount counts what the others pay, whatever was saved first.
#include <algorithm>
#include <array>

#include "cashbank/tests/settlement/settlement_fixture.h"
#include "cheques/received_cheque_document.h"
#include "cheques/tests/cheque_typing.h"
#include "db/procedures/tests/ledger_invariants.h"

namespace tr::cashbank {
namespace {

using testing::Screen;
using testing::SettlementTest;
namespace demo = tr::schema::demo;

const QString kInvoice = QStringLiteral("1002");  // owes 10,000,000
constexpr double kOpen = 10000000;

enum Payer { Receipt, Deposit, Cheque };
constexpr std::array<double, 3> kPays = {3000000, 2000000, 1000000};

class CrossKindSettlementTest : public SettlementTest, public ::testing::WithParamInterface<std::array<Payer, 3>> {
  protected:
    void SetUp() override {
        SettlementTest::SetUp();
        // The fixture clears the cash documents; the cheques of earlier runs go too.
        for (const char* table : {"N_ChqLastTrans", "N_ChqFirst", "R_ForoshRelatedNaghd"})
            company().execute(QStringLiteral("Delete From ") + QLatin1String(table));
        company().execute(QStringLiteral("Delete From N_NaghdTrans Where WhatDoc = '71'"));
        company().execute(QStringLiteral("Delete From Asnad Where TypeSys = 'N' And WhatDoc = '71'"));
        admin->global.rights = tr::fullRights(
            {QStringLiteral("N_A_CASHGET_"), QStringLiteral("N_A_VARIZBANK_"), QStringLiteral("N_A_CHQGET_")});
        receipt = open("10");
        deposit = open("50");
        cheque = std::make_unique<tr::cheques::ReceivedChequeDocument>(admin->services);
    }
    void TearDown() override {
        cheque.reset();
        deposit.reset();
        receipt.reset();
        SettlementTest::TearDown();
    }

    // The payer's remaining amount of the invoice as its dialog lists it.
    double listedOpen(Payer payer) {
        std::unique_ptr<tr::settlement::InvoicePayer> chequePayer;
        tr::settlement::InvoicePayer* p = payer == Receipt ? static_cast<tr::settlement::InvoicePayer*>(&receipt->settlement)
                                          : payer == Deposit ? &deposit->settlement
                                                             : (chequePayer = cheque->settlement().payerForCurrentCheque()).get();
        EXPECT_TRUE(p);
        if (!p) return -1;
        InFactorDialog dialog(*p);
        return dialog.moveTo(kInvoice) ? dialog.list().FieldByName(QStringLiteral("GetValue")).AsFloat() : 0;
    }

    // The payer's document with its whole amount given to the invoice, saved.
    void pay(Payer payer) {
        const double amount = kPays[payer];
        if (payer == Cheque) {
            cheque->newDocument();
            cheque->header().date = QStringLiteral("1404/04/10");
            cheque->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0001"), QString::fromUtf8(demo::kCustomerAftab),
                                      {}, {}};
            ASSERT_TRUE(tr::cheques::testing::typeReceivedCheque(cheque->cheques(), {QStringLiteral("9901"), amount}));
            allocateWhole(*cheque->settlement().payerForCurrentCheque(), amount);
            ASSERT_TRUE(cheque->save()) << admin->dialog.last().text.toStdString();
        } else {
            Screen& s = payer == Receipt ? *receipt : *deposit;
            prepare(s, amount, QString::fromUtf8(demo::kCustomerAftab));
            allocateWhole(s.settlement, amount);
            ASSERT_TRUE(s.document.save()) << admin->dialog.last().text.toStdString();
        }
        EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
    }

    static void allocateWhole(tr::settlement::InvoicePayer& payer, double amount) {
        InFactorDialog dialog(payer);
        dialog.setCustomerFilter(false);
        ASSERT_TRUE(dialog.moveTo(kInvoice));
        ASSERT_TRUE(dialog.setAllocation(amount));
        ASSERT_TRUE(dialog.cmdOkClick());
    }

    std::unique_ptr<Screen> receipt, deposit;
    std::unique_ptr<tr::cheques::ReceivedChequeDocument> cheque;
};

TEST_P(CrossKindSettlementTest, EveryDialogCountsWhatTheOthersPay) {
    double paid = 0;
    std::vector<Payer> saved;
    for (const Payer payer : GetParam()) {
        // Before its save, a receipt or deposit sees what the ones saved before it pay.
        if (payer != Cheque) {
            prepare(payer == Receipt ? *receipt : *deposit, kPays[payer], QString::fromUtf8(demo::kCustomerAftab));
            EXPECT_DOUBLE_EQ(listedOpen(payer), kOpen - paid);
        }
        pay(payer);
        paid += kPays[payer];
        saved.push_back(payer);
        // Every payer saved so far sees the invoice less what the others pay.
        for (const Payer other : saved) EXPECT_DOUBLE_EQ(listedOpen(other), kOpen - paid + kPays[other]) << other;
    }
    EXPECT_DOUBLE_EQ(value("Select Sum(NaghdValue) From R_ForoshRelatedNaghd Where SanadNoForosh = '1002'").toDouble(),
                     paid);
}

INSTANTIATE_TEST_SUITE_P(Orders, CrossKindSettlementTest,
                         ::testing::Values(std::array<Payer, 3>{Receipt, Deposit, Cheque},
                                           std::array<Payer, 3>{Receipt, Cheque, Deposit},
                                           std::array<Payer, 3>{Deposit, Receipt, Cheque},
                                           std::array<Payer, 3>{Deposit, Cheque, Receipt},
                                           std::array<Payer, 3>{Cheque, Receipt, Deposit},
                                           std::array<Payer, 3>{Cheque, Deposit, Receipt}));

}  // namespace
}  // namespace tr::cashbank
