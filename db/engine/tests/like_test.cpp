// T-SQL Like: the pattern language and the collation's equalities, and matching that stays fast
// and shallow on patterns built to make a backtracking matcher explode.
#include <gtest/gtest.h>

#include "db/engine/sqlite_functions.h"
#include "db/engine/tests/engine_fixture.h"

using tr::engine::tsqlLike;
using tr::engine::testing::EngineTest;

namespace {

struct LikeCase {
    const char* text;
    const char* pattern;
    bool matches;
};

const LikeCase kCases[] = {
    {"abc", "abc", true},
    {"abc", "ab", false},
    {"abc", "a_c", true},
    {"ac", "a_c", false},
    {"abc", "%", true},
    {"", "%", true},
    {"", "_", false},
    {"abc", "%%c", true},
    {"abc", "a%b%c", true},
    {"abcb", "a%b", true},
    {"abcbd", "a%b", false},
    {"mississippi", "%iss%ppi", true},
    {"mississippi", "%iss%ppx", false},
    {"ABC", "a%c", true},  // ASCII case is not significant
    {"b", "[a-c]", true},
    {"d", "[a-c]", false},
    {"d", "[^a-c]", true},
    {"B", "[a-c]", true},
    {"x", "[xyz]", true},
    {"-", "[a-]", true},  // a dash at the end of a set is itself
    {"[", "[", true},     // an unclosed bracket is itself
    {"a[]b", "a[]b", true},
    {"x", "[^]", true},
    {"10%", "10!%", false},
    {"علی", "عل_", true},
    {"كتاب", "کتاب", true},  // Arabic and Persian kaf
    {"علي", "%ی", true},     // Arabic and Persian yeh
    {"ab", "ab ", false},    // a blank in the pattern is a character to match
};

}  // namespace

TEST(Like, PatternLanguage) {
    for (const LikeCase& c : kCases) {
        EXPECT_EQ(tsqlLike(QString::fromUtf8(c.pattern), QString::fromUtf8(c.text)), c.matches)
            << c.text << " Like " << c.pattern;
    }
}

TEST(Like, Escape) {
    EXPECT_TRUE(tsqlLike(QStringLiteral("10!%"), QStringLiteral("10%"), u'!'));
    EXPECT_FALSE(tsqlLike(QStringLiteral("10!%"), QStringLiteral("100"), u'!'));
    EXPECT_TRUE(tsqlLike(QStringLiteral("a!_%"), QStringLiteral("a_bc"), u'!'));
    EXPECT_FALSE(tsqlLike(QStringLiteral("a!_%"), QStringLiteral("abc"), u'!'));
    EXPECT_TRUE(tsqlLike(QStringLiteral("!["), QStringLiteral("["), u'!'));
}

TEST(Like, PatternsThatMakeBacktrackingExplodeAnswerAtOnce) {
    // A search word of wildcards, as the document search wraps it, over a long text without 'z'.
    const QString text = QStringLiteral("a").repeated(20000);
    EXPECT_FALSE(tsqlLike(QStringLiteral("%_%_%_%_%_z%"), text));
    EXPECT_TRUE(tsqlLike(QStringLiteral("%_%_%_%_%_a%"), text));
    EXPECT_FALSE(tsqlLike(QStringLiteral("%a").repeated(30) + QStringLiteral("b"), text));
    // One level of recursion per % would overflow the stack here.
    const QString many = QStringLiteral("a%").repeated(60000);
    EXPECT_TRUE(tsqlLike(many, QStringLiteral("a").repeated(60000)));
    EXPECT_FALSE(tsqlLike(many, QStringLiteral("a").repeated(59999)));
}

class LikeInQueries : public EngineTest {};

TEST_F(LikeInQueries, SearchWithAHostileWordOverManyDescriptions) {
    db->execute("Create Table D (Des NVarchar(200))");
    db->execute("Begin Tran");
    for (int i = 0; i < 200; ++i)
        db->execute(QStringLiteral("Insert Into D (Des) Values ('%1')")
                        .arg(QStringLiteral("ب").repeated(200)));
    db->execute("Commit Tran");
    EXPECT_EQ(value("Select Count(*) From D Where Des Like '%_%_%_%_z%'").toInt(), 0);
    EXPECT_EQ(value("Select Count(*) From D Where Des Like '%_%_%_%_ب%'").toInt(), 200);
    EXPECT_EQ(
        value("Select 1 Where 'aaa' Like '" + QStringLiteral("a%").repeated(60000) + "'").toInt(),
        0);
    EXPECT_EQ(value("Select PatIndex('%b_d%', 'aabcd')").toInt(), 3);
    EXPECT_EQ(value("Select PatIndex('%x%', 'aabcd')").toInt(), 0);
}

// A pattern is compiled once per statement while it stays the same; one that changes from row to
// row, or keeps its text under another escape, is read afresh.
TEST_F(LikeInQueries, APatternOrEscapeThatChangesFromRowToRowIsReadAgain) {
    db->execute("Create Table P (N Int, Pat NVarchar(20), Txt NVarchar(20), Esc NVarchar(1))");
    db->execute(
        "Insert Into P (N, Pat, Txt, Esc) Values (1, 'a%', 'abc', '!'), (2, 'b%', 'abc', '!'), "
        "(3, 'b%', 'bcd', '!'), (4, '10!%', '10%', '!'), (5, '10!%', '10%', '#'), (6, '10!%', '10!x', '#')");
    const auto matched = [&](const QString& sql) {
        QStringList numbers;
        const tr::db::ExecResult result = db->execute(sql);
        for (const auto& row : result.resultSets.front().rows) numbers << row.at(0).toString();
        return numbers.join(QLatin1Char(','));
    };
    EXPECT_EQ(matched("Select N From P Where Txt Like Pat Order By N"), QStringLiteral("1,3,6"));
    EXPECT_EQ(matched("Select N From P Where Txt Like Pat Escape Esc Order By N"), QStringLiteral("1,3,4,6"));
    EXPECT_EQ(matched("Select N From P Where Txt Like '%c%' Order By N"), QStringLiteral("1,2,3"));
    // The same pattern for every row, under the escape of each row.
    EXPECT_EQ(matched("Select N From P Where Txt Like '10!%' Escape Esc Order By N"), QStringLiteral("4,6"));
}
