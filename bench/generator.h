#pragma once
// A large book for benchmarks and load trials: cash and bank documents of the six kinds written
// through the document procedures into the demo company's fiscal year 1404, in date order,
// several documents per transaction. Deterministic for a given seed and starting book.
#include <QString>
#include <functional>
#include <map>
#include <memory>

#include "bench/cheque_generator.h"
#include "common/db/connection.h"

namespace tr::engine {
class Engine;
class SqliteConnection;
}  // namespace tr::engine

namespace tr::bench {

struct BookOptions {
    qint64 documents = 10000;
    int documentsPerTransaction = 250;
    unsigned seed = 1404;
    double cancelledShare = 0.03;  // cancelled a few days after their date
    double currencyShare = 0.05;   // of the kinds that have a currency twin
    // Called now and then with the documents written so far.
    std::function<void(qint64 done, qint64 total)> progress;
    // Cheques and their actions over the same year, written after the documents (none unless set).
    ChequeOptions cheques;
};

struct BookReport {
    qint64 documents = 0;
    qint64 lines = 0;  // counter lines, the treasury line of each document not included
    qint64 cancelled = 0;
    qint64 currency = 0;
    std::map<QString, qint64> perKind;
    ChequeReport cheques;
    double seconds = 0;  // the documents' time; the cheques' is their own
    double rate() const { return seconds > 0 ? documents / seconds : 0; }
};

// Adds `options.documents` documents to the company database behind `company`, whose engine
// must have the procedures registered; serials continue past those of the book.
BookReport generateBook(tr::db::Connection& company, const BookOptions& options);

// The engine of `dataDirectory` with the procedures registered, the demo company created when the
// directory has none.
std::unique_ptr<tr::engine::Engine> openDemoEngine(const QString& dataDirectory);
// A connection to the demo company's current year.
std::unique_ptr<tr::engine::SqliteConnection> openDemoCompany(tr::engine::Engine& engine);

// "1404/mm/dd" of the year's day `day` (0 for 1404/01/01).
QString dateOfYearDay(int day);

// Documents (distinct kind and serial) of the six kinds in the company database.
qint64 documentCount(tr::db::Connection& company);

}  // namespace tr::bench
