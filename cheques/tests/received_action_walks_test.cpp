// Random walks of received cheques driven through the actions screen's logic: each step picks
// rows, sets their action with the space bar or the drop-down and types a date, then "تاييد".
// The screen must refuse exactly the names and dates the model refuses, and the list must be
// posted exactly when every chosen action is legal; after every step each cheque is in the
// model's state. The walks start from the receipt, and again from every state an opening cheque
// may be given on the opening-states screen (there is no undo at an opening state).
// TR_CHEQUE_WALKS sets the number of walks, TR_CHEQUE_SEED the seed.
#include <gtest/gtest.h>

#include <QRandomGenerator>

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

class ReceivedActionWalkTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
    }

    // One document holding the walks' cheques, received from the customer account that a
    // return gives them back to; an opening one at the period's start when `opening`.
    static void receive(const std::vector<Walk>& walks, qint64 serial, bool opening) {
        tr::db::Connection& c = company();
        makeDocumentTables(QStringLiteral("RW71"));
        int raj = 0;
        for (const Walk& w : walks) {
            c.execute(QStringLiteral("Insert Into ##RW71_Chq (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, Tazmin) "
                                     "Values (%1, '103', '0001', 'S', %2, %3, %4, %5)")
                          .arg(raj)
                          .arg(c.text(w.number), tr::db::sqlNumber(w.value), c.text(kDue),
                               c.text(w.guarantee ? QStringLiteral("ض") : QString())));
            c.execute(QStringLiteral("Insert Into ##RW71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) Values "
                                     "(%1, '01', '104', '0001', 'S', %2, %3)")
                          .arg(raj++)
                          .arg(c.text(w.number), tr::db::sqlNumber(w.value)));
        }
        c.execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet ") +
                  c.text(opening ? QStringLiteral("FIRST->DB") : QStringLiteral("TRANS->DB")) +
                  QStringLiteral(", 'RW71', ") + c.text(QString::number(serial)) + QStringLiteral(", ") +
                  c.text(opening ? kOpeningDate : QStringLiteral("1404/02/10")) + QStringLiteral(", 'admin', 'NEW'"));
    }

    // Each opening cheque given one of the states the opening-states screen offers it, in turn
    // from a random start so that every state is taken; the walk starts there.
    static void setOpeningStates(const tr::Services& services, std::vector<Walk>& walks, QRandomGenerator& random) {
        OpeningChequeStates screen(services, tr::instruments::Side::Received);
        screen.fill();
        tr::db::Query& list = screen.rows();
        const int start = random.bounded(6);
        for (size_t i = 0; i < walks.size(); ++i) {
            for (list.First(); !list.Eof(); list.Next())
                if (list.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == walks[i].number) break;
            ASSERT_FALSE(list.Eof());
            const auto choices = screen.choices();
            const QString state = choices[(start + int(i)) % choices.size()].first;
            ASSERT_TRUE(screen.chooseState(state));
            walks[i].opening = true;
            walks[i].history = {{state, kOpeningDate}};
        }
        ASSERT_TRUE(screen.cmdOkClick());
    }

    // The walks, from the receipt or from opening states.
    void walk(bool opening);

    static inline const QString kOpeningDate = QStringLiteral("1404/01/01");
};

// The kinds the cheque's state offers it now: undo is not offered at an opening state.
QStringList menuNow(const Walk& w) {
    QStringList menu = offered(w.now().state, w.guarantee);
    if (w.opening && w.history.size() == 1) menu.removeAll(QStringLiteral("U"));
    return menu;
}

TEST_F(ReceivedActionWalkTest, TheScreenRefusesAndPostsAsTheModelSays) {
    walk(/*opening=*/false);
}

TEST_F(ReceivedActionWalkTest, FromEveryOpeningStateTheScreenRefusesAndPostsAsTheModelSays) {
    walk(/*opening=*/true);
}

void ReceivedActionWalkTest::walk(bool opening) {
    const int walksWanted = qEnvironmentVariableIsSet("TR_CHEQUE_WALKS") ? qEnvironmentVariableIntValue("TR_CHEQUE_WALKS")
                                                                         : (tr::test::testingOnServer() ? 60 : 200);
    const quint32 seed = qEnvironmentVariableIsSet("TR_CHEQUE_SEED") ? qEnvironmentVariable("TR_CHEQUE_SEED").toUInt()
                                                                     : QRandomGenerator::global()->generate();
    std::printf("screen walks: %d, seed %u (TR_CHEQUE_SEED)\n", walksWanted, seed);
    QRandomGenerator random(seed);
    tr::test::TestSession session(company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
    const QStringList names = actionNames();
    const QStringList dates = {QStringLiteral("1404/02/09"), QStringLiteral("1404/03/01"), QStringLiteral("1404/06/14"),
                               QStringLiteral("1404/06/15"), QStringLiteral("1404/09/01"), QStringLiteral("1405/01/05")};
    int posted = 0, refusedByScreen = 0, refusedOnApply = 0;
    constexpr int kGroup = 20;
    for (int done = 0; done < walksWanted; done += kGroup) {
        std::vector<Walk> walks(std::min(kGroup, walksWanted - done));
        for (size_t i = 0; i < walks.size(); ++i) {
            walks[i].number = QString::number(200000 + done + int(i));
            walks[i].guarantee = random.bounded(4) == 0;
            walks[i].value = 1000.0 * (1 + random.bounded(900));
        }
        receive(walks, done / kGroup + 1, opening);
        if (opening) setOpeningStates(session.services, walks, random);
        if (HasFatalFailure()) return;
        ReceivedChequeActions screen(session.services);
        for (int step = 0; step < 12; ++step) {
            screen.fill();
            tr::db::Query& list = screen.rows();
            std::vector<std::pair<Walk*, QString>> chosen;  // the walk and the name its row carries
            const int size = 1 + random.bounded(3);
            for (int k = 0; k < size; ++k) {
                Walk& w = walks[random.bounded(int(walks.size()))];
                bool again = false;
                for (const auto& [other, name] : chosen) again = again || other == &w;
                if (again) continue;
                for (list.First(); !list.Eof(); list.Next())
                    if (list.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == w.number) break;
                ASSERT_FALSE(list.Eof());
                QString name;
                if (random.bounded(2) == 0) {
                    const int presses = 1 + random.bounded(3);
                    for (int p = 0; p < presses; ++p) screen.spaceOnAction();
                    name = list.FieldByName(QStringLiteral("WhatDocNam")).AsString().trimmed();
                } else {
                    const QString wanted = names[random.bounded(names.size())];
                    const QStringList menu = menuNow(w);
                    const bool offeredNow = menu.contains(wanted == kUndo ? QStringLiteral("U") : kKindOfName.at(wanted));
                    const bool taken = screen.chooseAction(wanted);
                    ASSERT_EQ(taken, offeredNow) << "seed " << seed << ", cheque " << w.number.toStdString() << " in "
                                                 << w.now().state.toStdString() << ": " << wanted.toStdString();
                    if (!taken) ++refusedByScreen;
                    name = taken ? wanted : QString();
                }
                if (name.isEmpty()) continue;
                if (name != kUndo) {
                    const QString date = dates[random.bounded(dates.size())];
                    const QString kind = kKindOfName.at(name);
                    bool dateOk = date >= QLatin1String("1404/01/01") && date <= QLatin1String("1404/12/29") &&
                                  date >= w.now().date;
                    if (kind == QLatin1String("72"))
                        for (const Step& s : w.history) dateOk = dateOk && !(s.state == QLatin1String("72") && s.date == date);
                    ASSERT_EQ(screen.setActionDate(date), dateOk) << "seed " << seed << ", " << date.toStdString();
                    if (!dateOk) ++refusedByScreen;
                    if (kind == QLatin1String("72")) screen.setBankAccount(1);
                    // A cheque that entered the period in collection has no collection of its
                    // own naming the bank: the user types the bank account's heads.
                    if (kind == QLatin1String("73") && list.FieldByName(QStringLiteral("VaKoll")).AsString().trimmed().isEmpty()) {
                        list.Edit();
                        list.FieldByName(QStringLiteral("VaKoll")).SetValue(QStringLiteral("102"));
                        list.FieldByName(QStringLiteral("VaMoein")).SetValue(QStringLiteral("0001"));
                        list.Post();
                    }
                }
                chosen.emplace_back(&w, name);
            }
            if (chosen.empty()) continue;
            bool allLegal = true;
            std::vector<QString> dateOf;
            for (const auto& [w, name] : chosen) {
                for (list.First(); !list.Eof(); list.Next())
                    if (list.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed() == w->number) break;
                dateOf.push_back(list.FieldByName(QStringLiteral("ActionDate")).AsString().trimmed());
                allLegal = allLegal && legal(*w, name, dateOf.back());
            }
            const bool applied = screen.apply();
            // On a disagreement: each chosen cheque as the model walked it and as the book holds it.
            if (applied != allLegal) {
                for (const auto& [w, name] : chosen) {
                    std::string hist;
                    for (const Step& s : w->history) hist += s.state.toStdString() + "@" + s.date.toStdString() + " ";
                    const auto rows = tr::db::openQuery(company(), QStringLiteral("Select IDX, WhatDoc, SanadDate, Serial, CodWhatDoc From N_ChqLastTrans Where ChqNo = ") + company().text(w->number) + QStringLiteral(" Order By IDX"));
                    std::string db;
                    for (int r = 0; r < rows.RecordCount(); ++r) db += rows.value(r, 1).toString().toStdString() + "@" + rows.value(r, 2).toString().toStdString() + "/" + rows.value(r, 3).toString().toStdString() + "/" + rows.value(r,4).toString().toStdString() + " ";
                    std::printf("cheque %s, %s: walked [%s], in the book [%s]\n", w->number.toStdString().c_str(), name.toStdString().c_str(), hist.c_str(), db.c_str());
                }
            }
            ASSERT_EQ(applied, allLegal) << "seed " << seed << ": " << session.dialog.last().text.toStdString();
            if (applied) {
                ++posted;
                for (size_t i = 0; i < chosen.size(); ++i) {
                    Walk& w = *chosen[i].first;
                    if (chosen[i].second == kUndo) w.history.pop_back();
                    else w.history.push_back({kKindOfName.at(chosen[i].second), dateOf[i]});
                }
            } else {
                ++refusedOnApply;
            }
            for (const Walk& w : walks) {
                const auto latest = tr::instruments::latestRow(company(), tr::instruments::chequeHistory(), w.number,
                                                               QStringLiteral("S"));
                ASSERT_TRUE(latest.has_value());
                ASSERT_EQ(latest->kind, w.now().state) << "seed " << seed << ", cheque " << w.number.toStdString();
            }
        }
        ASSERT_TRUE(tr::procedures::testing::chequeLedgerIsConsistent(company())) << "seed " << seed;
    }
    std::printf("lists posted %d, refused by the screen %d, on apply %d\n", posted, refusedByScreen, refusedOnApply);
    EXPECT_GT(posted, 0);
    EXPECT_GT(refusedByScreen, 0);
}

}  // namespace
}  // namespace tr::cheques
