#pragma once
// A fresh data directory with one company database open, for engine tests.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"

// Readable failure output for Qt strings.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace tr::engine::testing {

class EngineTest : public ::testing::Test {
protected:
    void SetUp() override {
        engine = std::make_unique<Engine>(dir.path());
        db = engine->open(QStringLiteral("Corvask_1_1404"));
    }
    // Runs `sql` and answers the first column of the first row of the last result set.
    QVariant value(const QString& sql) {
        const auto r = db->execute(sql);
        if (r.resultSets.empty() || r.resultSets.back().rows.empty()) return {};
        return r.resultSets.back().rows.front().front();
    }
    tr::db::ResultSet rows(const QString& sql) {
        auto r = db->execute(sql);
        return r.resultSets.empty() ? tr::db::ResultSet{} : r.resultSets.back();
    }
    // The message of the error `sql` raises, or "" when it runs.
    QString refusal(const QString& sql) {
        try {
            db->execute(sql);
        } catch (const tr::db::DatabaseError& e) {
            return e.message();
        }
        return {};
    }

    QTemporaryDir dir;
    std::unique_ptr<Engine> engine;
    std::unique_ptr<SqliteConnection> db;
};

}  // namespace tr::engine::testing
