#include "bench/slow_flush.h"

#include <QString>
#include <chrono>
#include <thread>

#include "tests/support/sqlite_flush_hook.h"

namespace tr::bench {
namespace {

std::chrono::microseconds delay{0};

void waitAfterFlush(const char*) { std::this_thread::sleep_for(delay); }

}  // namespace

double installSlowFlush() {
    const double ms = qEnvironmentVariable("TR_BENCH_FLUSH_MS").toDouble();
    if (ms <= 0) return 0;
    delay = std::chrono::microseconds(static_cast<long long>(ms * 1000));
    tr::testing::installSqliteFlushHook(&waitAfterFlush);
    return ms;
}

}  // namespace tr::bench
