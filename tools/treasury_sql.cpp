// treasury-sql: a T-SQL shell on a database of a data directory or of a server. Statements in one call share one
// session, so ## tables live until it ends. Batches are separated by a line holding only GO;
// interactively a batch also ends at a line ending with ';'. It also moves the books of a data
// directory to a server and back (tools/book_copy.h).
#include <readline/history.h>
#include <readline/readline.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>
#include <cstdio>
#include <iostream>

#include "common/db/database_error.h"
#include "tools/book_copy.h"
#include "tools/shell_setup.h"
#include "tools/table_printer.h"

namespace {

// What the shell does with each batch: run it, show the backend's text, or the backend's plan for it.
enum class Mode { Run, Translate, Plan };

struct Options {
    QString dataDirectory = QStringLiteral("demo-data");
    QString database;
    QString command;
    Mode mode = Mode::Run;
    bool hasCommand = false;
    QString createDemo;
    bool createDemoOnServer = false;
    QString server;  // libpq's connection text
    QString copyBooksFrom;  // a data directory whose books go to copyToServer
    QString copyToServer;
    QString copyBooksTo;  // a data directory the server's books come to
};

void usage() {
    std::cerr << "usage: treasury-sql [-d DIR | --server \"CONNECTION\"] [DATABASE] [-c \"statements\"] "
                 "[--translate | --plan]\n"
                 "       treasury-sql --create-demo DIR\n"
                 "       treasury-sql --server \"CONNECTION\" --create-demo\n"
                 "       treasury-sql --copy DIR --to-server \"CONNECTION\"\n"
                 "       treasury-sql --copy DIR --from-server \"CONNECTION\"\n"
                 "Runs T-SQL on DATABASE (default: the company database of the data directory or server).\n"
                 "CONNECTION is a PostgreSQL connection text, e.g. \"host=books.office dbname=treasury user=ali\".\n"
                 "Without -c, statements come from standard input (interactive on a terminal).\n"
                 "--translate shows the backend's text of each batch, --plan its plan for the first statement.\n"
                 "--copy DIR --to-server copies every book of the data directory (CORVASK_Sdc and each\n"
                 "company-year book it lists) to the server, --from-server every book of the server to the data\n"
                 "directory: all rows with their identity values, one transaction per book, row counts and\n"
                 "the balance of every account checked before a book is kept. A target that already holds\n"
                 "any of the books with rows is refused before anything is written. Writers of the source\n"
                 "wait while each of its books is read.\n";
}

QString errorText(const tr::db::DatabaseError& e) {
    QString text = QStringLiteral("Msg: ") + e.message() + QLatin1Char('\n');
    if (e.position() > 0 && !e.sql().isEmpty()) {
        const QString& sql = e.sql();
        const int at = qMin(e.position() - 1, static_cast<int>(sql.size()));
        const int lineStart = sql.lastIndexOf(QLatin1Char('\n'), at - 1) + 1;
        int lineEnd = sql.indexOf(QLatin1Char('\n'), at);
        if (lineEnd < 0) lineEnd = sql.size();
        const int lineNumber = sql.left(lineStart).count(QLatin1Char('\n')) + 1;
        text += QStringLiteral("Line %1, position %2:\n").arg(lineNumber).arg(e.position());
        text += QStringLiteral("  ") + sql.mid(lineStart, lineEnd - lineStart) + QLatin1Char('\n');
        text += QStringLiteral("  ") + QString(tr::tools::displayWidth(sql.mid(lineStart, at - lineStart)), QLatin1Char(' ')) +
                QStringLiteral("^\n");
    }
    return text;
}

// Runs one batch; answers false when it failed.
bool runBatch(tr::tsql::TsqlConnection& db, const QString& batch, Mode mode, QTextStream& out,
              QTextStream& err) {
    if (batch.trimmed().isEmpty()) return true;
    try {
        if (mode != Mode::Run) {
            out << (mode == Mode::Translate ? db.translate(batch) : db.explainQueryPlan(batch)) << '\n';
            return true;
        }
        const tr::db::ExecResult result = db.execute(batch);
        for (const tr::db::ResultSet& set : result.resultSets) out << tr::tools::formatTable(set) << '\n';
        if (result.resultSets.empty()) out << QStringLiteral("(%1 rows affected)\n").arg(result.rowsAffected);
        out.flush();
        return true;
    } catch (const tr::db::DatabaseError& e) {
        out.flush();
        err << errorText(e);
        err.flush();
        return false;
    }
}

QStringList splitOnGo(const QString& text) {
    static const QRegularExpression go(QStringLiteral("^[ \\t]*GO[ \\t]*(?:\\r?\\n|$)"),
                                       QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    return text.split(go);
}

int interactive(tr::tsql::TsqlConnection& db, Mode mode, QTextStream& out, QTextStream& err) {
    const QString historyFile = QDir::homePath() + QStringLiteral("/.treasury_sql_history");
    using_history();
    read_history(historyFile.toLocal8Bit().constData());
    QString batch;
    for (;;) {
        char* raw = readline(batch.isEmpty() ? "tsql> " : "  ... ");
        if (!raw) break;
        const QString line = QString::fromUtf8(raw);
        if (!line.trimmed().isEmpty()) add_history(raw);
        free(raw);
        if (line.trimmed().compare(QLatin1String("GO"), Qt::CaseInsensitive) == 0) {
            runBatch(db, batch, mode, out, err);
            batch.clear();
            continue;
        }
        if (batch.isEmpty() && (line.trimmed() == QLatin1String("quit") || line.trimmed() == QLatin1String("exit"))) break;
        batch += line + QLatin1Char('\n');
        if (line.trimmed().endsWith(QLatin1Char(';'))) {
            runBatch(db, batch, mode, out, err);
            batch.clear();
        }
    }
    runBatch(db, batch, mode, out, err);
    write_history(historyFile.toLocal8Bit().constData());
    return 0;
}

// Copies the books between a data directory and a server; a failure names the book and the reason.
int copyBooks(const Options& options, QTextStream& out, QTextStream& err) {
    const bool toServer = !options.copyBooksFrom.isEmpty();
    if (toServer && !QFileInfo(options.copyBooksFrom).isDir()) {
        err << QStringLiteral("No data directory '%1'\n").arg(options.copyBooksFrom);
        return 1;
    }
    auto source = toServer ? tr::tools::openBooks(options.copyBooksFrom, {}) : tr::tools::openBooks({}, options.server);
    auto target = toServer ? tr::tools::openBooks({}, options.copyToServer) : tr::tools::openBooks(options.copyBooksTo, {});
    winsize terminal{};
    const bool onTerminal = isatty(STDERR_FILENO);
    if (onTerminal) ioctl(STDERR_FILENO, TIOCGWINSZ, &terminal);
    tr::tools::ProgressPrinter printer(stderr, onTerminal, terminal.ws_col);
    QElapsedTimer clock;
    clock.start();
    try {
        const std::vector<tr::tools::CopiedBook> books = tr::tools::copyBooks(*source, *target, std::ref(printer));
        printer.finish();
        qint64 rows = 0;
        for (const tr::tools::CopiedBook& book : books) {
            out << QStringLiteral("%1: %2 tables, %3 rows").arg(book.name).arg(book.tables).arg(book.rows);
            if (book.accounts > 0) out << QStringLiteral(", %1 accounts balanced").arg(book.accounts);
            out << '\n';
            rows += book.rows;
        }
        out << QStringLiteral("%1 books, %2 rows copied to %3 in %4 s\n")
                   .arg(books.size())
                   .arg(rows)
                   .arg(toServer ? QStringLiteral("the server") : options.copyBooksTo)
                   .arg(double(clock.elapsed()) / 1000.0, 0, 'f', 1);
        return 0;
    } catch (const tr::tools::BookCopyError& e) {
        printer.finish();
        err << QStringLiteral("Copy failed: %1: %2\n").arg(e.book(), e.reason());
        return 1;
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout), err(stderr);
    Options options;
    QString fromServer;  // --copy DIR --from-server "..." names the copy down the other way round
    const QStringList args = app.arguments().mid(1);
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("-d") && i + 1 < args.size()) options.dataDirectory = args[++i];
        else if (a == QLatin1String("-c") && i + 1 < args.size()) {
            options.command = args[++i];
            options.hasCommand = true;
        } else if (a == QLatin1String("--translate")) options.mode = Mode::Translate;
        else if (a == QLatin1String("--plan")) options.mode = Mode::Plan;
        else if (a == QLatin1String("--server") && i + 1 < args.size()) options.server = args[++i];
        else if (a == QLatin1String("--create-demo") && !options.server.isEmpty()) options.createDemoOnServer = true;
        else if (a == QLatin1String("--create-demo") && i + 1 < args.size()) options.createDemo = args[++i];
        else if ((a == QLatin1String("--copy-books") || a == QLatin1String("--copy")) && i + 1 < args.size())
            options.copyBooksFrom = args[++i];
        else if (a == QLatin1String("--to-server") && i + 1 < args.size()) options.copyToServer = args[++i];
        else if (a == QLatin1String("--copy-books-to") && i + 1 < args.size()) options.copyBooksTo = args[++i];
        else if (a == QLatin1String("--from-server") && i + 1 < args.size()) fromServer = args[++i];
        else if (a == QLatin1String("-h") || a == QLatin1String("--help")) {
            usage();
            return 0;
        } else if (!a.startsWith(QLatin1Char('-')) && options.database.isEmpty()) options.database = a;
        else {
            usage();
            return 2;
        }
    }
    if (!fromServer.isEmpty()) {
        if (!options.server.isEmpty() || !options.copyBooksTo.isEmpty() || !options.copyToServer.isEmpty() ||
            options.copyBooksFrom.isEmpty()) {
            usage();
            return 2;
        }
        options.server = fromServer;
        options.copyBooksTo = std::exchange(options.copyBooksFrom, QString());
    }
    const bool copyUp = !options.copyBooksFrom.isEmpty() || !options.copyToServer.isEmpty();
    const bool copyDown = !options.copyBooksTo.isEmpty();
    if (copyUp || copyDown) {
        const bool valid = copyUp ? !options.copyBooksFrom.isEmpty() && !options.copyToServer.isEmpty() &&
                                        options.server.isEmpty() && !copyDown
                                  : !options.server.isEmpty();
        if (!valid || options.hasCommand || !options.database.isEmpty() || !options.createDemo.isEmpty() ||
            options.createDemoOnServer) {
            usage();
            return 2;
        }
    }
    try {
        if (copyUp || copyDown) return copyBooks(options, out, err);
        if (!options.createDemo.isEmpty() || options.createDemoOnServer) {
            const QString where = options.createDemoOnServer ? QStringLiteral("the server") : options.createDemo;
            auto books = tr::tools::openBooks(options.createDemo, options.server);
            out << tr::tools::createDemo(*books, where) << '\n';
            return 0;
        }
        auto books = tr::tools::openBooks(options.dataDirectory, options.server);
        if (options.database.isEmpty()) options.database = tr::tools::defaultDatabase(*books);
        auto db = books->connect(options.database);
        if (options.hasCommand) {
            bool ok = true;
            for (const QString& batch : splitOnGo(options.command)) ok = runBatch(*db, batch, options.mode, out, err) && ok;
            return ok ? 0 : 1;
        }
        if (isatty(STDIN_FILENO)) return interactive(*db, options.mode, out, err);
        QTextStream in(stdin);
        bool ok = true;
        for (const QString& batch : splitOnGo(in.readAll())) ok = runBatch(*db, batch, options.mode, out, err) && ok;
        return ok ? 0 : 1;
    } catch (const tr::db::DatabaseError& e) {
        err << errorText(e);
        return 1;
    }
}
