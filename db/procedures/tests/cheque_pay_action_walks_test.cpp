// Random walks of our own cheques (ordinary, guarantee, opening) and of received cheques passed on
// through both actions procedures, against the model of cheque_state_model.h: every step a batch
// for the issued or the received procedure, each row a random name of that side or undo, legal or
// not, with a random date. The procedure must accept exactly what the model accepts, leave each
// cheque in the model's state and its amount on the accounts the model names, and keep the ledger
// consistent. TR_CHEQUE_WALKS sets the number of walks, TR_CHEQUE_SEED the seed.
#include <QRandomGenerator>
#include <map>

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/cheque_state_model.h"
#include "instruments/cheque_work_tables.h"
#include "instruments/latest_state.h"

namespace tr::procedures {
namespace {

using namespace testing::chequemodel;


class ChequePayActionWalkTest : public testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        // A cheque book wide enough for every walk's leaf, on bank account 1.
        db().execute(QStringLiteral("Delete From N_Cheque Where Joz = 'W'"));
        db().execute(QStringLiteral(
            "Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, FormCode) Values (1, 'W', "
            "'500000', '599999', '1')"));
        remake(QStringLiteral("##TTWP"), tr::instruments::issuedChequeActionWorkTableColumns());
        remake(QStringLiteral("##TTWR"), tr::instruments::chequeActionWorkTableColumns());
    }
    void TearDown() override {
        db().execute(QStringLiteral("Delete From N_Cheque Where Joz = 'W'"));
        ChequeTest::TearDown();
    }

    // The batch's rows in the side's work table as the screen would leave them, then one call.
    static bool apply(bool issuedSide, const std::vector<std::pair<const Cheque*, QString>>& rows,
                      const QString& date, QString& why) {
        const QString table = issuedSide ? QStringLiteral("##TTWP") : QStringLiteral("##TTWR");
        const QString standing = issuedSide ? QString() : QStringLiteral("V");
        db().execute(QStringLiteral("Delete From ") + table);
        int order = 0;
        for (const auto& [c, name] : rows) {
            const QString kind = kindOn(issuedSide, name);
            const QString from = holdingOf(*c, c->now().state);
            const QString to = kind.isEmpty() ? from : holdingOf(*c, kind);
            db().execute(QStringLiteral("Insert Into ") + table +
                         QStringLiteral(" (IDX, ChqNo, Joz, ChqValue, SarResidDate, ActionDate, "
                                        "WhatDocNam, LastWhatDoc, sOrder, %1Koll, %1Moein, VaKoll, "
                                        "VaMoein) Values (")
                             .arg(standing) +
                         QString::number(order) + QStringLiteral(", ") + db().text(c->number) +
                         QStringLiteral(", ") + db().text(seriesOf(*c)) + QStringLiteral(", ") +
                         tr::db::sqlNumber(c->value) + QStringLiteral(", ") + db().text(kDue) +
                         QStringLiteral(", ") + db().text(date) + QStringLiteral(", ") +
                         db().text(name) + QStringLiteral(", ") + db().text(c->now().state) +
                         QStringLiteral(", ") +
                         db().text(QString::number(order).rightJustified(4, QLatin1Char('0'))) +
                         QStringLiteral(", ") + db().text(from.left(3)) + QStringLiteral(", ") +
                         db().text(from.mid(3)) + QStringLiteral(", ") + db().text(to.left(3)) +
                         QStringLiteral(", ") + db().text(to.mid(3)) + QStringLiteral(")"));
            ++order;
        }
        try {
            db().execute(QStringLiteral("Exec ") +
                         (issuedSide ? QStringLiteral("sp_N_Asnad_ChqPayAction_Apply")
                                     : QStringLiteral("sp_N_Asnad_ChqGetAction_Apply")) +
                         QLatin1Char(' ') + db().text(table) +
                         QStringLiteral(", 'admin', '1404/01/01', '1404/12/29'"));
            return true;
        } catch (const tr::db::DatabaseError& e) {
            why = e.message();
            return false;
        }
    }

    // Each cheque's amount stands where the model says, on every account a state can name.
    static ::testing::AssertionResult balancesMatch(const std::vector<Cheque>& cheques) {
        std::map<QString, double> book;  // number + '/' + Koll + Moein
        const auto lines = db().execute(
            QStringLiteral("Select AtfCh, Koll, Moein, Sum(Bed - Bes) From Asnad Where TypeSys = "
                           "'N' And DocToDate In ('W', 'S') Group By AtfCh, Koll, Moein"));
        for (const auto& row : lines.resultSets.front().rows) {
            book[row[0].toString().trimmed() + QLatin1Char('/') + row[1].toString().trimmed() +
                 row[2].toString().trimmed()] = row[3].toDouble();
        }
        const QStringList accounts = {"1020001", "1030001", "1030002", "1030004",
                                      "1040002", "2010001", "2010003", "2020001"};
        for (const Cheque& c : cheques) {
            const std::map<QString, double> want = expectedBalances(c);
            for (const QString& account : accounts) {
                const auto h = book.find(c.number + QLatin1Char('/') + account);
                const auto w = want.find(account);
                const double have = h == book.end() ? 0.0 : h->second;
                const double expected = w == want.end() ? 0.0 : w->second;
                if (std::fabs(have - expected) > 0.005) {
                    return ::testing::AssertionFailure()
                           << "cheque " << c.number.toStdString() << " in state "
                           << c.now().state.toStdString() << ": " << have << " on "
                           << account.toStdString() << ", expected " << expected;
                }
            }
        }
        return testing::chequeLedgerIsConsistent(db());
    }
};

TEST_F(ChequePayActionWalkTest, OwnAndSpentChequesFollowTheStateTableOnBothSides) {
    const int walksWanted = qEnvironmentVariableIsSet("TR_CHEQUE_WALKS")
                                ? qEnvironmentVariableIntValue("TR_CHEQUE_WALKS")
                                : (tr::test::testingOnServer() ? 200 : 600);
    const quint32 seed = qEnvironmentVariableIsSet("TR_CHEQUE_SEED")
                             ? qEnvironmentVariable("TR_CHEQUE_SEED").toUInt()
                             : QRandomGenerator::global()->generate();
    std::printf("own and spent cheque walks: %d, seed %u (TR_CHEQUE_SEED)\n", walksWanted, seed);
    QRandomGenerator random(seed);
    const QStringList issuedNames = issuedActionNames();
    const QStringList receivedNames = actionNames();
    const QStringList dates = {QStringLiteral("1404/02/09"), QStringLiteral("1404/02/20"),
                               QStringLiteral("1404/03/01"), QStringLiteral("1404/06/14"),
                               QStringLiteral("1404/06/15"), QStringLiteral("1404/08/20"),
                               QStringLiteral("1404/12/29"), QStringLiteral("1405/01/05")};
    int accepted = 0, refused = 0;
    std::map<QString, int> reached;
    constexpr int kGroup = 40;  // cheques paid together on one payment
    for (int done = 0; done < walksWanted; done += kGroup) {
        // An opening payment holds our leaves only (a cheque passed on in one must itself be an
        // opening received cheque, which the received walks cover).
        const bool opening = random.bounded(4) == 0;
        std::vector<Cheque> cheques = payRandomCheques(random, std::min(kGroup, walksWanted - done), done, 500000,
                                                       600000, 5000, done / kGroup + 1, opening);
        for (Cheque& c : cheques) c.stepsLeft = 5 + random.bounded(16);
        std::vector<Cheque*> active;
        for (Cheque& c : cheques) active.push_back(&c);
        while (!active.empty()) {
            // Mostly the side that offers the batch's first cheque something.
            const bool issuedSide = random.bounded(100) < 85
                                        ? !offeredOn(true, *active[0]).isEmpty()
                                        : random.bounded(2) == 0;
            const QStringList& names = issuedSide ? issuedNames : receivedNames;
            const int size = std::min<int>(1 + random.bounded(4), int(active.size()));
            std::vector<std::pair<const Cheque*, QString>> rows;
            const QString date = dates[random.bounded(dates.size())];
            bool allLegal = true;
            for (int i = 0; i < size; ++i) {
                const Cheque& c = *active[i];
                QString name = names[random.bounded(names.size())];
                QStringList legalNames;
                for (const QString& n : names)
                    if (legalOn(issuedSide, c, n, date)) legalNames << n;
                if (!legalNames.isEmpty() && random.bounded(100) < 85)
                    name = legalNames[random.bounded(legalNames.size())];
                allLegal = allLegal && legalOn(issuedSide, c, name, date);
                rows.emplace_back(&c, name);
            }
            QString why;
            const bool applied = apply(issuedSide, rows, date, why);
            QString batch;
            for (const auto& [c, name] : rows) {
                batch +=
                    QStringLiteral("\n  %1 cheque %2%3 in %4 since %5: %6 on %7 (%8)")
                        .arg(c->origin == Origin::Own ? QStringLiteral("own")
                                                      : QStringLiteral("spent"),
                             c->number, c->guarantee ? QStringLiteral(" (guarantee)") : QString(),
                             c->now().state, c->now().date, name, date,
                             legalOn(issuedSide, *c, name, date) ? QStringLiteral("legal")
                                                                 : QStringLiteral("illegal"));
            }
            ASSERT_EQ(applied, allLegal)
                << "seed " << seed << ", " << (issuedSide ? "issued" : "received")
                << " side: " << why.toStdString() << batch.toStdString();
            if (applied) {
                ++accepted;
                for (const auto& [c, name] : rows) {
                    auto* cheque = const_cast<Cheque*>(c);
                    if (name == kUndo)
                        cheque->history.pop_back();
                    else
                        cheque->history.push_back({kindOn(issuedSide, name), date});
                    ++reached[cheque->now().state];
                }
            } else {
                ++refused;
            }
            for (const auto& [c, name] : rows) {
                const auto latest = tr::instruments::latestRow(
                    db(), tr::instruments::chequeHistory(), c->number, seriesOf(*c));
                ASSERT_TRUE(latest.has_value());
                ASSERT_EQ(latest->kind, c->now().state)
                    << "seed " << seed << ", cheque " << c->number.toStdString();
            }
            for (int i = 0; i < size; ++i) --active[i]->stepsLeft;
            active.erase(std::remove_if(active.begin(), active.end(),
                                        [](const Cheque* c) { return c->stepsLeft <= 0; }),
                         active.end());
            if (!active.empty())
                std::rotate(active.begin(), active.begin() + (size % int(active.size())),
                            active.end());
        }
        ASSERT_TRUE(balancesMatch(cheques)) << "seed " << seed;
    }
    std::printf("batches accepted %d, refused %d; states reached:", accepted, refused);
    for (const auto& [state, times] : reached) std::printf(" %s %d", qPrintable(state), times);
    std::printf("\n");
    EXPECT_GT(accepted, 0);
    EXPECT_GT(refused, 0);
    for (const char* state : {"82", "85", "86", "87", "88", "72"})
        EXPECT_GT(reached[QString::fromLatin1(state)], 0) << state;
}

}  // namespace
}  // namespace tr::procedures
