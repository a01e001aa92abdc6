// A few hundred generated cheques with their actions on the demo company: the ledger stays
// consistent, every cheque is in the state its walk ended in and its amount stands where that
// state says, the actions are dated in the order they were posted, the same seed writes the same
// book, and a second run extends it.
#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QTemporaryDir>
#include <cmath>
#include <map>

#include "bench/cheque_generator.h"
#include "bench/generator.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/procedures/tests/ledger_invariants.h"

namespace tr::bench {
namespace {

tr::db::ResultSet rows(tr::db::Connection& c, const QString& sql) { return c.execute(sql).resultSets.front(); }

struct Generated {
    QTemporaryDir dir;
    std::unique_ptr<tr::engine::Engine> engine;
    std::unique_ptr<tr::engine::SqliteConnection> company;
    ChequeReport report;

    explicit Generated(unsigned seed) {
        engine = openDemoEngine(dir.path());
        company = openDemoCompany(*engine);
        ChequeOptions options;
        options.cheques = 360;
        options.seed = seed;
        options.actionsPerBatch = 16;
        options.documentsPerTransaction = 8;
        report = generateCheques(*company, options);
    }

    // The cheques' rows as the book holds them, in the order written.
    QByteArray digest() {
        QCryptographicHash hash(QCryptographicHash::Sha1);
        for (const auto& row : rows(*company, QStringLiteral("Select WhatDoc, ChqNo, Joz, SanadDate, Serial From "
                                                             "N_ChqLastTrans Order By IDX"))
                                   .rows)
            for (const QVariant& v : row) hash.addData((v.toString() + QLatin1Char('|')).toUtf8());
        return hash.result();
    }
};

TEST(ChequeGenerator, WritesConsistentWalksThatTheSameSeedRepeats) {
    Generated g(1404);
    const ChequeReport& r = g.report;
    ASSERT_EQ(r.cheques(), 360);
    ASSERT_EQ(qint64(r.final.size()), r.cheques());
    EXPECT_GT(r.received, 0);
    EXPECT_GT(r.own, 0);
    EXPECT_GT(r.spent, 0);
    EXPECT_GT(r.undone, 0);
    EXPECT_GT(r.actions, 2 * r.cheques());
    // The walks reach every state the rules give a way into, on both sides.
    for (const char* kind : {"72", "73", "76", "77", "78", "79", "82", "85", "86", "87", "88"})
        EXPECT_GT(r.perKind.count(QString::fromLatin1(kind)), 0u) << kind;
    EXPECT_EQ(chequeCount(*g.company), r.cheques());
    EXPECT_TRUE(tr::procedures::testing::chequeLedgerIsConsistent(*g.company));

    // Each cheque's state is the kind of its latest state row.
    std::map<QString, QString> latest;
    for (const auto& row : rows(*g.company, QStringLiteral("Select L.ChqNo, L.Joz, L.WhatDoc From N_ChqLastTrans As L "
                                                           "Where L.IDX = (Select Max(M.IDX) From N_ChqLastTrans As M "
                                                           "Where M.ChqNo = L.ChqNo And IsNull(M.Joz, '') = "
                                                           "IsNull(L.Joz, ''))"))
                               .rows)
        latest[row[0].toString().trimmed() + QLatin1Char('/') + row[1].toString().trimmed()] = row[2].toString().trimmed();
    EXPECT_EQ(latest.size(), r.final.size());
    // Each cheque's lines net to its amount on the account the demo chart holds its state on: a
    // received cheque as a claim (a debit), our own leaf as a debt (a credit). A cheque returned to
    // the party it came from, or that we took back, nets to nothing anywhere.
    const std::map<QString, QString> receivedOn = {{"71", "1030001"}, {"72", "1030002"}, {"76", "1030002"},
                                                   {"73", "1020001"}, {"77", "1030001"}, {"79", "1030004"},
                                                   {"81", "2020001"}, {"88", "1030001"}};
    const std::map<QString, QString> ownOn = {{"81", "2010001"}, {"86", "2010001"}, {"85", "2010003"}, {"82", "1020001"}};
    std::map<QString, double> net;  // number/series/account
    for (const auto& row : rows(*g.company, QStringLiteral("Select AtfCh, DocToDate, Koll, Moein, Sum(Bed - Bes) From "
                                                           "Asnad Where TypeSys = 'N' And WhatDoc Between '71' And '89' "
                                                           "Group By AtfCh, DocToDate, Koll, Moein"))
                               .rows) {
        net[row[0].toString().trimmed() + QLatin1Char('/') + row[1].toString().trimmed() + QLatin1Char('/') +
            row[2].toString().trimmed() + row[3].toString().trimmed()] = row[4].toDouble();
    }
    int checked = 0;
    for (const GeneratedCheque& ch : r.final) {
        const QString key = ch.number + QLatin1Char('/') + ch.series;
        ASSERT_EQ(latest[key], ch.state) << key.toStdString();
        if (ch.state == QLatin1String("78") || ch.state == QLatin1String("87")) continue;
        const auto& on = ch.received ? receivedOn : ownOn;
        ASSERT_TRUE(on.count(ch.state)) << key.toStdString() << " in " << ch.state.toStdString();
        const QString account = on.at(ch.state);
        EXPECT_EQ(ch.koll + ch.moein, account) << key.toStdString() << " in " << ch.state.toStdString();
        ASSERT_NEAR(net[key + QLatin1Char('/') + account], ch.received ? ch.value : -ch.value, 0.005)
            << key.toStdString() << " in " << ch.state.toStdString() << " on " << account.toStdString();
        ++checked;
    }
    EXPECT_GT(checked, 0);
    // Posted in date order: no state row is dated before one written earlier.
    EXPECT_EQ(rows(*g.company, QStringLiteral("Select Count(*) From N_ChqLastTrans As A Where Exists (Select * From "
                                              "N_ChqLastTrans As B Where B.IDX < A.IDX And B.SanadDate > A.SanadDate)"))
                  .rows.front()
                  .front()
                  .toLongLong(),
              0);

    Generated again(1404);
    EXPECT_EQ(again.report.perKind, r.perKind);
    EXPECT_EQ(again.digest(), g.digest());

    // A second run on the same book adds cheques of its own: no number, serial or leaf of the
    // first run is taken again.
    ChequeOptions more;
    more.cheques = 40;
    more.seed = 7;
    const ChequeReport second = generateCheques(*g.company, more);
    EXPECT_EQ(second.cheques(), 40);
    EXPECT_EQ(chequeCount(*g.company), r.cheques() + 40);
    EXPECT_TRUE(tr::procedures::testing::chequeLedgerIsConsistent(*g.company));
}

}  // namespace
}  // namespace tr::bench
