#include "bench/slow_flush.h"

#include <sqlite3.h>

#include <QString>
#include <array>
#include <chrono>
#include <thread>

namespace tr::bench {
namespace {

sqlite3_vfs* real = nullptr;
sqlite3_vfs slow{};
std::chrono::microseconds delay{0};

// SQLite's own methods of each kind of file (database, journal, log), each with a copy whose
// flush waits.
struct Methods {
    const sqlite3_io_methods* real = nullptr;
    sqlite3_io_methods slow{};
};
std::array<Methods, 8> methods;

int slowSync(sqlite3_file* file, int flags) {
    for (const Methods& m : methods) {
        if (file->pMethods != &m.slow) continue;
        const int rc = m.real->xSync(file, flags);
        std::this_thread::sleep_for(delay);
        return rc;
    }
    return SQLITE_IOERR_FSYNC;
}

int slowOpen(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int rc = real->xOpen(real, name, file, flags, outFlags);
    if (rc != SQLITE_OK || !file->pMethods) return rc;
    for (Methods& m : methods) {
        if (!m.real) {
            m.real = file->pMethods;
            m.slow = *m.real;
            m.slow.xSync = slowSync;
        }
        if (m.real == file->pMethods) {
            file->pMethods = &m.slow;
            break;
        }
    }
    return rc;
}

}  // namespace

double installSlowFlush() {
    const double ms = qEnvironmentVariable("TR_BENCH_FLUSH_MS").toDouble();
    if (ms <= 0 || real) return real ? delay.count() / 1000.0 : 0;
    delay = std::chrono::microseconds(static_cast<long long>(ms * 1000));
    real = sqlite3_vfs_find(nullptr);
    slow = *real;
    slow.zName = "tr_bench_slow_flush";
    slow.xOpen = slowOpen;
    sqlite3_vfs_register(&slow, 1);
    return ms;
}

}  // namespace tr::bench
