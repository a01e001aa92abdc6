// Hostile statements (deep nesting, long chains, many union terms, recursion through Exec) are
// refused with the server's message instead of overflowing the stack; what stays inside the
// limits runs, also on a thread with a small stack.
#include <gtest/gtest.h>

#include <QThread>
#include <functional>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

namespace {

const QString kNestedTooDeeply = QStringLiteral(
    "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into "
    "smaller queries.");

QString times(const char* text, int n) {
    return QString::fromUtf8(text).repeated(n);
}

struct Hostile {
    const char* name;
    std::function<QString()> sql;
};

const Hostile kHostile[] = {
    {"parentheses", [] { return "Select " + times("(", 8000) + "1" + times(")", 8000); }},
    {"Not", [] { return "Select 1 Where " + times("Not ", 10000) + "1 = 1"; }},
    {"Case",
     [] { return "Select " + times("Case When 1 = 1 Then ", 10000) + "1" + times(" End", 10000); }},
    {"IsNull", [] { return "Select " + times("IsNull(", 10000) + "1" + times(", 0)", 10000); }},
    {"Exists",
     [] {
         return "Select 1 Where " + times("Exists (Select 1 Where ", 10000) + "1 = 1" +
                times(")", 10000);
     }},
    {"subqueries", [] { return "Select " + times("(Select ", 10000) + "1" + times(")", 10000); }},
    {"derived tables",
     [] { return "Select * From " + times("(Select * From ", 10000) + "T" + times(") x", 10000); }},
    {"If", [] { return times("If 1 = 1 ", 10000) + "Select 1"; }},
    {"Begin", [] { return times("Begin ", 10000) + "Select 1" + times(" End", 10000); }},
    {"unary minus", [] { return "Select " + times("- ", 10000) + "1"; }},
    {"flat sum", [] { return "Select " + times("1 + ", 9999) + "1"; }},
    {"flat product", [] { return "Select " + times("2 * ", 9999) + "1"; }},
    {"flat Or", [] { return "Select 1 Where " + times("1 = 1 Or ", 9999) + "1 = 1"; }},
    {"flat And in an Insert",
     [] { return "Insert Into T (n) Select 1 Where " + times("1 = 1 And ", 9999) + "1 = 1"; }},
    {"Union All", [] { return "Select 1" + times(" Union All Select 1", 100000); }},
    {"sums inside sums",
     [] { return "Select " + times("1 + (", 200) + times("1 + ", 200) + "1" + times(")", 200); }},
};

// Runs `work` on a thread with an eighth of the main thread's 8 MiB stack (statements at the
// limits need some 400 KiB in an optimised build; more without optimisation).
void onSmallStack(const std::function<void()>& work) {
    std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            work();
        } catch (const DatabaseError& e) {
            ADD_FAILURE() << e.what();
        }
    }));
    thread->setStackSize(1024 * 1024);
    thread->start();
    thread->wait();
}

}  // namespace

class Limits : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        db->execute("Create Table T (n Int)");
    }
};

TEST_F(Limits, DeepOrLongStatementsAreRefusedWithTheServersMessage) {
    for (const Hostile& h : kHostile) {
        EXPECT_EQ(refusal(h.sql()), kNestedTooDeeply) << h.name;
        EXPECT_EQ(value("Select Count(*) From T").toInt(), 0) << h.name;  // nothing half-written
    }
    // The connection goes on working.
    EXPECT_EQ(value("Select 1 + 1").toInt(), 2);
}

TEST_F(Limits, RefusalsHoldOnASmallThreadStack) {
    // Another connection: an SQLite connection belongs to the thread that uses it.
    onSmallStack([&] {
        auto other = engine->open(QStringLiteral("Corvask_1_1404"));
        for (const Hostile& h : kHostile) {
            try {
                other->execute(h.sql());
                ADD_FAILURE() << h.name << " ran";
            } catch (const DatabaseError& e) {
                EXPECT_EQ(e.message(), kNestedTooDeeply) << h.name;
            }
        }
    });
}

TEST_F(Limits, StatementsInsideTheLimitsRunOnASmallThreadStack) {
    onSmallStack([&] {
        auto other = engine->open(QStringLiteral("Corvask_1_1404"));
        auto first = [&](const QString& sql) {
            SCOPED_TRACE(sql.left(40).toStdString());
            return other->execute(sql).resultSets.back().rows.front().front();
        };
        EXPECT_EQ(first("Select " + times("(", 100) + "7" + times(")", 100)).toInt(), 7);
        EXPECT_EQ(first("Select " + times("1 + ", 199) + "1").toInt(), 200);
        EXPECT_EQ(
            first("Select Count(*) From (Select 1 As x" + times(" Union All Select 1", 99) + ") u")
                .toInt(),
            100);
        EXPECT_EQ(first("Select 1 Where " + times("Not ", 20) + "1 = 1").toInt(), 1);
        EXPECT_EQ(first(times("If 1 = 1 ", 100) + "Select 5").toInt(), 5);
        EXPECT_EQ(first("Select " + times("IsNull(", 30) + "3" + times(", 0)", 30)).toInt(), 3);
    });
}

TEST_F(Limits, ExecAndProceduresNestNoDeeperThanTheServerAllows) {
    int calls = 0;
    engine->procedures().addProcedure(QStringLiteral("sp_Again"),
                                      [&](tr::db::Connection& c, const auto&) {
                                          ++calls;
                                          return c.execute(QStringLiteral("Exec sp_Again"));
                                      });
    const QString message = refusal("Exec sp_Again");
    EXPECT_EQ(
        message,
        "Maximum stored procedure, function, trigger, or view nesting level exceeded (limit 32).");
    EXPECT_LE(calls, 32);
    EXPECT_EQ(value("Select 2").toInt(), 2);
}
