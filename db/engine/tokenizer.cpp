#include "db/engine/tokenizer.h"

#include "common/db/database_error.h"

namespace tr::engine {

using tr::db::DatabaseError;

bool Token::isWord(const char* word) const {
    return kind == Kind::Identifier && !quoted && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool Token::isOp(const char* op) const { return kind == Kind::Operator && text == QLatin1String(op); }

namespace {

bool isIdentStart(QChar c) { return c.isLetter() || c == u'_' || c == u'#' || c == u'@'; }
bool isIdentPart(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'#' || c == u'@' || c == u'$'; }

// The value of a quoted run starting after its opening mark: doubled closing marks are one mark.
// Returns false when the run does not close.
bool quotedRun(const QString& sql, qsizetype& i, QChar close, QString& value) {
    const qsizetype n = sql.size();
    for (;;) {
        const qsizetype end = sql.indexOf(close, i);
        if (end < 0) {
            i = n;
            return false;
        }
        value += QStringView(sql).mid(i, end - i);
        if (end + 1 < n && sql.at(end + 1) == close) {
            value += close;
            i = end + 2;
            continue;
        }
        i = end + 1;
        return true;
    }
}

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

}  // namespace

std::vector<Token> tokenize(const QString& sql) {
    std::vector<Token> tokens;
    const qsizetype n = sql.size();
    tokens.reserve(n / 5 + 2);
    qsizetype i = 0;
    auto error = [&](const QString& what, qsizetype at) {
        throw DatabaseError(what, sql, static_cast<int>(at + 1));
    };
    while (i < n) {
        const QChar c = sql.at(i);
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (c == u'-' && i + 1 < n && sql.at(i + 1) == u'-') {
            while (i < n && sql.at(i) != u'\n') ++i;
            continue;
        }
        if (c == u'/' && i + 1 < n && sql.at(i + 1) == u'*') {
            const qsizetype start = i;
            int depth = 0;
            while (i < n) {
                if (sql.at(i) == u'/' && i + 1 < n && sql.at(i + 1) == u'*') {
                    ++depth;
                    i += 2;
                } else if (sql.at(i) == u'*' && i + 1 < n && sql.at(i + 1) == u'/') {
                    i += 2;
                    if (--depth == 0) break;
                } else {
                    ++i;
                }
            }
            if (depth != 0) error(QStringLiteral("Missing end comment mark '*/'"), start);
            continue;
        }
        Token t;
        t.position = static_cast<int>(i + 1);
        const bool unicodeString = (c == u'N' || c == u'n') && i + 1 < n && sql.at(i + 1) == u'\'';
        if (c == u'\'' || unicodeString) {
            t.kind = Token::Kind::String;
            t.unicode = unicodeString;
            i += unicodeString ? 2 : 1;
            if (!quotedRun(sql, i, u'\'', t.text))
                error(QStringLiteral("Unclosed quotation mark after the character string"), t.position - 1);
        } else if (c == u'[' || c == u'"') {
            const QChar close = c == u'[' ? u']' : u'"';
            t.kind = Token::Kind::Identifier;
            t.quoted = true;
            ++i;
            if (!quotedRun(sql, i, close, t.text)) error(QStringLiteral("Unclosed quoted identifier"), t.position - 1);
        } else if (c.isDigit() || (c == u'.' && i + 1 < n && sql.at(i + 1).isDigit())) {
            t.kind = Token::Kind::Number;
            const qsizetype start = i;
            while (i < n && sql.at(i).isDigit()) ++i;
            if (i < n && sql.at(i) == u'.') {
                ++i;
                while (i < n && sql.at(i).isDigit()) ++i;
            }
            if (i < n && (sql.at(i) == u'e' || sql.at(i) == u'E')) {
                qsizetype j = i + 1;
                if (j < n && (sql.at(j) == u'+' || sql.at(j) == u'-')) ++j;
                if (j < n && sql.at(j).isDigit()) {
                    i = j;
                    while (i < n && sql.at(i).isDigit()) ++i;
                }
            }
            t.text = sql.mid(start, i - start);
        } else if (c == u'@' && !(i + 1 < n && sql.at(i + 1) == u'@')) {
            t.kind = Token::Kind::Variable;
            const qsizetype start = i++;
            while (i < n && isIdentPart(sql.at(i))) ++i;
            t.text = sql.mid(start, i - start);
        } else if (isIdentStart(c)) {
            t.kind = Token::Kind::Identifier;
            const qsizetype start = i++;
            while (i < n && isIdentPart(sql.at(i))) ++i;
            t.text = sql.mid(start, i - start);
        } else {
            t.kind = Token::Kind::Operator;
            bool pair = false;
            t.text = operatorText(c, i + 1 < n ? sql.at(i + 1) : QChar(), pair);
            if (t.text.isEmpty()) error(QStringLiteral("Incorrect syntax near '%1'").arg(c), i);
            i += pair ? 2 : 1;
        }
        tokens.push_back(std::move(t));
    }
    Token end;
    end.position = static_cast<int>(n + 1);
    tokens.push_back(end);
    return tokens;
}

}  // namespace tr::engine
