#include "db/engine/translator.h"

#include <QHash>
#include <algorithm>
#include <functional>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"
#include "db/engine/limits.h"
#include "db/engine/literal_parameters.h"
#include "db/engine/sql_identifiers.h"
#include "db/tsql/builtin_functions.h"

namespace tr::engine {

using namespace ast;
using tr::db::DatabaseError;

SqlType typeOfDeclaration(const QString& declaredType) {
    const QString t = declaredType.toUpper();
    if (t.isEmpty()) return SqlType::Unknown;
    if (t.contains(QLatin1String("CHAR")) || t.contains(QLatin1String("TEXT")) ||
        t.contains(QLatin1String("CLOB")) || t.contains(QLatin1String("DATE")) ||
        t.contains(QLatin1String("TIME"))) {
        return SqlType::Text;
    }
    if (t.contains(QLatin1String("INT")) || t == QLatin1String("BIT")) return SqlType::Integer;
    if (t.contains(QLatin1String("REAL")) || t.contains(QLatin1String("FLOA")) ||
        t.contains(QLatin1String("DOUB")) || t.contains(QLatin1String("MONEY")) ||
        t.contains(QLatin1String("DEC")) || t.contains(QLatin1String("NUM"))) {
        return SqlType::Real;
    }
    return SqlType::Unknown;
}

namespace {

bool isNumeric(SqlType t) { return t == SqlType::Integer || t == SqlType::Real; }

QString quoteText(const QString& value) {
    QString v = value;
    v.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + v + QLatin1Char('\'');
}

struct Out {
    QString sql;
    SqlType type = SqlType::Unknown;
    bool simple = true;       // needs no parentheses as an operand
    QString declaredType;     // of a bare column reference or a cast
    QString columnName;       // of a bare column reference
    QString table;            // how a catalogued column's table is written, for a bare reference
    bool columnRef = false;
    bool literal = false;     // a number or string written in the text
    bool rowKey = false;      // a bare reference to a table's Identity column (its row key)
    int parameter = 0;        // > 0: that literal, bound as ?parameter
    // The operators of a left-to-right chain at the top ("+" for + and -, "*" for * / %, "||",
    // "AND", "OR"): the next term of the same chain needs no parentheses around it, which keeps a
    // long chain within the depth of SQLite's parser.
    const char* chain = nullptr;
};

struct ScopeTable {
    QString alias;   // how the statement refers to it (alias or table name)
    QString emitted; // how SQLite refers to it
    std::vector<ColumnInfo> columns;
    bool known = false;
};

struct Scope {
    std::vector<ScopeTable> tables;
    const Scope* outer = nullptr;
};

struct ResolvedTable {
    QString schema;   // SQLite schema, empty for unqualified main tables
    QString name;     // table name
    QString sql;      // schema-qualified SQLite reference
    std::vector<ColumnInfo> columns;
};

// Whether a write touches only ## or # tables, so it needs no lock on a database file; a
// statement calling a procedure may write anywhere.
bool writesOnlyTemp(const QString& schema, const QStringList& sql) {
    if (schema != QLatin1String("tempdb") && schema != QLatin1String("temp")) return false;
    for (const QString& text : sql)
        if (text.contains(QLatin1String("tsql_call("))) return false;
    return true;
}

class Translator {
public:
    Translator(Catalog& catalog, const QString& source, const TargetWriter& writer)
        : catalog_(catalog), source_(source), w_(writer) {}

    bool touchesBooks() const { return touchesBooks_; }
    bool callsFunctions() const { return callsFunctions_; }

    [[noreturn]] void fail(const QString& message, int position) const {
        throw DatabaseError(message, source_, position);
    }
    [[noreturn]] void unsupported(const QString& construct, int position) const {
        fail(QStringLiteral("The construct '%1' is not supported by the embedded engine").arg(construct), position);
    }

    // One level deeper in the walk for as long as it lives: the parser bounds the tree, and this
    // bounds the walk itself, whatever tree it is given.
    struct Deeper {
        Translator& t;
        Deeper(Translator& translator, int position) : t(translator) {
            if (t.depth_ >= kMaxExpressionDepth) t.fail(nestedTooDeeplyMessage(), position);
            ++t.depth_;
        }
        ~Deeper() { --t.depth_; }
        Deeper(const Deeper&) = delete;
        Deeper& operator=(const Deeper&) = delete;
    };

    // ---- names -------------------------------------------------------------------------------

    // `creating`: the statement makes the table, so a dropped one of that name is no obstacle.
    ResolvedTable resolveTable(const QStringList& parts, int position, bool creating = false) {
        ResolvedTable r;
        if (parts.isEmpty() || parts.size() > 3) fail(QStringLiteral("Invalid object name"), position);
        r.name = parts.last();
        const QString database = parts.size() == 3 ? parts.first() : QString();
        if (r.name.startsWith(QLatin1String("##"))) {
            r.schema = QStringLiteral("tempdb");
        } else if (r.name.startsWith(QLatin1Char('#'))) {
            r.schema = w_.localTempSchema();
        } else {
            r.schema = catalog_.schemaForDatabase(database, position);
        }
        const bool tempdb = r.schema == QLatin1String("tempdb");
        const QString view = w_.catalogView(r.name.toLower(), tempdb);
        if (!view.isEmpty() && (tempdb || database.isEmpty() ||
                                r.schema == catalog_.schemaForDatabase(QString(), position))) {
            r.sql = view;
            r.columns = {{QStringLiteral("name"), QStringLiteral("VARCHAR"), SqlType::Text},
                         {QStringLiteral("id"), QStringLiteral("INT"), SqlType::Integer},
                         {QStringLiteral("xtype"), QStringLiteral("VARCHAR"), SqlType::Text},
                         {QStringLiteral("type"), QStringLiteral("VARCHAR"), SqlType::Text}};
            if (r.name.toLower() == QLatin1String("syscolumns")) {
                r.columns = {{QStringLiteral("id"), QStringLiteral("INT"), SqlType::Integer},
                             {QStringLiteral("name"), QStringLiteral("VARCHAR"), SqlType::Text},
                             {QStringLiteral("colid"), QStringLiteral("INT"), SqlType::Integer},
                             {QStringLiteral("length"), QStringLiteral("INT"), SqlType::Integer}};
            }
            return r;
        }
        r.sql = w_.name(r.schema) + QLatin1Char('.') + w_.name(r.name);
        if (r.schema != QLatin1String("tempdb") && r.schema != w_.localTempSchema()) touchesBooks_ = true;
        r.columns = catalog_.columns(r.schema, r.name);
        if (!creating && catalog_.retired(r.schema, r.name))
            fail(QStringLiteral("Invalid object name '%1'.").arg(parts.join(QLatin1Char('.'))), position);
        return r;
    }

    // ---- select ------------------------------------------------------------------------------

    struct SelectOut {
        QString sql;
        std::vector<ColumnInfo> columns;  // result columns with types (for derived tables, Into)
        std::vector<QString> expressions; // each result column's expression (for Into)
        std::vector<bool> plainColumns;   // the expression is a bare column reference
        bool complete = true;             // every result column is known (no unexpanded *)
    };

    void addFromItem(const FromItem& item, Scope& scope, QString& sql) {
        sql += tableSource(item.table, scope);
        for (const Join& join : item.joins) {
            sql += join.kind == QLatin1String("INNER") ? QStringLiteral(" JOIN ")
                   : join.kind == QLatin1String("CROSS") ? QStringLiteral(" CROSS JOIN ")
                                                         : QLatin1Char(' ') + join.kind + QStringLiteral(" JOIN ");
            sql += tableSource(join.table, scope);
            if (join.on) sql += QStringLiteral(" ON ") + expr(*join.on, scope).sql;
        }
    }

    QString tableSource(const TableRef& ref, Scope& scope) {
        ScopeTable table;
        QString sql;
        if (ref.derived) {
            SelectOut inner = select(*ref.derived, &scope, false);
            table.alias = ref.alias;
            table.columns = inner.columns;
            table.known = true;
            sql = QLatin1Char('(') + inner.sql + QStringLiteral(") AS ") + w_.name(ref.alias);
            table.emitted = w_.name(ref.alias);
        } else {
            ResolvedTable resolved = resolveTable(ref.parts, ref.position);
            table.alias = ref.alias.isEmpty() ? resolved.name : ref.alias;
            table.columns = resolved.columns;
            table.known = !resolved.columns.empty();
            table.emitted = w_.name(table.alias);
            sql = resolved.sql + QStringLiteral(" AS ") + w_.name(table.alias);
        }
        scope.tables.push_back(std::move(table));
        return sql;
    }

    // `targets`: the columns an Insert writes the result into, whose values are fitted to them.
    // `trimFirst`: the first result column, unless a number, is trimmed of blanks, for a text
    // In (Select ...).
    SelectOut select(const Select& s, const Scope* outer, bool forInto,
                     const std::vector<ColumnInfo>* targets = nullptr, bool trimFirst = false) {
        const Deeper deeper(*this, s.position);
        // The statement's own result names its columns as they are spelled (see resultName).
        const bool naming = namingResult_;
        namingResult_ = false;
        Scope scope;
        scope.outer = outer;
        QString from;
        for (size_t i = 0; i < s.from.size(); ++i) {
            if (i > 0) from += QStringLiteral(", ");
            addFromItem(s.from[i], scope, from);
        }
        SelectOut out;
        QStringList items;
        for (const SelectItem& item : s.items) {
            if (item.expr->kind == Expr::Kind::Star) {
                const bool first = items.isEmpty();
                const size_t known = out.columns.size();
                expandStar(*item.expr, scope, items, out, targets, naming);
                if (first && trimFirst && out.columns.size() > known && !isNumeric(out.columns[known].type))
                    items.first() = w_.trimBlanks(items.first());
                continue;
            }
            if (item.expr->kind == Expr::Kind::Identity) {
                if (!forInto) unsupported(QStringLiteral("IDENTITY() outside SELECT ... INTO"), item.expr->position);
                QString order;
                QStringList orderParts;
                for (const OrderItem& o : s.orderBy) {
                    const Out key = expr(*o.expr, scope);
                    const QString text = key.type == SqlType::Text ? w_.orderKey(key.sql) : QString();
                    orderParts << (text.isEmpty() ? key.sql : text) + (o.descending ? QStringLiteral(" DESC") : QString());
                }
                if (!orderParts.isEmpty()) order = QStringLiteral("ORDER BY ") + orderParts.join(QStringLiteral(", "));
                QString seed = item.expr->args.empty() ? QStringLiteral("1") : item.expr->args[0]->text;
                QString step = item.expr->args.size() > 1 ? item.expr->args[1]->text : QStringLiteral("1");
                const QString e = QStringLiteral("(row_number() OVER (%1) - 1) * %2 + %3").arg(order, step, seed);
                if (item.alias.isEmpty()) fail(QStringLiteral("An IDENTITY column needs a name"), item.expr->position);
                items << e + QStringLiteral(" AS ") + w_.name(item.alias);
                out.columns.push_back({item.alias, QStringLiteral("INTEGER"), SqlType::Integer});
                out.expressions.push_back(e);
                out.plainColumns.push_back(false);
                continue;
            }
            Out e = expr(*item.expr, scope);
            if (trimFirst && items.isEmpty() && !isNumeric(e.type)) e.sql = w_.trimBlanks(e.sql);
            QString name = item.alias;
            if (name.isEmpty() && e.columnRef) name = e.columnName;
            if (forInto && name.isEmpty()) {
                fail(QStringLiteral("An object or column name is missing or empty. For SELECT INTO statements, "
                                    "verify each column has a name"),
                     item.expr->position);
            }
            const QString value = targets && out.columns.size() < targets->size()
                                      ? fitted(e, (*targets)[out.columns.size()])
                                      : e.sql;
            // A column the statement leaves unnamed is named with its expression as written,
            // which is what SQLite names it; with the values its literals have, so those are kept
            // in the text (their placeholders have it translated again with them written in).
            QString spelling = name;
            if (spelling.isEmpty()) {
                spelling = e.sql;
                for (const int p : parametersOf(*item.expr)) spelling += placeholderText(p, false);
            }
            const QString spelled = naming ? w_.resultName(spelling) : QString();
            items << (!spelled.isEmpty() ? value + QStringLiteral(" AS ") + spelled
                      : item.alias.isEmpty() ? value
                                             : value + QStringLiteral(" AS ") + w_.name(item.alias));
            QString declared = e.declaredType;
            if (declared.isEmpty()) {
                declared = e.type == SqlType::Text      ? QStringLiteral("VARCHAR COLLATE TSQL")
                           : e.type == SqlType::Integer ? QStringLiteral("INTEGER")
                           : e.type == SqlType::Real    ? QStringLiteral("FLOAT")
                                                        : QString();
            }
            out.columns.push_back({name, declared, e.type});
            out.expressions.push_back(e.sql);
            out.plainColumns.push_back(e.columnRef);
        }
        QString sql = QStringLiteral("SELECT ");
        if (s.distinct) sql += QStringLiteral("DISTINCT ");
        sql += items.join(QStringLiteral(", "));
        if (!from.isEmpty()) sql += QStringLiteral(" FROM ") + from;
        if (s.where) sql += QStringLiteral(" WHERE ") + expr(*s.where, scope).sql;
        if (!s.groupBy.empty()) {
            QStringList groups;
            for (const ExprPtr& g : s.groupBy) groups << expr(*g, scope).sql;
            sql += QStringLiteral(" GROUP BY ") + groups.join(QStringLiteral(", "));
        }
        if (s.having) sql += QStringLiteral(" HAVING ") + expr(*s.having, scope).sql;
        if (s.unionNext) {
            SelectOut next = select(*s.unionNext, outer, false, targets, trimFirst);
            sql += (s.unionAll ? QStringLiteral(" UNION ALL ") : QStringLiteral(" UNION ")) + next.sql;
        }
        if (!s.orderBy.empty()) {
            QStringList orders;
            for (const OrderItem& o : s.orderBy)
                orders << orderItem(o, scope, out, s.unionNext != nullptr, s.distinct, naming);
            sql += QStringLiteral(" ORDER BY ") + orders.join(QStringLiteral(", "));
        }
        if (s.top) sql += QStringLiteral(" LIMIT ") + expr(*s.top, scope).sql;
        out.sql = sql;
        return out;
    }

    // A compound or distinct select may be ordered only by what it returns, never by a key the
    // target makes of it (see TargetWriter::orderKey): its text then sorts by the collation.
    QString orderItem(const OrderItem& o, Scope& scope, const SelectOut& out, bool compound, bool distinct,
                      bool naming) {
        const QString dir = o.descending ? QStringLiteral(" DESC") : QString();
        const auto key = [&](const QString& sql, SqlType type) {
            return type == SqlType::Text && !compound && !distinct ? w_.orderKey(sql) : QString();
        };
        if (o.expr->kind == Expr::Kind::Column && o.expr->parts.size() == 1) {
            // A name of the select list wins over the columns of the tables, as on the server:
            // "Order By SanadDate" sorts by the SanadDate the select returns.
            for (size_t i = 0; i < out.columns.size(); ++i) {
                if (out.columns[i].name.compare(o.expr->parts.first(), Qt::CaseInsensitive) != 0) continue;
                if (compound || i >= out.expressions.size()) {
                    const QString spelled = naming ? w_.resultName(out.columns[i].name) : QString();
                    return (spelled.isEmpty() ? w_.name(out.columns[i].name) : spelled) + dir;
                }
                const QString& e = out.expressions[i];
                if (const QString k = key(e, out.columns[i].type); !k.isEmpty()) return k + dir;
                const bool collate = out.columns[i].type == SqlType::Text && !out.plainColumns[i];
                return (collate ? QLatin1Char('(') + e + QStringLiteral(") COLLATE TSQL") : e) + dir;
            }
        }
        if (o.expr->kind == Expr::Kind::Number) {
            // A position names a result column: ordered as that column's expression would be.
            bool ok = false;
            const qsizetype at = o.expr->text.toLongLong(&ok) - 1;
            if (ok && out.complete && at >= 0 && at < qsizetype(out.expressions.size()))
                if (const QString k = key(out.expressions[at], out.columns[at].type); !k.isEmpty()) return k + dir;
            return o.expr->text + dir;
        }
        Out e = expr(*o.expr, scope);
        if (const QString k = key(e.sql, e.type); !k.isEmpty()) return k + dir;
        if (e.type == SqlType::Text && !e.columnRef) return wrap(e) + QStringLiteral(" COLLATE TSQL") + dir;
        return e.sql + dir;
    }

    // `targets` is dropped at a table whose columns are not known: the values after it can no
    // longer be matched with their columns.
    void expandStar(const Expr& star, Scope& scope, QStringList& items, SelectOut& out,
                    const std::vector<ColumnInfo>*& targets, bool naming) {
        bool any = false;
        for (const ScopeTable& t : scope.tables) {
            if (!star.parts.isEmpty() && t.alias.compare(star.parts.last(), Qt::CaseInsensitive) != 0) continue;
            any = true;
            if (!t.known) {
                // Unknown columns (a table made earlier in the same batch): let SQLite expand.
                items << t.emitted + QStringLiteral(".*");
                out.complete = false;
                targets = nullptr;
                continue;
            }
            for (const ColumnInfo& c : t.columns) {
                const QString e = t.emitted + QLatin1Char('.') + w_.name(c.name);
                const QString spelled = naming ? w_.resultName(c.name) : QString();
                items << (targets && out.columns.size() < targets->size()
                              ? fitted(make(e, c.type, true), (*targets)[out.columns.size()])
                              : spelled.isEmpty() ? e : e + QStringLiteral(" AS ") + spelled);
                out.columns.push_back(c);
                out.expressions.push_back(e);
                out.plainColumns.push_back(true);
            }
        }
        if (!any && scope.tables.empty()) fail(QStringLiteral("Must specify table to select from"), star.position);
        if (!any) fail(QStringLiteral("The object name '%1' is not valid here").arg(star.parts.join('.')), star.position);
    }

    // The width of a text column declared with one (Varchar(n), Char(n)...); -1 otherwise.
    static int textWidth(const QString& declaredType) {
        if (!declaredType.contains(QLatin1String("CHAR"), Qt::CaseInsensitive)) return -1;
        const qsizetype open = declaredType.indexOf(QLatin1Char('('));
        const qsizetype close = declaredType.indexOf(QLatin1Char(')'), open + 1);
        if (open < 0 || close < 0) return -1;
        bool ok = false;
        const int width = declaredType.mid(open + 1, close - open - 1).trimmed().toInt(&ok);
        return ok && width > 0 ? width : -1;
    }

    // A value written into `column`, checked at run time where its type leaves a doubt: text too
    // wide for the column, or a number that is not finite (see tsql_fit). A bound text value is
    // checked when it is bound instead, which costs no call per row.
    QString fitted(const Out& value, const ColumnInfo& column) {
        if (value.type == SqlType::Null || value.type == SqlType::Integer) return value.sql;
        // The tokenizer lets in only finite literals, and a stored number was checked when written.
        if ((value.literal || value.columnRef) && isNumeric(value.type)) return value.sql;
        const int width = textWidth(column.declaredType);
        const int valueWidth = textWidth(value.declaredType);  // a column or a cast
        if (width > 0 && valueWidth > 0 && valueWidth <= width) return value.sql;
        if (width > 0 && value.type != SqlType::Real) {
            if (value.parameter > 0) {
                boundWidths_.push_back({value.parameter, width});
                return value.sql;
            }
            return QStringLiteral("tsql_fit(%1, %2)").arg(value.sql).arg(width);
        }
        if (isNumeric(column.type) && value.type == SqlType::Text) {
            const QString number = w_.textIntoNumber(value.sql, column.type == SqlType::Integer);
            if (!number.isEmpty()) return number;
        }
        if (isNumeric(column.type)) return QStringLiteral("tsql_fit(%1, 0)").arg(value.sql);
        return value.sql;
    }

    // ---- expressions -------------------------------------------------------------------------

    // The parameters the literals of `e` became, outside any subquery.
    static QList<int> parametersOf(const Expr& e) {
        QList<int> found;
        if (e.parameter > 0) found << e.parameter;
        for (const ExprPtr& a : e.args)
            if (a) found += parametersOf(*a);
        return found;
    }

    // A number's text with the minus signs the parser folded into it (-(-1) is "--1", which
    // would start a comment) reduced to the one they amount to.
    static QString numberText(const Expr& number) {
        qsizetype minus = 0;
        while (minus < number.text.size() && number.text.at(minus) == QLatin1Char('-')) ++minus;
        if (minus < 2) return number.text;
        return (minus % 2 ? QStringLiteral("-") : QString()) + number.text.mid(minus);
    }

    static QString wrap(const Out& o) { return o.simple ? o.sql : QLatin1Char('(') + o.sql + QLatin1Char(')'); }
    // The left operand of an operator of `chain`.
    static QString wrapLeft(const Out& o, const char* chain) {
        return o.chain && qstrcmp(o.chain, chain) == 0 ? o.sql : wrap(o);
    }
    static Out chained(Out o, const char* chain) {
        o.chain = chain;
        return o;
    }

    static Out make(const QString& sql, SqlType type, bool simple = false) {
        Out o;
        o.sql = sql;
        o.type = type;
        o.simple = simple;
        return o;
    }

    Out column(const Expr& e, const Scope& scope) {
        const QString name = e.parts.last();
        const QString qualifier = e.parts.size() > 1 ? e.parts.at(e.parts.size() - 2) : QString();
        for (const Scope* s = &scope; s; s = s->outer) {
            for (const ScopeTable& t : s->tables) {
                if (!qualifier.isEmpty() && t.alias.compare(qualifier, Qt::CaseInsensitive) != 0) continue;
                for (const ColumnInfo& c : t.columns) {
                    if (c.name.compare(name, Qt::CaseInsensitive) != 0) continue;
                    Out o = make(t.emitted + QLatin1Char('.') + w_.name(c.name), c.type, true);
                    o.columnRef = true;
                    o.declaredType = c.declaredType.contains(QLatin1String("CHAR"), Qt::CaseInsensitive) &&
                                             !c.declaredType.contains(QLatin1String("COLLATE"), Qt::CaseInsensitive)
                                         ? c.declaredType + QStringLiteral(" COLLATE TSQL")
                                         : c.declaredType;
                    o.columnName = c.name;
                    o.table = t.emitted;
                    o.rowKey = c.identity;
                    return o;
                }
                if (!qualifier.isEmpty() && t.known) {
                    fail(QStringLiteral("Invalid column name '%1'").arg(name), e.position);
                }
            }
        }
        // Not in the catalogue (an alias, or a table made earlier in this batch): SQLite resolves it.
        QString sql = w_.name(name);
        if (!qualifier.isEmpty()) sql = w_.name(qualifier) + QLatin1Char('.') + sql;
        Out o = make(sql, SqlType::Unknown, true);
        o.columnRef = true;
        o.columnName = name;
        return o;
    }

    // Text to number, as the server converts a varchar compared with or added to a number. A
    // literal's number is an integer or not as its text shows; where the target cannot tell that
    // at run time, a literal bound as a parameter is kept in the text instead (its placeholder
    // has the statement translated again with the value written in), unless every text sharing
    // the translation holds a whole number there: that is the target's conversion of the bound
    // text to an integer, and the statement is the same for every value (a serial compared with
    // an integer column keeps its index and one prepared statement).
    Out toNumber(const Out& o, const Expr* source) const {
        if (source && source->kind == Expr::Kind::String && source->parameter > 0 && !w_.textNumbersTyped()) {
            const QString integer =
                source->wholeNumber ? w_.textIntoNumber(w_.parameter(source->parameter), true) : QString();
            if (!integer.isEmpty()) return make(integer, SqlType::Integer, true);
            return make(placeholderText(source->parameter, false), SqlType::Real, true);
        }
        if (source && source->kind == Expr::Kind::String) {
            bool ok = false;
            const QString t = source->text.trimmed();
            t.toLongLong(&ok);
            if (ok) return make(QString::number(t.toLongLong()), SqlType::Integer, true);
            t.toDouble(&ok);
            if (ok && !t.isEmpty()) return make(tr::db::sqlNumber(t.toDouble()), SqlType::Real, true);
        }
        return make(QStringLiteral("tsql_num(") + o.sql + QLatin1Char(')'), SqlType::Real, true);
    }

    static const Expr* stripTrim(const Expr* e) {
        while (e->kind == Expr::Kind::Function && e->parts.isEmpty() && e->args.size() == 1) {
            const QString n = e->text.toUpper();
            if (n != QLatin1String("LTRIM") && n != QLatin1String("RTRIM") && n != QLatin1String("TRIM")) break;
            e = e->args[0].get();
        }
        return e;
    }

    Out comparison(const Expr& e, const Scope& scope) {
        QString op = e.text;
        if (op == QLatin1String("!=")) op = QStringLiteral("<>");
        if (op == QLatin1String("!<")) op = QStringLiteral(">=");
        if (op == QLatin1String("!>")) op = QStringLiteral("<=");
        // The collation ignores leading and trailing blanks, so trimming an operand changes
        // nothing but would hide an index: compare the column itself.
        const Expr* le = stripTrim(e.args[0].get());
        const Expr* re = stripTrim(e.args[1].get());
        Out l = expr(*le, scope);
        Out r = expr(*re, scope);
        if (l.type == SqlType::Text && isNumeric(r.type)) l = toNumber(l, le);
        else if (r.type == SqlType::Text && isNumeric(l.type)) r = toNumber(r, re);
        QString left = wrap(l);
        if ((l.type == SqlType::Text || r.type == SqlType::Text) && !isNumeric(l.type) && !isNumeric(r.type)) {
            left += QStringLiteral(" COLLATE TSQL");
        }
        QString sql = left + QLatin1Char(' ') + op + QLatin1Char(' ') + wrap(r);
        if (l.type == SqlType::Text && r.type == SqlType::Text && (op == QLatin1String("=") || op == QLatin1String("<>")))
            sql = exactTextEquality(sql, l, op, r);
        QString key;
        if (op == QLatin1String("=")) {
            key = rowKeyLookup(*le, r, scope);
            if (key.isEmpty()) key = rowKeyLookup(*re, l, scope);
        }
        return make(key.isEmpty() ? sql : sql + QStringLiteral(" AND ") + key, SqlType::Integer);
    }

    // Where the target's collation finds more texts equal than the TSQL collation does (see
    // TargetWriter::exactText), `compared` (text `=` or `<>`) is narrowed to the collation's
    // answer. Where a column is compared the target's own comparison stays in front, so the
    // column's index still finds the rows; operands are then written twice, so only short ones
    // (a subquery's text doubled at each level of nesting would grow exponentially).
    QString exactTextEquality(const QString& compared, const Out& l, const QString& op, const Out& r) const {
        const QString exactLeft = w_.exactText(wrap(l));
        if (exactLeft.isEmpty()) return compared;
        QString exact = exactLeft + QLatin1Char(' ') + op + QLatin1Char(' ') + w_.exactText(wrap(r));
        const bool lookup = (l.columnRef || r.columnRef) && l.sql.size() + r.sql.size() <= 400;
        if (!lookup) return exact;
        // Most rows that compare equal are the same to the byte: only the rest are folded.
        const QString same = w_.sameBytes(wrap(l), wrap(r));
        if (!same.isEmpty()) {
            exact = op == QLatin1String("=") ? QStringLiteral("(%1 OR %2)").arg(same, exact)
                                             : QStringLiteral("(NOT (%1) AND %2)").arg(same, exact);
        }
        if (op != QLatin1String("=")) return QLatin1Char('(') + compared + QStringLiteral(" OR ") + exact + QLatin1Char(')');
        // Two columns of one row: no index serves it, and a planner takes an equality of two
        // columns for one row in two hundred. An unknown truth is half the rows to it: nearer
        // for `WhatDoc = WhatDoc2`, which most lines meet, so the rest of the query may drive.
        if (l.columnRef && r.columnRef && !l.table.isEmpty() && l.table == r.table) {
            return QStringLiteral("CASE WHEN %1 IS NULL OR %2 IS NULL THEN NULL ELSE %3 END")
                .arg(wrap(l), wrap(r), exact);
        }
        return compared + QStringLiteral(" AND ") + unestimated(exact, compared);
    }

    // `exact` beside `compared`, which it only narrows (it is Null exactly when `compared` is, and
    // false rather than Null when not), written so that a planner counts it as true for all
    // rows: it would otherwise take the pair as two independent filters and expect a fraction of
    // the rows each passes twice over, and start a join from the wrong table.
    static QString unestimated(const QString& exact, const QString& compared) {
        return QStringLiteral("(NULLIF(%1, false) IS NOT NULL OR (%2) IS NULL)").arg(exact, compared);
    }

    // `Cast(<Identity column> As Varchar(n)) = <text>` can only be looked up from the text's side
    // in the key's index, never from the key's side, so a date range on the text's table could
    // not drive a join. Next to it goes the key compared with the number the text names: true
    // whenever the comparison is (and Null exactly when it is), so the pair means what the
    // comparison alone does while the planner may start from either table.
    QString rowKeyLookup(const Expr& castSide, const Out& other, const Scope& scope) {
        // Only a column or a value is written twice: a larger expression doubled at every level
        // of a nested query would grow the text exponentially.
        if (castSide.kind != Expr::Kind::Cast || other.type != SqlType::Text) return {};
        if (!other.columnRef && !other.literal) return {};
        const QString& n = castSide.type.name;
        if (!n.contains(QLatin1String("CHAR")) || (castSide.type.length >= 0 && castSide.type.length < 20))
            return {};  // a shorter text may cut a key to the server's overflow mark
        const Expr* inner = castSide.args[0].get();
        if (inner->kind != Expr::Kind::Column) return {};
        const Out key = column(*inner, scope);
        if (!key.rowKey) return {};
        return key.sql + QStringLiteral(" = tsql_intkey(") + other.sql + QLatin1Char(')');
    }

    Out arithmetic(const Expr& e, const Scope& scope) {
        Out l = expr(*e.args[0], scope);
        Out r = expr(*e.args[1], scope);
        const QString& op = e.text;
        if (op == QLatin1String("+")) {
            if (l.type == SqlType::Null || r.type == SqlType::Null) return make(QStringLiteral("NULL"), SqlType::Null, true);
            if (l.type == SqlType::Text && r.type == SqlType::Text) {
                return chained(make(wrapLeft(l, "||") + QStringLiteral(" || ") + wrap(r), SqlType::Text), "||");
            }
            if (isNumeric(l.type) && isNumeric(r.type)) {
                return chained(make(wrapLeft(l, "+") + QStringLiteral(" + ") + wrap(r),
                                    l.type == SqlType::Real || r.type == SqlType::Real ? SqlType::Real : SqlType::Integer),
                               "+");
            }
            if (l.type == SqlType::Text && isNumeric(r.type)) {
                return make(toNumber(l, e.args[0].get()).sql + QStringLiteral(" + ") + wrap(r), SqlType::Real);
            }
            if (r.type == SqlType::Text && isNumeric(l.type)) {
                return chained(make(wrapLeft(l, "+") + QStringLiteral(" + ") + toNumber(r, e.args[1].get()).sql,
                                    SqlType::Real),
                               "+");
            }
            return make(QStringLiteral("tsql_add(%1, %2)").arg(l.sql, r.sql), SqlType::Unknown, true);
        }
        if (l.type == SqlType::Text) l = toNumber(l, e.args[0].get());
        if (r.type == SqlType::Text) r = toNumber(r, e.args[1].get());
        SqlType type = l.type == SqlType::Real || r.type == SqlType::Real ? SqlType::Real
                       : l.type == SqlType::Integer && r.type == SqlType::Integer ? SqlType::Integer
                                                                                 : SqlType::Unknown;
        if (op == QLatin1String("^")) return make(w_.bitwiseXor(l.sql, r.sql), SqlType::Integer, true);
        if (op == QLatin1String("/") && type == SqlType::Unknown) {
            return make(QStringLiteral("tsql_divide(%1, %2)").arg(l.sql, r.sql), SqlType::Unknown, true);
        }
        const char* chain = op == QLatin1String("+") || op == QLatin1String("-")   ? "+"
                            : op == QLatin1String("&") || op == QLatin1String("|") ? "&"
                                                                                   : "*";
        return chained(make(wrapLeft(l, chain) + QLatin1Char(' ') + op + QLatin1Char(' ') + wrap(r), type), chain);
    }

    Out expr(const Expr& e, const Scope& scope) {
        const Deeper deeper(*this, e.position);
        switch (e.kind) {
            case Expr::Kind::Null:
                return make(QStringLiteral("NULL"), SqlType::Null, true);
            case Expr::Kind::Number: {
                if (e.parameter > 0) {
                    Out o = make(w_.parameter(e.parameter),
                                 e.text.contains(QLatin1Char('.')) ? SqlType::Real : SqlType::Integer, true);
                    o.literal = true;
                    o.parameter = e.parameter;
                    return o;
                }
                const bool real = e.text.contains(QLatin1Char('.')) || e.text.contains(QLatin1Char('e'), Qt::CaseInsensitive);
                QString text = numberText(e);
                if (text.startsWith(QLatin1Char('.'))) text.prepend(QLatin1Char('0'));
                if (text.startsWith(QLatin1String("-."))) text.insert(1, QLatin1Char('0'));
                Out o = make(text, real ? SqlType::Real : SqlType::Integer, !text.startsWith(QLatin1Char('-')));
                o.literal = true;
                return o;
            }
            case Expr::Kind::String: {
                Out o = e.parameter > 0 ? make(w_.parameter(e.parameter), SqlType::Text, true)
                                        : make(quoteText(e.text), SqlType::Text, true);
                o.literal = true;
                o.parameter = e.parameter;
                return o;
            }
            case Expr::Kind::Column:
                return column(e, scope);
            case Expr::Kind::Star:
                if (e.parts.isEmpty()) return make(QStringLiteral("*"), SqlType::Unknown, true);
                unsupported(QStringLiteral("qualified * here"), e.position);
            case Expr::Kind::Variable:
                unsupported(QStringLiteral("variables"), e.position);
            case Expr::Kind::Unary: {
                Out o = expr(*e.args[0], scope);
                if (e.text == QLatin1String("NOT")) return make(QStringLiteral("NOT ") + wrap(o), SqlType::Integer);
                if (o.type == SqlType::Text) o = toNumber(o, e.args[0].get());
                return make(e.text + wrap(o), o.type);
            }
            case Expr::Kind::Binary: {
                const QString& op = e.text;
                if (op == QLatin1String("AND") || op == QLatin1String("OR")) {
                    const char* chain = op == QLatin1String("AND") ? "AND" : "OR";
                    return chained(make(wrapLeft(expr(*e.args[0], scope), chain) + QLatin1Char(' ') + op +
                                            QLatin1Char(' ') + wrap(expr(*e.args[1], scope)),
                                        SqlType::Integer),
                                   chain);
                }
                if (op == QLatin1String("=") || op == QLatin1String("<>") || op == QLatin1String("!=") ||
                    op == QLatin1String("<") || op == QLatin1String(">") || op == QLatin1String("<=") ||
                    op == QLatin1String(">=") || op == QLatin1String("!<") || op == QLatin1String("!>")) {
                    return comparison(e, scope);
                }
                return arithmetic(e, scope);
            }
            case Expr::Kind::Function:
                return function(e, scope);
            case Expr::Kind::Case: {
                QString sql = QStringLiteral("CASE");
                size_t i = 0;
                SqlType type = SqlType::Unknown;
                if (e.simpleCase) sql += QLatin1Char(' ') + expr(*e.args[i++], scope).sql;
                const size_t whenEnd = e.args.size() - (e.hasElse ? 1 : 0);
                for (; i + 1 < whenEnd + 1 && i < whenEnd; i += 2) {
                    Out then = expr(*e.args[i + 1], scope);
                    if (type == SqlType::Unknown || type == SqlType::Null) type = then.type;
                    sql += QStringLiteral(" WHEN ") + expr(*e.args[i], scope).sql + QStringLiteral(" THEN ") + then.sql;
                }
                if (e.hasElse) {
                    Out other = expr(*e.args.back(), scope);
                    if (type == SqlType::Unknown || type == SqlType::Null) type = other.type;
                    sql += QStringLiteral(" ELSE ") + other.sql;
                }
                return make(sql + QStringLiteral(" END"), type, true);
            }
            case Expr::Kind::Cast:
                return cast(e, scope);
            case Expr::Kind::Subquery: {
                SelectOut s = select(*e.select, &scope, false);
                return make(QLatin1Char('(') + s.sql + QLatin1Char(')'),
                            s.columns.empty() ? SqlType::Unknown : s.columns.front().type, true);
            }
            case Expr::Kind::Exists:
                return make(QStringLiteral("EXISTS (") + select(*e.select, &scope, false).sql + QLatin1Char(')'),
                            SqlType::Integer, true);
            case Expr::Kind::In: {
                // As in comparisons, trimming the tested value changes nothing under the collation.
                // The values a text is looked up in are trimmed: SQLite's lookup table for In
                // reports a malformed database when it holds an empty text and a blank one, which
                // the collation finds equal.
                Out x = expr(*stripTrim(e.args[0].get()), scope);
                QString list;
                if (e.select) {
                    SelectOut inner = select(*e.select, &scope, false, nullptr, x.type == SqlType::Text);
                    list = inner.sql;
                    // Text tested against numbers (a voucher line's Document against line ids):
                    // compare as text, so the text column's index still finds the rows.
                    if (x.type == SqlType::Text && !inner.columns.empty() && isNumeric(inner.columns[0].type) &&
                        !inner.columns[0].name.isEmpty()) {
                        list = QStringLiteral("SELECT CAST(%1 AS TEXT) FROM (%2) AS tr_in")
                                   .arg(w_.name(inner.columns[0].name), inner.sql);
                    }
                } else {
                    QStringList items, exactItems, sameItems;
                    bool exact = x.type == SqlType::Text && !w_.exactText(wrap(x)).isEmpty();
                    if (x.type == SqlType::Text) {
                        for (size_t i = 1; i < e.args.size(); ++i) {
                            if (isNumeric(expr(*e.args[i], scope).type)) {
                                x = toNumber(x, e.args[0].get());
                                break;
                            }
                        }
                    }
                    for (size_t i = 1; i < e.args.size(); ++i) {
                        Out item = expr(*e.args[i], scope);
                        if (isNumeric(x.type) && item.type == SqlType::Text) item = toNumber(item, e.args[i].get());
                        items << (x.type == SqlType::Text ? w_.trimBlanks(item.sql) : item.sql);
                        exact = exact && (item.type == SqlType::Text || item.type == SqlType::Null);
                        if (exact) {
                            exactItems << w_.exactText(wrap(item));
                            sameItems << w_.sameBytes(wrap(x), wrap(item));
                        }
                    }
                    list = items.join(QStringLiteral(", "));
                    if (exact) {
                        // Narrowed to the TSQL collation's answer as a comparison is (see
                        // exactTextEquality); the target's own lookup stays in front for a column.
                        QString in = w_.exactText(wrap(x)) + QStringLiteral(" IN (") +
                                     exactItems.join(QStringLiteral(", ")) + QLatin1Char(')');
                        if (x.columnRef) {
                            // As a comparison: the value the same to the byte as an item is in.
                            if (!sameItems.isEmpty() && !sameItems.front().isEmpty() && sameItems.size() <= 8)
                                in = QStringLiteral("(%1 OR %2)").arg(sameItems.join(QStringLiteral(" OR ")), in);
                            const QString lookup = wrap(x) + QStringLiteral(" COLLATE TSQL IN (") + list + QLatin1Char(')');
                            in = lookup + QStringLiteral(" AND ") + unestimated(in, lookup);
                        }
                        return make(e.negated ? QStringLiteral("NOT (") + in + QLatin1Char(')') : in, SqlType::Integer);
                    }
                }
                QString left = wrap(x);
                if (x.type == SqlType::Text) left += QStringLiteral(" COLLATE TSQL");
                return make(left + (e.negated ? QStringLiteral(" NOT IN (") : QStringLiteral(" IN (")) + list +
                                QLatin1Char(')'),
                            SqlType::Integer);
            }
            case Expr::Kind::Between: {
                Out x = expr(*e.args[0], scope);
                Out lo = expr(*e.args[1], scope);
                Out hi = expr(*e.args[2], scope);
                if (isNumeric(x.type)) {
                    if (lo.type == SqlType::Text) lo = toNumber(lo, e.args[1].get());
                    if (hi.type == SqlType::Text) hi = toNumber(hi, e.args[2].get());
                } else if (x.type == SqlType::Text && (isNumeric(lo.type) || isNumeric(hi.type))) {
                    x = toNumber(x, e.args[0].get());
                }
                QString left = wrap(x);
                if (x.type == SqlType::Text) left += QStringLiteral(" COLLATE TSQL");
                return make(left + (e.negated ? QStringLiteral(" NOT BETWEEN ") : QStringLiteral(" BETWEEN ")) +
                                wrap(lo) + QStringLiteral(" AND ") + wrap(hi),
                            SqlType::Integer);
            }
            case Expr::Kind::Like: {
                const QString value = wrap(expr(*e.args[0], scope));
                const QString pattern = wrap(expr(*e.args[1], scope));
                const QString escape = e.args.size() > 2 ? wrap(expr(*e.args[2], scope)) : QString();
                return make(w_.like(value, pattern, escape, e.negated), SqlType::Integer);
            }
            case Expr::Kind::IsNull:
                return make(wrap(expr(*e.args[0], scope)) +
                                (e.negated ? QStringLiteral(" IS NOT NULL") : QStringLiteral(" IS NULL")),
                            SqlType::Integer);
            case Expr::Kind::Identity:
                unsupported(QStringLiteral("IDENTITY() outside SELECT ... INTO"), e.position);
        }
        unsupported(QStringLiteral("expression"), e.position);
    }

    // A cast's result has the declared type it names, which Select ... Into gives its column.
    Out cast(const Expr& e, const Scope& scope) {
        Out o = castValue(e, scope);
        TypeName declared = e.type;
        if (declared.name.contains(QLatin1String("CHAR")) && declared.length == -1) declared.length = 30;
        o.declaredType = w_.columnType(declared);
        return o;
    }

    Out castValue(const Expr& e, const Scope& scope) {
        Out x = expr(*e.args[0], scope);
        const QString& n = e.type.name;
        if (n.contains(QLatin1String("CHAR")) || n == QLatin1String("TEXT") || n == QLatin1String("NTEXT")) {
            const int length = e.type.length == -1 ? 30 : e.type.length;  // the server's default length
            return make(QStringLiteral("tsql_varchar(%1, %2)").arg(x.sql).arg(length), SqlType::Text, true);
        }
        if (n == QLatin1String("INT") || n == QLatin1String("INTEGER") || n == QLatin1String("BIGINT") ||
            n == QLatin1String("SMALLINT") || n == QLatin1String("TINYINT") || n == QLatin1String("BIT")) {
            return make(QStringLiteral("tsql_int(%1)").arg(x.sql), SqlType::Integer, true);
        }
        if (n == QLatin1String("FLOAT") || n == QLatin1String("REAL") || n == QLatin1String("MONEY")) {
            return make(QStringLiteral("tsql_num(%1) * 1.0").arg(x.sql), SqlType::Real);
        }
        if (n == QLatin1String("DECIMAL") || n == QLatin1String("NUMERIC")) {
            const int scale = e.type.scale < 0 ? 0 : e.type.scale;
            return make(QStringLiteral("round(tsql_num(%1), %2)").arg(x.sql).arg(scale),
                        scale == 0 ? SqlType::Integer : SqlType::Real, true);
        }
        if (n == QLatin1String("DATETIME") || n == QLatin1String("DATE") || n == QLatin1String("SMALLDATETIME")) {
            return make(QStringLiteral("tsql_varchar(%1, -1)").arg(x.sql), SqlType::Text, true);
        }
        unsupported(QStringLiteral("CAST to ") + n, e.position);
    }

    Out function(const Expr& e, const Scope& scope) {
        const QString name = e.text.toUpper();
        if (!e.parts.isEmpty()) {
            // dbo.f(...): a scalar function of the database, written in C++.
            QStringList args{quoteText(e.text)};
            for (const ExprPtr& a : e.args) args << expr(*a, scope).sql;
            callsFunctions_ = true;
            return make(QStringLiteral("tsql_call(") + args.join(QStringLiteral(", ")) + QLatin1Char(')'),
                        SqlType::Unknown, true);
        }
        std::vector<Out> a;
        for (const ExprPtr& arg : e.args) a.push_back(expr(*arg, scope));
        const tr::tsql::BuiltinFunction* f = tr::tsql::findBuiltin(name);
        if (!f) fail(QStringLiteral("'%1' is not a recognized built-in function name").arg(e.text), e.position);
        if (int(a.size()) < f->minArgs || int(a.size()) > f->maxArgs) {
            fail(QStringLiteral("The %1 function requires %2 argument(s)")
                     .arg(name)
                     .arg(f->minArgs == f->maxArgs ? QString::number(f->minArgs)
                                                   : QStringLiteral("%1 to %2").arg(f->minArgs).arg(f->maxArgs)),
                 e.position);
        }
        const SqlType first = a.empty() ? SqlType::Unknown : a[0].type;
        SqlType type = f->result == tr::tsql::ResultType::Text      ? SqlType::Text
                       : f->result == tr::tsql::ResultType::Integer ? SqlType::Integer
                       : f->result == tr::tsql::ResultType::Real    ? SqlType::Real
                                                                    : first;
        QString spelling = w_.spelling(*f);
        QStringList args;
        for (const Out& o : a) args << o.sql;
        switch (f->rule) {
            case tr::tsql::Rule::Spelling:
                break;
            case tr::tsql::Rule::IsNull:
                if (first == SqlType::Null || first == SqlType::Unknown) type = a[1].type;
                break;
            case tr::tsql::Rule::Substring: {
                bool ok = false;
                const int start = e.args[1]->kind == Expr::Kind::Number ? e.args[1]->text.toInt(&ok) : 0;
                if (ok && start >= 1) spelling = QStringLiteral("substr(%*)");
                break;
            }
            case tr::tsql::Rule::Round:
                if (a.size() == 2) args << QStringLiteral("0");
                break;
            case tr::tsql::Rule::Count:
                if (e.distinct) args[0].prepend(QStringLiteral("DISTINCT "));
                break;
            case tr::tsql::Rule::Sum:
                if (first == SqlType::Text) args[0] = toNumber(a[0], e.args[0].get()).sql;
                if (first != SqlType::Integer) type = SqlType::Real;  // Avg's is Real already
                if (e.distinct) args[0].prepend(QStringLiteral("DISTINCT "));
                break;
            case tr::tsql::Rule::Extreme:
                if (first == SqlType::Text && !a[0].columnRef)
                    args[0] = QLatin1Char('(') + args[0] + QStringLiteral(") COLLATE TSQL");
                if (e.distinct) args[0].prepend(QStringLiteral("DISTINCT "));
                break;
        }
        return make(spelled(spelling, args), type, true);
    }

    // A call as a target spells it: %1 ... %9 stand for the arguments, %* for all of them.
    static QString spelled(const QString& spelling, const QStringList& args) {
        QString out;
        for (qsizetype i = 0; i < spelling.size(); ++i) {
            const QChar c = spelling.at(i);
            if (c != QLatin1Char('%') || i + 1 >= spelling.size()) {
                out += c;
                continue;
            }
            const QChar next = spelling.at(++i);
            if (next == QLatin1Char('*')) out += args.join(QStringLiteral(", "));
            else if (next.isDigit() && next.digitValue() >= 1 && next.digitValue() <= args.size())
                out += args[next.digitValue() - 1];
            else out += c, out += next;
        }
        return out;
    }

    // ---- statements --------------------------------------------------------------------------

    Step statement(const Statement& s) {
        Step step;
        step.position = s.position;
        switch (s.kind) {
            case Statement::Kind::Select:
                if (!s.select->into.isEmpty()) return selectInto(*s.select);
                namingResult_ = true;
                step.sql << select(*s.select, nullptr, false).sql;
                return step;
            case Statement::Kind::Insert:
                return insert(s);
            case Statement::Kind::Update:
                return update(s);
            case Statement::Kind::Delete:
                return remove(s);
            case Statement::Kind::CreateTable:
                return createTable(s);
            case Statement::Kind::CreateIndex: {
                ResolvedTable t = resolveTable(s.table, s.position);
                QStringList columns;
                for (int i = 0; i < s.columns.size(); ++i) {
                    columns << w_.name(s.columns[i]) + (s.descending[i] ? QStringLiteral(" DESC") : QString());
                }
                step.sql << w_.createIndex(s.unique, t.schema, t.name + QStringLiteral("__") + s.name, t.name,
                                           columns.join(QStringLiteral(", ")));
                step.writes = true;
                step.tempOnly = writesOnlyTemp(t.schema, step.sql);
                // A ## table with an index of its own is no longer its definition alone: it is
                // really dropped, with the index, rather than kept for the next of its name.
                step.changedTables.push_back({t.schema, t.name, TableName::Change::Altered});
                return step;
            }
            case Statement::Kind::DropIndex: {
                if (s.table.isEmpty()) unsupported(QStringLiteral("DROP INDEX without its table"), s.position);
                ResolvedTable t = resolveTable(s.table, s.position);
                step.sql << QStringLiteral("DROP INDEX %1.%2").arg(w_.name(t.schema), w_.name(t.name + QStringLiteral("__") + s.name));
                step.writes = true;
                step.changedTables.push_back({t.schema, t.name, TableName::Change::Altered});
                return step;
            }
            case Statement::Kind::DropTable: {
                ResolvedTable t = resolveTable(s.table, s.position, true);
                if (catalog_.retired(t.schema, t.name)) {
                    fail(QStringLiteral("Cannot drop the table '%1', because it does not exist or you do not have "
                                        "permission.")
                             .arg(s.table.join(QLatin1Char('.'))),
                         s.position);
                }
                step.sql << QStringLiteral("DROP TABLE ") + t.sql;
                step.writes = true;
                step.tempOnly = writesOnlyTemp(t.schema, step.sql);
                step.changedTables.push_back({t.schema, t.name, TableName::Change::Dropped});
                return step;
            }
            case Statement::Kind::Truncate: {
                ResolvedTable t = resolveTable(s.table, s.position);
                step.sql << QStringLiteral("DELETE FROM ") + t.sql;
                step.writes = true;
                step.tempOnly = writesOnlyTemp(t.schema, step.sql);
                return step;
            }
            case Statement::Kind::AlterAdd: {
                ResolvedTable t = resolveTable(s.table, s.position);
                for (const ColumnDef& c : s.columnDefs) {
                    step.sql << QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(t.sql, columnDefinition(c, false));
                    step.sql << w_.columnSpellings(t.sql, {c.name});
                }
                step.writes = true;
                step.tempOnly = writesOnlyTemp(t.schema, step.sql);
                step.changedTables.push_back({t.schema, t.name, TableName::Change::Altered});
                return step;
            }
            case Statement::Kind::If: {
                step.kind = Step::Kind::If;
                Scope scope;
                step.query = QStringLiteral("SELECT CASE WHEN ") + expr(*s.condition, scope).sql +
                             QStringLiteral(" THEN 1 ELSE 0 END");
                for (const StatementPtr& b : s.body) step.thenBody.push_back(b.get());
                for (const StatementPtr& b : s.elseBody) step.elseBody.push_back(b.get());
                return step;
            }
            case Statement::Kind::Block:
                step.kind = Step::Kind::Block;
                for (const StatementPtr& b : s.body) step.thenBody.push_back(b.get());
                return step;
            case Statement::Kind::Exec: {
                step.kind = Step::Kind::Call;
                step.procedure = s.name;
                for (const ExprPtr& a : s.args) step.args.push_back(literalValue(*a));
                return step;
            }
            case Statement::Kind::ExecText: {
                step.kind = Step::Kind::ExecText;
                // Exec('Drop Table ...'): a text written out needs no statement to read it back,
                // which on a server is a round trip of its own.
                if (s.args[0]->kind == Expr::Kind::String) {
                    step.writtenText = s.args[0]->text;
                    return step;
                }
                Scope scope;
                step.query = QStringLiteral("SELECT ") + expr(*s.args[0], scope).sql;
                return step;
            }
            case Statement::Kind::Begin:
                step.kind = Step::Kind::Begin;
                return step;
            case Statement::Kind::Commit:
                step.kind = Step::Kind::Commit;
                step.delayedDurability = s.delayedDurability;
                return step;
            case Statement::Kind::Rollback:
                step.kind = Step::Kind::Rollback;
                return step;
        }
        unsupported(QStringLiteral("statement"), s.position);
    }

    QVariant literalValue(const Expr& e) {
        switch (e.kind) {
            case Expr::Kind::String:
                return e.text;
            case Expr::Kind::Null:
                return QVariant();
            case Expr::Kind::Number: {
                bool ok = false;
                const QString text = numberText(e);
                const qint64 n = text.toLongLong(&ok);
                if (ok) return n;
                return text.toDouble();
            }
            default:
                unsupported(QStringLiteral("expressions as procedure arguments"), e.position);
        }
    }

    QString columnDefinition(const ColumnDef& c, bool allowIdentityKey) {
        QString type = w_.columnType(c.type);
        if (type.isEmpty()) unsupported(QStringLiteral("column type ") + c.type.name, c.position);
        QString sql = w_.name(c.name) + QLatin1Char(' ');
        if (c.identity && allowIdentityKey) {
            sql += w_.identityColumn();
        } else {
            sql += type;
            if (c.notNull) sql += QStringLiteral(" NOT NULL");
        }
        if (c.defaultValue) {
            Scope none;
            sql += QStringLiteral(" DEFAULT (") + expr(*c.defaultValue, none).sql + QLatin1Char(')');
        }
        return sql;
    }

    Step createTable(const Statement& s) {
        ResolvedTable t = resolveTable(s.table, s.position, true);
        QStringList defs;
        bool identitySeen = false;
        QStringList primary = s.columns;
        for (const ColumnDef& c : s.columnDefs) {
            if (c.identity) {
                if (identitySeen) fail(QStringLiteral("Multiple identity columns specified for table '%1'").arg(t.name), c.position);
                identitySeen = true;
            }
            if (c.primaryKey && !c.identity) primary << c.name;
            defs << columnDefinition(c, true);
        }
        if (!primary.isEmpty()) {
            QStringList quoted;
            for (const QString& p : primary) quoted << w_.name(p);
            // The identity column is SQLite's row key; another declared key becomes a unique one.
            defs << (identitySeen ? QStringLiteral("UNIQUE (") : QStringLiteral("PRIMARY KEY (")) +
                        quoted.join(QStringLiteral(", ")) + QLatin1Char(')');
        }
        Step step;
        step.position = s.position;
        step.sql << QStringLiteral("CREATE TABLE %1 (%2)").arg(t.sql, defs.join(QStringLiteral(", ")));
        QStringList spellings;
        for (const ColumnDef& c : s.columnDefs) spellings << c.name;
        step.sql << w_.columnSpellings(t.sql, spellings);
        step.writes = true;
        step.tempOnly = writesOnlyTemp(t.schema, step.sql);
        step.changedTables.push_back({t.schema, t.name, TableName::Change::Created});
        return step;
    }

    Step selectInto(const Select& s) {
        ResolvedTable target = resolveTable(s.into, s.position, true);
        SelectOut out = select(s, nullptr, true);
        QStringList defs, names;
        for (const ColumnInfo& c : out.columns) {
            if (c.name.isEmpty()) {
                fail(QStringLiteral("An object or column name is missing or empty. For SELECT INTO statements, "
                                    "verify each column has a name"),
                     s.position);
            }
            QString declared = c.declaredType;
            if (typeOfDeclaration(declared) == SqlType::Text && !declared.contains(QLatin1String("COLLATE"), Qt::CaseInsensitive)) {
                declared += QStringLiteral(" COLLATE TSQL");
            }
            defs << (w_.name(c.name) + QLatin1Char(' ') + declared).trimmed();
            names << w_.name(c.name);
        }
        Step step;
        step.position = s.position;
        step.sql << QStringLiteral("CREATE TABLE %1 (%2)").arg(target.sql, defs.join(QStringLiteral(", ")));
        QStringList spellings;
        for (const ColumnInfo& c : out.columns) spellings << c.name;
        step.sql << w_.columnSpellings(target.sql, spellings);
        step.sql << QStringLiteral("INSERT INTO %1 (%2) %3").arg(target.sql, names.join(QStringLiteral(", ")), out.sql);
        step.writes = true;
        step.tempOnly = writesOnlyTemp(target.schema, step.sql);
        step.changedTables.push_back({target.schema, target.name, TableName::Change::Created});
        return step;
    }

    Step insert(const Statement& s) {
        ResolvedTable t = resolveTable(s.table, s.position);
        QStringList columns;
        std::vector<ColumnInfo> targets;  // each value's column, while all are known
        for (const QString& c : s.columns) {
            columns << w_.name(c);
            const auto known = std::find_if(t.columns.begin(), t.columns.end(), [&](const ColumnInfo& k) {
                return k.name.compare(c, Qt::CaseInsensitive) == 0;
            });
            targets.push_back(known == t.columns.end() ? ColumnInfo{} : *known);
        }
        if (columns.isEmpty()) {
            // A positional insert fills every column but the identity, as on the server.
            for (const ColumnInfo& c : t.columns) {
                if (c.identity) continue;
                columns << w_.name(c.name);
                targets.push_back(c);
            }
            if (columns.size() == static_cast<int>(t.columns.size())) columns.clear();
        }
        QString sql = QStringLiteral("INSERT INTO ") + t.sql;
        if (!columns.isEmpty()) sql += QStringLiteral(" (") + columns.join(QStringLiteral(", ")) + QLatin1Char(')');
        if (s.select) {
            sql += QLatin1Char(' ') + select(*s.select, nullptr, false, &targets).sql;
        } else if (s.values.empty()) {
            sql += QStringLiteral(" DEFAULT VALUES");
        } else {
            Scope none;
            QStringList rows;
            for (const auto& row : s.values) {
                QStringList values;
                for (const ExprPtr& v : row) {
                    const Out value = expr(*v, none);
                    values << (values.size() < int(targets.size()) ? fitted(value, targets[values.size()]) : value.sql);
                }
                rows << QLatin1Char('(') + values.join(QStringLiteral(", ")) + QLatin1Char(')');
            }
            sql += QStringLiteral(" VALUES ") + rows.join(QStringLiteral(", "));
        }
        Step step;
        step.position = s.position;
        const auto identity = std::find_if(t.columns.begin(), t.columns.end(),
                                           [](const ColumnInfo& c) { return c.identity; });
        const QString returning = identity == t.columns.end() ? QString() : w_.returnIdentity(identity->name);
        step.returnsIdentity = !returning.isEmpty();
        step.sql << sql + returning;
        step.writes = true;
        step.tempOnly = writesOnlyTemp(t.schema, step.sql);
        step.boundWidths = boundWidths_;
        return step;
    }

    // The FROM list of an Update/Delete without the target table, whose join condition moves to
    // the WHERE clause; `targetAlias` is how the statement names the target.
    QString fromWithoutTarget(const Statement& s, const QString& targetAlias, Scope& scope, QStringList& conditions,
                              bool& targetFound) {
        QStringList items;
        for (const FromItem& item : s.from) {
            QString sql;
            bool first = true;
            auto matches = [&](const TableRef& ref) {
                if (ref.derived) return false;
                const QString alias = ref.alias.isEmpty() ? ref.parts.last() : ref.alias;
                return !targetFound && alias.compare(targetAlias, Qt::CaseInsensitive) == 0;
            };
            bool skipFirst = matches(item.table);
            if (skipFirst) targetFound = true;
            else sql = tableSource(item.table, scope);
            first = skipFirst;
            for (const Join& join : item.joins) {
                if (matches(join.table)) {
                    targetFound = true;
                    if (join.on) conditions << QLatin1Char('(') + expr(*join.on, scope).sql + QLatin1Char(')');
                    continue;
                }
                if (first) {
                    sql = tableSource(join.table, scope);
                    if (join.on) conditions << QLatin1Char('(') + expr(*join.on, scope).sql + QLatin1Char(')');
                    first = false;
                    continue;
                }
                sql += (join.kind == QLatin1String("INNER") ? QStringLiteral(" JOIN ")
                        : join.kind == QLatin1String("CROSS") ? QStringLiteral(" CROSS JOIN ")
                                                              : QLatin1Char(' ') + join.kind + QStringLiteral(" JOIN ")) +
                       tableSource(join.table, scope);
                if (join.on) sql += QStringLiteral(" ON ") + expr(*join.on, scope).sql;
            }
            if (!sql.isEmpty()) items << sql;
        }
        return items.join(QStringLiteral(", "));
    }

    Step update(const Statement& s) {
        ResolvedTable t = resolveTable(targetParts(s), s.position);
        Scope scope;
        const QString alias = s.table.last();
        scope.tables.push_back({alias, w_.name(alias), t.columns, !t.columns.empty()});
        QStringList conditions;
        QString from;
        if (!s.from.empty()) {
            bool found = false;
            from = fromWithoutTarget(s, alias, scope, conditions, found);
        }
        QStringList sets;
        for (const Assignment& a : s.assignments) {
            const Out value = expr(*a.value, scope);
            const auto known = std::find_if(t.columns.begin(), t.columns.end(), [&](const ColumnInfo& k) {
                return k.name.compare(a.column.last(), Qt::CaseInsensitive) == 0;
            });
            sets << w_.name(a.column.last()) + QStringLiteral(" = ") +
                        (known == t.columns.end() ? value.sql : fitted(value, *known));
        }
        if (s.where) conditions << QLatin1Char('(') + expr(*s.where, scope).sql + QLatin1Char(')');
        QString sql = QStringLiteral("UPDATE %1 AS %2 SET %3").arg(t.sql, w_.name(alias), sets.join(QStringLiteral(", ")));
        if (!from.isEmpty()) sql += QStringLiteral(" FROM ") + from;
        QString where = conditions.join(QStringLiteral(" AND "));
        if (s.top) {
            Scope none;
            const QString inner = QStringLiteral("SELECT %5 FROM %1 AS %2%3 LIMIT %4")
                                      .arg(t.sql, w_.name(alias),
                                           s.where ? QStringLiteral(" WHERE ") + expr(*s.where, scope).sql : QString(),
                                           expr(*s.top, none).sql, w_.rowKey());
            where = QStringLiteral("%1.%2 IN (%3)").arg(w_.name(alias), w_.rowKey(), inner);
        }
        if (!where.isEmpty()) sql += QStringLiteral(" WHERE ") + where;
        Step step;
        step.position = s.position;
        step.sql << sql;
        step.writes = true;
        step.tempOnly = writesOnlyTemp(t.schema, step.sql);
        step.boundWidths = boundWidths_;
        return step;
    }

    // The table an Update/Delete with a FROM list names by an alias declared in that list.
    QStringList targetParts(const Statement& s) {
        for (const FromItem& item : s.from) {
            if (!item.table.derived && !item.table.alias.isEmpty() &&
                item.table.alias.compare(s.table.last(), Qt::CaseInsensitive) == 0) {
                return item.table.parts;
            }
            for (const Join& j : item.joins) {
                if (!j.table.derived && !j.table.alias.isEmpty() &&
                    j.table.alias.compare(s.table.last(), Qt::CaseInsensitive) == 0) {
                    return j.table.parts;
                }
            }
        }
        return s.table;
    }

    Step remove(const Statement& s) {
        ResolvedTable t = resolveTable(targetParts(s), s.position);
        QString sql = QStringLiteral("DELETE FROM ") + t.sql;
        if (s.from.empty() && !s.top) {
            Scope scope;
            scope.tables.push_back({t.name, t.sql, t.columns, !t.columns.empty()});
            if (s.where) sql += QStringLiteral(" WHERE ") + expr(*s.where, scope).sql;
        } else {
            // Delete T From T a Join ... / Delete Top (n): pick the rows by their row ids.
            Scope scope;
            QString alias = s.table.last();
            QString from;
            if (s.from.empty()) {
                from = tableSource(TableRef{s.table, QString(), nullptr, s.position}, scope);
            } else {
                for (size_t i = 0; i < s.from.size(); ++i) {
                    if (i > 0) from += QStringLiteral(", ");
                    addFromItem(s.from[i], scope, from);
                }
            }
            QString inner = QStringLiteral("SELECT %1.%2 FROM %3").arg(w_.name(alias), w_.rowKey(), from);
            if (s.where) inner += QStringLiteral(" WHERE ") + expr(*s.where, scope).sql;
            if (s.top) {
                Scope none;
                inner += QStringLiteral(" LIMIT ") + expr(*s.top, none).sql;
            }
            sql += QStringLiteral(" WHERE ") + w_.rowKey() + QStringLiteral(" IN (") + inner + QLatin1Char(')');
        }
        Step step;
        step.position = s.position;
        step.sql << sql;
        step.writes = true;
        step.tempOnly = writesOnlyTemp(t.schema, step.sql);
        step.boundWidths = boundWidths_;
        return step;
    }

private:
    Catalog& catalog_;
    const QString& source_;
    const TargetWriter& w_;
    int depth_ = 0;
    std::vector<std::pair<int, int>> boundWidths_;  // for Step::boundWidths
    bool namingResult_ = false;  // the next select is the statement's own result
    bool touchesBooks_ = false;  // a table of a database was named (see Step::touchesBooks)
    bool callsFunctions_ = false;  // a dbo function is called (see Step::callsFunctions)
};

}  // namespace

Step translateStatement(const Statement& statement, Catalog& catalog, const QString& sourceSql,
                        const TargetWriter& writer) {
    Translator translator(catalog, sourceSql, writer);
    Step step = translator.statement(statement);
    step.touchesBooks = translator.touchesBooks();
    step.callsFunctions = translator.callsFunctions();
    return step;
}

}  // namespace tr::engine
