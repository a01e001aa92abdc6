#pragma once
// Statements that differ only in their literal values share one translation: each string or
// number literal that is a value in an expression becomes a numbered SQLite parameter (?1, ?2, ...)
// and every run binds the values written in its own text.
#include <QSet>
#include <QString>
#include <QVariant>
#include <vector>

#include "db/engine/tokenizer.h"

namespace tr::engine {

struct LiteralParameter {
    int token = -1;       // index of the literal's token
    bool negate = false;  // written with a leading minus, which the parser folds into the number
};

// What the parser is asked to do with literals, and what it found.
struct LiteralParameters {
    QSet<int> kept;  // tokens whose values the translation reads: left in the text
    std::vector<LiteralParameter> found;  // found[k - 1] is ?k
};

// The placeholder a parameterised literal carries through the translator. It is not a valid
// number, so any rule that reads a literal's value takes its general path, and it is unlikely
// in real text, so one copied into the SQLite text shows that the value was used there.
QString placeholderText(int ordinal, bool real);
// The ordinals whose placeholders appear in `sql` (their values were used, not bound).
QList<int> placeholdersIn(const QString& sql);

// A key shared by the texts that differ only in the values of parameterised literals: every other
// token, and the literals in `kept`, appear with their text.
QString shapeKey(const std::vector<Token>& tokens, const QSet<int>& kept);
// The value a parameter binds, typed as SQLite would read the literal.
QVariant parameterValue(const Token& token, bool negate);
// Whether the text may be a single statement whose literals can be parameters.
bool mayParameterise(const std::vector<Token>& tokens);

}  // namespace tr::engine
