#include "db/engine/tokenizer.h"

#include <charconv>
#include <cmath>

#include "common/db/database_error.h"
#include "db/engine/literal_parameters.h"

namespace tr::engine {

using tr::db::DatabaseError;

bool Token::isWord(const char* word) const {
    return kind == Kind::Identifier && !quoted && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool Token::isOp(const char* op) const { return kind == Kind::Operator && text == QLatin1String(op); }

namespace {

// Only 0-9 make a number, as on the server: Persian or Arabic-Indic digits are refused rather
// than read as some other value.
bool isAsciiDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool isOtherDigit(QChar c) { return c.isDigit() && !isAsciiDigit(c); }

bool isIdentStart(QChar c) { return c.isLetter() || c == u'_' || c == u'#' || c == u'@'; }
bool isIdentPart(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'#' || c == u'@' || c == u'$'; }

const QString& operatorText(QChar c, QChar next, bool& pair) {
    static const QString pairs[] = {QStringLiteral("<>"), QStringLiteral("!="), QStringLiteral("<="),
                                    QStringLiteral(">="), QStringLiteral("!<"), QStringLiteral("!>"),
                                    QStringLiteral("||")};
    for (const QString& p : pairs) {
        if (p.at(0) == c && p.at(1) == next) {
            pair = true;
            return p;
        }
    }
    pair = false;
    static const QString singles[] = {
        QStringLiteral("+"), QStringLiteral("-"), QStringLiteral("*"), QStringLiteral("/"), QStringLiteral("%"),
        QStringLiteral("="), QStringLiteral("<"), QStringLiteral(">"), QStringLiteral("("), QStringLiteral(")"),
        QStringLiteral(","), QStringLiteral("."), QStringLiteral(";"), QStringLiteral("~"), QStringLiteral("&"),
        QStringLiteral("|"), QStringLiteral("^"), QStringLiteral("!")};
    for (const QString& p : singles)
        if (p.at(0) == c) return p;
    static const QString none;
    return none;
}

// One token's place in the text; the text itself is made only by whoever needs it.
struct Piece {
    Token::Kind kind = Token::Kind::End;
    qsizetype start = 0, end = 0;  // [start, end) in the text, delimiters included
    bool quoted = false;           // [..] or ".." identifier
    bool unicode = false;          // N'..'
    const QString* op = nullptr;   // Operator
};

// The lexical rules, shared by the tokenizer and the literal scanner so that both see the same
// tokens. Throws DatabaseError on an unclosed quote or comment or an unknown character.
class Lexer {
public:
    explicit Lexer(const QString& sql) : sql_(sql), n_(sql.size()) {}

    bool next(Piece& p) {
        skipBlanksAndComments();
        if (i_ >= n_) return false;
        const QChar c = sql_.at(i_);
        p = Piece{};
        p.start = i_;
        const bool unicodeString = (c == u'N' || c == u'n') && i_ + 1 < n_ && sql_.at(i_ + 1) == u'\'';
        if (c == u'\'' || unicodeString) {
            p.kind = Token::Kind::String;
            p.unicode = unicodeString;
            i_ += unicodeString ? 2 : 1;
            if (!closeQuoted(u'\'')) error(QStringLiteral("Unclosed quotation mark after the character string"), p.start);
        } else if (c == u'[' || c == u'"') {
            p.kind = Token::Kind::Identifier;
            p.quoted = true;
            ++i_;
            if (!closeQuoted(c == u'[' ? u']' : u'"')) error(QStringLiteral("Unclosed quoted identifier"), p.start);
        } else if (isAsciiDigit(c) || (c == u'.' && i_ + 1 < n_ && isAsciiDigit(sql_.at(i_ + 1)))) {
            p.kind = Token::Kind::Number;
            number(p.start);
        } else if (c == u'@' && !(i_ + 1 < n_ && sql_.at(i_ + 1) == u'@')) {
            p.kind = Token::Kind::Variable;
            ++i_;
            while (i_ < n_ && isIdentPart(sql_.at(i_))) ++i_;
        } else if (isIdentStart(c)) {
            p.kind = Token::Kind::Identifier;
            ++i_;
            while (i_ < n_ && isIdentPart(sql_.at(i_))) ++i_;
        } else {
            p.kind = Token::Kind::Operator;
            bool pair = false;
            p.op = &operatorText(c, i_ + 1 < n_ ? sql_.at(i_ + 1) : QChar(), pair);
            if (p.op->isEmpty()) {
                qsizetype end = i_ + 1;
                while (isOtherDigit(c) && end < n_ && sql_.at(end).isDigit()) ++end;
                error(QStringLiteral("Incorrect syntax near '%1'").arg(sql_.mid(i_, end - i_)), i_);
            }
            i_ += pair ? 2 : 1;
        }
        p.end = i_;
        return true;
    }

    // The value of a string or quoted identifier: the text inside its marks, doubled closing marks
    // read as one.
    QString quotedValue(const Piece& p) const {
        const qsizetype open = p.unicode ? 2 : 1;
        const QChar close = sql_.at(p.end - 1);
        QStringView inside = QStringView(sql_).mid(p.start + open, p.end - 1 - p.start - open);
        QString value;
        value.reserve(inside.size());
        for (qsizetype k = 0; k < inside.size(); ++k) {
            value += inside[k];
            if (inside[k] == close) ++k;  // the doubled mark
        }
        return value;
    }

    qsizetype size() const { return n_; }

private:
    [[noreturn]] void error(const QString& what, qsizetype at) const {
        throw DatabaseError(what, sql_, static_cast<int>(at + 1));
    }

    void skipBlanksAndComments() {
        while (i_ < n_) {
            const QChar c = sql_.at(i_);
            if (c.isSpace()) {
                ++i_;
            } else if (c == u'-' && i_ + 1 < n_ && sql_.at(i_ + 1) == u'-') {
                while (i_ < n_ && sql_.at(i_) != u'\n') ++i_;
            } else if (c == u'/' && i_ + 1 < n_ && sql_.at(i_ + 1) == u'*') {
                const qsizetype start = i_;
                int depth = 0;
                while (i_ < n_) {
                    if (sql_.at(i_) == u'/' && i_ + 1 < n_ && sql_.at(i_ + 1) == u'*') {
                        ++depth;
                        i_ += 2;
                    } else if (sql_.at(i_) == u'*' && i_ + 1 < n_ && sql_.at(i_ + 1) == u'/') {
                        i_ += 2;
                        if (--depth == 0) break;
                    } else {
                        ++i_;
                    }
                }
                if (depth != 0) error(QStringLiteral("Missing end comment mark '*/'"), start);
            } else {
                return;
            }
        }
    }

    bool closeQuoted(QChar close) {
        for (;;) {
            const qsizetype end = sql_.indexOf(close, i_);
            if (end < 0) {
                i_ = n_;
                return false;
            }
            if (end + 1 < n_ && sql_.at(end + 1) == close) {
                i_ = end + 2;
                continue;
            }
            i_ = end + 1;
            return true;
        }
    }

    void number(qsizetype start) {
        bool exponent = false;
        while (i_ < n_ && isAsciiDigit(sql_.at(i_))) ++i_;
        if (i_ < n_ && sql_.at(i_) == u'.') {
            ++i_;
            while (i_ < n_ && isAsciiDigit(sql_.at(i_))) ++i_;
        }
        if (i_ < n_ && (sql_.at(i_) == u'e' || sql_.at(i_) == u'E')) {
            qsizetype j = i_ + 1;
            if (j < n_ && (sql_.at(j) == u'+' || sql_.at(j) == u'-')) ++j;
            if (j < n_ && isAsciiDigit(sql_.at(j))) {
                exponent = true;
                i_ = j;
                while (i_ < n_ && isAsciiDigit(sql_.at(i_))) ++i_;
            }
        }
        if (i_ < n_ && isOtherDigit(sql_.at(i_))) error(QStringLiteral("Incorrect syntax near '%1'").arg(sql_.at(i_)), i_);
        // A literal beyond the range of a float would be stored as infinity, which no reader takes.
        // Only an exponent or some 300 digits can leave it.
        if (!exponent && i_ - start < 300) return;
        const QStringView text = QStringView(sql_).mid(start, i_ - start);
        const QByteArray digits = text.toLatin1();
        double value = 0;
        const auto read = std::from_chars(digits.constData(), digits.constData() + digits.size(), value);
        if (read.ec == std::errc::result_out_of_range) {
            error(QStringLiteral("The floating point value '%1' is out of the range of computer representation "
                                 "(8 bytes).")
                      .arg(text),
                  start);
        }
    }

    const QString& sql_;
    const qsizetype n_;
    qsizetype i_ = 0;
};

}  // namespace

std::vector<Token> tokenize(const QString& sql) {
    std::vector<Token> tokens;
    tokens.reserve(sql.size() / 5 + 2);
    Lexer lexer(sql);
    Piece p;
    while (lexer.next(p)) {
        Token t;
        t.kind = p.kind;
        t.position = static_cast<int>(p.start + 1);
        t.quoted = p.quoted;
        t.unicode = p.unicode;
        if (p.kind == Token::Kind::String || p.quoted) t.text = lexer.quotedValue(p);
        else if (p.kind == Token::Kind::Operator) t.text = *p.op;
        else t.text = sql.mid(p.start, p.end - p.start);
        tokens.push_back(std::move(t));
    }
    Token end;
    end.position = static_cast<int>(sql.size() + 1);
    tokens.push_back(end);
    return tokens;
}

bool scanLiterals(const QString& sql, ScannedText& out) {
    out.key.clear();
    out.literals.clear();
    out.firstPosition = 0;
    if (sql.contains(QChar(1))) return false;  // the key's separator
    out.key.reserve(sql.size() + 16);
    try {
        Lexer lexer(sql);
        Piece p;
        bool first = true;
        while (lexer.next(p)) {
            if (first) {
                out.firstPosition = static_cast<int>(p.start + 1);
                first = false;
            }
            if (p.kind == Token::Kind::Variable) return false;
            if (p.kind == Token::Kind::String || p.kind == Token::Kind::Number) {
                ScannedLiteral literal;
                literal.string = p.kind == Token::Kind::String;
                literal.unicode = p.unicode;
                literal.start = p.start;
                literal.end = p.end;
                literal.value = literal.string ? lexer.quotedValue(p) : sql.mid(p.start, p.end - p.start);
                out.literals.push_back(std::move(literal));
                out.key += literalMark(out.literals.back());
            } else {
                out.key += QStringView(sql).mid(p.start, p.end - p.start);
            }
            out.key += QChar(1);
        }
    } catch (const DatabaseError&) {
        return false;  // the tokenizer reports it
    }
    return true;
}

}  // namespace tr::engine
