// Random walks of our own cheques and of received cheques passed on, driven through both tabs of
// the actions screen: each step lists a tab, picks rows, sets their action with the space bar or
// the drop-down, types a date, then "تاييد". Each tab must list exactly the cheques the model puts
// on it, refuse exactly the names and dates the model refuses, and post the list exactly when
// every chosen action is legal; after every step each cheque is in the model's state and at the
// end its amount stands where the model says. The walks start from the payment, and again from
// every state an opening cheque may be given on the opening-states screen (no undo there; the
// first action's voucher starts from the opening row's accounts). TR_CHEQUE_WALKS sets the
// number of walks, TR_CHEQUE_SEED the seed.
#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "cheques/issued_actions.h"
#include "cheques/opening_states.h"
#include "cheques/received_actions.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/cheque_state_model.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "instruments/latest_state.h"
#include "tests/support/test_session.h"

namespace tr::cheques {
namespace {

using namespace tr::procedures::testing::chequemodel;

class IssuedActionWalkTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        company().execute(QStringLiteral("Delete From N_Cheque Where Joz = 'W'"));
        company().execute(QStringLiteral(
            "Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, FormCode) Values (1, 'W', "
            "'700000', '799999', '1')"));
    }
    void TearDown() override {
        company().execute(QStringLiteral("Delete From N_Cheque Where Joz = 'W'"));
    }

    static bool onIssuedTab(const Cheque& c) {
        return c.origin == Origin::Own || c.now().state == QLatin1String("81");
    }
    static bool find(tr::db::Query& list, const QString& number) {
        for (list.First(); !list.Eof(); list.Next())
            if (list.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == number)
                return true;
        return false;
    }

    // `count` opening cheques paid at the period's start: our leaves on bank account 1, a quarter
    // of them guarantee cheques, and about a third opening received cheques passed on; each then
    // given one of the states the opening-states screen offers it, in turn from a random start,
    // and its walk starting there.
    static std::vector<Cheque> openingCheques(const tr::Services& services, QRandomGenerator& random,
                                              int count, int offset, qint64 serial) {
        std::vector<Cheque> cheques(count);
        std::vector<DocumentCheque> paid, receipts;
        for (int i = 0; i < count; ++i) {
            Cheque& c = cheques[i];
            c.origin = random.bounded(3) == 0 ? Origin::Spent : Origin::Own;
            c.number = QString::number((c.origin == Origin::Own ? 700000 : 800000) + offset + i);
            c.guarantee = c.origin == Origin::Own && random.bounded(4) == 0;
            c.opening = true;
            c.value = 1000.0 * (1 + random.bounded(900));
            DocumentCheque d;
            d.number = c.number;
            d.series = seriesOf(c);
            d.value = c.value;
            d.due = kDue;
            d.guarantee = c.guarantee;
            if (c.origin == Origin::Own)
                d.bankAccount = 1;
            else
                receipts.push_back(d);
            paid.push_back(d);
        }
        if (!receipts.empty()) receiveCheques(receipts, serial, kOpeningDate, /*opening=*/true);
        payCheques(paid, serial, kOpeningDate, /*opening=*/true);
        OpeningChequeStates screen(services, tr::instruments::Side::Issued);
        screen.fill();
        const int start = random.bounded(4);
        for (int i = 0; i < count; ++i) {
            EXPECT_TRUE(find(screen.rows(), cheques[i].number));
            const auto choices = screen.choices();
            const QString state = choices[(start + i) % choices.size()].first;
            EXPECT_TRUE(screen.chooseState(state));
            cheques[i].history = {{state, kOpeningDate}};
        }
        EXPECT_TRUE(screen.cmdOkClick());
        return cheques;
    }

    // The walks, from the payment or from opening states.
    void walk(bool fromOpeningStates);

    static inline const QString kOpeningDate = QStringLiteral("1404/01/01");
};

// What the model offers the cheque now: undo not at an opening state.
QStringList menuNow(bool issuedSide, const Cheque& c) {
    QStringList menu = offeredOn(issuedSide, c);
    if (c.opening && c.history.size() == 1) menu.removeAll(QStringLiteral("U"));
    return menu;
}

bool legalNow(bool issuedSide, const Cheque& c, const QString& name, const QString& date) {
    if (name == kUndo && c.opening && c.history.size() == 1) return false;
    return legalOn(issuedSide, c, name, date);
}

// Where an opening cheque's amount stands: nothing posted until its first action, which moves
// it from the account of its opening row (our leaf on the payable heads, whatever its state).
std::map<QString, double> expectedNow(const Cheque& c) {
    if (!c.opening) return expectedBalances(c);
    const QString from = c.origin == Origin::Own ? QStringLiteral("2010001") : holdingOf(c, c.history.front().state);
    const QString at = holdingOf(c, c.now().state);
    std::map<QString, double> out{{from, 0.0}, {at, 0.0}};
    if (c.history.size() == 1) return out;
    const double sign = c.origin == Origin::Own ? -1 : 1;
    out[at] += sign * c.value;
    out[from] -= sign * c.value;
    return out;
}

TEST_F(IssuedActionWalkTest, BothTabsListRefuseAndPostAsTheModelSays) {
    walk(/*fromOpeningStates=*/false);
}

TEST_F(IssuedActionWalkTest, FromEveryOpeningStateBothTabsListRefuseAndPostAsTheModelSays) {
    walk(/*fromOpeningStates=*/true);
}

void IssuedActionWalkTest::walk(bool fromOpeningStates) {
    const int walksWanted = qEnvironmentVariableIsSet("TR_CHEQUE_WALKS")
                                ? qEnvironmentVariableIntValue("TR_CHEQUE_WALKS")
                                : (tr::test::testingOnServer() ? 40 : 120);
    const quint32 seed = qEnvironmentVariableIsSet("TR_CHEQUE_SEED")
                             ? qEnvironmentVariable("TR_CHEQUE_SEED").toUInt()
                             : QRandomGenerator::global()->generate();
    std::printf("screen walks of own and spent cheques: %d, seed %u (TR_CHEQUE_SEED)\n",
                walksWanted, seed);
    QRandomGenerator random(seed);
    tr::test::TestSession session(company(), 1, QStringLiteral("admin"),
                                  tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
    const QStringList dates = {QStringLiteral("1404/02/19"), QStringLiteral("1404/03/01"),
                               QStringLiteral("1404/06/14"), QStringLiteral("1404/06/15"),
                               QStringLiteral("1404/09/01"), QStringLiteral("1405/01/05")};
    int posted = 0, refusedByScreen = 0, refusedOnApply = 0;
    constexpr int kGroup = 20;
    for (int done = 0; done < walksWanted; done += kGroup) {
        const int groupSize = std::min(kGroup, walksWanted - done);
        const bool opening = random.bounded(4) == 0;
        std::vector<Cheque> cheques =
            fromOpeningStates
                ? openingCheques(session.services, random, groupSize, done, done / kGroup + 1)
                : payRandomCheques(random, groupSize, done, 700000, 800000, 900, done / kGroup + 1, opening);
        if (HasFailure()) return;
        IssuedChequeActions issued(session.services);
        ReceivedChequeActions received(session.services);
        for (int step = 0; step < 14; ++step) {
            Cheque& lead = cheques[random.bounded(int(cheques.size()))];
            const bool issuedSide =
                random.bounded(100) < 85 ? onIssuedTab(lead) : random.bounded(2) == 0;
            ChequeActionList& tab = issuedSide ? static_cast<ChequeActionList&>(issued) : received;
            const QStringList names = issuedSide ? issuedActionNames() : actionNames();
            tab.fill();
            tr::db::Query& list = tab.rows();
            for (const Cheque& c : cheques) {
                ASSERT_EQ(find(list, c.number),
                          issuedSide ? onIssuedTab(c) : c.origin != Origin::Own)
                    << "seed " << seed << ", cheque " << c.number.toStdString() << " in "
                    << c.now().state.toStdString();
            }
            std::vector<std::pair<Cheque*, QString>> chosen;
            const int size = 1 + random.bounded(3);
            for (int k = 0; k < size; ++k) {
                Cheque& c = k == 0 ? lead : cheques[random.bounded(int(cheques.size()))];
                bool again = false;
                for (const auto& [other, name] : chosen) again = again || other == &c;
                if (again || !find(list, c.number)) continue;
                QString name;
                if (random.bounded(2) == 0) {
                    const int presses = 1 + random.bounded(3);
                    for (int p = 0; p < presses; ++p) tab.spaceOnAction();
                    name = list.FieldByName(QStringLiteral("WhatDocNam")).AsString().trimmed();
                } else {
                    const QString wanted = names[random.bounded(names.size())];
                    const bool offeredNow =
                        menuNow(issuedSide, c)
                            .contains(wanted == kUndo ? QStringLiteral("U")
                                                      : kindOn(issuedSide, wanted));
                    const bool taken = tab.chooseAction(wanted);
                    ASSERT_EQ(taken, offeredNow)
                        << "seed " << seed << ", cheque " << c.number.toStdString() << " in "
                        << c.now().state.toStdString() << ": " << wanted.toStdString();
                    if (!taken) ++refusedByScreen;
                    name = taken ? wanted : QString();
                }
                if (name.isEmpty()) continue;
                if (name != kUndo) {
                    const QString date = dates[random.bounded(dates.size())];
                    const QString kind = kindOn(issuedSide, name);
                    bool dateOk = date >= QLatin1String("1404/01/01") &&
                                  date <= QLatin1String("1404/12/29") && date >= c.now().date;
                    if (kind == QLatin1String("72"))
                        for (const Step& s : c.history)
                            dateOk = dateOk && !(s.state == QLatin1String("72") && s.date == date);
                    ASSERT_EQ(tab.setActionDate(date), dateOk)
                        << "seed " << seed << ", " << date.toStdString();
                    if (!dateOk) ++refusedByScreen;
                    if (kind == QLatin1String("72")) received.setBankAccount(1);
                }
                chosen.emplace_back(&c, name);
            }
            if (chosen.empty()) continue;
            bool allLegal = true;
            std::vector<QString> dateOf;
            for (const auto& [c, name] : chosen) {
                find(list, c->number);
                dateOf.push_back(
                    list.FieldByName(QStringLiteral("ActionDate")).AsString().trimmed());
                allLegal = allLegal && legalNow(issuedSide, *c, name, dateOf.back());
            }
            const bool applied = tab.apply();
            ASSERT_EQ(applied, allLegal)
                << "seed " << seed << ": " << session.dialog.last().text.toStdString();
            if (applied) {
                ++posted;
                for (size_t i = 0; i < chosen.size(); ++i) {
                    Cheque& c = *chosen[i].first;
                    if (chosen[i].second == kUndo)
                        c.history.pop_back();
                    else
                        c.history.push_back({kindOn(issuedSide, chosen[i].second), dateOf[i]});
                }
            } else {
                ++refusedOnApply;
            }
            for (const Cheque& c : cheques) {
                const auto latest = tr::instruments::latestRow(
                    company(), tr::instruments::chequeHistory(), c.number, seriesOf(c));
                ASSERT_TRUE(latest.has_value());
                ASSERT_EQ(latest->kind, c.now().state)
                    << "seed " << seed << ", cheque " << c.number.toStdString();
            }
        }
        // Where each amount stands: the accounts the screen filled are the model's.
        for (const Cheque& c : cheques) {
            for (const auto& [account, want] : expectedNow(c)) {
                const double have =
                    tr::db::firstColumn(
                        company(),
                        QStringLiteral(
                            "Select IsNull(Sum(Bed - Bes), 0) From Asnad Where AtfCh = ") +
                            company().text(c.number) + QStringLiteral(" And Koll = ") +
                            company().text(account.left(3)) + QStringLiteral(" And Moein = ") +
                            company().text(account.mid(3)))
                        .toDouble();
                ASSERT_NEAR(have, want, 0.005)
                    << "seed " << seed << ", cheque " << c.number.toStdString() << " in "
                    << c.now().state.toStdString() << " on " << account.toStdString();
            }
        }
        ASSERT_TRUE(tr::procedures::testing::chequeLedgerIsConsistent(company()))
            << "seed " << seed;
    }
    std::printf("lists posted %d, refused by the screen %d, on apply %d\n", posted, refusedByScreen,
                refusedOnApply);
    EXPECT_GT(posted, 0);
    EXPECT_GT(refusedByScreen, 0);
}

}  // namespace
}  // namespace tr::cheques
