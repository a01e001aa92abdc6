#include "db/engine/literal_parameters.h"

namespace tr::engine {

namespace {

constexpr char16_t kOpen = 0xE000;   // private-use characters
constexpr char16_t kClose = 0xE001;
constexpr int kMaxParameters = 999;  // long literal lists are one-off texts: not worth a shape

}  // namespace

QString placeholderText(int ordinal, bool real) {
    QString text{QChar(kOpen)};
    text += QString::number(ordinal);
    if (real) text += QLatin1Char('.');
    text += QChar(kClose);
    return text;
}

QList<int> placeholdersIn(const QString& sql) {
    QList<int> ordinals;
    for (qsizetype i = sql.indexOf(QChar(kOpen)); i >= 0; i = sql.indexOf(QChar(kOpen), i + 1)) {
        int n = 0;
        for (qsizetype j = i + 1; j < sql.size() && sql[j].isDigit(); ++j)
            n = n * 10 + sql[j].digitValue();
        if (n > 0 && !ordinals.contains(n)) ordinals << n;
    }
    return ordinals;
}

namespace {

// A part of the key, closed by a mark ordinary text does not hold. A text holding either mark
// is written as mark 2, its length, ':' and the text instead, so no text can imitate a boundary.
void appendPart(QString& key, const QString& text) {
    if (text.contains(QChar(1)) || text.contains(QChar(2))) {
        key += QChar(2);
        key += QString::number(text.size());
        key += QLatin1Char(':');
        key += text;
        return;
    }
    key += text;
    key += QChar(1);
}

}  // namespace

QString shapeKey(const std::vector<Token>& tokens, const QSet<int>& kept) {
    QString key;
    qsizetype size = 0;
    for (const Token& t : tokens) size += t.text.size() + 2;
    key.reserve(size);
    for (int i = 0; i < int(tokens.size()); ++i) {
        const Token& t = tokens[i];
        switch (t.kind) {
            case Token::Kind::String:
                key += t.unicode ? QLatin1Char('N') : QLatin1Char('S');
                break;
            case Token::Kind::Number:
                key += QLatin1Char('#');
                break;
            case Token::Kind::Identifier:
                key += t.quoted ? QLatin1Char('Q') : QLatin1Char('I');
                break;
            case Token::Kind::Variable:
                key += QLatin1Char('@');
                break;
            case Token::Kind::Operator:
                key += QLatin1Char('O');
                break;
            case Token::Kind::End:
                continue;
        }
        const bool literal = t.kind == Token::Kind::String || t.kind == Token::Kind::Number;
        if (literal && !kept.contains(i)) {
            // Integer and decimal literals translate to different types.
            if (t.kind == Token::Kind::Number && (t.text.contains(QLatin1Char('.')) ||
                                                  t.text.contains(QLatin1Char('e'), Qt::CaseInsensitive)))
                key += QLatin1Char('.');
            key += QLatin1Char(';');
            continue;
        }
        appendPart(key, t.text);
    }
    return key;
}

QVariant parameterValue(const Token& token, bool negate) {
    if (token.kind == Token::Kind::String) return token.text;
    const QString text = negate ? QLatin1Char('-') + token.text : token.text;
    bool integer = false;
    const qlonglong n = text.toLongLong(&integer);
    if (integer) return n;
    return text.toDouble();
}

bool mayParameterise(const std::vector<Token>& tokens) {
    if (tokens.empty()) return false;
    const Token& first = tokens.front();
    if (!(first.isWord("SELECT") || first.isWord("INSERT") || first.isWord("UPDATE") ||
          first.isWord("DELETE")))
        return false;
    int literals = 0;
    for (const Token& t : tokens) {
        if (t.kind == Token::Kind::String || t.kind == Token::Kind::Number) ++literals;
        if (t.kind == Token::Kind::Variable) return false;
    }
    return literals > 0 && literals <= kMaxParameters;
}

}  // namespace tr::engine
