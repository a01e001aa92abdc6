#include "db/engine/literal_parameters.h"

namespace tr::engine {

namespace {

constexpr char16_t kOpen = 0xE000;   // private-use characters
constexpr char16_t kClose = 0xE001;
constexpr int kMaxParameters = 999;  // long literal lists are one-off texts: not worth a shape

bool isDecimal(const QString& number) {
    return number.contains(QLatin1Char('.')) || number.contains(QLatin1Char('e'), Qt::CaseInsensitive);
}

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

bool isWholeNumberText(const QString& value) {
    qsizetype begin = 0, end = value.size();
    while (begin < end && value[begin] == QLatin1Char(' ')) ++begin;
    while (end > begin && value[end - 1] == QLatin1Char(' ')) --end;
    if (begin < end && (value[begin] == QLatin1Char('+') || value[begin] == QLatin1Char('-'))) ++begin;
    if (begin == end || end - begin > 18) return false;
    for (qsizetype i = begin; i < end; ++i)
        if (value[i] < QLatin1Char('0') || value[i] > QLatin1Char('9')) return false;
    return true;
}

QString literalMark(const ScannedLiteral& literal) {
    // Mark 2 starts no other part of a key: identifiers and operators cannot hold it and a
    // quoted identifier starts with its bracket.
    if (literal.string) {
        QString mark = literal.unicode ? QStringLiteral("\u0002N") : QStringLiteral("\u0002S");
        if (isWholeNumberText(literal.value)) mark += QLatin1Char('0');
        return mark;
    }
    return isDecimal(literal.value) ? QStringLiteral("\u0002#.") : QStringLiteral("\u0002#");
}

bool mayParameterise(const ScannedText& text) {
    if (text.literals.empty() || text.literals.size() > kMaxParameters) return false;
    const QStringView first = QStringView(text.key).left(text.key.indexOf(QChar(1)));
    for (const char* word : {"SELECT", "INSERT", "UPDATE", "DELETE"})
        if (first.compare(QLatin1String(word), Qt::CaseInsensitive) == 0) return true;
    return false;
}

QVariant parameterValue(const ScannedLiteral& literal, bool negate) {
    if (literal.string) return literal.value;
    const QString text = negate ? QLatin1Char('-') + literal.value : literal.value;
    bool integer = false;
    const qlonglong n = text.toLongLong(&integer);
    if (integer) return n;
    return text.toDouble();
}

}  // namespace tr::engine
