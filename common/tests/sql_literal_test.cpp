#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"

using namespace tr::db;

TEST(SqlLiteral, QuotesAreDoubledAndControlCharactersRefused) {
    EXPECT_EQ(sqlText(QStringLiteral("O'Brien")), QStringLiteral("'O''Brien'"));
    EXPECT_EQ(sqlText(QStringLiteral("a\tb\r\nc")), QStringLiteral("'a\tb\r\nc'"));
    EXPECT_THROW(sqlText(QString(QChar(0)) + QStringLiteral("x")), DatabaseError);
    EXPECT_THROW(sqlText(QStringLiteral("bell\a")), DatabaseError);
}

TEST(SqlLiteral, ServerDialectUsesUnicodeLiteralsAndKeepsBackslashBeforeLineBreak) {
    EXPECT_EQ(sqlText(QStringLiteral("ي"), SqlDialect::SqlServer), QStringLiteral("N'ي'"));
    EXPECT_EQ(sqlText(QStringLiteral("a\\\nb"), SqlDialect::SqlServer), QStringLiteral("N'a\\' + N'\nb'"));
    EXPECT_EQ(sqlText(QStringLiteral("a\\\r\nb"), SqlDialect::SqlServer), QStringLiteral("N'a\\' + N'\r\nb'"));
}

TEST(SqlLiteral, NumbersAreLocaleFree) {
    EXPECT_EQ(sqlNumber(1500000.0), QStringLiteral("1500000"));
    EXPECT_EQ(sqlNumber(-2.5), QStringLiteral("-2.5"));
    EXPECT_EQ(sqlNumber(0.1), QStringLiteral("0.1"));
    EXPECT_EQ(sqlNumber(qint64(42)), QStringLiteral("42"));
    EXPECT_EQ(sqlNumber(1e20), QStringLiteral("1e+20"));
}
