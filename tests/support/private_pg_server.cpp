#include "tests/support/private_pg_server.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <cstdio>
#include <cstdlib>

namespace tr::test {

namespace {

constexpr int kPort = 5433;  // names the socket file only: the server listens on no TCP port

QString findBinDir() {
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QStringList found = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (auto it = found.crbegin(); it != found.crend(); ++it) {
        const QString bin = versions.filePath(*it + QStringLiteral("/bin"));
        if (QFile::exists(bin + QStringLiteral("/initdb"))) return bin;
    }
    return {};
}

QString socketIn(const QString& directory) {
    return directory + QStringLiteral("/.s.PGSQL.%1").arg(kPort);
}

PrivatePgServer* owned = nullptr;

void stopOwnedAtExit() {
    if (owned) owned->stopNow();
}

}  // namespace

PrivatePgServer::PrivatePgServer() : binDir_(findBinDir()), asPostgres_(geteuid() == 0) {}

PrivatePgServer& PrivatePgServer::instance() {
    static PrivatePgServer* server = [] {
        auto* s = new PrivatePgServer;
        const QString shared = qEnvironmentVariable("TR_PG_SERVER_DIR");
        if (!shared.isEmpty() && QFile::exists(socketIn(shared))) {
            s->base_ = shared;
            s->running_ = true;
            return s;
        }
        QByteArray pattern = QDir::tempPath().toUtf8() + "/tr-pg-XXXXXX";
        if (!mkdtemp(pattern.data())) {
            s->failure_ = QStringLiteral("no temporary directory for the server");
            return s;
        }
        owned = s;
        std::atexit(stopOwnedAtExit);
        s->start(QString::fromUtf8(pattern));
        return s;
    }();
    return *server;
}

bool PrivatePgServer::startIn(const QString& directory, QString* failure) {
    stopIn(directory);  // what an interrupted run left
    QDir().mkpath(directory);
    PrivatePgServer s;
    const bool started = s.start(directory);
    if (failure) *failure = s.failure_;
    return started;
}

void PrivatePgServer::stopIn(const QString& directory) {
    PrivatePgServer s;
    s.base_ = directory;
    s.running_ = QFile::exists(directory + QStringLiteral("/data/postmaster.pid"));
    s.stopNow();
}

bool PrivatePgServer::start(const QString& directory) {
    base_ = directory;
    if (binDir_.isEmpty()) {
        failure_ = QStringLiteral("PostgreSQL's server programs are not installed (run make setup)");
        return false;
    }
    if (asPostgres_ && !run(QStringLiteral("chown"), {QStringLiteral("postgres:"), base_})) return false;
    const QString data = base_ + QStringLiteral("/data");
    if (!run(binDir_ + QStringLiteral("/initdb"),
             {QStringLiteral("-D"), data, QStringLiteral("-A"), QStringLiteral("trust"),
              QStringLiteral("-U"), QStringLiteral("postgres"), QStringLiteral("-E"),
              QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8"), QStringLiteral("--no-sync")}))
        return false;
    // Tests need no durability across a machine crash: no flushes to disk. A benchmark measuring
    // what an office would see asks for the server's own durable settings (TR_PG_SERVER_DURABLE),
    // with the memory docs/server.md tells an office to give it.
    const bool durable = qEnvironmentVariableIsSet("TR_PG_SERVER_DURABLE");
    const QString options =
        QStringLiteral("-k %1 -c listen_addresses='' -p %2").arg(base_).arg(kPort) +
        (durable ? QStringLiteral(" -c shared_buffers=2GB -c work_mem=16MB")
                 : QStringLiteral(" -c fsync=off -c synchronous_commit=off -c full_page_writes=off"));
    if (!run(binDir_ + QStringLiteral("/pg_ctl"),
             {QStringLiteral("-D"), data, QStringLiteral("-l"), base_ + QStringLiteral("/log"),
              QStringLiteral("-w"), QStringLiteral("-o"), options, QStringLiteral("start")})) {
        QFile log(base_ + QStringLiteral("/log"));
        if (log.open(QIODevice::ReadOnly)) failure_ += QLatin1Char('\n') + QString::fromUtf8(log.readAll());
        return false;
    }
    running_ = true;
    return true;
}

bool PrivatePgServer::run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    if (asPostgres_ && program != QLatin1String("chown")) {
        QStringList all{QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--"), program};
        all += arguments;
        process.start(QStringLiteral("runuser"), all);
    } else {
        process.start(program, arguments);
    }
    if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit &&
        process.exitCode() == 0)
        return true;
    failure_ = QStringLiteral("%1 failed: %2").arg(program, QString::fromLocal8Bit(process.readAll()));
    return false;
}

QString PrivatePgServer::connectionText(const QString& database) const {
    return QStringLiteral("host=%1 port=%2 dbname=%3 user=postgres").arg(base_).arg(kPort).arg(database);
}

QString PrivatePgServer::createDatabase(const QString& prefix) {
    const QString name = QStringLiteral("%1_%2_%3").arg(prefix).arg(getpid()).arg(++databases_).toLower();
    if (!run(binDir_ + QStringLiteral("/createdb"),
             {QStringLiteral("-h"), base_, QStringLiteral("-p"), QString::number(kPort),
              QStringLiteral("-U"), QStringLiteral("postgres"), name}))
        return {};
    return name;
}

void PrivatePgServer::stopNow() {
    if (base_.isEmpty()) return;
    // Plain system() calls: this also runs at exit, after Qt's own objects may be gone.
    if (running_) {
        const QString command =
            QStringLiteral("%1'%2/pg_ctl' -D '%3/data' -m immediate -w stop >/dev/null 2>&1")
                .arg(asPostgres_ ? QStringLiteral("runuser -u postgres -- ") : QString(), binDir_, base_);
        if (std::system(command.toLocal8Bit().constData()) != 0)
            std::fprintf(stderr, "private server: not stopped\n");
        running_ = false;
    }
    const QString remove = QStringLiteral("rm -rf '%1'").arg(base_);
    if (std::system(remove.toLocal8Bit().constData()) != 0)
        std::fprintf(stderr, "private server: not removed\n");
    base_.clear();
}

}  // namespace tr::test
