#pragma once
// A test on a database of its own on the run's private server, through a libpq link.
#include <gtest/gtest.h>

#include <memory>

#include "db/pg/pg_link.h"
#include "tests/support/private_pg_server.h"

namespace tr::pg::testing {

class PgDatabaseTest : public ::testing::Test {
  protected:
    explicit PgDatabaseTest(const char* prefix) : prefix_(prefix) {}
    void SetUp() override {
        tr::test::PrivatePgServer& server = tr::test::PrivatePgServer::instance();
        ASSERT_TRUE(server.running()) << server.failure().toStdString();
        const QString database = server.createDatabase(QString::fromLatin1(prefix_));
        ASSERT_FALSE(database.isEmpty()) << server.failure().toStdString();
        connectionText = server.connectionText(database);
        link = std::make_unique<PgLink>(connectionText);
    }
    QVariant single(const QString& sql) { return link->run(sql).resultSets.at(0).rows.at(0).at(0); }

    QString connectionText;  // of the test's own database
    std::unique_ptr<PgLink> link;

  private:
    const char* prefix_;
};

}  // namespace tr::pg::testing
