#include "db/engine/parser.h"

#include "db/engine/limits.h"
#include "db/engine/literal_parameters.h"

#include "common/db/database_error.h"

namespace tr::engine {

using namespace ast;
using tr::db::DatabaseError;

namespace {

const char* const kStatementWords[] = {"SELECT", "INSERT", "UPDATE", "DELETE", "CREATE", "DROP",
                                       "TRUNCATE", "ALTER", "IF", "ELSE", "BEGIN", "END", "COMMIT",
                                       "ROLLBACK", "EXEC", "EXECUTE", "GO", "DECLARE", "SET",
                                       "PRINT", "WHILE", "RETURN"};

// Words that end an expression or a table alias position.
const char* const kReserved[] = {
    "SELECT", "FROM",  "WHERE", "GROUP", "ORDER",  "HAVING", "UNION",  "INTO",   "ON",     "JOIN",
    "INNER",  "LEFT",  "RIGHT", "FULL",  "CROSS",  "OUTER",  "AND",    "OR",     "NOT",    "AS",
    "SET",    "VALUES", "INSERT", "UPDATE", "DELETE", "CREATE", "DROP", "IF",    "ELSE",   "BEGIN",
    "END",    "EXEC",  "EXECUTE", "WHEN", "THEN",  "CASE",   "IS",     "IN",     "LIKE",   "BETWEEN",
    "NULL",   "TRUNCATE", "ALTER", "COMMIT", "ROLLBACK", "WITH", "GO", "ASC",   "DESC",   "BY",
    "DISTINCT", "TOP", "EXISTS", "ESCAPE", "DECLARE", "PRINT", "WHILE", "RETURN", "ALL"};

class Parser {
public:
    Parser(const QString& sql, std::vector<Token> tokens, LiteralParameters* parameters)
        : sql_(sql), tokens_(std::move(tokens)), parameters_(parameters) {}

    std::vector<StatementPtr> batch() {
        std::vector<StatementPtr> statements;
        bool first = true;
        while (!at().kind_is_end()) {
            if (at().isOp(";") || at().isWord("GO")) {
                advance();
                continue;
            }
            statements.push_back(statement(first));
            first = false;
        }
        return statements;
    }

private:
    const QString& sql_;
    std::vector<Token> tokens_;
    size_t index_ = 0;
    LiteralParameters* parameters_ = nullptr;
    // The recursion of the parse, and that plus the terms of the chains being read, which bounds
    // the height of the tree every later walk (translation, SQLite, destruction) goes down.
    int nesting_ = 0;
    int level_ = 0;

    // One level deeper for as long as it lives.
    struct Nested {
        Parser& parser;
        explicit Nested(Parser& p) : parser(p) {
            ++parser.nesting_;
            parser.deeper(1);
            if (parser.nesting_ > kMaxNesting) parser.fail(nestedTooDeeplyMessage(), parser.token());
        }
        ~Nested() {
            --parser.nesting_;
            --parser.level_;
        }
        Nested(const Nested&) = delete;
        Nested& operator=(const Nested&) = delete;
    };
    void deeper(int levels) {
        level_ += levels;
        if (level_ > kMaxExpressionDepth) fail(nestedTooDeeplyMessage(), token());
    }

    // A literal value in an expression becomes the next parameter unless its text must stay.
    void parameterise(Expr& e, size_t tokenIndex) {
        if (!parameters_ || parameters_->kept.contains(int(tokenIndex))) return;
        parameters_->found.push_back({int(tokenIndex), -1, false});
        e.parameter = int(parameters_->found.size());
        e.wholeNumber = e.kind == Expr::Kind::String && isWholeNumberText(e.text);
        const bool real = e.kind == Expr::Kind::Number &&
                          (e.text.contains(QLatin1Char('.')) || e.text.contains(QLatin1Char('e'), Qt::CaseInsensitive));
        e.text = placeholderText(e.parameter, real);
    }

    struct TokenRef {
        const Token& t;
        bool kind_is_end() const { return t.kind == Token::Kind::End; }
        bool isWord(const char* w) const { return t.isWord(w); }
        bool isOp(const char* o) const { return t.isOp(o); }
    };
    TokenRef at() const { return TokenRef{tokens_[index_]}; }
    const Token& token(size_t ahead = 0) const {
        return tokens_[std::min(index_ + ahead, tokens_.size() - 1)];
    }
    const Token& advance() { return tokens_[index_ < tokens_.size() - 1 ? index_++ : index_]; }

    [[noreturn]] void fail(const QString& message, const Token& t) const {
        throw DatabaseError(message, sql_, t.position);
    }
    [[noreturn]] void unexpected(const Token& t) const {
        if (t.kind == Token::Kind::End) fail(QStringLiteral("Incorrect syntax near the end of the statement"), t);
        fail(QStringLiteral("Incorrect syntax near '%1'").arg(t.text), t);
    }
    [[noreturn]] void unsupported(const QString& construct, const Token& t) const {
        fail(QStringLiteral("The construct '%1' is not supported by the embedded engine").arg(construct), t);
    }

    bool acceptWord(const char* w) {
        if (!token().isWord(w)) return false;
        advance();
        return true;
    }
    bool acceptOp(const char* o) {
        if (!token().isOp(o)) return false;
        advance();
        return true;
    }
    void expectWord(const char* w) {
        if (!acceptWord(w)) {
            const Token& t = token();
            fail(QStringLiteral("Incorrect syntax near '%1': expected %2").arg(t.text, QLatin1String(w)), t);
        }
    }
    void expectOp(const char* o) {
        if (!acceptOp(o)) {
            const Token& t = token();
            if (t.kind == Token::Kind::End) {
                fail(QStringLiteral("Incorrect syntax near the end of the statement: expected '%1'").arg(QLatin1String(o)), t);
            }
            fail(QStringLiteral("Incorrect syntax near '%1': expected '%2'").arg(t.text, QLatin1String(o)), t);
        }
    }
    static bool isOneOf(const Token& t, const char* const* words, size_t count) {
        if (t.kind != Token::Kind::Identifier || t.quoted) return false;
        for (size_t i = 0; i < count; ++i) {
            if (t.text.compare(QLatin1String(words[i]), Qt::CaseInsensitive) == 0) return true;
        }
        return false;
    }
    static bool isReserved(const Token& t) { return isOneOf(t, kReserved, std::size(kReserved)); }
    static bool startsStatement(const Token& t) {
        return isOneOf(t, kStatementWords, std::size(kStatementWords));
    }
    QString identifier() {
        const Token& t = token();
        if (t.kind != Token::Kind::Identifier || (!t.quoted && isReserved(t))) unexpected(t);
        advance();
        return t.text;
    }

    // a.b.c, a..c, [a].[b]
    QStringList multipartName() {
        QStringList parts;
        parts << identifier();
        while (token().isOp(".")) {
            advance();
            if (token().isOp(".")) {  // a..b: empty schema part
                parts << QString();
                continue;
            }
            parts << identifier();
        }
        return parts;
    }

    // ---- statements --------------------------------------------------------------------------

    StatementPtr statement(bool firstInBatch) {
        const Nested nested(*this);
        const Token& t = token();
        const int start = t.position;
        StatementPtr s;
        if (t.isWord("SELECT") || t.isOp("(")) {
            s = std::make_unique<Statement>(Statement::Kind::Select, start);
            s->select = selectStatement();
        } else if (t.isWord("INSERT")) {
            s = insertStatement();
        } else if (t.isWord("UPDATE")) {
            s = updateStatement();
        } else if (t.isWord("DELETE")) {
            s = deleteStatement();
        } else if (t.isWord("CREATE")) {
            s = createStatement();
        } else if (t.isWord("DROP")) {
            s = dropStatement();
        } else if (t.isWord("TRUNCATE")) {
            advance();
            expectWord("TABLE");
            s = std::make_unique<Statement>(Statement::Kind::Truncate, start);
            s->table = multipartName();
        } else if (t.isWord("ALTER")) {
            s = alterStatement();
        } else if (t.isWord("IF")) {
            s = ifStatement();
        } else if (t.isWord("BEGIN")) {
            s = beginStatement();
        } else if (t.isWord("COMMIT") || t.isWord("ROLLBACK")) {
            s = std::make_unique<Statement>(t.isWord("COMMIT") ? Statement::Kind::Commit : Statement::Kind::Rollback,
                                            start);
            advance();
            if (acceptWord("TRAN") || acceptWord("TRANSACTION") || acceptWord("WORK")) {
                if (token().kind == Token::Kind::Identifier && !startsStatement(token()) &&
                    !(token().isWord("WITH") && token(1).isOp("(")))
                    advance();
            }
            if (s->kind == Statement::Kind::Commit && token().isWord("WITH") && token(1).isOp("(")) {
                advance();
                advance();
                expectWord("DELAYED_DURABILITY");
                expectOp("=");
                if (acceptWord("ON")) s->delayedDurability = true;
                else expectWord("OFF");
                expectOp(")");
            }
        } else if (t.isWord("EXEC") || t.isWord("EXECUTE")) {
            advance();
            s = execStatement(start);
        } else if (t.kind == Token::Kind::Identifier && !t.quoted && startsStatement(t)) {
            unsupported(t.text.toUpper(), t);
        } else if (t.kind == Token::Kind::Identifier) {
            Q_UNUSED(firstInBatch);  // a bare procedure name runs the procedure, as at a batch start
            s = execStatement(start);
        } else {
            unexpected(t);
        }
        s->endPosition = token().position;
        return s;
    }

    StatementPtr execStatement(int start) {
        if (token().isOp("(")) {
            advance();
            auto s = std::make_unique<Statement>(Statement::Kind::ExecText, start);
            s->args.push_back(expression());
            expectOp(")");
            return s;
        }
        auto s = std::make_unique<Statement>(Statement::Kind::Exec, start);
        const QStringList name = multipartName();
        s->name = name.last();
        if (token().kind == Token::Kind::End || token().isOp(";") || startsStatement(token())) return s;
        do {
            const Token& t = token();
            if (t.kind == Token::Kind::Variable) unsupported(QStringLiteral("named or output procedure parameters"), t);
            if (t.kind == Token::Kind::Identifier && !t.quoted && !t.isWord("NULL")) {
                // An unquoted word is passed as text, as the server does.
                auto e = std::make_unique<Expr>(Expr::Kind::String, t.position);
                e->text = t.text;
                advance();
                s->args.push_back(std::move(e));
            } else {
                s->args.push_back(unary());
            }
        } while (acceptOp(","));
        return s;
    }

    StatementPtr beginStatement() {
        const Token& t = advance();
        if (acceptWord("TRAN") || acceptWord("TRANSACTION")) {
            if (token().kind == Token::Kind::Identifier && !startsStatement(token())) advance();
            return std::make_unique<Statement>(Statement::Kind::Begin, t.position);
        }
        auto block = std::make_unique<Statement>(Statement::Kind::Block, t.position);
        while (!token().isWord("END")) {
            if (token().kind == Token::Kind::End) unexpected(token());
            if (acceptOp(";")) continue;
            block->body.push_back(statement(false));
        }
        advance();
        return block;
    }

    StatementPtr ifStatement() {
        const Token& t = advance();
        auto s = std::make_unique<Statement>(Statement::Kind::If, t.position);
        s->condition = expression();
        s->body.push_back(statement(false));
        while (acceptOp(";")) {
        }
        if (acceptWord("ELSE")) s->elseBody.push_back(statement(false));
        return s;
    }

    StatementPtr insertStatement() {
        const Token& t = advance();
        auto s = std::make_unique<Statement>(Statement::Kind::Insert, t.position);
        acceptWord("INTO");
        s->table = multipartName();
        if (token().isOp("(") && !token(1).isWord("SELECT")) {
            advance();
            do s->columns << identifier();
            while (acceptOp(","));
            expectOp(")");
        }
        if (acceptWord("VALUES")) {
            do {
                expectOp("(");
                std::vector<ExprPtr> row;
                do row.push_back(expression());
                while (acceptOp(","));
                expectOp(")");
                s->values.push_back(std::move(row));
            } while (acceptOp(","));
        } else if (token().isWord("SELECT") || token().isOp("(")) {
            s->select = selectStatement();
        } else if (token().isWord("DEFAULT") && token(1).isWord("VALUES")) {
            advance();
            advance();
        } else if (token().isWord("EXEC") || token().isWord("EXECUTE")) {
            unsupported(QStringLiteral("INSERT ... EXEC"), token());
        } else {
            unexpected(token());
        }
        return s;
    }

    ExprPtr topClause() {
        if (!acceptWord("TOP")) return nullptr;
        ExprPtr e;
        if (acceptOp("(")) {
            e = expression();
            expectOp(")");
        } else {
            e = primary();
        }
        if (token().isWord("PERCENT")) unsupported(QStringLiteral("TOP ... PERCENT"), token());
        return e;
    }

    StatementPtr updateStatement() {
        const Token& t = advance();
        auto s = std::make_unique<Statement>(Statement::Kind::Update, t.position);
        s->top = topClause();
        s->table = multipartName();
        tableHints();
        expectWord("SET");
        do {
            Assignment a;
            a.column = multipartName();
            expectOp("=");
            a.value = expression();
            s->assignments.push_back(std::move(a));
        } while (acceptOp(","));
        if (acceptWord("FROM")) s->from = fromList();
        if (acceptWord("WHERE")) s->where = expression();
        return s;
    }

    StatementPtr deleteStatement() {
        const Token& t = advance();
        auto s = std::make_unique<Statement>(Statement::Kind::Delete, t.position);
        s->top = topClause();
        acceptWord("FROM");
        s->table = multipartName();
        tableHints();
        if (acceptWord("FROM")) s->from = fromList();
        if (acceptWord("WHERE")) s->where = expression();
        return s;
    }

    TypeName typeName() {
        TypeName type;
        type.name = identifier().toUpper();
        if (acceptOp("(")) {
            if (acceptWord("MAX")) {
                type.length = -2;
            } else {
                type.length = numberToken();
                if (acceptOp(",")) type.scale = numberToken();
            }
            expectOp(")");
        }
        return type;
    }

    int numberToken() {
        const Token& t = token();
        if (t.kind != Token::Kind::Number) unexpected(t);
        advance();
        return t.text.toInt();
    }

    ColumnDef columnDef() {
        ColumnDef c;
        c.position = token().position;
        c.name = identifier();
        c.type = typeName();
        for (;;) {
            if (acceptWord("IDENTITY")) {
                c.identity = true;
                if (acceptOp("(")) {
                    numberToken();
                    expectOp(",");
                    numberToken();
                    expectOp(")");
                }
            } else if (acceptWord("NOT")) {
                expectWord("NULL");
                c.notNull = true;
            } else if (acceptWord("NULL")) {
            } else if (acceptWord("DEFAULT")) {
                c.defaultValue = unary();
            } else if (acceptWord("PRIMARY")) {
                expectWord("KEY");
                acceptWord("CLUSTERED") || acceptWord("NONCLUSTERED");
                c.primaryKey = true;
            } else if (acceptWord("COLLATE")) {
                identifier();
            } else if (acceptWord("CONSTRAINT")) {
                identifier();
            } else {
                break;
            }
        }
        return c;
    }

    StatementPtr createStatement() {
        const Token& t = advance();
        if (acceptWord("TABLE")) {
            auto s = std::make_unique<Statement>(Statement::Kind::CreateTable, t.position);
            s->table = multipartName();
            expectOp("(");
            do {
                if (token().isWord("PRIMARY") || token().isWord("CONSTRAINT")) {
                    if (acceptWord("CONSTRAINT")) identifier();
                    expectWord("PRIMARY");
                    expectWord("KEY");
                    acceptWord("CLUSTERED") || acceptWord("NONCLUSTERED");
                    expectOp("(");
                    do s->columns << identifier();
                    while (acceptOp(","));
                    expectOp(")");
                } else {
                    s->columnDefs.push_back(columnDef());
                }
            } while (acceptOp(","));
            expectOp(")");
            return s;
        }
        bool unique = acceptWord("UNIQUE");
        acceptWord("CLUSTERED") || acceptWord("NONCLUSTERED");
        if (acceptWord("INDEX")) {
            auto s = std::make_unique<Statement>(Statement::Kind::CreateIndex, t.position);
            s->unique = unique;
            s->name = identifier();
            expectWord("ON");
            s->table = multipartName();
            expectOp("(");
            do {
                s->columns << identifier();
                bool desc = false;
                if (acceptWord("DESC")) desc = true;
                else acceptWord("ASC");
                s->descending.push_back(desc);
            } while (acceptOp(","));
            expectOp(")");
            return s;
        }
        unsupported(QStringLiteral("CREATE ") + token().text.toUpper(), token());
    }

    StatementPtr dropStatement() {
        const Token& t = advance();
        if (acceptWord("TABLE")) {
            auto s = std::make_unique<Statement>(Statement::Kind::DropTable, t.position);
            s->table = multipartName();
            if (token().isOp(",")) unsupported(QStringLiteral("DROP TABLE with several tables"), token());
            return s;
        }
        if (acceptWord("INDEX")) {
            auto s = std::make_unique<Statement>(Statement::Kind::DropIndex, t.position);
            QStringList name = multipartName();
            s->name = name.takeLast();
            // Drop Index I On T, or the older Drop Index T.I (the table's name before the index's).
            if (acceptWord("ON")) s->table = multipartName();
            else s->table = name;
            return s;
        }
        unsupported(QStringLiteral("DROP ") + token().text.toUpper(), token());
    }

    StatementPtr alterStatement() {
        const Token& t = advance();
        expectWord("TABLE");
        auto s = std::make_unique<Statement>(Statement::Kind::AlterAdd, t.position);
        s->table = multipartName();
        if (!acceptWord("ADD")) unsupported(QStringLiteral("ALTER TABLE ") + token().text.toUpper(), token());
        acceptWord("COLUMN");
        do s->columnDefs.push_back(columnDef());
        while (acceptOp(","));
        return s;
    }

    // ---- select ------------------------------------------------------------------------------

    SelectPtr selectStatement() {
        const Nested nested(*this);
        SelectPtr first;
        if (acceptOp("(")) {
            first = selectStatement();
            expectOp(")");
        } else {
            first = selectCore();
        }
        Select* last = first.get();
        int terms = 1;
        while (token().isWord("UNION")) {
            if (++terms > kMaxUnionTerms) fail(nestedTooDeeplyMessage(), token());
            advance();
            last->unionAll = acceptWord("ALL");
            if (acceptOp("(")) {
                last->unionNext = selectStatement();
                expectOp(")");
            } else {
                last->unionNext = selectCore();
            }
            while (last->unionNext) last = last->unionNext.get();
        }
        if (acceptWord("ORDER")) {
            expectWord("BY");
            // The order of a union applies to the whole; it is kept on the first select.
            Select* target = first->unionNext ? first.get() : last;
            do {
                OrderItem item;
                item.expr = expression();
                if (acceptWord("DESC")) item.descending = true;
                else acceptWord("ASC");
                target->orderBy.push_back(std::move(item));
            } while (acceptOp(","));
        }
        return first;
    }

    SelectPtr selectCore() {
        const Token& t = token();
        expectWord("SELECT");
        auto s = std::make_unique<Select>();
        s->position = t.position;
        if (acceptWord("DISTINCT")) s->distinct = true;
        else acceptWord("ALL");
        s->top = topClause();
        do s->items.push_back(selectItem());
        while (acceptOp(","));
        if (acceptWord("INTO")) s->into = multipartName();
        if (acceptWord("FROM")) s->from = fromList();
        if (acceptWord("WHERE")) s->where = expression();
        if (acceptWord("GROUP")) {
            expectWord("BY");
            do s->groupBy.push_back(expression());
            while (acceptOp(","));
        }
        if (acceptWord("HAVING")) s->having = expression();
        return s;
    }

    SelectItem selectItem() {
        SelectItem item;
        const Token& t = token();
        // alias = expression
        if (t.kind == Token::Kind::Identifier && !isReserved(t) && token(1).isOp("=") ) {
            item.alias = t.text;
            advance();
            advance();
            item.expr = expression();
            return item;
        }
        if (t.kind == Token::Kind::String && token(1).isOp("=")) {
            item.alias = t.text;
            advance();
            advance();
            item.expr = expression();
            return item;
        }
        item.expr = expression();
        if (acceptWord("AS")) {
            const Token& a = token();
            if (a.kind == Token::Kind::String) {
                item.alias = a.text;
                advance();
            } else {
                item.alias = identifier();
            }
        } else if ((token().kind == Token::Kind::Identifier && !isReserved(token())) ||
                   token().kind == Token::Kind::String) {
            item.alias = advance().text;
        }
        return item;
    }

    void tableHints() {
        if (token().isWord("WITH") && token(1).isOp("(")) {
            advance();
            advance();
            while (!token().isOp(")")) {
                if (token().kind == Token::Kind::End) unexpected(token());
                advance();
            }
            advance();
        }
    }

    TableRef tableRef() {
        TableRef ref;
        ref.position = token().position;
        if (acceptOp("(")) {
            ref.derived = selectStatement();
            expectOp(")");
        } else {
            ref.parts = multipartName();
        }
        if (acceptWord("AS")) {
            ref.alias = identifier();
        } else if (token().kind == Token::Kind::Identifier && !isReserved(token())) {
            ref.alias = advance().text;
        }
        tableHints();
        if (ref.derived && ref.alias.isEmpty()) {
            fail(QStringLiteral("A derived table must have an alias"), token());
        }
        return ref;
    }

    std::vector<FromItem> fromList() {
        std::vector<FromItem> items;
        do {
            FromItem item;
            item.table = tableRef();
            for (;;) {
                QString kind;
                if (acceptWord("JOIN")) {
                    kind = QStringLiteral("INNER");
                } else if (acceptWord("INNER")) {
                    kind = QStringLiteral("INNER");
                    expectWord("JOIN");
                } else if (token().isWord("LEFT") || token().isWord("RIGHT") || token().isWord("FULL")) {
                    kind = advance().text.toUpper();
                    acceptWord("OUTER");
                    expectWord("JOIN");
                } else if (acceptWord("CROSS")) {
                    kind = QStringLiteral("CROSS");
                    expectWord("JOIN");
                } else {
                    break;
                }
                Join join;
                join.kind = kind;
                join.table = tableRef();
                if (kind != QLatin1String("CROSS")) {
                    expectWord("ON");
                    join.on = expression();
                }
                item.joins.push_back(std::move(join));
            }
            items.push_back(std::move(item));
        } while (acceptOp(","));
        return items;
    }

    // ---- expressions -------------------------------------------------------------------------

    ExprPtr binary(const Token& op, ExprPtr left, ExprPtr right) {
        auto e = std::make_unique<Expr>(Expr::Kind::Binary, op.position);
        e->text = op.text.toUpper();
        e->args.push_back(std::move(left));
        e->args.push_back(std::move(right));
        return e;
    }

    ExprPtr expression() {
        const Nested nested(*this);
        return orExpr();
    }

    // Each term of a chain makes the tree one level higher, though the chain is read in a loop.
    ExprPtr orExpr() {
        ExprPtr left = andExpr();
        int chain = 0;
        while (token().isWord("OR")) {
            deeper(1);
            ++chain;
            const Token& op = advance();
            left = binary(op, std::move(left), andExpr());
        }
        level_ -= chain;
        return left;
    }

    ExprPtr andExpr() {
        ExprPtr left = notExpr();
        int chain = 0;
        while (token().isWord("AND")) {
            deeper(1);
            ++chain;
            const Token& op = advance();
            left = binary(op, std::move(left), notExpr());
        }
        level_ -= chain;
        return left;
    }

    ExprPtr notExpr() {
        if (token().isWord("NOT")) {
            const Nested nested(*this);
            const Token& op = advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Unary, op.position);
            e->text = QStringLiteral("NOT");
            e->args.push_back(notExpr());
            return e;
        }
        return predicate();
    }

    ExprPtr predicate() {
        if (token().isWord("EXISTS")) {
            const Token& t = advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Exists, t.position);
            expectOp("(");
            e->select = selectStatement();
            expectOp(")");
            return e;
        }
        ExprPtr left = additive();
        const Token& t = token();
        static const char* comparisons[] = {"=", "<>", "!=", "<", ">", "<=", ">=", "!<", "!>"};
        for (const char* op : comparisons) {
            if (t.isOp(op)) {
                advance();
                if (token().isWord("ALL") || token().isWord("ANY") || token().isWord("SOME")) {
                    unsupported(token().text.toUpper() + QStringLiteral(" comparisons"), token());
                }
                return binary(t, std::move(left), additive());
            }
        }
        bool negated = false;
        if (t.isWord("NOT") && (token(1).isWord("IN") || token(1).isWord("LIKE") || token(1).isWord("BETWEEN"))) {
            advance();
            negated = true;
        }
        const Token& k = token();
        if (k.isWord("IN")) {
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::In, k.position);
            e->negated = negated;
            e->args.push_back(std::move(left));
            expectOp("(");
            if (token().isWord("SELECT")) {
                e->select = selectStatement();
            } else {
                do e->args.push_back(expression());
                while (acceptOp(","));
            }
            expectOp(")");
            return e;
        }
        if (k.isWord("LIKE")) {
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Like, k.position);
            e->negated = negated;
            e->args.push_back(std::move(left));
            e->args.push_back(additive());
            if (acceptWord("ESCAPE")) e->args.push_back(additive());
            return e;
        }
        if (k.isWord("BETWEEN")) {
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Between, k.position);
            e->negated = negated;
            e->args.push_back(std::move(left));
            e->args.push_back(additive());
            expectWord("AND");
            e->args.push_back(additive());
            return e;
        }
        if (k.isWord("IS")) {
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::IsNull, k.position);
            e->negated = acceptWord("NOT");
            expectWord("NULL");
            e->args.push_back(std::move(left));
            return e;
        }
        return left;
    }

    ExprPtr additive() {
        ExprPtr left = multiplicative();
        for (int chain = 1;; ++chain) {
            const Token& t = token();
            if (t.isOp("+") || t.isOp("-") || t.isOp("&") || t.isOp("|") || t.isOp("^")) {
                deeper(1);
                advance();
                left = binary(t, std::move(left), multiplicative());
            } else if (t.isOp("||")) {
                unsupported(QStringLiteral("||"), t);
            } else {
                level_ -= chain - 1;
                return left;
            }
        }
    }

    ExprPtr multiplicative() {
        ExprPtr left = unary();
        for (int chain = 1;; ++chain) {
            const Token& t = token();
            if (t.isOp("*") || t.isOp("/") || t.isOp("%")) {
                deeper(1);
                advance();
                left = binary(t, std::move(left), unary());
            } else {
                level_ -= chain - 1;
                return left;
            }
        }
    }

    ExprPtr unary() {
        const Token& t = token();
        if (t.isOp("-") || t.isOp("+") || t.isOp("~")) {
            const Nested nested(*this);
            advance();
            ExprPtr operand = unary();
            if (t.isOp("-") && operand->kind == Expr::Kind::Number) {
                if (operand->parameter > 0) {
                    LiteralParameter& p = parameters_->found[operand->parameter - 1];
                    p.negate = !p.negate;
                } else {
                    operand->text.prepend(QLatin1Char('-'));
                }
                operand->position = t.position;
                return operand;
            }
            if (t.isOp("+")) return operand;
            auto e = std::make_unique<Expr>(Expr::Kind::Unary, t.position);
            e->text = t.text;
            e->args.push_back(std::move(operand));
            return e;
        }
        return primary();
    }

    ExprPtr primary() {
        const Token& t = token();
        switch (t.kind) {
            case Token::Kind::Number: {
                const size_t at = index_;
                advance();
                auto e = std::make_unique<Expr>(Expr::Kind::Number, t.position);
                e->text = t.text;
                parameterise(*e, at);
                return e;
            }
            case Token::Kind::String: {
                const size_t at = index_;
                advance();
                auto e = std::make_unique<Expr>(Expr::Kind::String, t.position);
                e->text = t.text;
                parameterise(*e, at);
                return e;
            }
            case Token::Kind::Variable:
                unsupported(QStringLiteral("variables (") + t.text + QLatin1Char(')'), t);
            case Token::Kind::Operator:
                if (t.isOp("(")) {
                    advance();
                    if (token().isWord("SELECT")) {
                        auto e = std::make_unique<Expr>(Expr::Kind::Subquery, t.position);
                        e->select = selectStatement();
                        expectOp(")");
                        return e;
                    }
                    ExprPtr inner = expression();
                    expectOp(")");
                    return inner;
                }
                if (t.isOp("*")) {
                    advance();
                    return std::make_unique<Expr>(Expr::Kind::Star, t.position);
                }
                unexpected(t);
            case Token::Kind::End:
                unexpected(t);
            case Token::Kind::Identifier:
                break;
        }
        if (t.isWord("NULL")) {
            advance();
            return std::make_unique<Expr>(Expr::Kind::Null, t.position);
        }
        if (t.isWord("CASE")) return caseExpr();
        if (t.isWord("CAST") && token(1).isOp("(")) {
            advance();
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Cast, t.position);
            e->args.push_back(expression());
            expectWord("AS");
            e->type = typeName();
            expectOp(")");
            return e;
        }
        if (t.isWord("CONVERT") && token(1).isOp("(")) {
            advance();
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Cast, t.position);
            e->type = typeName();
            expectOp(",");
            e->args.push_back(expression());
            if (acceptOp(",")) expression();  // style: dates are text here, so it has no effect
            expectOp(")");
            return e;
        }
        if (t.isWord("IDENTITY") && token(1).isOp("(")) {
            advance();
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Identity, t.position);
            e->type = typeName();
            if (acceptOp(",")) {
                e->args.push_back(unary());
                expectOp(",");
                e->args.push_back(unary());
            }
            expectOp(")");
            return e;
        }
        // Left( and Right( are the string functions; the words alone start a join.
        const bool stringFunction = (t.isWord("LEFT") || t.isWord("RIGHT")) && token(1).isOp("(");
        if (!t.quoted && isReserved(t) && !stringFunction) unexpected(t);
        // name, name.name..., function call, T.*
        QStringList parts;
        parts << t.text;
        advance();
        while (token().isOp(".")) {
            advance();
            if (token().isOp("*")) {
                const Token& star = advance();
                auto e = std::make_unique<Expr>(Expr::Kind::Star, star.position);
                e->parts = parts;
                return e;
            }
            if (token().isOp(".")) {
                parts << QString();
                continue;
            }
            parts << identifier();
        }
        if (token().isOp("(")) {
            advance();
            auto e = std::make_unique<Expr>(Expr::Kind::Function, t.position);
            e->text = parts.takeLast();
            e->parts = parts;
            if (!token().isOp(")")) {
                if (acceptWord("DISTINCT")) e->distinct = true;
                do e->args.push_back(expression());
                while (acceptOp(","));
            }
            expectOp(")");
            if (token().isWord("OVER")) unsupported(QStringLiteral("OVER (window functions)"), token());
            return e;
        }
        auto e = std::make_unique<Expr>(Expr::Kind::Column, t.position);
        e->parts = parts;
        return e;
    }

    ExprPtr caseExpr() {
        const Token& t = advance();
        auto e = std::make_unique<Expr>(Expr::Kind::Case, t.position);
        if (!token().isWord("WHEN")) {
            e->simpleCase = true;
            e->args.push_back(expression());
        }
        if (!token().isWord("WHEN")) unexpected(token());
        while (acceptWord("WHEN")) {
            e->args.push_back(expression());
            expectWord("THEN");
            e->args.push_back(expression());
        }
        if (acceptWord("ELSE")) {
            e->hasElse = true;
            e->args.push_back(expression());
        }
        expectWord("END");
        return e;
    }
};

}  // namespace

std::vector<StatementPtr> parseBatch(const QString& sql) { return Parser(sql, tokenize(sql), nullptr).batch(); }

std::vector<StatementPtr> parseBatch(const QString& sql, std::vector<Token> tokens, LiteralParameters* parameters) {
    return Parser(sql, std::move(tokens), parameters).batch();
}

}  // namespace tr::engine
