#pragma once
// Recursive-descent parser for the T-SQL subset: a batch of statements (separated by ';' or
// simply following each other) into syntax trees. Anything outside the subset raises a
// DatabaseError naming the construct and its position.
#include <QString>
#include <vector>

#include "db/engine/ast.h"
#include "db/engine/tokenizer.h"

namespace tr::engine {

std::vector<ast::StatementPtr> parseBatch(const QString& sql);

}  // namespace tr::engine
