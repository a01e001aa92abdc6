#include <QString>

#include "db/engine/sqlite_functions.h"

#include <sqlite3.h>

#include <QDateTime>
#include <QSet>
#include <QStringDecoder>
#include <QVarLengthArray>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"
#include "common/text/tsql_collation.h"
#include "db/engine/sqlite_connection.h"
#include "db/tsql/builtin_functions.h"

namespace tr::engine {

namespace {

QString textOf(sqlite3_value* v) {
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return p ? QString::fromUtf8(p, sqlite3_value_bytes(v)) : QString();
}

void resultText(sqlite3_context* ctx, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), utf8.size(), SQLITE_TRANSIENT);
}

int collate(void*, int aLength, const void* a, int bLength, const void* b) {
    return text::tsqlCompareUtf8(static_cast<const char*>(a), aLength, static_cast<const char*>(b), bLength);
}

QChar fold(QChar c) { return QChar(static_cast<char16_t>(text::foldForCompare(c.unicode()))); }

// A LIKE pattern read once into its elements, each matching exactly one character except `%`.
struct LikeElement {
    enum class Kind { Char, Any, Set, Rest };
    Kind kind = Kind::Char;
    QChar c;      // Char: the folded character
    QString set;  // Set: the folded characters; ranges kept as "a-z" triples
    bool negate = false;
};

std::vector<LikeElement> compileLike(const QString& p, QChar escape) {
    std::vector<LikeElement> out;
    out.reserve(p.size());
    for (qsizetype pi = 0; pi < p.size(); ++pi) {
        const QChar pc = p.at(pi);
        LikeElement e;
        if (!escape.isNull() && pc == escape && pi + 1 < p.size()) {
            e.c = fold(p.at(++pi));
        } else if (pc == u'%') {
            if (!out.empty() && out.back().kind == LikeElement::Kind::Rest) continue;
            e.kind = LikeElement::Kind::Rest;
        } else if (pc == u'_') {
            e.kind = LikeElement::Kind::Any;
        } else if (const qsizetype close = pc == u'[' ? p.indexOf(u']', pi + 1) : -1; close > pi + 1) {
            e.kind = LikeElement::Kind::Set;
            QString set = p.mid(pi + 1, close - pi - 1);
            e.negate = set.startsWith(u'^');
            if (e.negate) set.remove(0, 1);
            for (QChar& c : set) c = fold(c);
            e.set = set;
            pi = close;
        } else {
            e.c = fold(pc);
        }
        out.push_back(std::move(e));
    }
    return out;
}

bool elementMatches(const LikeElement& e, QChar folded) {
    switch (e.kind) {
        case LikeElement::Kind::Any:
            return true;
        case LikeElement::Kind::Char:
            return e.c == folded;
        case LikeElement::Kind::Set: {
            bool found = false;
            for (qsizetype k = 0; k < e.set.size() && !found; ++k) {
                if (k + 2 < e.set.size() && e.set.at(k + 1) == u'-') {
                    found = folded >= e.set.at(k) && folded <= e.set.at(k + 2);
                    k += 2;
                } else {
                    found = e.set.at(k) == folded;
                }
            }
            return found != e.negate;
        }
        case LikeElement::Kind::Rest:
            break;
    }
    return false;
}

// Whether the whole of s[from..] matches. Every element but `%` takes one character, so a
// mismatch only needs the latest `%` to take one character more: one way back, no recursion,
// and time in proportion to text times pattern at worst.
bool likeFrom(const std::vector<LikeElement>& p, QStringView s, qsizetype from) {
    size_t pi = 0;
    qsizetype si = from;
    size_t restAt = SIZE_MAX;  // the element after the latest %
    qsizetype restFrom = 0;    // where the text after that % starts now
    while (si < s.size()) {
        if (pi < p.size() && p[pi].kind == LikeElement::Kind::Rest) {
            restAt = ++pi;
            restFrom = si;
        } else if (pi < p.size() && elementMatches(p[pi], fold(s.at(si)))) {
            ++pi;
            ++si;
        } else if (restAt != SIZE_MAX) {
            pi = restAt;
            si = ++restFrom;
        } else {
            return false;
        }
    }
    while (pi < p.size() && p[pi].kind == LikeElement::Kind::Rest) ++pi;
    return pi == p.size();
}

// A pattern compiled once for a statement's run: SQLite keeps it with the pattern's argument
// while that stays the same, as a bound search word does over every row of a range.
struct CompiledLike {
    QChar escape;
    std::vector<LikeElement> elements;
};

// The text of a value in UTF-16, in a buffer of the thread's that the next call reuses: a Like
// over every row of a date range would otherwise allocate a string per row.
QStringView reusedText(sqlite3_value* v) {
    thread_local QVarLengthArray<QChar, 512> buffer;
    thread_local QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                                  QStringDecoder::Flag::ConvertInitialBom);
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
    const QByteArrayView bytes(p, p ? sqlite3_value_bytes(v) : 0);
    buffer.resize(decoder.requiredSpace(bytes.size()));
    const QChar* end = decoder.appendToBuffer(buffer.data(), bytes);
    return QStringView(buffer.data(), end - buffer.data());
}

void likeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    QChar escape;
    if (argc == 3) {
        const QString e = textOf(argv[2]);
        if (e.size() != 1) {
            sqlite3_result_error(ctx, "The escape of LIKE must be a single character", -1);
            return;
        }
        escape = e.at(0);
    }
    auto* compiled = static_cast<CompiledLike*>(sqlite3_get_auxdata(ctx, 0));
    if (!compiled || compiled->escape != escape) {
        compiled = new CompiledLike{escape, compileLike(textOf(argv[0]), escape)};
        sqlite3_set_auxdata(ctx, 0, compiled, [](void* p) { delete static_cast<CompiledLike*>(p); });
        // SQLite may have dropped it already (out of memory): ask again rather than keep a pointer.
        compiled = static_cast<CompiledLike*>(sqlite3_get_auxdata(ctx, 0));
        if (!compiled) {
            sqlite3_result_int(ctx, tsqlLike(textOf(argv[0]), textOf(argv[1]), escape) ? 1 : 0);
            return;
        }
    }
    sqlite3_result_int(ctx, likeFrom(compiled->elements, reusedText(argv[1]), 0) ? 1 : 0);
}

// A number as the server reads it from a value: integers stay integers, varchar is converted.
struct Number {
    bool integer = true;
    qint64 i = 0;
    double d = 0;
    double real() const { return integer ? static_cast<double>(i) : d; }
};

// Empty or blank text reads as 0; text that is no number gives nothing.
std::optional<Number> numberOf(sqlite3_value* v) {
    Number n;
    switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER:
            n.i = sqlite3_value_int64(v);
            return n;
        case SQLITE_FLOAT:
            n.integer = false;
            n.d = sqlite3_value_double(v);
            return n;
        default: {
            const QString t = textOf(v).trimmed();
            if (t.isEmpty()) return n;
            bool ok = false;
            n.i = t.toLongLong(&ok);
            if (ok) return n;
            n.integer = false;
            n.d = t.toDouble(&ok);
            if (ok && std::isfinite(n.d)) return n;
            return std::nullopt;
        }
    }
}

void conversionError(sqlite3_context* ctx, sqlite3_value* v, const char* type) {
    const QByteArray message =
        QStringLiteral("Conversion failed when converting the varchar value '%1' to data type %2.")
            .arg(textOf(v), QLatin1String(type))
            .toUtf8();
    sqlite3_result_error(ctx, message.constData(), message.size());
}

// The argument as a number, or the server's conversion error set on the context.
std::optional<Number> numberArg(sqlite3_context* ctx, sqlite3_value* v) {
    auto n = numberOf(v);
    if (!n) conversionError(ctx, v, "int");
    return n;
}

bool anyNull(sqlite3_value** argv, int count) {
    for (int i = 0; i < count; ++i) {
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return true;
    }
    return false;
}

void numFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (anyNull(argv, 1)) return sqlite3_result_null(ctx);
    const auto n = numberArg(ctx, argv[0]);
    if (!n) return;
    if (n->integer) sqlite3_result_int64(ctx, n->i);
    else sqlite3_result_double(ctx, n->d);
}

void intFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (anyNull(argv, 1)) return sqlite3_result_null(ctx);
    const auto n = numberArg(ctx, argv[0]);
    if (!n) return;
    // Text holding a decimal number does not convert to int on the server; a float truncates.
    if (!n->integer && sqlite3_value_type(argv[0]) == SQLITE_TEXT) return conversionError(ctx, argv[0], "int");
    sqlite3_result_int64(ctx, n->integer ? n->i : static_cast<qint64>(std::trunc(n->d)));
}

void addFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (anyNull(argv, 2)) return sqlite3_result_null(ctx);
    const int ta = sqlite3_value_type(argv[0]), tb = sqlite3_value_type(argv[1]);
    const bool textA = ta == SQLITE_TEXT || ta == SQLITE_BLOB, textB = tb == SQLITE_TEXT || tb == SQLITE_BLOB;
    if (textA && textB) return resultText(ctx, textOf(argv[0]) + textOf(argv[1]));
    const auto a = numberArg(ctx, argv[0]);
    if (!a) return;
    const auto b = numberArg(ctx, argv[1]);
    if (!b) return;
    if (a->integer && b->integer) return sqlite3_result_int64(ctx, a->i + b->i);
    sqlite3_result_double(ctx, a->real() + b->real());
}

void divideFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (anyNull(argv, 2)) return sqlite3_result_null(ctx);
    const auto a = numberArg(ctx, argv[0]);
    if (!a) return;
    const auto b = numberArg(ctx, argv[1]);
    if (!b) return;
    if (b->real() == 0) return sqlite3_result_error(ctx, "Divide by zero error encountered.", -1);
    if (a->integer && b->integer) return sqlite3_result_int64(ctx, a->i / b->i);
    sqlite3_result_double(ctx, a->real() / b->real());
}

// T-SQL's ^: the exclusive or of two integers (numbers are cut to integers as | and & cut them).
void xorFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (anyNull(argv, 2)) return sqlite3_result_null(ctx);
    const auto a = numberArg(ctx, argv[0]);
    if (!a) return;
    const auto b = numberArg(ctx, argv[1]);
    if (!b) return;
    const auto whole = [](const auto& n) {
        return n->integer ? n->i : static_cast<sqlite3_int64>(n->real());
    };
    sqlite3_result_int64(ctx, whole(a) ^ whole(b));
}

QString valueText(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER:
            return QString::number(sqlite3_value_int64(v));
        case SQLITE_FLOAT: {
            // A book written before non-finite numbers were refused may hold one; it reads as text.
            const double d = sqlite3_value_double(v);
            if (!std::isfinite(d)) return d > 0 ? QStringLiteral("Inf") : QStringLiteral("-Inf");
            return db::sqlNumber(d);
        }
        default:
            return textOf(v);
    }
}

void varcharFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    QString text = valueText(argv[0]);
    const int length = sqlite3_value_int(argv[1]);
    if (length >= 0 && text.size() > length) {
        if (sqlite3_value_type(argv[0]) != SQLITE_TEXT) {
            return resultText(ctx, QStringLiteral("*"));  // the server's overflow mark for numbers
        }
        text.truncate(length);
    }
    resultText(ctx, text);
}

// tsql_intkey(text): the integer a text names, for looking a row up by its key when the
// statement compares the key's text with it (`Cast(IDX As Varchar(20)) = Document`). Whenever
// the text equals the key's text under the collation, this gives the key; otherwise it may give
// another number or Null, and the text comparison beside it decides.
void intkeyFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const int type = sqlite3_value_type(argv[0]);
    if (type == SQLITE_NULL) return sqlite3_result_null(ctx);
    if (type == SQLITE_INTEGER) return sqlite3_result_int64(ctx, sqlite3_value_int64(argv[0]));
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
    const char* end = p + sqlite3_value_bytes(argv[0]);
    while (p < end && *p == ' ') ++p;
    while (end > p && end[-1] == ' ') --end;
    qint64 value = 0;
    const auto [stop, error] = std::from_chars(p, end, value);
    if (error != std::errc() || stop != end) return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, value);
}

// tsql_fit(value, width): a value on its way into a column. Text longer than the column's width
// (in characters) is refused as the server refuses it, unless what is past the width is blanks,
// which are dropped; a width of 0 marks a number column. A number that is not finite is refused
// everywhere: once stored, no reader could take it.
void fitFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3_value* v = argv[0];
    const qint64 width = sqlite3_value_int64(argv[1]);
    switch (sqlite3_value_type(v)) {
        case SQLITE_FLOAT:
            if (!std::isfinite(sqlite3_value_double(v)))
                return sqlite3_result_error(ctx, "Arithmetic overflow error converting expression to data type float.", -1);
            break;
        case SQLITE_TEXT: {
            const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
            const int bytes = sqlite3_value_bytes(v);
            if (width == 0) {
                // Text a number column converts: SQLite would read "1e309" as infinity.
                const QByteArray t = QByteArray(p, bytes).trimmed();
                double d = 0;
                const char* begin = t.constData() + (t.startsWith('-') || t.startsWith('+') ? 1 : 0);
                if (std::from_chars(begin, t.constData() + t.size(), d).ec == std::errc::result_out_of_range)
                    return sqlite3_result_error(ctx, "Arithmetic overflow error converting expression to data type float.", -1);
                break;
            }
            if (width < 0 || bytes <= width) break;  // a character takes at least one byte
            qint64 characters = 0;
            int cut = bytes;  // the byte where the character past the width starts
            for (int i = 0; i < bytes; ++i) {
                if ((static_cast<unsigned char>(p[i]) & 0xC0) == 0x80) continue;
                if (characters++ == width) cut = i;
            }
            if (characters <= width) break;
            for (int i = cut; i < bytes; ++i)
                if (p[i] != ' ') return sqlite3_result_error(ctx, "String or binary data would be truncated.", -1);
            return sqlite3_result_text(ctx, p, cut, SQLITE_TRANSIENT);
        }
        default:
            break;
    }
    sqlite3_result_value(ctx, v);
}

void substringFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString s = valueText(argv[0]);
    const qint64 start = sqlite3_value_int64(argv[1]);
    const qint64 length = sqlite3_value_int64(argv[2]);
    if (length < 0) return sqlite3_result_error(ctx, "Invalid length parameter passed to the substring function.", -1);
    const qint64 first = std::max<qint64>(start, 1);
    const qint64 last = start + length;  // exclusive, 1-based
    if (last <= first) return resultText(ctx, QString());
    resultText(ctx, s.mid(first - 1, last - first));
}

void rightFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const qint64 n = sqlite3_value_int64(argv[1]);
    if (n < 0) return sqlite3_result_error(ctx, "Invalid length parameter passed to the right function.", -1);
    resultText(ctx, valueText(argv[0]).right(n));
}

qsizetype foldedIndexOf(const QString& needle, const QString& hay, qsizetype from) {
    for (qsizetype i = from; i + needle.size() <= hay.size(); ++i) {
        bool same = true;
        for (qsizetype k = 0; k < needle.size() && same; ++k) same = fold(hay.at(i + k)) == fold(needle.at(k));
        if (same) return i;
    }
    return -1;
}

void charindexFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        return sqlite3_result_null(ctx);
    }
    const QString needle = valueText(argv[0]);
    const QString hay = valueText(argv[1]);
    const qint64 start = argc > 2 ? std::max<qint64>(sqlite3_value_int64(argv[2]), 1) : 1;
    if (needle.isEmpty()) return sqlite3_result_int(ctx, 0);
    sqlite3_result_int64(ctx, foldedIndexOf(needle, hay, start - 1) + 1);
}

void patindexFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        return sqlite3_result_null(ctx);
    }
    QString pattern = valueText(argv[0]);
    const QString s = valueText(argv[1]);
    const bool anyStart = pattern.startsWith(u'%');
    if (anyStart) pattern.remove(0, 1);
    const std::vector<LikeElement> compiled = compileLike(pattern, QChar());
    for (qsizetype i = 0; i <= (anyStart ? s.size() : 0); ++i) {
        if (likeFrom(compiled, s, i)) return sqlite3_result_int64(ctx, i + 1);
    }
    sqlite3_result_int(ctx, 0);
}

void replaceFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    for (int i = 0; i < 3; ++i) {
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    }
    const QString s = valueText(argv[0]), from = valueText(argv[1]), to = valueText(argv[2]);
    if (from.isEmpty()) return resultText(ctx, s);
    QString out;
    qsizetype pos = 0;
    for (;;) {
        const qsizetype hit = foldedIndexOf(from, s, pos);
        if (hit < 0) break;
        out += s.mid(pos, hit - pos) + to;
        pos = hit + from.size();
    }
    resultText(ctx, out + s.mid(pos));
}

void replicateFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        return sqlite3_result_null(ctx);
    }
    const qint64 n = sqlite3_value_int64(argv[1]);
    if (n < 0) return sqlite3_result_null(ctx);
    resultText(ctx, valueText(argv[0]).repeated(std::min<qint64>(n, 8000)));
}

void roundFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const double x = sqlite3_value_double(argv[0]);
    const int digits = sqlite3_value_int(argv[1]);
    const bool truncate = sqlite3_value_int(argv[2]) != 0;
    const double scale = std::pow(10.0, digits);
    double r = truncate ? std::trunc(x * scale) / scale : std::round(x * scale) / scale;
    if (sqlite3_value_type(argv[0]) == SQLITE_INTEGER) return sqlite3_result_int64(ctx, static_cast<qint64>(r));
    sqlite3_result_double(ctx, r);
}

template <double (*F)(double)>
void mathFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    if (sqlite3_value_type(argv[0]) == SQLITE_INTEGER) {
        const qint64 v = sqlite3_value_int64(argv[0]);
        if (F == static_cast<double (*)(double)>(std::floor) || F == static_cast<double (*)(double)>(std::ceil)) {
            return sqlite3_result_int64(ctx, v);
        }
    }
    sqlite3_result_double(ctx, F(sqlite3_value_double(argv[0])));
}

double signOf(double x) { return x > 0 ? 1 : (x < 0 ? -1 : 0); }

void getdateFunction(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")));
}

void isnumericFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const bool blankText = sqlite3_value_type(argv[0]) == SQLITE_TEXT && textOf(argv[0]).trimmed().isEmpty();
    sqlite3_result_int(ctx, !anyNull(argv, 1) && !blankText && numberOf(argv[0]) ? 1 : 0);
}

SqliteConnection* connectionOf(sqlite3_context* ctx) {
    return static_cast<SqliteConnection*>(sqlite3_user_data(ctx));
}

void colLengthFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const QVariant v = connectionOf(ctx)->columnLength(textOf(argv[0]), textOf(argv[1]));
    if (v.isNull()) return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, v.toLongLong());
}

void objectIdFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const QVariant v = connectionOf(ctx)->objectId(textOf(argv[0]));
    if (v.isNull()) return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, v.toLongLong());
}

void retiredFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3_result_int(ctx, connectionOf(ctx)->retired(QStringLiteral("tempdb"), textOf(argv[0])) ? 1 : 0);
}

void dbNameFunction(sqlite3_context* ctx, int, sqlite3_value**) { resultText(ctx, connectionOf(ctx)->databaseName()); }

void callFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    std::vector<QVariant> args;
    for (int i = 1; i < argc; ++i) {
        switch (sqlite3_value_type(argv[i])) {
            case SQLITE_NULL:
                args.emplace_back();
                break;
            case SQLITE_INTEGER:
                args.emplace_back(static_cast<qint64>(sqlite3_value_int64(argv[i])));
                break;
            case SQLITE_FLOAT:
                args.emplace_back(sqlite3_value_double(argv[i]));
                break;
            default:
                args.emplace_back(textOf(argv[i]));
        }
    }
    try {
        const QVariant v = connectionOf(ctx)->callFunction(textOf(argv[0]), args);
        if (v.isNull()) return sqlite3_result_null(ctx);
        switch (v.typeId()) {
            case QMetaType::Int:
            case QMetaType::LongLong:
                return sqlite3_result_int64(ctx, v.toLongLong());
            case QMetaType::Double:
                return sqlite3_result_double(ctx, v.toDouble());
            default:
                return resultText(ctx, v.toString());
        }
    } catch (const std::exception& e) {
        sqlite3_result_error(ctx, e.what(), -1);
    }
}

}  // namespace

bool tsqlFitText(QString& text, int width) {
    if (text.size() <= width) return true;  // a character takes one or two UTF-16 units
    qsizetype characters = 0, cut = text.size();
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i).isLowSurrogate()) continue;
        if (characters++ == width) cut = i;
    }
    if (characters <= width) return true;
    for (qsizetype i = cut; i < text.size(); ++i)
        if (text.at(i) != u' ') return false;
    text.truncate(cut);
    return true;
}

bool tsqlLike(const QString& pattern, const QString& text, QChar escape) {
    return likeFrom(compileLike(pattern, escape), text, 0);
}

void registerTsqlFunctions(sqlite3* db, SqliteConnection* connection) {
    const int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_collation(db, "TSQL", SQLITE_UTF8, nullptr, collate);
    // The translator's own helpers: T-SQL LIKE, conversions, `+` and `/` of unknown types,
    // fitting a value to its column, a text as a row key, a dropped table's mark, dbo.f(...).
    sqlite3_create_function(db, "like", 2, pure, nullptr, likeFunction, nullptr, nullptr);
    sqlite3_create_function(db, "like", 3, pure, nullptr, likeFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_num", 1, pure, nullptr, numFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_int", 1, pure, nullptr, intFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_add", 2, pure, nullptr, addFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_divide", 2, pure, nullptr, divideFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_xor", 2, pure, nullptr, xorFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_fit", 2, pure, nullptr, fitFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_varchar", 2, pure, nullptr, varcharFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_intkey", 1, pure, nullptr, intkeyFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_retired", 1, SQLITE_UTF8, connection, retiredFunction, nullptr, nullptr);
    sqlite3_create_function(db, "tsql_call", -1, SQLITE_UTF8, connection, callFunction, nullptr, nullptr);

    // The helpers the built-in functions' spellings call, as the dialect's table names them.
    struct Helper {
        const char* name;
        void (*function)(sqlite3_context*, int, sqlite3_value**);
        bool pure;  // the same arguments always give the same answer
    };
    static const Helper helpers[] = {
        {"tsql_substring", substringFunction, true}, {"tsql_right", rightFunction, true},
        {"tsql_charindex", charindexFunction, true}, {"tsql_patindex", patindexFunction, true},
        {"tsql_replace", replaceFunction, true},     {"tsql_replicate", replicateFunction, true},
        {"tsql_round", roundFunction, true},
        {"tsql_floor", mathFunction<std::floor>, true}, {"tsql_ceiling", mathFunction<std::ceil>, true},
        {"tsql_sign", mathFunction<signOf>, true},   {"tsql_isnumeric", isnumericFunction, true},
        // The clock and the connection's catalogue and database answer differently over time.
        {"tsql_getdate", getdateFunction, false},    {"tsql_col_length", colLengthFunction, false},
        {"tsql_object_id", objectIdFunction, false}, {"tsql_db_name", dbNameFunction, false},
    };
    // Each helper once, whatever number of built-ins call it (Left and SubString both call
    // tsql_substring); tsql_varchar is registered above already.
    QSet<QByteArray> registered{"tsql_varchar"};
    for (const tr::tsql::BuiltinFunction& f : tr::tsql::builtinFunctions()) {
        if (!f.runtime || registered.contains(f.runtime)) continue;
        registered.insert(f.runtime);
        const Helper* helper = nullptr;
        for (const Helper& h : helpers)
            if (qstrcmp(h.name, f.runtime) == 0) helper = &h;
        if (!helper) throw tr::db::DatabaseError(QStringLiteral("No runtime helper %1").arg(QLatin1String(f.runtime)));
        for (int n = f.runtimeMinArgs; n <= f.runtimeMaxArgs; ++n) {
            sqlite3_create_function(db, f.runtime, n, helper->pure ? pure : SQLITE_UTF8, connection,
                                    helper->function, nullptr, nullptr);
        }
    }
}

}  // namespace tr::engine
