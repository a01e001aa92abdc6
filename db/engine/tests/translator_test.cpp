#include <gtest/gtest.h>

#include "common/db/database_error.h"
#include "db/engine/tests/engine_fixture.h"

using tr::db::DatabaseError;
using tr::engine::testing::EngineTest;

class Smoke : public EngineTest {};

TEST_F(Smoke, CreateInsertSelect) {
    db->execute("Create Table T (IDX Int Identity(1,1) Primary Key, Serial Int, Des Varchar(20))");
    db->execute("Insert Into T (Serial, Des) Values (1, 'a'), (2, 'b')");
    EXPECT_EQ(value("Select Count(*) From T").toInt(), 2);
    EXPECT_EQ(value("Select Des From T Where Serial = '2'").toString(), QStringLiteral("b"));
}
