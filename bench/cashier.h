#pragma once
// A cashier at the receipt screen's controller, on a connection of its own (to the large book, or
// any book of either backend):
// enters a 3-line receipt as the screen does (serial taken and held, header, checked lines).
#include <QCoreApplication>
#include <memory>

#include "bench/large_book.h"
#include "common/db/my_database.h"
#include "common/db/query.h"
#include "common/session/global.h"
#include "common/session/services.h"
#include "db/schema/demo_company.h"
#include "vouchers/n_global.h"

namespace tr::bench {

using tr::vouchers::N_Global;

// One cashier with the receipt screen's controller on a connection of its own.
struct Cashier {
    std::unique_ptr<tr::tsql::TsqlConnection> connection;
    tr::db::Query command;
    tr::Global global;
    tr::db::MyDatabase database;
    SilentDialog dialog;
    tr::Services services;
    std::unique_ptr<N_Global> receipt;

    explicit Cashier(Sync sync) : Cashier(book().open(sync)) {}
    explicit Cashier(std::unique_ptr<tr::tsql::TsqlConnection> c) : connection(std::move(c)), command(connection.get()) {
        global.userNumber = 7;
        global.userName = QStringLiteral("bench");
        global.computerName = QStringLiteral("BENCH");
        // Unique per process, as the host's is: cashiers in processes of their own share one book.
        global.sessionText = QStringLiteral("BENCH%1_").arg(QCoreApplication::applicationPid());
        global.rights = tr::fullRights({QStringLiteral("N_A_CASHGET_")});
        global.fiscalStart = QString::fromUtf8(tr::schema::demo::kPeriodStart);
        global.fiscalEnd = QString::fromUtf8(tr::schema::demo::kPeriodEnd);
        database.CommandQuery = &command;
        database.Connection = connection.get();
        services.global = &global;
        services.database = &database;
        services.dialog = &dialog;
        receipt = std::make_unique<N_Global>(
            services, *tr::vouchers::findTreasuryDocumentKind(QStringLiteral("10")));
    }

    bool saveReceipt() {
        enterReceipt();
        return receipt->save();
    }

    // A new receipt as the cashier enters it: serial taken and held, header, three checked lines.
    void enterReceipt() {
        N_Global& doc = *receipt;
        doc.newDocument();
        doc.fillNextSerial();
        tr::vouchers::DocumentHeader& h = doc.header();
        h.setDate(QStringLiteral("1404/12/20"));
        h.referenceNumber = h.serial;  // the reference the hand-written save writes
        h.treasuryCode = QString::fromUtf8(tr::schema::demo::kRialCashBox);
        h.description = QStringLiteral("دريافت وجه از مشتري");
        h.amount = 0;
        for (int k = 1; k <= 3; ++k) {
            tr::db::Query& grid = doc.grid();
            grid.Append();
            grid.FieldByName(QStringLiteral("Koll")).SetAsString(QStringLiteral("301"));
            grid.FieldByName(QStringLiteral("Moein")).SetAsString(QStringLiteral("0001"));
            grid.FieldByName(QStringLiteral("Des"))
                .SetAsString(QStringLiteral("بابت افزايش سرمايه"));
            grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(1000000.0 * k);
            grid.Post();
            h.amount += 1000000.0 * k;
        }
    }
};

}  // namespace tr::bench
