#include "common/db/scoped_temp_table.h"

#include <utility>

#include "common/db/query_helpers.h"

namespace tr::db {

namespace {

QString withoutHashes(const QString& name) {
    return name.startsWith(QLatin1String("##")) ? name.mid(2) : name;
}

}  // namespace

ScopedTempTable::ScopedTempTable(MyDatabase& db, QString name)
    : db_(db), name_(std::move(name)), owned_(!name_.isEmpty()) {}

ScopedTempTable::~ScopedTempTable() {
    if (owned_) dropTempTableQuietly(db_, withoutHashes(name_));
}

void ScopedTempTable::drop() {
    if (!owned_) return;
    owned_ = false;
    dropTempTable(db_, withoutHashes(name_));
}

void dropTempTableQuietly(MyDatabase& db, const QString& name) noexcept {
    try {
        dropTempTable(db, name);
    } catch (...) {
    }
}

}  // namespace tr::db
