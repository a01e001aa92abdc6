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
    statements_ = 0;
    fired_ = false;
}

tr::db::ExecResult FailingConnection::execute(const QString& sql) {
    if (target_ != Target::None) {
        ++statements_;
        if (target_ == Target::Statement || isCommit(sql)) {
            if (--countdown_ == 0) {
                target_ = Target::None;
                fired_ = true;
                throw tr::db::DatabaseError(message(), sql);
            }
        }
    }
    return real_.execute(sql);
}

}  // namespace tr::test
