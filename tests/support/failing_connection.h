#pragma once
// A connection for fault tests: it passes every statement to the real connection until it is
// armed, then fails the Nth statement (or the Nth commit) it is given with a DatabaseError,
// without running it, once. Counting starts when it is armed.
#include "common/db/connection.h"

namespace tr::test {

class FailingConnection : public tr::db::Connection {
  public:
    explicit FailingConnection(tr::db::Connection& real) : real_(real) {}

    // The nth statement from now fails (n >= 1).
    void failStatement(int n) { arm(Target::Statement, n); }
    // The nth "Commit" from now fails; other statements run.
    void failCommit(int n) { arm(Target::Commit, n); }
    void disarm() { target_ = Target::None; }
    // Whether the armed failure was raised.
    bool fired() const { return fired_; }

    tr::db::ExecResult execute(const QString& sql) override;
    tr::db::SqlDialect dialect() const override { return real_.dialect(); }
    QString databaseName() const override { return real_.databaseName(); }
    void setNextTurn(const tr::db::WriteTurn& turn) override { real_.setNextTurn(turn); }
    void takeWritersTurn() override { real_.takeWritersTurn(); }

    // The message the injected failure carries.
    static QString message();

  private:
    enum class Target { None, Statement, Commit };
    void arm(Target target, int n);

    tr::db::Connection& real_;
    Target target_ = Target::None;
    int countdown_ = 0;
    bool fired_ = false;
};

}  // namespace tr::test
