#pragma once
// The text `--translate` shows for a batch: each statement's target SQL, and its calls, branches
// and transaction steps as comments, indented under the If that holds them. Either backend's.
#include <QString>
#include <functional>
#include <vector>

#include "db/engine/ast.h"
#include "db/engine/translator.h"

namespace tr::engine {

// `translate` gives a statement's step on the backend; `begin` is how that backend begins a
// transaction.
QString describeSteps(const std::vector<ast::StatementPtr>& statements,
                      const std::function<Step(const ast::Statement&)>& translate, const QString& begin);

}  // namespace tr::engine
