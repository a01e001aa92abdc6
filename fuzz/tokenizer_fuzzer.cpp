// Any text either splits into tokens that lie inside it or is refused with the engine's error.
#include <cstdlib>

#include "common/db/database_error.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/tokenizer.h"
#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString sql = fuzzText(data, size);
    try {
        for (const auto& t : tr::engine::tokenize(sql))
            if (t.position < 1 || t.position > sql.size() + 1) std::abort();
    } catch (const tr::db::DatabaseError&) {
    }
    tr::engine::ScannedText scanned;
    if (tr::engine::scanLiterals(sql, scanned)) {
        for (const auto& l : scanned.literals)
            if (l.start < 0 || l.end > sql.size() || l.start > l.end) std::abort();
        tr::engine::mayParameterise(scanned);
    }
    return 0;
}
