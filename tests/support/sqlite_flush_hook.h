#pragma once
// Calls a function after every disk flush SQLite makes in this process, with the flushed file's
// name, by putting a layer in front of SQLite's default file layer. Files opened before the hook
// is installed are not seen. For tests that count flushes and benchmarks that slow them.
namespace tr::testing {

using FlushHook = void (*)(const char* fileName);

void installSqliteFlushHook(FlushHook hook);
// SQLite's own layer is the default again.
void removeSqliteFlushHook();

}  // namespace tr::testing
