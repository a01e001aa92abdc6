// Runs the statement tests kept as data (sql/*.test, format in docs/engine-self-checks.md): each
// file on a fresh company database of the books under test (the embedded engine's or the test
// server's), its records in order, every failure naming file and line. A record may be kept for
// one backend by `onlyif <backend>` or `skipif <backend>` lines before it (backend: embedded or
// postgres): the texts and plans each target makes differ, their answers do not.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>

#include "common/db/database_error.h"
#include "db/tsql/books.h"
#include "tests/support/test_books.h"

namespace {

using tr::db::DatabaseError;

QString backendUnderTest() {
    return tr::test::testingOnServer() ? QStringLiteral("postgres") : QStringLiteral("embedded");
}

struct Record {
    int line = 0;       // of the directive
    bool runs = true;   // not kept from the backend under test by onlyif / skipif
    QString directive;  // statement, query, translation, plan
    QStringList words;  // what follows the directive on its line
    QString sql;
    QStringList expected;  // the lines after ----
};

std::vector<Record> readRecords(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << path.toStdString();
        return {};
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    std::vector<Record> records;
    for (int i = 0; i < lines.size();) {
        const QString head = lines[i].trimmed();
        if (head.isEmpty() || head.startsWith(QLatin1Char('#'))) {
            ++i;
            continue;
        }
        Record r;
        r.words = head.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        // onlyif / skipif lines, each naming a backend, stand right before their record.
        for (; r.words.value(0) == QLatin1String("onlyif") || r.words.value(0) == QLatin1String("skipif");
             r.words = lines.value(++i).trimmed().split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QString backend = r.words.value(1);
            if (r.words.size() != 2 || (backend != QLatin1String("embedded") && backend != QLatin1String("postgres")))
                ADD_FAILURE() << path.toStdString() << ":" << i + 1 << ": onlyif or skipif names no backend";
            const bool named = backend == backendUnderTest();
            if (named != (r.words.value(0) == QLatin1String("onlyif"))) r.runs = false;
        }
        if (r.words.isEmpty()) {
            ADD_FAILURE() << path.toStdString() << ":" << i + 1 << ": onlyif or skipif before no record";
            continue;
        }
        r.line = i + 1;
        r.directive = r.words.takeFirst();
        QStringList sql;
        for (++i; i < lines.size() && !lines[i].trimmed().isEmpty() && lines[i].trimmed() != QLatin1String("----"); ++i)
            sql << lines[i];
        r.sql = sql.join(QLatin1Char('\n'));
        if (i < lines.size() && lines[i].trimmed() == QLatin1String("----")) {
            for (++i; i < lines.size() && !lines[i].trimmed().isEmpty(); ++i) r.expected << lines[i];
        }
        records.push_back(r);
    }
    return records;
}

// A value as the files write it: NULL, (empty), text quoted when its blanks would not show.
QString shown(const QVariant& v) {
    if (v.isNull()) return QStringLiteral("NULL");
    if (v.typeId() == QMetaType::Double) return QString::number(v.toDouble(), 'g', 15);
    const QString t = v.toString();
    if (t.isEmpty()) return QStringLiteral("(empty)");
    if (t.startsWith(QLatin1Char(' ')) || t.endsWith(QLatin1Char(' ')) || t.contains(QLatin1Char('|')))
        return QLatin1Char('\'') + t + QLatin1Char('\'');
    return t;
}

QString shownRow(const QStringList& values) { return values.join(QStringLiteral(" | ")); }

// One expected row: values split at | outside quotes, each trimmed.
QStringList expectedValues(const QString& line) {
    QStringList values;
    QString current;
    bool quoted = false;
    for (const QChar c : line) {
        if (c == u'\'') quoted = !quoted;
        if (c == u'|' && !quoted) {
            values << current.trimmed();
            current.clear();
        } else {
            current += c;
        }
    }
    values << current.trimmed();
    return values;
}

bool ofKind(const QVariant& v, QChar kind) {
    if (v.isNull()) return true;
    switch (kind.unicode()) {
        case u'I': return v.typeId() == QMetaType::LongLong || v.typeId() == QMetaType::Int;
        case u'R': return v.typeId() == QMetaType::Double;
        case u'T': return v.typeId() == QMetaType::QString;
        default: return false;
    }
}

class SqlLogic : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        try {
            books = tr::test::makeTestBooks(dir.path(), QStringLiteral("sql_logic"));
            db = books->connect(QStringLiteral("Corvask_1_1404"));
        } catch (const DatabaseError& e) {
            FAIL() << e.what();
        }
    }

    void run(const Record& r, const std::string& where) {
        if (r.directive == QLatin1String("statement")) return statement(r, where);
        if (r.directive == QLatin1String("query")) return query(r, where);
        if (r.directive == QLatin1String("translation")) {
            EXPECT_EQ(db->translate(r.sql).toStdString(), r.expected.join(QLatin1Char('\n')).toStdString()) << where;
            return;
        }
        if (r.directive == QLatin1String("plan")) return plan(r, where);
        ADD_FAILURE() << where << "unknown directive " << r.directive.toStdString();
    }

    // plan [fragment]: the backend's plan holds the fragment and each line after ---- (trimmed),
    // in that order.
    void plan(const Record& r, const std::string& where) {
        QStringList fragments = r.expected;
        if (!r.words.isEmpty()) fragments.prepend(r.words.join(QLatin1Char(' ')));
        const QString plan = db->explainQueryPlan(r.sql);
        qsizetype from = 0;
        for (const QString& fragment : std::as_const(fragments)) {
            const qsizetype at = plan.indexOf(fragment.trimmed(), from);
            if (at < 0) {
                ADD_FAILURE() << where << "no " << fragment.trimmed().toStdString() << " (in order) in\n"
                              << plan.toStdString();
                return;
            }
            from = at + fragment.trimmed().size();
        }
    }

    // statement ok | statement error [at N] <fragment of the message>
    void statement(const Record& r, const std::string& where) {
        const bool ok = r.words.value(0) == QLatin1String("ok");
        try {
            db->execute(r.sql);
            if (!ok) ADD_FAILURE() << where << "accepted";
        } catch (const DatabaseError& e) {
            if (ok) {
                ADD_FAILURE() << where << e.what();
                return;
            }
            QStringList words = r.words.mid(1);
            if (words.value(0) == QLatin1String("at")) {
                EXPECT_EQ(e.position(), words.value(1).toInt()) << where << e.what();
                EXPECT_EQ(e.sql(), r.sql) << where;
                words = words.mid(2);
            }
            EXPECT_TRUE(e.message().contains(words.join(QLatin1Char(' ')), Qt::CaseInsensitive)) << where << e.what();
        }
    }

    // query <kinds> [rowsort] [names]: the result's rows (after its column names with `names`).
    void query(const Record& r, const std::string& where) {
        const QString kinds = r.words.value(0);
        const bool sort = r.words.contains(QLatin1String("rowsort"));
        const bool names = r.words.contains(QLatin1String("names"));
        tr::db::ResultSet result;
        try {
            const auto all = db->execute(r.sql).resultSets;
            if (all.empty()) return void(ADD_FAILURE() << where << "no result set");
            result = all.back();
        } catch (const DatabaseError& e) {
            return void(ADD_FAILURE() << where << e.what());
        }
        QStringList actual, expected = r.expected;
        if (names) {
            actual << shownRow(result.columns);
            if (!expected.isEmpty()) expected.first() = expected.first().trimmed();  // names as written
        }
        QStringList rows;
        for (const auto& row : result.rows) {
            if (int(row.size()) != kinds.size()) return void(ADD_FAILURE() << where << row.size() << " columns");
            QStringList values;
            for (int c = 0; c < kinds.size(); ++c) {
                EXPECT_TRUE(ofKind(row[c], kinds[c])) << where << "column " << c + 1 << " is "
                                                      << row[c].typeName() << ", not " << kinds[c].toLatin1();
                values << shown(row[c]);
            }
            rows << shownRow(values);
        }
        QStringList wanted;
        for (int i = names ? 1 : 0; i < expected.size(); ++i) wanted << shownRow(expectedValues(expected[i]));
        if (sort) {
            rows.sort();
            wanted.sort();
        }
        actual << rows;
        if (names) wanted.prepend(expected.value(0));
        EXPECT_EQ(actual.join(QLatin1Char('\n')).toStdString(), wanted.join(QLatin1Char('\n')).toStdString()) << where;
    }

    QTemporaryDir dir;
    std::unique_ptr<tr::tsql::Books> books;
    std::unique_ptr<tr::tsql::TsqlConnection> db;
};

TEST_P(SqlLogic, File) {
    const QString path = QString::fromStdString(GetParam());
    const std::vector<Record> records = readRecords(path);
    ASSERT_FALSE(records.empty()) << path.toStdString() << " holds no records";
    for (const Record& r : records) {
        if (!r.runs) continue;
        const std::string where = path.toStdString() + ":" + std::to_string(r.line) + ": ";
        run(r, where);
    }
}

std::vector<std::string> files() {
    std::vector<std::string> out;
    for (const QString& f : QString::fromUtf8(SQL_LOGIC_FILES).split(QLatin1Char('|'), Qt::SkipEmptyParts))
        out.push_back(f.toStdString());
    return out;
}

INSTANTIATE_TEST_SUITE_P(Engine, SqlLogic, ::testing::ValuesIn(files()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             return QFileInfo(QString::fromStdString(info.param)).baseName().replace(u'-', u'_').toStdString();
                         });

}  // namespace
