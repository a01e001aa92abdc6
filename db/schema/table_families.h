#pragma once
// The DDL of each table family of a company database (and of the suite database), kept apart so
// each family reads as one unit; schema.cpp runs them in this order.
#include <QStringList>

namespace tr::schema::detail {

QStringList chartTables();
QStringList treasuryTables();
QStringList chequeTables();
QStringList noteTables();
QStringList currencyTables();
QStringList salesTables();
QStringList suiteTables();

}  // namespace tr::schema::detail
