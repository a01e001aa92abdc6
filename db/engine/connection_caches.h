#pragma once
// What a connection keeps of the texts it has run: parsed batches with their translations, and
// the translations shared by texts that differ only in literal values (either backend's).
#include <QHash>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include "db/engine/ast.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/translator.h"

namespace tr::engine {

using Dependencies = std::vector<std::pair<QString, quint64>>;  // table key, its generation
using Bindings = std::vector<QVariant>;

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

// Texts run through a shared translation, with their values, so that a text run again is not
// scanned again.
struct ShapedText {
    std::shared_ptr<ShapedStatement> statement;
    Bindings values;
    int position = 0;
};

struct SharedTranslations {
    QHash<QString, std::shared_ptr<Shape>> shapes;
    QHash<QString, ShapedText> texts;
    void clear() {
        shapes.clear();
        texts.clear();
    }
};

// The values bound for a step, with each text written into a column of a width cut to it where
// only blanks are lost (`fitted` then holds the copy); false when one does not fit.
bool fitBoundTexts(const Step& step, const Bindings*& bindings, Bindings& fitted);

// Translates one statement with the connection's catalogue, recording the tables it read.
using TranslateStatement = std::function<Step(const ast::Statement&, Dependencies&)>;

// The translation `sql` shares with the texts of its shape (made when missing or stale, as
// `current` tells) and, in `values`, what its parameters bind; null when the text cannot share one.
std::shared_ptr<ShapedStatement> sharedTranslation(SharedTranslations& cache, const QString& sql,
                                                   const ScannedText& scanned, const TranslateStatement& translate,
                                                   const std::function<bool(const Dependencies&)>& current,
                                                   Bindings& values);

}  // namespace tr::engine
