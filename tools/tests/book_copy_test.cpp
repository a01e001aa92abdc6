// Moving books between a data directory and the server: a round trip keeps every row, identity
// value and account balance; a target holding rows is refused untouched; a book that fails halfway
// is left out whole; the shell's commands and their progress lines.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "common/db/database_error.h"
#include "common/db/sql_literal.h"
#include "db/engine/engine.h"
#include "db/schema/demo_company.h"
#include "db/schema/schema.h"
#include "tests/support/private_pg_server.h"
#include "tools/book_copy.h"
#include "tools/shell_setup.h"

namespace {

using tr::tools::BookCopyError;
using Books = tr::tsql::Books;

const QString kSuite = QStringLiteral("CORVASK_Sdc");
const QString kPrevious = QString::fromLatin1(tr::schema::demo::kPreviousDatabase);
const QString kCurrent = QString::fromLatin1(tr::schema::demo::kCurrentDatabase);

QString s(const char* utf8) { return QString::fromUtf8(utf8); }

QVariant scalar(tr::db::Connection& db, const QString& sql) {
    const auto r = db.execute(sql);
    return r.resultSets.at(0).rows.at(0).at(0);
}

qint64 count(Books& books, const QString& book, const QString& table) {
    return scalar(*books.connect(book), QStringLiteral("Select Count(*) From ") + table).toLongLong();
}

// Every row of a table, each as one text (numbers in full precision, Null apart from ''),
// sorted: tables without a key have no order of their own.
QStringList rowsOf(tr::db::Connection& db, const QString& table) {
    const auto r = db.execute(QStringLiteral("Select * From ") + table);
    const tr::db::ResultSet& set = r.resultSets.at(0);
    QStringList out{set.columns.join(QLatin1Char('|')).toLower()};
    QStringList rows;
    for (const tr::db::Row& row : set.rows) {
        QStringList values;
        for (const QVariant& v : row) {
            if (!v.isValid() || v.isNull()) values << QStringLiteral("<null>");
            else if (v.typeId() == QMetaType::QString) values << QLatin1Char('\'') + v.toString() + QLatin1Char('\'');
            else values << QString::number(v.toDouble(), 'g', 17);
        }
        rows << values.join(QLatin1Char('|'));
    }
    rows.sort();
    return out + rows;
}

// The voucher lines' balance per account, as a report of the books reads it.
QStringList balancesOf(tr::db::Connection& db) {
    const auto r = db.execute(QStringLiteral(
        "Select LTrim(RTrim(IsNull(Koll, ''))) + '-' + LTrim(RTrim(IsNull(Moein, ''))) + '-' + "
        "LTrim(RTrim(IsNull(Tafsily, ''))) + '-' + LTrim(RTrim(IsNull(Tafsily2, ''))) + '-' + "
        "LTrim(RTrim(IsNull(ProjectCod, ''))) As Account, Sum(Bed) As Bed, Sum(Bes) As Bes From Asnad "
        "Group By Koll, Moein, Tafsily, Tafsily2, ProjectCod"));
    QStringList out;
    for (const tr::db::Row& row : r.resultSets.at(0).rows)
        out << row[0].toString() + QStringLiteral(": ") + QString::number(row[1].toDouble(), 'f', 4) +
                   QStringLiteral(" / ") + QString::number(row[2].toDouble(), 'f', 4);
    out.sort();
    return out;
}

// A cash receipt saved as the screen saves it: the grid's lines in a transfer table, then the
// kind's procedure. `serial` must be new for the kind.
void saveReceipt(tr::db::Connection& db, int serial, double customerAmount) {
    const QString table = QStringLiteral("##N_A_COPY_") + QString::number(serial);
    db.execute(QStringLiteral("Create Table ") + table +
               QStringLiteral(" (Raj Int, Koll Varchar(3), Moein Varchar(4), Tafsily Varchar(5), Tafsily2 Varchar(5), "
                              "ProjectCod Varchar(10), Des Varchar(200), Bed Float, Bes Float, WhatDoc2 Varchar(10), "
                              "NamWhatDoc2 NVarchar(100), CodWhatDoc2 Varchar(50), ManabehCod Varchar(5), "
                              "ArzCod Varchar(10), ArzNam NVarchar(50), ArzRate Float, ArzUnitPrice Float, "
                              "ArzTotalPrice Float, ArzCount2 Float, ArzNam2 NVarchar(50), Joz Varchar(10), "
                              "Des1 NVarchar(200), Des2 NVarchar(200), Des3 NVarchar(200), Des4 NVarchar(200), IDX Int)"));
    const QString columns = QStringLiteral(
        " (Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, Bes, WhatDoc2, NamWhatDoc2, CodWhatDoc2, "
        "ManabehCod, Joz, Des1, Des2, Des3, Des4) Values ");
    db.execute(QStringLiteral("Insert Into ") + table + columns + QStringLiteral("(1, '104', '0001', '30001', '51001', 'P0001', ") +
               db.text(s("بابت صورتحساب فروش كالا")) + QStringLiteral(", 0, ") + tr::db::sqlNumber(customerAmount) +
               QStringLiteral(", '01', ") + db.text(s("شرکت پخش البرز")) +
               QStringLiteral(", '30001', '10101', '12', ") + db.text(s("رضا محمدي")) + QStringLiteral(", ") +
               db.text(s("بانک ملی")) + QStringLiteral(", '101', ") + db.text(s(" شعبه مرکزي ")) +
               QStringLiteral("), (2, '301', '0001', '', '', '', ") + db.text(s("افزايش سرمايه")) +
               QStringLiteral(", 0, 2000000, '05', ") + db.text(s("سرمايه")) +
               QStringLiteral(", '', '', '', '', '', '', '')"));
    QStringList args = {QStringLiteral("TRANS->DB"), table, QString::number(serial), QStringLiteral("1"),
                        QStringLiteral("501"), QStringLiteral("1404/02/10"), s("دريافت وجه از مشتري"),
                        QStringLiteral("admin"), QStringLiteral("NEW"), QStringLiteral("PC-01")};
    for (QString& a : args) a = db.text(a);
    db.execute(QStringLiteral("Exec sp_N_Asnad_Trans_CashGet ") + args.join(QStringLiteral(", ")));
    db.execute(QStringLiteral("Drop Table ") + table);
}

class BookCopyTest : public ::testing::Test {
  protected:
    void SetUp() override {
        tr::test::PrivatePgServer& server = tr::test::PrivatePgServer::instance();
        ASSERT_TRUE(server.running()) << server.failure().toStdString();
    }

    // Books on a new database of the run's server.
    static std::unique_ptr<Books> serverBooks() {
        tr::test::PrivatePgServer& server = tr::test::PrivatePgServer::instance();
        const QString database = server.createDatabase(QStringLiteral("copy"));
        if (database.isEmpty()) throw tr::db::DatabaseError(server.failure());
        return tr::tools::openBooks({}, server.connectionText(database));
    }
    std::unique_ptr<Books> directoryBooks() {
        dirs_.push_back(std::make_unique<QTemporaryDir>());
        return tr::tools::openBooks(dirs_.back()->path(), {});
    }
    static QString directoryOf(Books& books) { return static_cast<tr::engine::Engine&>(books).dataDirectory(); }

    // The demo company, on a server or in a directory, as a copy's source.
    std::unique_ptr<Books> demo(bool onServer) {
        auto books = onServer ? serverBooks() : directoryBooks();
        tr::tools::createDemo(*books, QStringLiteral("a test"));
        return books;
    }

    std::vector<std::unique_ptr<QTemporaryDir>> dirs_;
};

// The demo company with saved receipts and rows that a copy easily gets wrong: both forms of yeh
// and kaf, blanks at either end, tabs and line breaks, '' beside Null, fractions of a rial, and
// identity values with gaps.
void addAwkwardRows(tr::db::Connection& db) {
    saveReceipt(db, 201, 3000000);
    saveReceipt(db, 202, 1234567.891);
    db.execute(QStringLiteral("Insert Into N_NaghdTrans (IDX, WhatDoc, Serial, Raj, CodWhatDoc, NamWhatDoc2, Des1, Des2, "
                              "Des3, Des4, Des5, Des6) Values (500, '10', 900, 1, '1', ") +
               db.text(s("كيك يكم")) + QStringLiteral(", ") + db.text(s("کیک یکم")) + QStringLiteral(", ") +
               db.text(s("  بانک ملي  ")) + QStringLiteral(", ") + db.text(s("سطر اول\nسطر\tدوم")) +
               QStringLiteral(", '', Null, ") + db.text(s("مي\u200Cشود")) + QStringLiteral(")"));
    db.execute(QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj) Values ('10', 901, 1)"));
    db.execute(QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj) Values ('10', 902, 1)"));
    db.execute(QStringLiteral("Delete From N_NaghdTrans Where Serial = 901"));
    db.execute(QStringLiteral("Insert Into Asnad (TypeSys, WhatDoc, SanadNo, Raj, Koll, Moein, Tafsily, Des, Bed, Bes) "
                              "Values ('N', '10', 77, 1, '104', '0001', ' 3000', ") +
               db.text(s(" ياسر كريمي ")) + QStringLiteral(", 0.1, 0), ('N', '10', 77, 2, '104', '0001', '3000', ") +
               db.text(s("ياسر کریمی")) + QStringLiteral(", 0.2, 0), ('N', '10', 77, 3, '101', '0001', '10001', '', 0, 0.3)"));
}

TEST_F(BookCopyTest, ARoundTripKeepsEveryRowIdentityAndBalance) {
    auto source = demo(false);
    addAwkwardRows(*source->connect(kCurrent));
    auto server = serverBooks();
    // A book that is there but empty is no obstacle.
    tr::schema::createSuiteSchema(*server->connect(kSuite));

    const auto up = tr::tools::copyBooks(*source, *server);
    ASSERT_EQ(up.size(), 3u);
    EXPECT_EQ(up[0].name, kPrevious);
    EXPECT_EQ(up[1].name, kCurrent);
    EXPECT_EQ(up[2].name, kSuite);  // last, so the server never lists a book it lacks
    EXPECT_GT(up[1].accounts, 3);

    auto back = directoryBooks();
    tr::tools::copyBooks(*server, *back);

    for (const QString& book : {kSuite, kPrevious, kCurrent}) {
        const QStringList tables = book == kSuite ? tr::schema::suiteTableNames() : tr::schema::companyTableNames();
        auto a = source->connect(book);
        auto b = server->connect(book);
        auto c = back->connect(book);
        for (const QString& table : tables) {
            const QStringList expected = rowsOf(*a, table);
            EXPECT_EQ(rowsOf(*b, table), expected) << book.toStdString() << ".." << table.toStdString() << " on the server";
            EXPECT_EQ(rowsOf(*c, table), expected) << book.toStdString() << ".." << table.toStdString() << " back";
        }
    }
    auto a = source->connect(kCurrent);
    auto c = back->connect(kCurrent);
    EXPECT_GE(count(*source, kCurrent, QStringLiteral("Asnad")), 9);
    EXPECT_EQ(balancesOf(*c), balancesOf(*a));

    // New rows continue after the highest identity value copied, on the server and back.
    const qint64 highest = scalar(*a, QStringLiteral("Select Max(IDX) From N_NaghdTrans")).toLongLong();
    EXPECT_EQ(highest, 502);
    for (Books* books : {server.get(), back.get()}) {
        auto db = books->connect(kCurrent);
        const auto r = db->execute(QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial) Values ('10', 950)"));
        EXPECT_EQ(r.lastIdentity, highest + 1);
    }
}

// Which way a copy runs in the tests that fail it.
struct Direction {
    const char* name;
    bool fromServer;
};
void PrintTo(const Direction& d, std::ostream* out) { *out << d.name; }

class BookCopyDirectionTest : public BookCopyTest, public ::testing::WithParamInterface<Direction> {
  protected:
    std::unique_ptr<Books> target() { return GetParam().fromServer ? directoryBooks() : serverBooks(); }
};

TEST_P(BookCopyDirectionTest, ATargetHoldingRowsIsRefusedBeforeAnythingIsWritten) {
    auto source = demo(GetParam().fromServer);
    auto target = this->target();
    {
        auto current = target->connect(kCurrent);
        tr::schema::createCompanySchema(*current);
        current->execute(QStringLiteral("Insert Into Koll (Koll, NamHesab) Values ('900', ") + current->text(s("حساب قبلي")) +
                         QStringLiteral(")"));
    }
    try {
        tr::tools::copyBooks(*source, *target);
        FAIL() << "the copy went ahead";
    } catch (const BookCopyError& e) {
        EXPECT_EQ(e.book(), kCurrent);
        EXPECT_TRUE(e.reason().contains(QStringLiteral("already holds this book with rows (Koll: 1)"))) << e.what();
    }
    EXPECT_FALSE(target->databaseExists(kPrevious));
    EXPECT_FALSE(target->databaseExists(kSuite));
    EXPECT_EQ(rowsOf(*target->connect(kCurrent), QStringLiteral("Koll")).size(), 2);
    EXPECT_EQ(count(*target, kCurrent, QStringLiteral("Moein")), 0);
}

TEST_P(BookCopyDirectionTest, ABookFailingHalfwayIsLeftOutWhole) {
    auto source = demo(GetParam().fromServer);
    {
        // A cash box whose name is wider than the schema's column: the target refuses it after the
        // tables before N_Cash are filled.
        auto current = source->connect(kCurrent);
        current->execute(QStringLiteral("Drop Table N_Cash"));
        current->execute(QStringLiteral("Create Table N_Cash (CashCod Varchar(10) Not Null Primary Key, CashNam "
                                        "NVarchar(300) Null, Koll Varchar(3) Null, Moein Varchar(4) Null, Tafsily "
                                        "Varchar(5) Null, Tafsily2 Varchar(5) Null, ProjectCod Varchar(10) Null, ArzCod "
                                        "Varchar(2) Null, IsActive NVarchar(10) Null)"));
        current->execute(QStringLiteral("Insert Into N_Cash (CashCod, CashNam) Values ('1', ") +
                         current->text(QString(150, QChar(0x0635))) + QStringLiteral(")"));
    }
    auto target = this->target();
    try {
        tr::tools::copyBooks(*source, *target);
        FAIL() << "the copy went through";
    } catch (const BookCopyError& e) {
        EXPECT_EQ(e.book(), kCurrent);
        EXPECT_TRUE(e.reason().startsWith(QStringLiteral("copying table N_Cash: String or binary data would be truncated")))
            << e.what();
    }
    // The book before it was kept; the failed one and the suite database are not there at all.
    EXPECT_EQ(count(*target, kPrevious, QStringLiteral("Koll")), count(*source, kPrevious, QStringLiteral("Koll")));
    EXPECT_FALSE(target->databaseExists(kCurrent));
    EXPECT_FALSE(target->databaseExists(kSuite));
}

INSTANTIATE_TEST_SUITE_P(BothWays, BookCopyDirectionTest,
                         ::testing::Values(Direction{"ToTheServer", false}, Direction{"FromTheServer", true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BookCopyTest, AmountsTheTargetRoundsFailTheBalanceCheckAndTheBookStaysAsItWas) {
    auto source = demo(false);
    source->connect(kCurrent)->execute(QStringLiteral(
        "Insert Into Asnad (TypeSys, Koll, Moein, Bed, Bes) Values ('N', '101', '0001', 0.4, 0), "
        "('N', '102', '0001', 0, 0.4)"));
    // The server's book is there but empty, its voucher lines holding whole rials only.
    auto server = serverBooks();
    QString asnad;
    for (const QString& statement : tr::schema::companyStatements())
        if (statement.startsWith(QLatin1String("Create Table Asnad "))) asnad = statement;
    ASSERT_TRUE(asnad.contains(QLatin1String("Bed Float")));
    server->connect(kCurrent)->execute(asnad.replace(QLatin1String("Bed Float"), QLatin1String("Bed Int")));

    try {
        tr::tools::copyBooks(*source, *server);
        FAIL() << "the copy went through";
    } catch (const BookCopyError& e) {
        EXPECT_EQ(e.book(), kCurrent);
        EXPECT_TRUE(e.reason().startsWith(QStringLiteral(
            "the copy differs from the source: account '101'-'0001'-<null>-<null>-<null>: Bed 0.40, Bes 0.00 in 1 lines "
            "on the source; Bed 0.00")))
            << e.what();
    }
    auto current = server->connect(kCurrent);
    EXPECT_EQ(scalar(*current, QStringLiteral("Select Count(*) From Asnad")).toLongLong(), 0);
    EXPECT_EQ(scalar(*current, QStringLiteral("Select Count(*) From sysobjects Where xtype = 'U'")).toLongLong(), 1);
}

struct ShellRun {
    int exitCode;
    QString out;
    QString err;
};

ShellRun shell(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral(TREASURY_SQL), args);
    p.waitForFinished(120000);
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

TEST_F(BookCopyTest, TheShellCopiesWithPlainProgressLinesAndRefusesASecondCopy) {
    auto source = demo(false);
    tr::test::PrivatePgServer& server = tr::test::PrivatePgServer::instance();
    const QString connection = server.connectionText(server.createDatabase(QStringLiteral("copy")));
    const QString dir = directoryOf(*source);
    source.reset();

    ShellRun r = shell({"--copy", dir, "--to-server", connection});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("Corvask_1_1404: 48 tables"))) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("3 books,"))) << r.out.toStdString();
    // Not a terminal: whole lines, none redrawn.
    EXPECT_FALSE(r.err.contains(QLatin1Char('\r')));
    EXPECT_TRUE(r.err.contains(QStringLiteral("[2/3] Corvask_1_1404 [####################] 100% copied and checked")))
        << r.err.toStdString();

    r = shell({"--copy-books", dir, "--to-server", connection});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.startsWith(QStringLiteral("Copy failed: Corvask_1_1403: the target already holds this book")))
        << r.err.toStdString();

    QTemporaryDir back;
    r = shell({"--copy", back.path() + QStringLiteral("/books"), "--from-server", connection});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(QFile::exists(back.path() + QStringLiteral("/books/corvask_1_1404.sqlite")));

    r = shell({"--copy", dir});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("treasury-sql --copy DIR --from-server \"CONNECTION\"")));
    // Both directions at once is no copy.
    r = shell({"--copy", dir, "--to-server", connection, "--from-server", connection});
    EXPECT_EQ(r.exitCode, 2);
}

}  // namespace
