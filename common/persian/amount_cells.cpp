#include "common/persian/amount_cells.h"

namespace tr::persian {

QString readAmountCells(tr::db::Query& row, const QStringList& fields, const AmountRules& rules,
                        QString* fault) {
    for (const QString& name : fields) {
        if (!row.fieldNames().contains(name, Qt::CaseInsensitive)) continue;
        tr::db::Field cell = row.FieldByName(name);
        const QVariant value = cell.Value();
        if (value.typeId() != QMetaType::QString) continue;  // null or already a number
        const QString text = value.toString();
        const AmountReading reading = readAmount(text, rules);
        if (!reading.ok()) {
            if (fault) *fault = name;
            return amountRefusal(reading, text, rules);
        }
        if (reading.empty)
            cell.Clear();
        else
            cell.SetAsFloat(reading.value);
    }
    return {};
}

QString amountCellText(const QVariant& value) {
    if (value.isNull()) return {};
    if (value.typeId() == QMetaType::QString) return value.toString();
    return formatAmount(value.toDouble());
}

QVariant cellDisplay(const QVariant& value) {
    return value.typeId() == QMetaType::Double ? QVariant(amountCellText(value)) : value;
}

}  // namespace tr::persian
