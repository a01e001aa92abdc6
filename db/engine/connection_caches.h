#pragma once
// What a connection keeps of the texts it has run: parsed batches with their translations, and
// the translations shared by texts that differ only in literal values.
#include <QHash>
#include <memory>
#include <set>
#include <vector>

#include "db/engine/ast.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/sqlite_connection.h"
#include "db/engine/translator.h"

namespace tr::engine {

// A translation and the tables whose columns it was made from: it holds while none changed.
struct CachedStep {
    Step step;
    Dependencies dependencies;
};

// A parsed batch and the translations of its statements.
struct CachedBatch {
    std::vector<ast::StatementPtr> statements;
    QHash<const ast::Statement*, CachedStep> steps;
};

// A statement translated with its literals as parameters.
struct ShapedStatement {
    CachedStep translation;
    std::vector<LiteralParameter> parameters;
};

// The texts of one shape. Literals whose values a translation reads stay in the text (`kept`),
// so those texts have one translation per set of such values.
struct Shape {
    bool parameterised = true;
    std::set<int> kept;  // scanned-literal indexes, in order
    QHash<QString, std::shared_ptr<ShapedStatement>> byKeptValues;
};

}  // namespace tr::engine
