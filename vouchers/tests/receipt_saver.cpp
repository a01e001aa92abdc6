// One cashier of the demo company in a process of its own, saving cash receipts through the
// document controller as the receipt screen does (books address, user number, count or "loop"),
// or a clerk reading the ledger meanwhile ("search": each read's vouchers must balance).
// Each outcome is one flushed line on stdout, written only after the database has it:
//   READY                              the company is open
//   SAVED <serial> <voucher> <total> <n>  the n-th new receipt, of three lines
//   EDITED <serial> <total>            the receipt just saved, its first line raised by 1
//   CANCELLED <serial>                 the receipt just saved, cancelled on its own date
//   DUPLICATE <serial>                 the save was refused as a taken serial (retried)
//   ERROR <text>                       any other refusal or database error
//   SEARCHED <n>                       the n-th read of the cash vouchers, every one balanced
// Line k of the n-th receipt of user u is "u<u> d<n> l<k>" for u * 1,000,000 + n * 10 + k rials,
// so the test can tell every document's lines from any other's. In "loop" mode, until the process
// is killed, receipts 1, 4, 7, ... are also edited and 2, 5, 8, ... cancelled.
#include <QCoreApplication>
#include <cmath>
#include <cstdio>

#include "common/db/database_error.h"
#include "common/db/query.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"
#include "tests/support/test_books.h"
#include "tests/support/test_session.h"
#include "vouchers/n_global.h"
#include "vouchers/serials.h"

namespace {

using tr::vouchers::N_Global;

void report(const QString& line) {
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

QString number(double value) {
    return QString::number(value, 'f', 0);
}

class Cashier {
  public:
    Cashier(tr::tsql::Books& books, int user)
        : connection_(books.connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase))),
          session_(*connection_, user, QStringLiteral("cashier") + QString::number(user),
                   tr::fullRights({QStringLiteral("N_A_CASHGET_")})),
          user_(user) {
        receipt_ = std::make_unique<N_Global>(
            session_.services, *tr::vouchers::findTreasuryDocumentKind(QStringLiteral("10")));
    }

    // Saves receipt `n`, retrying under a new serial when the serial was taken meanwhile.
    // Answers false when it could not be saved.
    bool saveNew(int n) {
        for (int attempt = 0; attempt < 5; ++attempt) {
            N_Global& doc = *receipt_;
            doc.newDocument();
            doc.fillNextSerial();
            tr::vouchers::DocumentHeader& h = doc.header();
            h.setDate(QStringLiteral("1404/03/15"));
            h.referenceNumber = QString::number(user_) + QLatin1Char('-') + QString::number(n);
            h.treasuryCode = QString::fromUtf8(tr::schema::demo::kRialCashBox);
            h.description = QStringLiteral("دريافت u%1 d%2").arg(user_).arg(n);
            double total = 0;
            for (int k = 1; k <= 3; ++k) {
                const double amount = user_ * 1000000.0 + n * 10.0 + k;
                addLine(QStringLiteral("u%1 d%2 l%3").arg(user_).arg(n).arg(k), amount);
                total += amount;
            }
            h.amount = total;
            session_.dialog.clearShown();
            if (doc.save()) {
                report(QStringLiteral("SAVED ") + h.serial + QLatin1Char(' ') + h.voucherNo +
                       QLatin1Char(' ') + number(total) + QLatin1Char(' ') + QString::number(n));
                return true;
            }
            const QString refusal =
                session_.dialog.shown().isEmpty() ? QString() : session_.dialog.last().text;
            if (refusal != tr::vouchers::serialTakenMessage(doc.kind().title)) {
                report(QStringLiteral("ERROR ") + refusal);
                return false;
            }
            report(QStringLiteral("DUPLICATE ") + h.serial);
        }
        return false;
    }

    // The document just saved, with its first line raised by one rial.
    void editFirstLine() {
        N_Global& doc = *receipt_;
        tr::db::Query& grid = doc.grid();
        grid.First();
        grid.Edit();
        tr::db::Field amount = grid.FieldByName(QStringLiteral("Bes"));
        amount.SetAsFloat(amount.AsFloat() + 1);
        grid.Post();
        doc.header().amount += 1;
        session_.dialog.clearShown();
        if (doc.save())
            report(QStringLiteral("EDITED ") + doc.header().serial + QLatin1Char(' ') +
                   number(doc.header().amount));
        else
            report(QStringLiteral("ERROR ") +
                   (session_.dialog.shown().isEmpty() ? QString() : session_.dialog.last().text));
    }

    void cancel() {
        session_.dialog.answerYes();
        if (receipt_->cancelDocument())
            report(QStringLiteral("CANCELLED ") + receipt_->header().serial);
        else
            report(QStringLiteral("ERROR cancel refused"));
    }

  private:
    void addLine(const QString& des, double amount) {
        tr::db::Query& grid = receipt_->grid();
        grid.Append();
        grid.FieldByName(QStringLiteral("Koll"))
            .SetAsString(QString::fromUtf8(tr::schema::demo::kCapitalKoll));
        grid.FieldByName(QStringLiteral("Moein"))
            .SetAsString(QString::fromUtf8(tr::schema::demo::kCapitalMoein));
        grid.FieldByName(QStringLiteral("Des")).SetAsString(des);
        grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(amount);
        grid.Post();
    }

    std::unique_ptr<tr::tsql::TsqlConnection> connection_;
    tr::test::TestSession session_;
    std::unique_ptr<N_Global> receipt_;
    int user_;
};

// Until killed: reads the cash receipts' voucher lines joined to their treasury rows, as the cash
// search does, and checks that every voucher it saw balances (a reader never sees half a save).
int search(tr::tsql::Books& books) {
    auto connection = books.connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
    report(QStringLiteral("READY"));
    for (int n = 1;; ++n) {
        try {
            const tr::db::ExecResult r = connection->execute(QStringLiteral(
                "Select A.SanadNo, Sum(A.Bed) - Sum(A.Bes) From Asnad As A Where A.TypeSys = 'N' And "
                "A.SanadNo In (Select B.SanadNo From Asnad As B Inner Join N_NaghdTrans As N On "
                "Cast(N.IDX As Varchar(20)) = LTrim(B.Document) Where N.WhatDoc = '10' And "
                "B.TypeSys = 'N') Group By A.SanadNo"));
            for (const tr::db::Row& row : r.resultSets.front().rows) {
                if (std::abs(row.at(1).toDouble()) > 0.005) {
                    report(QStringLiteral("ERROR voucher %1 is out of balance").arg(row.at(0).toString()));
                    return 1;
                }
            }
            report(QStringLiteral("SEARCHED ") + QString::number(n));
        } catch (const tr::db::DatabaseError& error) {
            report(QStringLiteral("ERROR ") + error.message());
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 4) {
        std::fprintf(stderr, "usage: %s BOOKS USER COUNT|loop|search\n", argv[0]);
        return 2;
    }
    const int user = args.at(2).toInt();
    const bool loop = args.at(3) == QLatin1String("loop");
    const int count = loop ? 0 : args.at(3).toInt();
    try {
        auto books = tr::test::openTestBooks(args.at(1));
        for (const auto& p : tr::procedures::allProcedures())
            books->procedures().addProcedure(p.name, p.body);
        for (const auto& f : tr::procedures::allFunctions())
            books->procedures().addFunction(f.name, f.body);
        if (args.at(3) == QLatin1String("search")) return search(*books);
        Cashier cashier(*books, user);
        report(QStringLiteral("READY"));
        for (int n = 1; loop || n <= count; ++n) {
            try {
                if (!cashier.saveNew(n)) continue;
                // A killed run seldom gets far, so edits and cancels come early and often.
                if (loop && n % 3 == 1) cashier.editFirstLine();
                if (loop && n % 3 == 2) cashier.cancel();
            } catch (const tr::db::DatabaseError& error) {
                report(QStringLiteral("ERROR ") + error.message());
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
