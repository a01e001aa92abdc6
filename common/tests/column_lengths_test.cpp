#include <gtest/gtest.h>

#include "common/db/column_lengths.h"

TEST(ColumnLengths, TextColumnsByNameOthersLeftOut) {
    const QHash<QString, int> lengths = tr::db::textColumnLengths(
        QStringLiteral("IsChange Varchar(1) Null, IDX Int Null, Des NVarchar(50) Null, ChqValue Float Null, "
                       "Code char( 3 ) Not Null, Name nvarchar(200)"));
    EXPECT_EQ(lengths.size(), 4);
    EXPECT_EQ(lengths.value(QStringLiteral("IsChange")), 1);
    EXPECT_EQ(lengths.value(QStringLiteral("Des")), 50);
    EXPECT_EQ(lengths.value(QStringLiteral("Code")), 3);
    EXPECT_EQ(lengths.value(QStringLiteral("Name")), 200);
    EXPECT_FALSE(lengths.contains(QStringLiteral("ChqValue")));
}
