#pragma once
// The two "##" tables a document hands to the print-design library: a header row and its lines,
// named for this session ("##" + session text + "NPrnHead"/"NPrnLines" + time stamp).
#include <QString>
#include <QStringList>

#include "common/session/services.h"

namespace tr::printing {

struct PrintTables {
    QString header;  // "##..." with one row
    QString lines;
};

// Creates both tables with the column lists given ("Name Type, ..."); the caller fills and drops.
PrintTables makePrintTables(const tr::Services& services, const QString& headerColumns,
                            const QString& lineColumns);
// One row of `table`, its values SQL literals already (c.text(...), tr::db::sqlNumber(...)).
void insertPrintRow(const tr::Services& services, const QString& table, const QStringList& values);
void dropPrintTables(const tr::Services& services, const PrintTables& tables);

}  // namespace tr::printing
