#pragma once
// Test fixtures: fresh books (the embedded engine's or the test server's) with the demo company
// loaded once per test suite, and small helpers that read one value or count rows.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QVariant>
#include <memory>

#include "common/db/database_error.h"
#include "db/engine/engine.h"
#include "db/schema/demo_company.h"
#include "db/schema/schema.h"
#include "db/tsql/books.h"
#include "tests/support/test_books.h"

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

// Runs on the embedded engine, or on the run's private server when the run asks for it (see
// tests/support/test_books.h).
class DemoCompanyTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        try {
            books_ = tr::test::makeTestBooks(dir_->path(), QStringLiteral("demo")).release();
            suite_ = books_->connect(QString::fromUtf8(kSuiteDatabase)).release();
            loadDemoCompany(*suite_, [](const QString& name) -> std::unique_ptr<tr::db::Connection> {
                return books_->connect(name);
            });
            company_ = books_->connect(QString::fromUtf8(demo::kCurrentDatabase)).release();
        } catch (const tr::db::DatabaseError& error) {
            loadError_ = describe(error);
        }
    }
    static void TearDownTestSuite() {
        delete company_;
        delete suite_;
        delete books_;
        delete dir_;
        company_ = nullptr;
        suite_ = nullptr;
        books_ = nullptr;
    }
    void SetUp() override { ASSERT_TRUE(loadError_.empty()) << loadError_; }

    static tr::tsql::TsqlConnection& company() { return *company_; }
    static tr::tsql::TsqlConnection& suite() { return *suite_; }
    static tr::tsql::Books& books() { return *books_; }
    // The embedded engine, for the tests that read its files (registered on that backend only).
    static tr::engine::Engine& engine() { return dynamic_cast<tr::engine::Engine&>(*books_); }

  private:
    static inline QTemporaryDir* dir_ = nullptr;
    static inline tr::tsql::Books* books_ = nullptr;
    static inline tr::tsql::TsqlConnection* suite_ = nullptr;
    static inline tr::tsql::TsqlConnection* company_ = nullptr;
    static inline std::string loadError_;
};

}  // namespace tr::schema::testing
