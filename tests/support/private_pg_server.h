#pragma once
// A private PostgreSQL server for tests, listening only on a Unix socket in its own directory (no
// TCP). Under ctest one server serves the whole run: a setup test starts it in a directory named
// by TR_PG_SERVER_DIR and a cleanup test removes it. A test program run by hand without that
// variable starts its own in a temporary directory and removes it at exit. The server refuses to
// run as root, so as root it runs as `postgres`.
#include <QString>

namespace tr::test {

class PrivatePgServer {
  public:
    // The run's server, or this process's own, started on the first call. When none can be had,
    // running() is false and failure() says why (with the server's log).
    static PrivatePgServer& instance();

    // The ctest fixture's two steps.
    static bool startIn(const QString& directory, QString* failure);
    static void stopIn(const QString& directory);

    bool running() const { return running_; }
    const QString& failure() const { return failure_; }
    // libpq connection text for `database` on this server's socket, as its superuser.
    QString connectionText(const QString& database = QStringLiteral("postgres")) const;
    // A new empty database named `prefix` with a number that makes it unique in the run.
    QString createDatabase(const QString& prefix);

    // Stops the server and removes its directory (this process's own at exit, or the fixture's).
    void stopNow();

  private:
    PrivatePgServer();
    bool start(const QString& directory);
    bool run(const QString& program, const QStringList& arguments);

    QString base_;  // data/, the socket and the log
    QString binDir_;
    bool asPostgres_ = false;
    bool running_ = false;
    QString failure_;
    int databases_ = 0;
};

}  // namespace tr::test
