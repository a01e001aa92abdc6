#pragma once
// Amount cells of a grid row as the user typed them: each text cell is read as an amount and
// replaced by its value (null when blank) before the row is posted; a refused cell keeps its text.
#include <QString>
#include <QStringList>

#include "common/db/query.h"
#include "common/persian/amount.h"

namespace tr::persian {

// The refusal message of the first listed cell that does not read, empty when all read; `fault`
// (when given) names that cell, for the grid to return to it. Fields the row lacks are skipped.
QString readAmountCells(tr::db::Query& row, const QStringList& fields,
                        const AmountRules& rules = {}, QString* fault = nullptr);

// What an amount cell shows: its value formatted, a refused text as typed, nothing for null.
QString amountCellText(const QVariant& value);
// What any grid or list cell shows of a value: amounts (doubles) as every amount is shown, never
// in exponent notation; other values as they are.
QVariant cellDisplay(const QVariant& value);

}  // namespace tr::persian
