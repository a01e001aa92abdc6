#pragma once
// Cashiers in processes of their own (the tr_receipt_saver program) and what they report, for the
// tests of several users and of killed processes; plus SQLite's own check of the database file.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QProcess>
#include <QStringList>
#include <cmath>
#include <map>
#include <memory>

#include "common/db/connection.h"
#include "common/text/tsql_collation.h"

namespace tr::vouchers::testing {

// What one cashier process said it did, in order.
struct CashierReport {
    struct Saved {
        QString serial;
        QString voucher;
        double total = 0;
        int n = 0;
    };
    std::vector<Saved> saved;
    std::map<QString, double> edited;  // serial -> total after the edit
    QStringList cancelled;
    int duplicates = 0;
    QStringList errors;

    void read(const QByteArray& output) {
        for (const QString& line :
             QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            const QStringList f = line.split(QLatin1Char(' '));
            const QString& tag = f.front();
            if (tag == QLatin1String("SAVED") && f.size() == 5)
                saved.push_back({f[1], f[2], f[3].toDouble(), f[4].toInt()});
            else if (tag == QLatin1String("EDITED") && f.size() == 3)
                edited[f[1]] = f[2].toDouble();
            else if (tag == QLatin1String("CANCELLED") && f.size() == 2)
                cancelled << f[1];
            else if (tag == QLatin1String("DUPLICATE"))
                ++duplicates;
            else if (tag == QLatin1String("ERROR"))
                errors << line;
        }
    }
};

// `books` is an address of tests/support/test_books.h; `countOrLoop` a count, "loop" or "search".
inline std::unique_ptr<QProcess> startCashier(const QString& books, int user,
                                              const QString& countOrLoop) {
    auto process = std::make_unique<QProcess>();
    process->start(QStringLiteral(TR_RECEIPT_SAVER),
                   {books, QString::number(user), countOrLoop});
    return process;
}

// A receipt as the ledger holds it: its document lines joined to their voucher lines.
struct StoredReceipt {
    struct Line {
        int raj = 0;
        int voucherLines = 0;  // of the document's own voucher (DocToDate '0')
        QString des;
        double bed = 0, bes = 0;
        qint64 voucher = 0;
    };
    std::vector<Line> lines;  // by Raj
    bool cancelled = false;
    double total() const { return lines.empty() ? 0 : lines.front().bed; }
};

// Every cash receipt of the company database by serial.
inline std::map<QString, StoredReceipt> storedReceipts(tr::db::Connection& c) {
    std::map<QString, StoredReceipt> out;
    // Without statistics SQLite joins each line to every voucher line of its kind; the receipts
    // the cashiers save grow fast enough to make that the slowest part of the test.
    c.execute(QStringLiteral("Exec sp_updatestats"));
    const auto lines = c.execute(QStringLiteral(
        "Select N.Serial, N.Raj, Count(A.REC), Max(A.Des), Sum(A.Bed), Sum(A.Bes), Max(A.SanadNo) "
        "From N_NaghdTrans As N Left Join Asnad As A On (A.TypeSys = 'N' And A.WhatDoc = "
        "N.WhatDoc And A.DocToDate = '0' And A.Document = Cast(N.IDX As Varchar(20))) Where "
        "N.WhatDoc = '10' Group By N.Serial, N.Raj Order By N.Serial, N.Raj"));
    for (const auto& r : lines.resultSets.front().rows)
        out[r[0].toString()].lines.push_back({r[1].toInt(), r[2].toInt(), r[3].toString(),
                                              r[4].toDouble(), r[5].toDouble(), r[6].toLongLong()});
    const auto cancelled = c.execute(QStringLiteral(
        "Select Distinct N.Serial From N_NaghdTrans As N Inner Join Asnad As A On (A.TypeSys = "
        "'N' And A.WhatDoc = N.WhatDoc And A.DocToDate = '1' And A.Document = Cast(N.IDX As "
        "Varchar(20))) Where N.WhatDoc = '10'"));
    for (const auto& r : cancelled.resultSets.front().rows) out[r[0].toString()].cancelled = true;
    return out;
}

// A receipt of the cashier program is whole: the cash line and three counter lines numbered
// 1 to 4, each with one voucher line, all in one voucher whose debits equal its credits.
inline ::testing::AssertionResult receiptIsWhole(const QString& serial, const StoredReceipt& r) {
    if (r.lines.size() != 4)
        return ::testing::AssertionFailure()
               << "receipt " << serial.toStdString() << " has " << r.lines.size() << " lines";
    double credits = 0;
    for (size_t i = 0; i < r.lines.size(); ++i) {
        const auto& l = r.lines[i];
        if (l.raj != int(i) + 1 || l.voucherLines != 1 || l.voucher != r.lines.front().voucher)
            return ::testing::AssertionFailure()
                   << "receipt " << serial.toStdString() << " line " << l.raj << " has "
                   << l.voucherLines << " voucher lines in voucher " << l.voucher;
        if (i > 0) credits += l.bes;
    }
    if (std::abs(credits - r.total()) > 0.005)
        return ::testing::AssertionFailure() << "receipt " << serial.toStdString() << " debits "
                                             << r.total() << " credits " << credits;
    return ::testing::AssertionSuccess();
}

// PRAGMA integrity_check on a connection of SQLite's own (with the collation the indexes use):
// "ok", or what SQLite found.
inline QString integrityCheck(const QString& file) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(file.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) !=
        SQLITE_OK) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(db));
        sqlite3_close(db);
        return message;
    }
    sqlite3_create_collation(db, "TSQL", SQLITE_UTF8, nullptr,
                             [](void*, int an, const void* a, int bn, const void* b) {
                                 return tr::text::tsqlCompareUtf8(static_cast<const char*>(a), an,
                                                                  static_cast<const char*>(b), bn);
                             });
    sqlite3_busy_timeout(db, 30000);
    QStringList found;
    sqlite3_stmt* check = nullptr;
    if (sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &check, nullptr) == SQLITE_OK) {
        int rc;
        while ((rc = sqlite3_step(check)) == SQLITE_ROW)
            found << QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(check, 0)));
        if (rc != SQLITE_DONE) found << QString::fromUtf8(sqlite3_errmsg(db));
    } else {
        found << QString::fromUtf8(sqlite3_errmsg(db));
    }
    sqlite3_finalize(check);
    sqlite3_close(db);
    return found.join(QLatin1Char('\n'));
}

}  // namespace tr::vouchers::testing
