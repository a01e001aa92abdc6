#pragma once
// Copies every book of one place (the suite database and each company-year book SDC_Company lists)
// to another, each in one transaction on the target, checked (rows per table, balance per account)
// before it commits; a target that already holds rows of any of them is refused before any write.
#include <QElapsedTimer>
#include <QString>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <vector>

#include "db/tsql/books.h"

namespace tr::tools {

// Where a copy stands; sent after each batch of rows and when a book is checked and kept.
struct CopyProgress {
    enum class Stage { Copying, Checking, Kept };
    Stage stage = Stage::Copying;
    QString book;
    int bookNumber = 0;  // from 1
    int bookCount = 0;
    QString table;
    qint64 tableRows = 0;
    qint64 tableCopied = 0;
    qint64 bookRows = 0;
    qint64 bookCopied = 0;
};
using ProgressSink = std::function<void(const CopyProgress&)>;

// A copy that stopped: the book it concerns and why. Books kept before it stay on the target.
class BookCopyError : public std::runtime_error {
  public:
    BookCopyError(const QString& book, const QString& reason);
    const QString& book() const { return book_; }
    const QString& reason() const { return reason_; }

  private:
    QString book_;
    QString reason_;
};

// What one copied book holds; the same on both sides once it is kept.
struct CopiedBook {
    QString name;
    int tables = 0;
    qint64 rows = 0;
    int accounts = 0;  // distinct accounts of the voucher lines (0 for the suite database)
};

// The company books first and the suite database last, so the target never lists a book it lacks.
// Raises BookCopyError; nothing at all is written when a check before the first book fails.
std::vector<CopiedBook> copyBooks(tr::tsql::Books& source, tr::tsql::Books& target,
                                  const ProgressSink& progress = {});

// Shows progress on `out`: one line redrawn in place on a terminal, otherwise a plain line per
// table copied (and per tenth of a long table), one per book checked and kept.
class ProgressPrinter {
  public:
    // `width` is the terminal's, which a line redrawn in place must not reach (0: not known).
    ProgressPrinter(FILE* out, bool inPlace, int width = 0) : out_(out), inPlace_(inPlace), width_(width) {}
    void operator()(const CopyProgress& progress);
    // Ends a line left open in place (before an error message is printed).
    void finish();

  private:
    void write(const QString& line, bool keep);

    FILE* out_;
    bool inPlace_;
    int width_;
    bool lineOpen_ = false;
    QElapsedTimer sinceDrawn_;
    int lastTenth_ = -1;
};

// "[2/3] Corvask_1_1404 [#####-----]  52% Asnad 120000/309241 rows"
QString progressLine(const CopyProgress& progress);

}  // namespace tr::tools
