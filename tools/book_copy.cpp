#include "tools/book_copy.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"
#include "db/engine/sql_identifiers.h"
#include "db/schema/schema.h"

namespace tr::tools {

namespace {

using tr::db::DatabaseError;
using tr::db::ResultSet;
using tr::tsql::TsqlConnection;

// Rows read from the source at a time (tables with an identity key are read in such pages; the
// others are small enough to read whole), and the size of one multi-row Insert. Both backends keep
// the last 2000 texts they ran with their parse trees, and a copy's texts are never run again, so
// short Inserts keep that memory small; measured on a 600,000-row book they are also the quickest.
constexpr int kPageRows = 5000;
constexpr int kMaxInsertRows = 100;
constexpr int kMaxInsertValues = 200;

// A table as the schema makes it: its Create Table, the statements run once it holds its rows (its
// indexes, and any other statement the schema puts after it), and its identity column.
struct TablePlan {
    QString name;
    QString create;
    QStringList afterRows;
    QString identity;
    bool inSource = false;
    qint64 sourceRows = 0;
};

struct BookPlan {
    QString name;
    std::vector<TablePlan> tables;
};

std::vector<TablePlan> tablesOf(const QStringList& statements) {
    static const QRegularExpression table(QStringLiteral("^Create Table (\\w+)"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression index(QStringLiteral("^Create (?:Unique )?Index \\w+ On (\\w+)"),
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression identity(QStringLiteral("(\\w+) (?:Big|Small|Tiny)?Int Identity\\b"),
                                             QRegularExpression::CaseInsensitiveOption);
    std::vector<TablePlan> tables;
    for (const QString& statement : statements) {
        if (const auto m = table.match(statement); m.hasMatch()) {
            TablePlan plan;
            plan.name = m.captured(1);
            plan.create = statement;
            if (const auto id = identity.match(statement); id.hasMatch()) plan.identity = id.captured(1);
            tables.push_back(plan);
        } else if (!tables.empty()) {
            const auto i = index.match(statement);
            const auto on = std::find_if(tables.begin(), tables.end(), [&](const TablePlan& plan) {
                return i.hasMatch() && plan.name.compare(i.captured(1), Qt::CaseInsensitive) == 0;
            });
            (on != tables.end() ? *on : tables.back()).afterRows << statement;
        }
    }
    return tables;
}

QString bracketed(const QString& name) { return QLatin1Char('[') + name + QLatin1Char(']'); }

ResultSet firstSet(tr::db::ExecResult&& result, const QString& sql) {
    if (result.resultSets.empty()) throw DatabaseError(QStringLiteral("No rows came back"), sql);
    return std::move(result.resultSets.front());
}

qint64 countRows(TsqlConnection& db, const QString& table) {
    const QString sql = QStringLiteral("Select Count(*) From ") + bracketed(table);
    const ResultSet set = firstSet(db.execute(sql), sql);
    return set.rows.empty() ? 0 : set.rows.front().front().toLongLong();
}

// The user tables of the connection's database, by lower-case name.
QHash<QString, QString> userTables(TsqlConnection& db) {
    const QString sql = QStringLiteral("Select name From sysobjects Where xtype = 'U'");
    QHash<QString, QString> names;
    const ResultSet set = firstSet(db.execute(sql), sql);
    for (const tr::db::Row& row : set.rows) {
        const QString name = row.front().toString().trimmed();
        names.insert(name.toLower(), name);
    }
    return names;
}

QString literal(const TsqlConnection& db, const QVariant& value) {
    if (!value.isValid() || value.isNull()) return QStringLiteral("Null");
    switch (value.typeId()) {
        case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
        case QMetaType::Bool:
            return tr::db::sqlNumber(value.toLongLong());
        case QMetaType::Double: case QMetaType::Float:
            return tr::db::sqlNumber(value.toDouble());
        default:
            return db.text(value.toString());
    }
}

// An account code as the TSQL collation compares it: blanks at either end, ASCII case and the
// Arabic forms of yeh and kaf do not count. Grouping on either backend may keep any spelling of
// one account, so both sides' groups are merged under this key.
QString accountKey(const tr::db::Row& row, int levels) {
    QStringList parts;
    for (int i = 0; i < levels; ++i) {
        const QVariant& v = row.at(i);
        if (!v.isValid() || v.isNull()) {
            parts << QStringLiteral("<null>");
            continue;
        }
        QString code = v.toString();
        qsizetype from = 0, to = code.size();
        while (from < to && code.at(from) == QLatin1Char(' ')) ++from;
        while (to > from && code.at(to - 1) == QLatin1Char(' ')) --to;
        code = code.mid(from, to - from);
        for (QChar& c : code) {
            const char16_t u = c.unicode();
            if (u >= u'A' && u <= u'Z') c = QChar(char16_t(u + 32));
            else if (u == 0x064A || u == 0x0649) c = QChar(0x06CC);
            else if (u == 0x0643) c = QChar(0x06A9);
        }
        parts << QLatin1Char('\'') + code + QLatin1Char('\'');
    }
    return parts.join(QLatin1Char('-'));
}

struct Balance {
    double bed = 0;
    double bes = 0;
    qint64 lines = 0;
};

const QStringList kAccountColumns = {QStringLiteral("Koll"), QStringLiteral("Moein"), QStringLiteral("Tafsily"),
                                     QStringLiteral("Tafsily2"), QStringLiteral("ProjectCod")};

std::map<QString, Balance> balances(TsqlConnection& db) {
    const QString columns = kAccountColumns.join(QStringLiteral(", "));
    const QString sql = QStringLiteral("Select ") + columns +
                        QStringLiteral(", Sum(Bed) As Bed, Sum(Bes) As Bes, Count(*) As Lines From Asnad Group By ") +
                        columns;
    std::map<QString, Balance> out;
    const int levels = int(kAccountColumns.size());
    const ResultSet set = firstSet(db.execute(sql), sql);
    for (const tr::db::Row& row : set.rows) {
        Balance& b = out[accountKey(row, levels)];
        b.bed += row.at(levels).toDouble();
        b.bes += row.at(levels + 1).toDouble();
        b.lines += row.at(levels + 2).toLongLong();
    }
    return out;
}

// Sums of the same amounts added in another order may differ in the last bits, never more.
bool sameAmount(double a, double b) {
    return std::fabs(a - b) <= 1e-9 * std::max({1.0, std::fabs(a), std::fabs(b)});
}

QString amountText(double v) { return QString::number(v, 'f', 2); }

// Whether `books` holds `name`; a backend that cannot be asked fails the copy of that book.
bool holds(tr::tsql::Books& books, const QString& name, const QString& side) {
    try {
        return books.databaseExists(name);
    } catch (const DatabaseError& e) {
        throw BookCopyError(name, QStringLiteral("cannot reach the %1: ").arg(side) + e.message());
    }
}

// On the server an identity's sequence does not follow keys written explicitly; each is moved past
// the highest key copied. The embedded engine's keys follow the highest row by themselves.
void continueIdentities(TsqlConnection& db, const BookPlan& book) {
    for (const TablePlan& table : book.tables)
        if (!table.identity.isEmpty()) db.continueIdentity(table.name);
}

class BookCopier {
  public:
    BookCopier(tr::tsql::Books& source, tr::tsql::Books& target, const ProgressSink& progress)
        : source_(source), target_(target), progress_(progress) {}

    CopiedBook copy(BookPlan& book, int number, int count);

  private:
    void copyTable(const TablePlan& table);
    void insertRows(const TablePlan& table, const QStringList& columns, const std::vector<tr::db::Row>& rows);
    void check(const BookPlan& book, CopiedBook& copied);
    void report(CopyProgress::Stage stage);
    // Rolls the book back and takes it off the target when the copy made it; answers what of
    // that could not be done, to add to the reason.
    QString abandon(bool existed);

    tr::tsql::Books& source_;
    tr::tsql::Books& target_;
    const ProgressSink& progress_;
    std::unique_ptr<TsqlConnection> from_;
    std::unique_ptr<TsqlConnection> to_;
    CopyProgress state_;
};

void BookCopier::report(CopyProgress::Stage stage) {
    state_.stage = stage;
    if (progress_) progress_(state_);
}

CopiedBook BookCopier::copy(BookPlan& book, int number, int count) {
    state_ = CopyProgress();
    state_.book = book.name;
    state_.bookNumber = number;
    state_.bookCount = count;
    CopiedBook copied;
    copied.name = book.name;
    copied.tables = int(book.tables.size());
    const bool existed = holds(target_, book.name, QStringLiteral("target"));
    QString doing = QStringLiteral("reading the source");
    try {
        // The source's writers wait while its book is read, so the rows and the counts checked
        // against are one state of it.
        from_ = source_.connect(book.name);
        from_->execute(QStringLiteral("Begin Tran"));
        const QHash<QString, QString> present = userTables(*from_);
        for (TablePlan& table : book.tables) {
            table.inSource = present.contains(table.name.toLower());
            table.sourceRows = table.inSource ? countRows(*from_, table.name) : 0;
            state_.bookRows += table.sourceRows;
        }
        doing = QStringLiteral("opening it on the target");
        to_ = target_.connect(book.name);
        const QHash<QString, QString> made = userTables(*to_);
        to_->execute(QStringLiteral("Begin Tran"));
        for (const TablePlan& table : book.tables) {
            // A table is filled before its indexes are made, which is quicker than keeping them.
            const bool make = !made.contains(table.name.toLower());
            doing = QStringLiteral("creating table ") + table.name;
            if (make) to_->execute(table.create);
            doing = QStringLiteral("copying table ") + table.name;
            state_.table = table.name;
            state_.tableRows = table.sourceRows;
            state_.tableCopied = 0;
            report(CopyProgress::Stage::Copying);
            if (table.sourceRows > 0) copyTable(table);
            doing = QStringLiteral("indexing table ") + table.name;
            if (make)
                for (const QString& statement : table.afterRows) to_->execute(statement);
        }
        doing = QStringLiteral("setting the identity keys");
        continueIdentities(*to_, book);
        doing = QStringLiteral("checking the copy");
        state_.table.clear();
        report(CopyProgress::Stage::Checking);
        check(book, copied);
        doing = QStringLiteral("committing");
        to_->execute(QStringLiteral("Commit Tran"));
    } catch (const DatabaseError& e) {
        throw BookCopyError(book.name, doing + QStringLiteral(": ") + e.message() + abandon(existed));
    } catch (const BookCopyError& e) {
        throw BookCopyError(book.name, e.reason() + abandon(existed));
    }
    copied.rows = state_.bookRows;
    try {
        from_->execute(QStringLiteral("Rollback Tran"));
        from_.reset();
        // A bulk write renews the planner's statistics of the tables it filled.
        to_->execute(QStringLiteral("Exec sp_updatestats"));
        to_.reset();
    } catch (const DatabaseError& e) {
        throw BookCopyError(book.name, QStringLiteral("copied and kept, but then: ") + e.message());
    }
    report(CopyProgress::Stage::Kept);
    return copied;
}

QString BookCopier::abandon(bool existed) {
    // A connection whose rollback fails is gone, and its transaction went with it.
    for (std::unique_ptr<TsqlConnection>* db : {&to_, &from_}) {
        try {
            if (*db && (*db)->inTransaction()) (*db)->execute(QStringLiteral("Rollback Tran"));
        } catch (const DatabaseError&) {
        }
        db->reset();
    }
    if (existed) return {};
    try {
        target_.dropDatabase(state_.book);
    } catch (const DatabaseError& e) {
        return QStringLiteral("; rolled back, but its empty database is left on the target (%1)").arg(e.message());
    }
    return {};
}

void BookCopier::copyTable(const TablePlan& table) {
    const QString name = bracketed(table.name);
    if (table.identity.isEmpty()) {
        const QString sql = QStringLiteral("Select * From ") + name;
        const ResultSet set = firstSet(from_->execute(sql), sql);
        insertRows(table, set.columns, set.rows);
        return;
    }
    const QString key = bracketed(table.identity);
    qint64 last = 0;
    bool first = true;
    for (;;) {
        const QString sql = QStringLiteral("Select Top %1 * From %2%3 Order By %4")
                                .arg(kPageRows)
                                .arg(name,
                                     first ? QString() : QStringLiteral(" Where %1 > %2").arg(key, tr::db::sqlNumber(last)),
                                     key);
        const ResultSet set = firstSet(from_->execute(sql), sql);
        if (set.rows.empty()) return;
        const int at = set.columnIndex(table.identity);
        if (at < 0) throw DatabaseError(QStringLiteral("The source's table has no column %1").arg(table.identity));
        insertRows(table, set.columns, set.rows);
        last = set.rows.back().at(at).toLongLong();
        first = false;
        if (set.rows.size() < size_t(kPageRows)) return;
    }
}

void BookCopier::insertRows(const TablePlan& table, const QStringList& columns, const std::vector<tr::db::Row>& rows) {
    if (rows.empty()) return;
    QStringList names;
    for (const QString& c : columns) names << bracketed(c);
    const QString head = QStringLiteral("Insert Into ") + bracketed(table.name) + QStringLiteral(" (") +
                         names.join(QStringLiteral(", ")) + QStringLiteral(") Values ");
    const size_t perInsert = size_t(std::clamp(kMaxInsertValues / std::max(1, int(columns.size())), 1, kMaxInsertRows));
    for (size_t from = 0; from < rows.size(); from += perInsert) {
        const size_t to = std::min(rows.size(), from + perInsert);
        QString sql = head;
        for (size_t r = from; r < to; ++r) {
            if (r > from) sql += QStringLiteral(", ");
            sql += QLatin1Char('(');
            const tr::db::Row& row = rows[r];
            for (size_t c = 0; c < row.size(); ++c) {
                if (c > 0) sql += QStringLiteral(", ");
                sql += literal(*to_, row[c]);
            }
            sql += QLatin1Char(')');
        }
        to_->execute(sql);
        state_.tableCopied += qint64(to - from);
        state_.bookCopied += qint64(to - from);
        report(CopyProgress::Stage::Copying);
    }
}

void BookCopier::check(const BookPlan& book, CopiedBook& copied) {
    QStringList differences;
    for (const TablePlan& table : book.tables) {
        const qint64 there = countRows(*to_, table.name);
        if (there != table.sourceRows)
            differences << QStringLiteral("%1 has %2 rows on the source and %3 on the target")
                               .arg(table.name)
                               .arg(table.sourceRows)
                               .arg(there);
    }
    const auto ledger = std::find_if(book.tables.begin(), book.tables.end(), [](const TablePlan& t) {
        return t.name.compare(QLatin1String("Asnad"), Qt::CaseInsensitive) == 0;
    });
    if (ledger != book.tables.end()) {
        const std::map<QString, Balance> here = ledger->inSource ? balances(*from_) : std::map<QString, Balance>();
        const std::map<QString, Balance> there = balances(*to_);
        QSet<QString> accounts;
        for (const auto& [key, b] : here) accounts.insert(key);
        for (const auto& [key, b] : there) accounts.insert(key);
        QStringList sorted(accounts.begin(), accounts.end());
        sorted.sort();
        for (const QString& account : sorted) {
            const Balance a = here.count(account) ? here.at(account) : Balance();
            const Balance b = there.count(account) ? there.at(account) : Balance();
            if (a.lines != b.lines || !sameAmount(a.bed, b.bed) || !sameAmount(a.bes, b.bes)) {
                differences << QStringLiteral("account %1: Bed %2, Bes %3 in %4 lines on the source; Bed %5, Bes %6 in "
                                              "%7 lines on the target")
                                   .arg(account, amountText(a.bed), amountText(a.bes))
                                   .arg(a.lines)
                                   .arg(amountText(b.bed), amountText(b.bes))
                                   .arg(b.lines);
            }
        }
        copied.accounts = int(accounts.size());
    }
    if (differences.isEmpty()) return;
    constexpr int kShown = 10;
    QString reason = QStringLiteral("the copy differs from the source: ") +
                     differences.mid(0, kShown).join(QStringLiteral("; "));
    if (differences.size() > kShown) reason += QStringLiteral("; and %1 more").arg(differences.size() - kShown);
    throw BookCopyError(book.name, reason);
}

// The books to copy, with the checks that come before any write: the source holds every book
// SDC_Company lists and no table the schema does not make, and the target holds no rows of them.
std::vector<BookPlan> planBooks(tr::tsql::Books& source, tr::tsql::Books& target) {
    const QString suiteName = QString::fromUtf8(tr::schema::kSuiteDatabase);
    if (!holds(source, suiteName, QStringLiteral("source")))
        throw BookCopyError(suiteName, QStringLiteral("the source holds no suite database"));
    std::vector<BookPlan> books;
    QSet<QString> named;
    try {
        auto suite = source.connect(suiteName);
        const QString sql = QStringLiteral("Select sCode, sYear From SDC_Company Order By sCode, sYear");
        const ResultSet companies = firstSet(suite->execute(sql), sql);
        for (const tr::db::Row& row : companies.rows) {
            const QString name = tr::schema::companyDatabaseName(row.at(0).toString(), row.at(1).toString());
            if (named.contains(name.toLower())) continue;
            named.insert(name.toLower());
            books.push_back({name, tablesOf(tr::schema::companyStatements())});
        }
    } catch (const DatabaseError& e) {
        throw BookCopyError(suiteName, QStringLiteral("cannot read its companies: ") + e.message());
    }
    books.push_back({suiteName, tablesOf(tr::schema::suiteStatements())});

    for (const BookPlan& book : books) {
        if (!holds(source, book.name, QStringLiteral("source")))
            throw BookCopyError(book.name, QStringLiteral("SDC_Company lists it but the source does not hold it"));
        try {
            auto db = source.connect(book.name);
            QHash<QString, QString> extra = userTables(*db);
            for (const TablePlan& table : book.tables) extra.remove(table.name.toLower());
            if (!extra.isEmpty()) {
                QStringList names = extra.values();
                names.sort();
                throw BookCopyError(book.name, QStringLiteral("the source holds tables the books' schema does not make (%1); "
                                                              "they would not be copied")
                                                   .arg(names.join(QStringLiteral(", "))));
            }
        } catch (const DatabaseError& e) {
            throw BookCopyError(book.name, QStringLiteral("cannot read it on the source: ") + e.message());
        }
    }

    // Every book the target already holds with rows is named, the first as the refused one.
    QStringList filledBooks;
    QString firstTables;
    for (const BookPlan& book : books) {
        if (!holds(target, book.name, QStringLiteral("target"))) continue;
        QStringList filled;
        try {
            auto db = target.connect(book.name);
            for (const QString& table : userTables(*db)) {
                const qint64 rows = countRows(*db, table);
                if (rows == 0) continue;
                QString name = table;
                for (const TablePlan& plan : book.tables)
                    if (plan.name.compare(table, Qt::CaseInsensitive) == 0) name = plan.name;
                filled << QStringLiteral("%1: %2").arg(name).arg(rows);
            }
        } catch (const DatabaseError& e) {
            throw BookCopyError(book.name, QStringLiteral("cannot read it on the target: ") + e.message());
        }
        if (filled.isEmpty()) continue;
        filled.sort(Qt::CaseInsensitive);
        constexpr int kShown = 3;
        if (filledBooks.isEmpty()) {
            firstTables = filled.mid(0, kShown).join(QStringLiteral(", "));
            if (filled.size() > kShown) firstTables += QStringLiteral(" and %1 more tables").arg(filled.size() - kShown);
        }
        filledBooks << book.name;
    }
    if (!filledBooks.isEmpty()) {
        QString reason = QStringLiteral("the target already holds this book with rows (%1)").arg(firstTables);
        if (filledBooks.size() > 1)
            reason += QStringLiteral(", and also %1").arg(filledBooks.mid(1).join(QStringLiteral(", ")));
        throw BookCopyError(filledBooks.front(), reason + QStringLiteral("; nothing was copied"));
    }
    return books;
}

}  // namespace

BookCopyError::BookCopyError(const QString& book, const QString& reason)
    : std::runtime_error((book + QStringLiteral(": ") + reason).toStdString()), book_(book), reason_(reason) {}

std::vector<CopiedBook> copyBooks(tr::tsql::Books& source, tr::tsql::Books& target, const ProgressSink& progress) {
    std::vector<BookPlan> books = planBooks(source, target);
    BookCopier copier(source, target, progress);
    std::vector<CopiedBook> copied;
    for (size_t i = 0; i < books.size(); ++i) copied.push_back(copier.copy(books[i], int(i) + 1, int(books.size())));
    return copied;
}

// ---- progress ----------------------------------------------------------------------------------

QString progressLine(const CopyProgress& p) {
    constexpr int kBarWidth = 20;
    const int percent = p.bookRows > 0 ? int(p.bookCopied * 100 / p.bookRows) : 100;
    const int filled = percent * kBarWidth / 100;
    QString line = QStringLiteral("[%1/%2] %3 [%4%5] %6%")
                       .arg(p.bookNumber)
                       .arg(p.bookCount)
                       .arg(p.book)
                       .arg(QString(filled, QLatin1Char('#')), QString(kBarWidth - filled, QLatin1Char('-')))
                       .arg(percent, 3);
    switch (p.stage) {
        case CopyProgress::Stage::Copying:
            line += QStringLiteral(" %1 %2/%3 rows").arg(p.table).arg(p.tableCopied).arg(p.tableRows);
            break;
        case CopyProgress::Stage::Checking:
            line += QStringLiteral(" checking %1 rows").arg(p.bookRows);
            break;
        case CopyProgress::Stage::Kept:
            line += QStringLiteral(" copied and checked, %1 rows").arg(p.bookRows);
            break;
    }
    return line;
}

void ProgressPrinter::write(const QString& line, bool keep) {
    // A line as wide as the terminal would wrap, and the next one would be drawn below it.
    const QByteArray text = (inPlace_ && width_ > 1 ? line.left(width_ - 1) : line).toUtf8();
    if (inPlace_) {
        std::fprintf(out_, "\r\033[K%s%s", text.constData(), keep ? "\n" : "");
        lineOpen_ = !keep;
    } else {
        std::fprintf(out_, "%s\n", text.constData());
    }
    std::fflush(out_);
}

void ProgressPrinter::operator()(const CopyProgress& p) {
    const bool tableDone = p.stage == CopyProgress::Stage::Copying && p.tableCopied == p.tableRows;
    if (inPlace_) {
        // Redrawn at most ten times a second, and whenever a stage or a table ends.
        if (p.stage == CopyProgress::Stage::Copying && !tableDone && sinceDrawn_.isValid() && sinceDrawn_.elapsed() < 100)
            return;
        sinceDrawn_.start();
        write(progressLine(p), p.stage == CopyProgress::Stage::Kept);
        return;
    }
    if (p.stage != CopyProgress::Stage::Copying) {
        lastTenth_ = -1;
        write(progressLine(p), true);
        return;
    }
    if (p.tableRows == 0) return;
    const int tenth = int(p.tableCopied * 10 / p.tableRows);
    if (p.tableCopied == 0) lastTenth_ = 0;
    if (tableDone || tenth > lastTenth_) {
        lastTenth_ = tenth;
        if (p.tableCopied > 0) write(progressLine(p), true);
    }
}

void ProgressPrinter::finish() {
    if (!lineOpen_) return;
    std::fprintf(out_, "\n");
    std::fflush(out_);
    lineOpen_ = false;
}

}  // namespace tr::tools
