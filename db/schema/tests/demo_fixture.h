#pragma once
// Test fixtures: an engine on a fresh temporary data directory, with the demo company loaded
// once per test suite, and small helpers that read one value or count rows.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QVariant>
#include <memory>

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/engine/sqlite_connection.h"
#include "db/schema/demo_company.h"
#include "db/schema/schema.h"

namespace tr::schema::testing {

inline QVariant scalar(tr::db::Connection& c, const QString& sql) {
    const tr::db::ExecResult result = c.execute(sql);
    if (result.resultSets.empty() || result.resultSets.front().rows.empty()) return {};
    return result.resultSets.front().rows.front().at(0);
}

inline int rowCount(tr::db::Connection& c, const QString& sql) {
    const tr::db::ExecResult result = c.execute(sql);
    return result.resultSets.empty() ? -1 : static_cast<int>(result.resultSets.front().rows.size());
}

// "message (sql)" of a DatabaseError, for failure output.
inline std::string describe(const tr::db::DatabaseError& error) {
    return (error.message() + QStringLiteral("  [") + error.sql() + QStringLiteral("]"))
        .toStdString();
}

class DemoCompanyTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        engine_ = new tr::engine::Engine(dir_->path());
        suite_ = engine_->open(QString::fromUtf8(kSuiteDatabase)).release();
        try {
            loadDemoCompany(*suite_,
                            [](const QString& name) -> std::unique_ptr<tr::db::Connection> {
                                return engine_->open(name);
                            });
        } catch (const tr::db::DatabaseError& error) {
            loadError_ = describe(error);
        }
        company_ = engine_->open(QString::fromUtf8(demo::kCurrentDatabase)).release();
    }
    static void TearDownTestSuite() {
        delete company_;
        delete suite_;
        delete engine_;
        delete dir_;
    }
    void SetUp() override { ASSERT_TRUE(loadError_.empty()) << loadError_; }

    static tr::engine::SqliteConnection& company() { return *company_; }
    static tr::engine::SqliteConnection& suite() { return *suite_; }
    static tr::engine::Engine& engine() { return *engine_; }

  private:
    static inline QTemporaryDir* dir_ = nullptr;
    static inline tr::engine::Engine* engine_ = nullptr;
    static inline tr::engine::SqliteConnection* suite_ = nullptr;
    static inline tr::engine::SqliteConnection* company_ = nullptr;
    static inline std::string loadError_;
};

}  // namespace tr::schema::testing
