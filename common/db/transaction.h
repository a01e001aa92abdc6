#pragma once
// One write transaction on a connection: "Begin Tran" on construction, commit() to keep the work,
// and a rollback when it goes out of scope uncommitted (an error unwinding), which never throws.
// Its turn says whom it waits for on a server (every writer unless told otherwise).
#include "common/db/connection.h"

namespace tr::db {

class Transaction {
  public:
    // A delayed commit is seen by every connection at once but becomes durable only with the
    // next flushed commit; for rows worth nothing after a crash (a screen's holds).
    enum class Durability { Full, Delayed };

    explicit Transaction(Connection& connection, const WriteTurn& turn = {});
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Raises DatabaseError when the commit fails; the transaction is then rolled back on unwind.
    void commit(Durability durability = Durability::Full);

  private:
    Connection& connection_;
    bool open_ = true;
};

}  // namespace tr::db
