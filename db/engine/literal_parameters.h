#pragma once
// Statements that differ only in their literal values share one translation: each string or
// number literal that is a value in an expression becomes a numbered SQLite parameter (?1, ?2, ...)
// and every run binds the values written in its own text.
#include <QSet>
#include <QString>
#include <QVariant>
#include <vector>

namespace tr::engine {

// A string or number literal as the text writes it.
struct ScannedLiteral {
    bool string = false;
    bool unicode = false;  // N'..'
    qsizetype start = 0, end = 0;
    QString value;  // a string's value, a number's text
};

// A text with its literals taken out: `key` is shared by every text that differs only in them.
struct ScannedText {
    QString key;
    std::vector<ScannedLiteral> literals;
    int firstPosition = 0;  // of the first token, 1-based
};

// Scans `sql` with the tokenizer's rules; false when the text cannot be shared (it holds a variable,
// the key's separator, or a lexical error that its own parse will report).
bool scanLiterals(const QString& sql, ScannedText& out);
// What stands for a literal in the key: its kind, and for a number whether it is decimal, since
// integer and decimal literals translate to different types; for a string whether it holds a
// whole number (isWholeNumberText), which a target may read as an integer when it is bound.
QString literalMark(const ScannedLiteral& literal);
// A string literal's value that is a whole number as the T-SQL conversion reads it, and as the
// translator reads a literal compared with a number: digits (at most 18, so any fits), an
// optional sign, blanks around.
bool isWholeNumberText(const QString& value);
// Whether the scanned text may be a single statement whose literals can be parameters.
bool mayParameterise(const ScannedText& text);

struct LiteralParameter {
    int token = -1;       // the literal's token, as the parser found it
    int literal = -1;     // its index among the scanned literals, whose values are bound
    bool negate = false;  // written with a leading minus, which the parser folds into the number
};

// What the parser is asked to do with literals, and what it found (token indexes).
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

// The value a parameter binds, typed as SQLite reads the literal.
QVariant parameterValue(const ScannedLiteral& literal, bool negate);

}  // namespace tr::engine
