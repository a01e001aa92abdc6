// Any text parses into statements or is refused with the engine's error, both with its literals
// kept and with them made parameters (the path of statements that share a translation).
#include "common/db/database_error.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/parser.h"
#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString sql = fuzzText(data, size);
    try {
        tr::engine::parseBatch(sql);
    } catch (const tr::db::DatabaseError&) {
    }
    try {
        tr::engine::ScannedText scanned;
        if (tr::engine::scanLiterals(sql, scanned) && tr::engine::mayParameterise(scanned)) {
            tr::engine::LiteralParameters parameters;
            tr::engine::parseBatch(sql, tr::engine::tokenize(sql), &parameters);
        }
    } catch (const tr::db::DatabaseError&) {
    }
    return 0;
}
