#include "tests/support/sqlite_flush_hook.h"

#include <sqlite3.h>

#include <array>
#include <map>
#include <string>

namespace tr::testing {
namespace {

sqlite3_vfs* real = nullptr;
sqlite3_vfs hooked{};
FlushHook hook = nullptr;
std::map<const sqlite3_file*, std::string> names;

// SQLite's own methods of each kind of file met (database, journal, log), each with a copy whose
// flush calls the hook.
struct Methods {
    const sqlite3_io_methods* real = nullptr;
    sqlite3_io_methods hooked{};
};
std::array<Methods, 8> methods;

int hookedSync(sqlite3_file* file, int flags) {
    for (const Methods& m : methods) {
        if (file->pMethods != &m.hooked) continue;
        const int rc = m.real->xSync(file, flags);
        if (hook) hook(names[file].c_str());
        return rc;
    }
    return SQLITE_IOERR_FSYNC;
}

int hookedClose(sqlite3_file* file) {
    for (const Methods& m : methods) {
        if (file->pMethods != &m.hooked) continue;
        names.erase(file);
        return m.real->xClose(file);
    }
    return SQLITE_IOERR_CLOSE;
}

int hookedOpen(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int rc = real->xOpen(real, name, file, flags, outFlags);
    if (rc != SQLITE_OK || !file->pMethods) return rc;
    for (Methods& m : methods) {
        if (!m.real) {
            m.real = file->pMethods;
            m.hooked = *m.real;
            m.hooked.xSync = hookedSync;
            m.hooked.xClose = hookedClose;
        }
        if (m.real == file->pMethods) {
            file->pMethods = &m.hooked;
            names[file] = name ? name : "";
            break;
        }
    }
    return rc;
}

}  // namespace

void installSqliteFlushHook(FlushHook onFlush) {
    hook = onFlush;
    if (!real) {
        // Kept for good: files opened through the layer go on using it after it is removed.
        real = sqlite3_vfs_find(nullptr);
        hooked = *real;
        hooked.zName = "tr_flush_hook";
        hooked.xOpen = hookedOpen;
    }
    sqlite3_vfs_register(&hooked, 1);
}

void removeSqliteFlushHook() {
    hook = nullptr;
    if (!real) return;
    sqlite3_vfs_register(real, 1);
    sqlite3_vfs_unregister(&hooked);
}

}  // namespace tr::testing
