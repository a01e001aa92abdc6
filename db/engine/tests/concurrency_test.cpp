// Two processes updating one database at once lose no update and see no lock error.
#include <gtest/gtest.h>

#include <QProcess>

#include "db/engine/tests/engine_fixture.h"

using tr::engine::testing::EngineTest;

class Concurrency : public EngineTest {};

TEST_F(Concurrency, TwoProcessesReadModifyWriteWithoutLostUpdates) {
    db->execute("Create Table Counter (n Int)");
    db->execute("Insert Into Counter (n) Values (0)");
    constexpr int kRounds = 500;
    QProcess first, second;
    for (QProcess* p : {&first, &second}) {
        p->start(QStringLiteral(COUNTER_WORKER), {dir.path(), QString::number(kRounds)});
    }
    for (QProcess* p : {&first, &second}) {
        ASSERT_TRUE(p->waitForFinished(300000));
        EXPECT_EQ(p->exitCode(), 0) << p->readAllStandardError().toStdString();
    }
    EXPECT_EQ(value("Select n From Counter").toInt(), 2 * kRounds);
}
