// Running a text through the translation it shares with texts that differ only in literal values.
#include <QHash>

#include "common/db/database_error.h"
#include "db/engine/connection_caches.h"
#include "db/engine/sqlite_connection.h"
#include "db/engine/sqlite_functions.h"
#include "db/engine/parser.h"
#include "db/engine/tokenizer.h"

namespace tr::engine {

using tr::db::DatabaseError;
using tr::db::ExecResult;

namespace {

constexpr int kMaxCachedShapes = 2000;
constexpr int kMaxCachedTexts = 2000;

// The text's translation with its literals as parameters, or null when it cannot have one;
// `structural` then says whether no text of its shape can.
std::shared_ptr<ShapedStatement> translateShaped(const QString& sql, const ScannedText& scanned, Shape& shape,
                                                 bool& structural, const TranslateStatement& translate) {
    structural = true;
    std::vector<Token> tokens;
    try {
        tokens = tokenize(sql);
    } catch (const DatabaseError&) {
        structural = false;
        return nullptr;
    }
    std::vector<int> literalTokens;  // token index of each scanned literal
    for (int i = 0; i < int(tokens.size()); ++i)
        if (tokens[i].kind == Token::Kind::String || tokens[i].kind == Token::Kind::Number) literalTokens.push_back(i);
    if (literalTokens.size() != scanned.literals.size()) return nullptr;
    for (int k = 0; k < int(literalTokens.size()); ++k)
        if (tokens[literalTokens[k]].text != scanned.literals[k].value) return nullptr;
    QHash<int, int> literalOfToken;
    for (int k = 0; k < int(literalTokens.size()); ++k) literalOfToken.insert(literalTokens[k], k);
    // A rule that reads a literal's value copies its placeholder into the text: that literal is
    // kept and the statement translated again.
    for (int attempt = 0; attempt < 4; ++attempt) {
        LiteralParameters parameters;
        for (int literal : shape.kept) parameters.kept.insert(literalTokens[literal]);
        std::vector<ast::StatementPtr> statements;
        auto made = std::make_shared<ShapedStatement>();
        try {
            statements = parseBatch(sql, tokens, &parameters);
            if (statements.size() != 1) return nullptr;
            made->translation.step = translate(*statements.front(), made->translation.dependencies);
        } catch (const DatabaseError&) {
            structural = false;  // the text's own translation reports the error, or shows there is none
            return nullptr;
        }
        const Step& step = made->translation.step;
        if (step.kind != Step::Kind::Sql) return nullptr;
        // Literals the parser read as part of the syntax (a Varchar length, an alias) are kept.
        QSet<int> bound;
        for (const LiteralParameter& p : parameters.found) bound.insert(p.token);
        for (int token : literalTokens)
            if (!bound.contains(token)) shape.kept.insert(literalOfToken.value(token));
        QList<int> used;
        for (const QString& text : step.sql) used += placeholdersIn(text);
        if (used.isEmpty()) {
            for (LiteralParameter p : parameters.found) {
                p.literal = literalOfToken.value(p.token, -1);
                made->parameters.push_back(p);
            }
            return made;
        }
        for (int ordinal : used) shape.kept.insert(literalOfToken.value(parameters.found[ordinal - 1].token));
        shape.byKeptValues.clear();
    }
    return nullptr;
}

QString keptValues(const Shape& shape, const ScannedText& scanned) {
    QString values;
    for (int i : shape.kept) values += scanned.literals[i].value + QChar(0);
    return values;
}

}  // namespace

std::shared_ptr<ShapedStatement> sharedTranslation(SharedTranslations& cache, const QString& sql,
                                                   const ScannedText& scanned, const TranslateStatement& translate,
                                                   const std::function<bool(const Dependencies&)>& current,
                                                   Bindings& values) {
    std::shared_ptr<Shape> shape = cache.shapes.value(scanned.key);
    if (!shape) {
        if (cache.shapes.size() >= kMaxCachedShapes) cache.shapes.clear();
        shape = std::make_shared<Shape>();
        cache.shapes.insert(scanned.key, shape);
    }
    if (!shape->parameterised) return nullptr;
    std::shared_ptr<ShapedStatement> statement = shape->byKeptValues.value(keptValues(*shape, scanned));
    if (!statement || !current(statement->translation.dependencies)) {
        bool structural = false;
        statement = translateShaped(sql, scanned, *shape, structural, translate);
        if (!statement) {
            if (structural) shape->parameterised = false;
            return nullptr;
        }
        shape->byKeptValues.insert(keptValues(*shape, scanned), statement);
    }
    values.clear();
    values.reserve(statement->parameters.size());
    for (const LiteralParameter& p : statement->parameters)
        values.push_back(parameterValue(scanned.literals[p.literal], p.negate));
    // A text is kept for running again unchanged only when it reads: a write's values (a new
    // row's serial, key and amounts) seldom come again, and keeping each would cost more than it saves.
    if (!statement->translation.step.writes) {
        if (cache.texts.size() >= kMaxCachedTexts) cache.texts.clear();
        cache.texts.insert(sql, ShapedText{statement, values, scanned.firstPosition});
    }
    return statement;
}

bool fitBoundTexts(const Step& step, const Bindings*& bindings, Bindings& fitted) {
    for (const auto& [ordinal, width] : step.boundWidths) {
        if (!bindings || ordinal > int(bindings->size())) continue;
        const QVariant& v = (*bindings)[ordinal - 1];
        if (v.typeId() != QMetaType::QString || v.toString().size() <= width) continue;
        QString text = v.toString();
        if (!tsqlFitText(text, width)) return false;
        if (fitted.empty()) fitted = *bindings;
        fitted[ordinal - 1] = text;
    }
    if (!fitted.empty()) bindings = &fitted;
    return true;
}

bool SqliteConnection::runShaped(const QString& sql, const ScannedText& scanned, ExecResult& result) {
    Bindings values;
    const std::shared_ptr<ShapedStatement> statement = sharedTranslation(
        shared_, sql, scanned,
        [&](const ast::Statement& s, Dependencies& dependencies) { return translateRecorded(s, sql, dependencies); },
        [&](const Dependencies& dependencies) { return current(dependencies); }, values);
    if (!statement) return false;
    runStatements(statement->translation.step, result, scanned.firstPosition, &values);
    return true;
}

}  // namespace tr::engine
