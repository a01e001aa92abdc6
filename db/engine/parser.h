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
// The same from the text's tokens; with `parameters`, literal values become parameters.
struct LiteralParameters;
std::vector<ast::StatementPtr> parseBatch(const QString& sql, std::vector<Token> tokens,
                                          LiteralParameters* parameters);

}  // namespace tr::engine
