#include "instruments/returned_cheque_table.h"

namespace tr::instruments {

const QList<TextColumn>& returnedChequeTextColumns() {
    static const QList<TextColumn> columns = {
        {QStringLiteral("ChqNo"), 20},     {QStringLiteral("Joz"), 10},
        {QStringLiteral("BankCod"), 10},   {QStringLiteral("ShobehCod"), 20},
        {QStringLiteral("AcountCod"), 20}, {QStringLiteral("AcountNam"), 60},
        {QStringLiteral("ChqGetter"), 50}, {QStringLiteral("HesabDarJaryan"), 40},
        {QStringLiteral("Des"), 100},      {QStringLiteral("ArzNam"), 30},
        {QStringLiteral("SanadNo"), 10},   {QStringLiteral("TafNam"), 60},
    };
    return columns;
}

QString returnedChequeTableColumns() {
    QStringList parts;
    for (const TextColumn& c : returnedChequeTextColumns())
        parts << QStringLiteral("%1 NVarchar(%2) Null").arg(c.name).arg(c.length);
    parts << QStringLiteral("ChqValue Float Null") << QStringLiteral("SarResidDate Varchar(10) Null")
          << QStringLiteral("SanadDate Varchar(10) Null") << QStringLiteral("IDX Int Identity(1,1)");
    return parts.join(QStringLiteral(", "));
}

}  // namespace tr::instruments
