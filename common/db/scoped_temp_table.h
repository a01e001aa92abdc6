#pragma once
// A ## table that belongs to one scope: dropped when the scope is left by an error, dropped on
// request (drop(), whose errors reach the caller), or kept past the scope on request (keep()).
#include <QString>

#include "common/db/my_database.h"

namespace tr::db {

class ScopedTempTable {
  public:
    // `name` with its leading "##"; an empty name owns nothing.
    ScopedTempTable(MyDatabase& db, QString name);
    ~ScopedTempTable();
    ScopedTempTable(const ScopedTempTable&) = delete;
    ScopedTempTable& operator=(const ScopedTempTable&) = delete;

    const QString& name() const { return name_; }
    // Drops the table now (when it exists), as dropTempTable does.
    void drop();
    // The table outlives the scope.
    void keep() { owned_ = false; }

  private:
    MyDatabase& db_;
    QString name_;
    bool owned_;
};

// dropTempTable for destructors: a failure (a connection the host has already closed) leaves the
// table to die with the session instead of escaping.
void dropTempTableQuietly(MyDatabase& db, const QString& name) noexcept;

}  // namespace tr::db
