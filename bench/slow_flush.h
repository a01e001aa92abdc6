#pragma once
// TR_BENCH_FLUSH_MS=<milliseconds>: every disk flush SQLite makes in this process (engine and
// hand-written side alike) takes that much longer, so the saving benchmarks can be read as on a
// disk whose flush costs what a real one's does. Unset or 0: flushes as the machine makes them.
namespace tr::bench {

// Puts the delay in front of SQLite's file layer; answers the delay in milliseconds.
double installSlowFlush();

}  // namespace tr::bench
