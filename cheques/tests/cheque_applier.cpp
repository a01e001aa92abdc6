// A clerk at the cheque-actions screen in a process of its own (books address, group count), for
// the killed-process test: over and over, each group of four received cheques ("G<g>-<k>") is
// sent to collection as one list, or, when it is in collection, the collection is undone as one
// list. Each outcome is one flushed line on stdout, written only after the database has it:
//   READY                   the screen is open
//   APPLIED <group> <state> the group's list was applied and its cheques are now in <state>
//   ERROR <text>            a refusal or database failure
#include <QCoreApplication>
#include <cstdio>

#include "cheques/received_actions.h"
#include "common/db/database_error.h"
#include "db/procedures/procedures.h"
#include "db/schema/demo_company.h"
#include "tests/support/recording_message_dialog.h"
#include "tests/support/test_books.h"
#include "tests/support/test_session.h"

namespace {

void report(const QString& line) {
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: %s BOOKS GROUPS\n", argv[0]);
        return 2;
    }
    const int groups = args.at(2).toInt();
    try {
        auto books = tr::test::openTestBooks(args.at(1));
        for (const auto& p : tr::procedures::allProcedures()) books->procedures().addProcedure(p.name, p.body);
        for (const auto& f : tr::procedures::allFunctions()) books->procedures().addFunction(f.name, f.body);
        auto connection = books->connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
        tr::test::TestSession session(*connection, 5, QStringLiteral("clerk5"),
                                      tr::fullRights({QStringLiteral("N_A_CHQACTION_")}));
        session.global.sessionText = QStringLiteral("AP%1_").arg(QCoreApplication::applicationPid());
        tr::cheques::ReceivedChequeActions screen(session.services);
        report(QStringLiteral("READY"));
        for (int round = 0;; ++round) {
            const int g = round % groups;
            screen.filters().chequeNumber.clear();
            screen.fill();
            tr::db::Query& rows = screen.rows();
            QString state;
            for (rows.First(); !rows.Eof(); rows.Next()) {
                if (!rows.FieldByName(QStringLiteral("ChqNo")).AsString().startsWith(QStringLiteral("G%1-").arg(g)))
                    continue;
                state = rows.FieldByName(QStringLiteral("LastWhatDoc")).AsString().trimmed();
                if (state == QLatin1String("71")) {
                    screen.chooseAction(QStringLiteral("در جريان وصول"));
                    screen.setBankAccount(1);
                    screen.setActionDate(QStringLiteral("1404/03/01"));
                } else {
                    screen.chooseAction(QStringLiteral("حذف عمليات قبلي"));
                }
            }
            if (!screen.apply()) {
                report(QStringLiteral("ERROR ") + session.dialog.last().text);
                continue;
            }
            report(QStringLiteral("APPLIED %1 %2").arg(g).arg(state == QLatin1String("71") ? "72" : "71"));
        }
    } catch (const std::exception& error) {
        report(QStringLiteral("ERROR ") + QString::fromUtf8(error.what()));
        return 1;
    }
}
