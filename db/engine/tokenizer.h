#pragma once
// Splits T-SQL text into tokens: identifiers (bare, [bracketed] or "quoted", # and ## names),
// string literals ('..' and N'..' with '' inside), numbers, @variables and operators. Comments are
// skipped. Positions are 1-based character offsets into the text, for error messages.
#include <QString>
#include <vector>

namespace tr::engine {

struct Token {
    enum class Kind { Identifier, String, Number, Variable, Operator, End };
    Kind kind = Kind::End;
    QString text;         // identifier name (unbracketed), string value, number text, operator
    int position = 0;     // 1-based
    bool quoted = false;  // identifier written [..] or ".." (never a keyword)
    bool unicode = false; // N'..'

    bool isWord(const char* word) const;  // an unquoted identifier equal to `word`, case-insensitive
    bool isOp(const char* op) const;
};

std::vector<Token> tokenize(const QString& sql);

}  // namespace tr::engine
