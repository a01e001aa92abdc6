// The shell as a user runs it: -c, standard input, GO separators, --translate, errors.
#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include "tools/table_printer.h"

namespace {

struct ShellRun {
    int exitCode;
    QString out;
    QString err;
};

ShellRun shell(const QStringList& args, const QByteArray& input = {}) {
    QProcess p;
    p.start(QStringLiteral(TREASURY_SQL), args);
    p.write(input);
    p.closeWriteChannel();
    p.waitForFinished(60000);
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

}  // namespace

TEST(Shell, TempdbCatalogueAndSelectIntoShareOneSession) {
    QTemporaryDir dir;
    ShellRun r = shell({"-d", dir.path(), "-c", "Select Top 3 [name] From Tempdb..SysObjects"});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("name")) << r.out.toStdString();
    r = shell({"-d", dir.path(), "-c",
               "Select 'دريافت' As Kind, 12 As N Into ##x\nGO\nSelect Kind, N From ##x; Select Count(*) As C From ##x"});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("دريافت"))) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains("(1 row)"));
}

TEST(Shell, StatementsFromStandardInputAndErrorsWithPosition) {
    QTemporaryDir dir;
    ShellRun r = shell({"-d", dir.path()}, "Create Table T (a Int)\nGO\nInsert Into T (a) Values (1)\nGO\nSelect Foo(a) From T\n");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.out.contains("(1 rows affected)")) << r.out.toStdString();
    EXPECT_TRUE(r.err.contains("'Foo' is not a recognized built-in function name")) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains("position 8")) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains("       ^")) << r.err.toStdString();
}

TEST(Shell, TranslatePrintsTheSqliteText) {
    QTemporaryDir dir;
    ShellRun r = shell({"-d", dir.path(), "--translate", "-c", "Select Top 2 'a' + 'b' As X"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.out.contains("SELECT 'a' || 'b' AS \"X\" LIMIT 2")) << r.out.toStdString();
}

TEST(TablePrinter, PersianMarksTakeNoColumn) {
    EXPECT_EQ(tr::tools::displayWidth(QStringLiteral("مي\u200Cشود")), 5);
    tr::db::ResultSet set;
    set.columns = {QStringLiteral("Nam"), QStringLiteral("Mablagh")};
    set.rows.push_back({QStringLiteral("مي\u200Cشود"), QVariant(qlonglong(5))});
    set.rows.push_back({QStringLiteral("ab"), QVariant(qlonglong(1234))});
    const QStringList lines = tr::tools::formatTable(set).split('\n');
    EXPECT_EQ(lines[0], QStringLiteral("Nam   | Mablagh"));
    EXPECT_EQ(lines[2], QStringLiteral("مي\u200Cشود | ") + QStringLiteral("      5"));
    EXPECT_EQ(lines[3], QStringLiteral("ab    |    1234"));
}
