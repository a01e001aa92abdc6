#pragma once
// The table of a counterparty's returned cheques that sp_N_Report_ChqGetReturned fills: its text
// columns and their lengths (the report's grid takes its column widths from them), then amounts
// and dates.
#include <QList>
#include <QString>

namespace tr::instruments {

struct TextColumn {
    QString name;
    int length = 0;
};

const QList<TextColumn>& returnedChequeTextColumns();
// The whole column list for "Create Table", text columns first.
QString returnedChequeTableColumns();

}  // namespace tr::instruments
