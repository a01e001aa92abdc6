// Every built-in function of the dialect's table runs on the engine at its fewest and most
// arguments (a misspelt target text or a helper the runtime lacks fails here), and a call with
// the wrong number of arguments gets the server's message.
#include <gtest/gtest.h>

#include <algorithm>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"
#include "db/tsql/builtin_functions.h"

using tr::engine::testing::EngineTest;

class BuiltinFunctions : public EngineTest {};

TEST_F(BuiltinFunctions, EachRunsWithItsArgumentCounts) {
    db->execute("Create Table T (A Varchar(10))");
    for (const tr::tsql::BuiltinFunction& f : tr::tsql::builtinFunctions()) {
        for (const int count : {f.minArgs, std::min(f.maxArgs, 3)}) {
            QStringList args;
            for (int i = 0; i < count; ++i) args << (i == 0 ? QStringLiteral("'12'") : QStringLiteral("1"));
            if (QLatin1String(f.name) == QLatin1String("COL_LENGTH")) args = {"'T'", "'A'"};
            const QString sql = QStringLiteral("Select %1(%2)").arg(QLatin1String(f.name), args.join(", "));
            try { db->execute(sql); } catch (const tr::db::DatabaseError& e) { ADD_FAILURE() << sql.toStdString() << ": " << e.message().toStdString(); }
        }
        if (f.runtime) {
            EXPECT_LE(f.runtimeMinArgs, f.runtimeMaxArgs) << f.name;
            EXPECT_TRUE(QString::fromLatin1(f.sqlite).contains(QLatin1String(f.runtime)) ||
                        f.rule != tr::tsql::Rule::Spelling)
                << f.name;
        }
    }
    EXPECT_EQ(value("Select Len('ab  ')").toInt(), 2);
    EXPECT_EQ(value("Select Round(2.5, 0)").toDouble(), 3.0);
    EXPECT_EQ(value("Select Substring('abcdef', 0, 3)").toString(), QStringLiteral("ab"));
    // Left( and Right( are functions, not the joins the words start.
    EXPECT_EQ(value("Select Left('abcdef', 2) + Right('abcdef', 2)").toString(), QStringLiteral("abef"));
    db->execute("Insert Into T (A) Values ('x')");
    EXPECT_EQ(value("Select Count(*) From T As P Left Join T As Q On Left(P.A, 1) = Right(Q.A, 1)").toInt(), 1);
}

TEST_F(BuiltinFunctions, AWrongArgumentCountOrAnUnknownNameIsRefused) {
    for (const auto& [sql, message] :
         {std::pair{"Select Left('ab')", "The LEFT function requires 2 argument(s)"},
          std::pair{"Select Charindex('a')", "The CHARINDEX function requires 2 to 3 argument(s)"},
          std::pair{"Select Coalesce(1)", "The COALESCE function requires 2 to 64 argument(s)"},
          std::pair{"Select NoSuch(1)", "'NoSuch' is not a recognized built-in function name"}}) {
        try {
            db->execute(QString::fromLatin1(sql));
            ADD_FAILURE() << sql;
        } catch (const tr::db::DatabaseError& e) {
            EXPECT_EQ(e.message(), QString::fromLatin1(message)) << sql;
        }
    }
}
