// A small book from the generator: the ledger it leaves is consistent, it covers the kinds,
// cancellations and currencies a real year has, its dates lie in the fiscal year in serial order,
// and a second run continues the serials instead of colliding with them.
#include "bench/generator.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/procedures/tests/ledger_invariants.h"

namespace tr::bench {
namespace {

QVariant scalar(tr::db::Connection& c, const QString& sql) {
    return c.execute(sql).resultSets.front().rows.front().front();
}

TEST(BookGenerator, WritesAConsistentYearThatASecondRunExtends) {
    QTemporaryDir dir;
    auto engine = openDemoEngine(dir.path());
    auto company = openDemoCompany(*engine);
    BookOptions options;
    options.documents = 400;
    options.documentsPerTransaction = 64;
    options.cancelledShare = 0.05;
    options.currencyShare = 0.2;
    const BookReport first = generateBook(*company, options);
    EXPECT_EQ(first.documents, 400);
    EXPECT_EQ(first.perKind.size(), 6u);
    EXPECT_GT(first.cancelled, 0);
    EXPECT_GT(first.currency, 0);
    EXPECT_EQ(documentCount(*company), 400);
    EXPECT_EQ(scalar(*company, QStringLiteral("Select Count(*) From N_NaghdTrans Where Raj > 1"))
                  .toLongLong(),
              first.lines);
    EXPECT_EQ(scalar(*company, QStringLiteral("Select Count(*) From N_ArzTrans Where Raj = 1"))
                  .toLongLong(),
              first.currency);
    EXPECT_EQ(scalar(*company,
                     QStringLiteral("Select Count(Distinct Document) From Asnad Where DocToDate = "
                                    "'1' And Raj = 1"))
                  .toLongLong(),
              first.cancelled);
    EXPECT_EQ(scalar(*company, QStringLiteral("Select Min(SanadDate) From Asnad")).toString(),
              QStringLiteral("1404/01/01"));
    EXPECT_LE(scalar(*company, QStringLiteral("Select Max(SanadDate) From Asnad")).toString(),
              QStringLiteral("1404/12/29"));
    // Within a kind, a later serial never has an earlier date.
    EXPECT_EQ(scalar(*company, QStringLiteral(
                                   "Select Count(*) From N_NaghdTrans As A Inner Join N_NaghdTrans "
                                   "As B On (B.WhatDoc = A.WhatDoc And B.Serial = A.Serial + 1 "
                                   "And A.Raj = 1 And B.Raj = 1) Where B.SanadDate < A.SanadDate"))
                  .toLongLong(),
              0);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(*company));

    options.documents = 50;
    options.seed = 7;
    generateBook(*company, options);
    EXPECT_EQ(documentCount(*company), 450);
    EXPECT_EQ(scalar(*company, QStringLiteral("Select Count(*) From (Select WhatDoc, Serial From "
                                              "N_NaghdTrans Where Raj = 1 Group By WhatDoc, "
                                              "Serial Having Count(*) > 1) As D"))
                  .toLongLong(),
              0);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(*company));
}

}  // namespace
}  // namespace tr::bench
