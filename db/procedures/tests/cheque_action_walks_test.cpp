// Random walks of received cheques through the actions procedure, against a small model of the
// received side's state table written here: every step a random action name or undo, legal or
// not, with a random date, alone or in a batch with other walks' rows. The procedure must accept
// exactly what the model accepts (a batch only when every row is legal), leave each cheque in the
// model's state, keep every voucher balanced, and keep each cheque's amount on the one holding
// account its state names. TR_CHEQUE_WALKS sets the number of walks, TR_CHEQUE_SEED the seed.
#include <QHash>
#include <QRandomGenerator>
#include <map>

#include "common/db/query_helpers.h"
#include "db/procedures/cheque_action_apply.h"
#include "db/procedures/cheque_documents.h"
#include "db/procedures/tests/cheque_state_model.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "instruments/cheque_work_tables.h"
#include "instruments/latest_state.h"

namespace tr::procedures {
namespace {

using namespace testing::chequemodel;


// ---- the test ----------------------------------------------------------------------------------

class ChequeActionWalkTest : public testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        makeDocumentTables(QStringLiteral("W71"));
        remake(QStringLiteral("##TTW"), tr::instruments::chequeActionWorkTableColumns());
    }

    // One received-cheque document (an opening one when `opening`) holding the walks' cheques.
    static void receive(std::vector<Walk>& walks, qint64 serial, bool opening) {
        db().execute(QStringLiteral("Delete From ##W71_Chq"));
        db().execute(QStringLiteral("Delete From ##W71_Taraf"));
        int raj = 0;
        for (const Walk& w : walks) {
            const QString values = QStringLiteral("%1, '103', '0001', 'S', %2, %3, %4, ")
                                       .arg(raj)
                                       .arg(db().text(w.number), tr::db::sqlNumber(w.value), db().text(kDue));
            db().execute(QStringLiteral("Insert Into ##W71_Chq (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, "
                                        "Tazmin) Values (") +
                         values + db().text(w.guarantee ? QStringLiteral("ض") : QString()) + QStringLiteral(")"));
            db().execute(QStringLiteral("Insert Into ##W71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue) "
                                        "Values (%1, '01', '301', '0001', 'S', %2, %3)")
                             .arg(raj++)
                             .arg(db().text(w.number), tr::db::sqlNumber(w.value)));
        }
        db().execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet ") +
                     db().text(opening ? QStringLiteral("FIRST->DB") : QStringLiteral("TRANS->DB")) +
                     QStringLiteral(", 'W71', ") + db().text(QString::number(serial)) +
                     QStringLiteral(", '1404/02/10', 'admin', 'NEW'"));
    }

    // The batch's rows into the work table as the screen would leave them, then one call.
    static bool apply(const std::vector<std::pair<const Walk*, QString>>& rows, const QString& date, QString& why) {
        db().execute(QStringLiteral("Delete From ##TTW"));
        int order = 0;
        for (const auto& [w, name] : rows) {
            const QString kind = name == kUndo ? QString() : kKindOfName.at(name);
            const Holding from = holding(w->now().state);
            const Holding to = kind.isEmpty() ? from : holding(kind);
            db().execute(QStringLiteral("Insert Into ##TTW (IDX, ChqNo, Joz, ChqValue, SarResidDate, ActionDate, "
                                        "WhatDocNam, LastWhatDoc, sOrder, VKoll, VMoein, VaKoll, VaMoein) Values (") +
                         QString::number(order) + QStringLiteral(", ") + db().text(w->number) +
                         QStringLiteral(", 'S', ") + tr::db::sqlNumber(w->value) + QStringLiteral(", ") +
                         db().text(kDue) + QStringLiteral(", ") + db().text(date) + QStringLiteral(", ") +
                         db().text(name) + QStringLiteral(", ") + db().text(w->now().state) + QStringLiteral(", ") +
                         db().text(QString::number(order).rightJustified(4, QLatin1Char('0'))) + QStringLiteral(", ") +
                         db().text(QLatin1String(from.koll)) + QStringLiteral(", ") + db().text(QLatin1String(from.moein)) +
                         QStringLiteral(", ") + db().text(QLatin1String(to.koll)) + QStringLiteral(", ") +
                         db().text(QLatin1String(to.moein)) + QStringLiteral(")"));
            ++order;
        }
        try {
            db().execute(QStringLiteral("Exec sp_N_Asnad_ChqGetAction_Apply '##TTW', 'admin', '1404/01/01', '1404/12/29'"));
            return true;
        } catch (const tr::db::DatabaseError& e) {
            why = e.message();
            return false;
        }
    }

    // Each walk's state is the model's, and its amount stands on its state's holding account
    // (an opening cheque entered its holding account without a voucher).
    static ::testing::AssertionResult matches(const std::vector<Walk>& walks) {
        std::map<QString, QString> states;
        const auto latest = db().execute(QStringLiteral("Select L.ChqNo, L.WhatDoc From N_ChqLastTrans As L Where L.IDX = "
                                                        "(Select Max(M.IDX) From N_ChqLastTrans As M Where M.ChqNo = L.ChqNo "
                                                        "And IsNull(M.Joz, '') = IsNull(L.Joz, ''))"));
        for (const auto& row : latest.resultSets.front().rows) states[row[0].toString().trimmed()] = row[1].toString().trimmed();
        std::map<QString, double> balances;  // number + account
        const auto lines = db().execute(QStringLiteral("Select AtfCh, Koll, Moein, Sum(Bed - Bes) From Asnad Where "
                                                       "TypeSys = 'N' And Koll In ('102', '103', '104') Group By AtfCh, "
                                                       "Koll, Moein"));
        for (const auto& row : lines.resultSets.front().rows) {
            balances[row[0].toString().trimmed() + QLatin1Char('/') + row[1].toString().trimmed() +
                     row[2].toString().trimmed()] = row[3].toDouble();
        }
        for (const Walk& w : walks) {
            if (states[w.number] != w.now().state) {
                return ::testing::AssertionFailure() << "cheque " << w.number.toStdString() << " is in "
                                                     << states[w.number].toStdString() << ", the model says "
                                                     << w.now().state.toStdString();
            }
            std::map<QString, double> expected;
            auto key = [&](const Holding& h) {
                return w.number + QLatin1Char('/') + QLatin1String(h.koll) + QLatin1String(h.moein);
            };
            expected[key(holding(w.now().state))] += w.value;
            if (w.opening) expected[key(holding(QStringLiteral("71")))] -= w.value;
            for (const char* s : {"71", "72", "73", "78", "79"}) {
                const QString k = key(holding(QString::fromLatin1(s)));
                const double have = balances.count(k) ? balances[k] : 0.0;
                const double want = expected.count(k) ? expected[k] : 0.0;
                if (std::fabs(have - want) > 0.005) {
                    return ::testing::AssertionFailure() << "cheque " << w.number.toStdString() << " in state "
                                                         << w.now().state.toStdString() << ": " << have << " on "
                                                         << k.toStdString() << ", expected " << want;
                }
            }
        }
        return testing::chequeLedgerIsConsistent(db());
    }
};

TEST_F(ChequeActionWalkTest, RandomWalksFollowTheStateTable) {
    const int walksWanted = qEnvironmentVariableIsSet("TR_CHEQUE_WALKS") ? qEnvironmentVariableIntValue("TR_CHEQUE_WALKS")
                                                                         : (tr::test::testingOnServer() ? 600 : 2000);
    const quint32 seed = qEnvironmentVariableIsSet("TR_CHEQUE_SEED") ? qEnvironmentVariable("TR_CHEQUE_SEED").toUInt()
                                                                     : QRandomGenerator::global()->generate();
    std::printf("cheque walks: %d, seed %u (TR_CHEQUE_SEED)\n", walksWanted, seed);
    QRandomGenerator random(seed);
    const QStringList names = actionNames();
    const QStringList dates = {QStringLiteral("1404/02/09"), QStringLiteral("1404/02/10"), QStringLiteral("1404/03/01"),
                               QStringLiteral("1404/06/14"), QStringLiteral("1404/06/15"), QStringLiteral("1404/08/20"),
                               QStringLiteral("1404/12/29"), QStringLiteral("1405/01/05")};
    int accepted = 0, refused = 0;
    std::map<QString, int> reached;
    qint64 serial = 0;
    constexpr int kGroup = 40;  // walks received together on one document
    for (int done = 0; done < walksWanted; done += kGroup) {
        std::vector<Walk> walks(std::min(kGroup, walksWanted - done));
        for (size_t i = 0; i < walks.size(); ++i) {
            walks[i].number = QString::number(done + int(i) + 100000);
            walks[i].guarantee = random.bounded(4) == 0;
            walks[i].value = 1000.0 * (1 + random.bounded(5000));
            walks[i].stepsLeft = 5 + random.bounded(16);
        }
        const bool opening = random.bounded(3) == 0;
        for (Walk& w : walks) w.opening = opening;
        receive(walks, ++serial, opening);
        std::vector<Walk*> active;
        for (Walk& w : walks) active.push_back(&w);
        while (!active.empty()) {
            // A batch of one to four walks, each with a name that is legal more often than not.
            const int size = std::min<int>(1 + random.bounded(4), int(active.size()));
            std::vector<std::pair<const Walk*, QString>> rows;
            const QString date = dates[random.bounded(dates.size())];
            bool allLegal = true;
            for (int i = 0; i < size; ++i) {
                const Walk& w = *active[i];
                QString name = names[random.bounded(names.size())];
                QStringList legalNames;
                for (const QString& n : names)
                    if (legal(w, n, date)) legalNames << n;
                if (!legalNames.isEmpty() && random.bounded(100) < 85) name = legalNames[random.bounded(legalNames.size())];
                allLegal = allLegal && legal(w, name, date);
                rows.emplace_back(&w, name);
            }
            QString why;
            const bool applied = apply(rows, date, why);
            QString batch;
            for (const auto& [w, name] : rows) {
                batch += QStringLiteral("\n  cheque %1%2 in %3 since %4: %5 on %6 (%7)")
                             .arg(w->number, w->guarantee ? QStringLiteral(" (guarantee)") : QString(), w->now().state,
                                  w->now().date, name, date,
                                  legal(*w, name, date) ? QStringLiteral("legal") : QStringLiteral("illegal"));
            }
            ASSERT_EQ(applied, allLegal) << "seed " << seed << ": " << why.toStdString() << batch.toStdString();
            if (applied) {
                ++accepted;
                for (const auto& [w, name] : rows) {
                    auto* walk = const_cast<Walk*>(w);
                    if (name == kUndo) walk->history.pop_back();
                    else walk->history.push_back({kKindOfName.at(name), date});
                    ++reached[walk->now().state];
                }
            } else {
                ++refused;
            }
            // After every step, accepted or not, each cheque of the batch is in the model's state.
            for (const auto& [w, name] : rows) {
                const auto latest = tr::instruments::latestRow(db(), tr::instruments::chequeHistory(), w->number,
                                                               QStringLiteral("S"));
                ASSERT_TRUE(latest.has_value());
                ASSERT_EQ(latest->kind, w->now().state) << "seed " << seed << ", cheque " << w->number.toStdString();
            }
            for (int i = 0; i < size; ++i) --active[i]->stepsLeft;
            active.erase(std::remove_if(active.begin(), active.end(), [](const Walk* w) { return w->stepsLeft <= 0; }),
                         active.end());
            // Walks take turns in the batches.
            if (!active.empty()) std::rotate(active.begin(), active.begin() + (size % int(active.size())), active.end());
        }
        ASSERT_TRUE(matches(walks)) << "seed " << seed;
    }
    std::printf("batches accepted %d, refused %d; states reached:", accepted, refused);
    for (const auto& [state, times] : reached) std::printf(" %s %d", qPrintable(state), times);
    std::printf("\n");
    EXPECT_GT(accepted, 0);
    EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace tr::procedures
