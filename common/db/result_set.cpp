#include "common/db/result_set.h"

namespace tr::db {

int ResultSet::columnIndex(const QString& name) const {
    for (int i = 0; i < columns.size(); ++i) {
        if (columns[i].compare(name, Qt::CaseInsensitive) == 0) return i;
    }
    return -1;
}

}  // namespace tr::db
