// A month at the cheque desk, driven through the screens' logic on the demo company: cheques
// carried over in several states, a receipt with a cheque paying an invoice and one credited to
// two customers, collections and a deposit slip, a return split over its lines, a cheque spent and
// come back, a permit approved by both managers and paid, an undone collection, our leaf cashed.
// At the end the ledger holds together and each cheque-holding account moved by exactly what the
// cheques' states say.
#include <gtest/gtest.h>

#include <map>

#include "cheques/bank_slips.h"
#include "cheques/cheques_to_bank.h"
#include "cheques/issued_actions.h"
#include "cheques/opening_states.h"
#include "cheques/received_actions.h"
#include "cheques/received_cheque_document.h"
#include "cheques/tests/cheque_typing.h"
#include "cheques/tests/permit_fixture.h"
#include "db/schema/demo_company.h"
#include "instruments/latest_state.h"
#include "settlement/in_factor_dialog.h"

namespace tr::cheques {
namespace {

using tr::db::Query;
using tr::instruments::Side;

const QString kCollect = QStringLiteral("در جريان وصول");
const QString kCollected = QStringLiteral("وصول چک");
const QString kReturned = QStringLiteral("برگشت چک");
const QString kCashed = QStringLiteral("برداشت چک");
const QString kBackFromSpending = QStringLiteral("برگشت از خرج چک");
const QString kUndo = QStringLiteral("حذف عمليات قبلي");

// Where the demo chart holds a cheque in each state: a received one as a claim, our leaf as a debt.
const std::map<QString, QString> kReceivedOn = {{"71", "1030001"}, {"72", "1030002"}, {"77", "1030001"},
                                                {"79", "1030004"}, {"88", "1030001"}};
const std::map<QString, QString> kOwnOn = {{"81", "2010001"}, {"86", "2010001"}, {"85", "2010003"}};

class MonthAtTheChequeDesk : public testing::PermitTest {
  protected:
    void SetUp() override {
        PermitTest::SetUp();
        company().execute(QStringLiteral("Update R_OldFactor Set NaghdValue = NaghdValue1, MandehFactor = FactorValue - "
                                         "NaghdValue1"));
        // Permits are required only from the month's third week.
        permits(false);
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"),
                                                          testing::permitRights() +
                                                              tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        session->global.sCode = QString::fromUtf8(tr::schema::demo::kCompanyCode);
        session->global.sYear = QString::fromUtf8(tr::schema::demo::kCurrentYear);
    }
    static void permits(bool required) {
        const QString now = tr::db::firstColumn(company(), QStringLiteral("Select Naghd From Options")).toString();
        setOptions(required ? QString(now).replace(QStringLiteral("CHQ_MOJAVEZ=NO"), QStringLiteral("CHQ_MOJAVEZ=YES"))
                            : QString(now).replace(QStringLiteral("CHQ_MOJAVEZ=YES"), QStringLiteral("CHQ_MOJAVEZ=NO")));
    }
    void checkLedger() {
        EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
        EXPECT_TRUE(tr::procedures::testing::chequeLedgerIsConsistent(company()));
    }
    // A received cheque typed on the grid: the cheques-in-hand account unless `moein` says.
    bool typeCheque(ChequeDocument& doc, const QString& number, double value, const QString& moein = QStringLiteral("0001")) {
        doc.appendCheque();
        testing::typeReceivedFields(doc.cheques(), {number, value, QStringLiteral("M"), QStringLiteral("1404/02/02")});
        doc.cheques().FieldByName(QStringLiteral("Moein")).SetValue(moein);
        return doc.postCheque();
    }
    template <class List>
    static bool select(List& list, const QString& number) {
        Query& rows = list.rows();
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number) return true;
        return false;
    }
    // One action on a tab for `number` on `date` (a collection to bank account 1), applied.
    template <class Tab>
    void act(const QString& number, const QString& name, const QString& date,
             const std::function<void(Tab&)>& more = {}) {
        Tab tab(session->services);
        tab.fill();
        ASSERT_TRUE(select(tab, number)) << number.toStdString();
        ASSERT_TRUE(tab.chooseAction(name)) << number.toStdString() << ": " << lastMessage().toStdString();
        if (name != kUndo) ASSERT_TRUE(tab.setActionDate(date)) << lastMessage().toStdString();
        if constexpr (std::is_same_v<Tab, ReceivedChequeActions>)
            if (name == kCollect || name == kCollected) tab.setBankAccount(1);
        if (more) more(tab);
        session->dialog.answerYes();
        ASSERT_TRUE(tab.apply()) << number.toStdString() << ": " << lastMessage().toStdString();
        session->dialog.clearAnswers();
        checkLedger();
    }
    static QString state(const QString& number) {
        // Our leaves are of book "12", the received cheques of series "M".
        const QString series = number.startsWith(QLatin1String("1000")) ? QStringLiteral("12") : QStringLiteral("M");
        const auto latest = tr::instruments::latestRow(company(), tr::instruments::chequeHistory(), number, series);
        return latest ? latest->kind : QString();
    }
    // What the cheque vouchers moved on `account` (Koll + Moein).
    static double moved(const QString& account) {
        return tr::db::firstColumn(company(), QStringLiteral("Select IsNull(Sum(Bed - Bes), 0) From Asnad Where TypeSys = 'N' "
                                                             "And WhatDoc Between '71' And '89' And Koll + Moein = ") +
                                                  company().text(account))
            .toDouble();
    }
};

TEST_F(MonthAtTheChequeDesk, EveryAccountMovesByWhatTheChequesStatesSay) {
    // Carried over: O1 in hand, O2 in collection, O3 back with its drawer.
    {
        ReceivedChequeDocument opening(session->services);
        opening.newDocument();
        opening.header().date = QStringLiteral("1404/01/01");
        opening.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
        ASSERT_TRUE(typeCheque(opening, QStringLiteral("6001"), 700000));
        ASSERT_TRUE(typeCheque(opening, QStringLiteral("6002"), 800000, QStringLiteral("0002")));
        ASSERT_TRUE(typeCheque(opening, QStringLiteral("6003"), 900000));
        ASSERT_TRUE(opening.save(/*opening=*/true)) << lastMessage().toStdString();
        OpeningChequeStates states(session->services, Side::Received);
        states.fill();
        for (const auto& [number, kind] : {std::pair{"6002", "72"}, std::pair{"6003", "78"}}) {
            ASSERT_TRUE(select(states, QString::fromLatin1(number)));
            ASSERT_TRUE(states.chooseState(QString::fromLatin1(kind))) << lastMessage().toStdString();
        }
        ASSERT_TRUE(states.cmdOkClick()) << lastMessage().toStdString();
    }
    EXPECT_EQ(tr::db::firstColumn(company(), QStringLiteral("Select Count(*) From Asnad Where TypeSys = 'N'")).toInt(), 0);

    // A customer's three cheques: 6101 pays invoice 1002 in part, 6103 is credited to two customers.
    {
        ReceivedChequeDocument doc(session->services);
        doc.newDocument();
        doc.header().date = QStringLiteral("1404/02/01");
        doc.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0001"), QStringLiteral("30002"), QStringLiteral("50001"),
                              QStringLiteral("P0002")};
        ASSERT_TRUE(typeCheque(doc, QStringLiteral("6101"), 5000000));
        ASSERT_TRUE(typeCheque(doc, QStringLiteral("6102"), 3000000));
        ASSERT_TRUE(typeCheque(doc, QStringLiteral("6103"), 2000000));
        Query& lines = doc.counterparties();
        for (lines.First(); !lines.Eof(); lines.Next())
            if (lines.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == QLatin1String("6103")) break;
        lines.Edit();
        lines.FieldByName(QStringLiteral("ChqValue")).SetValue(1200000);
        lines.Post();
        ASSERT_EQ(lines.state(), Query::State::Browse) << lastMessage().toStdString();
        lines.Append();
        for (const auto& [field, value] :
             {std::pair{"ChqNo", "6103"}, std::pair{"Joz", "M"}, std::pair{"Koll", "104"}, std::pair{"Moein", "0001"},
              std::pair{"Tafsily", "30003"}, std::pair{"Tafsily2", "50002"}, std::pair{"ProjectCod", "P0001"}})
            lines.FieldByName(QString::fromLatin1(field)).SetValue(QString::fromUtf8(value));
        lines.FieldByName(QStringLiteral("ChqValue")).SetValue(800000);
        lines.Post();
        ASSERT_EQ(lines.state(), Query::State::Browse) << lastMessage().toStdString();
        doc.cheques().First();
        const auto payer = doc.settlement().payerForCurrentCheque();
        ASSERT_TRUE(payer);
        tr::settlement::InFactorDialog dialog(*payer);
        ASSERT_TRUE(dialog.moveTo(QStringLiteral("1002")));
        ASSERT_TRUE(dialog.setAllocation(4000000));
        ASSERT_TRUE(dialog.cmdOkClick());
        ASSERT_TRUE(doc.save()) << lastMessage().toStdString();
    }
    checkLedger();
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(company(), QStringLiteral("Select MandehFactor From R_OldFactor Where "
                                                                   "SanadNoForosh = '1002'"))
                         .toDouble(),
                     10000000 - 4000000);

    // Collections; 6102's is on the deposit slip of the week.
    act<ReceivedChequeActions>(QStringLiteral("6002"), kCollected, QStringLiteral("1404/02/03"));
    act<ReceivedChequeActions>(QStringLiteral("6102"), kCollect, QStringLiteral("1404/02/05"));
    {
        ChequesToBank list(session->services);
        list.filters().fromDate = QStringLiteral("1404/02/01");
        list.filters().toDate = QStringLiteral("1404/02/31");
        list.fill();
        ASSERT_TRUE(select(list, QStringLiteral("6102")));
        EXPECT_EQ(list.toggleTick(), 1);
        BankSlips slips(session->services);
        ASSERT_TRUE(slips.build(list, {true, 5}));
        const SlipSet set = slips.slips();
        ASSERT_EQ(set.slips.size(), 1u);
        EXPECT_EQ(set.slips[0].count, 1);
        EXPECT_DOUBLE_EQ(set.slips[0].sum, 3000000);
    }
    act<ReceivedChequeActions>(QStringLiteral("6102"), kCollected, QStringLiteral("1404/02/10"));
    // 6103 bounces, back to its two customers in their parts.
    act<ReceivedChequeActions>(QStringLiteral("6103"), kReturned, QStringLiteral("1404/02/12"),
                               [this](ReceivedChequeActions& tab) {
                                   ASSERT_TRUE(tab.returnNeedsSplit());
                                   // Each line back its own part, in the order the dialog lists them.
                                   QList<double> parts;
                                   for (const ReturnLine& line : tab.returnLines()) parts << line.credited;
                                   ASSERT_EQ(parts.size(), 2);
                                   ASSERT_TRUE(tab.splitReturn(parts)) << lastMessage().toStdString();
                               });
    EXPECT_DOUBLE_EQ(moved(QStringLiteral("1040001")), -10000000 + 2000000);

    // O1 passed on to a supplier with our leaf 100031; it comes back, and the leaf is cashed.
    {
        ChequePaymentDocument payment(session->services);
        startPermit(payment, QStringLiteral("1404/02/15"));
        ASSERT_TRUE(payment.spendCheque(QStringLiteral("6001"), QStringLiteral("M"))) << lastMessage().toStdString();
        payment.cheques().FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("پرداخت به تامين کننده"));
        ASSERT_TRUE(payment.postCheque()) << lastMessage().toStdString();
        ASSERT_TRUE(typeLeaf(payment, QStringLiteral("100031"), 1000000)) << lastMessage().toStdString();
        ASSERT_TRUE(payment.save()) << lastMessage().toStdString();
    }
    checkLedger();
    act<IssuedChequeActions>(QStringLiteral("6001"), kBackFromSpending, QStringLiteral("1404/02/18"));

    // From now on a leaf needs a permit approved by both managers.
    permits(true);
    const QString permit = writePermit({QStringLiteral("100032")}, QStringLiteral("1404/02/21"));
    ASSERT_TRUE(decide(permit, Approver::FinanceManager, QStringLiteral("1404/02/22"))) << lastMessage().toStdString();
    ASSERT_TRUE(decide(permit, Approver::ManagingDirector, QStringLiteral("1404/02/23"))) << lastMessage().toStdString();
    {
        ChequePaymentDocument payment(session->services);
        startPermit(payment, QStringLiteral("1404/02/24"));
        ASSERT_TRUE(payment.setPermit(permit)) << lastMessage().toStdString();
        ASSERT_TRUE(payment.save()) << lastMessage().toStdString();
    }
    checkLedger();

    // A collection entered by mistake is undone and entered again on its right day.
    act<ReceivedChequeActions>(QStringLiteral("6102"), kUndo, {});
    EXPECT_EQ(state(QStringLiteral("6102")), QStringLiteral("72"));
    act<ReceivedChequeActions>(QStringLiteral("6102"), kCollected, QStringLiteral("1404/02/26"));
    // Our leaf is cashed when it falls due.
    act<IssuedChequeActions>(QStringLiteral("100031"), kCashed, QStringLiteral("1404/03/16"));

    // Where every cheque stands at the month's end.
    const std::map<QString, QString> states = {{"6001", "88"}, {"6002", "73"}, {"6003", "78"}, {"6101", "71"},
                                               {"6102", "73"}, {"6103", "78"}, {"100031", "82"}, {"100032", "81"}};
    for (const auto& [number, kind] : states) EXPECT_EQ(state(number), kind) << number.toStdString();
    // Each account moved by the cheques now on it, less those it held when the period began
    // (their opening balance is not the cheque desk's): received cheques as claims, leaves as debts.
    const std::map<QString, double> value = {{"6001", 700000},  {"6002", 800000},  {"6003", 900000},   {"6101", 5000000},
                                             {"6102", 3000000}, {"6103", 2000000}, {"100032", 1000000}, {"100031", 1000000}};
    const std::map<QString, QString> opened = {{"6001", "1030001"}, {"6002", "1030002"}};
    std::map<QString, double> expected = {{"1030001", 0}, {"1030002", 0}, {"1030004", 0}, {"2010001", 0}, {"2010003", 0}};
    for (const auto& [number, kind] : states) {
        const bool own = number.startsWith(QLatin1String("1000"));
        const auto& on = own ? kOwnOn : kReceivedOn;
        if (on.count(kind)) expected[on.at(kind)] += own ? -value.at(number) : value.at(number);
    }
    for (const auto& [number, account] : opened) expected[account] -= value.at(number);
    for (const auto& [account, net] : expected) EXPECT_NEAR(moved(account), net, 0.005) << account.toStdString();
    checkLedger();
}

}  // namespace
}  // namespace tr::cheques
