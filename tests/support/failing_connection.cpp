#include "tests/support/failing_connection.h"

#include "common/db/database_error.h"

namespace tr::test {

namespace {

bool isCommit(const QString& sql) {
    return sql.trimmed().startsWith(QLatin1String("Commit"), Qt::CaseInsensitive);
}

}  // namespace

QString FailingConnection::message() {
    return QStringLiteral("Injected failure: the connection to the server was lost.");
}

void FailingConnection::arm(Target target, int n) {
    target_ = target;
    countdown_ = n;
    fired_ = false;
}

tr::db::ExecResult FailingConnection::execute(const QString& sql) {
    const bool counted =
        target_ == Target::Statement || (target_ == Target::Commit && isCommit(sql));
    if (counted && --countdown_ == 0) {
        target_ = Target::None;
        fired_ = true;
        throw tr::db::DatabaseError(message(), sql);
    }
    return real_.execute(sql);
}

}  // namespace tr::test
