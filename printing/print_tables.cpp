#include "printing/print_tables.h"

#include "common/db/query_helpers.h"

namespace tr::printing {

PrintTables makePrintTables(const tr::Services& services, const QString& headerColumns,
                            const QString& lineColumns) {
    const QString session = services.global->sessionText;
    PrintTables t{tr::db::globalTempTableName(session + QStringLiteral("NPrnHead")),
                  tr::db::globalTempTableName(session + QStringLiteral("NPrnLines"))};
    tr::db::execute(*services.database, QStringLiteral("Create Table ") + t.header +
                                            QStringLiteral(" (") + headerColumns +
                                            QStringLiteral(")"));
    tr::db::execute(*services.database, QStringLiteral("Create Table ") + t.lines +
                                            QStringLiteral(" (") + lineColumns +
                                            QStringLiteral(")"));
    return t;
}

void insertPrintRow(const tr::Services& services, const QString& table, const QStringList& values) {
    tr::db::execute(*services.database,
                    QStringLiteral("Insert Into ") + table + QStringLiteral(" Values (") +
                        values.join(QStringLiteral(", ")) + QStringLiteral(")"));
}

void dropPrintTables(const tr::Services& services, const PrintTables& tables) {
    for (const QString& name : {tables.header, tables.lines})
        if (!name.isEmpty()) tr::db::dropTempTable(*services.database, name.mid(2));
}

}  // namespace tr::printing
