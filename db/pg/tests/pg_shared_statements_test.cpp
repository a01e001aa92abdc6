// Texts that differ only in a whole number written as text where a number is compared run through
// one statement prepared on the server, and each still answers as its own value says.
#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/pg/pg_connection.h"
#include "db/pg/pg_server.h"
#include "db/pg/tests/pg_fixture.h"

namespace tr::pg {
namespace {

class PgSharedStatementsTest : public testing::PgDatabaseTest {
  protected:
    PgSharedStatementsTest() : PgDatabaseTest("shared") {}
    void SetUp() override {
        PgDatabaseTest::SetUp();
        if (HasFatalFailure()) return;
        server = std::make_unique<PgServer>(connectionText);
        book = server->connect(QStringLiteral("Book"));
        book->execute(QStringLiteral("Create Table Docs (Serial Int, Des Varchar(20))"));
        book->execute(QStringLiteral("Insert Into Docs (Serial, Des) Values (701, 'a')"));
        book->execute(QStringLiteral("Insert Into Docs (Serial, Des) Values (702, 'b')"));
    }
    QStringList answer(const QString& sql) {
        QStringList values;
        const tr::db::ExecResult result = book->execute(sql);
        for (const auto& row : result.resultSets.at(0).rows) values << row.at(0).toString();
        return values;
    }
    int preparedOnServer() {
        auto& connection = static_cast<PgConnection&>(*book);
        return connection.link().run(QStringLiteral("SELECT count(*) FROM pg_prepared_statements")).resultSets.at(0)
            .rows.at(0).at(0).toInt();
    }

    std::unique_ptr<PgServer> server;
    std::unique_ptr<tr::db::Connection> book;
};

TEST_F(PgSharedStatementsTest, AWholeNumberAsTextIsBoundAndEveryValueStillAnswersForItself) {
    const QString bySerial = QStringLiteral("Select Des From Docs Where LTrim(Serial) = '%1'");
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral("701"))), QStringList{QStringLiteral("a")});
    const int prepared = preparedOnServer();
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral("702"))), QStringList{QStringLiteral("b")});
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral(" +702 "))), QStringList{QStringLiteral("b")});
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral("-702"))), QStringList{});
    EXPECT_EQ(answer(QStringLiteral("Select Des From Docs Where Serial In ('700', '702') Order By Des")),
              QStringList{QStringLiteral("b")});
    EXPECT_EQ(answer(QStringLiteral("Select Des From Docs Where Serial In ('701', '702') Order By Des")),
              (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(preparedOnServer(), prepared + 1);  // the In list's statement, once

    // Other texts are not whole numbers to the server: each is written into its statement and
    // compared as the number it is, or refused.
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral("701.0"))), QStringList{QStringLiteral("a")});
    EXPECT_EQ(answer(QStringLiteral("Select Des From Docs Where Serial < '701.5'")), QStringList{QStringLiteral("a")});
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral("1234567890123456789"))), QStringList{});
    try {
        book->execute(bySerial.arg(QStringLiteral("x701")));
        ADD_FAILURE() << "a text that is no number was compared";
    } catch (const tr::db::DatabaseError& e) {
        EXPECT_TRUE(e.message().contains(QStringLiteral("x701"))) << e.message().toStdString();
    }
    EXPECT_EQ(answer(bySerial.arg(QStringLiteral("701"))), QStringList{QStringLiteral("a")});
}

}  // namespace
}  // namespace tr::pg
