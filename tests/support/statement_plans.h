#pragma once
// Records the SQLite text of every statement run on SQLite handles opened after install(), so a
// test can drive a screen and then ask SQLite how it would run each statement (with the
// statistics of a large book loaded, say) and find the ones that read a whole large table.
#include <QString>
#include <QStringList>
#include <vector>

struct sqlite3;

namespace tr::test {

struct RecordedStatement {
    QString sql;          // as SQLite holds it, parameters as ?n
    sqlite3* db = nullptr;  // the handle that ran it (still open while its connection is)
};

class StatementPlans {
  public:
    // Catches every SQLite handle opened from now on; call before the engine opens its files.
    static void install();
    static void clear();
    // Distinct statements run since clear(), in the order first run.
    static std::vector<RecordedStatement> recorded();
    // SQLite's plan of `sql` on `db`, one detail line per row.
    static QStringList plan(sqlite3* db, const QString& sql);
    // The handle whose main database is the file `fileEnd` ends with.
    static sqlite3* handleOf(const QString& fileEnd);
    // The lines of `plan` that read all of one of `tables` (by its name or its alias in `sql`).
    static QStringList fullReads(const QString& sql, const QStringList& plan, const QStringList& tables);
    // Replaces `db`'s planner statistics by those of `file` (lines "table|index|stat", as a large
    // book's sqlite_stat1 holds them) and has SQLite read them; answers how many rows it loaded.
    static int loadStatistics(sqlite3* db, const QString& file);
    // Each statement `db` ran since clear() that names one of `tables` and reads one whole, with
    // its plan; "no statement reading a large table was seen" when none named them.
    static QStringList wholeTableReads(sqlite3* db, const QStringList& tables);
};

}  // namespace tr::test

// In a plan test whose fixture answers wholeTableReads() (StatementPlans::wholeTableReads of its
// book and large tables): fails, listing each such statement with its plan, when there is one.
#define EXPECT_NO_WHOLE_TABLE_READS()                                                      \
    do {                                                                                   \
        const QStringList reads = wholeTableReads();                                       \
        EXPECT_TRUE(reads.isEmpty()) << reads.join(QStringLiteral("\n\n")).toStdString(); \
    } while (false)
