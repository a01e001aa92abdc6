#include "common/db/scoped_temp_table.h"

#include <utility>

#include "common/db/query_helpers.h"

namespace tr::db {

ScopedTempTable::ScopedTempTable(MyDatabase& db, QString name)
    : db_(db), name_(std::move(name)), owned_(!name_.isEmpty()) {}

ScopedTempTable::~ScopedTempTable() {
    if (owned_) dropTempTableQuietly(db_, withoutHashes(name_));
}

void ScopedTempTable::drop() {
    if (!owned_) return;
    // Owned until it is gone: a drop that fails is tried again when the error leaves the scope.
    dropTempTable(db_, withoutHashes(name_));
    owned_ = false;
}

void dropTempTableQuietly(MyDatabase& db, const QString& name) noexcept {
    try {
        dropTempTable(db, name);
    } catch (...) {
    }
}

}  // namespace tr::db
