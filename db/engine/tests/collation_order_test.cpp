// A book written while the TSQL collation ordered text by code point has its indexes in that
// order; opening or attaching it rebuilds them once, so lookups and sorted reads are right.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QStringList>

#include "common/text/tsql_collation.h"
#include "db/engine/tests/engine_fixture.h"

namespace tr::engine {
namespace {

// The collation as books were written before: blanks at both ends ignored, case, yeh and kaf
// folded, then code point order.
int oldOrder(void*, int aLength, const void* a, int bLength, const void* b) {
    const auto folded = [](const void* data, int length) {
        QString s = QString::fromUtf8(static_cast<const char*>(data), length);
        while (s.startsWith(u' ')) s.remove(0, 1);
        while (s.endsWith(u' ')) s.chop(1);
        QList<uint> out;
        for (const char32_t c : s.toUcs4()) out << uint(text::foldForCompare(c));
        return out;
    };
    const QList<uint> x = folded(a, aLength), y = folded(b, bLength);
    return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end())   ? -1
           : std::lexicographical_compare(y.begin(), y.end(), x.begin(), x.end()) ? 1
                                                                                  : 0;
}

int currentOrder(void*, int aLength, const void* a, int bLength, const void* b) {
    return text::tsqlCompareUtf8(static_cast<const char*>(a), aLength, static_cast<const char*>(b),
                                 bLength);
}

const QStringList kNames = {
    QStringLiteral("يزد"),       QStringLiteral("گرگان"), QStringLiteral("کرمان"),
    QStringLiteral("ژاندارمري"), QStringLiteral("چالوس"), QStringLiteral("پارس"),
    QStringLiteral("تبريز"),     QStringLiteral("آمل"),   QStringLiteral("اراك"),
    QStringLiteral("همدان"),     QStringLiteral("ساري"),  QStringLiteral("بم")};
const QStringList kAlphabetical = {
    QStringLiteral("آمل"),       QStringLiteral("اراك"),  QStringLiteral("بم"),
    QStringLiteral("پارس"),      QStringLiteral("تبريز"), QStringLiteral("چالوس"),
    QStringLiteral("ژاندارمري"), QStringLiteral("ساري"),  QStringLiteral("کرمان"),
    QStringLiteral("گرگان"),     QStringLiteral("همدان"), QStringLiteral("يزد")};

class OldBookTest : public ::testing::Test {
  protected:
    sqlite3* openRaw(const QString& database, decltype(&oldOrder) order) {
        sqlite3* db = nullptr;
        EXPECT_EQ(sqlite3_open(engine.databaseFile(database).toUtf8().constData(), &db), SQLITE_OK);
        sqlite3_create_collation(db, "TSQL", SQLITE_UTF8, nullptr, order);
        return db;
    }
    static QString scalar(sqlite3* db, const char* sql) {
        sqlite3_stmt* s = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &s, nullptr);
        QString value;
        if (sqlite3_step(s) == SQLITE_ROW)
            value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 0)));
        sqlite3_finalize(s);
        return value;
    }
    // Towns by name (indexed) and by a unique code holding Persian text (its own index).
    void writeOldBook(const QString& database) {
        sqlite3* db = openRaw(database, oldOrder);
        sqlite3_exec(db,
                     "CREATE TABLE Town (Cod VARCHAR(20) COLLATE TSQL UNIQUE, "
                     "Nam VARCHAR(50) COLLATE TSQL);"
                     "CREATE INDEX Town_Nam ON Town (Nam);"
                     "CREATE TABLE Note (Id INTEGER PRIMARY KEY, Body TEXT);"
                     "CREATE INDEX Note_Body ON Note (Body);",
                     nullptr, nullptr, nullptr);
        for (const QString& name : kNames) {
            const QByteArray sql =
                ("INSERT INTO Town VALUES ('ک-" + name + "', '" + name + "')").toUtf8();
            sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
        }
        EXPECT_EQ(scalar(db, "PRAGMA integrity_check"), "ok");
        EXPECT_EQ(scalar(db, "PRAGMA user_version"), "0");
        sqlite3_close(db);
        // Under the current order the old indexes are out of order: what the upgrade repairs.
        db = openRaw(database, currentOrder);
        EXPECT_NE(scalar(db, "PRAGMA integrity_check"), "ok");
        sqlite3_close(db);
    }
    void expectRepaired(const QString& database) {
        sqlite3* db = openRaw(database, currentOrder);
        EXPECT_EQ(scalar(db, "PRAGMA integrity_check"), "ok");
        EXPECT_EQ(scalar(db, "PRAGMA user_version"), QString::number(text::kTsqlCollationVersion));
        sqlite3_close(db);
    }
    static QStringList column(const tr::db::ExecResult& result) {
        QStringList values;
        for (const auto& row : result.resultSets.back().rows) values << row.front().toString();
        return values;
    }

    QTemporaryDir dir;
    Engine engine{dir.path()};
};

TEST_F(OldBookTest, OpeningABookInTheOldOrderRebuildsItsIndexesOnce) {
    writeOldBook(QStringLiteral("Corvask_1_1399"));
    {
        const auto book = engine.open(QStringLiteral("Corvask_1_1399"));
        EXPECT_EQ(column(book->execute(QStringLiteral("Select Nam From Town Order By Nam"))),
                  kAlphabetical);
        // Lookups through the rebuilt indexes, typed with the other keyboard's kaf and yeh.
        EXPECT_EQ(column(book->execute(QStringLiteral("Select Nam From Town Where Nam = 'کرمان'"))),
                  QStringList{QStringLiteral("کرمان")});
        EXPECT_EQ(column(book->execute(QStringLiteral("Select Nam From Town Where Cod = 'ك-يزد'"))),
                  QStringList{QStringLiteral("يزد")});
        EXPECT_EQ(column(book->execute(QStringLiteral(
                      "Select Nam From Town Where Nam > 'چ' And Nam < 'ک' Order By Nam"))),
                  (QStringList{QStringLiteral("چالوس"), QStringLiteral("ژاندارمري"),
                               QStringLiteral("ساري")}));
    }
    expectRepaired(QStringLiteral("Corvask_1_1399"));
    // A book already in the current order is left alone: reopening changes nothing.
    const auto again = engine.open(QStringLiteral("Corvask_1_1399"));
    EXPECT_EQ(column(again->execute(QStringLiteral("Select Nam From Town Order By Nam"))),
              kAlphabetical);
}

TEST_F(OldBookTest, AttachingABookInTheOldOrderRebuildsItsIndexes) {
    writeOldBook(QStringLiteral("Corvask_1_1398"));
    const auto current = engine.open(QStringLiteral("Corvask_1_1404"));
    EXPECT_EQ(column(current->execute(
                  QStringLiteral("Select Nam From Corvask_1_1398..Town Order By Nam"))),
              kAlphabetical);
    EXPECT_EQ(column(current->execute(
                  QStringLiteral("Select Nam From Corvask_1_1398..Town Where Nam = 'بم'"))),
              QStringList{QStringLiteral("بم")});
    expectRepaired(QStringLiteral("Corvask_1_1398"));
}

TEST_F(OldBookTest, ANewBookIsStampedWithTheCurrentOrder) {
    engine.open(QStringLiteral("Corvask_1_1405"));
    sqlite3* db = openRaw(QStringLiteral("Corvask_1_1405"), currentOrder);
    EXPECT_EQ(scalar(db, "PRAGMA user_version"), QString::number(text::kTsqlCollationVersion));
    sqlite3_close(db);
}

}  // namespace
}  // namespace tr::engine
