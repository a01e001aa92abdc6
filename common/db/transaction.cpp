#include "common/db/transaction.h"

namespace tr::db {

Transaction::Transaction(Connection& connection, const WriteTurn& turn) : connection_(connection) {
    connection_.setNextTurn(turn);
    connection_.execute(QStringLiteral("Begin Tran"));
}

Transaction::~Transaction() {
    if (!open_) return;
    try {
        connection_.execute(QStringLiteral("Rollback Tran"));
    } catch (...) {
        // The error that unwound us is the one to report. A rollback fails when the engine has
        // already undone the work itself (an inner transaction rolled back, a failed commit) or
        // when the connection is gone; either way nothing of the transaction remains.
    }
}

void Transaction::commit(Durability durability) {
    connection_.execute(durability == Durability::Delayed
                            ? QStringLiteral("Commit Tran With (Delayed_Durability = On)")
                            : QStringLiteral("Commit Tran"));
    open_ = false;
}

}  // namespace tr::db
